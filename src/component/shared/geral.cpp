// The shared field routines as the host sees them: UTF-8 texts in, the single-byte routines of
// the validators underneath.
#include "quorvvalida/geral.hpp"

#include "component/shared/cp1252.hpp"
#include "component/shared/datas.hpp"
#include "component/shared/documentos.hpp"
#include "component/shared/texto.hpp"

namespace quorv {

int32_t ConverteLong(const std::string& texto) {
  return texto::InteiroOuMenosUm(texto);
}

double ConverteDouble(const std::string& texto) {
  return texto::NumeroOuMenosUm(texto);
}

double ConverteData(const std::string& texto) {
  return datas::ConverteData(texto);
}

bool ValidaCNPJ(const std::string& texto) {
  return documentos::ValidaCNPJ(cp1252::DeUtf8(texto));
}

bool ValidaCPF(const std::string& texto) {
  return documentos::ValidaCPF(cp1252::DeUtf8(texto));
}

bool ConfereDigitosCNPJ(const std::string& texto) {
  return documentos::ConfereDigitosCNPJ(cp1252::DeUtf8(texto));
}

bool ConfereDigitosCPF(const std::string& texto) {
  return documentos::ConfereDigitosCPF(cp1252::DeUtf8(texto));
}

}  // namespace quorv
