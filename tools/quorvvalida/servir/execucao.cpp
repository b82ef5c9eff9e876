#include "execucao.hpp"

#include <fcntl.h>
#include <sched.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <thread>
#include <vector>

namespace quorv::servico {
namespace {

// unshare(CLONE_FS) gives the calling thread its own working directory, root and umask; the
// rest of the process keeps theirs.
bool DiretorioProprio() {
  thread_local const bool proprio = ::unshare(CLONE_FS) == 0;
  return proprio;
}

}  // namespace

bool EntraNoDiretorio(const std::string& diretorio) {
  return DiretorioProprio() && ::chdir(diretorio.c_str()) == 0;
}

bool DiretoriosPorFio(std::string& erro) {
  int codigo = 0;
  std::thread teste([&codigo] { codigo = DiretorioProprio() ? 0 : errno; });
  teste.join();
  if (codigo != 0) {
    erro = std::string(
               "o sistema não dá a cada thread um diretório de trabalho próprio "
               "(unshare CLONE_FS): ") +
           std::strerror(codigo);
  }
  return codigo == 0;
}

std::uint64_t ContaQuebras(const char* dados, std::size_t tamanho) {
  std::uint64_t quebras = 0;
  const char* const fim = dados + tamanho;
  for (const void* quebra = std::memchr(dados, '\n', tamanho); quebra != nullptr;) {
    ++quebras;
    const char* depois = static_cast<const char*>(quebra) + 1;
    quebra = std::memchr(depois, '\n', static_cast<std::size_t>(fim - depois));
  }
  return quebras;
}

std::uint64_t ContaLinhas(const std::string& caminho) {
  const int descritor = ::open(caminho.c_str(), O_RDONLY | O_CLOEXEC);
  if (descritor < 0) return 0;
  std::vector<char> bloco(1 << 20);
  std::uint64_t linhas = 0;
  char ultimo = '\n';
  for (;;) {
    const ssize_t lidos = ::read(descritor, bloco.data(), bloco.size());
    if (lidos <= 0) break;
    linhas += ContaQuebras(bloco.data(), static_cast<std::size_t>(lidos));
    ultimo = bloco[static_cast<std::size_t>(lidos) - 1];
  }
  ::close(descritor);
  return linhas + (ultimo != '\n' ? 1 : 0);
}

}  // namespace quorv::servico
