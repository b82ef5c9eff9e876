// The settlement document (TR 20): every field with values that pass and values that fail,
// against the group's note, and the source of type 8.
#include <string>
#include <vector>

#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

// A document laid into a group after a valid note and its item: header of version 1, TR 01,
// TR 10, TR 15, the document, its TR 25, TR 98 and TR 99. Every warning goes to the document's
// line.
class CamposDaLiquidacao : public TesteNotas, public ::testing::WithParamInterface<CasoCampos> {
 protected:
  const Registro& Documento(const std::vector<Preenchimento>& campos) {
    arquivo.CabecalhoV1();
    arquivo.TR01();
    arquivo.TR10Valido();
    arquivo.Novo("15");
    const Registro& liquidacao = Preenche(arquivo.TR20Valido(), campos);
    arquivo.Novo("25");
    arquivo.TR98();
    arquivo.TR99();
    return liquidacao;
  }
};

TEST_P(CamposDaLiquidacao, AdvertenciasNaLinhaDoDocumento) {
  const CasoCampos& caso = GetParam();
  const Registro& liquidacao = Documento(caso.campos);
  EXPECT_EQ(Valida(), caso.codigos.empty() ? 0 : 1);
  EXPECT_EQ(Gravadas(), Na(liquidacao, caso.codigos));
}

