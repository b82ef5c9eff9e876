// The settlement document (TR 20): its fields from left to right, many of them against what the
// group's notes (TR 10) left. Each field that fails records its warning and the next field is
// checked all the same.
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

constexpr Coluna kTipoDocumento{11, 1};
constexpr Coluna kEmitente{12, 14};
constexpr Coluna kUFEmitente{26, 2};
constexpr Coluna kTipoNota{28, 1};
constexpr Coluna kSerie{29, 3};
constexpr Coluna kNumero{32, 6};
constexpr Coluna kData{38, 8};
constexpr Coluna kDocumento{46, 14};
constexpr Coluna kDestinatario{60, 14};
constexpr Coluna kUFDestinatario{74, 2};
constexpr Coluna kBaseICMS{76, 13};
constexpr Coluna kValorICMS{89, 13};
constexpr Coluna kMercadorias{102, 13};
constexpr Coluna kFunrural{115, 13};
constexpr Coluna kTotalDocumento{128, 13};
constexpr Coluna kRendimento{141, 1};
constexpr Coluna kCFOP{142, 3};

// Characters a series may not hold.
constexpr std::string_view kProibidosNaSerie = ".='/*-?&()><\\#@!{}^+,;:%$|`\"";

// The document being checked, with what its checks share.
struct Liquidacao {
  ExecucaoNotas& execucao;
  Ocorrencias& ocorrencias;
  std::string_view registro;

  std::string_view Campo(Coluna coluna) const { return texto::Campo(registro, coluna); }
  void Falha(int32_t codigo) const { ocorrencias.Falha(codigo); }
  EstadoGrupo& Grupo() const { return execucao.Grupo(); }
  const DadosCabecalho& Cabecalho() const { return execucao.Cabecalho(); }
  // Documents of types 2, 3 and 6 are issued by the counterpart of the group's notes.
  bool DoDestinatario() const {
    return ExisteNoVetor(Campo(kTipoDocumento), {"2"sv, "3"sv, "6"sv});
  }
  bool DoTipo4() const { return Campo(kTipoDocumento) == "4"; }
  // A version-2 header of source type 8 only sends documents of type 4 issued by the source.
  bool DaFonte8() const { return Cabecalho().versao == 2 && Cabecalho().tipoFonte == 8; }
};

// Two registrations are the same when both are numbers of equal value.
bool MesmoNumero(std::optional<double> a, std::optional<double> b) {
  return a && b && *a == *b;
}

void VerificaTipoDocumento(const Liquidacao& liquidacao) {
  const std::string_view tipo = liquidacao.Campo(kTipoDocumento);
  if (!texto::EhNumerico(tipo) || !ExisteNoVetor(tipo, {"2"sv, "3"sv, "4"sv, "6"sv})) {
    liquidacao.Falha(132);
  }
  if (liquidacao.DaFonte8() && tipo != "4") liquidacao.Falha(132);
}

void VerificaEmitente(const Liquidacao& liquidacao) {
  const std::string_view emitente = liquidacao.Campo(kEmitente);
  const auto numero = texto::Numero(emitente);
  if (EmBranco(emitente) || (numero && *numero == 0) || texto::IgualSemCaixa(emitente, "ISENTO")) {
    liquidacao.Falha(106);
    return;
  }
  const std::string_view uf = liquidacao.Campo(kUFEmitente);
  if (uf == kUFLocal && !liquidacao.execucao.InscricaoValida(emitente, uf)) {
    liquidacao.Falha(106);
    return;
  }
  if (liquidacao.DoDestinatario() &&
      !MesmoNumero(numero, texto::Numero(liquidacao.Grupo().destinatarioAnterior))) {
    liquidacao.Falha(106);
    return;
  }
  if (liquidacao.DaFonte8() && !MesmoNumero(numero, liquidacao.Cabecalho().codigoFonte)) {
    liquidacao.Falha(106);
    return;
  }
  // A document of type 4 is not issued by a producer ("1" as the registration's fourth
  // character).
  if (liquidacao.DoTipo4() && emitente.substr(0, 10)[3] == '1') liquidacao.Falha(106);
}

