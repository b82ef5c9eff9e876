/* QuorvValida for hosts in other languages: the same classes behind opaque handles and plain C
   functions. Texts are UTF-8, NUL-terminated. A function that gives a text writes it into the
   caller's buffer like snprintf: at most `tamanho` - 1 bytes and a NUL (nothing when `tamanho`
   is 0), and answers the text's full length in bytes, so that a caller can size the buffer and
   ask again. No function lets a failure escape; handles are used by one thread at a time.

   Compatibility: a program built against this header keeps working, without being built again,
   with every later library of the same major version (libquorvvalida.so.1 on Linux):
   - no function is removed or renamed, and none changes its parameters or its meaning; new
     functions may be added;
   - handles stay opaque: what lies behind them is the library's own;
   - quorv_opcoes grows only at its end. The caller tells the size it was built with in
     `tamanho` (QUORV_OPCOES_INICIAL does), and the library reads nothing beyond it, so the
     fields an older caller does not know keep their defaults. Every field added later has zero
     (NULL) as its default: an older library accepts a newer caller's options when the fields it
     does not know are zero, and refuses the run (status 9) when one of them is set, rather than
     ignore it;
   - numbers with a meaning (run status, flags) keep it; new ones may be added.
   A change that breaks any of these comes with a new major version, under a new library name
   (libquorvvalida.so.2). */
#ifndef QUORVVALIDA_QUORVVALIDA_H_
#define QUORVVALIDA_QUORVVALIDA_H_

#include <stddef.h>
#include <stdint.h>

#include "quorvvalida/exportacao.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The library's version, major.minor.patch.build: the one its package carries. */
QUORVVALIDA_API const char* quorv_versao(void);

/* Called while a file is read, with the share read so far; the callee may change it. */
typedef void (*quorv_progresso)(double* porcentagem, void* contexto);

/* The optional arguments of a validation; a NULL text takes its default. Start from
   QUORV_OPCOES_INICIAL and set the fields wanted:

     quorv_opcoes opcoes = QUORV_OPCOES_INICIAL;
     opcoes.separador = ";";

   A host that lays the struct out itself (Python's ctypes) sets `tamanho` to the size of its
   layout and every field it does not set to zero. */
typedef struct quorv_opcoes {
  size_t tamanho;             /* sizeof(quorv_opcoes) as the caller was built */
  double chave_remessa;       /* 0 */
  double chave_processamento; /* 0 */
  const char* origem;         /* "" ("A0" only counts the records of invoice groups) */
  const char* servidor;       /* "" ("TARNWEB" skips the form field checks) */
  const char* separador;      /* "#" */
} quorv_opcoes;

/* Every option at its default. */
#define QUORV_OPCOES_INICIAL \
  { sizeof(quorv_opcoes), 0, 0, NULL, NULL, NULL }

/* Why the last validating call made on the calling thread (quorv_valida_dados,
   quorv_valida_fichas, quorv_tarnweb_valida_*) could not start or could not finish its output;
   QUORV_FALHA_NENHUMA when it did. A run that answered 9 tells here whether the file, the working
   directory or a write was at fault. The numbers are fixed; new ones may be added. */
enum {
  QUORV_FALHA_ARGUMENTOS = -1,              /* a NULL handle, or options it cannot read: no run */
  QUORV_FALHA_NENHUMA = 0,                  /* the run started and wrote all its output */
  QUORV_FALHA_ENTRADA_INACESSIVEL = 1,      /* the file is missing, a directory or unreadable */
  QUORV_FALHA_DIRETORIO_INEXISTENTE = 2,    /* the working directory is missing */
  QUORV_FALHA_ENTRADA_EH_ADVERTENCIAS = 3,  /* the file is the directory's ADVERTENCIAS.TXT */
  QUORV_FALHA_ADVERTENCIAS_NAO_CRIADAS = 4, /* ADVERTENCIAS.TXT could not be created */
  QUORV_FALHA_ESCRITA_ADVERTENCIAS = 5,     /* a warning could not be written (disk full) */
  QUORV_FALHA_RETORNO_NAO_CRIADO = 6,       /* the return file could not be created */
  QUORV_FALHA_ESCRITA_RETORNO = 7,          /* a write to the return file failed */
  QUORV_FALHA_RETORNO_EH_ENTRADA = 8,       /* the return file would be the input: refused */
  QUORV_FALHA_ERRO_GRAVE = 9,               /* forms: a record type that is not a number */
  QUORV_FALHA_INTERNA = 10                  /* memory ran out, or a host's callback threw */
};
QUORVVALIDA_API int32_t quorv_ultima_falha(void);
/* The Portuguese sentence (UTF-8) that tells a failure number. */
QUORVVALIDA_API size_t quorv_descricao_falha(int32_t falha, char* destino, size_t tamanho);

