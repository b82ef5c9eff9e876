// The form warnings reader over any bytes.
#include <cstdint>

#include "leitor.hpp"
#include "quorvvalida/cls_quorv_adv_bd_fichas.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
  quorv::fuzz::Percorre<quorv::clsQuorvAdvBDFichas>(quorv::fuzz::Bytes(dados, tamanho), 3, 10);
  return 0;
}
