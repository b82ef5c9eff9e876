#include "execucao.hpp"

#include <sched.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <thread>

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

}  // namespace quorv::servico