/* ---- Producer-invoice validator (Validacao) ---- */

typedef struct quorv_validacao quorv_validacao;

/* A new validator; NULL when memory runs out. */
QUORVVALIDA_API quorv_validacao* quorv_validacao_cria(void);
/* Releases the validator; NULL is accepted. */
QUORVVALIDA_API void quorv_validacao_destroi(quorv_validacao* validacao);
/* Listens to the run's progress; NULL stops listening. */
QUORVVALIDA_API void quorv_validacao_progresso(quorv_validacao* validacao, quorv_progresso funcao,
                                               void* contexto);
/* Pins today's date (a day serial, 1899-12-30 being 0); 0 returns to the machine's date. */
QUORVVALIDA_API void quorv_validacao_hoje(quorv_validacao* validacao, double serial);
/* Valida_Dados: the run status (0, 1, 8, 9); `opcoes` may be NULL (every default); options whose
   `tamanho` the library cannot read answer 9 without a run. The remessa number is written into
   `numero_remessa` (may be NULL) as the run leaves it. */
QUORVVALIDA_API int16_t quorv_valida_dados(quorv_validacao* validacao, const char* arquivo,
                                           const char* diretorio, const quorv_opcoes* opcoes,
                                           char* numero_remessa, size_t tamanho);
/* Gravar_Erro: 1 when the warning line was written, 0 when not. */
QUORVVALIDA_API int quorv_gravar_erro(quorv_validacao* validacao, int32_t codigo, double linha);

/* ---- Registration-form validator (ValidacaoFichaCadastral) ---- */

typedef struct quorv_validacao_ficha quorv_validacao_ficha;

QUORVVALIDA_API quorv_validacao_ficha* quorv_ficha_cria(void);
QUORVVALIDA_API void quorv_ficha_destroi(quorv_validacao_ficha* validacao);
QUORVVALIDA_API void quorv_ficha_progresso(quorv_validacao_ficha* validacao, quorv_progresso funcao,
                                           void* contexto);
QUORVVALIDA_API void quorv_ficha_hoje(quorv_validacao_ficha* validacao, double serial);
/* Valida_Fichas: the run status (8 at the trailer, also for a clean file: judge by whether
   ADVERTENCIAS.TXT exists). */
QUORVVALIDA_API int16_t quorv_valida_fichas(quorv_validacao_ficha* validacao, const char* arquivo,
                                            const char* diretorio, const quorv_opcoes* opcoes,
                                            char* numero_remessa, size_t tamanho);
/* bTem_Erro_Grave of the last run: 1 or 0. */
QUORVVALIDA_API int quorv_ficha_erro_grave(const quorv_validacao_ficha* validacao);
/* A text field of the last run by its name ("sNumeroRemessaRef", "sTipo_Solicitacao",
   "sNro_Solicitacao", "Dt_Inicio_Atividade", "Dt_Fim_Atividade"); an unknown name gives "". */
QUORVVALIDA_API size_t quorv_ficha_texto(const quorv_validacao_ficha* validacao, const char* campo,
                                         char* destino, size_t tamanho);
/* A number field by its name ("iOrdem_Faturamento", "iOrdem_Talao", "contSolicitacao",
   "contInscricao"); an unknown name gives 0. */
QUORVVALIDA_API int32_t quorv_ficha_numero(const quorv_validacao_ficha* validacao,
                                           const char* campo);

/* ---- Web facade (ValidacaoTarnWEB) ---- */

typedef struct quorv_tarnweb quorv_tarnweb;

QUORVVALIDA_API quorv_tarnweb* quorv_tarnweb_cria(void);
QUORVVALIDA_API void quorv_tarnweb_destroi(quorv_tarnweb* web);
QUORVVALIDA_API void quorv_tarnweb_hoje(quorv_tarnweb* web, double serial);
/* TipoArquivo and ProgramaChamador (stored trimmed and upper-cased). */
QUORVVALIDA_API void quorv_tarnweb_tipo_arquivo(quorv_tarnweb* web, const char* valor);
QUORVVALIDA_API void quorv_tarnweb_programa_chamador(quorv_tarnweb* web, const char* valor);
/* The validating methods: 1 when no warnings file was left, 0 when the return file
   `diretorio` + `retorno` was written from it. */
QUORVVALIDA_API int quorv_tarnweb_valida_dados(quorv_tarnweb* web, const char* arquivo,
                                               const char* retorno, const char* diretorio,
                                               char* numero_remessa, size_t tamanho);
QUORVVALIDA_API int quorv_tarnweb_valida_fichas(quorv_tarnweb* web, const char* arquivo,
                                                const char* retorno, const char* diretorio,
                                                char* numero_remessa, size_t tamanho);
