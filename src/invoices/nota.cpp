// The producer invoice (TR 10): its fields from left to right, and the values it leaves for the
// later records of its group. Each field that fails records its warning and the next field is
// checked all the same.
#include <algorithm>

#include "component/shared/datas.hpp"
#include "component/shared/texto.hpp"
#include "invoices/campos_notas.hpp"
#include "invoices/verificacoes.hpp"
#include "quorvvalida/geral.hpp"

namespace quorv::notas {
namespace {

using namespace std::string_view_literals;

using texto::Apara;
using texto::Coluna;
using texto::EmBranco;

constexpr Coluna kEmitente{11, 10};
constexpr Coluna kTipoNota{21, 1};
constexpr Coluna kSerie{22, 3};
constexpr Coluna kNumero{25, 6};
constexpr Coluna kMovimento{31, 1};
constexpr Coluna kEmissao{32, 8};
constexpr Coluna kDestinatario{40, 14};
constexpr Coluna kDocumento{54, 14};
constexpr Coluna kPais{68, 3};
constexpr Coluna kUF{71, 2};
constexpr Coluna kSituacao{73, 1};
constexpr Coluna kOperacao{74, 4};
constexpr Coluna kBaseICMS{78, 13};
constexpr Coluna kValorICMS{91, 13};
constexpr Coluna kMercadorias{104, 13};
constexpr Coluna kFunrural{117, 13};
constexpr Coluna kTotalNota{130, 13};
constexpr Coluna kRendimento{143, 1};

// The note being checked, with what its checks share.
struct Nota {
  ExecucaoNotas& execucao;
  Ocorrencias& ocorrencias;
  std::string_view registro;
  // A note of situation 2 or 3, or of movement type E, is spared many of the value checks.
  bool relaxada;

