// The clock that tells the validators what day it is. Every date check that compares with today
// reads it once per run, so a host (or a test) can pin the day.
#ifndef QUORVVALIDA_RELOGIO_HPP_
#define QUORVVALIDA_RELOGIO_HPP_

#include <functional>

namespace quorv {

// Answers today's date as a day serial (1899-12-30 is day 0; whole days, no time of day).
using Relogio = std::function<double()>;

// Today's date on the machine's local calendar, as a day serial.
double DataLocalDeHoje();

// The day serial of a calendar date; -1 when year (100 to 9999), month and day make no date.
double SerialDaData(int ano, int mes, int dia);

}  // namespace quorv

#endif  // QUORVVALIDA_RELOGIO_HPP_
