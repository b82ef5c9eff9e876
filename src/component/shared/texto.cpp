#include "component/shared/texto.hpp"

#include <array>
#include <cmath>
#include <limits>

#include "component/shared/decimal.hpp"

namespace quorv::texto {
namespace {

bool EhDigito(char c) {
  return c >= '0' && c <= '9';
}

bool EhMarcaDecimal(char c) {
  return c == ',' || c == '.';
}

// The parts of a numeric text: sign, digits before and after the decimal mark, and the digits
// read as one whole number while they are few enough to be exact.
struct PartesNumero {
  bool negativo = false;
  std::string_view inteira;
  std::string_view fracao;
  // The digits of both parts as a whole number, and the power of ten of the fraction; meaningful
  // only for a number of at most kDigitosExatos digits.
  std::uint64_t digitos = 0;
  std::uint64_t escala = 1;
};

// Up to 15 digits make a whole number below 2^53, and a power of ten up to 10^15 is exact.
constexpr std::size_t kDigitosExatos = 15;

// Reads digits from position i on into the whole number; answers where they end.
std::size_t LeDigitos(std::string_view t, std::size_t i, PartesNumero& partes, bool fracao) {
  for (; i < t.size() && EhDigito(t[i]); ++i) {
    partes.digitos = partes.digitos * 10 + static_cast<std::uint64_t>(t[i] - '0');
    if (fracao) partes.escala *= 10;
  }
  return i;
}

// Splits a numeric text into its parts; empty when the text is not numeric.
std::optional<PartesNumero> Decompoe(std::string_view texto) {
  const std::string_view t = Apara(texto);
  PartesNumero partes;
  std::size_t i = 0;
  if (i < t.size() && (t[i] == '+' || t[i] == '-')) {
    partes.negativo = t[i] == '-';
    ++i;
  }
  const std::size_t inicioInteira = i;
  i = LeDigitos(t, i, partes, false);
  partes.inteira = t.substr(inicioInteira, i - inicioInteira);
  if (i < t.size() && EhMarcaDecimal(t[i])) {
    ++i;
    const std::size_t inicioFracao = i;
    i = LeDigitos(t, i, partes, true);
    partes.fracao = t.substr(inicioFracao, i - inicioFracao);
  }
  if (i != t.size() || (partes.inteira.empty() && partes.fracao.empty())) return std::nullopt;
  return partes;
}

// The value of a number of at most 15 digits, read exactly: the one division of two exact
// numbers rounds as a full decimal reading would. Empty for a longer number.
std::optional<double> NumeroCurto(const PartesNumero& partes) {
  if (partes.inteira.size() + partes.fracao.size() > kDigitosExatos) return std::nullopt;
  return static_cast<double>(partes.digitos) / static_cast<double>(partes.escala);
}

}  // namespace

bool IgualSemCaixa(std::string_view texto, std::string_view palavra) {
  const std::string_view t = Apara(texto);
  if (t.size() != palavra.size()) return false;
  for (std::size_t i = 0; i < t.size(); ++i) {
    char c = t[i];
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    if (c != palavra[i]) return false;
  }
  return true;
}

std::optional<double> NumeroEscrito(std::string_view texto) {
  const auto partes = Decompoe(texto);
  if (!partes) return std::nullopt;
  if (const auto exato = NumeroCurto(*partes)) return partes->negativo ? -*exato : *exato;
  const double valor = decimal::Le(partes->inteira, partes->fracao);
  return partes->negativo ? -valor : valor;
}

double NumeroOuMenosUm(std::string_view texto) {
  return Numero(texto).value_or(-1);
}

int32_t InteiroOuMenosUm(std::string_view texto) {
  const auto valor = Numero(texto);
  if (!valor) return -1;
  // Halves go to the even neighbour, as the run time's conversion to a whole number does.
  double inteiro = std::floor(*valor);
  const double resto = *valor - inteiro;
  if (resto > 0.5 || (resto == 0.5 && std::fmod(inteiro, 2.0) != 0)) inteiro += 1;
  if (inteiro < std::numeric_limits<int32_t>::min() ||
      inteiro > std::numeric_limits<int32_t>::max()) {
    return -1;
  }
  return static_cast<int32_t>(inteiro);
}

double ValorInicial(std::string_view texto) {
  std::size_t i = 0;
  while (i < texto.size() && texto[i] == ' ')
    ++i;
  const std::size_t inicio = i;
  if (i < texto.size() && (texto[i] == '+' || texto[i] == '-')) ++i;
  while (i < texto.size() && EhDigito(texto[i]))
    ++i;
  if (i < texto.size() && texto[i] == '.') {
    ++i;
    while (i < texto.size() && EhDigito(texto[i]))
      ++i;
  }
  // The leading number is read as a whole, so that it rounds as its full decimal text does.
  return Numero(texto.substr(inicio, i - inicio)).value_or(0);
}

std::string MascaraZeros(std::string_view texto, int largura) {
  // Digits that fill the mask exactly come back as they are.
  if (texto.size() == static_cast<std::size_t>(largura) && SoDigitos(texto)) {
    return std::string(texto);
  }
  const auto partes = Decompoe(texto);
  if (!partes) return std::string(texto);
  std::string digitos(partes->inteira);
  if (!partes->fracao.empty() && partes->fracao[0] >= '5') {
    // Rounds half away from zero by carrying one into the whole digits.
    std::size_t i = digitos.size();
    while (i > 0 && digitos[i - 1] == '9')
      digitos[--i] = '0';
    if (i == 0) {
      digitos.insert(digitos.begin(), '1');
    } else {
      ++digitos[i - 1];
    }
  }
  const std::size_t zeros = digitos.find_first_not_of('0');
  digitos.erase(0, zeros == std::string::npos ? digitos.size() : zeros);
  const bool negativo = partes->negativo && !digitos.empty();
  if (digitos.size() < static_cast<std::size_t>(largura)) {
    digitos.insert(0, static_cast<std::size_t>(largura) - digitos.size(), '0');
  }
  if (negativo) digitos.insert(digitos.begin(), '-');
  return digitos;
}

std::string MascaraZeros(double valor, int largura) {
  return MascaraZeros(TextoDoNumero(std::round(valor)), largura);
}

std::string TextoDoNumero(double valor) {
  if (valor == 0) return "0";
  std::array<char, 400> buffer{};
  const auto fim = decimal::Escreve(buffer.data(), buffer.data() + buffer.size(), valor).ptr;
  std::string texto(buffer.data(), fim);
  for (char& c : texto) {
    if (c == '.') c = ',';
  }
  return texto;
}

}  // namespace quorv::texto
