// Integer and float formats: writing a number by its format string and
// reading it back. The format is parsed on every call; it is short and
// comes from the user's settings.
#include "text/numbers.h"

#include <tavona/text.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "text/wstr.h"

namespace tv::num {

const WCHAR kDefaultIntFormat[] = {'%', 'T', '.', 0};
const WCHAR kDefaultFloatFormat[] = {'%', 'T', '.', '%', 'D', ',', '%', 'F', '0', '2', 0};

namespace {

const WCHAR *FindCode(const WCHAR *format, WCHAR code) {
  for (const WCHAR *p = format; *p; ++p)
    if (p[0] == '%' && p[1] == code) return p;
  return nullptr;
}

bool IsSpace(WCHAR c) { return (c >= 9 && c <= 13) || c == ' '; }

}  // namespace

bool HasCode(const WCHAR *format, WCHAR code) { return format && FindCode(format, code); }

int ReadCode(const WCHAR *format, WCHAR code, WCHAR *out, int size) {
  if (!out || size < 1) return 0;
  out[0] = 0;
  const WCHAR *p = format ? FindCode(format, code) : nullptr;
  if (!p) return 0;
  p += 2;
  int n = 0;
  while (*p && *p != '%') {
    WCHAR c = *p++;
    bool keep = true;
    if (c == '\\') {
      WCHAR next = *p;
      if (next) ++p;
      if (next == 'p')
        c = '%';
      else if (next == '\\')
        c = '\\';
      else
        keep = false;  // the character after it goes too
    }
    if (keep && n < size - 1) out[n++] = c;
  }
  out[n] = 0;
  return n;
}

void WriteCode(WCHAR *dst, int size, int &room, WCHAR code, const WCHAR *value) {
  if (!dst || size < 1) return;
  int len = LenBounded(dst, size);
  if (len >= size) return;
  auto put = [&](WCHAR c) {
    if (len < size - 1) dst[len++] = c;
  };
  if (Len(value) + 4 < room) {
    put('%');
    put(code);
    room -= 2;
  }
  for (const WCHAR *p = value; p && *p; ++p) {
    WCHAR pair[2];
    int count = 1;
    pair[0] = *p;
    if (*p == '\\') {
      pair[1] = '\\';
      count = 2;
    } else if (*p == '%') {
      pair[0] = '\\';
      pair[1] = 'p';
      count = 2;
    }
    for (int i = 0; i < count && room > 2; ++i) {
      put(pair[i]);
      --room;
    }
  }
  if (room > 0) dst[len] = 0;
  dst[size - 1] = 0;
}

int ToInt(const WCHAR *s) { return static_cast<int>(ToLong(s)); }

INT ToLong(const WCHAR *s) {
  if (!s) return 0;
  while (IsSpace(*s)) ++s;
  bool negative = false;
  if (*s == '-' || *s == '+') negative = *s++ == '-';
  int64_t value = 0;
  for (; IsDigit(*s); ++s) {
    value = value * 10 + (*s - '0');
    if (value > int64_t{INT32_MAX} + 1) value = int64_t{INT32_MAX} + 1;  // saturates below
  }
  if (negative) return value > INT32_MAX ? INT32_MIN : static_cast<INT>(-value);
  return value > INT32_MAX ? INT32_MAX : static_cast<INT>(value);
}

double ToDouble(const WCHAR *s) {
  if (!s) return 0.0;
  while (IsSpace(*s)) ++s;
  bool negative = false;
  if (*s == '-' || *s == '+') negative = *s++ == '-';
  // The longest prefix of the form digits [. digits] [e [sign] digits].
  char text[128];
  int n = 0;
  int digits = 0;
  auto take = [&](WCHAR c) {
    if (n < 127) text[n++] = static_cast<char>(c);
  };
  for (; IsDigit(*s); ++s, ++digits) take(*s);
  if (*s == '.') {
    take(*s++);
    for (; IsDigit(*s); ++s, ++digits) take(*s);
  }
  if (digits == 0) return negative ? -0.0 : 0.0;
  if (*s == 'e' || *s == 'E') {
    const WCHAR *e = s + 1;
    bool down = false;
    if (*e == '+' || *e == '-') down = *e++ == '-';
    if (IsDigit(*e)) {
      take('e');
      if (down) take('-');
      for (; IsDigit(*e); ++e) take(*e);
    }
  }
  double value = 0.0;
  auto r = std::from_chars(text, text + n, value, std::chars_format::general);
  if (r.ec == std::errc::result_out_of_range) {
    // Only an exponent can get here: too large is infinite, too small zero.
    int at = 0;
    while (at < n && text[at] != 'e') ++at;
    bool down = at + 1 < n && text[at + 1] == '-';
    value = down ? 0.0 : std::numeric_limits<double>::infinity();
  }
  return negative ? -value : value;
}

namespace {

// m * 10^fraction * 2^exponent rounded half up to an integer, exactly, in
// four 32-bit limbs; false when the integer does not fit 64 bits.
bool ScaleExact(uint64_t m, int fraction, int exponent, uint64_t &q) {
  uint32_t n[5] = {static_cast<uint32_t>(m), static_cast<uint32_t>(m >> 32), 0, 0, 0};
  for (int i = 0; i < fraction; ++i) {
    uint64_t carry = 0;
    for (uint32_t &limb : n) {
      uint64_t t = uint64_t{limb} * 10 + carry;
      limb = static_cast<uint32_t>(t);
      carry = t >> 32;
    }
  }
  auto bit = [&](int k) { return k >= 0 && k < 160 && (n[k / 32] >> (k % 32) & 1u) != 0; };
  if (exponent >= 0) {
    for (int k = 159; k >= 160 - exponent && k >= 0; --k)
      if (bit(k)) return false;
    for (int k = 159; k >= 0; --k) {
      bool b = bit(k - exponent);
      if (b)
        n[k / 32] |= 1u << (k % 32);
      else
        n[k / 32] &= ~(1u << (k % 32));
    }
    if (n[2] || n[3] || n[4]) return false;
    q = uint64_t{n[1]} << 32 | n[0];
    return true;
  }
  int shift = -exponent;
  for (int k = shift + 64; k < 160; ++k)
    if (bit(k)) return false;
  uint64_t r = 0;
  for (int k = 63; k >= 0; --k) r = r << 1 | (bit(k + shift) ? 1u : 0u);
  q = r + (bit(shift - 1) ? 1u : 0u);  // half up
  return q >= r;
}

}  // namespace

bool FixedDigits(double value, int fraction, char (&digits)[20], bool &negative) {
  digits[0] = 0;
  negative = std::signbit(value);
  if (!std::isfinite(value)) return false;
  if (fraction < 0) fraction = 0;
  if (fraction > 19) return false;
  double magnitude = std::fabs(value);
  if (magnitude == 0.0) {
    for (int i = 0; i < fraction; ++i) digits[i] = '0';
    digits[fraction] = 0;
    return true;
  }
  if (magnitude >= 1e19) return false;
  int exponent = 0;
  double mantissa = std::frexp(magnitude, &exponent);
  uint64_t m = static_cast<uint64_t>(std::ldexp(mantissa, 53));
  exponent -= 53;
  while (!(m & 1)) {
    m >>= 1;
    ++exponent;
  }
  uint64_t q = 0;
  if (fraction <= 3 && exponent < 0 && exponent > -64) {
    // The usual case fits one 64-bit product: m < 2^53, 10^3 < 2^10.
    static const uint64_t kPow10[] = {1, 10, 100, 1000};
    uint64_t product = m * kPow10[fraction];
    int shift = -exponent;
    q = (product >> shift) + (product >> (shift - 1) & 1);
  } else if (!ScaleExact(m, fraction, exponent, q)) {
    return false;
  }
  if (q >= 10000000000000000000ull) return false;
  char rev[20];
  int n = 0;
  while (q) {
    rev[n++] = static_cast<char>('0' + q % 10);
    q /= 10;
  }
  for (int i = 0; i < n; ++i) digits[i] = rev[n - 1 - i];
  digits[n] = 0;
  return true;
}

}  // namespace tv::num

