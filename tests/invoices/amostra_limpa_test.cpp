// A clean file of each header version, with a note, a settlement document and a tax assessment
// notice and their items, validates without a single warning.
#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

class AmostraLimpa : public TesteNotas, public ::testing::WithParamInterface<int> {
 protected:
  // Every state registration is accepted here, as a host without the external library may
  // decide.
  void SetUp() override {
    DefinirVerificadorInscricao(
        [](const std::string&, const std::string&) -> int16_t { return 0; });
  }
};

TEST_P(AmostraLimpa, StatusZeroSemArquivoDeAdvertencias) {
  if (GetParam() == 1) {
    arquivo.CabecalhoV1();
  } else {
    arquivo.CabecalhoV2();
  }
  arquivo.TR01();
  arquivo.TR10Valido();
  arquivo.Novo("15");
  arquivo.TR20Valido();
  arquivo.Novo("25");
  arquivo.TR40Valido();
  arquivo.TR98();
  arquivo.TR99();
  EXPECT_EQ(Valida(), 0);
  EXPECT_FALSE(diretorio.TemAdvertencias());
  EXPECT_EQ(numeroRemessa, "000001");
}

INSTANTIATE_TEST_SUITE_P(Notas, AmostraLimpa, ::testing::Values(1, 2),
                         [](const ::testing::TestParamInfo<int>& info) {
                           return "CabecalhoV" + std::to_string(info.param);
                         });

}  // namespace
}  // namespace quorv::teste
