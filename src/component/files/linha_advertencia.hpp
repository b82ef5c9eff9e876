// One line of the warnings file, as both validators write it: the warning code, the two keys of
// the run, the record concerned and its line number, joined by the run's separator.
#ifndef QUORVVALIDA_SRC_COMPONENT_FILES_LINHA_ADVERTENCIA_HPP_
#define QUORVVALIDA_SRC_COMPONENT_FILES_LINHA_ADVERTENCIA_HPP_

#include <cstdint>
#include <string>
#include <string_view>

namespace quorv {

class LinhaAdvertencia {
 public:
  // Keeps the run's separator (single-byte text) and its two keys, written in their shortest
  // decimal form.
  void Prepara(std::string_view separador, double chaveRemessa, double chaveProcessamento);

  // The line of a warning, CR LF included: the code, the keys, the record, and the line number
  // `numero`, or the record's own columns 1-8 when `numero` is 0, laid into the mask "00000000"
  // (a text that is not a number stays as it is). Valid until the next call.
  std::string_view Monta(int32_t codigo, std::string_view registro, double numero);

  // The run's separator.
  const std::string& Separador() const { return separador_; }

 private:
  std::string separador_;
  // Separator, remessa key, separator, processing key, separator.
  std::string chaves_;
  // The line being laid out (only its first bytes make the line), and a line number that went
  // through the mask.
  std::string linha_;
  std::string mascarado_;
};

}  // namespace quorv

#endif  // QUORVVALIDA_SRC_COMPONENT_FILES_LINHA_ADVERTENCIA_HPP_
