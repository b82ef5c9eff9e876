// What a request's run needs around the tool's own commands: a working directory of its own for
// the thread that serves it, and the count of a file's lines.
#ifndef QUORVVALIDA_TOOLS_SERVIR_EXECUCAO_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_EXECUCAO_HPP_

#include <cstddef>
#include <cstdint>
#include <string>

namespace quorv::servico {

// Makes the calling thread's working directory its own (asked once per thread) and moves it to
// `diretorio`: the request then runs there as the tool runs in the current directory, and its
// answers name the files as the tool names them ("./ADVERTENCIAS.TXT"), never by a path of the
// server. False when the thread cannot have a directory of its own or cannot go there.
bool EntraNoDiretorio(const std::string& diretorio);

// True when threads can have working directories of their own on this system.
bool DiretoriosPorFio(std::string& erro);

// The line feeds in a block of bytes.
std::uint64_t ContaQuebras(const char* dados, std::size_t tamanho);

// Lines of a file (its line feeds, one more when the last line has none); 0 when it is missing.
std::uint64_t ContaLinhas(const std::string& caminho);

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_EXECUCAO_HPP_
