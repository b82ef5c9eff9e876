/* The C interface, used from C as a host in another language would use it. Takes a scratch
   directory and the version the library must answer; exits 0 when every check held, and names
   each one that did not.

     capi_teste DIR VERSAO */
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "quorvvalida/quorvvalida.h"

static int falhas = 0;

#define CONFERE(condicao)                                                    \
  do {                                                                       \
    if (!(condicao)) {                                                       \
      fprintf(stderr, "%s:%d: falhou: %s\n", __FILE__, __LINE__, #condicao); \
      ++falhas;                                                              \
    }                                                                        \
  } while (0)

/* Writes `quantas` lines of `largura` characters: the line number in columns 1-8, the record
   type after it and blanks to the end, each ended by CR LF. */
static void GravaLinhas(const char* caminho, int largura, const char** tipos, int quantas) {
  FILE* arquivo = fopen(caminho, "wb");
  char linha[300];
  int i;
  for (i = 0; i < quantas; ++i) {
    memset(linha, ' ', (size_t)largura);
    snprintf(linha, sizeof linha, "%08d%s", i + 1, tipos[i]);
    linha[strlen(linha)] = ' ';
    fwrite(linha, 1, (size_t)largura, arquivo);
    fwrite("\r\n", 1, 2, arquivo);
  }
  fclose(arquivo);
}

static int Existe(const char* caminho) {
  FILE* arquivo = fopen(caminho, "rb");
  if (arquivo == NULL) return 0;
  fclose(arquivo);
  return 1;
}

/* The first line of a file, or "" when it cannot be read. */
static void PrimeiraLinha(const char* caminho, char* linha, size_t tamanho) {
  FILE* arquivo = fopen(caminho, "rb");
  linha[0] = '\0';
  if (arquivo == NULL) return;
  if (fgets(linha, (int)tamanho, arquivo) == NULL) linha[0] = '\0';
  fclose(arquivo);
}

/* The options of a caller built against a later header, with one field this library lacks. */
typedef struct {
  quorv_opcoes conhecidas;
  double campo_novo;
} opcoes_futuras;

static int progressos = 0;
static void ContaProgresso(double* porcentagem, void* contexto) {
  (void)porcentagem;
  ++*(int*)contexto;
}

static int16_t AceitaQZ(const char* inscricao, const char* uf, void* contexto) {
  (void)inscricao;
  ++*(int*)contexto;
  return (int16_t)(strcmp(uf, "QZ") == 0 ? 0 : 1);
}

int main(int argc, char** argv) {
  char arquivo[1024];
  char advertencias[1024];
  char texto[256];
  char curto[4];
  quorv_opcoes opcoes = QUORV_OPCOES_INICIAL;
  int chamadas = 0;
  if (argc < 3) return 2;
  snprintf(arquivo, sizeof arquivo, "%s/remessa.txt", argv[1]);
  snprintf(advertencias, sizeof advertencias, "%s/ADVERTENCIAS.TXT", argv[1]);

  CONFERE(strcmp(quorv_versao(), argv[2]) == 0);

  /* An invoice header without its fields: refused, status 8, warnings written. */
  {
    const char* tipos[] = {"00"};
    quorv_validacao* validacao = quorv_validacao_cria();
    GravaLinhas(arquivo, 160, tipos, 1);
    quorv_validacao_progresso(validacao, ContaProgresso, &progressos);
    opcoes.chave_remessa = 12;
    CONFERE(quorv_valida_dados(validacao, arquivo, argv[1], &opcoes, texto, sizeof texto) == 8);
    CONFERE(Existe(advertencias));
    CONFERE(quorv_gravar_erro(validacao, 77, 0) == 0);
    quorv_validacao_destroi(validacao);
    CONFERE(quorv_valida_dados(NULL, arquivo, argv[1], NULL, NULL, 0) == 9);
  }

  /* The options as sized by callers built against this header, an earlier and a later one. */
  {
    const char* tipos[] = {"00"};
    quorv_validacao* validacao = quorv_validacao_cria();
    opcoes_futuras futuras;
    char linha[400];
    GravaLinhas(arquivo, 160, tipos, 1);

    opcoes.chave_processamento = 7;
    opcoes.separador = ";";
    CONFERE(quorv_valida_dados(validacao, arquivo, argv[1], &opcoes, NULL, 0) == 8);
    PrimeiraLinha(advertencias, linha, sizeof linha);
    CONFERE(strncmp(linha, "71;12;7;00000001", 16) == 0);

    /* Shorter than any version of the struct: refused without a run, nothing written. */
    remove(advertencias);
    opcoes.tamanho = offsetof(quorv_opcoes, separador);
    CONFERE(quorv_valida_dados(validacao, arquivo, argv[1], &opcoes, NULL, 0) == 9);
    opcoes.tamanho = 0;
    CONFERE(quorv_valida_dados(validacao, arquivo, argv[1], &opcoes, NULL, 0) == 9);
    {
      quorv_validacao_ficha* ficha = quorv_ficha_cria();
      CONFERE(quorv_valida_fichas(ficha, arquivo, argv[1], &opcoes, NULL, 0) == 9);
      quorv_ficha_destroi(ficha);
    }
    CONFERE(!Existe(advertencias));

    /* Longer, with the field this library does not know at its default: the run obeys the rest. */
    memset(&futuras, 0, sizeof futuras);
    futuras.conhecidas.tamanho = sizeof futuras;
    futuras.conhecidas.chave_remessa = 3;
    futuras.conhecidas.separador = "|";
    CONFERE(quorv_valida_dados(validacao, arquivo, argv[1], &futuras.conhecidas, NULL, 0) == 8);
    PrimeiraLinha(advertencias, linha, sizeof linha);
    CONFERE(strncmp(linha, "71|3|0|00000001", 15) == 0);

    /* The same with that field set: refused rather than half obeyed. */
    remove(advertencias);
    futuras.campo_novo = 1;
    CONFERE(quorv_valida_dados(validacao, arquivo, argv[1], &futuras.conhecidas, NULL, 0) == 9);
    CONFERE(!Existe(advertencias));
    quorv_validacao_destroi(validacao);
    opcoes.tamanho = sizeof opcoes;
  }

  /* A form file with only a header and a trailer: status 8 at the trailer, no warnings. */
  {
    const char* tipos[] = {"001", "999"};
    quorv_validacao_ficha* ficha = quorv_ficha_cria();
    char linhas[300];
    FILE* f;
    GravaLinhas(arquivo, 260, tipos, 2);
    /* Give the header what its checks want: municipality, name, remittance number, date. */
    f = fopen(arquivo, "r+b");
    fread(linhas, 1, 260, f);
    memcpy(linhas + 32, "123CIDADE", 9);
    memcpy(linhas + 60, "00004220240115", 14);
    fseek(f, 0, SEEK_SET);
    fwrite(linhas, 1, 260, f);
    fclose(f);
    CONFERE(quorv_valida_fichas(ficha, arquivo, argv[1], NULL, texto, sizeof texto) == 8);
    CONFERE(strcmp(texto, "000042") == 0);
    CONFERE(!Existe(advertencias));
    CONFERE(quorv_ficha_erro_grave(ficha) == 0);
    CONFERE(quorv_ficha_texto(ficha, "sNumeroRemessaRef", texto, sizeof texto) == 6);
    CONFERE(strcmp(texto, "000042") == 0);
    CONFERE(quorv_ficha_numero(ficha, "contSolicitacao") == 0);
    quorv_ficha_destroi(ficha);
  }

  /* A form warnings file read back through the reader. */
  {
    quorv_leitor_fichas* leitor = quorv_leitor_fichas_cria();
    FILE* f = fopen(advertencias, "wb");
    fputs("12#0#0#00000004111000000000A#00000004\r\n", f);
    fclose(f);
    CONFERE(quorv_leitor_fichas_posicao(leitor) == -1);
    quorv_leitor_fichas_abre(leitor, advertencias);
    CONFERE(quorv_leitor_fichas_total(leitor) == 1);
    CONFERE(quorv_leitor_fichas_fim(leitor) == 1);
    CONFERE(quorv_leitor_fichas_linha(leitor) == 4);
    quorv_leitor_fichas_tr(leitor, texto, sizeof texto);
    CONFERE(strcmp(texto, "111") == 0);
    quorv_leitor_fichas_nota(leitor, texto, sizeof texto);
    CONFERE(strcmp(texto, "000000000A") == 0);
    CONFERE(quorv_leitor_fichas_descricao(leitor, texto, sizeof texto) >= 100);
    CONFERE(strncmp(texto, "Número da solicitação inválida", 32) == 0);
    quorv_leitor_fichas_fecha(leitor);
    quorv_leitor_fichas_destroi(leitor);
    remove(advertencias);
  }

  /* Texts into small buffers: cut, NUL-terminated, the full length answered. */
  CONFERE(quorv_mensagem_notas(77, curto, sizeof curto) == strlen("Linha com tamanho Incorreto"));
  CONFERE(strcmp(curto, "Lin") == 0);
  CONFERE(quorv_mensagem_notas(0, NULL, 0) == strlen("Erro não cadastrado"));
  quorv_mensagem_fichas(92, texto, sizeof texto);
  CONFERE(strcmp(texto, "Código do CNAE Fiscal inválido ") == 0);
  CONFERE(quorv_mensagem_fichas(130, texto, sizeof texto) == 0);
  quorv_break_string("ab abcd abcd", 1, 8, texto, sizeof texto);
  CONFERE(strcmp(texto, "ab abcd") == 0);

  /* Shared routines. */
  CONFERE(quorv_converte_long(" 12") == 12);
  CONFERE(quorv_converte_long("") == -1);
  CONFERE(quorv_converte_double("1,5") == 1.5);
  CONFERE(quorv_converte_data("20240101") == 45292);
  CONFERE(quorv_valida_cnpj("11.222.333/0001-81") == 1);
  CONFERE(quorv_valida_cpf("111.444.777-35") == 0);
  CONFERE(quorv_valida_cpf("11144477735") == 1);
  CONFERE(quorv_confere_digitos_cpf("") == 1);
  CONFERE(quorv_confere_digitos_cnpj("11222333000180") == 0);

  /* A checker of the host's own, then back to the library (none here). */
  quorv_define_verificador_inscricao(AceitaQZ, &chamadas);
  CONFERE(quorv_verificador_inscricao_disponivel() == 1);
  CONFERE(quorv_valida_inscricao_estadual("123", "QZ") == 1);
  CONFERE(quorv_valida_inscricao_estadual("123", "SC") == 0);
  CONFERE(chamadas == 2);
  quorv_define_verificador_inscricao(NULL, NULL);
  CONFERE(quorv_carrega_biblioteca_inscricao("/nao/existe.so") == 0);

  /* File names. */
  quorv_arquivo_drive("C:\\dir\\file.txt", texto, sizeof texto);
  CONFERE(strcmp(texto, "C:") == 0);
  quorv_arquivo_nome("C:\\dir\\file.txt", 0, texto, sizeof texto);
  CONFERE(strcmp(texto, "file") == 0);
  quorv_arquivo_pasta("C:\\dir\\sub\\file.txt", 1, texto, sizeof texto);
  CONFERE(strcmp(texto, "C:\\dir\\sub") == 0);
  quorv_arquivo_extensao("archive.tar.gz", texto, sizeof texto);
  CONFERE(strcmp(texto, "gz") == 0);
  CONFERE(quorv_arquivo_existe(arquivo) == 1);

  /* The web facade: a form file without warnings answers 1 and writes no return file. */
  {
    quorv_tarnweb* web = quorv_tarnweb_cria();
    char retorno[1024];
    snprintf(retorno, sizeof retorno, "%s/RETORNO.TXT", argv[1]);
    CONFERE(quorv_tarnweb_valida_tipo(web, arquivo, "/RETORNO.TXT", argv[1], texto, sizeof texto,
                                      "F") == 1);
    CONFERE(!Existe(retorno));
    CONFERE(quorv_tarnweb_valida_tipo(web, arquivo, "/RETORNO.TXT", argv[1], texto, sizeof texto,
                                      "f") == 0);
    quorv_tarnweb_destroi(web);
  }

  /* Why a run answered 9, as the calling thread's last failure. */
  {
    quorv_validacao* validacao = quorv_validacao_cria();
    quorv_tarnweb* web = quorv_tarnweb_cria();
    char ausente[1024];
    const char* tipos[] = {"00"};
    snprintf(ausente, sizeof ausente, "%s/nao-existe", argv[1]);
    GravaLinhas(arquivo, 160, tipos, 1);
    CONFERE(quorv_valida_dados(validacao, ausente, argv[1], NULL, NULL, 0) == 9);
    CONFERE(quorv_ultima_falha() == QUORV_FALHA_ENTRADA_INACESSIVEL);
    CONFERE(quorv_valida_dados(validacao, arquivo, ausente, NULL, NULL, 0) == 9);
    CONFERE(quorv_ultima_falha() == QUORV_FALHA_DIRETORIO_INEXISTENTE);
    CONFERE(quorv_valida_dados(validacao, arquivo, argv[1], NULL, NULL, 0) == 8);
    CONFERE(quorv_ultima_falha() == QUORV_FALHA_NENHUMA);
    /* The warnings file given as the file to validate: refused, and left as it was. */
    CONFERE(quorv_valida_dados(validacao, advertencias, argv[1], NULL, NULL, 0) == 9);
    CONFERE(quorv_ultima_falha() == QUORV_FALHA_ENTRADA_EH_ADVERTENCIAS);
    CONFERE(Existe(advertencias));
    CONFERE(quorv_valida_dados(NULL, arquivo, argv[1], NULL, NULL, 0) == 9);
    CONFERE(quorv_ultima_falha() == QUORV_FALHA_ARGUMENTOS);
    opcoes.tamanho = 0;
    CONFERE(quorv_valida_dados(validacao, arquivo, argv[1], &opcoes, NULL, 0) == 9);
    CONFERE(quorv_ultima_falha() == QUORV_FALHA_ARGUMENTOS);
    opcoes.tamanho = sizeof opcoes;
    CONFERE(quorv_tarnweb_valida_dados(web, arquivo, "/remessa.txt", argv[1], NULL, 0) == 0);
    CONFERE(quorv_ultima_falha() == QUORV_FALHA_RETORNO_EH_ENTRADA);
    CONFERE(quorv_descricao_falha(QUORV_FALHA_DIRETORIO_INEXISTENTE, texto, sizeof texto) > 0);
    CONFERE(strcmp(texto, "O diretório de trabalho não existe.") == 0);
    CONFERE(quorv_descricao_falha(QUORV_FALHA_ARGUMENTOS, curto, sizeof curto) > sizeof curto);
    CONFERE(strcmp(curto, "Um ") == 0);
    quorv_tarnweb_destroi(web);
    quorv_validacao_destroi(validacao);
    remove(advertencias);
  }

  if (falhas == 0) printf("interface C: tudo conferido\n");
  return falhas == 0 ? 0 : 1;
}
