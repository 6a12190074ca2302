// Integer and float formats through the exported functions, on the host and
// through the DLL under wine.
#include <gtest/gtest.h>
#include <tavona/text.h>

#include <climits>
#include <string>
#include <vector>

#include "testutil.h"

namespace {

constexpr WCHAR kGuard = 0xBEEF;

// Bytes above 127 stand for the Latin-1 characters.
WStr W(const char *s) {
  WStr w;
  for (; *s; ++s) w += static_cast<WCHAR>(static_cast<unsigned char>(*s));
  return w;
}

// Calls write into a buffer of size units followed by guards.
template <typename Write>
WStr Written(Write write, int size) {
  std::vector<WCHAR> buf(static_cast<size_t>(size > 0 ? size : 0) + 8, kGuard);
  if (size > 0) buf[0] = 'X';
  write(buf.data(), size);
  for (size_t i = size > 0 ? size : 0; i < buf.size(); ++i)
    EXPECT_EQ(buf[i], kGuard) << "written past the size " << size;
  return size > 0 ? WStr(buf.data()) : WStr();
}

// Each row written into a guarded buffer of its size.
template <typename Row, size_t N, typename Write>
void ExpectWritten(const Row (&rows)[N], Write write) {
  for (const Row &r : rows) {
    WStr format = r.format ? W(r.format) : WStr();
    WStr got = Written(
        [&](WCHAR *out, int size) { write(r.value, out, size, r.format ? format.c_str() : nullptr); },
        r.size);
    EXPECT_EQ(Narrow(got), r.expected) << "value " << r.value << " format "
                                       << (r.format ? r.format : "NULL") << " size " << r.size;
  }
}

struct IntRow {
  INT value;
  const char *format;  // nullptr: NULL
  int size;
  const char *expected;
};

TEST(IntFormat, Writes) {
  const IntRow rows[] = {
      {1234567, nullptr, 100, "1.234.567"},
      {1234567, "", 100, "1.234.567"},
      {-1234, nullptr, 100, "-1.234"},
      {123, nullptr, 100, "123"},
      {0, nullptr, 100, "0"},
      {1000, "%T", 100, "1000"},
      {42, "%T,%W6%+", 100, "+000,042"},
      {0, "%T%Znone%B[%E]", 100, "none"},
      {5, "%T%Znone%B[%E]", 100, "[5]"},
      {-7, "%-", 100, "7"},
      {7, "%-%+", 100, "+7"},
      {0, "%+", 100, "+0"},
      {1000, "%T'%BEUR \\p ", 100, "EUR % 1'000"},
      {INT_MIN, nullptr, 100, "--2.147.483.648"},
      {-5, "%W3", 100, "-005"},
      // whole separators of several characters
      {1234567, "%T<->", 100, "1<->234<->567"},
      {1234567, "%T123456789xyz", 100, "1123456789234123456789567"},
      // width: capped at 60, a negative one counts as 60, padding groups
      {1, "%W4%T.", 100, "0.001"},
      {1, "%W70", 100, "000000000000000000000000000000000000000000000000000000000001"},
      {1, "%W-1", 100, "000000000000000000000000000000000000000000000000000000000001"},
      {1, "%W 0x", 100, "1"},
      // too long a number text leaves only the texts around it
      {1, "%W60%T..%B<%E>", 100, "<>"},
      {1, "%W60%T.%B<%E>", 100, "<000.000.000.000.000.000.000.000.000.000.000.000.000.000.000.000.000.000.000.001"},  // no room left for ">"
      {1, "%W50%T%B<%E>", 100, "<00000000000000000000000000000000000000000000000001"},
      // escapes in values, and a code followed by '%' has no value
      {5, "%B\\\\%E\\p\\x", 100, "\\5%"},
      {5, "%B%E!", 100, "5!"},
      {5, "%Bab\\", 100, "ab5"},
      // only the first occurrence of a code counts
      {1234, "%T,%T;", 100, "1,234"},
  };
  ExpectWritten(rows, Int_To_FormattedInt);
}

// The room rules: the leading text needs len + 1 < size; the number must
// then fit beside the leading text within size - len(leading text); the
// trailing text likewise. A zero text replaces the leading text.
TEST(IntFormat, RoomRules) {
  const IntRow rows[] = {
      // the number is left out: 5 + 1 < 8 - 2 fails; the trailing text fits
      {1234, "%T.%B[[%E]]", 8, "[[]]"},
      // the number passes 5 + 1 < 7 but not beside "[[" within 7: the
      // non-shortening append empties everything
      {1234, "%T.%B[[%E]]", 9, ""},
      {1234, "%T.%B[[%E]]", 10, "[[1.234"},
      {1234, "%T.%B[[%E]]", 16, ""},
      {1234, "%T.%B[[%E]]", 17, "[[1.234]]"},
      {12, "%B0123456789", 11, "12"},          // leading text left out
      {12, "%B0123456789", 12, "0123456789"},  // number left out
      {12, "%B0123", 8, "0123"},               // out already fills the room
      {12, "%B0123", 10, ""},
      {12, "%B0123", 11, "012312"},
      {0, "%Z12%Babc", 6, "12"},               // replaces the leading text
      {0, "%Z123%Babc", 6, ""},                // does not fit in 6 - 3: emptied
      {5, nullptr, 2, ""},
      {5, nullptr, 3, "5"},
  };
  ExpectWritten(rows, Int_To_FormattedInt);
}

TEST(IntFormat, BadArgumentsWriteNothing) {
  WCHAR one[1] = {'X'};
  Int_To_FormattedInt(5, one, 1, nullptr);
  EXPECT_EQ(one[0], 'X');
  Int_To_FormattedInt(5, nullptr, 100, nullptr);
  WCHAR out[4];
  Float_To_FormattedFloat(5, out, 0, nullptr);
  Float_To_FormattedFloat(5, nullptr, 10, nullptr);
  INT iv = 3;
  double dv = 3;
  EXPECT_EQ(FormattedInt_To_Int(nullptr, &iv, nullptr), -1);
  EXPECT_EQ(FormattedInt_To_Int(TEXT("1"), nullptr, nullptr), -1);
  EXPECT_EQ(FormattedFloat_To_Float(nullptr, &dv, nullptr), -1);
  EXPECT_EQ(FormattedFloat_To_Float(TEXT("1"), nullptr, nullptr), -1);
  EXPECT_EQ(iv, 3);
  EXPECT_EQ(dv, 3);
}

struct ReadIntRow {
  const char *text;
  const char *format;
  INT expected;
};

TEST(IntFormat, Reads) {
  const ReadIntRow rows[] = {
      {"1.234.567", nullptr, 1234567},
      {"abc", nullptr, 0},
      {"12-3", nullptr, 12},
      {"-1.234", nullptr, -1234},
      {"--2.147.483.648", nullptr, 0},
      {"-2147483648", nullptr, INT_MIN},
      {"99999999999", nullptr, INT_MAX},
      {"-99999999999", nullptr, INT_MIN},
      {"7", "%-", 7},
      {"none", "%Znone", 0},
      {"+000,042", "%T,%W6%+", 42},
      {"EUR % 1'000", "%T'%BEUR \\p ", 1000},
      {"[5]", "%B[%E]", 5},
      {"[5", "%B[%E]", 5},
      {"5]", "%B[%E]", 5},
      // the leading and trailing texts are removed before collecting: a
      // digit in them does not count
      {"v2: 17 m3", "%Bv2: %E m3", 17},
      {"v2: 17", "%Bx%E", 217},
      {"1", "%B1%E1", 0},     // start meets end
      {"111", "%B1%E1", 1},
      {"", nullptr, 0},
      {"1 2 3", nullptr, 123},
  };
  // 49 characters are collected at most
  std::string longText = std::string(46, '0') + "1234";
  const ReadIntRow cut{longText.c_str(), nullptr, 123};
  std::vector<ReadIntRow> all(std::begin(rows), std::end(rows));
  all.push_back(cut);
  for (const ReadIntRow &r : all) {
    WStr text = W(r.text), format = r.format ? W(r.format) : WStr();
    INT value = -77;
    EXPECT_EQ(FormattedInt_To_Int(text.c_str(), &value, r.format ? format.c_str() : nullptr), 0);
    EXPECT_EQ(value, r.expected) << "text '" << r.text << "' format " << (r.format ? r.format : "NULL");
  }
}

struct FloatRow {
  double value;
  const char *format;
  int size;
  const char *expected;
};

TEST(FloatFormat, Writes) {
  const FloatRow rows[] = {
      {1234567.89, nullptr, 100, "1.234.567,89"},
      {0.05, nullptr, 100, "0,05"},
      {0.0, nullptr, 100, "0,00"},
      {-0.0, nullptr, 100, "-0,00"},
      {2.5, "%F0%T", 100, "3"},
      {1234.5, "%F0%T.", 100, "1.235"},
      {1e-14, "%Z-%F2%D.", 100, "-"},
      {0.001, "%Z-%F2%D.", 100, "0.00"},
      {-0.001, "%Z-%F2%D.", 100, "-0.00"},
      {-0.001, "%Z-%F2%D.%-", 100, "0.00"},
      {1.0, "%+", 100, "+1"},             // no %F: no fraction
      {0.125, nullptr, 100, "0,13"},      // half up, as _fcvt_s
      {99.995, nullptr, 100, "100,00"},
      {123.456, "%F5%D.", 100, "123.45600"},
      {1250.0, "%F-2", 100, "13"},
      {1234567.0, "%T%F3%D,", 100, "1234567,000"},
      {1234567.0, "%T  %F1%D.", 100, "1  234  567.0"},
      {1234567.0, "%T%%F1%D.", 100, "1234567.0"},
      {1234567.0, "%F2%DABC", 100, "1234567A00"},
      {1e18, "%F0%T.", 100, "1.000.000.000.000.000.000"},
      {1e19, "%F0%B<%E>", 100, "<>"},      // beyond 19 digits
      {1e16, "%F2%T", 100, "10000000000000000,00"},
      {1.5, "%F20%B<%E>", 100, "<>"},
      {0.0, "%F19%D.", 100, "0.0000000000000000000"},
      {12.0, "%Bab%Ecd%Z-", 100, "ab12cd"},
      {5.0, "%B[%E]%F1", 5, "[]"},
      {5.0, "%B[%E]%F1", 7, "[5,0"},
      {5.0, "%B[%E]%F1", 9, ""},
      {5.0, "%B[%E]%F1", 10, "[5,0]"},
      {0.0, "%B[%Znil", 4, ""},
      {0.0, "%B[%Znil", 5, "nil"},
  };
  ExpectWritten(rows, Float_To_FormattedFloat);
}

// The number text is built from the right in 199 units of room and copied
// into a 100-unit work buffer: a text of 100 or more is left out.
TEST(FloatFormat, LongSeparators) {
  WCHAR out[300];
  Float_To_FormattedFloat(1234567890123456.0, out, 300, TEXT("%T123456789%F2"));
  EXPECT_EQ(Narrow(out), "1123456789234123456789567123456789890123456789123123456789456,00");
  Float_To_FormattedFloat(1e18, out, 300, TEXT("%T123456789%F0%B<%E>"));
  EXPECT_EQ(Narrow(out), "<1123456789000123456789000123456789000123456789000123456789000123456789000>");
  Float_To_FormattedFloat(1e18, out, 300, TEXT("%T123456789%F19%B<%E>"));
  EXPECT_EQ(Narrow(out), "<>");
}

TEST(FloatFormat, NotFinite) {
  WCHAR out[50];
  const double inf = 1e308 * 10;
  Float_To_FormattedFloat(inf, out, 50, TEXT("%B<%E>"));
  EXPECT_EQ(Narrow(out), "<>");
  Float_To_FormattedFloat(-inf, out, 50, TEXT("%B<%E>%Znull"));
  EXPECT_EQ(Narrow(out), "<>");
  Float_To_FormattedFloat(inf - inf, out, 50, TEXT("%B<%E>%Znull"));
  EXPECT_EQ(Narrow(out), "<>");
}

struct ReadFloatRow {
  const char *text;
  const char *format;
  double expected;
};

TEST(FloatFormat, Reads) {
  const ReadFloatRow rows[] = {
      {"1,234.56", "%T,%D.%F2", 1234.56},
      {"1.234,56", nullptr, 1234.0},      // collects "1234,56"
      {"1.234,56", "%T,%D.%F2", 1.23456},  // collects "1.23456"
      {"-1.5", "%D.", -1.5},
      {"- 1.5", "%D.", -1.5},
      {"1.5-2", "%D.", 1.5},
      {"--1", "%D.", 0.0},
      {"abc", nullptr, 0.0},
      {"", nullptr, 0.0},
      {"EUR 12.50 net", "%BEUR %E net%D.", 12.5},
      {"12.50", "%B12%D.", 0.5},
      {".5", "%D.", 0.5},
      {"5.", "%D.", 5.0},
      {"1e3", "%De", 1000.0},           // the runtime reads an exponent
      {"1d3", "%Dd", 1000.0},           // ... also after 'd'
      {"1\xB2" "5", "%D.", 1.0},          // a superscript is a digit that ends the number
      {"1e999", "%De", 1e308 * 10},
      {"1e-999", "%De", 0.0},
      {"2 5", "%D ", 2.0},
      {"1x5", "%Dx", 1.0},
      {"123456789012345678901234567890", "%D.", 123456789012345678901234567890.0},
  };
  for (const ReadFloatRow &r : rows) {
    WStr text = W(r.text), format = r.format ? W(r.format) : WStr();
    double value = -77;
    EXPECT_EQ(FormattedFloat_To_Float(text.c_str(), &value, r.format ? format.c_str() : nullptr), 0);
    EXPECT_EQ(value, r.expected) << "text '" << r.text << "' format " << (r.format ? r.format : "NULL");
  }
}

// What the formatter writes reads back, for formats whose decimal
// separator is '.' and whose texts hold no digits.
TEST(FloatFormat, RoundTrip) {
  const char *formats[] = {"%T,%D.%F2", "%T %D.%F3%B$ %E USD", "%D.%F0", "%T'%D.%F6%+"};
  const double values[] = {0.5, -1.25, 1234567.891, -98765.4321, 42.0, 1e-3};
  for (const char *f : formats) {
    WStr format = W(f);
    for (double v : values) {
      WCHAR out[100];
      Float_To_FormattedFloat(v, out, 100, format.c_str());
      double back = 0;
      FormattedFloat_To_Float(out, &back, format.c_str());
      WCHAR again[100];
      Float_To_FormattedFloat(back, again, 100, format.c_str());
      EXPECT_EQ(Narrow(again), Narrow(out)) << "format " << f << " value " << v;
    }
  }
}

TEST(IntFormat, RoundTrip) {
  const char *formats[] = {"%T.", "%T,%W8%+", "%T%B#%E pcs", "%T<sep>"};
  const INT values[] = {0, 1, -1, 999, 1000, -123456, INT_MAX, INT_MIN + 1};
  for (const char *f : formats) {
    WStr format = W(f);
    for (INT v : values) {
      WCHAR out[100];
      Int_To_FormattedInt(v, out, 100, format.c_str());
      INT back = 7;
      FormattedInt_To_Int(out, &back, format.c_str());
      EXPECT_EQ(back, v) << "format " << f << " text " << Narrow(out);
    }
  }
}

}  // namespace
