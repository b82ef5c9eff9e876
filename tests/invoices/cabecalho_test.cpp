// The header of both layout versions: every field in order, and every problem is fatal.
#include <vector>

#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

struct Campo {
  int coluna;
  int largura;
  const char* valor;
};

struct CasoCabecalho {
  const char* nome;
  std::vector<Campo> campos;
  std::vector<int> codigos;  // empty: accepted
};

class CabecalhoV1 : public TesteNotas, public ::testing::WithParamInterface<CasoCabecalho> {};

TEST_P(CabecalhoV1, CamposNaOrdem) {
  const CasoCabecalho& caso = GetParam();
  Registro& cabecalho = arquivo.CabecalhoV1();
  for (const Campo& campo : caso.campos)
    cabecalho.Campo(campo.coluna, campo.largura, campo.valor);
  arquivo.TR01();
  // The note's issuer belongs to the header's municipality.
  arquivo.TR10Valido().Campo(11, 3, cabecalho.Texto().substr(31, 3));
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR99();
  const int16_t status = Valida();
  if (caso.codigos.empty()) {
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(diretorio.TemAdvertencias());
    return;
  }
  EXPECT_EQ(status, 8);
  Advertencias esperado;
  for (int codigo : caso.codigos)
    esperado.Linha(codigo, cabecalho.Texto(), "00000001");
  EXPECT_EQ(Gravadas(), esperado.Texto());
}

INSTANTIATE_TEST_SUITE_P(
    Notas, CabecalhoV1,
    ::testing::Values(CasoCabecalho{"Valido", {}, {}},
                      CasoCabecalho{"Municipio000", {{32, 3, "000"}}, {104}},
                      CasoCabecalho{"Municipio501", {{32, 3, "501"}}, {104}},
                      CasoCabecalho{"Municipio500", {{32, 3, "500"}}, {}},
                      CasoCabecalho{"Municipio001", {{32, 3, "001"}}, {}},
                      CasoCabecalho{"MunicipioComLetra", {{32, 3, "1A3"}}, {104}},
                      CasoCabecalho{"MunicipioEmBranco", {{32, 3, ""}}, {104}},
                      CasoCabecalho{"NomeDoMunicipioEmBranco", {{35, 25, ""}}, {103}},
                      CasoCabecalho{"Remessa000000", {{60, 6, "000000"}}, {93}},
                      CasoCabecalho{"RemessaComLetra", {{60, 6, "00001A"}}, {93}},
                      CasoCabecalho{"RemessaEmBranco", {{60, 6, ""}}, {93}},
                      CasoCabecalho{"Data19991231", {{66, 8, "19991231"}}, {68}},
                      CasoCabecalho{"Data20000101", {{66, 8, "20000101"}}, {}},
                      CasoCabecalho{"DataMes13", {{66, 8, "20241301"}}, {68}},
                      CasoCabecalho{"DataZeros", {{66, 8, "00000000"}}, {68}},
                      CasoCabecalho{"DataEmBranco", {{66, 8, ""}}, {68}},
                      CasoCabecalho{"Versao10ComBrancos", {{74, 10, "1.0"}}, {}},
                      CasoCabecalho{"VersaoUmSozinho", {{74, 10, "1"}}, {71}},
                      CasoCabecalho{"VersaoComBrancoNaFrente", {{74, 10, " 1.0"}}, {}},
                      CasoCabecalho{"IndicadorT", {{84, 1, "T"}}, {}},
                      CasoCabecalho{"IndicadorX", {{84, 1, "X"}}, {70}},
                      CasoCabecalho{"IndicadorMinusculo", {{84, 1, "t"}}, {70}},
                      CasoCabecalho{"TodosErrados",
                                    {{32, 3, "ABC"},
                                     {35, 25, ""},
                                     {60, 6, "-00001"},
                                     {66, 8, "19990101"},
                                     {74, 10, "1"},
                                     {84, 1, "Z"}},
                                    {104, 103, 93, 68, 71, 70}}),
    [](const ::testing::TestParamInfo<CasoCabecalho>& info) { return info.param.nome; });

