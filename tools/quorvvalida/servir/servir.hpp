// "quorvvalida servir": the validation service's command.
#ifndef QUORVVALIDA_TOOLS_SERVIR_SERVIR_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_SERVIR_HPP_

namespace quorv::servico {

// Runs the service with the command's own arguments (argv[0] is "servir"); the exit code.
int Servir(int argc, char** argv);

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_SERVIR_HPP_
