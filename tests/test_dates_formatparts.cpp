// Formats taken apart for the format dialogs and built back.
#include <gtest/gtest.h>

#include <string>

#include "datetime/formatparts.h"
#include "base/wstr.h"
#include "testutil.h"

namespace {

using namespace tv::dtf;
using Text = std::u16string;

Text Build(const FormatParts &p, int size = 512) {
  WCHAR out[512];
  for (WCHAR &c : out) c = u'#';
  out[0] = 0;
  BuildFormat(p, out, size);
  return out;
}

// The parts as one line: digits, then every text in brackets.
std::string Describe(const FormatParts &p) {
  std::string s = "order " + std::to_string(p.order) + " clock " + std::to_string(p.clock) +
                  " W" + std::to_string(p.weekday) + " D" + std::to_string(p.date[kDay]) + " M" +
                  std::to_string(p.date[kMonth]) + " Y" + std::to_string(p.date[kYear]) + " H" +
                  std::to_string(p.hour) + " U" + std::to_string(p.minute) + " S" +
                  std::to_string(p.second) + " P" + std::to_string(p.ampm);
  for (const WCHAR *t : {p.leading, p.afterWeekday, p.afterDate[kDay], p.afterDate[kMonth],
                         p.afterDate[kYear], p.between, p.afterHour, p.afterMinute,
                         p.afterSecond})
    s += " [" + Narrow(t) + "]";
  return s;
}

TEST(FormatParts, Split) {
  struct Row {
    const char16_t *format;
    int kind;
    const char *parts;
  } rows[] = {
      {u"%M1/%D1/%Y1 %h1:%U2%P2", 3,
       "order 3 clock 12 W0 D1 M1 Y1 H1 U2 S0 P2 [] [] [/] [/] [] [ ] [:] [] []"},
      // A time alone: the text before it stands between date and time.
      {u"at %h2.%U2%P1x", 2,
       "order 1 clock 12 W0 D0 M0 Y0 H2 U2 S0 P1 [] [] [] [] [] [at ] [.] [] []"},
      // A "%" without its letter and digit ends the split; unknown letters
      // are passed over with their text.
      {u"%D2%Q9q%M", 1, "order 1 clock 24 W0 D2 M0 Y0 H0 U0 S0 P0 [] [] [] [] [] [] [] [] []"},
      {nullptr, 3, "order 1 clock 24 W0 D0 M0 Y0 H0 U0 S0 P0 [] [] [] [] [] [] [] [] []"},
      // Digits are taken as they stand (the dialog shows unknown ones as hidden).
      {u"%Dx%M/", 1, "order 1 clock 24 W0 D72 M-1 Y0 H0 U0 S0 P0 [] [] [] [] [] [] [] [] []"},
  };
  for (const Row &r : rows) {
    FormatParts p;
    SplitFormat(reinterpret_cast<const WCHAR *>(r.format), r.kind, p);
    EXPECT_EQ(Describe(p), r.parts) << Narrow(r.format) << " kind " << r.kind;
  }
}

TEST(FormatParts, Build) {
  FormatParts empty;
  EXPECT_EQ(Build(empty), u"");

  // A hidden field keeps its text, so the date codes stand; a hidden
  // am/pm marker is left out.
  FormatParts hidden;
  tv::BoundedCopy(hidden.afterDate[kMonth], reinterpret_cast<const WCHAR *>(u"/"), kTextSize);
  tv::BoundedCopy(hidden.afterSecond, reinterpret_cast<const WCHAR *>(u"s"), kTextSize);
  EXPECT_EQ(Build(hidden), u"%D0%M0/%Y0%S0s");

  // A piece that does not fit empties the text (bounded appends); below 10
  // nothing is written (fuzz_printing_texts).
  EXPECT_EQ(Build(hidden, 15), u"%D0%M0/%Y0%S0s");
  EXPECT_EQ(Build(hidden, 14), u"");
}

// Texts longer than 99 characters are cut at 99; nothing is read or
// written past the parts.
TEST(FormatParts, LongTexts) {
  Text format = Text(300, u'a') + u"%D1" + Text(1000, u'b') + u"%H2" + Text(150, u'c');
  FormatParts p;
  SplitFormat(reinterpret_cast<const WCHAR *>(format.c_str()), 3, p);
  EXPECT_EQ(tv::Len(p.leading), 99);
  EXPECT_EQ(tv::Len(p.between), 99);
  EXPECT_EQ(tv::Len(p.afterHour), 99);
  EXPECT_EQ(p.date[kDay], 1);
  // The text after the last date code stands between date and time.
  EXPECT_EQ(Build(p), Text(99, u'a') + u"%D1%M0%Y0" + Text(99, u'b') + u"%H2" + Text(99, u'c'));
}

}  // namespace