  std::string_view Campo(Coluna coluna) const { return texto::Campo(registro, coluna); }
  void Falha(int32_t codigo) const { ocorrencias.Falha(codigo); }
  EstadoGrupo& Grupo() const { return execucao.Grupo(); }
  const DadosCabecalho& Cabecalho() const { return execucao.Cabecalho(); }
};

bool Relaxada(std::string_view registro) {
  const std::string_view situacao = texto::Campo(registro, kSituacao);
  return situacao == "2" || situacao == "3" || texto::Campo(registro, kMovimento) == "E";
}

bool Entre(double valor, double minimo, double maximo) {
  return valor >= minimo && valor <= maximo;
}

void VerificaEmitente(const Nota& nota) {
  const std::string_view emitente = nota.Campo(kEmitente);
  if (EmBranco(emitente)) {
    nota.Falha(106);
    return;
  }
  // Each of the tests below records its own 106.
  const DadosCabecalho& cabecalho = nota.Cabecalho();
  if (cabecalho.emitenteEsperado) {
    const auto numero = texto::Numero(emitente);
    if (!numero || *numero != *cabecalho.emitenteEsperado) nota.Falha(106);
  }
  if (!nota.execucao.InscricaoValida(emitente, kUFLocal)) nota.Falha(106);
  // The first three characters name the issuer's municipality. Under a version-2 header of source
  // type 1 they are compared with the whole 14-character source code, which they never equal:
  // every note of such a file is told 106, as it always has been.
  if (cabecalho.verificaPrefixo && emitente.substr(0, 3) != cabecalho.prefixoEsperado) {
    nota.Falha(106);
  }
  // A producer's registration has "1" as its fourth character.
  if (emitente[3] != '1') nota.Falha(106);

  EstadoGrupo& grupo = nota.Grupo();
  if (!EmBranco(grupo.emitenteAnterior) && grupo.emitenteAnterior != emitente) nota.Falha(178);
  grupo.emitenteAnterior = emitente;
}

void VerificaTipoNota(const Nota& nota) {
  const std::string_view tipo = nota.Campo(kTipoNota);
  if (!texto::EhNumerico(tipo) || !ExisteNoVetor(tipo, {"1"sv, "2"sv, "9"sv})) nota.Falha(107);
}

void VerificaSerie(const Nota& nota) {
  const std::string_view serie = nota.Campo(kSerie);
  const auto valor = texto::Numero(serie);
  if (nota.Campo(kTipoNota) == "9") {
    // A note of type 9 may have no series, and its series may be zero.
    if (EmBranco(serie)) return;
    if (!valor || *valor < 0) nota.Falha(108);
    return;
  }
  if (!valor || *valor <= 0) nota.Falha(108);
}

void VerificaNumero(const Nota& nota) {
  const std::string_view numero = nota.Campo(kNumero);
  const auto valor = texto::Numero(numero);
  if (Apara(numero).size() != 6 || !valor || *valor <= 0) nota.Falha(109);
}

void VerificaMovimento(const Nota& nota) {
  const std::string_view movimento = nota.Campo(kMovimento);
  if (EmBranco(movimento) || !ExisteNoVetor(movimento, {"I"sv, "S"sv, "E"sv})) nota.Falha(110);
  // The group keeps the note's situation and movement as written, valid or not.
  EstadoGrupo& grupo = nota.Grupo();
  grupo.ultimaSituacao = nota.Campo(kSituacao);
  grupo.ultimoMovimento = movimento;
}

void VerificaEmissao(const Nota& nota) {
  const std::string_view emissao = nota.Campo(kEmissao);
  if (Apara(emissao).size() != 8) {
    nota.Falha(111);
    return;
  }
  // A date of zeros is allowed only for a relaxed note.
  const auto valor = texto::Numero(emissao);
  if (valor && *valor == 0) {
    if (!nota.relaxada) nota.Falha(111);
    return;
  }
  const auto data = datas::DataDaMascara(emissao);
  if (!data || *data < Data(1995, 1, 1) || *data > nota.execucao.Hoje()) {
    nota.Falha(111);
    return;
  }
  EstadoGrupo& grupo = nota.Grupo();
  grupo.maiorEmissao = std::max(grupo.maiorEmissao, *data);
  grupo.menorEmissao = std::min(grupo.menorEmissao, *data);
}

void VerificaDestinatario(const Nota& nota) {
  const std::string_view destinatario = nota.Campo(kDestinatario);
  const auto valor = texto::Numero(destinatario);
  if (EmBranco(destinatario) || (valor && *valor == 0)) {
    nota.Falha(112);
    return;
  }
  EstadoGrupo& grupo = nota.Grupo();
  if (!EmBranco(grupo.destinatarioAnterior) && grupo.destinatarioAnterior != destinatario) {
    grupo.grupoDiverge = true;
  }
  if (!texto::IgualSemCaixa(destinatario, "ISENTO")) {
    const std::string_view uf = nota.Campo(kUF);
    // A source of type 5 only sends notes whose counterpart is exempt. A counterpart of another
    // state is not checked.
    if (nota.Cabecalho().tipoFonte == 5 ||
        (uf == kUFLocal && !nota.execucao.InscricaoValida(destinatario, uf))) {
      nota.Falha(112);
      return;
    }
  }
  grupo.destinatarioAnterior = destinatario;
}

void VerificaDocumento(const Nota& nota) {
  if (!DocumentoAceito(nota.Campo(kDocumento), Contribuinte::kCnpjOuCpf)) nota.Falha(113);
}

// The country and the UF must agree: UF "EX" with a foreign country, any other UF with the home
// country.
bool LocalIncoerente(std::string_view uf, double pais) {
  return (uf == kUFExterior && pais == kPaisLocal) || (uf != kUFExterior && pais != kPaisLocal);
}

void VerificaPais(const Nota& nota) {
  const std::string_view pais = nota.Campo(kPais);
  if (EmBranco(pais)) {
    nota.Falha(114);
    return;
  }
  EstadoGrupo& grupo = nota.Grupo();
  if (!EmBranco(grupo.paisAnterior) && grupo.paisAnterior != pais) grupo.grupoDiverge = true;
  const auto valor = texto::Numero(pais);
  if (Apara(pais).size() != 3 || !valor) {
    nota.Falha(114);
    return;
  }
  if (*valor == 0) {
    if (nota.relaxada) {
      grupo.paisAnterior = pais;
    } else {
      nota.Falha(114);
    }
    return;
  }
  const std::string_view uf = nota.Campo(kUF);
  if (!Entre(*valor, 1, 999) || (!EmBranco(uf) && LocalIncoerente(uf, *valor))) {
    nota.Falha(114);
    return;
  }
  grupo.paisAnterior = pais;
}

void VerificaUF(const Nota& nota) {
  const std::string_view uf = nota.Campo(kUF);
  EstadoGrupo& grupo = nota.Grupo();
  if (EmBranco(uf)) {
    if (nota.relaxada) {
      grupo.ufAnterior = uf;
    } else {
      nota.Falha(115);
    }
    return;
  }
  // A UF of one letter is told with the group-difference code, not 115: deliberate, the
  // treasury's systems have always received it so.
  if (Apara(uf).size() != 2) {
    nota.Falha(178);
    return;
  }
  if (!EmBranco(grupo.ufAnterior) && grupo.ufAnterior != uf) grupo.grupoDiverge = true;
  // A country of zero, or one that is no number (told by the country's own check), leaves the UF
  // without a country to agree with.
  const auto pais = texto::Numero(nota.Campo(kPais));
  if (pais && *pais != 0 && LocalIncoerente(uf, *pais)) {
    nota.Falha(115);
    return;
  }
  grupo.ufAnterior = uf;
}

void VerificaSituacao(const Nota& nota) {
  const std::string_view situacao = nota.Campo(kSituacao);
  if (!texto::EhNumerico(situacao) || !ExisteNoVetor(situacao, {"1"sv, "2"sv, "3"sv})) {
    nota.Falha(116);
    return;
  }
  nota.Grupo().ultimaSituacao = situacao;
}

// The operation code's thousand tells where the counterpart is: 1 and 5 in the home state, 2 and
// 6 in another state, 3 and 7 abroad. Each disagreement is a 118.
void VerificaLocalDaOperacao(const Nota& nota, double codigo, std::string_view uf) {
  const bool local = uf == kUFLocal;
  const bool exterior = uf == kUFExterior;
  if ((Entre(codigo, 1000, 1999) || Entre(codigo, 5000, 5999)) && !local) nota.Falha(118);
  if ((Entre(codigo, 2000, 2999) || Entre(codigo, 6000, 6999)) && (local || exterior)) {
    nota.Falha(118);
  }
  if ((Entre(codigo, 3000, 3999) || Entre(codigo, 7000, 7999)) && !exterior) nota.Falha(118);
}

// The fourth character of a registration written right-aligned in ten characters, with zeros
// before a shorter one; a longer one keeps its last ten.
char QuartoAlinhadoEmDez(std::string_view registro) {
  const std::string_view aparado = Apara(registro);
  if (aparado.size() >= 10) return aparado[aparado.size() - 10 + 3];
  const std::size_t zeros = 10 - aparado.size();
  return zeros > 3 ? '0' : aparado[3 - zeros];
}

// The operation code against the counterpart: who may receive or send under each code. The first
// disagreement is the field's 118.
void VerificaDestinatarioDaOperacao(const Nota& nota, double codigo, std::string_view uf) {
  const std::string_view destinatario = nota.Campo(kDestinatario);
  const std::string_view emitente = nota.Campo(kEmitente);
  const bool produtor = destinatario[3] == '1';
  const bool isento = texto::IgualSemCaixa(destinatario, "ISENTO");
  const bool mesmoMunicipio = destinatario.substr(0, 3) == emitente.substr(0, 3);
  const bool local = uf == kUFLocal;
  // A note to its own issuer must use 1999 or 5999. The counterpart is compared with all its 14
  // characters against the issuer's 10, so the two never match; kept as it has always been.
  if (destinatario == emitente && codigo != 1999 && codigo != 5999) {
    nota.Falha(118);
    return;
  }
  // To an exempt counterpart.
  if (ExisteNoVetor(codigo, {1103.0, 1104.0, 5115.0, 5116.0}) && !isento) {
    nota.Falha(118);
    return;
  }
  // To a producer of the same municipality.
  if (ExisteNoVetor(codigo, {1101.0, 1201.0, 5113.0, 5211.0}) &&
      (!produtor || !local || !mesmoMunicipio)) {
    nota.Falha(118);
    return;
  }
  // To a producer of another municipality.
  if (ExisteNoVetor(codigo, {1102.0, 1202.0, 5114.0, 5212.0}) &&
      (QuartoAlinhadoEmDez(destinatario) != '1' || !local || mesmoMunicipio)) {
    nota.Falha(118);
    return;
  }
  // To a contributor that is not a producer.
  if (ExisteNoVetor(codigo, {1203.0, 5111.0, 5213.0}) && (produtor || isento)) {
    nota.Falha(118);
    return;
  }
  if (codigo == 5112 && produtor) {
    nota.Falha(118);
    return;
  }
  // A source of type 5 only sends notes of operation 5112.
  if (nota.Cabecalho().tipoFonte == 5 && codigo != 5112) nota.Falha(118);
}

void VerificaOperacao(const Nota& nota) {
  const std::string_view operacao = nota.Campo(kOperacao);
  const auto codigo = texto::Numero(operacao);
  if (Apara(operacao).size() != 4 || !codigo) {
    nota.Falha(118);
    return;
  }
  EstadoGrupo& grupo = nota.Grupo();
  if (*codigo == 0) {
    grupo.sentidoOperacao = "S";
    if (!nota.relaxada) nota.Falha(118);
    return;
  }
  const auto anterior = texto::Numero(grupo.operacaoAnterior);
  if (anterior && *anterior != 0 && grupo.operacaoAnterior != operacao) grupo.grupoDiverge = true;
  // The tests up to the code's location all run and each records its own 118.
  if (!Entre(*codigo, 1101, 7999)) nota.Falha(118);
  const std::string_view uf = Apara(nota.Campo(kUF));
  if (!nota.relaxada) VerificaLocalDaOperacao(nota, *codigo, uf);
  grupo.sentidoOperacao = *codigo < 5000 ? "E" : "S";
  grupo.operacaoAnterior = operacao;
  if (!nota.relaxada) VerificaDestinatarioDaOperacao(nota, *codigo, uf);
}

void VerificaBaseICMS(const Nota& nota) {
  const auto base = Valor(nota.Campo(kBaseICMS));
  if (!base) {
    nota.Falha(119);
    return;
  }
  // An ICMS value that is no number is told by its own field.
  const auto icms = texto::Numero(nota.Campo(kValorICMS));
  if (nota.relaxada || !icms) return;
  if (*base > 0 && *icms == 0) {
    nota.Falha(124);
  } else if (*base < *icms) {
    nota.Falha(25);
  }
}

// A base smaller than the ICMS value is told twice with 25, once by the base and once by the
// value; deliberate.
void VerificaValorICMS(const Nota& nota) {
  const auto icms = Valor(nota.Campo(kValorICMS));
  if (!icms) {
    nota.Falha(120);
    return;
  }
  const auto base = texto::Numero(nota.Campo(kBaseICMS));
  if (nota.relaxada || !base) return;
  if (*icms > 0 && *base == 0) {
    nota.Falha(124);
  } else if (*icms > *base) {
    nota.Falha(25);
  }
}

void VerificaMercadorias(const Nota& nota) {
  const auto mercadorias = Valor(nota.Campo(kMercadorias));
  if (!mercadorias || *mercadorias < 0) {
    nota.Falha(121);
    return;
  }
  nota.Grupo().totalMercadorias += *mercadorias;
  // A note without goods must declare income, unless it is issued to its own issuer.
  if (*mercadorias == 0 && !nota.relaxada && nota.Campo(kRendimento) != "S" &&
      Apara(nota.Campo(kDestinatario)) != Apara(nota.Campo(kEmitente))) {
    nota.Falha(121);
  }
}

void VerificaFunrural(const Nota& nota) {
  const auto funrural = Valor(nota.Campo(kFunrural));
  if (!funrural || *funrural < 0) nota.Falha(139);
}

void VerificaTotalNota(const Nota& nota) {
  const auto total = Valor(nota.Campo(kTotalNota));
  if (!total || *total < 0) {
    nota.Falha(122);
    return;
  }
  // Amounts that are no number are told by their own fields.
  const auto mercadorias = texto::Numero(nota.Campo(kMercadorias));
  const auto funrural = texto::Numero(nota.Campo(kFunrural));
  if (!nota.relaxada && mercadorias && funrural && *mercadorias - *funrural > *total) {
    nota.Falha(122);
  }
}

void VerificaRendimento(const Nota& nota) {
  const std::string_view rendimento = nota.Campo(kRendimento);
  if (EmBranco(rendimento)) return;
  if (!ExisteNoVetor(rendimento, {" "sv, "S"sv})) {
    nota.Falha(140);
    return;
  }
  // Income is declared on outgoing operations only, and never on these codes.
  EstadoGrupo& grupo = nota.Grupo();
  if (grupo.sentidoOperacao == "E"sv) {
    nota.Falha(140);
    return;
  }
  const auto codigo = texto::Numero(nota.Campo(kOperacao));
  if (codigo && (*codigo == 5115 || *codigo == 5116 ||
                 (*codigo > 6000 && *codigo < 8000 && *codigo != 6110 && *codigo != 6810))) {
    nota.Falha(140);
    return;
  }
  grupo.ultimoRendimento = rendimento;
}

}  // namespace

bool VerificaTR10(ExecucaoNotas& execucao, std::string_view registro) {
  Ocorrencias ocorrencias(execucao);
  const Nota nota{execucao, ocorrencias, registro, Relaxada(registro)};
  VerificaEmitente(nota);
  VerificaTipoNota(nota);
  VerificaSerie(nota);
  VerificaNumero(nota);
  VerificaMovimento(nota);
  VerificaEmissao(nota);
  VerificaDestinatario(nota);
  VerificaDocumento(nota);
  VerificaPais(nota);
  VerificaUF(nota);
  VerificaSituacao(nota);
  VerificaOperacao(nota);
  VerificaBaseICMS(nota);
  VerificaValorICMS(nota);
  VerificaMercadorias(nota);
  VerificaFunrural(nota);
  VerificaTotalNota(nota);
  VerificaRendimento(nota);
  return ocorrencias.Aceito();
}

}  // namespace quorv::notas
