// The shared field routines over any text. Promises: a CPF is never longer than 11 characters;
// the check digits of a number that the wrappers accept are right.
#include <cstdint>
#include <string>

#include "apoio.hpp"
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
    if (texto.size() > 11) fuzz::Quebrou("CPF de mais de 11 caracteres aceito");
  }
  static_cast<void>(ValidaCNPJ(texto));
  return 0;
}
