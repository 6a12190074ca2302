// The Windows side of the date and time seams, and the exports that take
// the platform's own time records.
#include <windows.h>

#include <tavona/datetime.h>
#include <tavona/settings.h>

#include <ctime>

#include "datetime/calendar.h"
#include "datetime/clock.h"
#include "frame/globals.h"
#include "frame/platform.h"

namespace tv::plat {

bool CurrentLocalTime(LocalTime &out) {
  __time64_t t = _time64(nullptr);
  struct tm tm {};
  if (_localtime64_s(&tm, &t) != 0) return false;
  out = {tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec};
  return true;
}

LONG YearExpansionLimit() {
  return Tavona_ReadLongFromRegistry(HKEY_CURRENT_USER, g.globalParamsKey, nullptr, L"Year 2000",
                                     L"YearExpansionLimit", 35);
}

}  // namespace tv::plat

extern "C" {

INT WINAPI Tavona_GetSystemTimeDelta(const SYSTEMTIME *a, const SYSTEMTIME *b) {
  if (!a || !b) return 0;
  return tv::TimeOfDayDelta(a->wHour, a->wMinute, a->wSecond, a->wMilliseconds, b->wHour,
                            b->wMinute, b->wSecond, b->wMilliseconds);
}

void WINAPI DateTimeStruct_To_FileTime(const DateTimeStruct *r, FILETIME *ft) {
  if (!r || !ft) return;
  uint64_t v = tv::FileTimeOfDate(*r);
  ft->dwLowDateTime = static_cast<DWORD>(v);
  ft->dwHighDateTime = static_cast<DWORD>(v >> 32);
}

void WINAPI FileTime_To_DateTimeStruct(const FILETIME *ft, DateTimeStruct *r) {
  if (!ft || !r) return;
  tv::DateOfFileTime(uint64_t{ft->dwHighDateTime} << 32 | ft->dwLowDateTime, *r);
}

}  // extern "C"
