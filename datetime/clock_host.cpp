// The host build's side of the date and time seams: the real local clock
// or a fixed one, and a two-digit year limit set by the tests.
#include <ctime>

#include "datetime/clock.h"
#include "datetime/clock_host.h"

namespace tv::plat {
namespace {
bool clockFixed = false, clockFails = false;
LocalTime fixedClock{};
LONG yearLimit = 35;
}  // namespace

bool CurrentLocalTime(LocalTime &out) {
  if (clockFails) return false;
  if (clockFixed) {
    out = fixedClock;
    return true;
  }
  std::time_t t = std::time(nullptr);
  std::tm tm{};
  if (!localtime_r(&t, &tm)) return false;
  out = {tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec};
  return true;
}

LONG YearExpansionLimit() { return yearLimit; }

namespace host {
void SetClock(int year, int month, int day, int hour, int minute, int second) {
  clockFixed = true;
  fixedClock = {year, month, day, hour, minute, second};
}
void UseRealClock() { clockFixed = false; }
void SetClockFails(bool fails) { clockFails = fails; }
void SetYearExpansionLimit(LONG limit) { yearLimit = limit; }
}  // namespace host
}  // namespace tv::plat
