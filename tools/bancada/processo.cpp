#include "processo.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <stdexcept>

extern char** environ;  // NOLINT(readability-redundant-declaration): POSIX asks for it

namespace quorv::bancada {

Medida Executa(const std::vector<std::string>& argumentos) {
  std::vector<char*> argv;
  argv.reserve(argumentos.size() + 1);
  for (const std::string& argumento : argumentos)
    argv.push_back(const_cast<char*>(argumento.c_str()));
  argv.push_back(nullptr);

  posix_spawn_file_actions_t acoes;
  posix_spawn_file_actions_init(&acoes);
  posix_spawn_file_actions_addopen(&acoes, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&acoes, STDERR_FILENO, "/dev/null", O_WRONLY, 0);

  const auto inicio = std::chrono::steady_clock::now();
  pid_t pid = 0;
  const int erro = posix_spawnp(&pid, argv[0], &acoes, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&acoes);
  if (erro != 0) {
    throw std::runtime_error("não foi possível executar " + argumentos[0] + ": " +
                             std::strerror(erro));
  }
  int situacao = 0;
  rusage uso{};
  while (wait4(pid, &situacao, 0, &uso) < 0 && errno == EINTR) {
  }
  const auto fim = std::chrono::steady_clock::now();

  Medida medida;
  medida.segundos = std::chrono::duration<double>(fim - inicio).count();
  medida.memoriaKiB = uso.ru_maxrss;
  medida.codigo = WIFEXITED(situacao) ? WEXITSTATUS(situacao) : -1;
  return medida;
}

}  // namespace quorv::bancada
