// The calendar of DateTimeStruct: day numbers from 1 January 1600, month and
// year lengths, validity, offsets, Easter and the file time link.
#include "datetime/calendar.h"

#include "datetime/clock.h"
#include "frame/platform.h"

#include <cstdint>

static_assert(sizeof(DateTimeStruct) == 24, "six 32-bit fields on every platform");

namespace {

constexpr int kBaseYear = 1600;
constexpr int kCycleDays = 146097;  // days of 400 Gregorian years
// Days from 1 March of year 0 (where the civil conversion starts its
// 400-year eras) to 1 January 1600.
constexpr int64_t kBaseFromEra = 584328;

constexpr int kMonthDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr int kDaysBefore[12] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};

// Fields may hold anything; sums wrap like the 32-bit machine arithmetic
// instead of being undefined.
INT Wrap(int64_t v) { return static_cast<INT>(static_cast<uint32_t>(static_cast<uint64_t>(v))); }

bool IsLeap(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int MonthLength(int year, int month) {
  if (month < 1 || month > 12) return 30;
  return month == 2 && IsLeap(year) ? 29 : kMonthDays[month - 1];
}

bool DateValid(const DateTimeStruct &r, bool thirtyDayMonths) {
  if (r.year < kBaseYear || r.year > 9999 || r.month < 1 || r.month > 12 || r.day < 1) return false;
  return r.day <= (thirtyDayMonths ? 30 : MonthLength(r.year, r.month));
}

bool TimeValid(const DateTimeStruct &r) {
  return r.hour >= 0 && r.hour <= 23 && r.minute >= 0 && r.minute <= 59 && r.second >= 0 &&
         r.second <= 59;
}

// Seconds, minutes and hours of an offset: one field added with at most one
// carry into the next.
void AddWithCarry(INT &field, INT add, int base, INT &next) {
  field = Wrap(int64_t{field} + add);
  if (field >= base) {
    field -= base;
    next = Wrap(int64_t{next} + 1);
  }
  if (field < 0) {
    field += base;
    next = Wrap(int64_t{next} - 1);
  }
}

// After the carries, the month walk: forwards while the day
// exceeds its month, backwards while it is negative. Whole 400-year cycles
// (and runs of 30-day months outside 1 to 12) are taken at once; the result
// is that of walking month by month.
void NormaliseDay(DateTimeStruct &r) {
  while (r.day > MonthLength(r.year, r.month)) {
    if (r.month < 1 && r.day > 30) {
      int64_t n = (int64_t{r.day} - 1) / 30;
      if (n > 1 - int64_t{r.month}) n = 1 - int64_t{r.month};
      if (n > 1) {
        r.month = Wrap(r.month + n - 1);
        r.day = Wrap(r.day - 30 * (n - 1));
        continue;
      }
    }
    // Never across the wrap of the year, where the leap years lose step.
    int64_t cycles = r.day > kCycleDays + 31 ? (int64_t{r.day} - 32) / kCycleDays : 0;
    if (cycles > (int64_t{INT32_MAX} - r.year) / 400) cycles = (int64_t{INT32_MAX} - r.year) / 400;
    if (r.month >= 1 && r.month <= 12 && cycles > 0) {
      r.day = Wrap(r.day - cycles * kCycleDays);
      r.year = Wrap(r.year + cycles * 400);
      continue;
    }
    r.day -= MonthLength(r.year, r.month);
    r.month = Wrap(int64_t{r.month} + 1);
    if (r.month > 12) {
      r.month = 1;
      r.year = Wrap(int64_t{r.year} + 1);
    }
  }
  while (r.day < 0) {
    if (r.month > 12) {
      int64_t n = (-int64_t{r.day} + 29) / 30;
      if (n > int64_t{r.month} - 12) n = int64_t{r.month} - 12;
      r.day = Wrap(r.day + 30 * n);
      r.month = Wrap(r.month - n);
      continue;
    }
    int64_t cycles = -int64_t{r.day} / kCycleDays;
    if (cycles > (int64_t{r.year} - INT32_MIN) / 400) cycles = (int64_t{r.year} - INT32_MIN) / 400;
    if (r.month >= 1 && cycles > 0) {
      r.day = Wrap(r.day + cycles * kCycleDays);
      r.year = Wrap(r.year - cycles * 400);
      continue;
    }
    r.day += MonthLength(r.year, r.month);
    r.month = Wrap(int64_t{r.month} - 1);
    if (r.month < 1) {
      r.month = 12;
      r.year = Wrap(int64_t{r.year} - 1);
    }
  }
}

}  // namespace

