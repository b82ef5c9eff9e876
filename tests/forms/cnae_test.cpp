// An economic activity of the establishment (TR 115): request number, CNAE Fiscal code, entry
// and exit dates and billing order. Today is pinned to 2024-06-30; the default establishment has
// been active since 2020-01-01.
#include "teste_fichas.hpp"

namespace quorv::teste {
namespace {

class CNAEFichas : public TesteFichas, public ::testing::WithParamInterface<CasoRegistro> {};

TEST_P(CNAEFichas, CamposDaAtividade) {
  ConfereRegistro("115", GetParam());
}

// Columns of TR 115.
constexpr int kSolicitacao = 12;
constexpr int kCNAE = 22;
constexpr int kEntrada = 29;
constexpr int kSaida = 37;
constexpr int kOrdem = 45;

INSTANTIATE_TEST_SUITE_P(
    ExecucaoFichas, CNAEFichas,
    ::testing::Values(CasoRegistro{"Valida", {}, {}},
                      CasoRegistro{"OutraSolicitacao", {{kSolicitacao, 10, "0000000002"}}, {12}},
                      // CNAE Fiscal code: any number above zero, no table.
                      CasoRegistro{"CNAEMenor", {{kCNAE, 7, "0000001"}}, {}},
                      CasoRegistro{"CNAEMaior", {{kCNAE, 7, "9999999"}}, {}},
                      CasoRegistro{"CNAEZerado", {{kCNAE, 7, "0000000"}}, {92}},
                      CasoRegistro{"CNAEComLetra", {{kCNAE, 7, "011130A"}}, {92}},
                      CasoRegistro{"CNAEComBrancoNoMeio", {{kCNAE, 7, "011 301"}}, {92}},
                      CasoRegistro{"CNAEEmBranco", {{kCNAE, 7, ""}}, {92}},
                      CasoRegistro{"CNAENegativo", {{kCNAE, 7, "-011130"}}, {92}},
                      // Billing order: a digit from 0 to 3.
                      CasoRegistro{"Ordem0", {{kOrdem, 1, "0"}}, {}},
                      CasoRegistro{"Ordem1", {{kOrdem, 1, "1"}}, {}},
                      CasoRegistro{"Ordem2", {{kOrdem, 1, "2"}}, {}},
                      CasoRegistro{"Ordem3", {{kOrdem, 1, "3"}}, {}},
                      CasoRegistro{"Ordem4", {{kOrdem, 1, "4"}}, {93}},
                      CasoRegistro{"Ordem5", {{kOrdem, 1, "5"}}, {93}},
                      CasoRegistro{"Ordem6", {{kOrdem, 1, "6"}}, {93}},
                      CasoRegistro{"Ordem7", {{kOrdem, 1, "7"}}, {93}},
                      CasoRegistro{"Ordem8", {{kOrdem, 1, "8"}}, {93}},
                      CasoRegistro{"Ordem9", {{kOrdem, 1, "9"}}, {93}},
                      CasoRegistro{"OrdemEmBranco", {{kOrdem, 1, ""}}, {93}},
                      CasoRegistro{"OrdemComLetra", {{kOrdem, 1, "A"}}, {93}},
                      // Dates: the same chains as the category's.
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
                      CasoRegistro{"SaidaHoje", {{kSaida, 8, "20240630"}}, {}},
                      CasoRegistro{"SaidaAmanha", {{kSaida, 8, "20240701"}}, {91}},
                      CasoRegistro{"SaidaEmBranco", {{kSaida, 8, ""}}, {91}},
                      CasoRegistro{"SaidaAntesDaEntrada",
                                   {{kEntrada, 8, "20220202"}, {kSaida, 8, "20220201"}},
                                   {91}},
                      CasoRegistro{"SaidaZeradaAindaVerificaAOrdem",
                                   {{kSaida, 8, "00000000"}, {kOrdem, 1, "9"}},
                                   {93}},
                      CasoRegistro{"EntradaInvalidaNaoImpedeOsGruposSeguintes",
                                   {{kEntrada, 8, ""}, {kSaida, 8, "20240701"}, {kOrdem, 1, "4"}},
                                   {90, 91, 93}},
                      CasoRegistro{"TudoErrado",
                                   {{kSolicitacao, 10, "0000000002"},
                                    {kCNAE, 7, "0000000"},
                                    {kEntrada, 8, ""},
                                    {kSaida, 8, ""},
                                    {kOrdem, 1, "X"}},
                                   {12, 92, 90, 91, 93}}),
    [](const ::testing::TestParamInfo<CasoRegistro>& info) { return info.param.nome; });

TEST_F(TesteFichas, AtividadeNaoEVerificadaParaOSistemaWeb) {
  ConfereRegistro("115",
                  {"TudoErrado",
                   {{kSolicitacao, 10, "0000000002"},
                    {kCNAE, 7, "0000000"},
                    {kEntrada, 8, ""},
                    {kSaida, 8, ""},
                    {kOrdem, 1, "X"}},
                   {}},
                  "TARNWEB");
}

}  // namespace
}  // namespace quorv::teste
