// The state-registration check answered by a host's own function.
#include <string>

#include <gtest/gtest.h>

#include "quorvvalida/geral.hpp"

namespace quorv {
namespace {

class InscricaoSubstituida : public ::testing::Test {
 protected:
  void TearDown() override { DefinirVerificadorInscricao(nullptr); }
};

TEST_F(InscricaoSubstituida, ZeroAceitaQualquerOutroValorRecusa) {
  std::string recebidaInscricao;
  std::string recebidaUf;
  DefinirVerificadorInscricao([&](const std::string& inscricao, const std::string& uf) {
    recebidaInscricao = inscricao;
    recebidaUf = uf;
    return static_cast<int16_t>(inscricao == "1231234567" ? 0 : 7);
  });
  EXPECT_TRUE(VerificadorInscricaoDisponivel());
  EXPECT_TRUE(ValidaInscricaoEstadual("1231234567", "QZ"));
  EXPECT_EQ(recebidaInscricao, "1231234567");
  EXPECT_EQ(recebidaUf, "QZ");
  EXPECT_FALSE(ValidaInscricaoEstadual("9999999999", "QZ"));
}

TEST_F(InscricaoSubstituida, FuncaoQueFalhaRecusaSemDerrubar) {
  DefinirVerificadorInscricao([](const std::string&, const std::string&) -> int16_t {
    throw std::runtime_error("falha do verificador");
  });
  EXPECT_FALSE(ValidaInscricaoEstadual("1231234567", "QZ"));
}

TEST_F(InscricaoSubstituida, TextosChegamEmUtf8) {
  std::string recebida;
  DefinirVerificadorInscricao([&](const std::string& inscricao, const std::string&) {
    recebida = inscricao;
    return static_cast<int16_t>(0);
  });
  EXPECT_TRUE(ValidaInscricaoEstadual("ISENÇÃO", "QZ"));
  EXPECT_EQ(recebida, "ISENÇÃO");
}

}  // namespace
}  // namespace quorv
