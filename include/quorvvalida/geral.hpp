// Field routines shared by both validators: numbers and dates with a -1 sentinel, list
// membership, CPF and CNPJ check digits and the state-registration check.
//
// "Numeric" is decided once for the whole library and never depends on the machine's locale:
// blanks around the text are allowed, then an optional leading "+" or "-", then digits with at
// most one decimal mark, which may be "," or "."; at least one digit must be present. Nothing
// else counts: no thousands separators, exponents, currency signs or inner blanks. An empty or
// all-blank text is not numeric.
//
// Dates are day serials: 1899-12-30 is day 0, so 1900-01-01 is day 2 and 2024-01-01 is 45292.
// Texts are UTF-8.
#ifndef QUORVVALIDA_GERAL_HPP_
#define QUORVVALIDA_GERAL_HPP_

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>

#include "quorvvalida/exportacao.h"

namespace quorv {

// The value of a numeric text rounded to a whole number (halves to even); -1 when the text is
// not numeric or the value does not fit in 32 bits. A field holding -1 reads as a bad field.
QUORVVALIDA_API int32_t ConverteLong(const std::string& texto);

// The value of a numeric text; -1 when the text is not numeric.
QUORVVALIDA_API double ConverteDouble(const std::string& texto);

// The day serial of an eight-digit year-month-day text read through the mask "0000/00/00";
// 0 for a numeric text of value zero ("00000000"); -1 for anything else. Years run from 100 to
// 9999; a text that is not numeric is never read as a date.
QUORVVALIDA_API double ConverteData(const std::string& texto);

// True when some element of the list equals the value (numbers by value, texts exactly).
template <typename T, typename U>
bool ExisteNoVetor(const T& valor, std::initializer_list<U> vetor) {
  for (const auto& elemento : vetor) {
    if (elemento == valor) return true;
  }
  return false;
}

// The same test over any container that can be walked with a range-for.
template <typename T, typename Lista>
bool ExisteNoVetor(const T& valor, const Lista& vetor) {
  for (const auto& elemento : vetor) {
    if (elemento == valor) return true;
  }
  return false;
}

// True when the text holds a CNPJ with correct check digits; dots, slash and dash are allowed.
QUORVVALIDA_API bool ValidaCNPJ(const std::string& texto);

// True when the text holds a CPF with correct check digits; a text longer than 11 characters
// (a CPF written with punctuation) is refused.
QUORVVALIDA_API bool ValidaCPF(const std::string& texto);

// The two modulus-11 check digits of a 14-digit CNPJ; an empty or blank text passes.
QUORVVALIDA_API bool ConfereDigitosCNPJ(const std::string& texto);

// The two modulus-11 check digits of an 11-digit CPF; an empty or blank text passes, and so do
// eleven equal digits whose arithmetic works out.
QUORVVALIDA_API bool ConfereDigitosCPF(const std::string& texto);

// True when the state-registration checker accepts the number for the state (UF). Without a
// checker (no library, no replacement) every number is refused.
QUORVVALIDA_API bool ValidaInscricaoEstadual(const std::string& inscricao, const std::string& uf);

// A state-registration checker: answers 0 when the number is valid for the UF.
using VerificadorInscricao =
    std::function<int16_t(const std::string& inscricao, const std::string& uf)>;

// Replaces the state-registration library by a function; an empty function restores the
// library. Affects every validator of the process.
QUORVVALIDA_API void DefinirVerificadorInscricao(VerificadorInscricao verificador);

// Loads the state-registration library from a file path and uses it from now on; false when
// the file cannot be loaded or lacks ConsisteInscricaoEstadual (the checker is then unchanged).
QUORVVALIDA_API bool CarregarBibliotecaInscricao(const std::string& caminho);

// True when a checker is available: a replacement function or a loaded library. Looks for the
// library (DllInscE32.dll on Windows, libDllInscE32.so elsewhere) on first use.
QUORVVALIDA_API bool VerificadorInscricaoDisponivel();

}  // namespace quorv

#endif  // QUORVVALIDA_GERAL_HPP_
