#include "component/shared/datas.hpp"

#include <ctime>
#include <string>

#include "component/shared/texto.hpp"

namespace quorv::datas {
namespace {

// Serial of 1970-01-01, from which the civil-day arithmetic below counts.
constexpr long kSerialDe1970 = 25569;

bool Bissexto(int ano) {
  return (ano % 4 == 0 && ano % 100 != 0) || ano % 400 == 0;
}

int DiasDoMes(int ano, int mes) {
  static constexpr int kDias[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return mes == 2 && Bissexto(ano) ? 29 : kDias[mes - 1];
}

// Days from 1970-01-01 to a date of the proleptic Gregorian calendar.
long DiasDesde1970(int ano, int mes, int dia) {
  const int a = mes <= 2 ? ano - 1 : ano;
  const int era = (a >= 0 ? a : a - 399) / 400;
  const int anoDaEra = a - era * 400;
  const int diaDoAno = (153 * (mes > 2 ? mes - 3 : mes + 9) + 2) / 5 + dia - 1;
  const int diaDaEra = anoDaEra * 365 + anoDaEra / 4 - anoDaEra / 100 + diaDoAno;
  return static_cast<long>(era) * 146097 + diaDaEra - 719468;
}

int Digitos(std::string_view texto) {
  int valor = 0;
  for (char c : texto)
    valor = valor * 10 + (c - '0');
  return valor;
}

}  // namespace

std::optional<double> Serial(int ano, int mes, int dia) {
  if (ano < 100 || ano > 9999 || mes < 1 || mes > 12 || dia < 1 || dia > DiasDoMes(ano, mes)) {
    return std::nullopt;
  }
  return static_cast<double>(DiasDesde1970(ano, mes, dia) + kSerialDe1970);
}

std::optional<double> DataDaMascara(std::string_view texto) {
  if (!texto::EhNumerico(texto)) return std::nullopt;
  const std::string mascarado = texto::MascaraZeros(texto, 8);
  if (mascarado.size() != 8 || mascarado[0] == '-') return std::nullopt;
  const std::string_view d = mascarado;
  return Serial(Digitos(d.substr(0, 4)), Digitos(d.substr(4, 2)), Digitos(d.substr(6, 2)));
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
