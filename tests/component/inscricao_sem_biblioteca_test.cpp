// Without the state-registration library on the loader's path, every number is refused and
// the host can tell.
#include <gtest/gtest.h>

#include "quorvvalida/geral.hpp"

namespace quorv {
namespace {

TEST(SemBiblioteca, TodaInscricaoERecusada) {
  EXPECT_FALSE(VerificadorInscricaoDisponivel());
  EXPECT_FALSE(ValidaInscricaoEstadual("1231234567", "QZ"));
}

TEST(SemBiblioteca, CaminhoInexistenteNaoCarrega) {
  EXPECT_FALSE(CarregarBibliotecaInscricao("/nao/existe/libDllInscE32.so"));
  EXPECT_FALSE(VerificadorInscricaoDisponivel());
}

TEST(SemBiblioteca, SubstitutoVazioVoltaAoPadrao) {
  DefinirVerificadorInscricao(
      [](const std::string&, const std::string&) { return static_cast<int16_t>(0); });
  EXPECT_TRUE(ValidaInscricaoEstadual("1", "QZ"));
  DefinirVerificadorInscricao(nullptr);
  EXPECT_FALSE(ValidaInscricaoEstadual("1", "QZ"));
}

}  // namespace
}  // namespace quorv
