// Calendar dates as day serials (1899-12-30 is day 0), the form every date check compares.
#ifndef QUORVVALIDA_SRC_COMPONENT_SHARED_DATAS_HPP_
#define QUORVVALIDA_SRC_COMPONENT_SHARED_DATAS_HPP_

#include <optional>
#include <string_view>

#include "quorvvalida/relogio.hpp"

namespace quorv::datas {

namespace calendario {

constexpr bool Bissexto(int ano) {
  return (ano % 4 == 0 && ano % 100 != 0) || ano % 400 == 0;
}

constexpr int DiasDoMes(int ano, int mes) {
  constexpr int kDias[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return mes == 2 && Bissexto(ano) ? 29 : kDias[mes - 1];
}

// Days from 1970-01-01 to a date of the proleptic Gregorian calendar.
constexpr long DiasDesde1970(int ano, int mes, int dia) {
  const int a = mes <= 2 ? ano - 1 : ano;
  const int era = (a >= 0 ? a : a - 399) / 400;
  const int anoDaEra = a - era * 400;
  const int diaDoAno = (153 * (mes > 2 ? mes - 3 : mes + 9) + 2) / 5 + dia - 1;
  const int diaDaEra = anoDaEra * 365 + anoDaEra / 4 - anoDaEra / 100 + diaDoAno;
  return static_cast<long>(era) * 146097 + diaDaEra - 719468;
}

// Serial of 1970-01-01, from which the civil-day arithmetic counts.
constexpr long kSerialDe1970 = 25569;

}  // namespace calendario

// The day serial of a calendar date; empty when year (100 to 9999), month and day make no date.
// Worked out when the program is built for a date written in the code.
constexpr std::optional<double> Serial(int ano, int mes, int dia) {
  if (ano < 100 || ano > 9999 || mes < 1 || mes > 12 || dia < 1 ||
      dia > calendario::DiasDoMes(ano, mes)) {
    return std::nullopt;
  }
  return static_cast<double>(calendario::DiasDesde1970(ano, mes, dia) + calendario::kSerialDe1970);
}

// The date of a text read through the mask "0000/00/00": a numeric text becomes yyyy/mm/dd and
// counts when that is a calendar date. A text that is not numeric is never a date.
std::optional<double> DataDaMascara(std::string_view texto);

// The date of the text, 0 for a numeric text of value zero, -1 for anything else.
double ConverteData(std::string_view texto);

// Today from the host's clock, or from the machine's local calendar when none is set.
double Hoje(const Relogio& relogio);

}  // namespace quorv::datas

#endif  // QUORVVALIDA_SRC_COMPONENT_SHARED_DATAS_HPP_
