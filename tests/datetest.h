// Small helpers shared by the date tests.
#pragma once

#include <tavona/datetime.h>

#include <string>

inline std::string Show(const DateTimeStruct &r) {
  return std::to_string(r.year) + "-" + std::to_string(r.month) + "-" + std::to_string(r.day) +
         " " + std::to_string(r.hour) + ":" + std::to_string(r.minute) + ":" +
         std::to_string(r.second);
}

inline bool Same(const DateTimeStruct &a, const DateTimeStruct &b) {
  return a.day == b.day && a.month == b.month && a.year == b.year && a.hour == b.hour &&
         a.minute == b.minute && a.second == b.second;
}

inline DateTimeStruct Dt(int y, int mo, int d, int h = 0, int mi = 0, int s = 0) {
  return {d, mo, y, h, mi, s};
}
