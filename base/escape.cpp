// The decoder of the backslash escape notation, shared by the string
// exports and run-time translation.
#include "base/escape.h"

namespace tv {

namespace {

constexpr WCHAR kBackslash = '\\';

// Value of one hexadecimal digit, upper or lower case; -1 for anything else.
int HexValue(WCHAR c) {
  if (c >= 'a' && c <= 'z') c = static_cast<WCHAR>(c - 32);
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// The two characters after "\d" read as _wtoi would: leading white space,
// a sign, then digits up to the first non-digit ("7x" is 7, "xx" is 0).
int TwoCharDecimal(WCHAR a, WCHAR b) {
  const WCHAR s[2] = {a, b};
  int i = 0;
  while (i < 2 && ((s[i] >= 9 && s[i] <= 13) || s[i] == ' ')) ++i;
  bool negative = false;
  if (i < 2 && (s[i] == '-' || s[i] == '+')) negative = s[i++] == '-';
  int value = 0;
  for (; i < 2 && (s[i] >= '0' && s[i] <= '9'); ++i) value = value * 10 + (s[i] - '0');
  return negative ? -value : value;
}

}  // namespace

void DecodeEscapes(WCHAR *text, WCHAR escape, bool expanded) {
  if (!text) return;
  int r = 0, w = 0;
  while (text[r]) {
    WCHAR c = text[r];
    if (c != escape) {
      text[w++] = c;
      ++r;
      continue;
    }
    WCHAR sel = text[r + 1];
    if (!sel) break;  // a trailing escape character is dropped
    r += 2;
    WCHAR out;
    if (expanded && sel == escape) {
      out = escape;
    } else {
      switch (sel) {
        case 'a': out = 8; break;  // 'a' stands for 8, not 7: kept for old files
        case 'n': out = 10; break;
        case 'q': out = 34; break;
        case 'r': out = 13; break;
        case 't': out = 9; break;
        case 'v': out = expanded ? escape : 11; break;
        case 'd':
        case 'x':
          if (text[r] && text[r + 1]) {
            int v = sel == 'd' ? TwoCharDecimal(text[r], text[r + 1])
                               : HexValue(text[r]) * 16 | HexValue(text[r + 1]);
            // Not checked: "\xZZ" gives 0xFFFF and "\d-1" likewise.
            out = static_cast<WCHAR>(v & 0xFFFF);
            r += 2;
          } else {
            out = expanded ? escape : kBackslash;
          }
          break;
        default: out = expanded ? escape : kBackslash; break;
      }
    }
    text[w++] = out;
  }
  text[w] = 0;
}

}  // namespace tv