namespace {

using namespace tv::num;

constexpr int kWork = 100;
constexpr int kMaxWidth = 60;
constexpr int kFloatRoom = 199;
constexpr int kCollect = 49;

// The number text of an integer; "" when it would be too long.
void BuildIntText(INT value, int width, const WCHAR *separator, WCHAR plus, WCHAR minus,
                  WCHAR (&work)[kWork]) {
  work[0] = 0;
  bool negative = value < 0;
  // The magnitude as the runtime writes it: the most negative value keeps
  // its own minus sign, so it ends up with two.
  WCHAR raw[16];
  int n = 0;
  uint32_t magnitude = negative ? 0u - static_cast<uint32_t>(value) : static_cast<uint32_t>(value);
  WCHAR rev[12];
  int r = 0;
  do {
    rev[r++] = static_cast<WCHAR>('0' + magnitude % 10);
    magnitude /= 10;
  } while (magnitude);
  if (value == INT32_MIN) raw[n++] = '-';
  while (r) raw[n++] = rev[--r];

  if (static_cast<unsigned>(width) > kMaxWidth) width = kMaxWidth;
  int zeros = width > n ? width - n : 0;
  int total = zeros + n;
  int sepLen = tv::Len(separator);
  if ((total / 3) * sepLen + total + 6 >= kWork) return;

  // Right to left: groups of three with the separator in front of each.
  WCHAR text[kWork];
  int pos = kWork - 1;
  text[pos] = 0;
  int left = total;
  auto digit = [&](int i) { return i < zeros ? WCHAR('0') : raw[i - zeros]; };
  while (left > 3 && sepLen > 0) {
    for (int i = 0; i < 3; ++i) text[--pos] = digit(--left);
    for (int i = sepLen; i > 0; --i) text[--pos] = separator[i - 1];
  }
  while (left > 0) text[--pos] = digit(--left);
  WCHAR sign = negative ? minus : plus;
  if (sign) text[--pos] = sign;
  tv::BoundedCopy(work, text + pos, kWork);
}

// The number text of a double, built from the right in 199 units of room;
// what does not fit is cut at the left.
void BuildFloatText(double value, int fraction, const WCHAR *separator, WCHAR decimal, WCHAR plus,
                    WCHAR minus, WCHAR (&work)[kWork]) {
  work[0] = 0;
  char digits[20];
  bool negative = false;
  if (!FixedDigits(value, fraction, digits, negative)) return;
  int count = 0;
  while (digits[count]) ++count;

  WCHAR text[kFloatRoom + 1];
  int pos = kFloatRoom;
  text[pos] = 0;
  auto put = [&](WCHAR c) {
    if (pos > 0) text[--pos] = c;
  };
  if (fraction > 0) {
    for (int i = 0; i < fraction && pos > 0; ++i) put(count > 0 ? WCHAR(digits[--count]) : WCHAR('0'));
    put(decimal);
  }
  if (count == 0) {
    put('0');
  } else {
    int sepLen = tv::Len(separator);
    while (count > 3 && sepLen > 0 && pos > sepLen + 3) {
      for (int i = 0; i < 3; ++i) put(WCHAR(digits[--count]));
      for (int i = sepLen; i > 0; --i) put(separator[i - 1]);
    }
    while (count > 0 && pos > 0) put(WCHAR(digits[--count]));
  }
  WCHAR sign = negative ? minus : plus;
  if (sign) put(sign);
  tv::BoundedCopy(work, text + pos, kWork);
}

// Appends part when it is non-empty and len + 1 < remaining; the append
// itself has the capacity remaining, so it must also fit beside what out
// already holds. Returns the length taken from remaining.
int AppendPart(WCHAR *out, const WCHAR *part, int remaining) {
  int len = tv::Len(part);
  if (len == 0 || len + 1 >= remaining) return 0;
  tv::BoundedAppend(out, part, remaining);
  return len;
}

// The text between the leading and the trailing text: the leading text is
// skipped when text starts with it, the trailing one dropped when text ends
// with it. Collects up to 49 characters that pass keep.
template <typename Keep>
void Collect(const WCHAR *text, const WCHAR *format, Keep keep, WCHAR (&collected)[kCollect + 1]) {
  WCHAR lead[kTextSize], trail[kTextSize];
  int leadLen = ReadCode(format, 'B', lead, kTextSize);
  int trailLen = ReadCode(format, 'E', trail, kTextSize);
  int textLen = tv::Len(text);
  const WCHAR *start = text;
  const WCHAR *end = text + textLen;
  if (leadLen > 0 && leadLen <= textLen && tv::EqualN(text, lead, leadLen)) start += leadLen;
  if (trailLen > 0 && trailLen <= textLen && tv::EqualN(end - trailLen, trail, trailLen))
    end -= trailLen;
  int n = 0;
  for (const WCHAR *p = start; p < end && n < kCollect; ++p)
    if (keep(*p)) collected[n++] = *p;
  collected[n] = 0;
}

// Decimal digits as the runtime's iswdigit knows them: ASCII and the
// decimal digit blocks of other scripts (these end the number when read).
bool IsRuntimeDigit(WCHAR c) {
  static const uint16_t kZeros[] = {0x0660, 0x06F0, 0x07C0, 0x0966, 0x09E6, 0x0A66, 0x0AE6,
                                    0x0B66, 0x0BE6, 0x0C66, 0x0CE6, 0x0D66, 0x0E50, 0x0ED0,
                                    0x0F20, 0x1040, 0x17E0, 0x1810, 0xFF10};
  if (tv::IsDigit(c)) return true;
  if (c < 0x0660) return false;
  for (uint16_t zero : kZeros)
    if (c >= zero && c <= zero + 9) return true;
  return false;
}

}  // namespace

