// tv::FormatV through tv::Format, one directive at a time with an argument
// of the type the directive takes: the full length is returned at every
// size, the text is cut and terminated within the size (exact heap blocks),
// and integer directives agree with the C runtime's narrow printf. Widths
// and precisions go up to 2^32 (written or through '*'); every call must
// finish in time proportional to the room it writes into. The same
// directives as message templates (tv::FormatTemplate) must be cut at the
// buffer, never emptied, and as quick.
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "frame/reportcore.h"
#include "fuzzutil.h"
#include "base/wstr.h"

namespace {

using fuzz::WStr;
using Clock = std::chrono::steady_clock;

constexpr int kRoom = 1 << 14;                          // largest buffer written
constexpr auto kBound = std::chrono::milliseconds(500);  // per call, sanitizers included

void CheckTime(Clock::time_point start, const char *what) {
  fuzz::Check(Clock::now() - start < kBound, what);
}

template <typename... Args>
int Run(fuzz::Input &in, const WStr &fmt, Args... args) {
  auto start = Clock::now();
  int len = tv::Format(nullptr, 0, fmt.c_str(), args...);
  fuzz::Check(len >= 0, "length");
  int room = len < kRoom ? len + 1 : kRoom;
  fuzz::Exact<WCHAR> full(static_cast<size_t>(room));
  fuzz::Check(tv::Format(full.get(), room, fmt.c_str(), args...) == len, "same length");
  int size = static_cast<int>(in.Unit() % (room + 1));
  fuzz::Exact<WCHAR> cut(static_cast<size_t>(size));
  fuzz::Check(tv::Format(cut.get(), size, fmt.c_str(), args...) == len, "length when cut");
  if (size > 0) {
    int keep = len < size - 1 ? len : size - 1;
    fuzz::Check(std::memcmp(cut.get(), full.get(), keep * sizeof(WCHAR)) == 0, "prefix");
    fuzz::Check(cut.get()[keep] == 0, "terminated");
  }
  CheckTime(start, "time of Format");
  return len;
}

// A width or precision: mostly small, sometimes near or beyond 2^31.
int64_t Amount(fuzz::Input &in) {
  uint8_t kind = in.Byte();
  uint32_t v = static_cast<uint32_t>(in.Unit()) | static_cast<uint32_t>(in.Unit()) << 16;
  switch (kind % 4) {
    case 0: return INT_MAX - static_cast<int64_t>(v % 3000);
    case 1: return v;  // up to 2^32 - 1
    default: return v % 3000;
  }
}

// The directive as a message template with string arguments.
void RunTemplate(fuzz::Input &in, const WStr &tmpl) {
  static const WStr longArg(5000, 'L');
  const WCHAR *args[5] = {u"arg", nullptr, longArg.c_str(), u"", u"x"};
  int size = static_cast<int>(in.Unit() % 2100);
  fuzz::Exact<WCHAR> out(static_cast<size_t>(size));
  auto start = Clock::now();
  int n = tv::FormatTemplate(size ? out.get() : nullptr, size, tmpl.c_str(), args, 5);
  CheckTime(start, "time of FormatTemplate");
  if (size < 1) return;
  fuzz::Check(n >= 0 && n < size && out.get()[n] == 0, "template cut and terminated");
  // The literal head of the template survives every argument.
  fuzz::Check(size < 3 || (out.get()[0] == 'a' && out.get()[1] == 'b'), "template head");
}

// Compares with the narrow printf when the directive means the same there.
template <typename... Args>
void CompareNarrow(const std::string &fmt, const WStr &wfmt, Args... args) {
  char expect[4096];
  int n = std::snprintf(expect, sizeof expect, fmt.c_str(), args...);
  if (n < 0 || n >= static_cast<int>(sizeof expect)) return;
  WCHAR got[4096];
  tv::Format(got, 4096, wfmt.c_str(), args...);
  for (int i = 0; i <= n; ++i)
    fuzz::Check(got[i] == static_cast<unsigned char>(expect[i]), fmt.c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  static const char *const kSizes[] = {"",    "",  "h", "hh", "l", "ll", "I64",
                                       "I32", "I", "z", "w",  "L", "j"};
  static const char kConvs[] = "diuxXocCsSpeEfFgGaA%nyq";
  while (!in.Empty()) {
    std::string directive = "%";
    uint8_t f = in.Byte();
    for (int i = 0; i < 5; ++i)
      if (f & (1 << i)) directive += "-+ 0#"[i];
    bool starW = f & 0x20, starP = f & 0x40, hasP = f & 0x80;
    int64_t wAmount = Amount(in), pAmount = Amount(in);
    bool negW = in.Byte() & 1;
    if (starW)
      directive += "*";
    else if (wAmount > 0)
      directive += std::to_string(wAmount);
    if (starP)
      directive += ".*";
    else if (hasP)
      directive += "." + std::to_string(pAmount);
    const char *mod = kSizes[in.Byte() % (sizeof kSizes / sizeof *kSizes)];
    char conv = kConvs[in.Byte() % (sizeof kConvs - 1)];
    std::string lit = "ab";
    std::string fmt = lit + directive + mod + conv + lit;
    WStr wfmt(fmt.begin(), fmt.end());
    RunTemplate(in, wfmt);
    // Star arguments come first: 32-bit values, a negative width meaning '-'.
    int w = static_cast<int>(static_cast<uint32_t>(wAmount)), p = static_cast<int>(static_cast<uint32_t>(pAmount));
    if (negW) w = -w;
    bool small = wAmount < 3000 && pAmount < 3000;
    auto go = [&](auto... value) {
      if (starW && starP)
        Run(in, wfmt, w, p, value...);
      else if (starW)
        Run(in, wfmt, w, value...);
      else if (starP)
        Run(in, wfmt, p, value...);
      else
        Run(in, wfmt, value...);
    };
    std::string m = mod;
    bool wide64 = m == "ll" || m == "I64" || m == "j";
    bool ptrSize = m == "I" || m == "z";
    bool wideMod = m == "l" || m == "ll" || m == "w";
    bool narrowStr = m == "h" || m == "hh" || ((conv == 'S' || conv == 'C') && !wideMod);
    int32_t i32 = static_cast<int32_t>(in.Unit() << 16 | in.Unit());
    long long i64 =
        static_cast<long long>(static_cast<uint64_t>(static_cast<uint32_t>(i32)) << 32 | in.Unit());
    switch (conv) {
      case 'd':
      case 'i':
      case 'u':
      case 'x':
      case 'X':
      case 'o':
        if (wide64)
          go(i64);
        else if (ptrSize)
          go(static_cast<intptr_t>(i64));
        else
          go(i32);
        if (small && !starW && !starP && m.empty()) CompareNarrow(fmt, wfmt, i32);
        if (small && !starW && !starP && m == "ll") CompareNarrow(fmt, wfmt, i64);
        break;
      case 'c':
      case 'C':
        go(static_cast<int>(in.Unit()));
        break;
      case 's':
      case 'S': {
        static const WCHAR kWide[] = u"wide text";
        if (in.Byte() & 1)
          go(static_cast<const void *>(nullptr));
        else if (narrowStr)
          go("narrow text");
        else
          go(kWide);
        break;
      }
      case 'p':
        go(reinterpret_cast<void *>(static_cast<uintptr_t>(i64)));
        break;
      case 'e':
      case 'E':
      case 'f':
      case 'F':
      case 'g':
      case 'G':
      case 'a':
      case 'A': {
        double v;
        uint64_t bits = static_cast<uint64_t>(i64) * 0x9E3779B97F4A7C15ULL;
        std::memcpy(&v, &bits, sizeof v);
        if (m == "L")
          go(static_cast<long double>(v));
        else
          go(v);
        break;
      }
      default:
        go();
        break;  // %% and directives that take no argument
    }
  }
  return 0;
}
