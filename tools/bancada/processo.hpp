// Running a program as the benchmark measures it: wall time and peak resident memory.
#ifndef QUORVVALIDA_TOOLS_BANCADA_PROCESSO_HPP_
#define QUORVVALIDA_TOOLS_BANCADA_PROCESSO_HPP_

#include <string>
#include <vector>

namespace quorv::bancada {

// What one run of a program took.
struct Medida {
  // Wall-clock seconds from start to exit.
  double segundos = 0;
  // Peak resident memory of the process, in KiB.
  long memoriaKiB = 0;
  // Exit code, or -1 when the program did not exit normally.
  int codigo = -1;
};

// Runs the program with its arguments, its output sent to /dev/null, and waits for it; what it
// answers is its exit code.
// Throws std::runtime_error when it cannot be started.
Medida Executa(const std::vector<std::string>& argumentos);

}  // namespace quorv::bancada

#endif  // QUORVVALIDA_TOOLS_BANCADA_PROCESSO_HPP_
