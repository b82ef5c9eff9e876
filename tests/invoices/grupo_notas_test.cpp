// Whole groups: what a group's notes leave for the later notes and for the settlement documents,
// and how a new group starts afresh.
#include <vector>

#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

using GrupoDeNotas = TesteNotas;

// A note of an incoming operation (1101) from a producer of the issuer's own municipality.
Registro& NotaDeEntrada(ArquivoNotas& arquivo) {
  return arquivo.TR10Valido().Campo(40, 14, "1231000002").Campo(74, 4, "1101");
}

// A settlement document issued by the producer of NotaDeEntrada.
Registro& LiquidacaoDeEntrada(ArquivoNotas& arquivo) {
  return arquivo.TR20Valido().Campo(12, 14, "1231000002");
}

TEST_F(GrupoDeNotas, NotasDeEmitentesDiferentes) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido();
  arquivo.Novo("15");
  const Registro& segunda = arquivo.TR10Valido().Campo(11, 10, "1231000002");
  arquivo.Novo("15");
  arquivo.TR10Valido().Campo(11, 10, "1231000002");
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 1);
  // Each note is compared with the one before it: the third repeats the second.
  EXPECT_EQ(Gravadas(), Na(segunda, {178}));
}

TEST_F(GrupoDeNotas, EmitenteEmBrancoNaoEntraNaComparacao) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  const Registro& primeira = arquivo.TR10Valido().Campo(11, 10, "");
  arquivo.Novo("15");
  arquivo.TR10Valido().Campo(11, 10, "1231000002");
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 1);
  EXPECT_EQ(Gravadas(), Na(primeira, {106}));
}

TEST_F(GrupoDeNotas, NovoGrupoEsqueceOEmitente) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido();
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR01();
  arquivo.TR10Valido().Campo(11, 10, "1231000002");
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 0);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

// Notes that differ from the one before in counterpart, country, UF or operation only mark the
// group; nothing is told for them.
TEST_F(GrupoDeNotas, OutrasDiferencasEntreNotasNaoSaoAdvertidas) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido();
  arquivo.Novo("15");
  arquivo.TR10Valido().Campo(40, 14, "4562234567").Campo(74, 4, "5102");
  arquivo.Novo("15");
  arquivo.TR10Valido()
      .Campo(68, 3, "105")
      .Campo(71, 2, "EX")
      .Campo(74, 4, "7101")
      .Campo(143, 1, " ");
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 0);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

// A settlement document dated against the group's notes, issued 2005-03-10 and 2005-03-20: after
// an outgoing operation it may not be later than the earliest note, after an incoming one not
// earlier than the latest.
struct CasoDataDoDocumento {
  const char* nome;
  bool entrada;
  const char* data;
  std::vector<int> codigos;
};

class DataDoDocumento : public TesteNotas,
                        public ::testing::WithParamInterface<CasoDataDoDocumento> {};

TEST_P(DataDoDocumento, ContraAsDatasDasNotas) {
  const CasoDataDoDocumento& caso = GetParam();
  arquivo.CabecalhoV1();
  arquivo.TR01();
  for (const char* emissao : {"20050310", "20050320"}) {
    Registro& nota = caso.entrada ? NotaDeEntrada(arquivo) : arquivo.TR10Valido();
    nota.Campo(32, 8, emissao);
    arquivo.Novo("15");
  }
  Registro& liquidacao = caso.entrada ? LiquidacaoDeEntrada(arquivo) : arquivo.TR20Valido();
  liquidacao.Campo(38, 8, caso.data);
  arquivo.Novo("25");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), caso.codigos.empty() ? 0 : 1);
  EXPECT_EQ(Gravadas(), Na(liquidacao, caso.codigos));
}

INSTANTIATE_TEST_SUITE_P(
    Notas, DataDoDocumento,
    ::testing::Values(CasoDataDoDocumento{"EntradaEntreAsNotas", true, "20050315", {68}},
                      CasoDataDoDocumento{"EntradaNaUltimaNota", true, "20050320", {}},
                      CasoDataDoDocumento{"EntradaDepoisDasNotas", true, "20050325", {}},
                      CasoDataDoDocumento{"EntradaNaPrimeiraNota", true, "20050310", {68}},
                      CasoDataDoDocumento{"SaidaEntreAsNotas", false, "20050315", {68}},
                      CasoDataDoDocumento{"SaidaNaPrimeiraNota", false, "20050310", {}},
                      CasoDataDoDocumento{"SaidaAntesDasNotas", false, "20050301", {}},
                      CasoDataDoDocumento{"SaidaNaUltimaNota", false, "20050320", {68}}),
    [](const ::testing::TestParamInfo<CasoDataDoDocumento>& info) { return info.param.nome; });

