#include "component/shared/datas.hpp"

#include <ctime>
#include <string>

#include "component/shared/texto.hpp"

namespace quorv::datas {
namespace {

int Digitos(std::string_view texto) {
  int valor = 0;
  for (char c : texto)
    valor = valor * 10 + (c - '0');
  return valor;
}

// The date of eight digits, year, month and day.
std::optional<double> DataDosDigitos(std::string_view digitos) {
  return Serial(Digitos(digitos.substr(0, 4)), Digitos(digitos.substr(4, 2)),
                Digitos(digitos.substr(6, 2)));
}

}  // namespace

std::optional<double> DataDaMascara(std::string_view texto) {
  // Eight digits read through the mask stay as they are: the common case needs no mask.
  if (texto.size() == 8 && texto::SoDigitos(texto)) return DataDosDigitos(texto);
  if (!texto::EhNumerico(texto)) return std::nullopt;
  const std::string mascarado = texto::MascaraZeros(texto, 8);
  if (mascarado.size() != 8 || mascarado[0] == '-') return std::nullopt;
  return DataDosDigitos(mascarado);
}

double ConverteData(std::string_view texto) {
  if (const auto data = DataDaMascara(texto)) return *data;
  const auto numero = texto::Numero(texto);
  if (numero && *numero == 0) return 0;
  return -1;
}

double Hoje(const Relogio& relogio) {
  return relogio ? relogio() : DataLocalDeHoje();
}

}  // namespace quorv::datas

namespace quorv {

double SerialDaData(int ano, int mes, int dia) {
  return datas::Serial(ano, mes, dia).value_or(-1);
}

double DataLocalDeHoje() {
  const std::time_t agora = std::time(nullptr);
  std::tm local{};
#ifdef _WIN32
  localtime_s(&local, &agora);
#else
  localtime_r(&agora, &local);
#endif
  return SerialDaData(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
}

}  // namespace quorv
