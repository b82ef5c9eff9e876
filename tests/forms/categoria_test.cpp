// The establishment's category (TR 111): request number, category code, entry and exit dates.
// Today is pinned to 2024-06-30; the default establishment has been active since 2020-01-01.
#include "teste_fichas.hpp"

namespace quorv::teste {
namespace {

class CategoriaFichas : public TesteFichas, public ::testing::WithParamInterface<CasoRegistro> {};

TEST_P(CategoriaFichas, CamposDaCategoria) {
  ConfereRegistro("111", GetParam());
}

// Columns of TR 111.
constexpr int kSolicitacao = 12;
constexpr int kCategoria = 22;
constexpr int kEntrada = 24;
constexpr int kSaida = 32;

INSTANTIATE_TEST_SUITE_P(
    ExecucaoFichas, CategoriaFichas,
    ::testing::Values(
        CasoRegistro{"Valida", {}, {}},
        // Request number, compared by its leading number.
        CasoRegistro{"OutraSolicitacao", {{kSolicitacao, 10, "0000000002"}}, {12}},
        CasoRegistro{"SolicitacaoSemZeros", {{kSolicitacao, 10, "1"}}, {}},
        CasoRegistro{"SolicitacaoComLetraDepois", {{kSolicitacao, 10, "000000001X"}}, {}},
        CasoRegistro{"SolicitacaoEmBranco", {{kSolicitacao, 10, ""}}, {12}},
        // Category code.
        CasoRegistro{"Categoria01", {{kCategoria, 2, "01"}}, {}},
        CasoRegistro{"Categoria99", {{kCategoria, 2, "99"}}, {}},
        CasoRegistro{"Categoria00", {{kCategoria, 2, "00"}}, {89}},
        CasoRegistro{"CategoriaNegativa", {{kCategoria, 2, "-1"}}, {89}},
        CasoRegistro{"CategoriaComLetra", {{kCategoria, 2, "A1"}}, {89}},
        CasoRegistro{"CategoriaEmBranco", {{kCategoria, 2, ""}}, {89}},
        // Entry date.
        CasoRegistro{"EntradaZerada", {{kEntrada, 8, "00000000"}}, {90}},
        CasoRegistro{"EntradaEmBranco", {{kEntrada, 8, ""}}, {90}},
        CasoRegistro{"EntradaInexistente", {{kEntrada, 8, "20240230"}}, {90}},
        CasoRegistro{"EntradaAntesDe1900", {{kEntrada, 8, "18991231"}}, {90}, "", {}, "00000000"},
        CasoRegistro{"EntradaHoje", {{kEntrada, 8, "20240630"}}, {}},
        CasoRegistro{"EntradaAmanha", {{kEntrada, 8, "20240701"}}, {90}},
        CasoRegistro{"EntradaNoInicioDaAtividade", {{kEntrada, 8, "20200101"}}, {}},
        CasoRegistro{"EntradaNaVesperaDoInicio", {{kEntrada, 8, "20191231"}}, {90}},
        CasoRegistro{"EntradaNoFimDaAtividade",
                     {{kEntrada, 8, "20231231"}},
                     {},
                     "",
                     {},
                     "20200101",
                     "20231231"},
        CasoRegistro{"EntradaDepoisDoFimDaAtividade",
                     {{kEntrada, 8, "20240101"}},
                     {90},
                     "",
                     {},
                     "20200101",
                     "20231231"},
        CasoRegistro{"InicioDaAtividadeQueNaoEDataDeixaPassar",
                     {{kEntrada, 8, "19000101"}},
                     {},
                     "",
                     {},
                     "",
                     "00000000"},
        CasoRegistro{"FimDaAtividadeQueNaoEDataNaoLimita",
                     {{kEntrada, 8, "20240101"}},
                     {},
                     "",
                     {},
                     "20200101",
                     "2023"},
        // Exit date.
        CasoRegistro{"SaidaZerada", {{kSaida, 8, "00000000"}}, {}},
        CasoRegistro{"SaidaEmBranco", {{kSaida, 8, ""}}, {91}},
        CasoRegistro{"SaidaComLetra", {{kSaida, 8, "2024O101"}}, {91}},
        CasoRegistro{"SaidaAntesDe1900", {{kSaida, 8, "18991231"}}, {91}},
        CasoRegistro{"SaidaHoje", {{kSaida, 8, "20240630"}}, {}},
        CasoRegistro{"SaidaAmanha", {{kSaida, 8, "20240701"}}, {91}},
        CasoRegistro{"SaidaNaEntrada", {{kEntrada, 8, "20210510"}, {kSaida, 8, "20210510"}}, {}},
        CasoRegistro{
            "SaidaNaVesperaDaEntrada", {{kEntrada, 8, "20210510"}, {kSaida, 8, "20210509"}}, {91}},
        CasoRegistro{"SaidaDepoisDoFimDaAtividade",
                     {{kEntrada, 8, "20210510"}, {kSaida, 8, "20240601"}},
                     {},
                     "",
                     {},
                     "20200101",
                     "20231231"},
        // The two date groups together.
        CasoRegistro{"EntradaInvalidaESaidaZerada",
                     {{kEntrada, 8, "ABCDEFGH"}, {kSaida, 8, "00000000"}},
                     {90}},
        CasoRegistro{"SaidaAntesDeEntradaInvalidaMasPosterior",
                     {{kEntrada, 8, "20240701"}, {kSaida, 8, "20240630"}},
                     {90, 91}},
        CasoRegistro{
            "SaidaComEntradaZerada", {{kEntrada, 8, "00000000"}, {kSaida, 8, "20230101"}}, {90}},
        CasoRegistro{"TudoErrado",
                     {{kSolicitacao, 10, "0000000009"},
                      {kCategoria, 2, "00"},
                      {kEntrada, 8, "00000000"},
                      {kSaida, 8, ""}},
                     {12, 89, 90, 91}}),
    [](const ::testing::TestParamInfo<CasoRegistro>& info) { return info.param.nome; });

TEST_F(TesteFichas, CategoriaNaoEVerificadaParaOSistemaWeb) {
  const CasoRegistro tudoErrado{"TudoErrado",
                                {{kSolicitacao, 10, "0000000009"},
                                 {kCategoria, 2, "00"},
                                 {kEntrada, 8, "00000000"},
                                 {kSaida, 8, ""}},
                                {}};
  ConfereRegistro("111", tudoErrado, " tarnweb ");
}

TEST_F(TesteFichas, CategoriaComparaComOHojeDoRelogio) {
  validacao.Hoje = [] { return SerialDaData(2024, 7, 1); };
  ConfereRegistro("111", {"Amanha", {{kEntrada, 8, "20240701"}, {kSaida, 8, "20240701"}}, {}});
}

// The activity period is taken from an establishment line before its rules, so a second
// establishment of the request, though refused, sets the period its categories are held to; the
// rejection notice goes against it too, the last establishment line read.
TEST_F(TesteFichas, CategoriaSegueOPeriodoDoSegundoEstabelecimento) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.TR110().Campo(42, 8, "20220101");
  arquivo.TR111().Campo(kEntrada, 8, "20210101");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Esperado({{14, 4}, {90, 5}, {125, 4}}));
}

}  // namespace
}  // namespace quorv::teste
