// The producer invoice (TR 10): every field with values that pass and values that fail, the
// relaxed notes, and what the header tells the check.
#include <vector>

#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

// A note laid into a file of one group: header of version 1, TR 01, the note, its item, TR 98
// and TR 99. Every warning goes to the note's line.
class CamposDaNota : public TesteNotas, public ::testing::WithParamInterface<CasoCampos> {};

TEST_P(CamposDaNota, AdvertenciasNaLinhaDaNota) {
  const CasoCampos& caso = GetParam();
  arquivo.CabecalhoV1();
  arquivo.TR01();
  const Registro& nota = Preenche(arquivo.TR10Valido(), caso.campos);
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), caso.codigos.empty() ? 0 : 1);
  EXPECT_EQ(Gravadas(), Na(nota, caso.codigos));
}

// The valid note: issuer 1231000001 (municipality 123, the header's), type 1, series 001, number
// 000123, movement S, issued 2024-01-10, counterpart 4561234567 of the home state QZ, country
// 311, situation 1, operation 5101, base 10000, ICMS 1200, goods 10000, Funrural 0, total 10000,
// no income. Today is 2024-06-30.
INSTANTIATE_TEST_SUITE_P(
    Notas, CamposDaNota,
    ::testing::Values(
        CasoCampos{"NotaValida", {}, {}},
        // Issuer registration (columns 11-20): each failing test tells its own 106.
        CasoCampos{"EmitenteDoMunicipio", {{11, 10, "1231999999"}}, {}},
        CasoCampos{"EmitenteEmBranco", {{11, 10, ""}}, {106}},
        CasoCampos{"EmitenteRecusadoPelaVerificacao", {{11, 10, "123100000X"}}, {106}},
        CasoCampos{"EmitenteDeOutroMunicipio", {{11, 10, "4561000001"}}, {106}},
        CasoCampos{"EmitenteSemUmNaQuartaPosicao", {{11, 10, "1232000001"}}, {106}},
        CasoCampos{"EmitenteComTresFalhas", {{11, 10, "456200000X"}}, {106, 106, 106}},
        // Producer note type (column 21).
        CasoCampos{"TipoDeNota2", {{21, 1, "2"}}, {}},
        CasoCampos{"TipoDeNota9", {{21, 1, "9"}}, {}},
        CasoCampos{"TipoDeNota3", {{21, 1, "3"}}, {107}},
        CasoCampos{"TipoDeNotaLetra", {{21, 1, "A"}}, {107}},
        CasoCampos{"TipoDeNotaEmBranco", {{21, 1, ""}}, {107}},
        // Series (columns 22-24).
        CasoCampos{"SerieEmBrancoComTipo9", {{21, 1, "9"}, {22, 3, ""}}, {}},
        CasoCampos{"SerieEmBrancoComTipo1", {{22, 3, ""}}, {108}},
        CasoCampos{"SerieZeroComTipo1", {{22, 3, "000"}}, {108}},
        CasoCampos{"SerieZeroComTipo9", {{21, 1, "9"}, {22, 3, "000"}}, {}},
        CasoCampos{"SerieNegativaComTipo9", {{21, 1, "9"}, {22, 3, "-01"}}, {108}},
        CasoCampos{"SerieComLetra", {{22, 3, "A01"}}, {108}},
        CasoCampos{"SerieComLetraETipo9", {{21, 1, "9"}, {22, 3, "A01"}}, {108}},
        CasoCampos{"SerieDeUmDigito", {{22, 3, "7"}}, {}},
        // Note number (columns 25-30).
        CasoCampos{"NumeroUm", {{25, 6, "000001"}}, {}},
        CasoCampos{"NumeroZero", {{25, 6, "000000"}}, {109}},
        CasoCampos{"NumeroCurto", {{25, 6, "12345"}}, {109}},
        CasoCampos{"NumeroEmBranco", {{25, 6, ""}}, {109}},
        CasoCampos{"NumeroComLetra", {{25, 6, "12345A"}}, {109}},
        // Movement type (column 31).
        CasoCampos{"MovimentoI", {{31, 1, "I"}}, {}}, CasoCampos{"MovimentoE", {{31, 1, "E"}}, {}},
        CasoCampos{"MovimentoEmBranco", {{31, 1, ""}}, {110}},
        CasoCampos{"MovimentoX", {{31, 1, "X"}}, {110}},
        CasoCampos{"MovimentoMinusculo", {{31, 1, "s"}}, {110}},
        // Issue date (columns 32-39).
        CasoCampos{"EmissaoZeradaComSituacao2", {{32, 8, "00000000"}, {73, 1, "2"}}, {}},
        CasoCampos{"EmissaoZeradaComSituacao3", {{32, 8, "00000000"}, {73, 1, "3"}}, {}},
        CasoCampos{"EmissaoZeradaComMovimentoE", {{32, 8, "00000000"}, {31, 1, "E"}}, {}},
        CasoCampos{"EmissaoZeradaComSituacao1EMovimentoS", {{32, 8, "00000000"}}, {111}},
        CasoCampos{"Emissao19941231", {{32, 8, "19941231"}}, {111}},
        CasoCampos{"Emissao19950101", {{32, 8, "19950101"}}, {}},
        CasoCampos{"EmissaoHoje", {{32, 8, "20240630"}}, {}},
        CasoCampos{"EmissaoAmanha", {{32, 8, "20240701"}}, {111}},
        CasoCampos{"Emissao30DeFevereiro", {{32, 8, "20240230"}}, {111}},
        CasoCampos{"EmissaoEmBranco", {{32, 8, ""}}, {111}},
        CasoCampos{"EmissaoDeSeteDigitos", {{32, 8, "2024011"}}, {111}},
        CasoCampos{"EmissaoComLetra", {{32, 8, "2024O110"}}, {111}},
        // Counterpart state registration (columns 40-53).
        CasoCampos{"DestinatarioIsento", {{40, 14, "ISENTO"}}, {}},
        CasoCampos{"DestinatarioIsentoMinusculoComBranco", {{40, 14, " isento"}}, {}},
        CasoCampos{"DestinatarioEmBranco", {{40, 14, ""}}, {112}},
        CasoCampos{"DestinatarioZerado", {{40, 14, "00000000000000"}}, {112}},
        CasoCampos{"DestinatarioRecusadoPelaVerificacao", {{40, 14, "456123456X"}}, {112}},
        CasoCampos{"DestinatarioDeOutroEstadoNaoEVerificado",
                   {{40, 14, "SC-ABC"}, {71, 2, "SC"}, {74, 4, "6101"}},
                   {}},
        // Counterpart CNPJ or CPF (columns 54-67).
        CasoCampos{"DocumentoEmBranco", {{54, 14, ""}}, {}},
        CasoCampos{"DocumentoZerado", {{54, 14, "00000000000000"}}, {}},
        CasoCampos{"DocumentoCNPJComDigitoErrado", {{54, 14, "11222333000182"}}, {113}},
        CasoCampos{"DocumentoComLetra", {{54, 14, "1122233300018A"}}, {113}},
        CasoCampos{"DocumentoCPFComZeroNaFrente", {{54, 14, "01234567890"}}, {}},
        // Written back without leading zeros and with a leading blank, an eleven-digit CPF not
        // starting with 0 is twelve characters long and refused: deliberate.
        CasoCampos{"DocumentoCPFSemZeroNaFrente", {{54, 14, "11144477735"}}, {113}},
        // Only a positive number is checked: a negative one passes.
        CasoCampos{"DocumentoNegativo", {{54, 14, "-1222333000181"}}, {}},
        CasoCampos{"DocumentoNegativoComLetra", {{54, 14, "-122233300018A"}}, {113}},
        // A fraction is written back with its decimals, which the check digits round away: below
        // one it is written from the decimal point and rounds to a number of zeros, which passes.
        CasoCampos{"DocumentoComFracao", {{54, 14, "1234567890,5"}}, {113}},
        CasoCampos{"DocumentoFracaoAbaixoDeUm", {{54, 14, "0.123456789"}}, {}},
        // Counterpart country (columns 68-70); a readable country that does not agree with the UF
        // is told by the UF as well.
        CasoCampos{"PaisEmBranco", {{68, 3, ""}}, {114}},
        CasoCampos{"PaisCurto", {{68, 3, "31"}}, {114, 115}},
        CasoCampos{"PaisComLetra", {{68, 3, "3A1"}}, {114}},
        CasoCampos{"PaisZeradoNotaComum", {{68, 3, "000"}}, {114}},
        CasoCampos{"PaisZeradoNotaRelaxada", {{68, 3, "000"}, {73, 1, "2"}}, {}},
        CasoCampos{"PaisNegativo", {{68, 3, "-12"}}, {114, 115}},
        CasoCampos{"ExteriorComPaisDaCasa", {{71, 2, "EX"}, {74, 4, "7101"}}, {114, 115}},
        CasoCampos{
            "ExteriorComPaisEstrangeiro", {{68, 3, "105"}, {71, 2, "EX"}, {74, 4, "7101"}}, {}},
        CasoCampos{"UFDaCasaComPaisEstrangeiro", {{68, 3, "105"}}, {114, 115}},
        // Counterpart UF (columns 71-72).
        CasoCampos{"UFEmBrancoNotaComum", {{71, 2, ""}}, {115, 118}},
        CasoCampos{"UFEmBrancoNotaRelaxada", {{71, 2, ""}, {73, 1, "3"}}, {}},
        CasoCampos{"UFDeUmaLetra", {{71, 2, "Q"}, {74, 4, "6101"}}, {178}},
        CasoCampos{"UFDeUmaLetraAposBranco", {{71, 2, " Q"}, {74, 4, "6101"}}, {178}},
        CasoCampos{"UFDeOutroEstado", {{71, 2, "SC"}, {74, 4, "6101"}}, {}},
        // Note situation (column 73).
        CasoCampos{"Situacao2", {{73, 1, "2"}}, {}}, CasoCampos{"Situacao3", {{73, 1, "3"}}, {}},
        CasoCampos{"SituacaoEmBranco", {{73, 1, ""}}, {116}},
        CasoCampos{"Situacao4", {{73, 1, "4"}}, {116}},
        CasoCampos{"SituacaoLetra", {{73, 1, "A"}}, {116}},
        // Producer operation code (columns 74-77).
        CasoCampos{"OperacaoEmBranco", {{74, 4, ""}}, {118}},
        CasoCampos{"OperacaoCurta", {{74, 4, "510"}}, {118}},
        CasoCampos{"OperacaoComLetra", {{74, 4, "51A1"}}, {118}},
        CasoCampos{"OperacaoZeradaNotaComum", {{74, 4, "0000"}}, {118}},
        CasoCampos{"OperacaoZeradaNotaRelaxada", {{74, 4, "0000"}, {73, 1, "2"}}, {}},
        CasoCampos{"Operacao8000", {{74, 4, "8000"}}, {118}},
        CasoCampos{"Operacao1100", {{74, 4, "1100"}}, {118}},
        CasoCampos{"Operacao5999", {{74, 4, "5999"}}, {}},
        CasoCampos{"Operacao2101NaCasa", {{74, 4, "2101"}}, {118}},
        CasoCampos{"Operacao2101DeOutroEstado", {{71, 2, "SC"}, {74, 4, "2101"}}, {}},
        CasoCampos{
            "Operacao2101NoExterior", {{68, 3, "105"}, {71, 2, "EX"}, {74, 4, "2101"}}, {118}},
        CasoCampos{"Operacao3101NaCasa", {{74, 4, "3101"}}, {118}},
        CasoCampos{"Operacao5101NoExterior", {{68, 3, "105"}, {71, 2, "EX"}}, {118}},
        CasoCampos{
            "Operacao1100NoExterior", {{68, 3, "105"}, {71, 2, "EX"}, {74, 4, "1100"}}, {118, 118}},
        CasoCampos{"Operacao2101NaCasaNotaRelaxada", {{74, 4, "2101"}, {73, 1, "2"}}, {}},
        CasoCampos{"Operacao1101MesmoMunicipio", {{40, 14, "1231000002"}, {74, 4, "1101"}}, {}},
        CasoCampos{"Operacao1101OutroMunicipio", {{74, 4, "1101"}}, {118}},
        CasoCampos{"Operacao5113NaoProdutor", {{40, 14, "1232000002"}, {74, 4, "5113"}}, {118}},
        CasoCampos{"Operacao1101OutroMunicipioNotaRelaxada", {{74, 4, "1101"}, {31, 1, "E"}}, {}},
        CasoCampos{"Operacao1102OutroMunicipio", {{74, 4, "1102"}}, {}},
        CasoCampos{"Operacao1102MesmoMunicipio", {{40, 14, "1231000002"}, {74, 4, "1102"}}, {118}},
        CasoCampos{
            "Operacao1102ProdutorDeNoveDigitos", {{40, 14, "451000001"}, {74, 4, "1102"}}, {}},
        CasoCampos{"Operacao5212NaoProdutor", {{40, 14, "4560000001"}, {74, 4, "5212"}}, {118}},
        CasoCampos{"Operacao1103Isento", {{40, 14, "ISENTO"}, {74, 4, "1103"}}, {}},
        CasoCampos{"Operacao1103NaoIsento", {{74, 4, "1103"}}, {118}},
        CasoCampos{"Operacao5116NaoIsento", {{74, 4, "5116"}}, {118}},
        CasoCampos{"Operacao1203NaoProdutor", {{40, 14, "4562234567"}, {74, 4, "1203"}}, {}},
        CasoCampos{"Operacao1203Produtor", {{74, 4, "1203"}}, {118}},
        CasoCampos{"Operacao5111Isento", {{40, 14, "ISENTO"}, {74, 4, "5111"}}, {118}},
        CasoCampos{"Operacao5112Produtor", {{74, 4, "5112"}}, {118}},
        CasoCampos{"Operacao5112NaoProdutor", {{40, 14, "4562234567"}, {74, 4, "5112"}}, {}},
        // The counterpart is compared with the issuer at their full widths (14 and 10
        // characters), so a note to its own issuer is not held to 1999 or 5999: deliberate.
        CasoCampos{"OperacaoParaOProprioEmitente", {{40, 14, "1231000001"}, {74, 4, "1101"}}, {}},
        // ICMS calculation base (columns 78-90) and ICMS value (columns 91-103).
        CasoCampos{"BaseEmBranco", {{78, 13, ""}}, {119}},
        CasoCampos{"BaseCurtaMenorQueOICMS", {{78, 13, "100"}}, {119, 25}},
        CasoCampos{"BaseComLetra", {{78, 13, "000000001000A"}}, {119}},
        CasoCampos{"ValorICMSEmBranco", {{91, 13, ""}}, {120}},
        CasoCampos{"ValorICMSComLetra", {{91, 13, "000000000120A"}}, {120}},
        CasoCampos{
            "Base100ICMS200", {{78, 13, "0000000000100"}, {91, 13, "0000000000200"}}, {25, 25}},
        CasoCampos{"BaseEICMSZerados", {{78, 13, "0000000000000"}, {91, 13, "0000000000000"}}, {}},
        CasoCampos{
            "Base100ICMSZero", {{78, 13, "0000000000100"}, {91, 13, "0000000000000"}}, {124}},
        CasoCampos{
            "BaseZeroICMS100", {{78, 13, "0000000000000"}, {91, 13, "0000000000100"}}, {25, 124}},
        CasoCampos{"Base100ICMS200NotaRelaxada",
                   {{78, 13, "0000000000100"}, {91, 13, "0000000000200"}, {73, 1, "2"}},
                   {}},
        // Goods (columns 104-116).
        CasoCampos{"MercadoriasEmBranco", {{104, 13, ""}}, {121}},
        CasoCampos{"MercadoriasNegativas", {{104, 13, "-000000000001"}}, {121}},
        CasoCampos{"MercadoriasCurtas", {{104, 13, "10000"}}, {121}},
        CasoCampos{"MercadoriasZeradas", {{104, 13, "0000000000000"}}, {121}},
        CasoCampos{
            "MercadoriasZeradasComRendimento", {{104, 13, "0000000000000"}, {143, 1, "S"}}, {}},
        CasoCampos{
            "MercadoriasZeradasNotaRelaxada", {{104, 13, "0000000000000"}, {73, 1, "3"}}, {}},
        CasoCampos{"MercadoriasZeradasParaOProprioEmitente",
                   {{104, 13, "0000000000000"}, {40, 14, "1231000001"}},
                   {}},
        // Funrural (columns 117-129).
        CasoCampos{"FunruralEmBranco", {{117, 13, ""}}, {139}},
        CasoCampos{"FunruralNegativo", {{117, 13, "-000000000001"}}, {139, 122}},
        CasoCampos{
            "FunruralDescontado", {{117, 13, "0000000000100"}, {130, 13, "0000000009900"}}, {}},
        // Note total (columns 130-142).
        CasoCampos{"TotalEmBranco", {{130, 13, ""}}, {122}},
        CasoCampos{"TotalNegativo", {{130, 13, "-000000000001"}}, {122}},
        CasoCampos{"TotalAbaixoDasMercadorias", {{130, 13, "0000000009999"}}, {122}},
        CasoCampos{"TotalAbaixoDasMercadoriasNotaRelaxada",
                   {{130, 13, "0000000009999"}, {73, 1, "2"}},
                   {}},
        // Income flag (column 143).
        CasoCampos{"RendimentoS", {{143, 1, "S"}}, {}},
        CasoCampos{"RendimentoX", {{143, 1, "X"}}, {140}},
        CasoCampos{"RendimentoComOperacaoDeEntrada",
                   {{40, 14, "1231000002"}, {74, 4, "1101"}, {143, 1, "S"}},
                   {140}},
        CasoCampos{"RendimentoCom6110", {{71, 2, "SC"}, {74, 4, "6110"}, {143, 1, "S"}}, {}},
        CasoCampos{"RendimentoCom6810", {{71, 2, "SC"}, {74, 4, "6810"}, {143, 1, "S"}}, {}},
        CasoCampos{"RendimentoCom6101", {{71, 2, "SC"}, {74, 4, "6101"}, {143, 1, "S"}}, {140}},
        CasoCampos{
            "RendimentoCom5115", {{40, 14, "ISENTO"}, {74, 4, "5115"}, {143, 1, "S"}}, {140}},
        CasoCampos{"RendimentoCom7101",
                   {{68, 3, "105"}, {71, 2, "EX"}, {74, 4, "7101"}, {143, 1, "S"}},
                   {140}},
        // Every field wrong: one warning per field, in the order of the fields.
        CasoCampos{"TodosOsCamposErrados",
                   {{11, 10, ""},
                    {21, 1, "X"},
                    {22, 3, ""},
                    {25, 6, ""},
                    {31, 1, ""},
                    {32, 8, ""},
                    {40, 14, ""},
                    {54, 14, "A"},
                    {68, 3, ""},
                    {71, 2, ""},
                    {73, 1, ""},
                    {74, 4, ""},
                    {78, 13, ""},
                    {91, 13, ""},
                    {104, 13, ""},
                    {117, 13, ""},
                    {130, 13, ""},
                    {143, 1, "X"}},
                   {106, 107, 108, 109, 110, 111, 112, 113, 114, 115, 116, 118, 119, 120, 121, 139,
                    122, 140}}),
    NomeDoCaso);

