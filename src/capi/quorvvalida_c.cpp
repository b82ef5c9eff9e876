// The C interface: each handle wraps one object of the C++ classes; texts cross as UTF-8.
#include "quorvvalida/quorvvalida.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>
#include <string>

#include "quorvvalida/quorvvalida.hpp"

struct quorv_validacao {
  quorv::Validacao objeto;
};

struct quorv_validacao_ficha {
  quorv::ValidacaoFichaCadastral objeto;
};

struct quorv_tarnweb {
  quorv::ValidacaoTarnWEB objeto;
};

struct quorv_leitor_fichas {
  quorv::clsQuorvAdvBDFichas objeto;
};

namespace {

std::string Texto(const char* texto) {
  return texto != nullptr ? std::string(texto) : std::string();
}

// Writes the text into the caller's buffer as snprintf does and answers its full length.
size_t Copia(const std::string& texto, char* destino, size_t tamanho) {
  if (destino != nullptr && tamanho > 0) {
    const size_t copiados = std::min(texto.size(), tamanho - 1);
    std::memcpy(destino, texto.data(), copiados);
    destino[copiados] = '\0';
  }
  return texto.size();
}

// Runs a member that may fail for lack of memory and answers `seFalhar` instead: nothing is
// thrown across the C boundary.
template <typename Funcao, typename Resultado>
Resultado Protegido(Funcao funcao, Resultado seFalhar) {
  try {
    return funcao();
  } catch (...) {
    return seFalhar;
  }
}

// The reason of the last validating call on each thread, as errno keeps the last error.
thread_local int32_t ultimaFalha = QUORV_FALHA_NENHUMA;

static_assert(
    QUORV_FALHA_NENHUMA == static_cast<int32_t>(quorv::Falha::Nenhuma) &&
        QUORV_FALHA_ENTRADA_INACESSIVEL == static_cast<int32_t>(quorv::Falha::EntradaInacessivel) &&
        QUORV_FALHA_DIRETORIO_INEXISTENTE ==
            static_cast<int32_t>(quorv::Falha::DiretorioInexistente) &&
        QUORV_FALHA_ENTRADA_EH_ADVERTENCIAS ==
            static_cast<int32_t>(quorv::Falha::EntradaEhAdvertencias) &&
        QUORV_FALHA_ADVERTENCIAS_NAO_CRIADAS ==
            static_cast<int32_t>(quorv::Falha::AdvertenciasNaoCriadas) &&
        QUORV_FALHA_ESCRITA_ADVERTENCIAS ==
            static_cast<int32_t>(quorv::Falha::EscritaAdvertencias) &&
        QUORV_FALHA_RETORNO_NAO_CRIADO == static_cast<int32_t>(quorv::Falha::RetornoNaoCriado) &&
        QUORV_FALHA_ESCRITA_RETORNO == static_cast<int32_t>(quorv::Falha::EscritaRetorno) &&
        QUORV_FALHA_RETORNO_EH_ENTRADA == static_cast<int32_t>(quorv::Falha::RetornoEhEntrada) &&
        QUORV_FALHA_ERRO_GRAVE == static_cast<int32_t>(quorv::Falha::ErroGrave) &&
        QUORV_FALHA_INTERNA == static_cast<int32_t>(quorv::Falha::FalhaInterna),
    "the C failure numbers are the library's");

// Runs a validating call: the thread's last failure becomes what the object tells after it, an
// internal failure when the call could not run to its end, or a refusal of the arguments.
template <typename Objeto, typename Funcao, typename Resultado>
Resultado Valida(Objeto* objeto, Funcao funcao, Resultado seFalhar) {
  ultimaFalha = QUORV_FALHA_ARGUMENTOS;
  if (objeto == nullptr) return seFalhar;
  ultimaFalha = QUORV_FALHA_NENHUMA;
  bool terminou = false;
  const Resultado resultado = Protegido(
      [&] {
        const Resultado r = funcao();
        terminou = true;
        return r;
      },
      seFalhar);
  if (!terminou) {
    ultimaFalha = QUORV_FALHA_INTERNA;
  } else if (ultimaFalha != QUORV_FALHA_ARGUMENTOS) {
    ultimaFalha = static_cast<int32_t>(objeto->objeto.UltimaFalha());
  }
  return resultado;
}

quorv::Relogio RelogioFixo(double serial) {
  if (serial == 0) return {};
  return [serial] { return serial; };
}

std::function<void(double&)> Progresso(quorv_progresso funcao, void* contexto) {
  if (funcao == nullptr) return {};
  return [funcao, contexto](double& porcentagem) { funcao(&porcentagem, contexto); };
}

// The size of the options of the first version: every later one is larger, with its new fields
// read only when the caller's `tamanho` covers them.
constexpr size_t kTamanhoPrimeiraVersao = offsetof(quorv_opcoes, separador) + sizeof(const char*);
// The largest `tamanho` taken for a size at all: anything above is a field never set.
constexpr size_t kMaiorTamanho = 1024;

// True when every byte of the caller's struct past what this library knows is zero.
bool SemCamposDesconhecidos(const quorv_opcoes& opcoes) {
  if (opcoes.tamanho <= sizeof(quorv_opcoes)) return true;
  const auto* bytes = reinterpret_cast<const unsigned char*>(&opcoes);
  return std::all_of(bytes + sizeof(quorv_opcoes), bytes + opcoes.tamanho,
                     [](unsigned char byte) { return byte == 0; });
}

// The optional arguments with their defaults. A caller built against an older header sends a
// shorter struct: the fields it does not know keep their defaults. One built against a newer
// header sends a longer one: the fields this library does not know must be at their default,
// zero, or the options are refused rather than half obeyed.
struct Opcoes {
  explicit Opcoes(const quorv_opcoes* opcoes) {
    if (opcoes == nullptr) return;
    validas = opcoes->tamanho >= kTamanhoPrimeiraVersao && opcoes->tamanho <= kMaiorTamanho &&
              SemCamposDesconhecidos(*opcoes);
    if (!validas) return;
    chaveRemessa = opcoes->chave_remessa;
    chaveProcessamento = opcoes->chave_processamento;
    if (opcoes->origem != nullptr) origem = opcoes->origem;
    if (opcoes->servidor != nullptr) servidor = opcoes->servidor;
    if (opcoes->separador != nullptr) separador = opcoes->separador;
  }
  bool validas = true;
  double chaveRemessa = 0;
  double chaveProcessamento = 0;
  std::string origem;
  std::string servidor;
  std::string separador = "#";
};

// Writes the text a function gives into the caller's buffer; an empty text when it fails.
template <typename Funcao>
size_t CopiaDe(Funcao funcao, char* destino, size_t tamanho) {
  return Protegido([&] { return Copia(funcao(), destino, tamanho); },
                   Copia(std::string(), destino, tamanho));
}

template <typename T>
T* Cria() {
  return Protegido([] { return new (std::nothrow) T(); }, static_cast<T*>(nullptr));
}

}  // namespace

