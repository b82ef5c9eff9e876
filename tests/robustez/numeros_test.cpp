// Numbers of any length in a field: a text that only has decimals is read with a "0" before its
// mark, however many decimals it has.
#include <string>

#include <gtest/gtest.h>

#include "quorvvalida/geral.hpp"

namespace quorv {
namespace {

TEST(NumerosLongos, SoDecimaisDeQualquerTamanho) {
  for (const std::size_t decimais : {1u, 61u, 62u, 63u, 64u, 65u, 200u}) {
    const std::string meio = "5" + std::string(decimais - 1, '0');
    EXPECT_EQ(ConverteDouble("," + meio), 0.5) << decimais;
    EXPECT_EQ(ConverteDouble("-." + meio), -0.5) << decimais;
    EXPECT_EQ(ConverteLong(" ," + meio + " "), 0) << decimais;
  }
}

TEST(NumerosLongos, InteirosEDecimaisDeQualquerTamanho) {
  for (const std::size_t digitos : {30u, 31u, 32u, 33u, 100u}) {
    const std::string uns = "1" + std::string(digitos - 1, '0');
    EXPECT_EQ(ConverteDouble("0" + std::string(digitos, '0') + ",25"), 0.25) << digitos;
    EXPECT_EQ(ConverteDouble(uns + "," + std::string(digitos, '0')), std::stod(uns)) << digitos;
  }
}

}  // namespace
}  // namespace quorv