// What a version-2 header tells the note check, by its source type (columns 58-59) and source
// code (columns 11-24).
struct CasoFonte {
  const char* nome;
  const char* tipoFonte;
  const char* codigoFonte;  // null: the builder's
  std::vector<Preenchimento> campos;
  std::vector<int> codigos;
};

class FonteDoCabecalho : public TesteNotas, public ::testing::WithParamInterface<CasoFonte> {};

TEST_P(FonteDoCabecalho, AdvertenciasNaLinhaDaNota) {
  const CasoFonte& caso = GetParam();
  Registro& cabecalho = arquivo.CabecalhoV2(caso.tipoFonte);
  if (caso.codigoFonte != nullptr) cabecalho.Campo(11, 14, caso.codigoFonte);
  arquivo.TR01();
  const Registro& nota = Preenche(arquivo.TR10Valido(), caso.campos);
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), caso.codigos.empty() ? 0 : 1);
  EXPECT_EQ(Gravadas(), Na(nota, caso.codigos));
}

INSTANTIATE_TEST_SUITE_P(
    Notas, FonteDoCabecalho,
    ::testing::Values(
        // Other sources do not compare the issuer's municipality.
        CasoFonte{"Fonte2AceitaQualquerMunicipio", "02", nullptr, {{11, 10, "4561000001"}}, {}},
        CasoFonte{"Fonte8AceitaQualquerMunicipio", "08", nullptr, {{11, 10, "4561000001"}}, {}},
        // Source type 1 compares three characters with the whole 14-character source code, so
        // every note is told 106, even when the code names the municipality: deliberate.
        CasoFonte{"Fonte1", "01", nullptr, {}, {106}},
        CasoFonte{"Fonte1ComOCodigoDoMunicipio", "01", "123", {}, {106}},
        // Source type 5: exempt counterparts and operation 5112 only.
        CasoFonte{"Fonte5IsentoE5112", "05", nullptr, {{40, 14, "ISENTO"}, {74, 4, "5112"}}, {}},
        CasoFonte{"Fonte5DestinatarioComInscricao",
                  "05",
                  nullptr,
                  {{40, 14, "4562234567"}, {74, 4, "5112"}},
                  {112}},
        CasoFonte{
            "Fonte5OutraOperacao", "05", nullptr, {{40, 14, "ISENTO"}, {74, 4, "5101"}}, {118}},
        CasoFonte{"Fonte5NotaValidaParaOutrasFontes", "05", nullptr, {}, {112, 118}},
        // Source type 6: the issuer must be the source itself, compared as numbers.
        CasoFonte{"Fonte6EmitenteDaFonte", "06", "00001231000001", {}, {}},
        CasoFonte{"Fonte6EmitenteDaFonteSemZeros", "06", "1231000001", {}, {}},
        CasoFonte{"Fonte6OutroEmitente", "06", "00001231000002", {}, {106}},
        CasoFonte{"Fonte6EmitenteComLetra",
                  "06",
                  "00001231000001",
                  {{11, 10, "123100000X"}},
                  {106, 106}}),
    [](const ::testing::TestParamInfo<CasoFonte>& info) { return info.param.nome; });

using MunicipioDoCabecalho = TesteNotas;

// The version-1 header's municipality is the prefix every issuer must carry.
TEST_F(MunicipioDoCabecalho, CabecalhoV1ExigeOMunicipioDoCabecalho) {
  arquivo.CabecalhoV1().Campo(32, 3, "456");
  arquivo.TR01();
  const Registro& daCasa = arquivo.TR10Valido();
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR01();
  arquivo.TR10Valido().Campo(11, 10, "4561000001");
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 1);
  EXPECT_EQ(Gravadas(), Na(daCasa, {106}));
}

}  // namespace
}  // namespace quorv::teste
