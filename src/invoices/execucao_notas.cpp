// The invoice run: the line frame, the structure rules between records, the dispatch to the
// record checks, the progress event and the run status.
#include "invoices/execucao_notas.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "component/files/caminhos.hpp"
#include "component/shared/cp1252.hpp"
#include "component/shared/datas.hpp"
#include "invoices/verificacoes.hpp"

namespace quorv::notas {
namespace {

using texto::Campo;
using texto::Coluna;

constexpr Coluna kSequencia{1, 8};
constexpr Coluna kTipoRegistro{9, 2};
constexpr Coluna kNumeroRemessa{60, 6};
constexpr Coluna kVersao{74, 10};

// Bytes of a line with its CR LF: the file's length must be a multiple of it.
constexpr std::uint64_t kBytesPorLinha = 162;
// The run time's position unit, in which the progress counts what was read.
constexpr std::uint64_t kUnidadePosicao = 128;

constexpr double kPrimeiraEmissao = 2;     // 1900-01-01
constexpr double kUltimaEmissao = 401404;  // 2999-01-01

// The record type of columns 9-10 as a number when both are digits; -1 otherwise.
int TipoDoRegistro(std::string_view tr) {
  if (tr.size() != 2 || texto::Digito(tr[0]) > 9 || texto::Digito(tr[1]) > 9) return -1;
  return static_cast<int>(texto::Digito(tr[0]) * 10 + texto::Digito(tr[1]));
}

// Adds a record of a detail type to the counts; other types are not counted.
void Conta(Contagem& contagem, int tipo) {
  switch (tipo) {
    case 10:
      contagem.tr10 += 1;
      break;
    case 15:
      contagem.tr15 += 1;
      break;
    case 20:
      contagem.tr20 += 1;
      break;
    case 25:
      contagem.tr25 += 1;
      break;
    case 30:
      contagem.tr30 += 1;
      break;
    case 35:
      contagem.tr35 += 1;
      break;
    case 40:
      contagem.tr40 += 1;
      break;
    default:
      break;
  }
}

// The eleven record types of an invoice file.
bool TipoConhecido(int tipo) {
  switch (tipo) {
    case 0:
    case 1:
    case 10:
    case 15:
    case 20:
    case 25:
    case 30:
    case 35:
    case 40:
    case 98:
    case 99:
      return true;
    default:
      return false;
  }
}

}  // namespace

int16_t ExecucaoNotas::Executa(const ArgumentosNotas& argumentos, std::string& numeroRemessa,
                               const std::function<void(double&)>& progresso,
                               const Relogio& relogio) {
  Inicializa();
  if (!caminhos::DiretorioExiste(argumentos.diretorio)) {
    falha_ = Falha::DiretorioInexistente;
    return 9;
  }
  // A warnings file that is the input itself would overwrite it before it is read: such a run
  // is refused before anything is opened or deleted.
  caminhoAdvertencias_ = caminhos::Advertencias(argumentos.diretorio);
  if (caminhos::MesmoArquivo(argumentos.arquivo, caminhoAdvertencias_)) {
    falha_ = Falha::EntradaEhAdvertencias;
    return 9;
  }

  linhaAdvertencia_.Prepara(cp1252::DeUtf8(argumentos.separador), argumentos.chaveRemessa,
                            argumentos.chaveProcessamento);
  soConta_ = argumentos.origem == "A0";
  // The server name is kept with the run; nothing in the invoice checks depends on it.
  nomeServidor_ = argumentos.nomeServidor;
  hoje_ = datas::Hoje(relogio);
  verificador_ = inscricao::Atual();

  // The run stops at the first line of a wrong length, so a longer line is never read to its end.
  if (!entrada_.Abrir(argumentos.arquivo, kLargura)) {
    falha_ = Falha::EntradaInacessivel;
    Finaliza();
    return 9;
  }
  if (!advertencias_.Criar(caminhoAdvertencias_)) {
    falha_ = Falha::AdvertenciasNaoCriadas;
    Finaliza();
    return 9;
  }
  try {
    return Le(numeroRemessa, progresso);
  } catch (...) {
    // A failure from outside the checks (a host's event that throws, memory) ends the run as
    // a file that could not be validated, with its files closed.
    falha_ = Falha::FalhaInterna;
    Finaliza();
    return 9;
  }
}

void ExecucaoNotas::Inicializa() {
  linhaAtual_.assign(kLargura, ' ');
  falha_ = Falha::Nenhuma;
  contadorLinhas_ = 0;
  resultado_ = 0;
  gravouAdvertencia_ = false;
  cabecalho_ = DadosCabecalho{};
  headerVisto_ = trailerVisto_ = grupoAberto_ = false;
  porArquivo_ = Contagem{};
  ReiniciaGrupo();
}

void ExecucaoNotas::ReiniciaGrupo() {
  grupoFechado_ = false;
  blocoTR10Aberto_ = blocoTR20Aberto_ = blocoTR30Aberto_ = false;
  tr15Visto_ = tr25Visto_ = tr35Visto_ = false;
  porGrupo_ = Contagem{};
  grupo_ = EstadoGrupo{};
  grupo_.maiorEmissao = kPrimeiraEmissao;
  grupo_.menorEmissao = kUltimaEmissao;
}

int16_t ExecucaoNotas::Le(std::string& numeroRemessa,
                          const std::function<void(double&)>& progresso) {
  // The progress event counts the file's whole lines from its length, and fires every
  // hundredth of them.
  const std::uint64_t linhas = entrada_.Tamanho() / kBytesPorLinha;
  linhasDoArquivo_ = static_cast<double>(linhas);
  passoProgresso_ = static_cast<std::uint64_t>(linhasDoArquivo_ / 100);
  proximoMultiplo_ = 0;
  contadorLinhas_ = 1;
  Linha linha;
  entrada_.Proxima(linha);
  TomaLinha(linha);
  if (const int16_t status = VerificaPrimeiraLinha(linha, numeroRemessa); status != 0) {
    return status;
  }

  for (;;) {
    if (entrada_.Fim()) {
      if (!trailerVisto_) {
        Grava(88);
        resultado_ = 8;
      }
      Finaliza();
      return resultado_;
    }
    Progresso(progresso);
    entrada_.Proxima(linha);
    TomaLinha(linha);
    contadorLinhas_ += 1;

    if (linha.comprimento != kLargura) return Para(77, 0);
    if (texto::NumeroOuMenosUm(Campo(linhaAtual_, kSequencia)) != contadorLinhas_) {
      return Para(166, contadorLinhas_);
    }
    const int tipo = TipoDoRegistro(Campo(linhaAtual_, kTipoRegistro));
    if (!TipoConhecido(tipo)) return Para(78, contadorLinhas_);
    // "#" is the warnings file's own separator; it is refused whatever separator the caller
    // chose.
    if (texto::Contem(linhaAtual_, '#')) return Para(201, contadorLinhas_);
    semCerquilha_ = true;
    if (tipo == 0) return Para(87, contadorLinhas_);

    Conta(porArquivo_, tipo);

    // The web system's origin "A0" only counts the records of the groups; the trailer is
    // still checked against those counts.
    if (soConta_ && tipo != 99) continue;

    if (tipo == 1) {
      if (trailerVisto_) return Para(147, contadorLinhas_);
      DespachaTR01();
    } else if (tipo == 98) {
      DespachaTR98();
    } else if (tipo == 99) {
      if (trailerVisto_) return Para(89, 0);
      if (!DespachaTR99()) {
        Finaliza();
        return 8;
      }
    } else {
      Despacha(tipo);
    }
  }
}

int16_t ExecucaoNotas::VerificaPrimeiraLinha(const Linha& linha, std::string& numeroRemessa) {
  if (linha.comprimento != kLargura) return Para(77, 0);
  if (texto::Contem(linhaAtual_, '#')) return Para(201, 0);
  semCerquilha_ = true;
  const std::uint64_t tamanho = entrada_.Tamanho();
  if (tamanho / kBytesPorLinha == 0 || tamanho % kBytesPorLinha != 0) {
    return Para(76, contadorLinhas_);
  }
  if (texto::NumeroOuMenosUm(Campo(linhaAtual_, kSequencia)) != 1) {
    return Para(166, contadorLinhas_);
  }
  if (Campo(linhaAtual_, kTipoRegistro) != "00") return Para(86, contadorLinhas_);

  const double versao = texto::ValorInicial(Campo(linhaAtual_, kVersao));
  if (versao != 1 && versao != 2) return Para(71, 0);
  cabecalho_ = LeCabecalho(static_cast<int>(versao), linhaAtual_);
  const int16_t status = versao == 1 ? VerificaCabecalhoV1(*this, linhaAtual_)
                                     : VerificaCabecalhoV2(*this, linhaAtual_, linhaAtual_);
  if (status != 0) {
    Finaliza();
    return status == 9 ? 9 : 8;
  }
  headerVisto_ = true;
  trailerVisto_ = false;
  numeroRemessa = cp1252::ParaUtf8(Campo(linhaAtual_, kNumeroRemessa));
  return 0;
}

void ExecucaoNotas::Despacha(int tipo) {
  const std::string_view registro = linhaAtual_;
  // The structure rule of the record comes first, then the group's context, then the end of
  // the blocks the record closes, and last the record's own check; a warning in one of them
  // does not keep the record from its check.
  bool aceito = true;
  if (tipo == 10) {
    Contexto();
    FechaBlocos();
    porGrupo_.tr10 += 1;
    blocoTR10Aberto_ = true;
    tr15Visto_ = false;
    aceito = VerificaTR10(*this, registro);
  } else if (tipo == 15) {
    Regra(!blocoTR10Aberto_, 153);
    Contexto();
    porGrupo_.tr15 += 1;
    tr15Visto_ = true;
    aceito = VerificaTR15(*this, registro);
  } else if (tipo == 20) {
    Regra(porGrupo_.tr10 == 0, 154);
    Contexto();
    FechaBlocos();
    porGrupo_.tr20 += 1;
    blocoTR20Aberto_ = true;
    tr25Visto_ = false;
    aceito = VerificaTR20(*this, registro);
  } else if (tipo == 25) {
    Regra(!blocoTR20Aberto_, 155);
    Contexto();
    porGrupo_.tr25 += 1;
    tr25Visto_ = true;
    aceito = VerificaTR25(*this, registro);
  } else if (tipo == 30) {
    Regra(porGrupo_.tr10 == 0, 156);
    Contexto();
    FechaBlocos();
    porGrupo_.tr30 += 1;
    blocoTR30Aberto_ = true;
    tr35Visto_ = false;
    aceito = VerificaTR30(*this, registro);
  } else if (tipo == 35) {
    Regra(!blocoTR30Aberto_, 157);
    Contexto();
    porGrupo_.tr35 += 1;
    tr35Visto_ = true;
    aceito = VerificaTR35(*this, registro);
  } else if (tipo == 40) {
    Regra(porGrupo_.tr10 == 0, 156);
    Contexto();
    FechaBlocos();
    porGrupo_.tr40 += 1;
    aceito = VerificaTR40(*this, registro);
  }
  if (!aceito) MarcaErro();
}

void ExecucaoNotas::DespachaTR01() {
  Regra(grupoAberto_, 148);
  // The group opening has nothing to check: the record only opens a group.
  if (!VerificaTR01(*this, linhaAtual_)) resultado_ = 1;
  grupoAberto_ = true;
  ReiniciaGrupo();
}

void ExecucaoNotas::DespachaTR98() {
  Regra(porGrupo_.tr10 == 0, 141);
  Contexto();
  FechaBlocos();
  grupoAberto_ = false;
  grupoFechado_ = true;
  if (!VerificaTR98(*this, linhaAtual_)) MarcaErro();
}

bool ExecucaoNotas::DespachaTR99() {
  trailerVisto_ = true;
  Regra(grupoAberto_, 148);
  const int16_t status = cabecalho_.versao == 1
                             ? VerificaTrailerV1(*this, cabecalho_.linha, linhaAtual_)
                             : VerificaTrailerV2(*this, cabecalho_.linha, linhaAtual_);
  return status != 1;
}

bool ExecucaoNotas::VerificaContextoGrupo() {
  bool aceito = true;
  if (!headerVisto_) {
    Grava(86);
    aceito = false;
  }
  if (trailerVisto_) {
    Grava(147);
    aceito = false;
  }
  // A group closed by its TR 98 is also no longer open, so a record after it is told 148
  // twice; both warnings have always been written.
  if (grupoFechado_) {
    Grava(148);
    aceito = false;
  }
  if (!grupoAberto_) {
    Grava(148);
    aceito = false;
  }
  return aceito;
}

bool ExecucaoNotas::FechaBlocosPendentes() {
  bool aceito = true;
  if (blocoTR10Aberto_) {
    aceito = FechaBlocoTR10(*this) && aceito;
    blocoTR10Aberto_ = false;
  }
  if (blocoTR20Aberto_) {
    aceito = FechaBlocoTR20(*this) && aceito;
    blocoTR20Aberto_ = false;
  }
  if (blocoTR30Aberto_) {
    aceito = FechaBlocoTR30(*this) && aceito;
    blocoTR30Aberto_ = false;
  }
  return aceito;
}

void ExecucaoNotas::Progresso(const std::function<void(double&)>& progresso) {
  if (!progresso) return;
  // The position counts 128-byte units against 162-byte lines, so the figure is not a true
  // share of lines and runs past 100 near the end; hosts have always been shown this figure.
  const std::uint64_t posicao = entrada_.Consumidos() / kUnidadePosicao;
  // The event comes when the position is a multiple of the step; files of fewer than 100 lines
  // have no step, and the event comes before every line. The position only grows, so the next
  // multiple is kept and worked out again only once the position has passed it.
  if (passoProgresso_ != 0) {
    if (posicao > proximoMultiplo_) {
      proximoMultiplo_ = (posicao + passoProgresso_ - 1) / passoProgresso_ * passoProgresso_;
    }
    if (posicao != proximoMultiplo_) return;
  }
  double porcentagem = static_cast<double>(posicao) / linhasDoArquivo_ * 100;
  progresso(porcentagem);
}

void ExecucaoNotas::TomaLinha(const Linha& linha) {
  // The current line keeps its 160 characters: the line read is copied over it, and blanks fill
  // what a shorter line leaves.
  const std::size_t copiados = std::min(linha.texto.size(), kLargura);
  std::copy_n(linha.texto.data(), copiados, linhaAtual_.begin());
  std::fill(linhaAtual_.begin() + static_cast<std::ptrdiff_t>(copiados), linhaAtual_.end(), ' ');
  semCerquilha_ = false;
}

void ExecucaoNotas::Finaliza() {
  entrada_.Fechar();
  advertencias_.Fechar();
  // A warning that could not be written is lost and the run keeps its status; the failure is
  // told to the host apart, so that an incomplete warnings file is never taken for a whole one.
  if (advertencias_.Falhou() && falha_ == Falha::Nenhuma) falha_ = Falha::EscritaAdvertencias;
  if (!gravouAdvertencia_) caminhos::Apaga(caminhoAdvertencias_);
}

int16_t ExecucaoNotas::Para(int32_t codigo, double linha) {
  Grava(codigo, linha);
  Finaliza();
  resultado_ = 8;
  return 8;
}

bool ExecucaoNotas::Grava(int32_t codigo, double linha) {
  gravouAdvertencia_ = true;
  // The record copied into the warning may not hold the separator "#"; the blank that
  // replaces it stays in the line for its later warnings.
  if (!semCerquilha_) {
    std::replace(linhaAtual_.begin(), linhaAtual_.end(), '#', ' ');
    semCerquilha_ = true;
  }
  return advertencias_.Escreve(linhaAdvertencia_.Monta(codigo, linhaAtual_, linha));
}

}  // namespace quorv::notas