extern "C" {

const char* quorv_versao(void) {
  return quorv::kVersao;
}

int32_t quorv_ultima_falha(void) {
  return ultimaFalha;
}

size_t quorv_descricao_falha(int32_t falha, char* destino, size_t tamanho) {
  return CopiaDe(
      [&]() -> std::string {
        if (falha == QUORV_FALHA_ARGUMENTOS) {
          return "Um objeto nulo ou opções que a biblioteca não sabe ler: nada foi validado.";
        }
        return quorv::DescricaoDaFalha(static_cast<quorv::Falha>(falha));
      },
      destino, tamanho);
}

quorv_validacao* quorv_validacao_cria(void) {
  return Cria<quorv_validacao>();
}

void quorv_validacao_destroi(quorv_validacao* validacao) {
  delete validacao;
}

void quorv_validacao_progresso(quorv_validacao* validacao, quorv_progresso funcao, void* contexto) {
  if (validacao != nullptr) validacao->objeto.Progress = Progresso(funcao, contexto);
}

void quorv_validacao_hoje(quorv_validacao* validacao, double serial) {
  if (validacao != nullptr) validacao->objeto.Hoje = RelogioFixo(serial);
}

int16_t quorv_valida_dados(quorv_validacao* validacao, const char* arquivo, const char* diretorio,
                           const quorv_opcoes* opcoes, char* numero_remessa, size_t tamanho) {
  return Valida(
      validacao,
      [&] {
        const Opcoes o(opcoes);
        if (!o.validas) return (ultimaFalha = QUORV_FALHA_ARGUMENTOS, static_cast<int16_t>(9));
        std::string numero;
        const int16_t status =
            validacao->objeto.Valida_Dados(Texto(arquivo), numero, Texto(diretorio), o.chaveRemessa,
                                           o.chaveProcessamento, o.origem, o.servidor, o.separador);
        Copia(numero, numero_remessa, tamanho);
        return status;
      },
      static_cast<int16_t>(9));
}

int quorv_gravar_erro(quorv_validacao* validacao, int32_t codigo, double linha) {
  return validacao != nullptr && validacao->objeto.Gravar_Erro(codigo, linha) ? 1 : 0;
}

quorv_validacao_ficha* quorv_ficha_cria(void) {
  return Cria<quorv_validacao_ficha>();
}

void quorv_ficha_destroi(quorv_validacao_ficha* validacao) {
  delete validacao;
}

void quorv_ficha_progresso(quorv_validacao_ficha* validacao, quorv_progresso funcao,
                           void* contexto) {
  if (validacao != nullptr) validacao->objeto.FichaProgress = Progresso(funcao, contexto);
}

void quorv_ficha_hoje(quorv_validacao_ficha* validacao, double serial) {
  if (validacao != nullptr) validacao->objeto.Hoje = RelogioFixo(serial);
}

int16_t quorv_valida_fichas(quorv_validacao_ficha* validacao, const char* arquivo,
                            const char* diretorio, const quorv_opcoes* opcoes, char* numero_remessa,
                            size_t tamanho) {
  return Valida(
      validacao,
      [&] {
        const Opcoes o(opcoes);
        if (!o.validas) return (ultimaFalha = QUORV_FALHA_ARGUMENTOS, static_cast<int16_t>(9));
        std::string numero;
        const int16_t status = validacao->objeto.Valida_Fichas(
            Texto(arquivo), numero, Texto(diretorio), o.chaveRemessa, o.chaveProcessamento,
            o.origem, o.servidor, o.separador);
        Copia(numero, numero_remessa, tamanho);
        return status;
      },
      static_cast<int16_t>(9));
}

int quorv_ficha_erro_grave(const quorv_validacao_ficha* validacao) {
  return validacao != nullptr && validacao->objeto.bTem_Erro_Grave ? 1 : 0;
}

size_t quorv_ficha_texto(const quorv_validacao_ficha* validacao, const char* campo, char* destino,
                         size_t tamanho) {
  return CopiaDe(
      [&]() -> std::string {
        if (validacao == nullptr || campo == nullptr) return {};
        const quorv::ValidacaoFichaCadastral& f = validacao->objeto;
        const std::string nome = campo;
        if (nome == "sNumeroRemessaRef") return f.sNumeroRemessaRef;
        if (nome == "sTipo_Solicitacao") return f.sTipo_Solicitacao;
        if (nome == "sNro_Solicitacao") return f.sNro_Solicitacao;
        if (nome == "Dt_Inicio_Atividade") return f.Dt_Inicio_Atividade;
        if (nome == "Dt_Fim_Atividade") return f.Dt_Fim_Atividade;
        return {};
      },
      destino, tamanho);
}

int32_t quorv_ficha_numero(const quorv_validacao_ficha* validacao, const char* campo) {
  if (validacao == nullptr || campo == nullptr) return 0;
  const quorv::ValidacaoFichaCadastral& f = validacao->objeto;
  if (std::strcmp(campo, "iOrdem_Faturamento") == 0) return f.iOrdem_Faturamento;
  if (std::strcmp(campo, "iOrdem_Talao") == 0) return f.iOrdem_Talao;
  if (std::strcmp(campo, "contSolicitacao") == 0) return f.contSolicitacao;
  if (std::strcmp(campo, "contInscricao") == 0) return f.contInscricao;
  return 0;
}

quorv_tarnweb* quorv_tarnweb_cria(void) {
  return Cria<quorv_tarnweb>();
}

void quorv_tarnweb_destroi(quorv_tarnweb* web) {
  delete web;
}

void quorv_tarnweb_hoje(quorv_tarnweb* web, double serial) {
  if (web != nullptr) web->objeto.Hoje = RelogioFixo(serial);
}

void quorv_tarnweb_tipo_arquivo(quorv_tarnweb* web, const char* valor) {
  if (web == nullptr) return;
  Protegido([&] { return (web->objeto.TipoArquivo(Texto(valor)), 0); }, 0);
}

void quorv_tarnweb_programa_chamador(quorv_tarnweb* web, const char* valor) {
  if (web == nullptr) return;
  Protegido([&] { return (web->objeto.ProgramaChamador(Texto(valor)), 0); }, 0);
}

int quorv_tarnweb_valida_dados(quorv_tarnweb* web, const char* arquivo, const char* retorno,
                               const char* diretorio, char* numero_remessa, size_t tamanho) {
  return Valida(
      web,
      [&] {
        std::string numero;
        const bool resultado = web->objeto.Valida_Dados_Tarnweb(Texto(arquivo), Texto(retorno),
                                                                Texto(diretorio), numero);
        Copia(numero, numero_remessa, tamanho);
        return resultado ? 1 : 0;
      },
      0);
}

int quorv_tarnweb_valida_fichas(quorv_tarnweb* web, const char* arquivo, const char* retorno,
                                const char* diretorio, char* numero_remessa, size_t tamanho) {
  return Valida(
      web,
      [&] {
        std::string numero;
        const bool resultado = web->objeto.Valida_Dados_Ficha_Cadastral(
            Texto(arquivo), Texto(retorno), Texto(diretorio), numero);
        Copia(numero, numero_remessa, tamanho);
        return resultado ? 1 : 0;
      },
      0);
}

int quorv_tarnweb_valida_tipo(quorv_tarnweb* web, const char* arquivo, const char* retorno,
                              const char* diretorio, char* numero_remessa, size_t tamanho,
                              const char* tipo) {
  return Valida(
      web,
      [&] {
        std::string numero;
        const bool resultado = web->objeto.Valida_TIPO(Texto(arquivo), Texto(retorno),
                                                       Texto(diretorio), numero, Texto(tipo));
        Copia(numero, numero_remessa, tamanho);
        return resultado ? 1 : 0;
      },
      0);
}

size_t quorv_break_string(const char* texto, int16_t pedaco, int16_t largura, char* destino,
                          size_t tamanho) {
  return CopiaDe(
      [&] { return quorv::ValidacaoTarnWEB().BreakString(Texto(texto), pedaco, largura); }, destino,
      tamanho);
}

size_t quorv_mensagem_notas(int16_t codigo, char* destino, size_t tamanho) {
  return CopiaDe([&] { return quorv::clsQuorvMsg().MensagemAdvertencia(codigo); }, destino,
                 tamanho);
}

size_t quorv_mensagem_fichas(int16_t codigo, char* destino, size_t tamanho) {
  return CopiaDe([&] { return quorv::clsQuorvMsgFichas().MensagemAdvertenciaFichas(codigo); },
                 destino, tamanho);
}

quorv_leitor_fichas* quorv_leitor_fichas_cria(void) {
  return Cria<quorv_leitor_fichas>();
}

void quorv_leitor_fichas_destroi(quorv_leitor_fichas* leitor) {
  delete leitor;
}

void quorv_leitor_fichas_abre(quorv_leitor_fichas* leitor, const char* caminho) {
  if (leitor == nullptr) return;
  Protegido([&] { return (leitor->objeto.OpenStream(Texto(caminho)), 0); }, 0);
}

void quorv_leitor_fichas_fecha(quorv_leitor_fichas* leitor) {
  if (leitor != nullptr) leitor->objeto.CloseStream();
}

void quorv_leitor_fichas_proximo(quorv_leitor_fichas* leitor) {
  if (leitor != nullptr) leitor->objeto.MoveNext();
}

int quorv_leitor_fichas_fim(const quorv_leitor_fichas* leitor) {
  return leitor == nullptr || leitor->objeto.EndOfStream() ? 1 : 0;
}

size_t quorv_leitor_fichas_tr(const quorv_leitor_fichas* leitor, char* destino, size_t tamanho) {
  return CopiaDe([&] { return leitor != nullptr ? leitor->objeto.TR() : std::string(); }, destino,
                 tamanho);
}

size_t quorv_leitor_fichas_nota(const quorv_leitor_fichas* leitor, char* destino, size_t tamanho) {
  return CopiaDe([&] { return leitor != nullptr ? leitor->objeto.Nota() : std::string(); }, destino,
                 tamanho);
}

int32_t quorv_leitor_fichas_linha(const quorv_leitor_fichas* leitor) {
  return leitor != nullptr ? leitor->objeto.LINHA() : 0;
}

size_t quorv_leitor_fichas_descricao(const quorv_leitor_fichas* leitor, char* destino,
                                     size_t tamanho) {
  return CopiaDe([&] { return leitor != nullptr ? leitor->objeto.Descricao() : std::string(); },
                 destino, tamanho);
}

int32_t quorv_leitor_fichas_total(const quorv_leitor_fichas* leitor) {
  return leitor != nullptr ? leitor->objeto.TotalRecords() : 0;
}

int32_t quorv_leitor_fichas_posicao(const quorv_leitor_fichas* leitor) {
  if (leitor == nullptr) return -1;
  return Protegido([&] { return leitor->objeto.RecordCount(); }, -1);
}

int32_t quorv_converte_long(const char* texto) {
  return Protegido([&] { return quorv::ConverteLong(Texto(texto)); }, -1);
}

double quorv_converte_double(const char* texto) {
  return Protegido([&] { return quorv::ConverteDouble(Texto(texto)); }, -1.0);
}

double quorv_converte_data(const char* texto) {
  return Protegido([&] { return quorv::ConverteData(Texto(texto)); }, -1.0);
}

int quorv_valida_cnpj(const char* texto) {
  return Protegido([&] { return quorv::ValidaCNPJ(Texto(texto)) ? 1 : 0; }, 0);
}

int quorv_valida_cpf(const char* texto) {
  return Protegido([&] { return quorv::ValidaCPF(Texto(texto)) ? 1 : 0; }, 0);
}

int quorv_confere_digitos_cnpj(const char* texto) {
  return Protegido([&] { return quorv::ConfereDigitosCNPJ(Texto(texto)) ? 1 : 0; }, 0);
}

int quorv_confere_digitos_cpf(const char* texto) {
  return Protegido([&] { return quorv::ConfereDigitosCPF(Texto(texto)) ? 1 : 0; }, 0);
}

int quorv_valida_inscricao_estadual(const char* inscricao, const char* uf) {
  return Protegido(
      [&] { return quorv::ValidaInscricaoEstadual(Texto(inscricao), Texto(uf)) ? 1 : 0; }, 0);
}

void quorv_define_verificador_inscricao(quorv_verificador_inscricao funcao, void* contexto) {
  if (funcao == nullptr) {
    quorv::DefinirVerificadorInscricao(nullptr);
    return;
  }
  Protegido(
      [&] {
        quorv::DefinirVerificadorInscricao(
            [funcao, contexto](const std::string& inscricao, const std::string& uf) {
              return funcao(inscricao.c_str(), uf.c_str(), contexto);
            });
        return 0;
      },
      0);
}

int quorv_carrega_biblioteca_inscricao(const char* caminho) {
  return Protegido([&] { return quorv::CarregarBibliotecaInscricao(Texto(caminho)) ? 1 : 0; }, 0);
}

int quorv_verificador_inscricao_disponivel(void) {
  return quorv::VerificadorInscricaoDisponivel() ? 1 : 0;
}

size_t quorv_arquivo_drive(const char* caminho, char* destino, size_t tamanho) {
  return CopiaDe([&] { return quorv::FileUtility().GetDrive(Texto(caminho)); }, destino, tamanho);
}

size_t quorv_arquivo_nome(const char* caminho, int com_extensao, char* destino, size_t tamanho) {
  const bool comExtensao = com_extensao != 0;
  return CopiaDe([&] { return quorv::FileUtility().GetFileName(Texto(caminho), comExtensao); },
                 destino, tamanho);
}

size_t quorv_arquivo_extensao(const char* caminho, char* destino, size_t tamanho) {
  return CopiaDe([&] { return quorv::FileUtility().GetFileExtension(Texto(caminho)); }, destino,
                 tamanho);
}

size_t quorv_arquivo_pasta(const char* caminho, int com_dispositivo, char* destino,
                           size_t tamanho) {
  const bool comDispositivo = com_dispositivo != 0;
  return CopiaDe([&] { return quorv::FileUtility().GetPath(Texto(caminho), comDispositivo); },
                 destino, tamanho);
}

int quorv_arquivo_existe(const char* caminho) {
  return Protegido([&] { return quorv::FileUtility().FileExists(Texto(caminho)) ? 1 : 0; }, 0);
}

}  // extern "C"
