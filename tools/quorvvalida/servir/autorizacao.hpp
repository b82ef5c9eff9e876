// The bearer token that deployments without a gateway put in front of the API.
#ifndef QUORVVALIDA_TOOLS_SERVIR_AUTORIZACAO_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_AUTORIZACAO_HPP_

#include <array>
#include <optional>
#include <string>

namespace quorv::servico {

class Autorizacao {
 public:
  // The token is the file's first line, without its line end and surrounding blanks. Nothing,
  // with the reason in `erro`, when the file cannot be read or holds no token.
  static std::optional<Autorizacao> DoArquivo(const std::string& caminho, std::string& erro);

  enum class Resultado { kAceito, kAusente, kRecusado };
  // Judges an Authorization header ("Bearer <token>"); the comparison takes the same time
  // whatever the header holds, so that the token cannot be guessed byte by byte.
  Resultado Confere(const std::string& cabecalho) const;

 private:
  explicit Autorizacao(const std::string& token);
  std::array<unsigned char, 32> resumo_{};
};

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_AUTORIZACAO_HPP_
