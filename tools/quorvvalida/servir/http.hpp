// Small pieces of HTTP the service needs beyond what the HTTP library does.
#ifndef QUORVVALIDA_TOOLS_SERVIR_HTTP_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_HTTP_HPP_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorv::servico {

enum class Formato { kJson, kTexto };

// The answer's format by the request's Accept header: JSON unless the client prefers
// text/plain; nothing when it takes neither.
std::optional<Formato> NegociaFormato(const std::string& accept);

// A Content-Length as the request wrote it: digits only.
std::optional<std::uint64_t> LeComprimento(const std::string& texto);

// True when the path has a ".." segment.
bool TemSegmentoPai(std::string_view caminho);

// A text for a response header: bytes outside printable ASCII, '%' and '"' written as %XX.
std::string ParaCabecalho(std::string_view texto);

// A request id a client may choose: 1 to 128 letters, digits and . _ : -.
bool IdentificadorAceitavel(std::string_view id);

// A path as a log line may show it: at most 200 bytes, bytes outside printable ASCII as %XX.
std::string ParaRegistro(std::string_view caminho);

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_HTTP_HPP_
