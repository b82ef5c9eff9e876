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
  static constexpr std::size_t kBuffer = std::size_t{64} * 1024;
  static constexpr std::size_t kGuardado = 1024;
  static constexpr std::uint64_t kSemLimite = UINT64_MAX;

  LeitorLinhas();
  ~LeitorLinhas();
  LeitorLinhas(const LeitorLinhas&) = delete;
  LeitorLinhas& operator=(const LeitorLinhas&) = delete;

  // Opens a regular file for reading; false when it is missing, a directory or unreadable.
  // With a limit, a line longer than `limite` bytes need not be read to its end: when no line end
  // comes within the limit, Proxima gives the line's first bytes with a length above the limit,
  // and the file ends there. A reader of fixed-width records that stops at the first line of a
  // wrong length thus refuses a file of one endless line at once.
  bool Abrir(std::string_view caminhoUtf8, std::uint64_t limite = kSemLimite);
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
  bool LinhaAlemDoLimite(Linha& linha);

  std::FILE* arquivo_ = nullptr;
  std::unique_ptr<char[]> buffer_;
  std::size_t inicio_ = 0;
  std::size_t fim_ = 0;
  std::uint64_t lidos_ = 0;
  std::uint64_t tamanho_ = 0;
  std::uint64_t limite_ = kSemLimite;
  bool esgotado_ = true;
  std::string cabeca_;
};

}  // namespace quorv

#endif  // QUORVVALIDA_SRC_COMPONENT_FILES_LEITOR_LINHAS_HPP_
