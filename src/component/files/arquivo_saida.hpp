// A text file written through a buffer, that tells whether every write reached it.
#ifndef QUORVVALIDA_SRC_COMPONENT_FILES_ARQUIVO_SAIDA_HPP_
#define QUORVVALIDA_SRC_COMPONENT_FILES_ARQUIVO_SAIDA_HPP_

#include <cstdio>
#include <string_view>

namespace quorv {

class ArquivoSaida {
 public:
  ArquivoSaida() = default;
  ~ArquivoSaida();
  ArquivoSaida(const ArquivoSaida&) = delete;
  ArquivoSaida& operator=(const ArquivoSaida&) = delete;

  // Creates the file, or empties it when it exists; false when that is not possible.
  bool Criar(std::string_view caminhoUtf8);
  // Appends the bytes; false when the file is not open or the write failed.
  bool Escreve(std::string_view dados);
  // Writes out what is buffered and closes; false when that failed or nothing was open.
  bool Fechar();
  // True between Criar and Fechar.
  bool Aberto() const { return arquivo_ != nullptr; }

 private:
  std::FILE* arquivo_ = nullptr;
};

}  // namespace quorv

#endif  // QUORVVALIDA_SRC_COMPONENT_FILES_ARQUIVO_SAIDA_HPP_
