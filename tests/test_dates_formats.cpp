// The date and time text formats: formatter, parser, digit strings and the
// ODBC forms, with the name lists of the resource library.
#include <gtest/gtest.h>
#include <tavona/datetime.h>
#include <tavona/frame.h>

#include <climits>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "datetest.h"
#include "testutil.h"
#include "tvres.h"
#ifndef _WIN32
#include "datetime/clock_host.h"
#include "frame/host/hostplat.h"
#endif

namespace {

const WCHAR *const kEnglish[] = {
    TEXT("Sunday|Monday|Tuesday|Wednesday|Thursday|Friday|Saturday"),
    TEXT("Sun|Mon|Tue|Wed|Thu|Fri|Sat"),
    TEXT("January|February|March|April|May|June|July|August|September|October|November|December"),
    TEXT("Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec")};

// The resource library's names; the English ones are set on the host.
void UseNames(const WCHAR *const lists[4]) {
#ifndef _WIN32
  for (UINT i = 0; i < 4; ++i) tv::plat::host::SetResString(IDS_LIST_WEEKDAYS_LONG + i, lists[i]);
#endif
}

WStr W(const char *s) { return WStr(s, s + std::char_traits<char>::length(s)); }

WStr Formatted(const DateTimeStruct &r, const WCHAR *format, int size = 200) {
  std::vector<WCHAR> out(size + 1, 'x');
  DateTimeStruct_To_FormattedDateTime(&r, out.data(), size, format);
  EXPECT_EQ(out[size], 'x') << "wrote past " << size;
  return WStr(out.data(), std::find(out.begin(), out.begin() + size, 0) - out.begin());
}

class Formats : public ::testing::Test {
 protected:
  void SetUp() override {
    UseNames(kEnglish);
#ifndef _WIN32
    tv::plat::host::SetYearExpansionLimit(35);
#endif
  }
};

}  // namespace

TEST_F(Formats, Codes) {
  const DateTimeStruct nov = Dt(2015, 11, 15, 8, 5, 9);  // a Sunday
  struct Row { DateTimeStruct r; const WCHAR *format; WStr expect; };
  const Row rows[] = {
      {nov, nullptr, TEXT("15.11.2015")},           {nov, TEXT(""), TEXT("15.11.2015")},
      {Dt(2000, 1, 5), TEXT("%Y1|%Y2|%Y7"), TEXT("00|2000|2000")},
      {Dt(2015, 1, 1), TEXT("%D3"), TEXT("1st")}, {Dt(2015, 1, 21), TEXT("%D3,%D0,%D9"), TEXT("21th,,")},
      {Dt(2015, 1, 1, 13, 5), TEXT("%h2:%U2%P1"), TEXT("01:05 pm")},
      {Dt(2015, 1, 1, 12, 0), TEXT("%H1%P2"), TEXT("12 PM")},
      {Dt(2015, 1, 1, 11, 59), TEXT("%H1%P2%P0"), TEXT("11 AM")},
      {nov, TEXT("%W1 %W2 %M3 %M4"), TEXT("Sun Sunday Nov November")},
      {Dt(2015, 0, 1), TEXT("<%M4><%W2>"), TEXT("<><Saturday>")},  // no such month
      {nov, TEXT("%X1%%Q1-%q"), TEXT("1-")},  // unknown letters; a short tail ends
  };
  for (const Row &r : rows) {
    WStr got = Formatted(r.r, r.format);
    EXPECT_EQ(got, r.expect) << Show(r.r) << " with '" << Narrow(r.format) << "': got '"
                             << Narrow(got) << "' expected '" << Narrow(r.expect) << "'";
  }
}

// A code goes in whole or not at all (it needs one unit more than its
// length), and the walk goes on after it; the bound itself is fuzz_dates_format's.
TEST_F(Formats, NeverHalfACode) {
  const DateTimeStruct r = Dt(2015, 11, 15);
  for (auto [size, expect] : {std::pair{7, TEXT("abcd")}, {8, TEXT("ab2015c")}})
    EXPECT_EQ(Formatted(r, TEXT("ab%Y2cd"), size), expect) << "size " << size;
  // The time variant has no default of its own.
  WCHAR out[50];
  DateTimeStruct_To_FormattedTime(&r, out, 50, TEXT(""));
  EXPECT_EQ(WStr(out), TEXT("15.11.2015"));
}

TEST_F(Formats, Parsing) {
  struct Row { const char *text; const WCHAR *format; int rc; DateTimeStruct expect; };
  const DateTimeStruct kAny{};
  const Row rows[] = {
      {"3.4.15", TEXT(""), 0, Dt(2015, 4, 3)},    {"150370", nullptr, 0, Dt(1970, 3, 15)},  // digits only
      {"1:05 PM", TEXT("%h1:%U2%P1"), 0, Dt(2000, 1, 1, 13, 5)},
      {"1:05 pm", TEXT("%H1:%U2%P1"), 0, Dt(2000, 1, 1, 1, 5)},  // 24-hour clock
      {"pm 5 am", TEXT("%P1%h1%P1"), 0, Dt(2000, 1, 1, 17, 0)},  // the first P holds
      {"-5.-3.-2015", nullptr, 0, Dt(2015, 3, 5)},  // minus signs are skipped
      {"date 1 / 2 / 2015 end", TEXT("%D1-%M1-%Y2"), 0, Dt(2015, 2, 1)},
      {"1.1.4294969311", nullptr, -1, kAny},      {"", nullptr, -1, kAny},  // no wrap into 2015
      {"3/2015", TEXT("%M1/%Y2"), 0, Dt(2015, 3, 1)},
      {"Sunday 15.11.2015", TEXT("%W2 %D1.%M1.%Y2"), 0, Dt(2015, 11, 15)},
      {"15 dec. 15", TEXT("%D1 %M3 %Y2"), 0, Dt(2015, 12, 15)},
      {"15 2015 Mar", TEXT("%D1 %M3 %Y2"), -1, kAny},  // the name after a digit
      {"15 Marx 7", TEXT("%D1 %M3 %Y2"), 0, Dt(2007, 3, 15)},
  };
  for (const Row &row : rows) {
    DateTimeStruct r = Dt(1, 1, 1, 1, 1, 1);
    WStr text = W(row.text);
    int rc = FormattedDateTime_To_DateTimeStruct(text.c_str(), &r, row.format);
    EXPECT_EQ(rc, row.rc) << "'" << row.text << "' with '" << Narrow(row.format) << "': "
                          << Show(r);
    if (rc == 0 && row.rc == 0) {
      EXPECT_EQ(Show(r), Show(row.expect)) << "'" << row.text << "'";
    }
  }
  DateTimeStruct r{};
  EXPECT_EQ(FormattedDateTime_To_DateTimeStruct(nullptr, &r, nullptr), -1);
  EXPECT_EQ(FormattedTime_To_DateTimeStruct(TEXT("23:59:58"), &r, nullptr), 0);
  EXPECT_TRUE(Same(r, Dt(2000, 1, 1, 23, 59, 58))) << Show(r);
}

