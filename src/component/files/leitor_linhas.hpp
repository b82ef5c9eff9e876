// Reads a file line by line through a fixed buffer, so that memory stays the same whatever the
// file's size and a line with no end is never held whole.
#ifndef QUORVVALIDA_SRC_COMPONENT_FILES_LEITOR_LINHAS_HPP_
#define QUORVVALIDA_SRC_COMPONENT_FILES_LEITOR_LINHAS_HPP_

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quorv {

// One line as read: its first bytes and its full length in bytes, without the line end.
struct Linha {
  // The whole line when it fits the reader's buffer, else its first LeitorLinhas::kGuardado
  // bytes. Valid until the next read.
  std::string_view texto;
  std::uint64_t comprimento = 0;
};

// A line ends at LF; a CR right before the LF belongs to the line end. A last line without an
// end is a line too.
class LeitorLinhas {
 public:
  static constexpr std::size_t kBuffer = 64 * 1024;
  static constexpr std::size_t kGuardado = 1024;

  LeitorLinhas();
  ~LeitorLinhas();
  LeitorLinhas(const LeitorLinhas&) = delete;
  LeitorLinhas& operator=(const LeitorLinhas&) = delete;

  // Opens a regular file for reading; false when it is missing, a directory or unreadable.
  bool Abrir(std::string_view caminhoUtf8);
  // Closes the file; closing a closed reader does nothing.
  void Fechar();
  // True when no byte is left to read.
  bool Fim();
  // Reads the next line; false at the end of the file.
  bool Proxima(Linha& linha);
  // Reads the next line and hands all its bytes, in order and in pieces, to `pedaco` (the line
  // end left out), however long the line is; false at the end of the file.
  bool ProximaEmPedacos(const std::function<void(std::string_view)>& pedaco);
  // File length in bytes when it was opened.
  std::uint64_t Tamanho() const { return tamanho_; }
  // Bytes taken by the lines read so far, line ends included.
  std::uint64_t Consumidos() const { return lidos_ - (fim_ - inicio_); }

 private:
  bool Reabastece();
  bool LinhaLonga(Linha& linha);

  std::FILE* arquivo_ = nullptr;
  std::unique_ptr<char[]> buffer_;
  std::size_t inicio_ = 0;
  std::size_t fim_ = 0;
  std::uint64_t lidos_ = 0;
  std::uint64_t tamanho_ = 0;
  bool esgotado_ = true;
  std::string cabeca_;
};

}  // namespace quorv

#endif  // QUORVVALIDA_SRC_COMPONENT_FILES_LEITOR_LINHAS_HPP_
