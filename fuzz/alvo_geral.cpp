// The shared field routines over any text. Promises: an accepted CPF is never longer than 11
// characters (counted in the files' single-byte code page, as the text reaches the check); a
// number reads the same by the short way for plain digits as by the full reading.
#include <cstdint>
#include <string>

#include "apoio.hpp"
#include "component/shared/cp1252.hpp"
#include "component/shared/texto.hpp"
#include "quorvvalida/geral.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
  using namespace quorv;
  const std::string entrada(fuzz::Bytes(dados, tamanho));
  static_cast<void>(ConverteLong(entrada));
  static_cast<void>(ConverteDouble(entrada));
  static_cast<void>(ConverteData(entrada));
  static_cast<void>(ConfereDigitosCNPJ(entrada));
  static_cast<void>(ConfereDigitosCPF(entrada));
  static_cast<void>(ValidaInscricaoEstadual(entrada, "QZ"));
  if (ValidaCPF(entrada)) {
    if (cp1252::DeUtf8(entrada).size() > 11) fuzz::Quebrou("CPF de mais de 11 caracteres aceito");
  }
  static_cast<void>(ValidaCNPJ(entrada));
  if (texto::Numero(entrada) != texto::NumeroEscrito(entrada)) {
    fuzz::Quebrou("número lido de um modo pelo caminho curto e de outro pela leitura inteira");
  }
  return 0;
}
