// Private directories for the files of a request: only the service's user may enter them, and
// they go away with everything in them, whatever happened to the request.
#ifndef QUORVVALIDA_TOOLS_SERVIR_TEMPORARIO_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_TEMPORARIO_HPP_

#include <memory>
#include <string>

namespace quorv::servico {

class DiretorioTemporario {
 public:
  // Creates "<base>/<prefixo>XXXXXX" with mode 0700; null, with the reason in `erro`, when it
  // cannot be created.
  static std::unique_ptr<DiretorioTemporario> Cria(const std::string& base,
                                                   const std::string& prefixo, std::string& erro);
  ~DiretorioTemporario();
  DiretorioTemporario(const DiretorioTemporario&) = delete;
  DiretorioTemporario& operator=(const DiretorioTemporario&) = delete;

  const std::string& Caminho() const { return caminho_; }
  // A name inside the directory.
  std::string Arquivo(const std::string& nome) const { return caminho_ + "/" + nome; }

 private:
  explicit DiretorioTemporario(std::string caminho) : caminho_(std::move(caminho)) {}
  std::string caminho_;
};

// Where temporary files go when the operator does not say: TMPDIR, else /tmp.
std::string BaseTemporariaPadrao();

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_TEMPORARIO_HPP_
