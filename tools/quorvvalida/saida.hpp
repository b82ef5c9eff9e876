// What the tool prints: a summary and a table for people, one JSON document for scripts.
#ifndef QUORVVALIDA_TOOLS_SAIDA_HPP_
#define QUORVVALIDA_TOOLS_SAIDA_HPP_

#include <cstdint>
#include <string>

#include "tipo_arquivo.hpp"

namespace quorv::ferramenta {

// The outcome of one validation.
struct Relatorio {
  std::string arquivo;
  Tipo tipo = Tipo::kNotas;
  int16_t status = 0;
  std::string numeroRemessa;
  // Why the file could not be validated, when the status is 9.
  std::string motivo;
  std::string caminhoAdvertencias;
  bool temAdvertencias = false;
  std::string separador;
};

// The meaning of a run status for the kind of file.
std::string SignificadoDoStatus(Tipo tipo, int16_t status);

// Summary, then the table of warnings (at most `limite` rows; 0 = all).
void ImprimeResumo(const Relatorio& relatorio, std::uint64_t limite);

// One JSON document with the summary and every warning.
void ImprimeJson(const Relatorio& relatorio);

}  // namespace quorv::ferramenta

#endif  // QUORVVALIDA_TOOLS_SAIDA_HPP_
