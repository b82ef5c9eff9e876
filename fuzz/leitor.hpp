// Walks a warnings file with a reader as the web facade does. Promises: the walk ends within the
// lines counted at opening; the items keep their widths in characters; RecordCount follows the
// lines read.
#ifndef QUORVVALIDA_FUZZ_LEITOR_HPP_
#define QUORVVALIDA_FUZZ_LEITOR_HPP_

#include <cstddef>
#include <string>
#include <string_view>

#include "apoio.hpp"

namespace quorv::fuzz {

inline std::size_t Caracteres(std::string_view utf8) {
  std::size_t total = 0;
  for (char c : utf8) {
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++total;
  }
  return total;
}

template <typename Leitor>
void Percorre(std::string_view bytes, std::size_t larguraTR, std::size_t larguraNota) {
  const std::string caminho = Caminho("ADVERTENCIAS.TXT");
  Grava(caminho, bytes);
  Leitor leitor;
  leitor.OpenStream(caminho);
  const int total = leitor.TotalRecords();
  if (total < 0) Quebrou("total negativo");
  int lidas = total > 0 ? 1 : 0;
  for (;;) {
    if (Caracteres(leitor.TR()) != larguraTR) Quebrou("TR fora da largura");
    if (Caracteres(leitor.Nota()) != larguraNota) Quebrou("Nota fora da largura");
    if (Caracteres(leitor.Descricao()) != 100) Quebrou("Descricao fora da largura");
    if (leitor.RecordCount() != lidas + 1) Quebrou("RecordCount não segue as linhas lidas");
    if (leitor.EndOfStream()) break;
    if (lidas >= total) Quebrou("mais linhas que as contadas");
    leitor.MoveNext();
    ++lidas;
  }
  if (lidas != total) Quebrou("menos linhas que as contadas");
  leitor.CloseStream();
}

}  // namespace quorv::fuzz

#endif  // QUORVVALIDA_FUZZ_LEITOR_HPP_