// The version-2 header is held to the tests its trailer applies to the same fields: source type,
// source code, informant name, remessa number and date, version "2.0".
class CabecalhoV2 : public TesteNotas, public ::testing::WithParamInterface<CasoCabecalho> {};

TEST_P(CabecalhoV2, CamposNaOrdem) {
  const CasoCabecalho& caso = GetParam();
  Registro& cabecalho = arquivo.CabecalhoV2();
  for (const Campo& campo : caso.campos)
    cabecalho.Campo(campo.coluna, campo.largura, campo.valor);
  arquivo.TR01();
  arquivo.TR10Valido();
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR99();
  const int16_t status = Valida();
  if (caso.codigos.empty()) {
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(diretorio.TemAdvertencias());
    EXPECT_EQ(numeroRemessa, cabecalho.Texto().substr(59, 6));
    return;
  }
  EXPECT_EQ(status, 8);
  EXPECT_EQ(numeroRemessa, "");
  Advertencias esperado;
  for (int codigo : caso.codigos)
    esperado.Linha(codigo, cabecalho.Texto(), "00000001");
  EXPECT_EQ(Gravadas(), esperado.Texto());
}

INSTANTIATE_TEST_SUITE_P(
    Notas, CabecalhoV2,
    ::testing::Values(CasoCabecalho{"Valido", {}, {}},
                      CasoCabecalho{"TipoFonteEmBranco", {{58, 2, ""}}, {194}},
                      CasoCabecalho{"TipoFonteComLetra", {{58, 2, "0X"}}, {194}},
                      CasoCabecalho{"TipoFonteDeUmDigito", {{58, 2, "3"}}, {}},
                      CasoCabecalho{"CodigoFonteEmBranco", {{11, 14, ""}}, {193}},
                      CasoCabecalho{"CodigoFonteComLetra", {{11, 14, "1122233300018X"}}, {193}},
                      CasoCabecalho{"CodigoFonteCurto", {{11, 14, "123"}}, {}},
                      CasoCabecalho{"InformanteEmBranco", {{25, 33, ""}}, {196}},
                      CasoCabecalho{"Remessa000000", {{60, 6, "000000"}}, {93}},
                      CasoCabecalho{"RemessaCurta", {{60, 6, "1"}}, {93}},
                      CasoCabecalho{"RemessaComLetra", {{60, 6, "00001A"}}, {93}},
                      CasoCabecalho{"Remessa999999", {{60, 6, "999999"}}, {}},
                      CasoCabecalho{"Data19991231", {{66, 8, "19991231"}}, {68}},
                      CasoCabecalho{"Data20000101", {{66, 8, "20000101"}}, {}},
                      CasoCabecalho{"DataInvalida", {{66, 8, "20240230"}}, {68}},
                      CasoCabecalho{"DataCurta", {{66, 8, "2024"}}, {68}},
                      CasoCabecalho{"Versao20ComBrancos", {{74, 10, "2.0"}}, {}},
                      CasoCabecalho{"VersaoDoisSozinho", {{74, 10, "2"}}, {71}},
                      CasoCabecalho{"Versao200", {{74, 10, "2.00"}}, {71}},
                      CasoCabecalho{"Coluna84NaoEVerificada", {{84, 1, "X"}}, {}},
                      CasoCabecalho{"TodosErrados",
                                    {{58, 2, ""},
                                     {11, 14, ""},
                                     {25, 33, ""},
                                     {60, 6, "000000"},
                                     {66, 8, "19990101"},
                                     {74, 10, "2"}},
                                    {194, 193, 196, 93, 68, 71}}),
    [](const ::testing::TestParamInfo<CasoCabecalho>& info) { return info.param.nome; });

}  // namespace
}  // namespace quorv::teste
