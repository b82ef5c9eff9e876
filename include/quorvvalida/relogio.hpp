// The clock that tells the validators what day it is. Every date check that compares with today
// reads it once per run, so a host (or a test) can pin the day.
#ifndef QUORVVALIDA_RELOGIO_HPP_
#define QUORVVALIDA_RELOGIO_HPP_

#include <functional>

#include "quorvvalida/exportacao.h"

namespace quorv {

// Answers today's date as a day serial (1899-12-30 is day 0; whole days, no time of day).
using Relogio = std::function<double()>;

// Today's date on the machine's local calendar, as a day serial.
QUORVVALIDA_API double DataLocalDeHoje();

// The day serial of a calendar date; -1 when year (100 to 9999), month and day make no date.
QUORVVALIDA_API double SerialDaData(int ano, int mes, int dia);

}  // namespace quorv

#endif  // QUORVVALIDA_RELOGIO_HPP_
