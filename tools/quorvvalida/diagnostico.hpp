// Why a file fails in a way a person can fix at once: its encoding (UTF-8, UTF-16, a byte-order
// mark), its line ends, or its kind. Told in one line with the command that fixes it, besides
// the warnings, which stay what the library wrote.
#ifndef QUORVVALIDA_TOOLS_DIAGNOSTICO_HPP_
#define QUORVVALIDA_TOOLS_DIAGNOSTICO_HPP_

#include <optional>
#include <string>

#include "resultados.hpp"
#include "tipo_arquivo.hpp"

namespace quorv::ferramenta {

// Looks at the file validated as `tipo`: its first bytes, its first line's end, the first line
// whose length is not the kind's, and its last bytes. Reads at most the first 64 MiB. Empty when
// nothing of the kind is found.
std::optional<Diagnostico> Diagnostica(const std::string& caminho, Tipo tipo);

// The text quoted for a POSIX shell, so that a command shown can be pasted as it is.
std::string AspasDoShell(const std::string& texto);

}  // namespace quorv::ferramenta

#endif  // QUORVVALIDA_TOOLS_DIAGNOSTICO_HPP_