// The group's note: counterpart 4561234567 of QZ, operation 5101 (an outgoing operation, so the
// document may not be dated after the note), issued 2024-01-10. The valid document: type 2,
// issuer 4561234567 of QZ, note type 1, series 001, number 000456, dated 2024-01-10, counterpart
// 4561234567 of QZ, base 10000, ICMS 1200, goods 10000, Funrural 0, total 10000, no income,
// CFOP 510. A document of type 4 needs an issuer that is not a producer: 4562234567.
INSTANTIATE_TEST_SUITE_P(
    Notas, CamposDaLiquidacao,
    ::testing::Values(
        CasoCampos{"DocumentoValido", {}, {}},
        // Settlement document type (column 11).
        CasoCampos{"Tipo3", {{11, 1, "3"}}, {}}, CasoCampos{"Tipo6", {{11, 1, "6"}}, {}},
        CasoCampos{"Tipo4DeNaoProdutor", {{11, 1, "4"}, {12, 14, "4562234567"}}, {}},
        CasoCampos{"Tipo5", {{11, 1, "5"}}, {132}}, CasoCampos{"Tipo1", {{11, 1, "1"}}, {132}},
        CasoCampos{"TipoEmBranco", {{11, 1, ""}}, {132}},
        CasoCampos{"TipoLetra", {{11, 1, "A"}}, {132}},
        // Issuer registration (columns 12-25).
        CasoCampos{"EmitenteEmBranco", {{12, 14, ""}}, {106}},
        CasoCampos{"EmitenteZerado", {{12, 14, "00000000000000"}}, {106}},
        CasoCampos{"EmitenteIsento", {{12, 14, "isento"}}, {106}},
        CasoCampos{"EmitenteRecusadoPelaVerificacao", {{12, 14, "456123456X"}}, {106}},
        CasoCampos{"EmitenteDiferenteDoDestinatarioDaNota", {{12, 14, "4561234568"}}, {106}},
        CasoCampos{"EmitenteComZerosAEsquerda", {{12, 14, "00004561234567"}}, {}},
        CasoCampos{"Tipo4DeProdutor", {{11, 1, "4"}}, {106}},
        CasoCampos{"Tipo4DeOutroEstadoNaoEVerificado",
                   {{11, 1, "4"}, {12, 14, "SC-ABC"}, {26, 2, "SC"}},
                   {}},
        CasoCampos{"Tipo2DeOutroEstadoSemNumero", {{12, 14, "SC-ABC"}, {26, 2, "SC"}}, {106, 115}},
        // Issuer UF (columns 26-27).
        CasoCampos{"UFEmitenteEmBranco", {{26, 2, ""}}, {115}},
        CasoCampos{"UFEmitenteDeUmaLetra", {{26, 2, "Q"}}, {115}},
        CasoCampos{"UFEmitenteDiferenteDaDaNota", {{26, 2, "SC"}}, {115}},
        CasoCampos{"UFEmitenteDeOutroEstadoTipo4",
                   {{11, 1, "4"}, {12, 14, "4562234567"}, {26, 2, "SC"}},
                   {}},
        // Producer note type (column 28).
        CasoCampos{"TipoDeNota2", {{28, 1, "2"}}, {}},
        CasoCampos{"TipoDeNota9", {{28, 1, "9"}}, {}},
        CasoCampos{"TipoDeNota0ParaTipo2", {{28, 1, "0"}}, {107}},
        CasoCampos{"TipoDeNotaEmBrancoParaTipo2", {{28, 1, ""}}, {107}},
        CasoCampos{"TipoDeNota3ParaTipo2", {{28, 1, "3"}}, {107}},
        CasoCampos{"TipoDeNotaEmBrancoParaTipo3", {{11, 1, "3"}, {28, 1, ""}}, {}},
        CasoCampos{"TipoDeNota0ParaTipo3", {{11, 1, "3"}, {28, 1, "0"}}, {}},
        CasoCampos{"TipoDeNota3ParaTipo3", {{11, 1, "3"}, {28, 1, "3"}}, {107}},
        CasoCampos{"TipoDeNotaLetraParaTipo3", {{11, 1, "3"}, {28, 1, "A"}}, {107}},
        // Series (columns 29-31).
        CasoCampos{"SerieComHifen", {{29, 3, "1-2"}}, {108}},
        CasoCampos{"SerieComHifenTipoDeNota9", {{28, 1, "9"}, {29, 3, "1-2"}}, {108}},
        CasoCampos{
            "SerieComHifenTipo4", {{11, 1, "4"}, {12, 14, "4562234567"}, {29, 3, "1-2"}}, {108}},
        CasoCampos{"SerieEmBranco", {{29, 3, ""}}, {108}},
        CasoCampos{"SerieCurta", {{29, 3, "01"}}, {108}},
        CasoCampos{"SerieZero", {{29, 3, "000"}}, {108}},
        CasoCampos{"SerieComLetra", {{29, 3, "A01"}}, {108}},
        CasoCampos{"SerieEmBrancoTipoDeNota9", {{28, 1, "9"}, {29, 3, ""}}, {}},
        CasoCampos{"SerieComLetraTipo3", {{11, 1, "3"}, {29, 3, "A01"}}, {}},
        // Document number (columns 32-37).
        CasoCampos{"Numero12Ponto345", {{32, 6, "12.345"}}, {109}},
        CasoCampos{"Numero1234Virgula5", {{32, 6, "1234,5"}}, {109}},
        CasoCampos{"NumeroZero", {{32, 6, "000000"}}, {109}},
        CasoCampos{"NumeroCurto", {{32, 6, "12345"}}, {109}},
        CasoCampos{"NumeroEmBranco", {{32, 6, ""}}, {109}},
        CasoCampos{"NumeroComLetra", {{32, 6, "12345A"}}, {109}},
        CasoCampos{"NumeroUm", {{32, 6, "000001"}}, {}},
        // Document date (columns 38-45); today is 2024-06-30.
        CasoCampos{"DataInvalida", {{38, 8, "20240230"}}, {68}},
        CasoCampos{"DataEmBranco", {{38, 8, ""}}, {68}},
        CasoCampos{"Data19941231", {{38, 8, "19941231"}}, {68}},
        CasoCampos{"DataAmanha", {{38, 8, "20240701"}}, {68}},
        CasoCampos{"DataDepoisDaNota", {{38, 8, "20240111"}}, {68}},
        CasoCampos{"DataAntesDaNota", {{38, 8, "20240109"}}, {}},
        CasoCampos{"Data19950101", {{38, 8, "19950101"}}, {}},
        // Counterpart CNPJ or CPF (columns 46-59).
        CasoCampos{"DocumentoEmBranco", {{46, 14, ""}}, {}},
        CasoCampos{"DocumentoZerado", {{46, 14, "00000000000000"}}, {}},
        CasoCampos{"DocumentoCNPJComDigitoErrado", {{46, 14, "11222333000182"}}, {113}},
        CasoCampos{"DocumentoComLetra", {{46, 14, "ABC"}}, {113}},
        CasoCampos{"DocumentoCPFComZeroNaFrente", {{46, 14, "01234567890"}}, {}},
        CasoCampos{"DocumentoCPFSemZeroNaFrente", {{46, 14, "11144477735"}}, {113}},
        CasoCampos{"DocumentoNegativo", {{46, 14, "-1222333000181"}}, {}},
        // Counterpart registration (columns 60-73), checked for type 4 only.
        CasoCampos{"DestinatarioEmBrancoTipo2", {{60, 14, ""}}, {}},
        CasoCampos{"DestinatarioEmBrancoTipo4",
                   {{11, 1, "4"}, {12, 14, "4562234567"}, {60, 14, ""}},
                   {112}},
        CasoCampos{"DestinatarioDiferenteTipo4",
                   {{11, 1, "4"}, {12, 14, "4562234567"}, {60, 14, "4561234568"}},
                   {112}},
        CasoCampos{"DestinatarioComZerosTipo4ComparadoComoTexto",
                   {{11, 1, "4"}, {12, 14, "4562234567"}, {60, 14, "04561234567"}},
                   {112}},
        // Counterpart UF (columns 74-75), checked for type 4 only.
        CasoCampos{"UFDestinatarioEmBrancoTipo2", {{74, 2, ""}}, {}},
        CasoCampos{"UFDestinatarioEmBrancoTipo4",
                   {{11, 1, "4"}, {12, 14, "4562234567"}, {74, 2, ""}},
                   {115}},
        CasoCampos{"UFDestinatarioDeUmaLetraTipo4",
                   {{11, 1, "4"}, {12, 14, "4562234567"}, {74, 2, "Q"}},
                   {115}},
        CasoCampos{"UFDestinatarioDiferenteTipo4",
                   {{11, 1, "4"}, {12, 14, "4562234567"}, {74, 2, "SC"}},
                   {115}},
        // ICMS calculation base (columns 76-88) and ICMS value (columns 89-101).
        CasoCampos{"BaseEmBranco", {{76, 13, ""}}, {119}},
        CasoCampos{"BaseComLetra", {{76, 13, "000000001000A"}}, {119}},
        CasoCampos{"ValorICMSEmBranco", {{89, 13, ""}}, {120}},
        CasoCampos{"ValorICMSCurto", {{89, 13, "1200"}}, {120}},
        CasoCampos{
            "Base100ICMS200", {{76, 13, "0000000000100"}, {89, 13, "0000000000200"}}, {25, 25}},
        CasoCampos{
            "Base100ICMSZero", {{76, 13, "0000000000100"}, {89, 13, "0000000000000"}}, {124}},
        CasoCampos{
            "BaseZeroICMS100", {{76, 13, "0000000000000"}, {89, 13, "0000000000100"}}, {25, 124}},
        CasoCampos{"BaseEICMSZerados", {{76, 13, "0000000000000"}, {89, 13, "0000000000000"}}, {}},
        // Goods (columns 102-114).
        CasoCampos{"MercadoriasEmBranco", {{102, 13, ""}}, {121}},
        CasoCampos{"MercadoriasNegativas", {{102, 13, "-000000000001"}}, {121}},
        CasoCampos{"MercadoriasZeradas", {{102, 13, "0000000000000"}}, {121}},
        // With income the zero goods pass, but income on an outgoing operation does not.
        CasoCampos{
            "MercadoriasZeradasComRendimento", {{102, 13, "0000000000000"}, {141, 1, "S"}}, {140}},
        // Funrural (columns 115-127): no sign test, so a negative Funrural only weighs on the
        // total.
        CasoCampos{"FunruralEmBranco", {{115, 13, ""}}, {139}},
        CasoCampos{"FunruralCurto", {{115, 13, "0"}}, {139}},
        CasoCampos{"FunruralNegativo", {{115, 13, "-000000000001"}}, {122}},
        CasoCampos{"FunruralNegativoCobertoPeloTotal",
                   {{115, 13, "-000000000001"}, {128, 13, "0000000010001"}},
                   {}},
        // Document total (columns 128-140).
        CasoCampos{"TotalEmBranco", {{128, 13, ""}}, {122}},
        CasoCampos{"TotalNegativo", {{128, 13, "-000000000001"}}, {122}},
        CasoCampos{"TotalAbaixoDasMercadorias", {{128, 13, "0000000009999"}}, {122}},
        CasoCampos{"TotalComFunruralDescontado",
                   {{115, 13, "0000000000100"}, {128, 13, "0000000009900"}},
                   {}},
        // Income flag (column 141).
        CasoCampos{"RendimentoX", {{141, 1, "X"}}, {140}},
        CasoCampos{"RendimentoSEmOperacaoDeSaida", {{141, 1, "S"}}, {140}},
        // CFOP (columns 142-144).
        CasoCampos{"CFOPEmBranco", {{142, 3, ""}}, {}},
        CasoCampos{"CFOPZerado", {{142, 3, "000"}}, {}},
        CasoCampos{"CFOPZeroDeUmDigito", {{142, 3, "0"}}, {}},
        CasoCampos{"CFOP050", {{142, 3, "050"}}, {158}},
        CasoCampos{"CFOP800", {{142, 3, "800"}}, {158}},
        CasoCampos{"CFOP100", {{142, 3, "100"}}, {}}, CasoCampos{"CFOP799", {{142, 3, "799"}}, {}},
        CasoCampos{"CFOP5A1", {{142, 3, "5A1"}}, {6}},
        CasoCampos{"CFOPDeDoisDigitos", {{142, 3, "51"}}, {6}},
        // Every field wrong: one warning per field, in the order of the fields.
        CasoCampos{"TodosOsCamposErrados",
                   {{11, 1, ""},
                    {12, 14, ""},
                    {26, 2, ""},
                    {28, 1, "X"},
                    {29, 3, "1-2"},
                    {32, 6, ""},
                    {38, 8, ""},
                    {46, 14, "A"},
                    {76, 13, ""},
                    {89, 13, ""},
                    {102, 13, ""},
                    {115, 13, ""},
                    {128, 13, ""},
                    {141, 1, "X"},
                    {142, 3, "5A1"}},
                   {132, 106, 115, 107, 108, 109, 68, 113, 119, 120, 121, 139, 122, 140, 6}},
        CasoCampos{"TodosOsCamposErradosTipo4",
                   {{11, 1, "4"},
                    {12, 14, ""},
                    {26, 2, ""},
                    {28, 1, "X"},
                    {29, 3, "1-2"},
                    {32, 6, ""},
                    {38, 8, ""},
                    {46, 14, "A"},
                    {60, 14, ""},
                    {74, 2, ""},
                    {76, 13, ""},
                    {89, 13, ""},
                    {102, 13, ""},
                    {115, 13, ""},
                    {128, 13, ""},
                    {141, 1, "X"},
                    {142, 3, "5A1"}},
                   {106, 115, 107, 108, 109, 68, 113, 112, 115, 119, 120, 121, 139, 122, 140, 6}}),
    NomeDoCaso);

