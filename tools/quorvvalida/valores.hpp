// The values the tool's options take, read by the same rules wherever they come from: the
// command line, or the query parameters of the service. Each reader answers nothing for a value
// it refuses, and each message says, in Portuguese, what is accepted instead.
#ifndef QUORVVALIDA_TOOLS_VALORES_HPP_
#define QUORVVALIDA_TOOLS_VALORES_HPP_

#include <optional>
#include <string>

namespace quorv::ferramenta {

// A key: digits with at most one decimal mark ("," or "."), from 0 to the largest whole number
// a Double carries exactly, and with a fraction at most 15 digits in all.
std::optional<double> LeChave(const std::string& texto);
std::string ChaveInvalida(const std::string& texto);

// A calendar date written AAAAMMDD: its day serial.
std::optional<double> LeData(const std::string& texto);
std::string DataInvalida(const std::string& texto);

// A warning code: an optional "-" and digits, from -32768 to 32767.
std::optional<int> LeCodigo(const std::string& texto);
std::string CodigoInvalido(const std::string& texto);

// A separator of the warnings file's fields: one or more characters, without a line break.
bool SeparadorValido(const std::string& texto);
std::string SeparadorInvalido();

}  // namespace quorv::ferramenta

#endif  // QUORVVALIDA_TOOLS_VALORES_HPP_
