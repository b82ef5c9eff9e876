// The invoice warnings reader (private to the library) over any bytes.
#include <cstdint>

#include "invoices/messages/cls_quorv_adv_bd.hpp"
#include "leitor.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
  quorv::fuzz::Percorre<quorv::clsQuorvAdvBD>(quorv::fuzz::Bytes(dados, tamanho), 2, 20);
  return 0;
}
