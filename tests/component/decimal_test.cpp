// Decimal texts of doubles: the C library's way, which builds without floating-point
// std::from_chars and std::to_chars, gives exactly what the standard library gives.
#include "component/shared/decimal.hpp"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quorv::decimal {
namespace {

std::string PeloPadrao(double valor) {
  char texto[1200];
  const auto fim = std::to_chars(texto, texto + sizeof texto, valor, std::chars_format::fixed);
  EXPECT_EQ(fim.ec, std::errc());
  return std::string(texto, fim.ptr);
}

std::string PelaBibliotecaC(double valor) {
  char texto[1200];
  const auto fim = EscrevePelaBibliotecaC(texto, texto + sizeof texto, valor);
  EXPECT_EQ(fim.ec, std::errc());
  return std::string(texto, fim.ptr);
}

double DosBits(std::uint64_t bits) {
  double valor = 0;
  std::memcpy(&valor, &bits, sizeof valor);
  return valor;
}

TEST(Decimal, EscreveComoOPadraoEmCasosConhecidos) {
  EXPECT_EQ(PelaBibliotecaC(12.5), "12.5");
  EXPECT_EQ(PelaBibliotecaC(0.1), "0.1");
  EXPECT_EQ(PelaBibliotecaC(-0.001), "-0.001");
  EXPECT_EQ(PelaBibliotecaC(123456789.0), "123456789");
  EXPECT_EQ(PelaBibliotecaC(1e23), "99999999999999991611392");
  EXPECT_EQ(PelaBibliotecaC(1.0 / 3), "0.3333333333333333");
  EXPECT_EQ(PelaBibliotecaC(std::numeric_limits<double>::infinity()), "inf");
  const std::vector<double> valores = {0.0,
                                       -0.0,
                                       1.0,
                                       0.5,
                                       2.675,
                                       9.999999999999998,
                                       5e-324,
                                       2.2250738585072014e-308,
                                       std::numeric_limits<double>::max(),
                                       -std::numeric_limits<double>::infinity(),
                                       1e15 + 0.5,
                                       4503599627370495.5,
                                       9007199254740993.0,
                                       123.456e-300};
  for (double valor : valores) {
    EXPECT_EQ(PelaBibliotecaC(valor), PeloPadrao(valor)) << valor;
  }
}

// A power of two reads back from a narrower interval below than above: the nearest shortest
// number below may fall out of it while the one above stays in.
TEST(Decimal, EscreveComoOPadraoNasPotenciasDeDois) {
  for (int expoente = -1074; expoente <= 1023; ++expoente) {
    const double valor = std::ldexp(1.0, expoente);
    ASSERT_EQ(PelaBibliotecaC(valor), PeloPadrao(valor)) << expoente;
    const double vizinho = std::nextafter(valor, 0.0);
    ASSERT_EQ(PelaBibliotecaC(vizinho), PeloPadrao(vizinho)) << expoente;
  }
}

TEST(Decimal, EscreveComoOPadraoEmValoresAoAcaso) {
  std::mt19937_64 gerador(20240630);
  for (int i = 0; i < 50000; ++i) {
    double valor = DosBits(gerador());
    if (std::isnan(valor)) continue;
    ASSERT_EQ(PelaBibliotecaC(valor), PeloPadrao(valor)) << i;
  }
  // Amounts and keys as records and hosts give them: few digits, two decimal places or so.
  std::uniform_int_distribution<std::int64_t> inteiro(-99999999999999, 99999999999999);
  std::uniform_int_distribution<int> casas(0, 6);
  for (int i = 0; i < 50000; ++i) {
    const double valor = static_cast<double>(inteiro(gerador)) / std::pow(10.0, casas(gerador));
    ASSERT_EQ(PelaBibliotecaC(valor), PeloPadrao(valor)) << i;
  }
}

TEST(Decimal, FaltaDeEspacoDizQueNaoCabe) {
  char texto[3];
  EXPECT_EQ(EscrevePelaBibliotecaC(texto, texto + sizeof texto, 12.5).ec,
            std::errc::value_too_large);
}

TEST(Decimal, LeComoOPadrao) {
  EXPECT_EQ(LePelaBibliotecaC("1234567890123456", "7"), 1234567890123456.7);
  EXPECT_EQ(LePelaBibliotecaC("", "0000000000000000001"), 1e-19);
  EXPECT_EQ(LePelaBibliotecaC("12", ""), 12.0);
  EXPECT_EQ(LePelaBibliotecaC("", ""), 0.0);
  const std::string muitos(400, '9');
  EXPECT_EQ(LePelaBibliotecaC(muitos, ""), std::numeric_limits<double>::infinity());
  EXPECT_EQ(Le(muitos, ""), std::numeric_limits<double>::infinity());
  const std::string zeros(400, '0');
  EXPECT_EQ(LePelaBibliotecaC("0", zeros + "1"), 0.0);
  EXPECT_EQ(Le("0", zeros + "1"), 0.0);
  // Just above the smallest double: subnormal, read the same way.
  const std::string subnormal = std::string(320, '0') + "4940656458412465441765687928682213";
  EXPECT_EQ(LePelaBibliotecaC("", subnormal), Le("", subnormal));
  EXPECT_GT(Le("", subnormal), 0.0);

  std::mt19937_64 gerador(45473);
  std::uniform_int_distribution<int> digito('0', '9');
  std::uniform_int_distribution<int> tamanho(0, 40);
  for (int i = 0; i < 50000; ++i) {
    std::string inteira(static_cast<std::size_t>(tamanho(gerador)), '0');
    std::string fracao(static_cast<std::size_t>(tamanho(gerador)), '0');
    for (char& c : inteira)
      c = static_cast<char>(digito(gerador));
    for (char& c : fracao)
      c = static_cast<char>(digito(gerador));
    ASSERT_EQ(LePelaBibliotecaC(inteira, fracao), Le(inteira, fracao)) << inteira << "." << fracao;
  }
}

}  // namespace
}  // namespace quorv::decimal
