// Test controls of the host date seam.
#pragma once

#include <tavona/tvbase.h>

namespace tv::plat::host {

// A fixed clock for CurrentLocalTime, the real local time again, or a
// clock whose conversion fails.
void SetClock(int year, int month, int day, int hour, int minute, int second);
void UseRealClock();
void SetClockFails(bool fails);
// The value YearExpansionLimit answers (35 until set).
void SetYearExpansionLimit(LONG limit);

}  // namespace tv::plat::host