void VerificaUFEmitente(const Liquidacao& liquidacao) {
  const std::string_view uf = liquidacao.Campo(kUFEmitente);
  if (Apara(uf).size() != 2) {
    liquidacao.Falha(115);
    return;
  }
  if (liquidacao.DoDestinatario() && uf != liquidacao.Grupo().ufAnterior) liquidacao.Falha(115);
}

void VerificaTipoNota(const Liquidacao& liquidacao) {
  const std::string_view tipo = liquidacao.Campo(kTipoNota);
  if (liquidacao.Campo(kTipoDocumento) == "2") {
    if (!texto::EhNumerico(tipo) || !ExisteNoVetor(tipo, {"1"sv, "2"sv, "9"sv}))
      liquidacao.Falha(107);
    return;
  }
  if (EmBranco(tipo)) return;
  if (!texto::EhNumerico(tipo) || !ExisteNoVetor(tipo, {"0"sv, "1"sv, "2"sv, "9"sv})) {
    liquidacao.Falha(107);
  }
}

void VerificaSerie(const Liquidacao& liquidacao) {
  const std::string_view serie = liquidacao.Campo(kSerie);
  if (serie.find_first_of(kProibidosNaSerie) != std::string_view::npos) {
    liquidacao.Falha(108);
    return;
  }
  // A document of type 2 for a note of type 1 or 2 must name the note's series.
  if (liquidacao.Campo(kTipoDocumento) == "2" &&
      ExisteNoVetor(liquidacao.Campo(kTipoNota), {"1"sv, "2"sv})) {
    const auto valor = texto::Numero(serie);
    if (Apara(serie).size() != 3 || !valor || *valor <= 0) liquidacao.Falha(108);
  }
}

void VerificaNumero(const Liquidacao& liquidacao) {
  const std::string_view numero = liquidacao.Campo(kNumero);
  const auto valor = texto::Numero(numero);
  if (Apara(numero).size() != 6 || !valor || numero.find_first_of(".,") != std::string_view::npos ||
      *valor <= 0) {
    liquidacao.Falha(109);
  }
}

void VerificaData(const Liquidacao& liquidacao) {
  const std::string_view campo = liquidacao.Campo(kData);
  const auto data = datas::DataDaMascara(campo);
  if (!data || *data < Data(1995, 1, 1) || *data > liquidacao.execucao.Hoje()) {
    liquidacao.Falha(68);
    return;
  }
  // The written year is held to the same limit on its own; read from the same eight digits as
  // the date, it agrees with the test above.
  if (texto::NumeroOuMenosUm(campo.substr(0, 4)) < 1995) {
    liquidacao.Falha(68);
    return;
  }
  // A document of an outgoing operation is dated no later than the group's earliest note; any
  // other, no earlier than its latest note.
  const EstadoGrupo& grupo = liquidacao.Grupo();
  if (grupo.sentidoOperacao == "S"sv ? *data > grupo.menorEmissao : *data < grupo.maiorEmissao) {
    liquidacao.Falha(68);
  }
}

void VerificaDocumento(const Liquidacao& liquidacao) {
  if (!DocumentoAceito(liquidacao.Campo(kDocumento), Contribuinte::kCnpjOuCpf)) {
    liquidacao.Falha(113);
  }
}

// A document of type 4 is issued to the producer who is the counterpart of the group's notes.
void VerificaDestinatario(const Liquidacao& liquidacao) {
  if (!liquidacao.DoTipo4()) return;
  const std::string_view destinatario = liquidacao.Campo(kDestinatario);
  if (EmBranco(destinatario) || destinatario != liquidacao.Grupo().destinatarioAnterior ||
      destinatario[3] != '1') {
    liquidacao.Falha(112);
  }
}

void VerificaUFDestinatario(const Liquidacao& liquidacao) {
  if (!liquidacao.DoTipo4()) return;
  const std::string_view uf = liquidacao.Campo(kUFDestinatario);
  if (Apara(uf).size() != 2 || uf != liquidacao.Grupo().ufAnterior) liquidacao.Falha(115);
}

