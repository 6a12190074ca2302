// The date layer's seam: the platform clock and the two-digit year setting.
// clock_win32.cpp, clock_host.cpp (test controls in clock_host.h).
#pragma once

#include <tavona/tvbase.h>

namespace tv::plat {

// The local date and time of the platform clock (_time64 and
// _localtime64_s); false when the conversion fails.
struct LocalTime {
  int year, month, day, hour, minute, second;
};
bool CurrentLocalTime(LocalTime &out);

// The two-digit year limit, read from the settings at every call:
// HKEY_CURRENT_USER, the global parameters key, section "Year 2000", value
// "YearExpansionLimit", default 35.
LONG YearExpansionLimit();

}  // namespace tv::plat
