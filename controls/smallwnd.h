// Records of the library's small windows, kept in their window extra bytes
// (offset 0).
#pragma once

#include <windows.h>

namespace tv {

// A temporary window's record; the window owns it and its text.
struct TempWindRecord {
  INT displayTime;  // tenths of a second
  COLORREF background;  // 0: no fill
  WCHAR *text;
};

inline constexpr UINT_PTR kTempWindTimer = 1;
inline constexpr INT kTempWindWidth = 250;

}  // namespace tv
