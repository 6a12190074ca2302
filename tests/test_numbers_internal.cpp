// Format codes and the fixed-point digits behind the float formats. Under
// wine the digits are compared with the C runtime's own _fcvt_s.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "testutil.h"
#include "text/numbers.h"

#ifdef _WIN32
#include <stdlib.h>
#endif

namespace {

WStr W(const char *s) { return WStr(s, s + std::strlen(s)); }

TEST(NumberCodes, ReadCode) {
  struct Row {
    const char *format;
    char code;
    int size;
    const char *expected;
  } rows[] = {
      {"%T.%D,%F02", 'F', 10, "02"},   {"%T%D,", 'T', 10, ""},  // followed by '%'
      {"%D,", 'T', 10, ""},            {"%B\\p\\\\x", 'B', 10, "%\\x"},
      {"%Ba\\qb", 'B', 10, "ab"},      {"%Ba\\%Ec", 'B', 10, "aEc"},  // unknown escapes drop both
      {"%Bab\\", 'B', 10, "ab"},       {"%B0123456789abc", 'B', 10, "012345678"},
      {"%B0123456789abc", 'B', 1, ""}, {"%B\\p\\p\\p", 'B', 3, "%%"},
      {"x%%B1%B2", 'B', 10, "1"},      {"%T", 'T', 10, ""},
  };
  for (const auto &r : rows) {
    WCHAR out[16];
    int n = tv::num::ReadCode(W(r.format).c_str(), static_cast<WCHAR>(r.code), out, r.size);
    EXPECT_EQ(Narrow(out), r.expected) << r.format << " code " << r.code << " size " << r.size;
    EXPECT_EQ(n, static_cast<int>(std::strlen(r.expected))) << r.format;
  }
  WCHAR out[4] = {'x', 0};
  EXPECT_EQ(tv::num::ReadCode(nullptr, 'T', out, 4), 0);
  EXPECT_EQ(out[0], 0);
}

// The dialogs' rebuilding: the code only when len + 4 < room, the escaped
// value while more than 2 units of room remain; codes read back.
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
  WCHAR dst[200] = {}, back[100];
  int room = 200;
  tv::num::WriteCode(dst, 200, room, 'B', W("50% \\ off").c_str());
  tv::num::WriteCode(dst, 200, room, 'E', W("x").c_str());
  tv::num::ReadCode(dst, 'B', back, 100);
  EXPECT_EQ(Narrow(back), "50% \\ off");
  tv::num::ReadCode(dst, 'E', back, 100);
  EXPECT_EQ(Narrow(back), "x");
}

TEST(NumberCodes, RuntimeReaders) {
  struct Row {
    const char *text;
    INT asLong;
    double asDouble;
  } rows[] = {
      {"", 0, 0.0},         {"  42x", 42, 42.0},      {"\t-17", -17, -17.0},
      {"+8", 8, 8.0},       {"--8", 0, 0.0},          {"2147483648", 2147483647, 2147483648.0},
      {"1.5e2", 1, 150.0},  {"1.5e+", 1, 1.5},        {"-.25", 0, -0.25},
      {"-2147483649", -2147483647 - 1, -2147483649.0},
  };
  for (const auto &r : rows) {
    EXPECT_EQ(tv::num::ToLong(W(r.text).c_str()), r.asLong) << r.text;
    EXPECT_EQ(tv::num::ToDouble(W(r.text).c_str()), r.asDouble) << r.text;
  }
}

struct DigitsRow {
  double value;
  int fraction;
  const char *digits;  // nullptr: outside the range
  bool negative;
};

// The exact value, rounded half up at the place asked for.
const DigitsRow kDigits[] = {
    {0.125, 2, "13", false},       {9.5, 0, "10", false},         {-0.125, 2, "13", true},
    {2.675, 2, "267", false},      {1.005, 2, "100", false},      {0.045, 2, "4", false},
    {0.005, 2, "1", false},        {99.995, 2, "10000", false},   {1e-14, 2, "", false},
    {-0.001, 2, "", true},         {0.0, 2, "00", false},         {-0.0, 2, "00", true},
    {0.0, 0, "", false},           {5e-324, 2, "", false},        {0.0004, 3, "", false},
    {1234567.885, 2, "123456789", false},
    {1e15 + 0.5, 0, "1000000000000001", false},
    {0.1, 18, "100000000000000006", false},
    {123456789012345678.0, 0, "123456789012345680", false},
    {999999999999999999.0, 0, "1000000000000000000", false},
    {0.00049999999999999999, 3, "1", false},
    {0.07, 19, "700000000000000067", false},
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
  char digits[20];
  bool negative = false;
  EXPECT_FALSE(tv::num::FixedDigits(std::nan(""), 2, digits, negative));
  EXPECT_FALSE(tv::num::FixedDigits(HUGE_VAL, 2, digits, negative));
}

#ifdef _WIN32
// The runtime's own _fcvt_s agrees wherever its result fits the buffer:
// the table, halfway cases at every place and a spread of ordinary values.
TEST(FixedDigits, SameAsRuntime) {
  std::vector<std::pair<double, int>> cases;
  for (const DigitsRow &r : kDigits)
    if (r.digits && r.fraction >= 0 && r.value != 0.0) cases.push_back({r.value, r.fraction});
  for (int f = 0; f <= 6; ++f)
    for (int k = 0; k < 200; ++k) {
      cases.push_back({(k + 0.5) / std::pow(10.0, f), f});
      cases.push_back({-(k + 0.5) / std::pow(10.0, f), f});
    }
  for (int k = 1; k < 2000; ++k) cases.push_back({k * 1234.5678 / 7.0, k % 8});
  for (int e = -12; e <= 16; ++e) cases.push_back({1.2345678901234567 * std::pow(10.0, e), 2});
  for (const auto &[value, fraction] : cases) {
    char ours[20], theirs[20];
    bool negative = false;
    if (!tv::num::FixedDigits(value, fraction, ours, negative)) continue;
    int decimalPoint = 0, sign = 0;
    ASSERT_EQ(_fcvt_s(theirs, sizeof theirs, value, fraction, &decimalPoint, &sign), 0);
    EXPECT_STREQ(ours, theirs) << value << " F" << fraction;
    EXPECT_EQ(negative, sign != 0) << value;
  }
}
#endif

}  // namespace
