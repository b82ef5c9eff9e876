// Field rules that several invoice record checks share: the home state and the home country,
// amounts, dates of the records and taxpayer numbers (CNPJ and CPF).
#ifndef QUORVVALIDA_SRC_INVOICES_CAMPOS_NOTAS_HPP_
#define QUORVVALIDA_SRC_INVOICES_CAMPOS_NOTAS_HPP_

#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

#include "component/shared/datas.hpp"
#include "component/shared/decimal.hpp"
#include "component/shared/documentos.hpp"
#include "component/shared/texto.hpp"

namespace quorv::notas {

// The home state's UF, the UF that marks a party abroad, and the home country's code.
inline constexpr std::string_view kUFLocal = "QZ";
inline constexpr std::string_view kUFExterior = "EX";
inline constexpr double kPaisLocal = 311;

// The day serial of a date the checks compare with (a valid calendar date).
constexpr double Data(int ano, int mes, int dia) {
  return *datas::Serial(ano, mes, dia);
}

// The value of an amount field: 13 characters once trimmed and numeric; empty otherwise.
inline std::optional<double> Valor(std::string_view campo) {
  if (texto::Apara(campo).size() != 13) return std::nullopt;
  return texto::Numero(campo);
}

// Which check digits a taxpayer-number field must carry.
enum class Contribuinte { kCnpjOuCpf, kCpf, kCnpj };

// A taxpayer-number field is accepted when blank, zero or negative; a positive number must carry
// check digits that pass. Only a positive number has ever been checked, so a negative one passes
// as it always has.
inline bool DocumentoAceito(std::string_view campo, Contribuinte contribuinte) {
  if (texto::EmBranco(campo)) return true;
  const auto valor = texto::Numero(campo);
  if (!valor) return false;
  if (*valor <= 0) return true;
  // The number is checked as the run time writes it back: no leading zeros (a value below 1
  // starts at its decimal point) and one leading blank where the sign would go. An eleven-digit
  // CPF whose first digit is not 0 thus becomes twelve characters, which the CPF check refuses as
  // too long; deliberate, every such CPF has always been refused. A fraction keeps its decimal
  // places, which the checks round away. The fields hold at most 14 characters, so the text
  // fits.
  char escrito[40];
  escrito[0] = ' ';
  // A whole number, the common case, is written by the whole-number conversion, in the same way.
  const bool inteiro = *valor < 1e15 && *valor == std::floor(*valor);
  const char* fim =
      inteiro
          ? std::to_chars(escrito + 1, escrito + sizeof escrito, static_cast<long long>(*valor)).ptr
          : decimal::Escreve(escrito + 1, escrito + sizeof escrito, *valor).ptr;
  std::string_view numero(escrito, static_cast<std::size_t>(fim - escrito));
  if (numero.substr(1, 2) == "0.") {
    escrito[1] = ' ';
    numero.remove_prefix(1);
  }
  if (contribuinte == Contribuinte::kCnpj) return documentos::ValidaCNPJ(numero);
  if (contribuinte == Contribuinte::kCpf) return documentos::ValidaCPF(numero);
  return documentos::ValidaCNPJ(numero) || documentos::ValidaCPF(numero);
}

}  // namespace quorv::notas

#endif  // QUORVVALIDA_SRC_INVOICES_CAMPOS_NOTAS_HPP_
