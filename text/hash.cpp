// String hash and Roman numerals.
#include <tavona/text.h>

#include "text/datautil.h"
#include "base/wstr.h"

extern "C" {

DWORD WINAPI Tavona_CreateHash(const WCHAR *text, INT modulus) {
  if (!text) return 0;
  uint32_t h = tv::KeyFold(text);
  if (h == 0) h = 1;
  h = tv::RaiseTo100000(h);
  if (modulus > 0) h %= static_cast<uint32_t>(modulus);
  return h;
}

void WINAPI Tavona_LongToRoman(INT value, WCHAR *out, INT outSize) {
  if (!out || outSize < 1) return;
  out[0] = 0;
  if (value < 1 || value > 3999) return;
  static const char *const kPatterns[10] = {"",  "I",  "II",  "III",  "IV",
                                            "V", "VI", "VII", "VIII", "IX"};
  // Letters for I, V and X in each place; the thousands never need V or X.
  static const char kLetters[4][3] = {{'M', '?', '?'}, {'C', 'D', 'M'}, {'X', 'L', 'C'},
                                      {'I', 'V', 'X'}};
  const int digits[4] = {value / 1000, value / 100 % 10, value / 10 % 10, value % 10};
  for (int place = 0; place < 4; ++place) {
    WCHAR piece[5];
    int n = 0;
    for (const char *p = kPatterns[digits[place]]; *p; ++p)
      piece[n++] = static_cast<WCHAR>(kLetters[place][*p == 'I' ? 0 : *p == 'V' ? 1 : 2]);
    piece[n] = 0;
    tv::BoundedAppend(out, piece, outSize);
  }
}

}  // extern "C"