namespace tv {

int ExpandTwoDigitYear(int year) {
  if (year < 0 || year > 99) return year;
  return year + (year > plat::YearExpansionLimit() ? 1900 : 2000);
}

uint64_t FileTimeOfDate(const DateTimeStruct &r) {
  int64_t days = int64_t{Get_DaysSinceBaseDate(&r)} - 366;
  int64_t minutes = (days * 24 + r.hour) * 60 + r.minute - 60;
  uint64_t seconds = static_cast<uint64_t>(minutes) * 60 + static_cast<uint64_t>(int64_t{r.second});
  return seconds * 10000000u;
}

void DateOfFileTime(uint64_t fileTime, DateTimeStruct &r) {
  uint64_t seconds = fileTime / 10000000u + 3600;
  uint64_t minutes = seconds / 60, hours = minutes / 60, days = hours / 24;
  Get_DateSinceBaseDate(static_cast<INT>(days + 366), &r);
  r.hour = static_cast<INT>(hours % 24);
  r.minute = static_cast<INT>(minutes % 60);
  r.second = static_cast<INT>(seconds % 60);
}

INT TimeOfDayDelta(int hourA, int minuteA, int secondA, int msA, int hourB, int minuteB,
                   int secondB, int msB) {
  uint32_t s = (static_cast<uint32_t>(hourB - hourA) * 60 + static_cast<uint32_t>(minuteB - minuteA)) * 60 +
               static_cast<uint32_t>(secondB - secondA);
  return static_cast<INT>(s * 1000 + static_cast<uint32_t>(msB - msA));
}

}  // namespace tv

