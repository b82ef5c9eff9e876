// A property of the establishment (TR 140): request number, municipality, zone, registry number,
// areas, owners and dates. Today is pinned to 2024-06-30; the default establishment has been
// active since 2020-01-01.
#include "teste_fichas.hpp"

namespace quorv::teste {
namespace {

class ImovelFichas : public TesteFichas, public ::testing::WithParamInterface<CasoRegistro> {};

TEST_P(ImovelFichas, CamposDoImovel) {
  ConfereRegistro("140", GetParam());
}

// Columns of TR 140.
constexpr int kSolicitacao = 12;
constexpr int kMunicipio = 22;
constexpr int kZona = 25;
constexpr int kMatricula = 26;
constexpr int kArea = 34;
constexpr int kProprietarios = 41;
constexpr int kAreaUtilizada = 43;
constexpr int kEntrada = 50;
constexpr int kSaida = 58;

INSTANTIATE_TEST_SUITE_P(
    ExecucaoFichas, ImovelFichas,
    ::testing::Values(
        CasoRegistro{"Valido", {}, {}},
        CasoRegistro{"OutraSolicitacao", {{kSolicitacao, 10, "0000000002"}}, {12}},
        // Municipality, from 1 to 500.
        CasoRegistro{"Municipio001", {{kMunicipio, 3, "001"}}, {}},
        CasoRegistro{"Municipio500", {{kMunicipio, 3, "500"}}, {}},
        CasoRegistro{"Municipio501", {{kMunicipio, 3, "501"}}, {56}},
        CasoRegistro{"Municipio000", {{kMunicipio, 3, "000"}}, {56}},
        CasoRegistro{"MunicipioEmBranco", {{kMunicipio, 3, ""}}, {56}},
        // Zone and registry number.
        CasoRegistro{"Zona9", {{kZona, 1, "9"}}, {}},
        CasoRegistro{"Zona0", {{kZona, 1, "0"}}, {110}},
        CasoRegistro{"ZonaEmBranco", {{kZona, 1, ""}}, {110}},
        CasoRegistro{"MatriculaZerada", {{kMatricula, 8, "00000000"}}, {111}},
        CasoRegistro{"MatriculaComLetra", {{kMatricula, 8, "0001234X"}}, {111}},
        // Areas.
        CasoRegistro{
            "AreaUtilizadaIgualAArea", {{kArea, 7, "0000100"}, {kAreaUtilizada, 7, "0000100"}}, {}},
        CasoRegistro{"AreaUtilizadaMaiorQueAArea",
                     {{kArea, 7, "0000100"}, {kAreaUtilizada, 7, "0000101"}},
                     {83}},
        CasoRegistro{
            "AreasZeradas", {{kArea, 7, "0000000"}, {kAreaUtilizada, 7, "0000000"}}, {83, 112}},
        CasoRegistro{"AreaEmBrancoDuasVezes83", {{kArea, 7, ""}}, {83, 83}},
        CasoRegistro{"AreaUtilizadaEmBranco", {{kAreaUtilizada, 7, ""}}, {112}},
        // Owners: zero is accepted.
        CasoRegistro{"ProprietariosZero", {{kProprietarios, 2, "00"}}, {}},
        CasoRegistro{"ProprietariosEmBranco", {{kProprietarios, 2, ""}}, {113}},
        CasoRegistro{"ProprietariosComLetra", {{kProprietarios, 2, "1A"}}, {113}},
        // Entry date: the same chain as the category's.
        CasoRegistro{"EntradaHoje", {{kEntrada, 8, "20240630"}}, {}},
        CasoRegistro{"EntradaAmanha", {{kEntrada, 8, "20240701"}}, {90}},
        CasoRegistro{"EntradaZerada", {{kEntrada, 8, "00000000"}}, {90}},
        CasoRegistro{"EntradaAntesDoInicioDaAtividade",
                     {{kEntrada, 8, "20210301"}},
                     {90},
                     "",
                     {},
                     "20210302"},
        CasoRegistro{"EntradaDepoisDoFimDaAtividade",
                     {{kEntrada, 8, "20230101"}},
                     {90},
                     "",
                     {},
                     "20200101",
                     "20221231"},
        // Exit date: never compared with today.
        CasoRegistro{"SaidaAmanhaAceita", {{kSaida, 8, "20240701"}}, {}},
        CasoRegistro{"SaidaFuturaAceita", {{kSaida, 8, "20991231"}}, {}},
        CasoRegistro{"SaidaZerada", {{kSaida, 8, "00000000"}}, {}},
        CasoRegistro{"SaidaEmBranco", {{kSaida, 8, ""}}, {91}},
        CasoRegistro{"SaidaAntesDe1900", {{kSaida, 8, "18991231"}}, {91}},
        CasoRegistro{"SaidaNaEntrada", {{kEntrada, 8, "20220202"}, {kSaida, 8, "20220202"}}, {}},
        CasoRegistro{
            "SaidaAntesDaEntrada", {{kEntrada, 8, "20220202"}, {kSaida, 8, "20220201"}}, {91}},
        CasoRegistro{"SaidaAntesDeEntradaQueNaoEData",
                     {{kEntrada, 8, "2022020X"}, {kSaida, 8, "19500101"}},
                     {90}},
        CasoRegistro{"SaidaZeradaAindaVerificaProprietarios",
                     {{kSaida, 8, "00000000"}, {kProprietarios, 2, ""}},
                     {113}},
        CasoRegistro{"TudoErrado",
                     {{kSolicitacao, 10, "0000000002"},
                      {kMunicipio, 3, "000"},
                      {kZona, 1, "0"},
                      {kMatricula, 8, "0"},
                      {kArea, 7, "0"},
                      {kProprietarios, 2, ""},
                      {kAreaUtilizada, 7, "0"},
                      {kEntrada, 8, ""},
                      {kSaida, 8, ""}},
                     {12, 56, 110, 111, 83, 112, 90, 91, 113}}),
    [](const ::testing::TestParamInfo<CasoRegistro>& info) { return info.param.nome; });

TEST_F(TesteFichas, ImovelNaoEVerificadoParaOSistemaWeb) {
  ConfereRegistro("140",
                  {"TudoErrado",
                   {{kMunicipio, 3, "000"}, {kZona, 1, "0"}, {kArea, 7, ""}, {kSaida, 8, ""}},
                   {}},
                  "tarnweb");
}

TEST_F(TesteFichas, SaidaFuturaRecusadaNaCategoriaAceitaNoImovel) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.TR111().Campo(32, 8, "20240701");
  arquivo.TR140().Campo(kSaida, 8, "20240701");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Esperado({{91, 4}, {125, 3}}));
}

}  // namespace
}  // namespace quorv::teste
