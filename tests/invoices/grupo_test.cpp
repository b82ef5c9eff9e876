// The group closing (TR 98): the declared counts against the records of the group.
#include <vector>

#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

struct CasoFechamento {
  const char* nome;
  int notas;                                           // TR 10 records in the group
  int itens;                                           // TR 15 records after each TR 10
  std::vector<std::pair<int, const char*>> contagens;  // column and declared count
  std::vector<int> codigos;                            // warnings at the TR 98 line, in order
};

class FechamentoDeGrupo : public TesteNotas,
                          public ::testing::WithParamInterface<CasoFechamento> {};

TEST_P(FechamentoDeGrupo, ContagensDoGrupo) {
  const CasoFechamento& caso = GetParam();
  arquivo.CabecalhoV1();
  arquivo.TR01();
  for (int i = 0; i < caso.notas; ++i) {
    arquivo.TR10Valido();
    for (int j = 0; j < caso.itens; ++j)
      arquivo.Novo("15");
  }
  Registro& fechamento = arquivo.TR98();
  for (const auto& [coluna, valor] : caso.contagens)
    fechamento.Campo(coluna, 6, valor);
  arquivo.TR99();
  const int16_t status = Valida();
  EXPECT_EQ(status, caso.codigos.empty() ? 0 : 1);
  Advertencias esperado;
  char numero[16];
  std::snprintf(numero, sizeof numero, "%08d", 3 + caso.notas * (1 + caso.itens));
  for (int codigo : caso.codigos)
    esperado.Linha(codigo, fechamento.Texto(), numero);
  EXPECT_EQ(Gravadas(), esperado.Texto());
}

// A note without items is told 142 when the TR 98 closes its block, before the counts.
INSTANTIATE_TEST_SUITE_P(
    Notas, FechamentoDeGrupo,
    ::testing::Values(CasoFechamento{"DuasNotasDeclaradas2", 2, 1, {{11, "000002"}}, {}},
                      CasoFechamento{"DuasNotasDeclaradas3", 2, 1, {{11, "000003"}}, {160}},
                      CasoFechamento{"DuasNotasDeclaradasComBranco", 2, 1, {{11, "     2"}}, {160}},
                      CasoFechamento{"NotasEmBranco", 2, 1, {{11, ""}}, {160}},
                      CasoFechamento{"NotasComLetra", 2, 1, {{11, "00000A"}}, {160}},
                      CasoFechamento{"ZeroNotasDeclaradas", 1, 1, {{11, "000000"}}, {160}},
                      CasoFechamento{"GrupoSemNotaDeclaraZero", 0, 0, {{11, "000000"}}, {141, 160}},
                      CasoFechamento{"ZeroItensSemItens", 1, 0, {{17, "000000"}}, {142}},
                      CasoFechamento{"ItensDeclaradosAMais", 1, 2, {{17, "000003"}}, {161}},
                      CasoFechamento{"ItensNegativos", 1, 1, {{17, "-00001"}}, {161}},
                      CasoFechamento{"TR20Diferente", 1, 1, {{23, "000001"}}, {162}},
                      CasoFechamento{"TR25EmBranco", 1, 1, {{29, ""}}, {163}},
                      CasoFechamento{"TR30Curto", 1, 1, {{35, "1"}}, {164}},
                      CasoFechamento{"TR35Diferente", 1, 1, {{41, "000009"}}, {165}},
                      CasoFechamento{"TodasErradas",
                                     1,
                                     1,
                                     {{11, "000000"},
                                      {17, ""},
                                      {23, "0000X0"},
                                      {29, "000001"},
                                      {35, "   000"},
                                      {41, "-00001"}},
                                     {160, 161, 162, 163, 164, 165}}),
    [](const ::testing::TestParamInfo<CasoFechamento>& info) { return info.param.nome; });

}  // namespace
}  // namespace quorv::teste
