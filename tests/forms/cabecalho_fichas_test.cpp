// The form file's header: its field checks, and a refused header stopping the run.
#include <ostream>
#include <vector>

#include "teste_fichas.hpp"

namespace quorv::teste {
namespace {

struct CasoCabecalho {
  const char* nome;
  int coluna;
  int largura;
  const char* valor;
  std::vector<int> codigos;  // empty: accepted
};

// Failure messages name the case.
void PrintTo(const CasoCabecalho& caso, std::ostream* saida) {
  *saida << caso.nome;
}

class CabecalhoFichas : public TesteFichas, public ::testing::WithParamInterface<CasoCabecalho> {};

TEST_P(CabecalhoFichas, CampoDoCabecalho) {
  const CasoCabecalho& caso = GetParam();
  arquivo.Cabecalho().Campo(caso.coluna, caso.largura, caso.valor);
  arquivo.SolicitacaoCompleta("0000000001");
  arquivo.Trailer();
  std::vector<Esperada> esperadas;
  for (int codigo : caso.codigos)
    esperadas.push_back({codigo, 1});
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Esperado(esperadas));
}

INSTANTIATE_TEST_SUITE_P(
    ExecucaoFichas, CabecalhoFichas,
    ::testing::Values(CasoCabecalho{"Municipio1", 33, 3, "001", {}},
                      CasoCabecalho{"Municipio500", 33, 3, "500", {}},
                      CasoCabecalho{"MunicipioComBrancos", 33, 3, " 7 ", {}},
                      CasoCabecalho{"Municipio0", 33, 3, "000", {56}},
                      CasoCabecalho{"Municipio501", 33, 3, "501", {56}},
                      CasoCabecalho{"MunicipioNegativo", 33, 3, "-12", {56}},
                      CasoCabecalho{"MunicipioComLetra", 33, 3, "12A", {56}},
                      CasoCabecalho{"MunicipioEmBranco", 33, 3, "", {56}},
                      CasoCabecalho{"NomeEmBranco", 36, 25, "", {57}},
                      CasoCabecalho{"DataInexistente", 67, 8, "20240230", {58}},
                      CasoCabecalho{"DataZerada", 67, 8, "00000000", {58}},
                      CasoCabecalho{"DataEmBranco", 67, 8, "", {58}},
                      CasoCabecalho{"DataComLetra", 67, 8, "2024O115", {58}},
                      CasoCabecalho{"RemessaZero", 61, 6, "000000", {64}},
                      CasoCabecalho{"RemessaNegativa", 61, 6, "-00001", {64}},
                      CasoCabecalho{"RemessaComLetra", 61, 6, "00001A", {64}},
                      CasoCabecalho{"RemessaEmBranco", 61, 6, "", {64}},
                      CasoCabecalho{
                          "VersaoEIndicadoresNaoExaminados", 75, 21, "QUALQUER COISA", {}}),
    [](const ::testing::TestParamInfo<CasoCabecalho>& info) { return info.param.nome; });

TEST_F(TesteFichas, CabecalhoTodoErradoParaComAsQuatroAdvertencias) {
  arquivo.Cabecalho()
      .Campo(33, 3, "ABC")
      .Campo(36, 25, "")
      .Campo(61, 6, "")
      .Campo(67, 8, "99999999");
  arquivo.SolicitacaoCompleta("0000000001");
  arquivo.Novo("008");
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Esperado({{56, 1}, {57, 1}, {58, 1}, {64, 1}}));
}

TEST_F(TesteFichas, CabecalhoNaoEVerificadoParaOSistemaWeb) {
  arquivo.Cabecalho().Campo(33, 3, "ABC").Campo(36, 25, "").Campo(61, 6, "").Campo(67, 8, "");
  arquivo.SolicitacaoCompleta("0000000001");
  arquivo.Trailer();
  EXPECT_EQ(Valida("", "TARNWEB"), 8);
  EXPECT_FALSE(diretorio.TemAdvertencias());
  EXPECT_EQ(numeroRemessa, "      ");
}

}  // namespace
}  // namespace quorv::teste
