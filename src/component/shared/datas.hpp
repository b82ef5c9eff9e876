// Calendar dates as day serials (1899-12-30 is day 0), the form every date check compares.
#ifndef QUORVVALIDA_SRC_COMPONENT_SHARED_DATAS_HPP_
#define QUORVVALIDA_SRC_COMPONENT_SHARED_DATAS_HPP_

#include <optional>
#include <string_view>

#include "quorvvalida/relogio.hpp"

namespace quorv::datas {

// The day serial of a calendar date; empty when year (100 to 9999), month and day make no date.
std::optional<double> Serial(int ano, int mes, int dia);

// The date of a text read through the mask "0000/00/00": a numeric text becomes yyyy/mm/dd and
// counts when that is a calendar date. A text that is not numeric is never a date.
std::optional<double> DataDaMascara(std::string_view texto);

// The date of the text, 0 for a numeric text of value zero, -1 for anything else.
double ConverteData(std::string_view texto);

// Today from the host's clock, or from the machine's local calendar when none is set.
double Hoje(const Relogio& relogio);

}  // namespace quorv::datas

#endif  // QUORVVALIDA_SRC_COMPONENT_SHARED_DATAS_HPP_
