// The library's public classes for JavaScript (embind): the same names, the same arguments in the
// same order, over files in the module's file system. Arguments that C++ takes by reference and
// changes (the remessa number) are objects whose `valor` the call reads and writes back; events
// and the clock are JavaScript functions.
#include <emscripten/bind.h>
#include <emscripten/em_js.h>
#include <emscripten/emscripten.h>
#include <emscripten/val.h>

#include <cstdint>
#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

#include "quorvvalida/quorvvalida.hpp"

namespace {

using emscripten::val;

// A JavaScript function the host gave could not answer (it threw); the library takes it as a
// failure of its own caller, as it takes a C++ event that throws.
class FalhaDoAnfitriao : public std::runtime_error {
 public:
  FalhaDoAnfitriao() : std::runtime_error("a função do anfitrião falhou") {}
};

// The host's functions reach C++ wrapped on the JavaScript side (index.js), which catches what
// they throw, since a JavaScript exception cannot cross C++ frames, and answers false instead.
template <typename... Argumentos>
val Chama(const val& funcao, Argumentos&&... argumentos) {
  val resposta = funcao(std::forward<Argumentos>(argumentos)...);
  if (resposta.isFalse()) throw FalhaDoAnfitriao();
  return resposta;
}

// An event's percentage goes out by value and comes back changed when the host answers a
// number, as a by-reference argument does.
std::function<void(double&)> Evento(const val& funcao) {
  if (funcao.isNull() || funcao.isUndefined()) return {};
  return [funcao](double& porcentagem) {
    const val resposta = Chama(funcao, val(porcentagem));
    if (resposta.isNumber()) porcentagem = resposta.as<double>();
  };
}

quorv::Relogio Relogio(const val& funcao) {
  if (funcao.isNull() || funcao.isUndefined()) return {};
  return [funcao] { return Chama(funcao).as<double>(); };
}

// The text held by a by-reference argument; an object without one starts empty.
std::string Valor(const val& referencia) {
  if (!referencia.isNull() && !referencia.isUndefined()) {
    const val valor = referencia["valor"];
    if (valor.isString()) return valor.as<std::string>();
  }
  return {};
}

void Devolve(val& referencia, const std::string& texto) {
  if (!referencia.isNull() && !referencia.isUndefined()) referencia.set("valor", texto);
}

// Valida_Dados and Valida_Fichas with the first three arguments and any number of the optional
// ones, left out from the end as in C++: one overload per count.
template <typename Classe, typename... Opcionais>
int16_t Valida(Classe& validador, const std::string& arquivo, val numero,
               const std::string& diretorio, Opcionais... opcionais) {
  std::string remessa = Valor(numero);
  int16_t status = 9;
  if constexpr (std::is_same_v<Classe, quorv::Validacao>) {
    status = validador.Valida_Dados(arquivo, remessa, diretorio, opcionais...);
  } else {
    status = validador.Valida_Fichas(arquivo, remessa, diretorio, opcionais...);
  }
  Devolve(numero, remessa);
  return status;
}

template <typename Classe, typename Binding>
void Validacoes(Binding& binding, const char* nome) {
  using S = std::string;
  binding.function(nome, &Valida<Classe>)
      .function(nome, &Valida<Classe, double>)
      .function(nome, &Valida<Classe, double, double>)
      .function(nome, &Valida<Classe, double, double, S>)
      .function(nome, &Valida<Classe, double, double, S, S>)
      .function(nome, &Valida<Classe, double, double, S, S, S>);
}

// The web facade's validating methods, the remessa number by reference.
template <bool (quorv::ValidacaoTarnWEB::*Metodo)(const std::string&, const std::string&,
                                                  const std::string&, std::string&)>
bool Fachada(quorv::ValidacaoTarnWEB& web, const std::string& arquivo, const std::string& retorno,
             const std::string& diretorio, val numero) {
  std::string remessa = Valor(numero);
  const bool resultado = (web.*Metodo)(arquivo, retorno, diretorio, remessa);
  Devolve(numero, remessa);
  return resultado;
}

bool ValidaTipo(quorv::ValidacaoTarnWEB& web, const std::string& arquivo,
                const std::string& retorno, const std::string& diretorio, val numero,
                const std::string& tipo) {
  std::string remessa = Valor(numero);
  const bool resultado = web.Valida_TIPO(arquivo, retorno, diretorio, remessa, tipo);
  Devolve(numero, remessa);
  return resultado;
}

// RecordCount throws without an open stream; JavaScript receives an Error with its message.
int32_t RecordCount(const quorv::clsQuorvAdvBDFichas& leitor) {
  try {
    return leitor.RecordCount();
  } catch (const std::exception& erro) {
    val::global("Error").new_(std::string(erro.what())).throw_();
  }
}

// The host's checker is asked for nearly every invoice record, so the answer comes through a
// plain call with the texts' addresses rather than through embind's values, which cost several
// times more. The module keeps the function (index.js puts it there); it answers 0 for a valid
// number and anything else for a refused one, as the state-registration library does.
EM_JS(int, PerguntaAoVerificador,
      (const char* inscricao, int tamanhoInscricao, const char* uf, int tamanhoUf), {
        // Registrations and states are short and nearly always ASCII, which is read a byte a
        // character.
        function texto(endereco, tamanho) {
          let resultado = "";
          for (let i = endereco; i < endereco + tamanho; ++i) {
            const byte = HEAPU8[i];
            if (byte > 127) return UTF8ToString(endereco, tamanho);
            resultado += String.fromCharCode(byte);
          }
          return resultado;
        }
        return Module["verificadorInscricao"](texto(inscricao, tamanhoInscricao),
                                              texto(uf, tamanhoUf));
      });

void DefinirVerificador(bool definido) {
  if (!definido) {
    quorv::DefinirVerificadorInscricao({});
    return;
  }
  quorv::DefinirVerificadorInscricao([](const std::string& inscricao, const std::string& uf) {
    return static_cast<int16_t>(PerguntaAoVerificador(inscricao.data(),
                                                      static_cast<int>(inscricao.size()), uf.data(),
                                                      static_cast<int>(uf.size())));
  });
}

// Every registration accepted without asking anyone, as the command line's
// --sem-verificar-inscricao: a checker of the module's own, with no call out to JavaScript.
void AceitarTodasInscricoes() {
  quorv::DefinirVerificadorInscricao(
      [](const std::string&, const std::string&) { return static_cast<int16_t>(0); });
}

std::string Versao() {
  return quorv::kVersao;
}

// Why the object's last call could not validate or could not write its output whole, as the
// fixed number of the library's Falha, which hosts keep as a plain integer.
template <typename Classe>
int32_t UltimaFalha(const Classe& objeto) {
  return static_cast<int32_t>(objeto.UltimaFalha());
}

// Any number is taken: one outside the list gets the library's sentence that says so.
std::string DescricaoDaFalha(int32_t falha) {
  return quorv::DescricaoDaFalha(static_cast<quorv::Falha>(falha));
}

}  // namespace