QUORVVALIDA_API int quorv_tarnweb_valida_tipo(quorv_tarnweb* web, const char* arquivo,
                                              const char* retorno, const char* diretorio,
                                              char* numero_remessa, size_t tamanho,
                                              const char* tipo);
/* BreakString: piece `pedaco` of the text cut at blanks into lines of at most `largura`. */
QUORVVALIDA_API size_t quorv_break_string(const char* texto, int16_t pedaco, int16_t largura,
                                          char* destino, size_t tamanho);

/* ---- Catalogues ---- */

/* The text of an invoice warning code ("Erro não cadastrado" for a code without one). */
QUORVVALIDA_API size_t quorv_mensagem_notas(int16_t codigo, char* destino, size_t tamanho);
/* The text of a form warning code ("" outside 1 to 129). */
QUORVVALIDA_API size_t quorv_mensagem_fichas(int16_t codigo, char* destino, size_t tamanho);

/* ---- Form warnings reader (clsQuorvAdvBDFichas) ---- */

typedef struct quorv_leitor_fichas quorv_leitor_fichas;

QUORVVALIDA_API quorv_leitor_fichas* quorv_leitor_fichas_cria(void);
QUORVVALIDA_API void quorv_leitor_fichas_destroi(quorv_leitor_fichas* leitor);
QUORVVALIDA_API void quorv_leitor_fichas_abre(quorv_leitor_fichas* leitor, const char* caminho);
QUORVVALIDA_API void quorv_leitor_fichas_fecha(quorv_leitor_fichas* leitor);
QUORVVALIDA_API void quorv_leitor_fichas_proximo(quorv_leitor_fichas* leitor);
/* EndOfStream: 1 when no line is left to read. */
QUORVVALIDA_API int quorv_leitor_fichas_fim(const quorv_leitor_fichas* leitor);
QUORVVALIDA_API size_t quorv_leitor_fichas_tr(const quorv_leitor_fichas* leitor, char* destino,
                                              size_t tamanho);
QUORVVALIDA_API size_t quorv_leitor_fichas_nota(const quorv_leitor_fichas* leitor, char* destino,
                                                size_t tamanho);
QUORVVALIDA_API int32_t quorv_leitor_fichas_linha(const quorv_leitor_fichas* leitor);
QUORVVALIDA_API size_t quorv_leitor_fichas_descricao(const quorv_leitor_fichas* leitor,
                                                     char* destino, size_t tamanho);
QUORVVALIDA_API int32_t quorv_leitor_fichas_total(const quorv_leitor_fichas* leitor);
/* RecordCount; -1 when no file is open. */
QUORVVALIDA_API int32_t quorv_leitor_fichas_posicao(const quorv_leitor_fichas* leitor);

/* ---- Shared field routines ---- */

QUORVVALIDA_API int32_t quorv_converte_long(const char* texto);
QUORVVALIDA_API double quorv_converte_double(const char* texto);
QUORVVALIDA_API double quorv_converte_data(const char* texto);
QUORVVALIDA_API int quorv_valida_cnpj(const char* texto);
QUORVVALIDA_API int quorv_valida_cpf(const char* texto);
QUORVVALIDA_API int quorv_confere_digitos_cnpj(const char* texto);
QUORVVALIDA_API int quorv_confere_digitos_cpf(const char* texto);
QUORVVALIDA_API int quorv_valida_inscricao_estadual(const char* inscricao, const char* uf);

/* A state-registration checker: 0 when the number is valid for the UF. */
typedef int16_t (*quorv_verificador_inscricao)(const char* inscricao, const char* uf,
                                               void* contexto);
/* Replaces the state-registration library by a function; NULL restores the library. */
QUORVVALIDA_API void quorv_define_verificador_inscricao(quorv_verificador_inscricao funcao,
                                                        void* contexto);
/* Loads the state-registration library from a path: 1 when loaded. */
QUORVVALIDA_API int quorv_carrega_biblioteca_inscricao(const char* caminho);
/* 1 when a checker (function or library) is available. */
QUORVVALIDA_API int quorv_verificador_inscricao_disponivel(void);

/* ---- File-name utilities (FileUtility) ---- */

QUORVVALIDA_API size_t quorv_arquivo_drive(const char* caminho, char* destino, size_t tamanho);
QUORVVALIDA_API size_t quorv_arquivo_nome(const char* caminho, int com_extensao, char* destino,
                                          size_t tamanho);
QUORVVALIDA_API size_t quorv_arquivo_extensao(const char* caminho, char* destino, size_t tamanho);
QUORVVALIDA_API size_t quorv_arquivo_pasta(const char* caminho, int com_dispositivo, char* destino,
                                           size_t tamanho);
QUORVVALIDA_API int quorv_arquivo_existe(const char* caminho);

#ifdef __cplusplus
}
#endif

#endif /* QUORVVALIDA_QUORVVALIDA_H_ */
