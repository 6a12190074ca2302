// Day numbers, formatting and parsing of dates against plain code doing
// the same work: a textbook civil-date conversion, swprintf and swscanf.
#include <tavona/datetime.h>

#include <cstdio>
#include <cwchar>
#include <vector>

#include "bench.h"

namespace {

constexpr int kDates = 1000000;
volatile long long sink;

// Days from 1 January 1600 of a valid date: the textbook conversion.
int PlainDays(int y, int m, int d) {
  static const int before[12] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
  bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
  int p = y - 1600;
  int leaps = p == 0 ? 0 : (p - 1) / 4 - (p - 1) / 100 + (p - 1) / 400 + 1;
  return 365 * p + leaps + before[m - 1] + (m > 2 && leap) + d - 1;
}

// Its inverse by estimate and correction.
void PlainDate(int n, DateTimeStruct &r) {
  int y = 1600 + n / 366;
  while (PlainDays(y + 1, 1, 1) <= n) ++y;
  bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
  static const int len[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  int rest = n - PlainDays(y, 1, 1), m = 0;
  while (rest >= len[m] + (m == 1 && leap)) rest -= len[m] + (m == 1 && leap), ++m;
  r = {rest + 1, m + 1, y, 0, 0, 0};
}

// The documented walk: whole centuries, then years, then months.
void WalkDate(int n, DateTimeStruct &r) {
  r = {1, 1, 1600, 0, 0, 0};
  if (n < 1) return;
  if (n >= 36525)
    for (int century = 36525; n >= century; century = Get_CenturyLng(r.year))
      n -= century, r.year += 100;
  while (n >= Get_YearLng(r.year)) n -= Get_YearLng(r.year), ++r.year;
  while (n >= Get_MonthLng(r.year, r.month)) n -= Get_MonthLng(r.year, r.month), ++r.month;
  r.day = n + 1;
}

}  // namespace

// No limits: the ratios are for reading, not for failing the run.
int main() {
  std::vector<DateTimeStruct> dates(kDates);
  for (int i = 0; i < kDates; ++i) Get_DateSinceBaseDate(i * 3, &dates[i]);

  bench::Compare(
      "Get_DaysSinceBaseDate, a million dates",
      [&] {
        long long s = 0;
        for (const DateTimeStruct &d : dates) s += Get_DaysSinceBaseDate(&d);
        sink = s;
      },
      [&] {
        long long s = 0;
        for (const DateTimeStruct &d : dates) s += PlainDays(d.year, d.month, d.day);
        sink = s;
      });
  auto libraryDates = [&] {
    long long s = 0;
    DateTimeStruct r;
    for (int i = 0; i < kDates; ++i) Get_DateSinceBaseDate(i * 3, &r), s += r.day;
    sink = s;
  };
  bench::Compare(
      "Get_DateSinceBaseDate, a million day numbers", libraryDates,
      [&] {
        long long s = 0;
        DateTimeStruct r;
        for (int i = 0; i < kDates; ++i) PlainDate(i * 3, r), s += r.day;
        sink = s;
      });

  // What the constant time saves: the century, year and month walk.
  bench::Compare(
      "Get_DateSinceBaseDate against the century/year/month walk, a million day numbers",
      libraryDates,
      [&] {
        long long s = 0;
        DateTimeStruct r;
        for (int i = 0; i < kDates; ++i) WalkDate(i * 3, r), s += r.day;
        sink = s;
      });

  std::vector<WCHAR> texts(static_cast<size_t>(kDates) * 16);
  bench::Compare(
      "DateTimeStruct_To_FormattedDateTime, default format, a million dates",
      [&] {
        for (int i = 0; i < kDates; ++i)
          DateTimeStruct_To_FormattedDateTime(&dates[i], &texts[i * 16], 16, nullptr);
      },
      [&] {
        for (int i = 0; i < kDates; ++i)
          swprintf(&texts[i * 16], 16, L"%02d.%02d.%04d", dates[i].day, dates[i].month,
                   dates[i].year);
      });
  bench::Compare(
      "FormattedDateTime_To_DateTimeStruct, default format, a million dates",
      [&] {
        long long s = 0;
        DateTimeStruct r;
        for (int i = 0; i < kDates; ++i)
          s += FormattedDateTime_To_DateTimeStruct(&texts[i * 16], &r, nullptr) + r.day;
        sink = s;
      },
      [&] {
        long long s = 0;
        int d, m, y;
        for (int i = 0; i < kDates; ++i)
          s += swscanf(&texts[i * 16], L"%02d.%02d.%04d", &d, &m, &y) + d;
        sink = s;
      });
  return bench::ExitCode();
}
