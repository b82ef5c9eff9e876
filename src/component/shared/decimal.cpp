#include "component/shared/decimal.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <system_error>

namespace quorv::decimal {
namespace {

// A number's significant digits d1 d2 ... dn and the power of ten of d1.
struct Digitos {
  std::array<char, 24> d{};
  int n = 0;
  int expoente = 0;
};

// The value of the digits, read by the C library from "d1d2...dnE(expoente-n+1)": a text
// without a decimal mark, which no locale can read otherwise.
double Valor(const Digitos& digitos) {
  char texto[48];
  std::memcpy(texto, digitos.d.data(), static_cast<std::size_t>(digitos.n));
  std::snprintf(texto + digitos.n, sizeof texto - static_cast<std::size_t>(digitos.n), "e%d",
                digitos.expoente - digitos.n + 1);
  return std::strtod(texto, nullptr);
}

// The positive value rounded to `precisao` + 1 significant digits by the C library, which rounds
// exactly. The mark between the first digit and the others is the locale's; only digits are kept.
Digitos Arredonda(double positivo, int precisao) {
  char texto[48];
  std::snprintf(texto, sizeof texto, "%.*e", precisao, positivo);
  Digitos digitos;
  const char* p = texto;
  for (; *p != 'e'; ++p) {
    if (*p >= '0' && *p <= '9') digitos.d[static_cast<std::size_t>(digitos.n++)] = *p;
  }
  digitos.expoente = std::atoi(p + 1);
  return digitos;
}

// The next number of as many significant digits above the given one.
Digitos Seguinte(Digitos digitos) {
  int i = digitos.n - 1;
  while (i >= 0 && digitos.d[static_cast<std::size_t>(i)] == '9')
    digitos.d[static_cast<std::size_t>(i--)] = '0';
  if (i >= 0) {
    ++digitos.d[static_cast<std::size_t>(i)];
  } else {
    digitos.d[0] = '1';
    ++digitos.expoente;
  }
  return digitos;
}

// The fewest significant digits that read back as the positive value, the nearest such number
// when there are two. The nearest number of p digits is tried first; when it falls short of a
// value whose interval of reading is narrower below than above (a power of two), the next one
// above may still read back.
Digitos MaisCurtos(double positivo) {
  Digitos digitos;
  for (int precisao = 0; precisao < 17; ++precisao) {
    digitos = Arredonda(positivo, precisao);
    const double lido = Valor(digitos);
    if (lido == positivo) break;
    if (lido < positivo) {
      const Digitos acima = Seguinte(digitos);
      if (Valor(acima) == positivo) {
        digitos = acima;
        break;
      }
    }
  }
  while (digitos.n > 1 && digitos.d[static_cast<std::size_t>(digitos.n - 1)] == '0')
    --digitos.n;
  return digitos;
}

std::to_chars_result Copia(char* inicio, char* fim, const std::string& texto) {
  if (static_cast<std::size_t>(fim - inicio) < texto.size()) {
    return {fim, std::errc::value_too_large};
  }
  return {std::copy(texto.begin(), texto.end(), inicio), std::errc()};
}

}  // namespace

double LePelaBibliotecaC(std::string_view inteira, std::string_view fracao) {
  std::string texto;
  texto.reserve(inteira.size() + fracao.size() + 24);
  texto.append(inteira);
  texto.append(fracao);
  if (texto.empty()) texto = "0";
  texto += "e-" + std::to_string(fracao.size());
  // Beyond the range strtod answers infinity, or zero, as the standard reading's caller takes it.
  return std::strtod(texto.c_str(), nullptr);
}

std::to_chars_result EscrevePelaBibliotecaC(char* inicio, char* fim, double valor) {
  const bool negativo = std::signbit(valor);
  std::string texto = negativo ? "-" : "";
  const double positivo = std::fabs(valor);
  if (std::isnan(valor)) return Copia(inicio, fim, texto + "nan");
  if (std::isinf(valor)) return Copia(inicio, fim, texto + "inf");
  if (positivo == std::floor(positivo)) {
    // A whole number is written whole: its exact digits are as short as any text that reads
    // back, and the nearest.
    char inteiro[400];
    std::snprintf(inteiro, sizeof inteiro, "%.0f", positivo);
    return Copia(inicio, fim, texto + inteiro);
  }
  const Digitos digitos = MaisCurtos(positivo);
  const std::string d(digitos.d.data(), static_cast<std::size_t>(digitos.n));
  if (digitos.expoente < 0) {
    texto += "0." + std::string(static_cast<std::size_t>(-digitos.expoente - 1), '0') + d;
  } else if (digitos.expoente + 1 >= digitos.n) {
    texto += d + std::string(static_cast<std::size_t>(digitos.expoente + 1 - digitos.n), '0');
  } else {
    const auto inteiros = static_cast<std::size_t>(digitos.expoente) + 1;
    texto += d.substr(0, inteiros) + "." + d.substr(inteiros);
  }
  return Copia(inicio, fim, texto);
}

#if defined(__cpp_lib_to_chars)

double Le(std::string_view inteira, std::string_view fracao) {
  // "digits.digits" in the C form, which std::from_chars reads the same way under every locale;
  // a number without whole digits is read with a "0" before its mark.
  std::array<char, 64> curto{};
  std::string longo;
  const std::size_t tamanho = std::max<std::size_t>(inteira.size(), 1) + 1 + fracao.size();
  char* inicio = curto.data();
  if (tamanho > curto.size()) {
    longo.resize(tamanho);
    inicio = longo.data();
  }
  char* p = inicio;
  for (char c : inteira)
    *p++ = c;
  if (inteira.empty()) *p++ = '0';
  if (!fracao.empty()) {
    *p++ = '.';
    for (char c : fracao)
      *p++ = c;
  }
  double valor = 0;
  if (std::from_chars(inicio, p, valor).ec == std::errc::result_out_of_range) {
    // Too many digits for a double: huge when a whole digit is not zero, else next to nothing.
    const bool grande = inteira.find_first_not_of('0') != std::string_view::npos;
    valor = grande ? std::numeric_limits<double>::infinity() : 0.0;
  }
  return valor;
}

std::to_chars_result Escreve(char* inicio, char* fim, double valor) {
  return std::to_chars(inicio, fim, valor, std::chars_format::fixed);
}

#else

double Le(std::string_view inteira, std::string_view fracao) {
  return LePelaBibliotecaC(inteira, fracao);
}

std::to_chars_result Escreve(char* inicio, char* fim, double valor) {
  return EscrevePelaBibliotecaC(inicio, fim, valor);
}

#endif

}  // namespace quorv::decimal
