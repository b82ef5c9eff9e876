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

// Calls `cada` for the warnings of the file, in order, until it answers false; answers how many
// it was given.
std::uint64_t LeAdvertencias(const std::string& caminho, const std::string& separador, Tipo tipo,
                             const std::function<bool(const Advertencia&)>& cada);

// What a file holds when it is read as a warnings file split at "#", as the library's readers
// split it: every line code, key, key, the warned line and its number, the warned line 160 bytes
// (invoices) or 260 (forms; a form warning against a TR 110 never read has it empty).
struct ExameAdvertencias {
  bool legivel = false;         // the file could be opened
  bool valido = false;          // every line is a warning line of one kind
  std::optional<Tipo> tipo;     // the kind its lines tell, when they tell one
  std::uint64_t linhaRuim = 0;  // the first line that is not a warning line (from 1)
  std::uint64_t linhas = 0;
};

// Reads the whole file through a fixed buffer, whatever its size and its lines' lengths.
ExameAdvertencias ExaminaAdvertencias(const std::string& caminho);

// The lines of a file (a last line without its end counts); 0 when it cannot be read.
std::uint64_t ContaLinhas(const std::string& caminho);

}  // namespace quorv::ferramenta

#endif  // QUORVVALIDA_TOOLS_ADVERTENCIAS_ARQUIVO_HPP_
