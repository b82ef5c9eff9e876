// What the fuzz targets share: a working directory of the process, where each input is written
// as a file, and a stop that names the broken promise.
#ifndef QUORVVALIDA_FUZZ_APOIO_HPP_
#define QUORVVALIDA_FUZZ_APOIO_HPP_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quorv::fuzz {

// A directory made for this process on first use and removed with everything in it at exit.
const std::string& Diretorio();

// A path inside that directory.
std::string Caminho(std::string_view nome);

// Writes the bytes to the file, replacing it.
void Grava(const std::string& caminho, std::string_view bytes);

// The whole file as bytes; empty when it does not exist.
std::string Le(const std::string& caminho);

bool Existe(const std::string& caminho);

// Stops the process, saying which promise the input broke: the fuzzer keeps the input.
[[noreturn]] void Quebrou(const char* promessa);

// The input as bytes.
inline std::string_view Bytes(const std::uint8_t* dados, std::size_t tamanho) {
  return {reinterpret_cast<const char*>(dados), tamanho};
}

}  // namespace quorv::fuzz

#endif  // QUORVVALIDA_FUZZ_APOIO_HPP_