extern "C" {

INT WINAPI Tavona_SetDateTimeStruct(DateTimeStruct *r, INT year, INT month, INT day, INT hour,
                                    INT minute, INT second) {
  if (!r) return second;
  *r = {day, month, year, hour, minute, second};
  return second;
}

void WINAPI Get_CurrentDateAndTime(DateTimeStruct *r) {
  if (!r) return;
  tv::plat::LocalTime now;
  if (tv::plat::CurrentLocalTime(now))
    *r = {now.day, now.month, now.year, now.hour, now.minute, now.second};
  else
    *r = {1, 1, 1900, 0, 0, 0};
}

INT WINAPI Get_DaysSinceBaseDate(const DateTimeStruct *r) {
  if (!r || !DateValid(*r, false)) return 0;
  int d = r->day - 1 + kDaysBefore[r->month - 1] + (r->month > 2 && IsLeap(r->year) ? 1 : 0);
  if (r->year == kBaseYear) return d;
  int y = r->year - 1601;
  return d + 365 * (r->year - kBaseYear) + 1 + y / 4 - y / 100 + y / 400;
}

// The civil conversion over 400-year eras that start on 1 March, which puts
// the leap day at the end of each year.
void WINAPI Get_DateSinceBaseDate(INT days, DateTimeStruct *r) {
  if (!r) return;
  *r = {1, 1, kBaseYear, 0, 0, 0};
  if (days < 1) return;
  int64_t z = days + kBaseFromEra;
  int64_t era = z / kCycleDays;
  int64_t doe = z - era * kCycleDays;
  int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  int64_t mp = (5 * doy + 2) / 153;
  int month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  r->day = static_cast<INT>(doy - (153 * mp + 2) / 5 + 1);
  r->month = month;
  r->year = static_cast<INT>(yoe + era * 400 + (month <= 2 ? 1 : 0));
}

INT WINAPI Get_Weekday(const DateTimeStruct *r) {
  return static_cast<INT>((int64_t{Get_DaysSinceBaseDate(r)} + 6) % 7);
}

INT WINAPI Get_YearLng(INT year) { return IsLeap(year) ? 366 : 365; }

INT WINAPI Get_MonthLng(INT year, INT month) { return MonthLength(year, month); }

INT WINAPI Get_CenturyLng(INT year) { return year % 400 == 0 ? 36525 : 36524; }

UINT WINAPI Get_SecondsSinceMidnight(const DateTimeStruct *r) {
  if (!r) return 0;
  return static_cast<UINT>(r->hour) * 3600u + static_cast<UINT>(r->minute) * 60u +
         static_cast<UINT>(r->second);
}

INT WINAPI Is_Date_Correct(const DateTimeStruct *r) { return r && DateValid(*r, false) ? 1 : 0; }

INT WINAPI Is_Time_Correct(const DateTimeStruct *r) { return r && TimeValid(*r) ? 1 : 0; }

INT WINAPI Tavona_VerifyDateTime(const DateTimeStruct *r, UINT flags) {
  if (!r) return 0;
  if (!(flags & TAVONA_VERIFY_NO_DATE) && !DateValid(*r, flags & TAVONA_VERIFY_30DAY_MONTHS))
    return 0;
  if (!(flags & TAVONA_VERIFY_NO_TIME) && !TimeValid(*r)) return 0;
  return 1;
}

INT WINAPI Is_Date_Correct_Extended(const DateTimeStruct *r, UINT flags) {
  return Tavona_VerifyDateTime(r, flags | TAVONA_VERIFY_NO_TIME);
}

INT WINAPI CompareDateTimeStructs(const DateTimeStruct *a, const DateTimeStruct *b) {
  if (!a || !b) return 0;
  const INT fa[] = {a->year, a->month, a->day, a->hour, a->minute, a->second};
  const INT fb[] = {b->year, b->month, b->day, b->hour, b->minute, b->second};
  for (int i = 0; i < 6; ++i)
    if (fa[i] != fb[i]) return fa[i] < fb[i] ? -1 : 1;
  return 0;
}

void WINAPI Tavona_AddDateTimeOffset(DateTimeStruct *r, const DateTimeStruct *o) {
  if (!r || !o) return;
  AddWithCarry(r->second, o->second, 60, r->minute);
  AddWithCarry(r->minute, o->minute, 60, r->hour);
  AddWithCarry(r->hour, o->hour, 24, r->day);
  r->day = Wrap(int64_t{r->day} + o->day);
  NormaliseDay(*r);
  // The offset's year is not looked at: years change only by carrying.
  r->month = Wrap(int64_t{r->month} + o->month);
  if (r->month > 12) {
    r->month -= 12;
    r->year = Wrap(int64_t{r->year} + 1);
  }
  if (r->month < 1) {
    r->month += 12;
    r->year = Wrap(int64_t{r->year} - 1);
  }
}

INT WINAPI Tavona_InvertDateTimeOffset(DateTimeStruct *o) {
  if (!o) return 0;
  INT *f[] = {&o->day, &o->month, &o->year, &o->hour, &o->minute, &o->second};
  for (INT *p : f) *p = Wrap(-int64_t{*p});
  return o->second;
}

void WINAPI Tavona_GetTimeSince(const DateTimeStruct *offset, DateTimeStruct *result) {
  if (!offset || !result) return;
  DateTimeStruct back = *offset;
  Tavona_InvertDateTimeOffset(&back);
  Get_CurrentDateAndTime(result);
  Tavona_AddDateTimeOffset(result, &back);
}

INT WINAPI Tavona_ComputeEasterSunday(INT year, DateTimeStruct *r) {
  if (!r) return 0;
  // 64-bit so that absurd years cannot overflow; the same as 32-bit for
  // every year where that does not.
  const int64_t y = year;
  const int64_t g = y % 19 + 1, c = y / 100 + 1;
  const int64_t x = 3 * c / 4 - 12, z = (8 * c + 5) / 25 - 5, d = 5 * y / 4 - x - 10;
  int64_t e = (11 * g + 20 + z - x) % 30;
  if ((e == 25 && g > 11) || e == 24) ++e;
  int64_t n = 44 - e;
  if (n < 21) n += 30;
  n = n + 7 - (d + n) % 7;
  *r = {Wrap(n > 31 ? n - 31 : n), n > 31 ? 4 : 3, year, 0, 0, 0};
  return 0;
}

}  // extern "C"