void VerificaBaseICMS(const Liquidacao& liquidacao) {
  const auto base = Valor(liquidacao.Campo(kBaseICMS));
  if (!base) {
    liquidacao.Falha(119);
    return;
  }
  // An ICMS value that is no number is told by its own field.
  const auto icms = texto::Numero(liquidacao.Campo(kValorICMS));
  if (!icms) return;
  if (*base > 0 && *icms == 0) {
    liquidacao.Falha(124);
  } else if (*base < *icms) {
    liquidacao.Falha(25);
  }
}

// A base smaller than the ICMS value is told twice with 25, once by each field; deliberate.
void VerificaValorICMS(const Liquidacao& liquidacao) {
  const auto icms = Valor(liquidacao.Campo(kValorICMS));
  if (!icms) {
    liquidacao.Falha(120);
    return;
  }
  const auto base = texto::Numero(liquidacao.Campo(kBaseICMS));
  if (!base) return;
  if (*icms > 0 && *base == 0) {
    liquidacao.Falha(124);
  } else if (*icms > *base) {
    liquidacao.Falha(25);
  }
}

void VerificaMercadorias(const Liquidacao& liquidacao) {
  const auto mercadorias = Valor(liquidacao.Campo(kMercadorias));
  if (!mercadorias || *mercadorias < 0) {
    liquidacao.Falha(121);
    return;
  }
  liquidacao.Grupo().totalMercadoriasTR20 += *mercadorias;
  // A document without goods must declare income.
  if (*mercadorias == 0 && liquidacao.Campo(kRendimento) != "S") liquidacao.Falha(121);
}

void VerificaFunrural(const Liquidacao& liquidacao) {
  if (!Valor(liquidacao.Campo(kFunrural))) liquidacao.Falha(139);
}

void VerificaTotalDocumento(const Liquidacao& liquidacao) {
  const auto total = Valor(liquidacao.Campo(kTotalDocumento));
  if (!total || *total < 0) {
    liquidacao.Falha(122);
    return;
  }
  // Amounts that are no number are told by their own fields.
  const auto mercadorias = texto::Numero(liquidacao.Campo(kMercadorias));
  const auto funrural = texto::Numero(liquidacao.Campo(kFunrural));
  if (mercadorias && funrural && *mercadorias - *funrural > *total) liquidacao.Falha(122);
}

void VerificaRendimento(const Liquidacao& liquidacao) {
  const std::string_view rendimento = liquidacao.Campo(kRendimento);
  if (!EmBranco(rendimento) && !ExisteNoVetor(rendimento, {" "sv, "S"sv})) {
    liquidacao.Falha(140);
    return;
  }
  // The mirror of the notes' rule: a document declares income only for incoming operations.
  if (rendimento == "S" && liquidacao.Grupo().sentidoOperacao == "S"sv) liquidacao.Falha(140);
}

void VerificaCFOP(const Liquidacao& liquidacao) {
  const std::string_view cfop = liquidacao.Campo(kCFOP);
  const auto valor = texto::Numero(cfop);
  if (EmBranco(cfop) || (valor && *valor == 0)) return;
  if (Apara(cfop).size() != 3 || !valor) {
    liquidacao.Falha(6);
    return;
  }
  if (*valor > 799 || *valor < 100) liquidacao.Falha(158);
}

}  // namespace

bool VerificaTR20(ExecucaoNotas& execucao, std::string_view registro) {
  Ocorrencias ocorrencias(execucao);
  const Liquidacao liquidacao{execucao, ocorrencias, registro};
  VerificaTipoDocumento(liquidacao);
  VerificaEmitente(liquidacao);
  VerificaUFEmitente(liquidacao);
  VerificaTipoNota(liquidacao);
  VerificaSerie(liquidacao);
  VerificaNumero(liquidacao);
  VerificaData(liquidacao);
  VerificaDocumento(liquidacao);
  VerificaDestinatario(liquidacao);
  VerificaUFDestinatario(liquidacao);
  VerificaBaseICMS(liquidacao);
  VerificaValorICMS(liquidacao);
  VerificaMercadorias(liquidacao);
  VerificaFunrural(liquidacao);
  VerificaTotalDocumento(liquidacao);
  VerificaRendimento(liquidacao);
  VerificaCFOP(liquidacao);
  return ocorrencias.Aceito();
}

}  // namespace quorv::notas
