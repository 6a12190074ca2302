// Integer and float formats: writing a number by its format string and
// reading it back. The format is parsed on every call; it is short and
// comes from the user's settings.
#include "text/numbers.h"

#include <tavona/text.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "base/wstr.h"

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
  return ReadValueAt(format ? FindCode(format, code) : nullptr, out, size);
}

int ReadValueAt(const WCHAR *at, WCHAR *out, int size) {
  if (!out || size < 1) return 0;
  out[0] = 0;
  if (!at) return 0;
  const WCHAR *p = at + 2;
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
  // The runtime also takes 'd' and 'D' for the exponent, as Fortran does.
  if (*s == 'e' || *s == 'E' || *s == 'd' || *s == 'D') {
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
  // A negative count rounds at that many places left of the point and
  // leaves those places out of the digits.
  int drop = 0;
  if (fraction < 0) {
    drop = fraction < -20 ? 20 : -fraction;
    fraction = 0;
  }
  if (fraction > 19) return false;
  double magnitude = std::fabs(value);
  if (magnitude == 0.0) {
    for (int i = 0; i < fraction; ++i) digits[i] = '0';
    digits[fraction] = 0;
    return true;
  }
  if (magnitude >= 1e19) return false;
  if (drop > 0) {
    uint64_t whole = static_cast<uint64_t>(magnitude);  // exact below 2^64
    uint64_t q = 0;
    if (drop <= 19) {
      uint64_t place = 1;
      for (int i = 0; i < drop; ++i) place *= 10;
      q = whole / place + (whole % place >= place / 2 ? 1 : 0);
    }
    int n = 0;
    char rev[20];
    while (q) {
      rev[n++] = static_cast<char>('0' + q % 10);
      q /= 10;
    }
    for (int i = 0; i < n; ++i) digits[i] = rev[n - 1 - i];
    digits[n] = 0;
    return true;
  }
  uint64_t bits = 0;
  std::memcpy(&bits, &magnitude, sizeof bits);
  int biased = static_cast<int>(bits >> 52);
  uint64_t m = bits & ((uint64_t{1} << 52) - 1);
  int exponent = -1074;
  if (biased) {
    m |= uint64_t{1} << 52;
    exponent = biased - 1075;
  }
#if defined(__GNUC__)
  int zeros = __builtin_ctzll(m);
  m >>= zeros;
  exponent += zeros;
#else
  while (!(m & 1)) {
    m >>= 1;
    ++exponent;
  }
#endif
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

// A text being built in out: its length is tracked so that no append
// rescans it. The appends follow the library's non-shortening append with
// the capacity given (not the buffer size): a part that does not fit
// beside the text empties it.
struct Output {
  WCHAR *out;
  int len = 0;

  void Append(const WCHAR *part, int count, int capacity) {
    if (capacity - len <= 0) return;
    if (count >= capacity - len) {
      out[0] = 0;
      out[capacity - 1] = 0;
      len = 0;
      tv::ReportNoFit("TavonaAppendString");
      return;
    }
    tv::CopyRaw(out + len, part, count);
    len += count;
    out[len] = 0;
    out[capacity - 1] = 0;
  }
  // A part goes in only when it is non-empty and count + 1 < remaining;
  // remaining then shrinks by its length.
  void AppendPart(const WCHAR *part, int count, int &remaining) {
    if (count == 0 || count + 1 >= remaining) return;
    Append(part, count, remaining);
    remaining -= count;
  }
  // The zero text replaces everything (the non-shortening copy).
  void ReplaceWith(const WCHAR *text, int count, int capacity) {
    if (count < capacity) {
      tv::CopyRaw(out, text, count);
      out[count] = 0;
    } else {
      out[0] = 0;
      tv::ReportNoFit("TavonaCopyString");
    }
    out[capacity - 1] = 0;
  }
};

// A number text built from the right end of a buffer.
struct RightText {
  WCHAR buf[kFloatRoom + 1];
  int pos = kFloatRoom;
  bool Room() const { return pos > 0; }
  void Put(WCHAR c) {
    if (pos > 0) buf[--pos] = c;
  }
  const WCHAR *Text() const { return buf + pos; }
  int Length() const { return kFloatRoom - pos; }
};

// The number text of an integer; empty when it would be too long.
void BuildIntText(INT value, int width, const WCHAR *separator, int sepLen, WCHAR plus,
                  WCHAR minus, RightText &text) {
  bool negative = value < 0;
  // The magnitude as the runtime writes it: the most negative value keeps
  // its own minus sign, so it ends up with two.
  static const char kPairs[] =
      "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
      "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
      "8081828384858687888990919293949596979899";
  WCHAR raw[12];  // from the last digit to the first
  int n = 0;
  uint32_t magnitude = negative ? 0u - static_cast<uint32_t>(value) : static_cast<uint32_t>(value);
  while (magnitude >= 100) {
    uint32_t pair = magnitude % 100 * 2;
    magnitude /= 100;
    raw[n++] = static_cast<WCHAR>(kPairs[pair + 1]);
    raw[n++] = static_cast<WCHAR>(kPairs[pair]);
  }
  raw[n++] = static_cast<WCHAR>(kPairs[magnitude * 2 + 1]);
  if (magnitude >= 10) raw[n++] = static_cast<WCHAR>(kPairs[magnitude * 2]);
  if (value == INT32_MIN) raw[n++] = '-';

  if (static_cast<unsigned>(width) > kMaxWidth) width = kMaxWidth;
  int total = width > n ? width : n;
  if ((total / 3) * sepLen + total + 6 >= kWork) return;

  // Groups of three from the right, the separator in front of each; the
  // leading zeros of the width group like digits.
  // Fits: at most 99 units.
  WCHAR *p = text.buf + text.pos;
  WCHAR single = separator[0];
  int group = 0;
  for (int i = 0; i < total; ++i) {
    if (group == 3 && sepLen) {
      group = 0;
      if (sepLen == 1)
        *--p = single;
      else
        for (int k = sepLen; k > 0; --k) *--p = separator[k - 1];
    }
    ++group;
    *--p = i < n ? raw[i] : WCHAR('0');
  }
  WCHAR sign = negative ? minus : plus;
  if (sign) *--p = sign;
  text.pos = static_cast<int>(p - text.buf);
}

// The number text of a double, built from the right in 199 units of room;
// what does not fit is cut at the left.
void BuildFloatText(double value, int fraction, const WCHAR *separator, int sepLen, WCHAR decimal,
                    WCHAR plus, WCHAR minus, RightText &text) {
  char digits[20];
  bool negative = false;
  if (!FixedDigits(value, fraction, digits, negative)) return;
  int count = 0;
  while (digits[count]) ++count;

  if (fraction > 0) {
    for (int i = 0; i < fraction && text.Room(); ++i)
      text.Put(count > 0 ? WCHAR(digits[--count]) : WCHAR('0'));
    text.Put(decimal);
  }
  if (count == 0) {
    text.Put('0');
  } else {
    while (count > 3 && sepLen > 0 && text.pos > sepLen + 3) {
      for (int i = 0; i < 3; ++i) text.Put(WCHAR(digits[--count]));
      for (int i = sepLen; i > 0; --i) text.Put(separator[i - 1]);
    }
    while (count > 0 && text.Room()) text.Put(WCHAR(digits[--count]));
  }
  WCHAR sign = negative ? minus : plus;
  if (sign) text.Put(sign);
  // The work buffer of the number text holds 100 units.
  if (text.Length() >= kWork) {
    tv::ReportNoFit("TavonaCopyString");
    text.pos = kFloatRoom;
  }
}

// The text between the leading and the trailing text: the leading text is
// skipped when text starts with it, the trailing one dropped when text ends
// with it. Collects up to 49 characters that pass keep.
template <typename Keep>
void Collect(const WCHAR *text, const Codes &codes, Keep keep, WCHAR (&collected)[kCollect + 1]) {
  WCHAR lead[kTextSize], trail[kTextSize];
  int leadLen = codes.Read('B', lead, kTextSize);
  int trailLen = codes.Read('E', trail, kTextSize);
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

// Decimal digits as the runtime's iswdigit knows them: ASCII, the
// superscripts one to three, and the decimal digit blocks of other scripts
// (these end the number when read).
bool IsRuntimeDigit(WCHAR c) {
  static const uint16_t kZeros[] = {
      0x0660, 0x06F0, 0x07C0, 0x0966, 0x09E6, 0x0A66, 0x0AE6, 0x0B66, 0x0BE6, 0x0C66,
      0x0CE6, 0x0D66, 0x0DE6, 0x0E50, 0x0ED0, 0x0F20, 0x1040, 0x1090, 0x17E0, 0x1810,
      0x1946, 0x19D0, 0x1A80, 0x1A90, 0x1B50, 0x1BB0, 0x1C40, 0x1C50, 0xA620, 0xA8D0,
      0xA900, 0xA9D0, 0xA9F0, 0xAA50, 0xABF0, 0xFF10};
  if (tv::IsDigit(c)) return true;
  if (c == 0x00B2 || c == 0x00B3 || c == 0x00B9) return true;
  if (c < 0x0660) return false;
  for (uint16_t zero : kZeros)
    if (c >= zero && c <= zero + 9) return true;
  return false;
}

}  // namespace

void WINAPI Int_To_FormattedInt(INT value, WCHAR *out, INT outSize, const WCHAR *format) {
  if (!out || outSize < 2) return;
  if (!format || !*format) format = kDefaultIntFormat;
  Codes codes(format);
  int remaining = outSize;
  Output o{out};
  out[0] = 0;
  WCHAR lead[kTextSize];
  o.AppendPart(lead, codes.Read('B', lead, kTextSize), remaining);

  WCHAR plus = codes.Has('+') ? WCHAR('+') : WCHAR(0);
  WCHAR minus = codes.Has('-') ? WCHAR(0) : WCHAR('-');
  WCHAR width[kCountSize], separator[kSepSize], zero[kZeroSize];
  int widthLen = codes.Read('W', width, kCountSize);
  int sepLen = codes.Read('T', separator, kSepSize);
  int zeroLen = codes.Read('Z', zero, kZeroSize);

  if (value == 0 && zeroLen) {
    o.ReplaceWith(zero, zeroLen, remaining);  // the leading text goes too
    return;
  }
  RightText number;
  BuildIntText(value, widthLen ? ToInt(width) : 0, separator, sepLen, plus, minus, number);
  o.AppendPart(number.Text(), number.Length(), remaining);

  WCHAR trail[kTextSize];
  o.AppendPart(trail, codes.Read('E', trail, kTextSize), remaining);
}

INT WINAPI FormattedInt_To_Int(const WCHAR *text, INT *value, const WCHAR *format) {
  if (!text || !value) return -1;
  if (!format || !*format) format = kDefaultIntFormat;
  WCHAR collected[kCollect + 1];
  Collect(text, Codes(format), [](WCHAR c) { return tv::IsDigit(c) || c == '-'; }, collected);
  *value = ToLong(collected);
  return 0;
}

void WINAPI Float_To_FormattedFloat(double value, WCHAR *out, INT outSize, const WCHAR *format) {
  if (!out || outSize < 2) return;
  if (!format || !*format) format = kDefaultFloatFormat;
  Codes codes(format);
  int remaining = outSize;
  Output o{out};
  out[0] = 0;
  WCHAR lead[kTextSize];
  o.AppendPart(lead, codes.Read('B', lead, kTextSize), remaining);

  WCHAR plus = codes.Has('+') ? WCHAR('+') : WCHAR(0);
  WCHAR minus = codes.Has('-') ? WCHAR(0) : WCHAR('-');
  WCHAR fraction[kCountSize], separator[kSepSize], zero[kZeroSize], decimal[kSepSize];
  codes.Read('F', fraction, kCountSize);
  int sepLen = codes.Read('T', separator, kSepSize);
  int zeroLen = codes.Read('Z', zero, kZeroSize);
  codes.Read('D', decimal, kSepSize);
  if (!decimal[0]) decimal[0] = ',';

  if (std::fabs(value) < 1e-13 && zeroLen) {
    o.ReplaceWith(zero, zeroLen, remaining);
    return;
  }
  RightText number;
  BuildFloatText(value, ToInt(fraction), separator, sepLen, decimal[0], plus, minus, number);
  o.AppendPart(number.Text(), number.Length(), remaining);

  WCHAR trail[kTextSize];
  o.AppendPart(trail, codes.Read('E', trail, kTextSize), remaining);
}

INT WINAPI FormattedFloat_To_Float(const WCHAR *text, double *value, const WCHAR *format) {
  if (!text || !value) return -1;
  if (!format || !*format) format = kDefaultFloatFormat;
  Codes codes(format);
  WCHAR decimal[2];
  codes.Read('D', decimal, 2);
  WCHAR point = decimal[0] ? decimal[0] : WCHAR(',');
  WCHAR collected[kCollect + 1];
  Collect(text, codes,
          [point](WCHAR c) { return IsRuntimeDigit(c) || c == '-' || c == point; }, collected);
  // Read in the "C" locale: the format's decimal separator counts only
  // when it is '.'.
  *value = ToDouble(collected);
  return 0;
}
