// The backslash escape notation that keeps any text on one line of a
// profile file, a registry value or a translation table.
#include <tavona/text.h>

#include "base/wstr.h"

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
  for (; i < 2 && tv::IsDigit(s[i]); ++i) value = value * 10 + (s[i] - '0');
  return negative ? -value : value;
}

// Shared by both decoders. The expanded form takes its escape character
// from the caller, knows no "\v" and falls back to the escape character
// where the classic one falls back to a backslash.
void Decode(WCHAR *text, WCHAR escape, bool expanded) {
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

}  // namespace

void WINAPI Tavona_EncodeString(const WCHAR *src, WCHAR *dst, INT dstSize, UINT flags) {
  if (!dst || dstSize < 1) return;
  if (!src) src = TEXT("");
  static const WCHAR kDigits[] = {'0', '1', '2', '3', '4', '5', '6', '7',
                                  '8', '9', 'A', 'B', 'C', 'D', 'E', 'F'};
  int w = 0;
  bool onlySpaces = true;
  // Room for the longest sequence and the terminator is kept back, so a
  // text that does not fit is cut between sequences, never inside one.
  for (; *src && dstSize - w > 10; ++src) {
    WCHAR c = *src;
    if (c != ' ') onlySpaces = false;
    if (c == ' ') {
      if ((onlySpaces && (flags & TAVONA_ENCODE_LEADING_SPACES)) ||
          (flags & TAVONA_ENCODE_ALL_SPACES)) {
        dst[w++] = kBackslash;
        dst[w++] = 'x';
        dst[w++] = '2';
        dst[w++] = '0';
      } else {
        dst[w++] = ' ';
      }
    } else if (c == '"') {
      if (flags & TAVONA_ENCODE_QUOTES) {
        dst[w++] = kBackslash;
        dst[w++] = 'q';
      } else {
        dst[w++] = '"';
      }
    } else if (c > 32 && c != kBackslash) {
      dst[w++] = c;
    } else {
      dst[w++] = kBackslash;
      switch (c) {
        case 8: dst[w++] = 'a'; break;
        case 9: dst[w++] = 't'; break;
        case 10: dst[w++] = 'n'; break;
        case 11: dst[w++] = 'v'; break;
        case kBackslash: dst[w++] = kBackslash; break;
        case 13:
          // Flag 8 leaves a lone backslash in front of what follows; files
          // written that way depend on it.
          if (!(flags & TAVONA_ENCODE_NO_CR)) dst[w++] = 'r';
          break;
        default:
          if (flags & TAVONA_ENCODE_HEX) {
            dst[w++] = 'x';
            dst[w++] = kDigits[c >> 4];
            dst[w++] = kDigits[c & 15];
          } else {
            dst[w++] = 'd';
            dst[w++] = static_cast<WCHAR>('0' + c / 10);
            dst[w++] = static_cast<WCHAR>('0' + c % 10);
          }
          break;
      }
    }
  }
  dst[w] = 0;
}

void WINAPI Tavona_DecodeString(WCHAR *text) {
  if (text) Decode(text, kBackslash, false);
}

void WINAPI Tavona_DecodeStringExpanded(WCHAR *text, WCHAR escape) {
  if (text) Decode(text, escape, true);
}

INT WINAPI Tavona_EscapeToBinary(const WCHAR *src, WCHAR *dst, INT dstSize) {
  if (!dst || dstSize < 1) return 0;
  tv::BoundedCopy(dst, src, dstSize);
  dst[dstSize - 1] = 0;
  Decode(dst, kBackslash, false);
  return 0;
}
