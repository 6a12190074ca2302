// Helpers shared by the descriptor, scrambling and hashing routines.
#pragma once

#include <tavona/tvbase.h>

#include <cstdint>

namespace tv {

// The C runtime's _wtol: leading white space, an optional sign, decimal
// digits up to the first other character; no number gives 0, and values
// beyond 32 bits stop at the nearest limit.
inline INT TextToLong(const WCHAR *s) {
  if (!s) return 0;
  while (*s == ' ' || (*s >= 9 && *s <= 13)) ++s;
  bool negative = false;
  if (*s == '-' || *s == '+') negative = *s++ == '-';
  int64_t v = 0;
  for (; *s >= '0' && *s <= '9'; ++s) {
    v = v * 10 + (*s - '0');
    if (v > 0x80000000LL) v = 0x80000000LL;
  }
  if (negative) v = -v;
  if (v > 0x7FFFFFFF) v = 0x7FFFFFFF;
  return static_cast<INT>(v);
}

// s = s * c + 13 over the characters, then multiplied by 13 until it
// reaches 100000. Shared by the scrambling seed and the string hash; a
// start of 0 would never reach the bound, so callers settle it first.
inline uint32_t KeyFold(const WCHAR *s) {
  uint32_t h = 1;
  for (; s && *s; ++s) h = h * static_cast<uint16_t>(*s) + 13u;
  return h;
}
inline uint32_t RaiseTo100000(uint32_t h) {
  while (h < 100000u) h *= 13u;
  return h;
}

}  // namespace tv
