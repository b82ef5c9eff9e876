// What the tool prints for people: a summary and a table of warnings on stdout, and every error,
// notice and diagnosis as one line on stderr ("quorvvalida: ...").
#ifndef QUORVVALIDA_TOOLS_SAIDA_HPP_
#define QUORVVALIDA_TOOLS_SAIDA_HPP_

#include <cstdint>
#include <string>

#include "resultados.hpp"

namespace quorv::ferramenta {

// One line on stderr: "quorvvalida: " and the text.
void Aviso(const std::string& texto);

// The summary of a validation, then the table of its warnings (at most `limite` rows; 0 = all).
void ImprimeResumo(const ResultadoValidacao& resultado, std::uint64_t limite);

// The summary of a call of the web facade.
void ImprimeWeb(const ResultadoWeb& resultado);

// The summary of a batch.
void ImprimeResumoLote(const ResumoLote& resumo);

// Lists a warnings file through the library's reader of its kind; answers how many it listed.
std::int32_t ImprimeListaAdvertencias(const std::string& arquivo, Tipo tipo);

// Flushes stdout; false when something written to it was lost (a full disk, a closed pipe).
bool SaidaGravada();

}  // namespace quorv::ferramenta

#endif  // QUORVVALIDA_TOOLS_SAIDA_HPP_
