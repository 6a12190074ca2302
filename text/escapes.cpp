// The backslash escape notation that keeps any text on one line of a
// profile file, a registry value or a translation table.
#include <tavona/text.h>

#include "base/escape.h"
#include "base/wstr.h"

namespace {

constexpr WCHAR kBackslash = '\\';

void Decode(WCHAR *text, WCHAR escape, bool expanded) { tv::DecodeEscapes(text, escape, expanded); }

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
