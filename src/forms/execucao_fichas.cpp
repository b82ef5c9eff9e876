// The registration-form run: the line frame, the dispatch to the record handlers, the progress
// event, the recording of warnings and the run status.
#include "forms/execucao_fichas.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "component/files/caminhos.hpp"
#include "component/shared/cp1252.hpp"
#include "component/shared/datas.hpp"
#include "component/shared/texto.hpp"
#include "forms/colunas.hpp"
#include "forms/verificacoes.hpp"
#include "quorvvalida/validacao_ficha_cadastral.hpp"

namespace quorv::fichas {
namespace {

using texto::Campo;

// Bytes a line takes with its CR LF: the progress estimates the file's lines by it.
constexpr double kBytesPorLinha = 262;

// The record types of a form file, as the type test searches them.
constexpr std::string_view kTiposConhecidos =
    "1;100;110;111;115;120;121;125;126;130;131;140;145;146;196;197;199;999";

// The record type as a 16-bit whole number (halves to even); empty when the columns are not a
// number, blanks included, or the number does not fit.
std::optional<int16_t> TipoDeRegistro(std::string_view campo) {
  const auto valor = texto::Numero(campo);
  if (!valor) return std::nullopt;
  const double inteiro = std::nearbyint(*valor);
  if (!(inteiro >= std::numeric_limits<int16_t>::min() &&
        inteiro <= std::numeric_limits<int16_t>::max())) {
    return std::nullopt;
  }
  return static_cast<int16_t>(inteiro);
}

// The type test searches the type's decimal text inside the list, kept as it is: a type that is
// only part of a listed one (10, 12, 99, 0...) passes, matches no handler, and its line is
// skipped without a warning.
//
// The search is made once, when the library is built, for every type of up to three digits; a
// longer type, or a negative one, never occurs in a list of numbers of at most three digits.
constexpr int kTiposBuscados = 1000;

struct TiposAchados {
  bool achado[kTiposBuscados] = {};
};

constexpr TiposAchados BuscaTipos() {
  TiposAchados tipos;
  for (int tr = 0; tr < kTiposBuscados; ++tr) {
    char texto[3] = {};
    const std::size_t digitos = tr >= 100 ? 3 : tr >= 10 ? 2 : 1;
    for (int valor = tr, i = static_cast<int>(digitos) - 1; i >= 0; --i, valor /= 10)
      texto[i] = static_cast<char>('0' + valor % 10);
    tipos.achado[tr] =
        kTiposConhecidos.find(std::string_view(texto, digitos)) != std::string_view::npos;
  }
  return tipos;
}

constexpr TiposAchados kTiposAchados = BuscaTipos();

bool TipoConhecido(int16_t tr) {
  return tr >= 0 && tr < kTiposBuscados && kTiposAchados.achado[tr];
}

// The handler of a record type inside a request; none for the header, the trailer and the types
// that only pass the type test.
Tratador TratadorDaSolicitacao(int16_t tr) {
  switch (tr) {
    case 100:
      return TrataTR100;
    case 110:
      return TrataTR110;
    case 111:
      return TrataTR111;
    case 115:
      return TrataTR115;
    case 120:
      return TrataTR120;
    case 121:
      return TrataTR121;
    case 125:
      return TrataTR125;
    case 126:
      return TrataTR126;
    case 130:
      return TrataTR130;
    case 131:
      return TrataTR131;
    case 140:
      return TrataTR140;
    case 145:
      return TrataTR145;
    case 146:
      return TrataTR146;
    case 196:
      return TrataTR196;
    case 197:
      return TrataTR197;
    case 199:
      return TrataTR199;
    default:
      return nullptr;
  }
}

}  // namespace

int16_t ExecucaoFichas::Executa(ValidacaoFichaCadastral& dono, const ArgumentosFichas& argumentos,
                                std::string& numeroRemessa) {
  dono_ = &dono;
  estado_ = EstadoSolicitacao{};
  solicitacaoRejeitada_ = false;
  dono.bTem_Erro_Grave = false;
  falha_ = Falha::Nenhuma;
  verificaCampos_ = !texto::IgualSemCaixa(argumentos.nomeServidor, "TARNWEB");
  if (!caminhos::DiretorioExiste(argumentos.diretorio)) {
    falha_ = Falha::DiretorioInexistente;
    return 9;
  }

  diretorio_ = argumentos.diretorio;
  origem_ = argumentos.origem;
  linhaAdvertencia_.Prepara(cp1252::DeUtf8(argumentos.separador), argumentos.chaveRemessa,
                            argumentos.chaveProcessamento);
  gravouAdvertencia_ = false;
  hoje_ = datas::Hoje(dono.Hoje);

  // A warnings file that is the input itself would be emptied before it is read: such a run is
  // refused before anything is opened or deleted.
  const std::string advertencias = caminhos::Advertencias(diretorio_);
  if (caminhos::MesmoArquivo(argumentos.arquivo, advertencias)) {
    falha_ = Falha::EntradaEhAdvertencias;
    return 9;
  }
  // The run stops at the first line of a wrong length, so a longer line is never read to its end.
  if (!entrada_.Abrir(argumentos.arquivo, kLargura)) {
    falha_ = Falha::EntradaInacessivel;
    Procedimentos_Finais_Fichas(diretorio_);
    return 9;
  }
  if (!advertencias_.Criar(advertencias)) {
    falha_ = Falha::AdvertenciasNaoCriadas;
    Procedimentos_Finais_Fichas(diretorio_);
    return 9;
  }

  int16_t status = Le();
  // The remittance number of the last header read, by this run or an earlier one.
  numeroRemessa = dono.sNumeroRemessaRef;
  if (dono.bTem_Erro_Grave) status = 9;
  Procedimentos_Finais_Fichas(diretorio_);
  return status;
}

int16_t ExecucaoFichas::Le() {
  int16_t status = 0;
  dono_->contSolicitacao = 0;
  dono_->contInscricao = 0;
  bool trailerLido = false;
  contadorLinhas_ = 1;
  Linha linha;
  try {
    while (!entrada_.Fim()) {
      Progresso();
      entrada_.Proxima(linha);
      TomaLinha(linha);
      const double sequencia = texto::ValorInicial(Campo(linhaAtual_, colunas::kSequencia));
      const std::optional<int16_t> tipo =
          TipoDeRegistro(Campo(linhaAtual_, colunas::kTipoRegistro));
      // A record type that is not a number (an empty line among them) cannot be dispatched: the
      // run fails there, without a warning for the line.
      if (!tipo) {
        dono_->bTem_Erro_Grave = true;
        falha_ = Falha::ErroGrave;
        return status;
      }
      const int16_t tr = *tipo;

      if (linha.comprimento != kLargura) return Para(2);
      if (texto::Contem(linhaAtual_, '#')) return Para(129);
      semCerquilha_ = true;
      if (sequencia != contadorLinhas_) return Para(3);
      if (!TipoConhecido(tr)) return Para(5);

      if (tr == 1) {
        if (sequencia != 1) return Para(3);
        dono_->sNumeroRemessaRef =
            cp1252::ParaUtf8(Campo(linhaAtual_, colunas::cabecalho::kNumeroRemessa));
        if (!Trata(TrataCabecalho)) return Para();
      } else if (tr == 999) {
        trailerLido = true;
        if (!Trata(TrataTrailer)) return Para();
      } else if (const Tratador tratador = TratadorDaSolicitacao(tr)) {
        if (tr == 100) solicitacaoRejeitada_ = false;
        if (tr == 110) linhaTR110_.assign(linhaAtual_);
        if (!Trata(tratador)) {
          solicitacaoRejeitada_ = true;
          status = 1;
        }
        // A request with any refused record, its closing included, is rejected as a whole; the
        // notice goes against the request's establishment line, with that line's own number.
        if (tr == 199 && solicitacaoRejeitada_) Gravar_Erro_FichaTR110(125, 0);
      }
      contadorLinhas_ += 1;
    }
  } catch (...) {
    // A failure inside the loop (a host's event that throws, memory) ends the run as one that
    // could not be made.
    dono_->bTem_Erro_Grave = true;
    falha_ = Falha::FalhaInterna;
    return status;
  }

  // The trailer refuses every file, so a run never reaches the end of its file after one; the
  // status of a file read to its end past an accepting trailer would be 0 or 1.
  if (trailerLido) {
    Procedimentos_Finais_Fichas(diretorio_);
    return status;
  }
  // Numbered from the last line read, not from the line counter, which has already moved on.
  Gravar_Erro_Ficha(7, 0);
  Procedimentos_Finais_Fichas(diretorio_);
  return 8;
}

void ExecucaoFichas::Progresso() {
  // The share is estimated from the file's length at 262 bytes a line, so a file whose lines end
  // in LF alone runs past 100 near its end; then every other event is exactly 100 and the next
  // one estimates again. Hosts have always been shown this alternation. A percentage below 0 or
  // not a number (which a host may set, since it receives it by reference) stops the events.
  if (porcentagem_ >= 0 && porcentagem_ <= 100) {
    porcentagem_ =
        contadorLinhas_ / (static_cast<double>(entrada_.Tamanho()) / kBytesPorLinha) * 100;
  } else if (porcentagem_ > 100) {
    porcentagem_ = 100;
  } else {
    return;
  }
  // The host's message loop is not yielded to: the library has none of its own.
  if (dono_->FichaProgress) dono_->FichaProgress(porcentagem_);
}

void ExecucaoFichas::TomaLinha(const Linha& linha) {
  linhaAtual_.assign(linha.texto.data(), std::min(linha.texto.size(), kLargura));
  linhaAtual_.resize(kLargura, ' ');
  semCerquilha_ = false;
}

bool ExecucaoFichas::Trata(Tratador tratador) {
  try {
    return tratador(*this, linhaAtual_);
  } catch (...) {
    dono_->bTem_Erro_Grave = true;
    falha_ = Falha::FalhaInterna;
    return false;
  }
}

int16_t ExecucaoFichas::Para(int32_t codigo) {
  Gravar_Erro_Ficha(codigo, contadorLinhas_);
  return Para();
}

int16_t ExecucaoFichas::Para() {
  Procedimentos_Finais_Fichas(diretorio_);
  return 8;
}

bool ExecucaoFichas::Gravar_Erro_Ficha(int32_t lCodErro, double dLINHA) {
  // "#" separates the warnings file's fields: the record copied into it may not hold one. The
  // blank that replaces it stays in the current line for its later warnings.
  if (!semCerquilha_) {
    std::replace(linhaAtual_.begin(), linhaAtual_.end(), '#', ' ');
    semCerquilha_ = true;
  }
  gravouAdvertencia_ = true;
  return Escreve(lCodErro, dLINHA, linhaAtual_);
}

bool ExecucaoFichas::Gravar_Erro_FichaTR110(int32_t lCodErro, double dLINHA) {
  gravouAdvertencia_ = true;
  return Escreve(lCodErro, dLINHA, linhaTR110_);
}

bool ExecucaoFichas::Escreve(int32_t codigo, double numero, std::string_view registro) {
  return advertencias_.Escreve(linhaAdvertencia_.Monta(codigo, registro, numero));
}

bool ExecucaoFichas::Procedimentos_Finais_Fichas(std::string_view diretorio) {
  entrada_.Fechar();
  advertencias_.Fechar();
  // A warning that could not be written is lost and the run keeps its status; the failure is
  // told to the host apart, so that an incomplete warnings file is never taken for a whole one.
  if (advertencias_.Falhou() && falha_ == Falha::Nenhuma) falha_ = Falha::EscritaAdvertencias;
  // An empty directory names no working directory: nothing is deleted then (the warnings file
  // would otherwise be looked for at the root of the disk).
  if (!gravouAdvertencia_ && !diretorio.empty()) {
    caminhos::Apaga(caminhos::Advertencias(diretorio));
  }
  return false;
}

}  // namespace quorv::fichas
