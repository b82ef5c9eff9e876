// The field routines and the warnings file read and write numbers the same way under a
// Brazilian locale, whose decimal mark is the comma, as under the C locale.
#include <clocale>
#include <string>

#include <gtest/gtest.h>

#include "advertencias.hpp"
#include "arquivo_notas.hpp"
#include "arquivos.hpp"
#include "quorvvalida/geral.hpp"
#include "quorvvalida/validacao.hpp"

namespace quorv {
namespace {

class LocalidadeBrasileira : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(std::setlocale(LC_ALL, "pt_BR.UTF-8"), nullptr)
        << "the test's pt_BR.UTF-8 locale was not generated (LOCPATH)";
  }
  void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

TEST_F(LocalidadeBrasileira, NumerosLidosComoNaLocalidadeC) {
  EXPECT_DOUBLE_EQ(ConverteDouble("1,5"), 1.5);
  EXPECT_DOUBLE_EQ(ConverteDouble("1.5"), 1.5);
  EXPECT_DOUBLE_EQ(ConverteDouble("1.000"), 1);
  EXPECT_EQ(ConverteLong("2,5"), 2);
  EXPECT_DOUBLE_EQ(ConverteData("20240101"), 45292);
}

TEST_F(LocalidadeBrasileira, ChavesEscritasComoNaLocalidadeC) {
  teste::DiretorioTemporario diretorio;
  teste::ArquivoNotas arquivo;
  arquivo.CabecalhoV1();
  const teste::Registro& abertura = arquivo.TR01();
  Validacao validacao;
  std::string numero;
  EXPECT_EQ(validacao.Valida_Dados(arquivo.Grava(diretorio), numero, diretorio.Texto(), 1234.5, 7),
            8);
  EXPECT_EQ(
      teste::LeBytes(diretorio.Advertencias()),
      teste::Advertencias("#", "1234,5", "7").Linha(88, abertura.Texto(), "00000002").Texto());
}

}  // namespace
}  // namespace quorv
