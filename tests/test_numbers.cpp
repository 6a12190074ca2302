// Integer and float formats through the exported functions, on the host and
// through the DLL under wine.
#include <gtest/gtest.h>
#include <tavona/text.h>

#include <climits>
#include <string>

#include "testutil.h"

namespace {

// Bytes above 127 stand for the Latin-1 characters.
WStr W(const char *s) {
  WStr w;
  for (; s && *s; ++s) w += static_cast<WCHAR>(static_cast<unsigned char>(*s));
  return w;
}
const WCHAR *Or(const char *s, const WStr &w) { return s ? w.c_str() : nullptr; }

template <typename T>
struct WriteRow {
  T value;
  const char *format;  // nullptr: NULL
  int size;
  const char *expected;
};

// Each row written into a guarded buffer of its size.
template <typename T, size_t N>
void ExpectWritten(const WriteRow<T> (&rows)[N], void(WINAPI *write)(T, WCHAR *, INT, const WCHAR *)) {
  for (const WriteRow<T> &r : rows) {
    WStr format = W(r.format);
    GuardedBuffer<WCHAR> out(r.size, TEXT("X"));
    write(r.value, out.data(), r.size, Or(r.format, format));
    EXPECT_TRUE(out.Intact() && Narrow(out.Text()) == r.expected && (r.size > 1 || !out.Touched()))
        << "value " << r.value << " format " << (r.format ? r.format : "NULL") << " size " << r.size
        << ": got '" << Narrow(out.Text()) << "' expected '" << r.expected << "'";
  }
}

TEST(IntFormat, Writes) {
  const WriteRow<INT> rows[] = {
      {1234567, nullptr, 100, "1.234.567"}, {1234567, "", 100, "1.234.567"},
      {1000, "%T", 100, "1000"},            {42, "%T,%W6%+", 100, "+000,042"},
      {0, "%T%Znone%B[%E]", 100, "none"},   {5, "%T%Znone%B[%E]", 100, "[5]"},
      {-7, "%-", 100, "7"},                 {0, "%+", 100, "+0"},
      {INT_MIN, nullptr, 100, "--2.147.483.648"},
      // whole separators of several characters
      {1234567, "%T123456789xyz", 100, "1123456789234123456789567"},
      // width: capped at 60, a negative one counts as 60, padding groups
      {1, "%W4%T.", 100, "0.001"},
      {1, "%W70", 100, "000000000000000000000000000000000000000000000000000000000001"},
      {1, "%W-1", 100, "000000000000000000000000000000000000000000000000000000000001"},
      // too long a number text leaves only the texts around it
      {1, "%W60%T..%B<%E>", 100, "<>"},
      {1, "%W60%T.%B<%E>", 100, "<000.000.000.000.000.000.000.000.000.000.000.000.000.000.000.000.000.000.000.001"},  // no room left for ">"
      // escapes in values, and a code followed by '%' has no value
      {5, "%B\\\\%E\\p\\x", 100, "\\5%"},   {5, "%B%E!", 100, "5!"},
      {1234, "%T,%T;", 100, "1,234"},       // only the first occurrence counts
      // The room rules: the leading text needs len + 1 < size; the number
      // must then fit beside it within size - len(leading text); the
      // trailing text likewise, and a failed append empties everything.
      {1234, "%T.%B[[%E]]", 8, "[[]]"},     {1234, "%T.%B[[%E]]", 9, ""},
      {1234, "%T.%B[[%E]]", 10, "[[1.234"}, {1234, "%T.%B[[%E]]", 17, "[[1.234]]"},
      {12, "%B0123456789", 11, "12"},       {12, "%B0123456789", 12, "0123456789"},
      {0, "%Z12%Babc", 6, "12"},            {0, "%Z123%Babc", 6, ""},  // a zero text
      {5, nullptr, 2, ""},                  {5, nullptr, 3, "5"},
      {5, nullptr, 1, ""},  // untouched below 2
  };
  ExpectWritten(rows, Int_To_FormattedInt);
}

TEST(FloatFormat, Writes) {
  const double inf = 1e308 * 10;
  const WriteRow<double> rows[] = {
      {1234567.89, nullptr, 100, "1.234.567,89"}, {-0.0, nullptr, 100, "-0,00"},
      {1234.5, "%F0%T.", 100, "1.235"},           {1e-14, "%Z-%F2%D.", 100, "-"},
      {-0.001, "%Z-%F2%D.", 100, "-0.00"},        {1.0, "%+", 100, "+1"},  // no %F: no fraction
      {99.995, nullptr, 100, "100,00"},           {1250.0, "%F-2", 100, "13"},
      {1234567.0, "%T%%F1%D.", 100, "1234567.0"}, {1234567.0, "%F2%DABC", 100, "1234567A00"},
      {1e18, "%F0%T.", 100, "1.000.000.000.000.000.000"},
      {1e19, "%F0%B<%E>", 100, "<>"},             {1.5, "%F20%B<%E>", 100, "<>"},  // beyond 19 digits
      // The room rules are the integers' (one writer).
      {inf, "%B<%E>", 50, "<>"},                  {inf - inf, "%B<%E>%Znull", 50, "<>"},
      // The number text is built from the right in 199 units of room and
      // copied into a 100-unit work buffer: a text of 100 or more is left out.
      {1e18, "%T123456789%F0%B<%E>", 300,
       "<1123456789000123456789000123456789000123456789000123456789000123456789000>"},
      {1e18, "%T123456789%F19%B<%E>", 300, "<>"},
  };
  ExpectWritten(rows, Float_To_FormattedFloat);
}

template <typename T>
struct ReadRow {
  const char *text, *format;
  T expected;
};

template <typename T, size_t N>
void ExpectRead(const ReadRow<T> (&rows)[N], INT(WINAPI *read)(const WCHAR *, T *, const WCHAR *)) {
  for (const ReadRow<T> &r : rows) {
    WStr text = W(r.text), format = W(r.format);
    T value = -77;
    EXPECT_EQ(read(text.c_str(), &value, Or(r.format, format)), 0) << r.text;
    EXPECT_EQ(value, r.expected) << "text '" << r.text << "' format " << (r.format ? r.format : "NULL");
  }
  T value = 3;
  EXPECT_EQ(read(nullptr, &value, nullptr), -1);
  EXPECT_EQ(read(TEXT("1"), nullptr, nullptr), -1);
  EXPECT_EQ(value, 3);
}

// Rows that read what a write row above wrote stand for the round trip.
TEST(IntFormat, Reads) {
  const std::string longText = std::string(46, '0') + "1234";  // 49 characters are collected
  const ReadRow<INT> rows[] = {
      {"1.234.567", nullptr, 1234567},  {"12-3", nullptr, 12},
      {"-1.234", nullptr, -1234},       {"--2.147.483.648", nullptr, 0},
      {"99999999999", nullptr, INT_MAX}, {"-99999999999", nullptr, INT_MIN},
      {"7", "%-", 7},                   {"none", "%Znone", 0},
      {"+000,042", "%T,%W6%+", 42},     {"EUR % 1'000", "%T'%BEUR \\p ", 1000},
      {"5]", "%B[%E]", 5},              {longText.c_str(), nullptr, 123},
      // the leading and trailing texts are removed before collecting: a
      // digit in them does not count
      {"v2: 17 m3", "%Bv2: %E m3", 17}, {"v2: 17", "%Bx%E", 217},
      {"1", "%B1%E1", 0},               {"111", "%B1%E1", 1},  // start meets end
  };
  ExpectRead(rows, FormattedInt_To_Int);
}

TEST(FloatFormat, Reads) {
  const ReadRow<double> rows[] = {
      {"1,234.56", "%T,%D.%F2", 1234.56},  {"- 1.5", "%D.", -1.5},
      {"1.234,56", nullptr, 1234.0},       // collects "1234,56"
      {"1.234,56", "%T,%D.%F2", 1.23456},  // collects "1.23456"
      {"1.5-2", "%D.", 1.5},               {"--1", "%D.", 0.0},
      {"EUR 12.50 net", "%BEUR %E net%D.", 12.5}, {"12.50", "%B12%D.", 0.5},
      {"1d3", "%Dd", 1000.0},              {"1e999", "%De", 1e308 * 10},  // the runtime's exponents
      {"1\xB2" "5", "%D.", 1.0},           // a superscript is a digit that ends the number
      {"2 5", "%D ", 2.0},
      {"123456789012345678901234567890", "%D.", 123456789012345678901234567890.0},
  };
  ExpectRead(rows, FormattedFloat_To_Float);
}

}  // namespace
