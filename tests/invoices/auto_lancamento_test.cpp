// The tax assessment notice (TR 40): every field with values that pass and values that fail, and
// its dates against the group's notes.
#include <vector>

#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

// A notice laid into a group after a valid note and its item: header of version 1, TR 01, TR 10,
// TR 15, the notice, TR 98 and TR 99. Every warning goes to the notice's line.
class CamposDoAuto : public TesteNotas, public ::testing::WithParamInterface<CasoCampos> {};

TEST_P(CamposDoAuto, AdvertenciasNaLinhaDoAuto) {
  const CasoCampos& caso = GetParam();
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido();
  arquivo.Novo("15");
  const Registro& lancamento = Preenche(arquivo.TR40Valido(), caso.campos);
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), caso.codigos.empty() ? 0 : 1);
  EXPECT_EQ(Gravadas(), Na(lancamento, caso.codigos));
}

// The group's note was issued 2024-01-10; today is 2024-06-30. The valid notice: number
// 0000000001, drawn up 2024-02-01, acknowledged 2024-02-05, registration 4561234567, no CPF, CNPJ
// 11222333000181, a name, total 50000.
INSTANTIATE_TEST_SUITE_P(
    Notas, CamposDoAuto,
    ::testing::Values(
        CasoCampos{"AutoValido", {}, {}},
        // Assessment number (columns 11-20).
        CasoCampos{"NumeroEmBranco", {{11, 10, ""}}, {183}},
        CasoCampos{"NumeroZero", {{11, 10, "0000000000"}}, {183}},
        CasoCampos{"NumeroNegativo", {{11, 10, "-000000001"}}, {183}},
        CasoCampos{"NumeroComLetra", {{11, 10, "00000000A1"}}, {183}},
        CasoCampos{"NumeroSemZeros", {{11, 10, "7"}}, {}},
        // Drawing-up date (columns 21-28).
        CasoCampos{"LavraturaZeradaCienteEm2005", {{21, 8, "00000000"}, {29, 8, "20050110"}}, {}},
        CasoCampos{"LavraturaEmBranco", {{21, 8, ""}}, {}},
        CasoCampos{"LavraturaInvalida", {{21, 8, "20240230"}}, {184}},
        CasoCampos{"LavraturaComLetra", {{21, 8, "2024020A"}}, {184}},
        CasoCampos{"LavraturaAntesDaNota", {{21, 8, "20240109"}, {29, 8, "20240110"}}, {184}},
        CasoCampos{"LavraturaNoDiaDaNota", {{21, 8, "20240110"}}, {}},
        // The age test joins "before 2000" and "after today" with "and": no date fails it.
        CasoCampos{
            "LavraturaDepoisDeHojeNaoERecusada", {{21, 8, "20250101"}, {29, 8, "20250102"}}, {}},
        CasoCampos{"Lavratura19991231AntesDaNota", {{21, 8, "19991231"}}, {184}},
        // Acknowledgement date (columns 29-36).
        CasoCampos{"CienteEmBranco", {{29, 8, ""}}, {185}},
        CasoCampos{"CienteInvalido", {{29, 8, "20240230"}}, {185}},
        CasoCampos{"CienteZerado", {{29, 8, "00000000"}}, {185}},
        CasoCampos{"CienteAntesDaLavratura", {{21, 8, "20240201"}, {29, 8, "20240131"}}, {185}},
        CasoCampos{"CienteNoDiaDaLavratura", {{29, 8, "20240201"}}, {}},
        CasoCampos{"Ciente1999SemLavratura", {{21, 8, "00000000"}, {29, 8, "19990101"}}, {}},
        CasoCampos{"CienteDepoisDeHojeNaoERecusado", {{29, 8, "20300101"}}, {}},
        // Taxpayer identification: registration, CPF or CNPJ. The registration is checked whatever
        // the test before found, so a blank one is also told 186.
        CasoCampos{"SemIdentificacao", {{37, 10, ""}, {47, 11, ""}, {58, 14, ""}}, {191, 186}},
        CasoCampos{"SoCPF", {{37, 10, ""}, {47, 11, "01234567890"}, {58, 14, ""}}, {186}},
        CasoCampos{"SoInscricao", {{58, 14, ""}}, {}},
        // Taxpayer registration (columns 37-46).
        CasoCampos{"InscricaoRecusadaPelaVerificacao", {{37, 10, "456123456X"}}, {186}},
        // Taxpayer CPF (columns 47-57).
        CasoCampos{"CPFZerado", {{47, 11, "00000000000"}}, {}},
        CasoCampos{"CPFComDigitoErrado", {{47, 11, "12345678900"}}, {187}},
        CasoCampos{"CPFComZeroNaFrente", {{47, 11, "01234567890"}}, {}},
        CasoCampos{"CPFComZeroNaFrenteEDigitoErrado", {{47, 11, "01234567891"}}, {187}},
        // Written back without leading zeros and with a leading blank, an eleven-digit CPF not
        // starting with 0 is twelve characters long and refused: deliberate.
        CasoCampos{"CPFSemZeroNaFrente", {{47, 11, "11144477735"}}, {187}},
        CasoCampos{"CPFComLetra", {{47, 11, "0123456789X"}}, {187}},
        // Only a positive number is checked: a negative one passes. A fraction below one is
        // written back from its decimal point (" .123456789", eleven characters) and rounds to
        // eleven zeros, which pass.
        CasoCampos{"CPFNegativo", {{47, 11, "-1234567890"}}, {}},
        CasoCampos{"CPFFracaoAbaixoDeUm", {{47, 11, "0.123456789"}}, {}},
        CasoCampos{"CPFFracaoAcimaDeUm", {{47, 11, "1.123456789"}}, {187}},
        // Taxpayer CNPJ (columns 58-71).
        CasoCampos{"CNPJEmBranco", {{58, 14, ""}}, {}},
        CasoCampos{"CNPJZerado", {{58, 14, "00000000000000"}}, {}},
        CasoCampos{"CNPJComDigitoErrado", {{58, 14, "11222333000182"}}, {188}},
        CasoCampos{"CNPJComLetra", {{58, 14, "A"}}, {188}},
        CasoCampos{"CNPJQueEUmCPF", {{58, 14, "01234567890"}}, {188}},
        CasoCampos{"CNPJNegativo", {{58, 14, "-1222333000181"}}, {}},
        // Taxpayer name (columns 72-117).
        CasoCampos{"NomeEmBranco", {{72, 46, ""}}, {189}},
        CasoCampos{"NomeDeUmaLetra", {{72, 46, "X"}}, {}},
        // Total value (columns 118-130).
        CasoCampos{"ValorZerado", {{118, 13, "0000000000000"}}, {190}},
        CasoCampos{"ValorEmBranco", {{118, 13, ""}}, {190}},
        CasoCampos{"ValorNegativo", {{118, 13, "-000000000001"}}, {190}},
        CasoCampos{"ValorComLetra", {{118, 13, "ABC"}}, {190}},
        CasoCampos{"ValorSemZeros", {{118, 13, "1"}}, {}},
        // Every field wrong: the warnings in the order of the fields.
        CasoCampos{"TodosOsCamposErrados",
                   {{11, 10, ""},
                    {21, 8, "20240230"},
                    {29, 8, ""},
                    {37, 10, ""},
                    {47, 11, ""},
                    {58, 14, ""},
                    {72, 46, ""},
                    {118, 13, ""}},
                   {183, 184, 185, 191, 186, 189, 190}},
        CasoCampos{"DocumentosErrados",
                   {{47, 11, "12345678900"}, {58, 14, "11222333000182"}},
                   {187, 188}}),
    NomeDoCaso);