void WINAPI Int_To_FormattedInt(INT value, WCHAR *out, INT outSize, const WCHAR *format) {
  if (!out || outSize < 2) return;
  if (!format || !*format) format = kDefaultIntFormat;
  int remaining = outSize;
  out[0] = 0;
  WCHAR lead[kTextSize];
  ReadCode(format, 'B', lead, kTextSize);
  remaining -= AppendPart(out, lead, remaining);

  WCHAR plus = HasCode(format, '+') ? WCHAR('+') : WCHAR(0);
  WCHAR minus = HasCode(format, '-') ? WCHAR(0) : WCHAR('-');
  WCHAR width[kCountSize], separator[kSepSize], zero[kZeroSize];
  ReadCode(format, 'W', width, kCountSize);
  ReadCode(format, 'T', separator, kSepSize);
  ReadCode(format, 'Z', zero, kZeroSize);

  if (value == 0 && zero[0]) {
    // Replaces the leading text as well.
    tv::BoundedCopy(out, zero, remaining);
    out[remaining - 1] = 0;
    return;
  }
  WCHAR number[kWork];
  BuildIntText(value, ToInt(width), separator, plus, minus, number);
  remaining -= AppendPart(out, number, remaining);

  WCHAR trail[kTextSize];
  ReadCode(format, 'E', trail, kTextSize);
  AppendPart(out, trail, remaining);
}