TEST_F(GrupoDeNotas, NovoGrupoEsqueceAsDatas) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido().Campo(32, 8, "20240110");
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR01();
  arquivo.TR10Valido().Campo(32, 8, "20240301");
  arquivo.Novo("15");
  arquivo.TR20Valido().Campo(38, 8, "20240301");
  arquivo.Novo("25");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 0);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

// The document is held to the last note's counterpart and UF.
TEST_F(GrupoDeNotas, DocumentoDoDestinatarioDaUltimaNota) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido();
  arquivo.Novo("15");
  arquivo.TR10Valido().Campo(40, 14, "4562234567");
  arquivo.Novo("15");
  arquivo.TR20Valido().Campo(12, 14, "4562234567");
  arquivo.Novo("25");
  const Registro& doPrimeiro = arquivo.TR20Valido();
  arquivo.Novo("25");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 1);
  EXPECT_EQ(Gravadas(), Na(doPrimeiro, {106}));
}

// Income on a document of an incoming operation is accepted, and with it a document without
// goods.
TEST_F(GrupoDeNotas, RendimentoDoDocumentoNumaOperacaoDeEntrada) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  NotaDeEntrada(arquivo);
  arquivo.Novo("15");
  LiquidacaoDeEntrada(arquivo)
      .Campo(141, 1, "S")
      .Campo(102, 13, "0000000000000")
      .Campo(128, 13, "0000000000000")
      .Campo(76, 13, "0000000000000")
      .Campo(89, 13, "0000000000000");
  arquivo.Novo("25");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 0);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

// The direction is the last valid operation's: a note whose operation code cannot be read leaves
// the one before.
TEST_F(GrupoDeNotas, OperacaoIlegivelMantemADirecaoAnterior) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  NotaDeEntrada(arquivo);
  arquivo.Novo("15");
  const Registro& ilegivel = NotaDeEntrada(arquivo).Campo(74, 4, "ABCD");
  arquivo.Novo("15");
  LiquidacaoDeEntrada(arquivo).Campo(141, 1, "S");
  arquivo.Novo("25");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 1);
  EXPECT_EQ(Gravadas(), Na(ilegivel, {118}));
}

TEST_F(GrupoDeNotas, DirecaoDaUltimaNota) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  NotaDeEntrada(arquivo);
  arquivo.Novo("15");
  arquivo.TR10Valido();
  arquivo.Novo("15");
  const Registro& liquidacao = arquivo.TR20Valido().Campo(141, 1, "S");
  arquivo.Novo("25");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 1);
  EXPECT_EQ(Gravadas(), Na(liquidacao, {140}));
}

// Relaxed notes (situation 2 or 3, or movement E) may leave out what a common note may not: a
// date, a country, a UF, an operation code, goods; their ICMS and totals are not compared. A note
// dated with zeros does not count among the group's dates.
TEST_F(GrupoDeNotas, NotasRelaxadas) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido()
      .Campo(73, 1, "2")
      .Campo(32, 8, "00000000")
      .Campo(68, 3, "000")
      .Campo(71, 2, "")
      .Campo(74, 4, "0000")
      .Campo(78, 13, "0000000000100")
      .Campo(91, 13, "0000000000200")
      .Campo(104, 13, "0000000000000")
      .Campo(130, 13, "0000000000000");
  arquivo.Novo("15");
  arquivo.TR10Valido()
      .Campo(31, 1, "E")
      .Campo(32, 8, "00000000")
      .Campo(74, 4, "2101")
      .Campo(130, 13, "0000000000001");
  arquivo.Novo("15");
  arquivo.TR10Valido().Campo(73, 1, "3").Campo(32, 8, "20240301").Campo(74, 4, "0000");
  arquivo.Novo("15");
  arquivo.TR10Valido().Campo(32, 8, "20240201");
  arquivo.Novo("15");
  // An outgoing document dated before the earliest dated note (2024-02-01); had a zero date
  // counted, every date would be too late.
  arquivo.TR20Valido().Campo(38, 8, "20240115");
  arquivo.Novo("25");
  arquivo.TR40Valido().Campo(21, 8, "20240201");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 0);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

// The same values on a common note are each told.
TEST_F(GrupoDeNotas, MesmosValoresNumaNotaComum) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  const Registro& nota = arquivo.TR10Valido()
                             .Campo(32, 8, "00000000")
                             .Campo(68, 3, "000")
                             .Campo(71, 2, "")
                             .Campo(74, 4, "0000")
                             .Campo(78, 13, "0000000000100")
                             .Campo(91, 13, "0000000000200")
                             .Campo(104, 13, "0000000000000")
                             .Campo(130, 13, "0000000000000");
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 1);
  EXPECT_EQ(Gravadas(), Na(nota, {111, 114, 115, 118, 25, 25, 121}));
}

}  // namespace
}  // namespace quorv::teste
