// Integer and float format codes: the pieces shared by the formatters, the
// readers and the two format dialogs.
#pragma once

#include <tavona/tvbase.h>

namespace tv::num {

// Value buffer sizes of the codes (with the terminator).
constexpr int kSepSize = 10;    // %T, %D when writing
constexpr int kCountSize = 10;  // %W, %F
constexpr int kTextSize = 100;  // %B, %E
constexpr int kZeroSize = 50;   // %Z

extern const WCHAR kDefaultIntFormat[];    // "%T."
extern const WCHAR kDefaultFloatFormat[];  // "%T.%D,%F02"

// The value of code (the letter after '%') into out[size]: from the first
// occurrence of the code up to the next '%', "\p" giving '%' and "\\" one
// backslash; a backslash before anything else drops both. Cut to size - 1
// characters, always terminated. "" when the code is absent or followed by
// '%'. Returns the length.
int ReadCode(const WCHAR *format, WCHAR code, WCHAR *out, int size);

// The same for a code found at at (pointing to its '%'; null = absent).
int ReadValueAt(const WCHAR *at, WCHAR *out, int size);

// Where each code first occurs in a format, found in one pass.
class Codes {
 public:
  explicit Codes(const WCHAR *format) {
    for (const WCHAR *p = format; p && *p; ++p) {
      if (p[0] != '%') continue;
      int slot = Slot(p[1]);
      if (slot >= 0 && !at_[slot]) at_[slot] = p;
    }
  }
  const WCHAR *At(WCHAR code) const {
    int slot = Slot(code);
    return slot >= 0 ? at_[slot] : nullptr;
  }
  bool Has(WCHAR code) const { return At(code) != nullptr; }
  int Read(WCHAR code, WCHAR *out, int size) const {
    const WCHAR *at = At(code);
    if (at) return ReadValueAt(at, out, size);
    out[0] = 0;
    return 0;
  }

 private:
  static int Slot(WCHAR code) {
    switch (code) {
      case 'T': return 0;
      case 'W': return 1;
      case 'F': return 2;
      case 'D': return 3;
      case 'B': return 4;
      case 'E': return 5;
      case 'Z': return 6;
      case '+': return 7;
      case '-': return 8;
      default: return -1;
    }
  }
  const WCHAR *at_[9] = {};
};

// True when "%<code>" occurs in format.
bool HasCode(const WCHAR *format, WCHAR code);

// Appends "%<code>" and the escaped value to dst[size] as the format dialogs
// do: room is what the caller has left of its budget and shrinks by what is
// written. The code goes in only when len(value) + 4 < room; the value's
// characters follow (even without their code) while more than 2 units of
// room remain. dst stays terminated within size.
void WriteCode(WCHAR *dst, int size, int &room, WCHAR code, const WCHAR *value);

// The C runtime's _wtoi / _wtol (white space, sign, digits; _wtol saturates
// on overflow) and _wtof in the "C" locale.
int ToInt(const WCHAR *s);
INT ToLong(const WCHAR *s);
double ToDouble(const WCHAR *s);

// The digits that the C runtime's _fcvt_s gives for value with fraction
// digits after the point, in a 20-byte buffer: the exact binary value
// rounded at the requested place, halves away from zero;
// leading zeros are left out ("" when the value rounds to zero, but
// fraction zeros for an exact zero). negative is the value's sign bit.
// False (digits "") for a value that is not finite or whose digits would
// not fit in 19 characters. A negative fraction count rounds at that
// many places left of the point and leaves them out (1250 and -2 give
// "13").
bool FixedDigits(double value, int fraction, char (&digits)[20], bool &negative);

}  // namespace tv::num