INT WINAPI FormattedInt_To_Int(const WCHAR *text, INT *value, const WCHAR *format) {
  if (!text || !value) return -1;
  if (!format || !*format) format = kDefaultIntFormat;
  WCHAR collected[kCollect + 1];
  Collect(text, format, [](WCHAR c) { return tv::IsDigit(c) || c == '-'; }, collected);
  *value = ToLong(collected);
  return 0;
}

void WINAPI Float_To_FormattedFloat(double value, WCHAR *out, INT outSize, const WCHAR *format) {
  if (!out || outSize < 2) return;
  if (!format || !*format) format = kDefaultFloatFormat;
  int remaining = outSize;
  out[0] = 0;
  WCHAR lead[kTextSize];
  ReadCode(format, 'B', lead, kTextSize);
  remaining -= AppendPart(out, lead, remaining);

  WCHAR plus = HasCode(format, '+') ? WCHAR('+') : WCHAR(0);
  WCHAR minus = HasCode(format, '-') ? WCHAR(0) : WCHAR('-');
  WCHAR fraction[kCountSize], separator[kSepSize], zero[kZeroSize], decimal[kSepSize];
  ReadCode(format, 'F', fraction, kCountSize);
  ReadCode(format, 'T', separator, kSepSize);
  ReadCode(format, 'Z', zero, kZeroSize);
  ReadCode(format, 'D', decimal, kSepSize);
  if (!decimal[0]) decimal[0] = ',';

  if (std::fabs(value) < 1e-13 && zero[0]) {
    tv::BoundedCopy(out, zero, remaining);
    out[remaining - 1] = 0;
    return;
  }
  WCHAR number[kWork];
  BuildFloatText(value, ToInt(fraction), separator, decimal[0], plus, minus, number);
  remaining -= AppendPart(out, number, remaining);

  WCHAR trail[kTextSize];
  ReadCode(format, 'E', trail, kTextSize);
  AppendPart(out, trail, remaining);
}

INT WINAPI FormattedFloat_To_Float(const WCHAR *text, double *value, const WCHAR *format) {
  if (!text || !value) return -1;
  if (!format || !*format) format = kDefaultFloatFormat;
  WCHAR decimal[2];
  ReadCode(format, 'D', decimal, 2);
  WCHAR point = decimal[0] ? decimal[0] : WCHAR(',');
  WCHAR collected[kCollect + 1];
  Collect(text, format,
          [point](WCHAR c) { return IsRuntimeDigit(c) || c == '-' || c == point; }, collected);
  // Read in the "C" locale: the format's decimal separator counts only
  // when it is '.'.
  *value = ToDouble(collected);
  return 0;
}
