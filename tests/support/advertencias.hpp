// The expected contents of a warnings file, line by line.
#ifndef QUORVVALIDA_TESTS_SUPPORT_ADVERTENCIAS_HPP_
#define QUORVVALIDA_TESTS_SUPPORT_ADVERTENCIAS_HPP_

#include <string>
#include <string_view>

namespace quorv::teste {

// Builds the warning lines a run should write: code, the two keys, the record copied from the
// input, and the line number, joined by the run's separator and ended by CR LF.
class Advertencias {
 public:
  explicit Advertencias(std::string separador = "#", std::string chaveRemessa = "0",
                        std::string chaveProcessamento = "0")
      : separador_(std::move(separador)),
        chaveRemessa_(std::move(chaveRemessa)),
        chaveProcessamento_(std::move(chaveProcessamento)) {}

  // Adds one warning line.
  Advertencias& Linha(int codigo, std::string_view registro, std::string_view numero) {
    texto_ += std::to_string(codigo) + separador_ + chaveRemessa_ + separador_ +
              chaveProcessamento_ + separador_ + std::string(registro) + separador_ +
              std::string(numero) + "\r\n";
    return *this;
  }

  const std::string& Texto() const { return texto_; }

 private:
  std::string separador_;
  std::string chaveRemessa_;
  std::string chaveProcessamento_;
  std::string texto_;
};

}  // namespace quorv::teste

#endif  // QUORVVALIDA_TESTS_SUPPORT_ADVERTENCIAS_HPP_
