// Decimal texts of doubles, read and written as std::from_chars and std::to_chars do it: the
// correctly rounded value of a text, and the shortest text that reads back as the same value.
// Where the standard library does not convert floating point (libc++ before version 17, as in
// the WebAssembly toolchain), the C library's exact conversions give the same results. Neither
// way looks at the machine's locale.
#ifndef QUORVVALIDA_SRC_COMPONENT_SHARED_DECIMAL_HPP_
#define QUORVVALIDA_SRC_COMPONENT_SHARED_DECIMAL_HPP_

#include <charconv>
#include <string_view>

namespace quorv::decimal {

// The value of the decimal number `inteira`.`fracao` (digits only, either part may be empty);
// beyond a double's range it is infinity when a whole digit is not zero, else zero.
double Le(std::string_view inteira, std::string_view fracao);

// Writes the shortest fixed-point text (decimal mark ".") that reads back as the value, as
// std::to_chars(inicio, fim, valor, std::chars_format::fixed) does.
std::to_chars_result Escreve(char* inicio, char* fim, double valor);

// The same two through the C library, whatever the standard library offers; kept apart so that
// they are compared with the standard library's where it has both.
double LePelaBibliotecaC(std::string_view inteira, std::string_view fracao);
std::to_chars_result EscrevePelaBibliotecaC(char* inicio, char* fim, double valor);

}  // namespace quorv::decimal

#endif  // QUORVVALIDA_SRC_COMPONENT_SHARED_DECIMAL_HPP_
