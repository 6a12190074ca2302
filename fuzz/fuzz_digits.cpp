// Tavona_ScanDigitString against a plain transcription of its rules, and
// Tavona_ExtractFirstDigitString never writing past outSize.
#include <tavona/text.h>

#include <cstring>

#include "fuzzutil.h"

namespace {

using fuzz::WStr;

bool IsDigit(WCHAR c) { return c >= '0' && c <= '9'; }

// The first candidate position, measuring the run afresh at each one.
int Expected(const WStr &text, int minDigits, const WStr &prefix, const WStr &suffix, int *count) {
  for (size_t p = 0; p < text.size();) {
    size_t n = 0;
    while (p + n < text.size() && IsDigit(text[p + n])) ++n;
    if (static_cast<int>(n) < minDigits) {
      p += n ? n : 1;
    } else if (!prefix.empty() &&
               (p < prefix.size() || text.compare(p - prefix.size(), prefix.size(), prefix))) {
      ++p;
    } else if (!suffix.empty() && text.compare(p + n, suffix.size(), suffix)) {
      ++p;
    } else {
      *count = static_cast<int>(n);
      return static_cast<int>(p);
    }
  }
  *count = 0;
  return -1;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  int minDigits = in.Byte() % 6 - 1;
  int outSize = in.Byte() % 10 - 1;
  uint8_t nulls = in.Byte();
  const char16_t *alphabet = u"0123456789x.";
  WStr prefix = in.Text(alphabet, 3), suffix = in.Text(alphabet, 3), text = in.Text(alphabet, 500);

  fuzz::Exact<WCHAR> t(text.size() + 1);
  std::memcpy(t.get(), text.c_str(), (text.size() + 1) * sizeof(WCHAR));
  const WCHAR *pre = (nulls & 1) && prefix.empty() ? nullptr : prefix.c_str();
  const WCHAR *suf = (nulls & 2) && suffix.empty() ? nullptr : suffix.c_str();

  const WCHAR *found = nullptr;
  INT count = -1;
  int ret = Tavona_ScanDigitString(t.get(), minDigits, pre, suf, &found, &count);
  int expectCount = 0;
  int expectAt = Expected(text, minDigits, prefix, suffix, &expectCount);
  fuzz::Check(ret == (expectAt >= 0) && count == expectCount, "result and count");
  fuzz::Check(found == (expectAt >= 0 ? t.get() + expectAt : nullptr), "position");

  fuzz::Exact<WCHAR> out(outSize > 0 ? outSize : 0);
  int got = Tavona_ExtractFirstDigitString(t.get(), minDigits, pre, suf, out.get(), outSize);
  if (outSize < 1 || minDigits < 1) {
    fuzz::Check(got == 0, "refused");
  } else {
    fuzz::Check(got == ret, "extract agrees");
    int k = got ? (count < outSize - 1 ? count : outSize - 1) : 0;
    fuzz::Check(out.get()[k] == 0, "terminated after k bytes");
  }
  return 0;
}