EMSCRIPTEN_BINDINGS(quorvvalida) {
  using emscripten::class_;
  using emscripten::function;
  using quorv::ValidacaoFichaCadastral;

  auto validacao = class_<quorv::Validacao>("Validacao").constructor<>();
  Validacoes<quorv::Validacao>(validacao, "Valida_Dados");
  validacao
      .function("Gravar_Erro",
                emscripten::select_overload<bool(int32_t)>(&quorv::Validacao::Gravar_Erro))
      .function("Gravar_Erro", emscripten::select_overload<bool(int32_t, const double&)>(
                                   &quorv::Validacao::Gravar_Erro))
      .function("UltimaFalha", &UltimaFalha<quorv::Validacao>)
      .function(
          "_DefinirProgress", +[](quorv::Validacao& v, val f) { v.Progress = Evento(f); })
      .function(
          "_DefinirHoje", +[](quorv::Validacao& v, val f) { v.Hoje = Relogio(f); });

  auto fichas = class_<ValidacaoFichaCadastral>("ValidacaoFichaCadastral").constructor<>();
  Validacoes<ValidacaoFichaCadastral>(fichas, "Valida_Fichas");
  fichas.property("sNumeroRemessaRef", &ValidacaoFichaCadastral::sNumeroRemessaRef)
      .property("sTipo_Solicitacao", &ValidacaoFichaCadastral::sTipo_Solicitacao)
      .property("sNro_Solicitacao", &ValidacaoFichaCadastral::sNro_Solicitacao)
      .property("iOrdem_Faturamento", &ValidacaoFichaCadastral::iOrdem_Faturamento)
      .property("iOrdem_Talao", &ValidacaoFichaCadastral::iOrdem_Talao)
      .property("Dt_Inicio_Atividade", &ValidacaoFichaCadastral::Dt_Inicio_Atividade)
      .property("Dt_Fim_Atividade", &ValidacaoFichaCadastral::Dt_Fim_Atividade)
      .property("contSolicitacao", &ValidacaoFichaCadastral::contSolicitacao)
      .property("contInscricao", &ValidacaoFichaCadastral::contInscricao)
      .property("bTem_Erro_Grave", &ValidacaoFichaCadastral::bTem_Erro_Grave)
      .function("Procedimentos_Finais_Fichas",
                &ValidacaoFichaCadastral::Procedimentos_Finais_Fichas)
      .function("UltimaFalha", &UltimaFalha<ValidacaoFichaCadastral>)
      .function("Gravar_Erro_Ficha", emscripten::select_overload<bool(int32_t)>(
                                         &ValidacaoFichaCadastral::Gravar_Erro_Ficha))
      .function("Gravar_Erro_Ficha", emscripten::select_overload<bool(int32_t, const double&)>(
                                         &ValidacaoFichaCadastral::Gravar_Erro_Ficha))
      .function("Gravar_Erro_FichaTR110", emscripten::select_overload<bool(int32_t)>(
                                              &ValidacaoFichaCadastral::Gravar_Erro_FichaTR110))
      .function("Gravar_Erro_FichaTR110", emscripten::select_overload<bool(int32_t, const double&)>(
                                              &ValidacaoFichaCadastral::Gravar_Erro_FichaTR110))
      .function(
          "_DefinirFichaProgress",
          +[](ValidacaoFichaCadastral& v, val f) { v.FichaProgress = Evento(f); })
      .function(
          "_DefinirHoje", +[](ValidacaoFichaCadastral& v, val f) { v.Hoje = Relogio(f); });

  class_<quorv::ValidacaoTarnWEB>("ValidacaoTarnWEB")
      .constructor<>()
      .function("Valida_Dados_Tarnweb", &Fachada<&quorv::ValidacaoTarnWEB::Valida_Dados_Tarnweb>)
      .function("BreakString", &quorv::ValidacaoTarnWEB::BreakString)
      .function("Valida_TIPO", &ValidaTipo)
      .function("Valida_Dados_Ficha_Cadastral",
                &Fachada<&quorv::ValidacaoTarnWEB::Valida_Dados_Ficha_Cadastral>)
      .function("TipoArquivo", &quorv::ValidacaoTarnWEB::TipoArquivo)
      .function("ProgramaChamador", &quorv::ValidacaoTarnWEB::ProgramaChamador)
      .function("UltimaFalha", &UltimaFalha<quorv::ValidacaoTarnWEB>)
      .function(
          "_DefinirHoje", +[](quorv::ValidacaoTarnWEB& w, val f) { w.Hoje = Relogio(f); });

  class_<quorv::clsQuorvMsg>("clsQuorvMsg")
      .constructor<>()
      .function("MensagemAdvertencia", &quorv::clsQuorvMsg::MensagemAdvertencia);
  class_<quorv::clsQuorvMsgFichas>("clsQuorvMsgFichas")
      .constructor<>()
      .function("MensagemAdvertenciaFichas", &quorv::clsQuorvMsgFichas::MensagemAdvertenciaFichas);

  class_<quorv::clsQuorvAdvBDFichas>("clsQuorvAdvBDFichas")
      .constructor<>()
      .function("OpenStream", &quorv::clsQuorvAdvBDFichas::OpenStream)
      .function("CloseStream", &quorv::clsQuorvAdvBDFichas::CloseStream)
      .function("MoveNext", &quorv::clsQuorvAdvBDFichas::MoveNext)
      .function("EndOfStream", &quorv::clsQuorvAdvBDFichas::EndOfStream)
      .function("TR", &quorv::clsQuorvAdvBDFichas::TR)
      .function("Nota", &quorv::clsQuorvAdvBDFichas::Nota)
      .function("LINHA", &quorv::clsQuorvAdvBDFichas::LINHA)
      .function("Descricao", &quorv::clsQuorvAdvBDFichas::Descricao)
      .function("TotalRecords", &quorv::clsQuorvAdvBDFichas::TotalRecords)
      .function("RecordCount", &RecordCount);

  class_<quorv::FileUtility>("FileUtility")
      .constructor<>()
      .function("GetDrive", &quorv::FileUtility::GetDrive)
      .function("GetFileName", emscripten::select_overload<std::string(const std::string&) const>(
                                   &quorv::FileUtility::GetFileName))
      .function("GetFileName",
                emscripten::select_overload<std::string(const std::string&, const bool&) const>(
                    &quorv::FileUtility::GetFileName))
      .function("GetFileExtension", &quorv::FileUtility::GetFileExtension)
      .function("GetPath", emscripten::select_overload<std::string(const std::string&) const>(
                               &quorv::FileUtility::GetPath))
      .function("GetPath",
                emscripten::select_overload<std::string(const std::string&, const bool&) const>(
                    &quorv::FileUtility::GetPath))
      .function("FileExists", &quorv::FileUtility::FileExists);

  function("ConverteLong", &quorv::ConverteLong);
  function("ConverteDouble", &quorv::ConverteDouble);
  function("ConverteData", &quorv::ConverteData);
  function("ValidaCNPJ", &quorv::ValidaCNPJ);
  function("ValidaCPF", &quorv::ValidaCPF);
  function("ConfereDigitosCNPJ", &quorv::ConfereDigitosCNPJ);
  function("ConfereDigitosCPF", &quorv::ConfereDigitosCPF);
  function("ValidaInscricaoEstadual", &quorv::ValidaInscricaoEstadual);
  function("_DefinirVerificadorInscricao", &DefinirVerificador);
  function("_AceitarTodasInscricoes", &AceitarTodasInscricoes);
  function("VerificadorInscricaoDisponivel", &quorv::VerificadorInscricaoDisponivel);
  function("SerialDaData", &quorv::SerialDaData);
  function("DataLocalDeHoje", &quorv::DataLocalDeHoje);
  function("DescricaoDaFalha", &DescricaoDaFalha);
  function("Versao", &Versao);
}
