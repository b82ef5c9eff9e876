// Walks a warnings file (ADVERTENCIAS.TXT) one warning at a time, as the readers of both
// validators offer it: the record type and the identification taken from the copied input line,
// the line number, and the text of the warning code.
#ifndef QUORVVALIDA_SRC_COMPONENT_FILES_LEITOR_ADVERTENCIAS_HPP_
#define QUORVVALIDA_SRC_COMPONENT_FILES_LEITOR_ADVERTENCIAS_HPP_

#include <cstdint>
#include <string>
#include <string_view>

#include "component/files/leitor_linhas.hpp"
#include "component/shared/texto.hpp"

namespace quorv {

// What distinguishes the warnings of one validator: where the record type and the
// identification stand in the copied input line, and the catalogue that names a code.
struct FormatoAdvertencias {
  texto::Coluna tr;
  texto::Coluna nota;
  // The text of a warning code (UTF-8).
  std::string_view (*descricao)(int codigo);
};

// Width of the warning text, in characters.
inline constexpr std::size_t kLarguraDescricao = 100;

// A warning line holds code, remessa key, processing key, input line and line number, always
// split at "#". Items are fixed-width texts counted in characters: the input line's bytes are
// Windows-1252 and come back as UTF-8. An item that a line cannot give keeps its value; nothing
// is raised except by Posicao.
class LeitorAdvertencias {
 public:
  explicit LeitorAdvertencias(const FormatoAdvertencias& formato);

  // Counts the file's lines, reads it again from its start and makes the first line current.
  // A file that cannot be read leaves the reader without a stream and a count of 0.
  void Abrir(std::string_view caminhoUtf8);
  // Closes the stream; the current items stay.
  void Fechar();
  // Makes the next line current; nothing happens without a stream or past the last line.
  void Avancar();
  // True when no line is left to read, which is already so while the last line is current;
  // also true without a stream, so that a caller's walk ends.
  bool Fim() const { return fim_; }

  const std::string& Tr() const { return tr_; }
  const std::string& Nota() const { return nota_; }
  int32_t NumeroLinha() const { return linha_; }
  const std::string& Descricao() const { return descricao_; }
  // Lines counted by Abrir.
  int32_t Total() const { return total_; }
  // True while a stream is open.
  bool Aberto() const { return aberto_; }
  // The number of the next line to be read: lines read so far plus one.
  // Throws std::runtime_error when no stream is open.
  int32_t Posicao() const;

 private:
  // Fields of a warning line: code, remessa key, processing key, input line, line number.
  static constexpr std::size_t kCampos = 5;

  void Separa(std::string_view pedaco);
  void Toma();

  FormatoAdvertencias formato_;
  LeitorLinhas entrada_;
  bool aberto_ = false;
  bool fim_ = true;
  int32_t total_ = 0;
  int32_t lidas_ = 0;
  std::string tr_;
  std::string nota_;
  int32_t linha_ = 0;
  std::string descricao_;
  // The fields of the line being read, each kept up to its room, and how many the line has.
  std::string campos_[kCampos];
  bool cortado_[kCampos] = {};
  std::size_t quantos_ = 0;
};

}  // namespace quorv

#endif  // QUORVVALIDA_SRC_COMPONENT_FILES_LEITOR_ADVERTENCIAS_HPP_
