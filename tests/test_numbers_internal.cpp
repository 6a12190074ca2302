// The dialogs' format rebuilding and the fixed-point digits behind the
// float formats (reading codes is checked through the exports).
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "testutil.h"
#include "text/numbers.h"

namespace {

WStr W(const char *s) { return WStr(s, s + std::strlen(s)); }

// The dialogs' rebuilding: the code only when len + 4 < room, the escaped
// value while more than 2 units of room remain.
TEST(NumberCodes, WriteCode) {
  struct Row {
    const char *value;
    int room;
    const char *expected;
    int roomAfter;
  } rows[] = {
      {"", 200, "%T", 198},   {"5%\\", 200, "%T5\\p\\\\", 193}, {"abc", 8, "%Tabc", 3},
      {"abc", 7, "abc", 4},   {"abcdef", 5, "abc", 2},          {"%", 4, "\\p", 2},
      {"%", 3, "\\", 2},      // an escape may be cut in half
  };
  for (const auto &r : rows) {
    WCHAR dst[200] = {};
    int room = r.room;
    tv::num::WriteCode(dst, 200, room, 'T', W(r.value).c_str());
    EXPECT_EQ(Narrow(dst), r.expected) << "value " << r.value << " room " << r.room;
    EXPECT_EQ(room, r.roomAfter) << "value " << r.value;
  }
}

struct DigitsRow {
  double value;
  int fraction;
  const char *digits;  // nullptr: outside the range
  bool negative;
};

// The exact value, rounded half up at the place asked for: fuzz_numbers
// compares the digits with the exact expansion and the sign; here zero,
// the refusals beyond 19 digits (which it allows but does not demand) and
// negative places.
const DigitsRow kDigits[] = {
    {2.675, 2, "267", false},      {-0.001, 2, "", true},         {0.0, 2, "00", false},
    {7.0, 19, nullptr, false},     {1e18, 1, nullptr, false},     {1e19, 0, nullptr, false},
    {1e18, 0, "1000000000000000000", false},
    {1249.5, -2, "12", false},  // rounded at the hundreds, which are left out
};

TEST(FixedDigits, Table) {
  for (const DigitsRow &r : kDigits) {
    char digits[20];
    bool negative = !r.negative;
    bool ok = tv::num::FixedDigits(r.value, r.fraction, digits, negative);
    EXPECT_EQ(ok, r.digits != nullptr) << r.value << " F" << r.fraction;
    EXPECT_STREQ(digits, r.digits ? r.digits : "") << r.value << " F" << r.fraction;
    EXPECT_EQ(negative, r.negative) << r.value;
  }
}

}  // namespace
