// The platform-free halves of the file time and time-of-day conversions.
#include <gtest/gtest.h>

#include <climits>

#include "datetest.h"
#include "datetime/calendar.h"
#include "datetime/clock_host.h"

TEST(DatesInternal, FileTimesKeepTheFixedHour) {
  struct Row { DateTimeStruct r; uint64_t fileTime; };
  const Row rows[] = {
      {Dt(1601, 1, 1, 1, 0, 0), 0},
      // 1 January 1970 00:00 is 116444736000000000; the record is one hour on.
      {Dt(1970, 1, 1, 1, 0, 0), 116444736000000000ull},
      {Dt(9999, 12, 31, 23, 59, 59), 2650467707990000000ull},
  };
  for (const Row &row : rows) {
    EXPECT_EQ(tv::FileTimeOfDate(row.r), row.fileTime) << row.r.year;
    DateTimeStruct back{};
    tv::DateOfFileTime(row.fileTime, back);
    EXPECT_EQ(tv::FileTimeOfDate(back), row.fileTime) << row.r.year;
    EXPECT_EQ(back.hour, row.r.hour);
    EXPECT_EQ(back.second, row.r.second);
  }
  // The largest file time still lands on a date, without overflow.
  DateTimeStruct r{};
  tv::DateOfFileTime(UINT64_MAX, r);
  EXPECT_GT(r.year, 9999);
}

TEST(DatesInternal, TimeOfDayDeltaIgnoresTheDate) {
  EXPECT_EQ(tv::TimeOfDayDelta(10, 0, 0, 0, 10, 0, 1, 250), 1250);
  EXPECT_EQ(tv::TimeOfDayDelta(23, 59, 59, 999, 0, 0, 0, 0), -86399999);
  // 32-bit wrap-around instead of undefined behaviour.
  EXPECT_EQ(tv::TimeOfDayDelta(0, 0, 0, 0, 65535, 65535, 65535, 65535),
            static_cast<INT>((65535u * 3600u + 65535u * 60u + 65535u) * 1000u + 65535u));
}

// Years up to the limit are in the 2000s, the others in the 1900s; other
// numbers stand.
TEST(DatesInternal, TwoDigitYears) {
  struct Row { LONG limit; int two, expect; };
  const Row rows[] = {{35, 0, 2000}, {35, 35, 2035}, {35, 36, 1936}, {35, 100, 100}, {35, -1, -1},
                      {50, 51, 1951}, {-1, 0, 1900}, {99, 99, 2099}, {0, 1, 1901}};
  for (const Row &r : rows) {
    tv::plat::host::SetYearExpansionLimit(r.limit);
    EXPECT_EQ(tv::ExpandTwoDigitYear(r.two), r.expect) << "limit " << r.limit << ", year " << r.two;
  }
  tv::plat::host::SetYearExpansionLimit(35);
}
