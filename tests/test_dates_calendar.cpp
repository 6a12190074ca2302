// The calendar of DateTimeStruct: day numbers over the whole range and
// beyond, offsets against the month-by-month walk, validity, Easter.
#include <gtest/gtest.h>
#include <tavona/datetime.h>

#include <climits>
#include <cstdint>

#include "datetest.h"
#include "testutil.h"
#ifndef _WIN32
#include "datetime/clock_host.h"
#endif

// Every day of 1600 to 9999, forwards: the day number counts up by one, the
// date is the next day of the day before, the weekday turns by one.
TEST(Calendar, EveryDayRoundTrips) {
  DateTimeStruct end = Dt(9999, 12, 31), expect = Dt(1600, 1, 1);
  const int last = Get_DaysSinceBaseDate(&end);
  ASSERT_EQ(last, 3068036);
  for (int n = 0; n <= last; ++n) {
    DateTimeStruct got{};
    Get_DateSinceBaseDate(n, &got);
    ASSERT_TRUE(Same(got, expect) && Get_DaysSinceBaseDate(&got) == n && Get_Weekday(&got) == (n + 6) % 7)
        << "day " << n << ": got " << Show(got) << " (number " << Get_DaysSinceBaseDate(&got)
        << ", weekday " << Get_Weekday(&got) << ") expected " << Show(expect);
    if (++expect.day > Get_MonthLng(expect.year, expect.month)) {
      expect.day = 1;
      if (++expect.month > 12) expect.month = 1, ++expect.year;
    }
  }
}

// Beyond the days walked above: invalid dates count as day 0, the time is
// not looked at, a day number before the base is the base, and after 9999
// the numbers go on into later years.
TEST(Calendar, DayNumbersBeyondTheRange) {
  struct Row { DateTimeStruct date; int days, weekday; };
  const Row rows[] = {
      {Dt(1900, 2, 29), 0, 6}, {Dt(1599, 12, 31), 0, 6}, {Dt(10000, 1, 1), 0, 6},
      {Dt(2015, 4, 0), 0, 6},  {Dt(9999, 12, 31, 99, -1, 70), 3068036, 5},
  };
  for (const Row &r : rows) {
    EXPECT_EQ(Get_DaysSinceBaseDate(&r.date), r.days) << Show(r.date);
    EXPECT_EQ(Get_Weekday(&r.date), r.weekday) << Show(r.date);
  }
  struct Back { int days; DateTimeStruct date; };
  const Back backs[] = {{INT_MIN, Dt(1600, 1, 1)}, {3068037, Dt(10000, 1, 1)}, {INT_MAX, Dt(5881210, 7, 11)}};
  for (const Back &b : backs) {
    DateTimeStruct got = Dt(1, 2, 3, 4, 5, 6);
    Get_DateSinceBaseDate(b.days, &got);
    EXPECT_EQ(Show(got), Show(b.date)) << b.days;
  }
}

TEST(Calendar, LengthsValidityAndComparison) {
  // Real months are walked above; the others have 30 days.
  for (int month : {13, 0, INT_MIN}) EXPECT_EQ(Get_MonthLng(2000, month), 30) << month;

  // flags: 1 months of 30 days, 2 date only, 4 time only
  struct Check { DateTimeStruct r; UINT flags; int expect; };
  const Check checks[] = {
      {Dt(2015, 1, 31), 0, 1},       {Dt(2015, 1, 31), 1, 0},  {Dt(2015, 2, 30), 1, 1},
      {Dt(2015, 2, 30), 0, 0},       {Dt(2015, 2, 30), 4, 1},  {Dt(2015, 1, 1, 24), 0, 0},
      {Dt(2015, 1, 1, 24), 2, 1},    {Dt(2015, 1, 1, 0, 60), 0, 0}, {Dt(2015, 0, 1), 2, 0},
      {Dt(1599, 12, 31), 2, 0},      {Dt(9999, 12, 31), 2, 1}, {Dt(10000, 1, 1), 2, 0},
      {Dt(0, 0, 0, -1), 6, 1},
  };
  for (const Check &c : checks)
    EXPECT_EQ(Tavona_VerifyDateTime(&c.r, c.flags), c.expect) << Show(c.r) << " flags " << c.flags;

  struct Cmp { DateTimeStruct a, b; int expect; };
  const Cmp cmps[] = {
      {Dt(2015, 1, 1), Dt(2015, 1, 1), 0},  {Dt(2015, 2, 1), Dt(2015, 1, 31), 1},
      {Dt(2015, 1, 1, INT_MIN), Dt(2015, 1, 1, INT_MAX), -1},  // signed, not validated
  };
  for (const Cmp &r : cmps)
    EXPECT_EQ(CompareDateTimeStructs(&r.a, &r.b), r.expect) << Show(r.a) << " vs " << Show(r.b);

  const DateTimeStruct neg = Dt(0, 0, 0, -1, 0, 0);
  EXPECT_EQ(Get_SecondsSinceMidnight(&neg), 0u - 3600u);  // not validated
  DateTimeStruct o = Dt(1, -2, 3, INT_MIN, 0, -7);
  EXPECT_EQ(Tavona_InvertDateTimeOffset(&o), 7);
  EXPECT_TRUE(Same(o, Dt(-1, 2, -3, INT_MIN, 0, 7))) << Show(o);
}

