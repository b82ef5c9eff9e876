#include "valores.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include <fmt/core.h>

#include "quorvvalida/geral.hpp"

namespace quorv::ferramenta {
namespace {

// The largest whole number a Double key carries exactly.
constexpr std::uint64_t kMaiorChave = 9007199254740992;

bool SoDigitos(const std::string& texto) {
  return !texto.empty() && texto.find_first_not_of("0123456789") == std::string::npos;
}

std::optional<std::uint64_t> Inteiro(const std::string& texto, std::uint64_t maximo) {
  std::uint64_t valor = 0;
  if (!SoDigitos(texto)) return std::nullopt;
  const auto [fim, erro] = std::from_chars(texto.data(), texto.data() + texto.size(), valor);
  if (erro != std::errc() || fim != texto.data() + texto.size() || valor > maximo) {
    return std::nullopt;
  }
  return valor;
}

}  // namespace

std::optional<double> LeChave(const std::string& texto) {
  const std::size_t marca = texto.find_first_of(",.");
  const std::string inteira = texto.substr(0, marca);
  const std::string fracao = marca == std::string::npos ? std::string() : texto.substr(marca + 1);
  if (!SoDigitos(inteira) || (marca != std::string::npos && !SoDigitos(fracao))) {
    return std::nullopt;
  }
  if (fracao.empty()) {
    const auto inteiro = Inteiro(inteira, kMaiorChave);
    if (!inteiro) return std::nullopt;
    return static_cast<double>(*inteiro);
  }
  const std::size_t significativos =
      inteira.size() - std::min(inteira.find_first_not_of('0'), inteira.size()) + fracao.size();
  if (significativos > 15) return std::nullopt;
  // Read the same way under every locale.
  const std::string numero = inteira + "." + fracao;
  double valor = 0;
  std::from_chars(numero.data(), numero.data() + numero.size(), valor);
  return valor;
}

std::string ChaveInvalida(const std::string& texto) {
  return fmt::format(
      "valor inválido '{}'; use um número de 0 a 9007199254740992 (com fração, até 15 "
      "algarismos), como 123 ou 12,5",
      texto);
}

std::optional<double> LeData(const std::string& texto) {
  if (texto.size() != 8 || !SoDigitos(texto)) return std::nullopt;
  const double data = ConverteData(texto);
  if (data <= 0) return std::nullopt;
  return data;
}

std::string DataInvalida(const std::string& texto) {
  return fmt::format("data inválida '{}'; use uma data do calendário em AAAAMMDD, como 20240630",
                     texto);
}

std::optional<int> LeCodigo(const std::string& texto) {
  const bool negativo = !texto.empty() && texto.front() == '-';
  const auto valor = Inteiro(texto.substr(negativo ? 1 : 0), negativo ? 32768 : 32767);
  if (!valor) return std::nullopt;
  return negativo ? -static_cast<int>(*valor) : static_cast<int>(*valor);
}

std::string CodigoInvalido(const std::string& texto) {
  return fmt::format("código inválido '{}'; use um número inteiro de -32768 a 32767", texto);
}

bool SeparadorValido(const std::string& texto) {
  return !texto.empty() && texto.find_first_of("\r\n") == std::string::npos;
}

std::string SeparadorInvalido() {
  return "separador inválido; use um ou mais caracteres, sem quebra de linha";
}

}  // namespace quorv::ferramenta
