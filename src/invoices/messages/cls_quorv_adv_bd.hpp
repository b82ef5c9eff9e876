// clsQuorvAdvBD: walks a producer-invoice warnings file record by record. Private to the
// library: the web facade creates it to write its return file; hosts cannot.
#ifndef QUORVVALIDA_SRC_INVOICES_MESSAGES_CLS_QUORV_ADV_BD_HPP_
#define QUORVVALIDA_SRC_INVOICES_MESSAGES_CLS_QUORV_ADV_BD_HPP_

#include <cstdint>
#include <memory>
#include <string>

namespace quorv {

class LeitorAdvertencias;

// A forward-only reader of ADVERTENCIAS.TXT as the invoice validator writes it. Open, use the
// current record, test EndOfStream, MoveNext, and so on; the first record is current right after
// OpenStream. Lines are split at "#" whatever separator wrote them. Texts are UTF-8.
class clsQuorvAdvBD {
 public:
  clsQuorvAdvBD();
  ~clsQuorvAdvBD();
  clsQuorvAdvBD(const clsQuorvAdvBD&) = delete;
  clsQuorvAdvBD& operator=(const clsQuorvAdvBD&) = delete;

  // Counts the file's lines, reopens it and makes its first line current; a missing file leaves
  // the reader without a stream.
  void OpenStream(const std::string& psFilePath);
  // Closes the stream.
  void CloseStream();
  // Makes the next line current; an item that the line cannot give keeps its value.
  void MoveNext();
  // True when no line is left to read (already true while the last line is current).
  bool EndOfStream() const;
  // Record type of the warned line, 2 characters.
  std::string TR() const;
  // Invoice number area of the warned line (its columns 11-30), 20 characters.
  std::string Nota() const;
  // Line number of the warning.
  int32_t LINHA() const;
  // Text of the warning code, 100 characters.
  std::string Descricao() const;
  // Number of lines counted by OpenStream.
  int32_t TotalRecords() const;
  // Number of the next line to be read (2 right after opening a non-empty file); 0 when no
  // stream is open.
  int32_t RecordCount() const;

 private:
  std::unique_ptr<LeitorAdvertencias> leitor_;
};

}  // namespace quorv

#endif  // QUORVVALIDA_SRC_INVOICES_MESSAGES_CLS_QUORV_ADV_BD_HPP_
