// The end of a block: a TR 10, TR 20 or TR 30 closed by the next block or by the group's end
// without an item record of its own.
#include <cstdio>
#include <string>
#include <vector>

#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

struct CasoBloco {
  const char* nome;
  std::vector<std::string> tipos;                 // records after the header, before the trailer
  std::vector<std::pair<int, int>> advertencias;  // code and 1-based line
};

class FechamentoDeBloco : public TesteNotas, public ::testing::WithParamInterface<CasoBloco> {};

TEST_P(FechamentoDeBloco, AdvertenciaNoRegistroQueFechaOBloco) {
  const CasoBloco& caso = GetParam();
  arquivo.CabecalhoV1();
  for (const std::string& tipo : caso.tipos) {
    if (tipo == "01") {
      arquivo.TR01();
    } else if (tipo == "98") {
      arquivo.TR98();
    } else if (tipo == "10") {
      arquivo.TR10Valido();
    } else if (tipo == "20") {
      arquivo.TR20Valido();
    } else if (tipo == "40") {
      arquivo.TR40Valido();
    } else {
      arquivo.Novo(tipo);
    }
  }
  arquivo.TR99();
  EXPECT_EQ(Valida(), caso.advertencias.empty() ? 0 : 1);
  Advertencias esperado;
  for (const auto& [codigo, linha] : caso.advertencias) {
    char numero[16];
    std::snprintf(numero, sizeof numero, "%08d", linha);
    esperado.Linha(codigo, arquivo.Linha(static_cast<std::size_t>(linha - 1)).Texto(), numero);
  }
  EXPECT_EQ(Gravadas(), esperado.Texto());
}

INSTANTIATE_TEST_SUITE_P(
    Notas, FechamentoDeBloco,
    ::testing::Values(
        CasoBloco{
            "BlocosComItens", {"01", "10", "15", "15", "20", "25", "30", "35", "40", "98"}, {}},
        CasoBloco{"NotaSemItemAntesDoFechamento", {"01", "10", "98"}, {{142, 4}}},
        CasoBloco{"NotaSemItemAntesDeOutraNota", {"01", "10", "10", "15", "98"}, {{142, 4}}},
        CasoBloco{"NotaSemItemAntesDaLiquidacao", {"01", "10", "20", "25", "98"}, {{142, 4}}},
        CasoBloco{"NotaSemItemAntesDoTR30", {"01", "10", "30", "35", "98"}, {{142, 4}}},
        CasoBloco{"NotaSemItemAntesDoAuto", {"01", "10", "40", "98"}, {{142, 4}}},
        CasoBloco{"LiquidacaoSemItemAntesDoFechamento", {"01", "10", "15", "20", "98"}, {{149, 6}}},
        // Two TR 20 in a row: the first is told for its missing items, nothing for the pair.
        CasoBloco{"LiquidacaoSemItemAntesDeOutraLiquidacao",
                  {"01", "10", "15", "20", "20", "25", "98"},
                  {{149, 6}}},
        CasoBloco{"TR30SemItemAntesDoFechamento", {"01", "10", "15", "30", "98"}, {{151, 6}}},
        CasoBloco{"TR30SemItemAntesDoAuto", {"01", "10", "15", "30", "40", "98"}, {{151, 6}}},
        CasoBloco{
            "TR30SemItemAntesDeOutroTR30", {"01", "10", "15", "30", "30", "35", "98"}, {{151, 6}}},
        CasoBloco{
            "TresBlocosSemItens", {"01", "10", "20", "30", "98"}, {{142, 4}, {149, 5}, {151, 6}}},
        // The notice opens no block: no item is expected of it.
        CasoBloco{"AutosSemItens", {"01", "10", "15", "40", "40", "98"}, {}},
        // An item after its block has ended does not count for the next block.
        CasoBloco{"ItemForaDoBlocoNaoContaParaONovo",
                  {"01", "10", "15", "20", "25", "15", "10", "98"},
                  {{153, 7}, {142, 9}}},
        // A group left open ends its blocks without a closing.
        CasoBloco{
            "GrupoNaoFechadoNaoFechaOsBlocos", {"01", "10", "01", "10", "15", "98"}, {{148, 4}}}),
    [](const ::testing::TestParamInfo<CasoBloco>& info) { return info.param.nome; });

using OrdemNoFechamento = TesteNotas;

// The record that closes a block is told the closing's warning before its own.
TEST_F(OrdemNoFechamento, FechamentoAntesDaVerificacaoDoRegistro) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido();
  const Registro& liquidacao = arquivo.TR20Valido().Campo(11, 1, "5");
  arquivo.Novo("25");
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 1);
  EXPECT_EQ(Gravadas(), Na(liquidacao, {142, 132}));
}

}  // namespace
}  // namespace quorv::teste
