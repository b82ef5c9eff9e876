#include "temporario.hpp"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <vector>

namespace quorv::servico {

std::unique_ptr<DiretorioTemporario> DiretorioTemporario::Cria(const std::string& base,
                                                               const std::string& prefixo,
                                                               std::string& erro) {
  std::string modelo = base + "/" + prefixo + "XXXXXX";
  std::vector<char> nome(modelo.begin(), modelo.end());
  nome.push_back('\0');
  // mkdtemp makes the directory with mode 0700 whatever the umask.
  if (::mkdtemp(nome.data()) == nullptr) {
    erro =
        "não foi possível criar um diretório temporário em " + base + ": " + std::strerror(errno);
    return nullptr;
  }
  return std::unique_ptr<DiretorioTemporario>(new DiretorioTemporario(nome.data()));
}

DiretorioTemporario::~DiretorioTemporario() {
  std::error_code erro;
  std::filesystem::remove_all(caminho_, erro);
}

std::string BaseTemporariaPadrao() {
  const char* tmpdir = std::getenv("TMPDIR");
  return tmpdir != nullptr && *tmpdir != '\0' ? tmpdir : "/tmp";
}

}  // namespace quorv::servico