TEST(Calendar, OffsetsCarryOnceAndBorrowTheMonthLeft) {
  struct Row { DateTimeStruct r, o, expect; const char *what; };
  const Row rows[] = {
      {Dt(2015, 3, 1), Dt(0, 0, -3), Dt(2015, 2, 29), "borrows March's 31 days"},
      {Dt(2015, 3, 1), Dt(0, 0, -1), Dt(2015, 3, 0), "day 0 is kept"},
      {Dt(2015, 1, 31), Dt(0, 1, 0), Dt(2015, 2, 31), "the day is not re-checked"},
      {Dt(2015, 6, 15), Dt(5, 0, 0), Dt(2015, 6, 15), "the offset's year is unused"},
      {Dt(2015, 12, 15), Dt(0, 1, 0), Dt(2016, 1, 15), "month carries into the year"},
      {Dt(2015, 1, 1, 23, 59, 59), Dt(0, 0, 0, 0, 0, 1), Dt(2015, 1, 2, 0, 0, 0), "seconds up"},
      {Dt(2015, 1, 1, 0, 0, 0), Dt(0, 0, 0, 0, 0, 150), Dt(2015, 1, 1, 0, 1, 90),
       "a single carry only"},
      {Dt(2015, 6, 15), Dt(0, 0, 3000000), Dt(10229, 3, 5), "many 400-year cycles"},
      {Dt(2015, -3, 40), Dt(0, 0, 100), Dt(2015, 1, 20), "months below 1 have 30 days"},
      {Dt(2015, 15, 10), Dt(0, -20, 5, -23, -59, -59), Dt(2014, 7, 14, 0, 0, 1),
       "one borrow per field"},
      {Dt(2015, 1, 1), Dt(0, 0, 0, -23, 59, 59), Dt(2015, 1, 0, 1, 59, 59), "hours borrow a day"},
  };
  for (const Row &row : rows) {
    DateTimeStruct r = row.r;
    Tavona_AddDateTimeOffset(&r, &row.o);
    EXPECT_EQ(Show(r), Show(row.expect)) << row.what << ": " << Show(row.r) << " + " << Show(row.o);
  }
}

// Knuth's steps against the anonymous Gregorian algorithm (Meeus) for every
// year they both cover.
TEST(Calendar, EasterSunday) {
  for (int y = 1583; y <= 9999; ++y) {
    int a = y % 19, b = y / 100, c = y % 100, d = b / 4, e = b % 4, f = (b + 8) / 25;
    int g = (b - f + 1) / 3, h = (19 * a + b - d - g + 15) % 30, i = c / 4, k = c % 4;
    int l = (32 + 2 * e + 2 * i - h - k) % 7, m = (a + 11 * h + 22 * l) / 451;
    int month = (h + l - 7 * m + 114) / 31, day = (h + l - 7 * m + 114) % 31 + 1;
    DateTimeStruct r = Dt(1, 1, 1, 5, 5, 5);
    ASSERT_EQ(Tavona_ComputeEasterSunday(y, &r), 0);
    ASSERT_TRUE(Same(r, Dt(y, month, day))) << y << ": " << Show(r);
  }
}

#ifndef _WIN32
TEST(Calendar, ClockAndTimeSince) {
  tv::plat::host::SetClock(2016, 3, 1, 0, 0, 30);
  // One day and one minute back from 1 March: the day -1 borrows the 31
  // days of March, the month being left.
  DateTimeStruct since{}, offset = Dt(0, 0, 1, 0, 1, 0);
  Tavona_GetTimeSince(&offset, &since);
  EXPECT_TRUE(Same(since, Dt(2016, 2, 30, 23, 59, 30))) << Show(since);
  EXPECT_TRUE(Same(offset, Dt(0, 0, 1, 0, 1, 0))) << "the offset is left alone";
  tv::plat::host::SetClockFails(true);
  DateTimeStruct r{};
  Get_CurrentDateAndTime(&r);
  EXPECT_TRUE(Same(r, Dt(1900, 1, 1))) << Show(r);
  tv::plat::host::SetClockFails(false);
  tv::plat::host::UseRealClock();
}
#else
// The real clock (the file time exports and Tavona_GetTimeSince wrap
// routines tested elsewhere).
TEST(Calendar, Clock) {
  DateTimeStruct r{};
  Get_CurrentDateAndTime(&r);
  SYSTEMTIME st;
  GetLocalTime(&st);
  DateTimeStruct local = Dt(st.wYear, st.wMonth, st.wDay, st.wHour, st.wMinute, st.wSecond);
  EXPECT_LE(Get_DaysSinceBaseDate(&local) - Get_DaysSinceBaseDate(&r), 1) << Show(r);
}
#endif
