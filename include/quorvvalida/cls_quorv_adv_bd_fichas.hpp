// clsQuorvAdvBDFichas: walks a registration-form warnings file record by record.
#ifndef QUORVVALIDA_CLS_QUORV_ADV_BD_FICHAS_HPP_
#define QUORVVALIDA_CLS_QUORV_ADV_BD_FICHAS_HPP_

#include <cstdint>
#include <memory>
#include <string>

#include "quorvvalida/exportacao.h"

namespace quorv {

class LeitorAdvertencias;

// A forward-only reader of ADVERTENCIAS.TXT as the form validator writes it. Open, use the
// current record, test EndOfStream, MoveNext, and so on; the first record is current right after
// OpenStream. Lines are split at "#" whatever separator wrote them. Texts are UTF-8.
class QUORVVALIDA_API clsQuorvAdvBDFichas {
 public:
  clsQuorvAdvBDFichas();
  ~clsQuorvAdvBDFichas();
  clsQuorvAdvBDFichas(const clsQuorvAdvBDFichas&) = delete;
  clsQuorvAdvBDFichas& operator=(const clsQuorvAdvBDFichas&) = delete;

  // Counts the file's lines, reopens it and makes its first line current; a missing file leaves
  // the reader without a stream.
  void OpenStream(const std::string& psFilePath);
  // Closes the stream.
  void CloseStream();
  // Makes the next line current; an item that the line cannot give keeps its value.
  void MoveNext();
  // True when no line is left to read (already true while the last line is current).
  bool EndOfStream() const;
  // Record type of the warned line, 3 characters.
  std::string TR() const;
  // Request number of the warned line, 10 characters.
  std::string Nota() const;
  // Line number of the warning.
  int32_t LINHA() const;
  // Text of the warning code, 100 characters.
  std::string Descricao() const;
  // Number of lines counted by OpenStream.
  int32_t TotalRecords() const;
  // Number of the next line to be read (2 right after opening a non-empty file).
  // Throws std::runtime_error when no stream is open.
  int32_t RecordCount() const;

 private:
  std::unique_ptr<LeitorAdvertencias> leitor_;
};

}  // namespace quorv

#endif  // QUORVVALIDA_CLS_QUORV_ADV_BD_FICHAS_HPP_
