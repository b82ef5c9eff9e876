// The shared field routines over any text. Promise: an accepted CPF is never longer than 11
// characters (counted in the files' single-byte code page, as the text reaches the check).
#include <cstdint>
#include <string>

#include "apoio.hpp"
#include "component/shared/cp1252.hpp"
#include "quorvvalida/geral.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
  using namespace quorv;
  const std::string texto(fuzz::Bytes(dados, tamanho));
  static_cast<void>(ConverteLong(texto));
  static_cast<void>(ConverteDouble(texto));
  static_cast<void>(ConverteData(texto));
  static_cast<void>(ConfereDigitosCNPJ(texto));
  static_cast<void>(ConfereDigitosCPF(texto));
  static_cast<void>(ValidaInscricaoEstadual(texto, "QZ"));
  if (ValidaCPF(texto)) {
    if (cp1252::DeUtf8(texto).size() > 11) fuzz::Quebrou("CPF de mais de 11 caracteres aceito");
  }
  static_cast<void>(ValidaCNPJ(texto));
  return 0;
}
