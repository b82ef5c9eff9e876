// Fixed-width fields, numbers and masks.
#include "component/shared/texto.hpp"

#include <charconv>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "component/shared/cp1252.hpp"

namespace quorv::texto {
namespace {

TEST(Texto, CampoPorColunaELargura) {
  EXPECT_EQ(Campo("0000001200", {9, 2}), "00");
  EXPECT_EQ(Campo("abc", {2, 5}), "bc");
  EXPECT_EQ(Campo("abc", {4, 1}), "");
  EXPECT_EQ(Campo("", {1, 8}), "");
}

TEST(Texto, ValorInicialLeONumeroDoComeco) {
  EXPECT_DOUBLE_EQ(ValorInicial("  12abc"), 12);
  EXPECT_DOUBLE_EQ(ValorInicial("1.0       "), 1);
  EXPECT_DOUBLE_EQ(ValorInicial("2.5x"), 2.5);
  EXPECT_DOUBLE_EQ(ValorInicial("-3"), -3);
  EXPECT_DOUBLE_EQ(ValorInicial("abc"), 0);
  EXPECT_DOUBLE_EQ(ValorInicial(""), 0);
  EXPECT_DOUBLE_EQ(ValorInicial("1,5"), 1);
  EXPECT_DOUBLE_EQ(ValorInicial("+7 8"), 7);
  EXPECT_DOUBLE_EQ(ValorInicial("-.5"), -0.5);
  EXPECT_DOUBLE_EQ(ValorInicial("-x"), 0);
  // The leading number rounds as its whole decimal text does.
  EXPECT_EQ(ValorInicial("0.3"), 0.3);
  EXPECT_EQ(ValorInicial("12345678901234567890"), 12345678901234567890.0);
}

// Short numbers are read by whole-number arithmetic, longer ones by a full decimal reading; both
// give the same double, the correctly rounded value of the text.
TEST(Texto, NumeroCurtoELongoLidosComoODecimalExato) {
  std::mt19937_64 gerador(20261123);
  for (int i = 0; i < 20000; ++i) {
    const int inteiros = static_cast<int>(gerador() % 19);
    const int fracionarios = static_cast<int>(gerador() % 8);
    std::string texto;
    for (int d = 0; d < inteiros; ++d)
      texto += static_cast<char>('0' + gerador() % 10);
    if (fracionarios > 0 || inteiros == 0) texto += '.';
    for (int d = 0; d < fracionarios || (inteiros == 0 && d == 0); ++d)
      texto += static_cast<char>('0' + gerador() % 10);
    double esperado = 0;
    const std::string legivel = texto[0] == '.' ? "0" + texto : texto;
    std::from_chars(legivel.data(), legivel.data() + legivel.size(), esperado);
    const auto lido = Numero(texto);
    ASSERT_TRUE(lido.has_value()) << texto;
    EXPECT_EQ(*lido, esperado) << texto;
    EXPECT_EQ(*Numero("-" + texto), -esperado) << texto;
  }
  EXPECT_EQ(*Numero("0.1"), 0.1);
  EXPECT_EQ(*Numero("123456789012345"), 123456789012345.0);
  EXPECT_EQ(*Numero("1234567890123456789"), 1234567890123456789.0);
  EXPECT_EQ(*Numero(" 0000000010000 "), 10000.0);
}

struct CasoMascara {
  std::string texto;
  int largura;
  std::string esperado;
};

TEST(Texto, MascaraDeZeros) {
  const std::vector<CasoMascara> casos = {
      {"12", 8, "00000012"},
      {" 12 ", 8, "00000012"},
      {"ABCDEFGH", 8, "ABCDEFGH"},
      {"        ", 8, "        "},
      {"", 8, ""},
      {"123456789", 8, "123456789"},
      {"-5", 8, "-00000005"},
      {"2.5", 8, "00000003"},
      {"2,4", 8, "00000002"},
      {"9.5", 1, "10"},
      {"-0.4", 3, "000"},
      {"0001A", 8, "0001A"},
  };
  for (const CasoMascara& caso : casos) {
    EXPECT_EQ(MascaraZeros(caso.texto, caso.largura), caso.esperado) << '"' << caso.texto << '"';
  }
  EXPECT_EQ(MascaraZeros(42.0, 8), "00000042");
  EXPECT_EQ(MascaraZeros(2.5, 8), "00000003");
}

TEST(Texto, TextoDoNumeroMaisCurtoComVirgula) {
  EXPECT_EQ(TextoDoNumero(0), "0");
  EXPECT_EQ(TextoDoNumero(-0.0), "0");
  EXPECT_EQ(TextoDoNumero(123), "123");
  EXPECT_EQ(TextoDoNumero(0.5), "0,5");
  EXPECT_EQ(TextoDoNumero(1e6), "1000000");
  EXPECT_EQ(TextoDoNumero(-2.25), "-2,25");
}

TEST(Texto, EmBrancoEIgualSemCaixa) {
  EXPECT_TRUE(EmBranco(""));
  EXPECT_TRUE(EmBranco("   "));
  EXPECT_FALSE(EmBranco(" a "));
  EXPECT_TRUE(IgualSemCaixa(" isento ", "ISENTO"));
  EXPECT_FALSE(IgualSemCaixa("isent", "ISENTO"));
}

TEST(Cp1252, IdaEVolta) {
  const std::string bytes = "A\xE1\xE7\xE3o \x80\x96\x81";
  const std::string utf8 = cp1252::ParaUtf8(bytes);
  EXPECT_EQ(utf8, "Aáção €–\xC2\x81");
  EXPECT_EQ(cp1252::DeUtf8(utf8), bytes);
  EXPECT_EQ(cp1252::DeUtf8("日本"), "??");
  EXPECT_EQ(cp1252::DeUtf8("\xC3"), "?");
  EXPECT_EQ(cp1252::Caracteres("ação"), 4u);
}

}  // namespace
}  // namespace quorv::texto
