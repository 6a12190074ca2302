// The library's formatter and appender (internal; host and Windows).
#include "base/wstr.h"

#ifdef TAVONA_HOST_TEST
#include "frame/host/hostplat.h"
#endif

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "testutil.h"

namespace {

constexpr WCHAR kGuard = 0xBEEF;

// The full text of one call; cutting at every size is fuzz_format's part.
std::string Formatted(const std::function<int(WCHAR *, int)> &call) {
  std::vector<WCHAR> big(4096, kGuard);
  int len = call(big.data(), static_cast<int>(big.size()));
  EXPECT_EQ(len, static_cast<int>(WStr(big.data()).size()));
  return Narrow(big.data());
}

#define EXPECT_FORMAT(expected, fmt, ...)                              \
  EXPECT_EQ(Formatted([&](WCHAR *d, int s) {                           \
              return tv::Format(d, s, fmt __VA_OPT__(, ) __VA_ARGS__); \
            }),                                                        \
            expected)                                                  \
      << "format \"" << Narrow(fmt) << "\""

// What the narrow printf of the host does differently or not at all.
TEST(TextFormat, WindowsWidePrintfConversions) {
  EXPECT_FORMAT("-2147483648 ffffffff 1234567890123 -5 ff 18446744073709551615 -3 -128 65535",
                TEXT("%ld %lx %lld %I64d %I64x %zu %Id %hhd %hu"), INT_MIN, 0xFFFFFFFFu,
                1234567890123LL, -5LL, 255ULL, SIZE_MAX, static_cast<intptr_t>(-3), 128, -1);
  EXPECT_FORMAT("ab|  abc|abc  |00abc|(null)|(nu", TEXT("%.2s|%5s|%-5s|%05s|%s|%.3s"), TEXT("abc"),
                TEXT("abc"), TEXT("abc"), TEXT("abc"), static_cast<const WCHAR *>(nullptr),
                static_cast<const WCHAR *>(nullptr));
  EXPECT_FORMAT("nar|nar|wide|wide|(null)", TEXT("%hs|%S|%ls|%ws|%hs"), "nar", "nar", TEXT("wide"),
                TEXT("wide"), static_cast<const char *>(nullptr));
  EXPECT_FORMAT("x|y|  z|\\u00E9|\\u4E2D", TEXT("%c|%C|%3c|%hc|%lc"), TEXT('x'), 'y', TEXT('z'),
                '\xE9', 0x4E2D);
  EXPECT_FORMAT("100%|   42|42   |42|inf|1.5", TEXT("100%%|%*d|%*d|%.*d|%f|%Lg"), 5, 42, -5, 42, -1,
                42, INFINITY, 1.5L);
  EXPECT_FORMAT("%y|%n|ab%-5", TEXT("%y|%n|ab%-5"));
  std::string ptr(2 * sizeof(void *) - 2, '0');
  EXPECT_FORMAT(ptr + "FF", TEXT("%p"), reinterpret_cast<void *>(0xFF));
  WCHAR small[8];
  EXPECT_EQ(tv::Format(small, 8, TEXT("%*d"), 2000000000, 1), 2000000000);
  EXPECT_EQ(tv::Format(small, 8, TEXT("%d%2147483647d"), 1, 2), INT_MAX);
  EXPECT_EQ(Narrow(small), "1      ");
}

// Float conversions agree with the C runtime's narrow printf (integers are
// compared by fuzz_format).
TEST(TextFormat, AgreesWithNarrowPrintf) {
  const char *flags[] = {"", "-", "+", " ", "0", "#", "-+", "0#", "+0", "- #"};
  const char *widths[] = {"", "1", "9"};
  const char *precisions[] = {"", ".0", ".3"};
  const double doubles[] = {0.0, -1.5, 1e-5, 123456.789, 1e100, 0.000123};
  int failures = 0;
  auto check = [&](const std::string &fmt, auto value) {
    char expect[512];
    WCHAR got[512];
    std::snprintf(expect, sizeof expect, fmt.c_str(), value);
    tv::Format(got, 512, WStr(fmt.begin(), fmt.end()).c_str(), value);
    if (Narrow(got) != expect && ++failures < 10)
      ADD_FAILURE() << fmt << " of " << value << ": got '" << Narrow(got) << "' expected '"
                    << expect << "'";
  };
  for (const char *f : flags)
    for (const char *w : widths)
      for (const char *p : precisions)
        for (char conv : std::string("eEfgG"))
          for (double v : doubles) check(std::string("%") + f + w + p + conv, v);
}

}  // namespace
