// Test records built field by field: a value goes to its column with its width, never by
// counting characters in a literal.
#ifndef QUORVVALIDA_TESTS_SUPPORT_REGISTRO_HPP_
#define QUORVVALIDA_TESTS_SUPPORT_REGISTRO_HPP_

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace quorv::teste {

// A fixed-width line of blanks into which fields are laid.
class Registro {
 public:
  explicit Registro(std::size_t largura) : texto_(largura, ' ') {}

  // Lays the value at the 1-based column, left-aligned and padded with blanks to the width.
  // A value longer than the width, or a field beyond the line, is a mistake of the test.
  Registro& Campo(int coluna, int largura, std::string_view valor) {
    if (coluna < 1 || valor.size() > static_cast<std::size_t>(largura) ||
        static_cast<std::size_t>(coluna - 1 + largura) > texto_.size()) {
      throw std::invalid_argument("campo fora do registro: coluna " + std::to_string(coluna));
    }
    texto_.replace(static_cast<std::size_t>(coluna - 1), static_cast<std::size_t>(largura),
                   std::string(valor) + std::string(largura - valor.size(), ' '));
    return *this;
  }

  // Lays a whole number at the column, with leading zeros to the width.
  Registro& Numero(int coluna, int largura, long long valor) {
    std::string digitos = std::to_string(valor);
    if (digitos.size() < static_cast<std::size_t>(largura)) {
      digitos.insert(0, static_cast<std::size_t>(largura) - digitos.size(), '0');
    }
    return Campo(coluna, largura, digitos);
  }

  // The line cut or padded with blanks to another length (for lines of a wrong length).
  std::string ComLargura(std::size_t largura) const {
    std::string linha = texto_;
    linha.resize(largura, ' ');
    return linha;
  }

  const std::string& Texto() const { return texto_; }

 private:
  std::string texto_;
};

}  // namespace quorv::teste

#endif  // QUORVVALIDA_TESTS_SUPPORT_REGISTRO_HPP_
