// A text file written through a buffer of its own, that tells whether every write reached it.
#ifndef QUORVVALIDA_SRC_COMPONENT_FILES_ARQUIVO_SAIDA_HPP_
#define QUORVVALIDA_SRC_COMPONENT_FILES_ARQUIVO_SAIDA_HPP_

#include <cstdio>
#include <memory>
#include <string_view>

namespace quorv {

class ArquivoSaida {
 public:
  // Bytes gathered before they are handed to the file.
  static constexpr std::size_t kBuffer = std::size_t{64} * 1024;

  ArquivoSaida() = default;
  ~ArquivoSaida();
  ArquivoSaida(const ArquivoSaida&) = delete;
  ArquivoSaida& operator=(const ArquivoSaida&) = delete;

  // Creates the file, or empties it when it exists; false when that is not possible.
  bool Criar(std::string_view caminhoUtf8);
  // Appends the bytes; false when the file is not open or a write failed (a write fails when the
  // buffer is handed to the file, so a failure shows at the write that fills the buffer).
  bool Escreve(std::string_view dados);
  // Writes out what is buffered and closes; false when that failed or nothing was open.
  bool Fechar();
  // True between Criar and Fechar.
  bool Aberto() const { return arquivo_ != nullptr; }
  // True when a write, or the closing, failed since Criar: the file does not hold every byte
  // given to it.
  bool Falhou() const { return falhou_; }

 private:
  // Hands the buffer to the file; false when the file refused it.
  bool Esvazia();

  std::FILE* arquivo_ = nullptr;
  std::unique_ptr<char[]> buffer_;
  std::size_t usados_ = 0;
  bool falhou_ = false;
};

}  // namespace quorv

#endif  // QUORVVALIDA_SRC_COMPONENT_FILES_ARQUIVO_SAIDA_HPP_
