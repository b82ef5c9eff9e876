// The structure rules of a form file: the request's state machine walked through each of its
// transitions, with every handler's warnings. The same rules apply when the web system calls.
#include <ostream>
#include <vector>

#include "teste_fichas.hpp"

namespace quorv::teste {
namespace {

struct CasoEstrutura {
  const char* nome;
  // Every record of the file, by type, each the default record of its type.
  std::vector<const char*> tipos;
  // Code and 1-based line of each warning; for 125, the line of the request's TR 110.
  std::vector<Esperada> advertencias;
};

// Failure messages name the case.
void PrintTo(const CasoEstrutura& caso, std::ostream* saida) {
  *saida << caso.nome;
}

class EstruturaFichas : public TesteFichas, public ::testing::WithParamInterface<CasoEstrutura> {
 protected:
  void SetUp() override {
    for (const char* tipo : GetParam().tipos)
      arquivo.Padrao(tipo);
  }
};

TEST_P(EstruturaFichas, AdvertenciasDaEstrutura) {
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Esperado(GetParam().advertencias));
}

TEST_P(EstruturaFichas, AsMesmasParaOSistemaWeb) {
  EXPECT_EQ(Valida("", "  tarnWeb "), 8);
  EXPECT_EQ(Gravadas(), Esperado(GetParam().advertencias));
}

INSTANTIATE_TEST_SUITE_P(
    ExecucaoFichas, EstruturaFichas,
    ::testing::Values(
        // Header, requests and trailer.
        CasoEstrutura{"DuasSolicitacoesCompletas",
                      {"001", "100", "110", "111", "115", "120", "121", "140", "199", "100", "110",
                       "111", "115", "120", "121", "140", "199", "999"},
                      {}},
        CasoEstrutura{"SolicitacaoComTodosOsRegistros",
                      {"001", "100", "110", "111", "115", "120", "121", "125", "126", "130",
                       "131", "140", "145", "146", "145", "146", "196", "197", "199", "999"},
                      {}},
        CasoEstrutura{"TR100NaPrimeiraLinha", {"100", "999"}, {{4, 1}, {4, 2}}},
        CasoEstrutura{"SolicitacaoSemCabecalho",
                      {"100", "110", "199", "999"},
                      {{4, 1}, {4, 2}, {10, 2}, {4, 3}, {10, 3}, {125, 2}, {4, 4}}},
        CasoEstrutura{"TR100ComSolicitacaoAberta",
                      {"001", "100", "110", "100", "199", "999"},
                      {{13, 4}, {125, 3}}},
        CasoEstrutura{"TR100DepoisDoTR199Reabre",
                      {"001", "100", "110", "199", "100", "110", "199", "999"},
                      {}},
        CasoEstrutura{"TrailerSemCabecalho", {"999"}, {{4, 1}}},
        CasoEstrutura{"TrailerComSolicitacaoAberta", {"001", "100", "110", "999"}, {{38, 4}}},
        CasoEstrutura{"TrailerSemSolicitacao", {"001", "999"}, {}},
        CasoEstrutura{"RegistroDepoisDoTrailerNaoELido",
                      {"001", "100", "110", "199", "999", "121", "100"},
                      {}},
        // The establishment.
        CasoEstrutura{"TR110SemCabecalho", {"110", "999"}, {{4, 1}, {10, 1}, {4, 2}}},
        CasoEstrutura{"TR110SemTR100", {"001", "110", "999"}, {{10, 2}}},
        CasoEstrutura{
            "TR110DepoisDoTR199", {"001", "100", "110", "199", "110", "999"}, {{10, 5}, {11, 5}}},
        CasoEstrutura{"DoisTR110LimpamOsFilhosMesmoAssim",
                      {"001", "100", "110", "120", "121", "110", "121", "199", "999"},
                      {{14, 6}, {19, 7}, {18, 8}, {125, 6}}},
        CasoEstrutura{"DoisTR110PedemNovosFilhosNoFechamento",
                      {"001", "100", "110", "125", "126", "130", "131", "110", "199", "999"},
                      {{14, 8}, {22, 9}, {26, 9}, {125, 8}}},
        // Category and economic activity.
        CasoEstrutura{"TR111SemTR110", {"001", "100", "111", "199", "999"}, {{15, 3}, {125, 0}}},
        CasoEstrutura{"TR115SemTR110", {"001", "100", "115", "199", "999"}, {{16, 3}, {125, 0}}},
        CasoEstrutura{"TR111DepoisDoTR199",
                      {"001", "100", "110", "199", "111", "115", "999"},
                      {{10, 5}, {11, 5}, {10, 6}, {11, 6}}},
        // Holders and their name records.
        CasoEstrutura{"TR120SemTR110", {"001", "100", "120", "199", "999"}, {{999, 3}, {125, 0}}},
        CasoEstrutura{"TR120SemTR121SeguidoDeTR120",
                      {"001", "100", "110", "120", "120", "121", "199", "999"},
                      {{18, 5}}},
        CasoEstrutura{"TR120SemTR121NoFechamento",
                      {"001", "100", "110", "120", "199", "999"},
                      {{18, 5}, {125, 3}}},
        CasoEstrutura{
            "TR121SemTR120", {"001", "100", "110", "121", "199", "999"}, {{19, 4}, {125, 3}}},
        CasoEstrutura{"DoisTR121ParaUmTR120",
                      {"001", "100", "110", "120", "121", "121", "199", "999"},
                      {{20, 6}, {125, 3}}},
        CasoEstrutura{"TR121DaSolicitacaoAnterior",
                      {"001", "100", "110", "120", "121", "199", "100", "110", "121", "199", "999"},
                      {{19, 9}, {125, 8}}},
        // Participants.
        CasoEstrutura{"TR125SemTR110", {"001", "100", "125", "199", "999"}, {{21, 3}, {125, 0}}},
        CasoEstrutura{"TR125SemTR126SeguidoDeTR125",
                      {"001", "100", "110", "125", "125", "126", "199", "999"},
                      {{22, 5}, {125, 3}}},
        CasoEstrutura{"TR125SemTR126NoFechamento",
                      {"001", "100", "110", "125", "199", "999"},
                      {{22, 5}, {125, 3}}},
        CasoEstrutura{
            "TR126SemTR125", {"001", "100", "110", "126", "199", "999"}, {{23, 4}, {125, 3}}},
        CasoEstrutura{"DoisTR126ParaUmTR125",
                      {"001", "100", "110", "125", "126", "126", "199", "999"},
                      {{24, 6}, {125, 3}}},
        CasoEstrutura{"TR126DepoisDeNovoTR100",
                      {"001", "100", "110", "125", "126", "199", "100", "126", "199", "999"},
                      {{23, 8}, {125, 3}}},
        // Legal representatives.
        CasoEstrutura{"TR130SemTR110", {"001", "100", "130", "199", "999"}, {{25, 3}, {125, 0}}},
        CasoEstrutura{"TR130SemTR131SeguidoDeTR130",
                      {"001", "100", "110", "130", "130", "131", "199", "999"},
                      {{26, 5}, {125, 3}}},
        CasoEstrutura{"TR130SemTR131NoFechamento",
                      {"001", "100", "110", "130", "199", "999"},
                      {{26, 5}, {125, 3}}},
        CasoEstrutura{
            "TR131SemTR130", {"001", "100", "110", "131", "199", "999"}, {{27, 4}, {125, 3}}},
        CasoEstrutura{"DoisTR131ParaUmTR130",
                      {"001", "100", "110", "130", "131", "131", "199", "999"},
                      {{28, 6}, {125, 3}}},
        CasoEstrutura{"FaltamOsTresFilhosNoFechamento",
                      {"001", "100", "110", "120", "125", "130", "199", "999"},
                      {{18, 7}, {22, 7}, {26, 7}, {125, 3}}},
        // Properties and owners.
        CasoEstrutura{"TR140SemTR110", {"001", "100", "140", "199", "999"}, {{29, 3}, {125, 0}}},
        CasoEstrutura{"TR145SemTR110", {"001", "100", "145", "199", "999"}, {{32, 3}, {125, 0}}},
        CasoEstrutura{
            "TR145SemTR140", {"001", "100", "110", "145", "199", "999"}, {{33, 4}, {125, 3}}},
        CasoEstrutura{"TR146AceitoDepoisDeTR145Recusado",
                      {"001", "100", "110", "145", "146", "199", "999"},
                      {{33, 4}, {125, 3}}},
        CasoEstrutura{"TR145SemTR146SeguidoDeTR145",
                      {"001", "100", "110", "140", "145", "145", "146", "199", "999"},
                      {{34, 6}}},
        CasoEstrutura{
            "TR145SemTR146NoFechamento", {"001", "100", "110", "140", "145", "199", "999"}, {}},
        CasoEstrutura{"TR146SemTR145",
                      {"001", "100", "110", "140", "146", "199", "999"},
                      {{35, 5}, {125, 3}}},
        CasoEstrutura{"DoisTR146ParaUmTR145",
                      {"001", "100", "110", "140", "145", "146", "146", "199", "999"},
                      {{36, 7}, {125, 3}}},
        CasoEstrutura{"NovoTR140PedeNovoTR145",
                      {"001", "100", "110", "140", "145", "146", "140", "146", "199", "999"},
                      {{35, 8}, {125, 3}}},
        // Other records of the request.
        CasoEstrutura{"TR196ETR197SemTR110", {"001", "100", "196", "197", "199", "999"}, {}},
        CasoEstrutura{"TR197DepoisDoTR199",
                      {"001", "100", "110", "199", "196", "197", "999"},
                      {{10, 5}, {11, 5}, {10, 6}, {11, 6}}},
        // The request's closing.
        CasoEstrutura{"TR199SemTR100", {"001", "199", "999"}, {{10, 2}, {125, 0}}},
        CasoEstrutura{
            "DoisTR199", {"001", "100", "110", "199", "199", "999"}, {{10, 5}, {11, 5}, {125, 3}}}),
    [](const ::testing::TestParamInfo<CasoEstrutura>& info) { return info.param.nome; });

// One file with structure and field problems: the web system's tag, trimmed and upper-cased,
// drops the field warnings and keeps the structure's.
TEST_F(TesteFichas, OSistemaWebSoPerdeAsAdvertenciasDeCampo) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.TR111().Campo(22, 2, "00");
  arquivo.NomePessoa("121");
  arquivo.TR140().Campo(22, 3, "000");
  arquivo.Pessoa("120");
  arquivo.NomePessoa("121").Campo(64, 46, "");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Esperado({{89, 4}, {19, 5}, {56, 6}, {108, 8}, {125, 3}}));
  EXPECT_EQ(Valida("", " tarnweb "), 8);
  EXPECT_EQ(Gravadas(), Esperado({{19, 5}, {125, 3}}));
}

// A request opening refused inside an open request still starts the request's counts again and
// gives its number to the records that follow: a new establishment is taken without warning 14,
// and a category with the first number is told 12.
TEST_F(TesteFichas, AberturaRecusadaRecomecaASolicitacao) {
  arquivo.Cabecalho();
  arquivo.TR100("0000000001");
  arquivo.TR110();
  arquivo.TR100("0000000002");
  arquivo.TR110();
  arquivo.TR111().Campo(12, 10, "0000000001");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Esperado({{13, 4}, {12, 6}, {125, 5}}));
  EXPECT_EQ(validacao.sNro_Solicitacao, "0000000002");
}

}  // namespace
}  // namespace quorv::teste
