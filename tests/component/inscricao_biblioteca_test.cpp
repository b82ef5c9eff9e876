// The state-registration library found by its fixed name through the loader's search path
// (the test's stand-in accepts a number whose last digit is the sum of the others modulo 10).
#include <string>

#include <gtest/gtest.h>

#include "quorvvalida/geral.hpp"

namespace quorv {
namespace {

TEST(ComBiblioteca, CarregadaPeloNomeFixo) {
  EXPECT_TRUE(VerificadorInscricaoDisponivel());
  EXPECT_TRUE(ValidaInscricaoEstadual("1231234567", "QZ"));
  EXPECT_FALSE(ValidaInscricaoEstadual("1231234568", "QZ"));
  EXPECT_FALSE(ValidaInscricaoEstadual("1231234567", "SC"));
  EXPECT_FALSE(ValidaInscricaoEstadual("123123456A", "QZ"));
}

TEST(ComBiblioteca, SubstitutoTemPrecedenciaEVazioDevolveABiblioteca) {
  DefinirVerificadorInscricao(
      [](const std::string&, const std::string&) { return static_cast<int16_t>(1); });
  EXPECT_FALSE(ValidaInscricaoEstadual("1231234567", "QZ"));
  DefinirVerificadorInscricao(nullptr);
  EXPECT_TRUE(ValidaInscricaoEstadual("1231234567", "QZ"));
}

TEST(ComBiblioteca, CarregadaPorCaminho) {
  EXPECT_TRUE(CarregarBibliotecaInscricao(QUORV_BIBLIOTECA_TESTE));
  EXPECT_TRUE(ValidaInscricaoEstadual("55", "QZ"));
  EXPECT_FALSE(ValidaInscricaoEstadual("56", "QZ"));
}

TEST(ComBiblioteca, ArquivoSemAFuncaoNaoCarrega) {
  // The test program itself is a file the loader may open but that lacks the check.
  EXPECT_FALSE(CarregarBibliotecaInscricao("/proc/self/exe"));
  EXPECT_TRUE(ValidaInscricaoEstadual("1231234567", "QZ"));
}

}  // namespace
}  // namespace quorv
