#include "component/shared/documentos.hpp"

#include <string>

#include "component/shared/texto.hpp"

namespace quorv::documentos {
namespace {

// The digits of the text laid into a mask of zeros, trimmed, in order; all other characters
// dropped.
std::string DigitosDaMascara(std::string_view texto, int largura) {
  // A number of digits alone, blanks around it, comes out of the mask with zeros before it.
  const std::string_view aparado = texto::Apara(texto);
  const auto casas = static_cast<std::size_t>(largura);
  if (texto::SoDigitos(aparado) && aparado.size() <= casas) {
    std::string digitos(casas - aparado.size(), '0');
    digitos += aparado;
    return digitos;
  }
  const std::string mascarado = texto::MascaraZeros(texto, largura);
  std::string digitos;
  for (char c : texto::Apara(mascarado)) {
    if (c >= '0' && c <= '9') digitos += c;
  }
  return digitos;
}

// The first `quantos` characters of the masked text as digits; false when one is not a digit.
bool LeDigitos(std::string_view mascarado, int quantos, int* digitos) {
  if (mascarado.size() < static_cast<std::size_t>(quantos)) return false;
  for (int i = 0; i < quantos; ++i) {
    const char c = mascarado[static_cast<std::size_t>(i)];
    if (c < '0' || c > '9') return false;
    digitos[i] = c - '0';
  }
  return true;
}

// Modulus-11 check digit of a weighted sum: 0 for a remainder below 2, else 11 minus it.
int DigitoVerificador(int soma) {
  const int resto = soma % 11;
  return resto < 2 ? 0 : 11 - resto;
}

}  // namespace

bool ValidaCNPJ(std::string_view texto) {
  const std::string digitos = DigitosDaMascara(texto, 14);
  return digitos.size() == 14 && ConfereDigitosCNPJ(digitos);
}

bool ValidaCPF(std::string_view texto) {
  // A CPF written with punctuation is refused although a punctuated CNPJ is accepted: the two
  // routines have always differed here and callers rely on it.
  if (texto.size() > 11) return false;
  const std::string digitos = DigitosDaMascara(texto, 11);
  return digitos.size() == 11 && ConfereDigitosCPF(digitos);
}

bool ConfereDigitosCNPJ(std::string_view texto) {
  if (texto::EmBranco(texto)) return true;
  int d[14];
  if (!LeDigitos(texto::MascaraZeros(texto, 14), 14, d)) return false;
  static constexpr int kPesos1[12] = {5, 4, 3, 2, 9, 8, 7, 6, 5, 4, 3, 2};
  static constexpr int kPesos2[13] = {6, 5, 4, 3, 2, 9, 8, 7, 6, 5, 4, 3, 2};
  int soma = 0;
  for (int i = 0; i < 12; ++i)
    soma += kPesos1[i] * d[i];
  const int c1 = DigitoVerificador(soma);
  soma = kPesos2[12] * c1;
  for (int i = 0; i < 12; ++i)
    soma += kPesos2[i] * d[i];
  const int c2 = DigitoVerificador(soma);
  return d[12] == c1 && d[13] == c2;
}

bool ConfereDigitosCPF(std::string_view texto) {
  const std::string_view aparado = texto::Apara(texto);
  if (aparado.empty()) return true;
  if (aparado.size() != 11) return false;
  int d[11];
  if (!LeDigitos(texto::MascaraZeros(aparado, 11), 11, d)) return false;
  // Eleven equal digits are not refused: numbers such as eleven zeros pass the arithmetic and
  // have always been accepted.
  int soma1 = 0;
  int soma2 = 0;
  for (int i = 0; i < 9; ++i) {
    soma1 += d[i] * (10 - i);
    soma2 += d[i] * (11 - i);
  }
  const int c1 = DigitoVerificador(soma1);
  const int c2 = DigitoVerificador(soma2 + 2 * c1);
  return d[9] == c1 && d[10] == c2;
}

}  // namespace quorv::documentos
