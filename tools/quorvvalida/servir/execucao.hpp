// What a request's run needs around the tool's own commands: a working directory of its own for
// the thread that serves it.
#ifndef QUORVVALIDA_TOOLS_SERVIR_EXECUCAO_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_EXECUCAO_HPP_

#include <string>

namespace quorv::servico {

// Makes the calling thread's working directory its own (asked once per thread) and moves it to
// `diretorio`: the request then runs there as the tool runs in the current directory, and its
// answers name the files as the tool names them ("./ADVERTENCIAS.TXT"), never by a path of the
// server. False when the thread cannot have a directory of its own or cannot go there.
bool EntraNoDiretorio(const std::string& diretorio);

// True when threads can have working directories of their own on this system.
bool DiretoriosPorFio(std::string& erro);

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_EXECUCAO_HPP_
