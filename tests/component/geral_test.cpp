// The shared field routines as a host calls them.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "quorvvalida/geral.hpp"
#include "quorvvalida/relogio.hpp"

namespace quorv {
namespace {

struct CasoLong {
  std::string texto;
  int32_t esperado;
};

TEST(ConverteLong, LeNumerosComSentinelaMenosUm) {
  const std::vector<CasoLong> casos = {
      {"", -1},           {" 12", 12},   {"12 ", 12},  {"  -7 ", -7},
      {"+8", 8},          {"0012", 12},  {"abc", -1},  {"12a", -1},
      {"1 2", -1},        {"   ", -1},   {"12.5", 12}, {"13.5", 14},
      {"12,5", 12},       {"2.51", 3},   {"-1", -1},   {"2147483647", 2147483647},
      {"2147483648", -1}, {"1e5", -1},   {".5", 0},    {"1.", 1},
      {"1.000.000", -1},  {"R$ 10", -1}, {"\t12", -1},
  };
  for (const CasoLong& caso : casos) {
    EXPECT_EQ(ConverteLong(caso.texto), caso.esperado) << '"' << caso.texto << '"';
  }
}

struct CasoDouble {
  std::string texto;
  double esperado;
};

TEST(ConverteDouble, AceitaVirgulaEPontoComoMarcaDecimal) {
  const std::vector<CasoDouble> casos = {
      {"1,5", 1.5}, {"1.5", 1.5}, {" -2,25 ", -2.25},       {"", -1},     {"1,5,0", -1},
      {"1e5", -1},  {"0", 0},     {"0000000012345", 12345}, {",75", 0.75}};
  for (const CasoDouble& caso : casos) {
    EXPECT_DOUBLE_EQ(ConverteDouble(caso.texto), caso.esperado) << '"' << caso.texto << '"';
  }
}

struct CasoData {
  std::string texto;
  double esperado;
};

TEST(ConverteData, LeOitoDigitosPelaMascara) {
  const std::vector<CasoData> casos = {
      {"20240101", 45292},
      {"19000101", 2},
      {"18991230", 0},
      {"20240229", 45351},
      {"20240230", -1},
      {"20230229", -1},
      {"20241301", -1},
      {"20240100", -1},
      {"00000000", 0},
      {"0", 0},
      {"", -1},
      {"        ", -1},
      {" 20240101", 45292},
      {"2024-01-01", -1},
      {"2024/01/01", -1},
      {"ABCDEFGH", -1},
      {"00991231", -1},
      {"01000101", -657434},
      {"99991231", 2958465},
      {"120240101", -1},
      {"-20240101", -1},
  };
  for (const CasoData& caso : casos) {
    EXPECT_DOUBLE_EQ(ConverteData(caso.texto), caso.esperado) << '"' << caso.texto << '"';
  }
}

TEST(SerialDaData, ContaDiasDesde1899) {
  EXPECT_DOUBLE_EQ(SerialDaData(1900, 1, 1), 2);
  EXPECT_DOUBLE_EQ(SerialDaData(2024, 1, 1), 45292);
  EXPECT_DOUBLE_EQ(SerialDaData(2000, 1, 1), 36526);
  EXPECT_DOUBLE_EQ(SerialDaData(2024, 2, 30), -1);
  EXPECT_DOUBLE_EQ(SerialDaData(99, 1, 1), -1);
}

TEST(ExisteNoVetor, ComparaTextosExatamenteENumerosPeloValor) {
  EXPECT_TRUE(ExisteNoVetor(std::string("2"), {"1", "2", "9"}));
  EXPECT_FALSE(ExisteNoVetor(std::string("2 "), {"1", "2", "9"}));
  EXPECT_TRUE(ExisteNoVetor(5.0, std::vector<int>{1, 5}));
  EXPECT_FALSE(ExisteNoVetor(5.5, std::vector<int>{1, 5}));
  EXPECT_FALSE(ExisteNoVetor(std::string("x"), std::vector<std::string>{}));
}

struct CasoDocumento {
  std::string texto;
  bool esperado;
};

TEST(ValidaCNPJ, AceitaPontuacaoEZerosAEsquerda) {
  const std::vector<CasoDocumento> casos = {
      {"11.222.333/0001-81", true},
      {"11222333000181", true},
      {"11222333000182", false},
      {"11222333000191", false},
      {"1222333000181", false},
      {"01222333000100", false},
      {"191", true},
      {"0", true},
      {"", false},
      {"   ", false},
      {" 11222333000181", true},
      {"11.222.333/0001-8", false},
      {"112223330001811", false},
      {"-11222333000181", true},
  };
  for (const CasoDocumento& caso : casos) {
    EXPECT_EQ(ValidaCNPJ(caso.texto), caso.esperado) << '"' << caso.texto << '"';
  }
}

TEST(ValidaCPF, RecusaPontuacaoEAceitaDigitosIguais) {
  const std::vector<CasoDocumento> casos = {
      {"111.444.777-35", false}, {"11144477735", true}, {"11144477736", false},
      {"00000000000", true},     {"11111111111", true}, {"22222222222", true},
      {"12345678900", false},    {"", false},           {"   ", false},
      {"1144477735", false},     {"191", true},         {"123456789012", false},
      {" 11144477735", false},
  };
  for (const CasoDocumento& caso : casos) {
    EXPECT_EQ(ValidaCPF(caso.texto), caso.esperado) << '"' << caso.texto << '"';
  }
}

TEST(ConfereDigitos, TextoVazioOuEmBrancoPassa) {
  EXPECT_TRUE(ConfereDigitosCNPJ(""));
  EXPECT_TRUE(ConfereDigitosCNPJ("    "));
  EXPECT_TRUE(ConfereDigitosCPF(""));
  EXPECT_TRUE(ConfereDigitosCPF("   "));
  EXPECT_FALSE(ValidaCNPJ(""));
  EXPECT_FALSE(ValidaCPF(""));
}

TEST(ConfereDigitos, CalculaOsDoisDigitosDeModulo11) {
  EXPECT_TRUE(ConfereDigitosCNPJ("11222333000181"));
  EXPECT_FALSE(ConfereDigitosCNPJ("11222333000180"));
  EXPECT_TRUE(ConfereDigitosCNPJ("00000000000000"));
  EXPECT_FALSE(ConfereDigitosCNPJ("11.222.333/0001-81"));
  EXPECT_TRUE(ConfereDigitosCPF("11144477735"));
  EXPECT_TRUE(ConfereDigitosCPF(" 11144477735 "));
  EXPECT_FALSE(ConfereDigitosCPF("11144477753"));
  EXPECT_FALSE(ConfereDigitosCPF("1114447773"));
  EXPECT_TRUE(ConfereDigitosCPF("33333333333"));
}

}  // namespace
}  // namespace quorv
