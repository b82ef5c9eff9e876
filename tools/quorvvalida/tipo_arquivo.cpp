#include "tipo_arquivo.hpp"

#include <cstdio>
#include <filesystem>
#include <system_error>

namespace quorv::ferramenta {

Identificacao IdentificaTipo(const std::string& caminho) {
  Identificacao identificacao;
  std::error_code erro;
  const auto arquivo = std::filesystem::u8path(caminho);
  if (!std::filesystem::is_regular_file(arquivo, erro)) return identificacao;
  std::FILE* entrada = std::fopen(arquivo.string().c_str(), "rb");
  if (entrada == nullptr) return identificacao;
  identificacao.aberto = true;
  char bloco[4096];
  bool anteriorCR = false;
  for (;;) {
    const std::size_t lidos = std::fread(bloco, 1, sizeof bloco, entrada);
    if (lidos == 0) break;
    std::size_t i = 0;
    while (i < lidos && bloco[i] != '\n')
      ++i;
    identificacao.comprimento += i;
    if (i < lidos) {
      // A CR right before the LF belongs to the line end.
      const bool terminaEmCR = i > 0 ? bloco[i - 1] == '\r' : anteriorCR;
      if (terminaEmCR) --identificacao.comprimento;
      break;
    }
    anteriorCR = bloco[lidos - 1] == '\r';
  }
  std::fclose(entrada);
  if (identificacao.comprimento == 160 || identificacao.comprimento == 260) {
    identificacao.identificado = true;
    identificacao.tipo = identificacao.comprimento == 160 ? Tipo::kNotas : Tipo::kFichas;
  }
  return identificacao;
}

const char* NomeDoTipo(Tipo tipo) {
  return tipo == Tipo::kNotas ? "notas" : "fichas";
}

const char* DescricaoDoTipo(Tipo tipo) {
  return tipo == Tipo::kNotas ? "notas fiscais de produtor" : "ficha cadastral";
}

}  // namespace quorv::ferramenta
