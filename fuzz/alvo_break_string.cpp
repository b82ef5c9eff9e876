// BreakString of the web facade: the first two bytes give the piece, the next two the width
// (both 16-bit, any sign), the rest is the text. Promises: a piece has no blank at either end, and
// a text without a blank gives nothing.
#include <cstdint>
#include <string>

#include "apoio.hpp"
#include "quorvvalida/validacao_tarnweb.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
  if (tamanho < 4) return 0;
  const auto pedaco = static_cast<int16_t>(static_cast<std::uint16_t>(dados[0] | (dados[1] << 8)));
  const auto largura = static_cast<int16_t>(static_cast<std::uint16_t>(dados[2] | (dados[3] << 8)));
  const std::string texto(quorv::fuzz::Bytes(dados + 4, tamanho - 4));
  const quorv::ValidacaoTarnWEB web;
  const std::string resultado = web.BreakString(texto, pedaco, largura);
  if (!resultado.empty() && (resultado.front() == ' ' || resultado.back() == ' ')) {
    quorv::fuzz::Quebrou("pedaço com branco na ponta");
  }
  if (texto.find(' ') == std::string::npos && !resultado.empty()) {
    quorv::fuzz::Quebrou("texto sem branco deu um pedaço");
  }
  return 0;
}
