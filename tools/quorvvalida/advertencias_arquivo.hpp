// The warning lines a run left, read with the separator the run used.
#ifndef QUORVVALIDA_TOOLS_ADVERTENCIAS_ARQUIVO_HPP_
#define QUORVVALIDA_TOOLS_ADVERTENCIAS_ARQUIVO_HPP_

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "tipo_arquivo.hpp"

namespace quorv::ferramenta {

// One warning line, its texts in UTF-8.
struct Advertencia {
  std::string codigo;               // as written
  std::optional<int> codigoNumero;  // when the code is a number
  std::string linha;                // line number as written
  std::optional<long long> linhaNumero;
  std::string tr;        // record type of the warned line
  std::string mensagem;  // the catalogue's text
};

// Calls `cada` for every warning of the file, in order, and answers how many there were.
std::uint64_t LeAdvertencias(const std::string& caminho, const std::string& separador, Tipo tipo,
                             const std::function<void(const Advertencia&)>& cada);

}  // namespace quorv::ferramenta

#endif  // QUORVVALIDA_TOOLS_ADVERTENCIAS_ARQUIVO_HPP_
