// The library's own printf. It follows the Windows wide printf on every
// build, so the host build prints what the DLL prints: 'l' is 32 bits, %s is
// a wide string, %S and %hs narrow ones, and the '0' flag pads any
// conversion (strings too) unless an integer has a precision.
#include <climits>
#include <cstdint>
#include <cstdio>
#include <type_traits>

#include "base/wstr.h"

namespace tv {
namespace {

// Counts every unit of the whole text but stores only what fits, so huge
// widths cost no more than the room left.
class Out {
 public:
  Out(WCHAR *dst, int size) : dst_(dst && size > 0 ? dst : nullptr), cap_(dst_ ? size - 1 : 0) {}
  void Put(WCHAR c) {
    if (n_ < cap_) dst_[n_] = c;
    ++n_;
  }
  void Fill(WCHAR c, int64_t count) {
    if (count <= 0) return;
    for (int64_t i = n_, end = n_ + count < cap_ ? n_ + count : cap_; i < end; ++i) dst_[i] = c;
    n_ += count;
  }
  template <typename Ch>
  void Put(const Ch *s, int64_t count) {
    for (int64_t i = 0; i < count; ++i) {
      if (n_ >= cap_) {
        n_ += count - i;
        return;
      }
      dst_[n_++] = static_cast<WCHAR>(static_cast<std::make_unsigned_t<Ch>>(s[i]));
    }
  }
  // The length of the whole text (INT_MAX when longer).
  int Finish() {
    if (dst_) dst_[n_ < cap_ ? n_ : cap_] = 0;
    return n_ > INT_MAX ? INT_MAX : static_cast<int>(n_);
  }