// Each character of the list refuses the series, whatever the types; "#" never reaches the check,
// since the run refuses a line holding it.
class SerieComCaractereProibido : public TesteNotas, public ::testing::WithParamInterface<char> {};

TEST_P(SerieComCaractereProibido, Recusada) {
  const std::string serie = std::string("A") + GetParam();
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido();
  arquivo.Novo("15");
  const Registro& liquidacao = arquivo.TR20Valido().Campo(28, 1, "9").Campo(29, 3, serie);
  arquivo.Novo("25");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 1);
  EXPECT_EQ(Gravadas(), Na(liquidacao, {108}));
}

INSTANTIATE_TEST_SUITE_P(Notas, SerieComCaractereProibido,
                         ::testing::ValuesIn(std::string(".='/*-?&()><\\@!{}^+,;:%$|`\"")));

using SerieDaLiquidacao = TesteNotas;

// Characters outside the list pass when the series need not be a number.
TEST_F(SerieDaLiquidacao, OutrosCaracteresAceitos) {
  for (const char* serie : {"A_B", "A[]", "A~", "ABC", "1 2"}) {
    DiretorioTemporario outro;
    ArquivoNotas comSerie;
    comSerie.CabecalhoV1();
    comSerie.TR01();
    comSerie.TR10Valido();
    comSerie.Novo("15");
    comSerie.TR20Valido().Campo(28, 1, "9").Campo(29, 3, serie);
    comSerie.Novo("25");
    comSerie.TR98();
    comSerie.TR99();
    std::string numero;
    EXPECT_EQ(validacao.Valida_Dados(comSerie.Grava(outro), numero, outro.Texto()), 0) << serie;
    EXPECT_FALSE(outro.TemAdvertencias()) << serie;
  }
}