TEST_F(Formats, DigitStringsAndOdbc) {
  struct Row { const char *text; int rc; DateTimeStruct expect; };
  const Row rows[] = {
      {"15032015", 0, Dt(2015, 3, 15)}, {"150315", 0, Dt(2015, 3, 15)}, {"15031", 0, Dt(1900, 3, 15)},
      {"150", -1, {}}, {"20151503", -1, {}}, {"0101999999999999", -1, {}},  // always day first
  };
  for (const Row &row : rows) {
    DateTimeStruct r{};
    WStr text = W(row.text);
    int rc = DigitString_To_DateTimeStruct(text.c_str(), &r, TEXT("%Y2%M2%D2"));
    EXPECT_EQ(rc, row.rc) << row.text << ": " << Show(r);
    if (rc == 0) {
      EXPECT_EQ(Show(r), Show(row.expect)) << row.text;
    }
  }

  const DateTimeStruct r = Dt(2015, 11, 15, 8, 5, 9);
  WCHAR out[40];
  DateTimeStruct_To_OdbcTimeStamp(&r, out, 40);
  EXPECT_EQ(WStr(out), TEXT("2015-11-15 08:05:09"));
  DateTimeStruct back{};
  EXPECT_EQ(OdbcTimeStamp_To_DateTimeStruct(out, &back), 0);
  EXPECT_TRUE(Same(back, r)) << Show(back);
  DateTimeStruct_To_OdbcDateConstant(&r, out, 40);
  EXPECT_EQ(WStr(out), TEXT("#11/15/2015#"));
}

// Every date written with a format reads back with the same format (the
// hours 0 and 12 on the 12-hour clock excepted; two-digit years are
// test_dates_internal's).
TEST_F(Formats, RoundTrips) {
  const WCHAR *const formats[] = {
      TEXT("%D2.%M2.%Y2 %H2:%U2:%S2"), TEXT("%W2, %D1. %M4 %Y2 %h1:%U2:%S2%P1"),
      TEXT("%M3 %D3 %Y2, %h2.%U2.%S2%P2"), TEXT("%Y2-%M2-%D2T%H1.%U2.%S2")};
  std::mt19937 rng(3);
  std::uniform_int_distribution<int> day(0, 3068036), sec(0, 86399);
  for (int i = 0; i < 3000; ++i) {
    DateTimeStruct r{};
    Get_DateSinceBaseDate(day(rng), &r);
    int s = sec(rng);
    r.hour = s / 3600, r.minute = s / 60 % 60, r.second = s % 60;
    for (const WCHAR *f : formats) {
      DateTimeStruct expect = r;
      // The 12-hour clock reads 12 am as 12 and 12 pm as 0, as it stands.
      if (WStr(f).find(TEXT("%h")) != WStr::npos && r.hour % 12 == 0) expect.hour = 12 - r.hour;
      WCHAR text[200];
      DateTimeStruct_To_FormattedDateTime(&r, text, 200, f);
      DateTimeStruct back{};
      int rc = FormattedDateTime_To_DateTimeStruct(text, &back, f);
      ASSERT_TRUE(rc == 0 && Same(back, expect))
          << Show(r) << " as '" << Narrow(text) << "' read back " << rc << " " << Show(back);
    }
  }
}

#ifdef _WIN32
// The limit is read from the registry at every call (its rule is checked
// in test_dates_internal).
TEST_F(Formats, TwoDigitYearLimitIsReadEachTime) {
  const wchar_t kKey[] = L"Software\\Tavona Software\\Global Parameters\\Year 2000";
  for (auto [limit, two, expect] : {std::tuple{L"50", 51, 1951}, {L"99", 99, 2099}}) {
    RegSetKeyValueW(HKEY_CURRENT_USER, kKey, L"YearExpansionLimit", REG_SZ, limit,
                    static_cast<DWORD>((wcslen(limit) + 1) * sizeof(wchar_t)));
    WCHAR text[20];
    DateTimeStruct r = Dt(2000 + two, 1, 1);
    DateTimeStruct_To_FormattedDateTime(&r, text, 20, TEXT("%D1.%M1.%Y1"));
    EXPECT_EQ(FormattedDateTime_To_DateTimeStruct(text, &r, nullptr), 0) << Narrow(text);
    EXPECT_EQ(r.year, expect) << "limit " << Narrow(limit) << ", year " << two;
  }
  RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
}
#endif