using DatasDoAuto = TesteNotas;

// A drawing-up date before 2000 is not refused for its age; only the group's earliest note can
// refuse it.
TEST_F(DatasDoAuto, Lavratura1999AceitaQuandoANotaEAnterior) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido().Campo(32, 8, "19990101");
  arquivo.Novo("15");
  arquivo.TR40Valido().Campo(21, 8, "19991231").Campo(29, 8, "20000105");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 0);
  EXPECT_FALSE(diretorio.TemAdvertencias());
}

// The earliest of the group's notes counts, not the last one.
TEST_F(DatasDoAuto, LavraturaComparadaComANotaMaisAntigaDoGrupo) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido().Campo(32, 8, "20240301");
  arquivo.Novo("15");
  arquivo.TR10Valido().Campo(32, 8, "20240101");
  arquivo.Novo("15");
  arquivo.TR10Valido().Campo(32, 8, "20240401");
  arquivo.Novo("15");
  arquivo.TR40Valido().Campo(21, 8, "20240102").Campo(29, 8, "20240105");
  const Registro& antes = arquivo.TR40Valido().Campo(21, 8, "20231231");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 1);
  EXPECT_EQ(Gravadas(), Na(antes, {184}));
}

TEST_F(DatasDoAuto, CienteAntesDaLavraturaEm2005) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido().Campo(32, 8, "20050101");
  arquivo.Novo("15");
  const Registro& lancamento =
      arquivo.TR40Valido().Campo(21, 8, "20050201").Campo(29, 8, "20050131");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 1);
  EXPECT_EQ(Gravadas(), Na(lancamento, {185}));
}

// A note dated with zeros (a relaxed note) does not count among the group's dates.
TEST_F(DatasDoAuto, NotaSemDataNaoContaParaALavratura) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido().Campo(32, 8, "00000000").Campo(73, 1, "2");
  arquivo.Novo("15");
  const Registro& lancamento = arquivo.TR40Valido();
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 1);
  EXPECT_EQ(Gravadas(), Na(lancamento, {184}));
}

// Without a dated note the group's earliest issue date stays at 2999-01-01: a notice drawn up
// from that day on passes, one drawn up the day before does not.
TEST_F(DatasDoAuto, GrupoSemNotaDatadaComparaCom2999) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido().Campo(32, 8, "00000000").Campo(73, 1, "2");
  arquivo.Novo("15");
  arquivo.TR40Valido().Campo(21, 8, "29990101").Campo(29, 8, "29990102");
  const Registro& antes = arquivo.TR40Valido().Campo(21, 8, "29981231").Campo(29, 8, "29990102");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 1);
  EXPECT_EQ(Gravadas(), Na(antes, {184}));
}

}  // namespace
}  // namespace quorv::teste