// A version-2 header of source type 8 only sends documents of type 4 issued by the source (header
// columns 11-24, compared as numbers).
struct CasoFonte8 {
  const char* nome;
  const char* destinatarioDaNota;
  std::vector<Preenchimento> campos;
  std::vector<int> codigos;
};

class LiquidacaoDaFonte8 : public TesteNotas, public ::testing::WithParamInterface<CasoFonte8> {};

TEST_P(LiquidacaoDaFonte8, AdvertenciasNaLinhaDoDocumento) {
  const CasoFonte8& caso = GetParam();
  arquivo.CabecalhoV2("08").Campo(11, 14, "00004562234567");
  arquivo.TR01();
  arquivo.TR10Valido().Campo(40, 14, caso.destinatarioDaNota);
  arquivo.Novo("15");
  const Registro& liquidacao = Preenche(arquivo.TR20Valido(), caso.campos);
  arquivo.Novo("25");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), caso.codigos.empty() ? 0 : 1);
  EXPECT_EQ(Gravadas(), Na(liquidacao, caso.codigos));
}

INSTANTIATE_TEST_SUITE_P(
    Notas, LiquidacaoDaFonte8,
    ::testing::Values(
        CasoFonte8{"Tipo4DaFonte", "4561234567", {{11, 1, "4"}, {12, 14, "4562234567"}}, {}},
        CasoFonte8{"Tipo2DaFonte", "4562234567", {{12, 14, "4562234567"}}, {132}},
        CasoFonte8{
            "Tipo5DaFonte", "4561234567", {{11, 1, "5"}, {12, 14, "4562234567"}}, {132, 132}},
        CasoFonte8{
            "Tipo4DeOutroEmitente", "4561234567", {{11, 1, "4"}, {12, 14, "4563234567"}}, {106}},
        CasoFonte8{
            "Tipo4DaFonteSemZeros", "4561234567", {{11, 1, "4"}, {12, 14, "04562234567"}}, {}}),
    [](const ::testing::TestParamInfo<CasoFonte8>& info) { return info.param.nome; });

}  // namespace
}  // namespace quorv::teste
