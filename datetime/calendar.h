// Internal entry points of the calendar for the formats, the Windows record
// conversions and the tests.
#pragma once

#include <tavona/datetime.h>

#include <cstdint>

namespace tv {

// The two-digit year rule: 0 to 99 become 19xx above the limit read from
// the settings at this call, 20xx otherwise; other years are unchanged.
int ExpandTwoDigitYear(int year);

// File time value (100 ns units from 1601) of a record with the fixed
// one-hour difference, and back.
uint64_t FileTimeOfDate(const DateTimeStruct &r);
void DateOfFileTime(uint64_t fileTime, DateTimeStruct &r);

// Milliseconds from a to b within the day, in 32-bit arithmetic.
INT TimeOfDayDelta(int hourA, int minuteA, int secondA, int msA, int hourB, int minuteB,
                   int secondB, int msB);

}  // namespace tv