 private:
  WCHAR *dst_;
  int64_t cap_;
  int64_t n_ = 0;
};

enum class Size { Default, Char, Short, Int32, Int64, Pointer, LongDouble };
enum class Chars { Default, Narrow, Wide };

struct Directive {
  bool left = false, plus = false, space = false, zero = false, alt = false;
  int width = 0;
  int prec = -1;
  Size size = Size::Default;
  Chars chars = Chars::Default;
};

// Writes prefix, zeros and body padded to the width. Body is written by a
// callable taking the Out.
template <typename Body>
void Emit(Out &out, const Directive &dir, const char *prefix, int64_t zeros, int64_t bodyLen,
          Body &&body) {
  int64_t prefixLen = 0;
  while (prefix[prefixLen]) ++prefixLen;
  int64_t pad = dir.width - (prefixLen + zeros + bodyLen);
  bool zeroPad = dir.zero && !dir.left;
  if (!dir.left && !zeroPad) out.Fill(' ', pad);
  out.Put(prefix, prefixLen);
  if (zeroPad) out.Fill('0', pad);
  out.Fill('0', zeros);
  body(out);
  if (dir.left) out.Fill(' ', pad);
}

void EmitInteger(Out &out, Directive dir, uint64_t mag, bool negative, bool isSigned, int base,
                 bool upper) {
  char digits[24];
  int n = 0;
  const char *set = upper ? "0123456789ABCDEF" : "0123456789abcdef";
  for (uint64_t v = mag; v; v /= base) digits[n++] = set[v % base];
  if (dir.prec >= 0)
    dir.zero = false;
  else
    dir.prec = 1;
  int64_t zeros = dir.prec > n ? dir.prec - n : 0;
  if (base == 8 && dir.alt && zeros == 0 && (n == 0 || digits[n - 1] != '0')) zeros = 1;
  const char *prefix = "";
  if (isSigned && negative)
    prefix = "-";
  else if (isSigned && dir.plus)
    prefix = "+";
  else if (isSigned && dir.space)
    prefix = " ";
  else if (base == 16 && dir.alt && mag)
    prefix = upper ? "0X" : "0x";
  Emit(out, dir, prefix, zeros, n, [&](Out &o) {
    for (int i = n - 1; i >= 0; --i) o.Put(static_cast<WCHAR>(digits[i]));
  });
}

// Floating point goes through the C runtime's narrow formatter; the result
// is normalised to a two-digit exponent (the old Windows runtime prints
// three) and padded here like every other conversion.
void EmitFloat(Out &out, Directive dir, double v, char conv) {
  // A double has at most 1074 fractional digits; beyond this precision the
  // runtime only adds zeros, which are added here instead.
  constexpr int kMaxPrec = 1100;
  int64_t extra = 0;
  if (dir.prec > kMaxPrec) {
    extra = dir.prec - kMaxPrec;
    dir.prec = kMaxPrec;
  }
  char fmt[12];
  int f = 0;
  fmt[f++] = '%';
  if (dir.plus) fmt[f++] = '+';
  if (dir.space) fmt[f++] = ' ';
  if (dir.alt) fmt[f++] = '#';
  fmt[f++] = '.';
  fmt[f++] = '*';
  fmt[f++] = conv;
  fmt[f] = 0;
  char buf[1600];
  int len = std::snprintf(buf, sizeof buf, fmt, dir.prec, v);
  if (len < 0) len = 0;
  if (len >= static_cast<int>(sizeof buf)) len = sizeof buf - 1;
  buf[len] = 0;

  int expAt = -1;
  bool hex = conv == 'a' || conv == 'A';
  bool digitsSeen = false;
  for (int i = 0; i < len; ++i) {
    if (buf[i] >= '0' && buf[i] <= '9') digitsSeen = true;
    if (buf[i] == (hex ? 'p' : 'e') || buf[i] == (hex ? 'P' : 'E')) {
      expAt = i;
      break;
    }
  }
  if (expAt >= 0 && !hex) {
    int d = expAt + 1;
    if (buf[d] == '+' || buf[d] == '-') ++d;
    int k = d;
    while (k < len - 2 && buf[k] == '0') ++k;
    if (k > d) {
      for (int i = k; i <= len; ++i) buf[d + (i - k)] = buf[i];
      len -= k - d;
    }
  }
  if (!digitsSeen || ((conv == 'g' || conv == 'G') && !dir.alt)) extra = 0;

  const char *prefix = "";
  const char *body = buf;
  if (buf[0] == '-' || buf[0] == '+' || buf[0] == ' ') {
    prefix = buf[0] == '-' ? "-" : buf[0] == '+' ? "+" : " ";
    ++body;
    --len;
  }
  int split = expAt >= 0 ? expAt - static_cast<int>(body - buf) : len;
  if (split > len) split = len;
  Emit(out, dir, prefix, 0, len + extra, [&](Out &o) {
    o.Put(body, split);
    o.Fill('0', extra);
    o.Put(body + split, len - split);
  });
}

int ReadNumber(const WCHAR *&p) {
  int v = 0;
  for (; IsDigit(*p); ++p) v = v > (INT_MAX - 9) / 10 ? INT_MAX : v * 10 + (*p - '0');
  return v;
}

}  // namespace

int FormatV(WCHAR *dst, int size, const WCHAR *format, va_list args) {
  Out out(dst, size);
  if (!format) return out.Finish();
  va_list ap;
  va_copy(ap, args);
  const WCHAR *p = format;
  while (*p) {
    if (*p != '%') {
      out.Put(*p++);
      continue;
    }
    const WCHAR *start = p++;
    Directive dir;
    for (;; ++p) {
      if (*p == '-')
        dir.left = true;
      else if (*p == '+')
        dir.plus = true;
      else if (*p == ' ')
        dir.space = true;
      else if (*p == '0')
        dir.zero = true;
      else if (*p == '#')
        dir.alt = true;
      else
        break;
    }
    if (*p == '*') {
      ++p;
      int w = va_arg(ap, int);
      if (w < 0) {
        dir.left = true;
        w = w == INT_MIN ? INT_MAX : -w;
      }
      dir.width = w;
    } else {
      dir.width = ReadNumber(p);
    }
    if (*p == '.') {
      ++p;
      if (*p == '*') {
        ++p;
        int pr = va_arg(ap, int);
        dir.prec = pr < 0 ? -1 : pr;
      } else {
        dir.prec = ReadNumber(p);
      }
    }
    switch (*p) {
      case 'h':
        ++p;
        dir.chars = Chars::Narrow;
        dir.size = Size::Short;
        if (*p == 'h') {
          ++p;
          dir.size = Size::Char;
        }
        break;
      case 'l':
        ++p;
        dir.chars = Chars::Wide;
        dir.size = Size::Int32;
        if (*p == 'l') {
          ++p;
          dir.size = Size::Int64;
        }
        break;
      case 'w':
        ++p;
        dir.chars = Chars::Wide;
        break;
      case 'L':
        ++p;
        dir.size = Size::LongDouble;
        break;
      case 'j':
        ++p;
        dir.size = Size::Int64;
        break;
      case 'z':
      case 't':
        ++p;
        dir.size = Size::Pointer;
        break;
      case 'I':
        ++p;
        if (p[0] == '6' && p[1] == '4') {
          p += 2;
          dir.size = Size::Int64;
        } else if (p[0] == '3' && p[1] == '2') {
          p += 2;
          dir.size = Size::Int32;
        } else {
          dir.size = Size::Pointer;
        }
        break;
      default:
        break;
    }
    WCHAR conv = *p;
    if (!conv) {
      out.Put(start, p - start);  // a cut-off directive is printed as it stands
      break;
    }
    ++p;
    switch (conv) {
      case 'd':
      case 'i': {
        int64_t v;
        switch (dir.size) {
          case Size::Char:
            v = static_cast<signed char>(va_arg(ap, int));
            break;
          case Size::Short:
            v = static_cast<short>(va_arg(ap, int));
            break;
          case Size::Int64:
            v = va_arg(ap, long long);
            break;
          case Size::Pointer:
            v = va_arg(ap, intptr_t);
            break;
          default:
            v = va_arg(ap, int);
            break;
        }
        uint64_t mag = v < 0 ? 0 - static_cast<uint64_t>(v) : static_cast<uint64_t>(v);
        EmitInteger(out, dir, mag, v < 0, true, 10, false);
        break;
      }
      case 'u':
      case 'o':
      case 'x':
      case 'X': {
        uint64_t v;
        switch (dir.size) {
          case Size::Char:
            v = static_cast<unsigned char>(va_arg(ap, unsigned));
            break;
          case Size::Short:
            v = static_cast<unsigned short>(va_arg(ap, unsigned));
            break;
          case Size::Int64:
            v = va_arg(ap, unsigned long long);
            break;
          case Size::Pointer:
            v = va_arg(ap, uintptr_t);
            break;
          default:
            v = va_arg(ap, unsigned);
            break;
        }
        int base = conv == 'u' ? 10 : conv == 'o' ? 8 : 16;
        EmitInteger(out, dir, v, false, false, base, conv == 'X');
        break;
      }
      case 'p': {
        // Windows prints every address with all its digits, in capitals.
        uintptr_t v = reinterpret_cast<uintptr_t>(va_arg(ap, void *));
        dir.prec = 2 * sizeof(void *);
        dir.alt = false;
        EmitInteger(out, dir, v, false, false, 16, true);
        break;
      }
      case 'c':
      case 'C': {
        bool narrow = dir.chars == Chars::Narrow || (conv == 'C' && dir.chars != Chars::Wide);
        int v = va_arg(ap, int);
        WCHAR c =
            narrow ? static_cast<WCHAR>(static_cast<unsigned char>(v)) : static_cast<WCHAR>(v);
        dir.prec = -1;
        Emit(out, dir, "", 0, 1, [&](Out &o) { o.Put(c); });
        break;
      }
      case 's':
      case 'S': {
        bool narrow = dir.chars == Chars::Narrow || (conv == 'S' && dir.chars != Chars::Wide);
        int prec = dir.prec;
        dir.prec = -1;
        if (narrow) {
          const char *s = va_arg(ap, const char *);
          if (!s) s = "(null)";
          int64_t n = 0;
          while ((prec < 0 || n < prec) && s[n]) ++n;
          Emit(out, dir, "", 0, n, [&](Out &o) { o.Put(s, n); });
        } else {
          const WCHAR *s = va_arg(ap, const WCHAR *);
          if (!s) s = TEXT("(null)");
          int64_t n = prec < 0 ? Len(s) : LenBounded(s, prec);
          Emit(out, dir, "", 0, n, [&](Out &o) { o.Put(s, n); });
        }
        break;
      }
      case 'e':
      case 'E':
      case 'f':
      case 'F':
      case 'g':
      case 'G':
      case 'a':
      case 'A': {
        double v = dir.size == Size::LongDouble ? static_cast<double>(va_arg(ap, long double))
                                                : va_arg(ap, double);
        EmitFloat(out, dir, v, static_cast<char>(conv));
        break;
      }
      case '%':
        out.Put('%');
        break;
      default:
        // Unknown conversions (and %n, which Windows refuses) are printed as
        // they stand and take no argument.
        out.Put(start, p - start);
        break;
    }
  }
  va_end(ap);
  return out.Finish();
}

int Format(WCHAR *dst, int size, const WCHAR *format, ...) {
  va_list args;
  va_start(args, format);
  int n = FormatV(dst, size, format, args);
  va_end(args);
  return n;
}

}  // namespace tv
