// The kind of a file, told by the length of its first line.
#ifndef QUORVVALIDA_TOOLS_TIPO_ARQUIVO_HPP_
#define QUORVVALIDA_TOOLS_TIPO_ARQUIVO_HPP_

#include <cstdint>
#include <string>

namespace quorv::ferramenta {

enum class Tipo { kNotas, kFichas };

// What the first line of a file tells.
struct Identificacao {
  bool aberto = false;            // the file could be opened
  std::uint64_t comprimento = 0;  // bytes of the first line, without its line end
  bool identificado = false;
  Tipo tipo = Tipo::kNotas;
};

// Reads the first line (never more of it than needed to count it): 160 characters are an
// invoice file, 260 a registration-form file.
Identificacao IdentificaTipo(const std::string& caminho);

// "notas" or "fichas".
const char* NomeDoTipo(Tipo tipo);

// How people call the kind: "notas fiscais de produtor" or "ficha cadastral".
const char* DescricaoDoTipo(Tipo tipo);

}  // namespace quorv::ferramenta

#endif  // QUORVVALIDA_TOOLS_TIPO_ARQUIVO_HPP_
