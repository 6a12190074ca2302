// The four number format routines with random formats, values, texts and
// output sizes: nothing is written past the size given (exact heap blocks),
// the output is terminated within it, and formatting is deterministic. The
// fraction digits agree with the exact decimal expansion of the value.
#include <tavona/text.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

#include "fuzzutil.h"
#include "text/numbers.h"

namespace {

using fuzz::WStr;

const char16_t kFormatAlphabet[] = u"%%%%TWFDBEZ+-\\p.,'0123456789 -xe";
const char16_t kTextAlphabet[] = u"0123456789-.,+ e'%\\abc";

template <typename Write>
void CheckWrite(fuzz::Input &in, Write write) {
  int size = static_cast<int>(in.Byte() % 120) - 2;
  size_t alloc = size > 0 ? static_cast<size_t>(size) : 1;
  fuzz::Exact<WCHAR> out(alloc);
  std::memset(out.get(), 0x41, alloc * sizeof(WCHAR));
  write(out.get(), size);
  if (size >= 2) {
    size_t len = 0;
    while (len < static_cast<size_t>(size) && out.get()[len]) ++len;
    fuzz::Check(len < static_cast<size_t>(size), "terminated within the size");
    fuzz::Exact<WCHAR> again(alloc);
    write(again.get(), size);
    fuzz::Check(std::memcmp(out.get(), again.get(), (len + 1) * sizeof(WCHAR)) == 0,
                "deterministic");
  }
}

// The digits of value rounded at the place, halves away from zero, worked
// out from glibc's exact decimal expansion.
std::string ReferenceDigits(double value, int fraction) {
  static char text[1500];
  std::snprintf(text, sizeof text, "%.1100f", std::fabs(value));
  std::string whole, frac;
  const char *p = text;
  for (; *p && *p != '.'; ++p) whole += *p;
  if (*p == '.') ++p;
  frac = p;
  std::string digits = whole + frac.substr(0, fraction);
  if (frac[fraction] >= '5') {
    int i = static_cast<int>(digits.size()) - 1;
    for (; i >= 0 && digits[i] == '9'; --i) digits[i] = '0';
    if (i >= 0)
      ++digits[i];
    else
      digits.insert(digits.begin(), '1');
  }
  size_t start = digits.find_first_not_of('0');
  return start == std::string::npos ? std::string() : digits.substr(start);
}

void CheckDigits(fuzz::Input &in) {
  uint64_t bits = 0;
  for (int i = 0; i < 4; ++i) bits = bits << 16 | in.Unit();
  double value;
  std::memcpy(&value, &bits, sizeof value);
  uint8_t shape = in.Byte();
  // Mostly magnitudes from 2^-30 to 2^59, where the digits fit.
  if ((shape & 1) && std::isfinite(value) && value != 0.0)
    value = std::ldexp(value, (shape >> 1) % 90 - 30 - std::ilogb(value));
  int fraction = in.Byte() % 22;
  char digits[20];
  bool negative = false;
  bool ok = tv::num::FixedDigits(value, fraction, digits, negative);
  fuzz::Check(negative == std::signbit(value), "sign");
  if (!std::isfinite(value)) {
    fuzz::Check(!ok, "not finite");
    return;
  }
  if (value == 0.0) return;
  std::string expected = ReferenceDigits(value, fraction);
  if (ok)
    fuzz::Check(expected == digits, "digits as the exact value gives them");
  else
    fuzz::Check(fraction > 19 || std::fabs(value) >= 1e19 || expected.size() > 19,
                "refused only beyond 19 digits");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  uint8_t choice = in.Byte();
  WStr format = in.Text(kFormatAlphabet, 120);
  const WCHAR *f = (choice & 0x80) ? nullptr : format.c_str();
  switch (choice % 5) {
    case 4:
      CheckDigits(in);
      break;
    case 0: {
      INT value = static_cast<INT>(static_cast<uint32_t>(in.Unit()) << 16 | in.Unit());
      CheckWrite(in, [&](WCHAR *out, int n) { Int_To_FormattedInt(value, out, n, f); });
      break;
    }
    case 1: {
      uint64_t bits = 0;
      for (int i = 0; i < 4; ++i) bits = bits << 16 | in.Unit();
      double value;
      std::memcpy(&value, &bits, sizeof value);
      if (choice & 0x40) value = static_cast<double>(static_cast<int64_t>(bits) % 100000000) / 1000.0;
      CheckWrite(in, [&](WCHAR *out, int n) { Float_To_FormattedFloat(value, out, n, f); });
      break;
    }
    case 2: {
      WStr text = in.Text(kTextAlphabet, 200);
      INT value = 0;
      fuzz::Check(FormattedInt_To_Int(text.c_str(), &value, f) == 0, "int read result");
      break;
    }
    default: {
      WStr text = in.Text(kTextAlphabet, 200);
      double value = 0;
      fuzz::Check(FormattedFloat_To_Float(text.c_str(), &value, f) == 0, "float read result");
      break;
    }
  }
  return 0;
}
