// The estimated time text, built from the resource library's amount texts.
#include <gtest/gtest.h>
#include <tavona/datetime.h>
#include <tavona/frame.h>

#include <string>

#include "testutil.h"
#include "tvres.h"
#ifndef _WIN32
#include "frame/host/hostplat.h"
#endif

namespace {

WStr Res(UINT id) {
#ifdef _WIN32
  WCHAR buf[100] = {};
  LoadStringW(Tavona_GetResourceModule(), id, buf, 100);
  return buf;
#else
  static const struct { UINT id; const char16_t *text; } kTexts[] = {
      {IDS_TIME_HOURS, u"%d hours"},     {IDS_TIME_HOUR, u"%d hour"},
      {IDS_TIME_MINUTES, u"%d minutes"}, {IDS_TIME_MINUTE, u"%d minute"},
      {IDS_TIME_SECONDS, u"%d seconds"}, {IDS_TIME_SECOND, u"%d second"},
      {IDS_TIME_SEPARATOR, u","}};
  for (const auto &t : kTexts) {
    if (t.id != id) continue;
    tv::plat::host::SetResString(id, t.text);
    return t.text;
  }
  return {};
#endif
}

// The amount text as the resource library words it ("%d" replaced).
WStr Amount(UINT id, int n) {
  WStr f = Res(id);
  std::string digits = std::to_string(n);
  size_t at = f.find(TEXT("%d"));
  return at == WStr::npos ? f : f.replace(at, 2, WStr(digits.begin(), digits.end()));
}

}  // namespace

TEST(Estimate, UnitsDroppedAsAmountsGrow) {
  const WStr sep = Res(IDS_TIME_SEPARATOR) + TEXT(" ");
  for (UINT id = IDS_TIME_HOURS; id <= IDS_TIME_SECOND; ++id) Res(id);
  struct Row { INT seconds; WStr expect; };
  const Row rows[] = {
      {3725, Amount(IDS_TIME_HOUR, 1) + sep + Amount(IDS_TIME_MINUTES, 2)},     // seconds dropped
      {7300, Amount(IDS_TIME_HOURS, 2) + sep + Amount(IDS_TIME_MINUTE, 1)},
      {5 * 3600 + 60, Amount(IDS_TIME_HOURS, 5)},                             // minutes dropped
      {4 * 60 + 1, Amount(IDS_TIME_MINUTES, 4) + sep + Amount(IDS_TIME_SECOND, 1)},
      {5 * 60 + 1, Amount(IDS_TIME_MINUTES, 5)},
      {59, Amount(IDS_TIME_SECONDS, 59)},
      {3600, Amount(IDS_TIME_HOUR, 1)},
  };
  for (const Row &r : rows) {
    WCHAR out[200];
    Tavona_CreateEstimatedTimeDisplay(r.seconds, TEXT("Left:"), out, 200);
    EXPECT_EQ(WStr(out), TEXT("Left: ") + r.expect)
        << r.seconds << " s: got '" << Narrow(out) << "' expected 'Left: " << Narrow(r.expect) << "'";
  }
}

TEST(Estimate, NothingToSayAndTightBuffers) {
  Res(IDS_TIME_SECONDS);
  WCHAR out[200];
  // Zero and negative counts keep the leading text and its space: only an
  // output that is still empty falls back to the "0 seconds" text.
  Tavona_CreateEstimatedTimeDisplay(-5, TEXT("Left:"), out, 200);
  EXPECT_EQ(WStr(out), TEXT("Left: ")) << Narrow(out);
  // An amount that does not fit empties the whole output (the append never
  // shortens); the fallback then takes its place, cut to the buffer.
  Tavona_CreateEstimatedTimeDisplay(10, TEXT("Remaining time"), out, 5);
  EXPECT_EQ(WStr(out), Amount(IDS_TIME_SECONDS, 0).substr(0, 4)) << Narrow(out);
  out[0] = 'x';
  Tavona_CreateEstimatedTimeDisplay(10, TEXT("x"), out, 0);
  EXPECT_EQ(out[0], 'x');
}

#ifndef _WIN32
TEST(Estimate, TranslationsCannotReadMissingArguments) {
  using tv::plat::host::SetResString;
  Res(IDS_TIME_SEPARATOR);
  struct Row { const char16_t *format; const char16_t *expect; };
  const Row rows[] = {{u"%s and %d min", u"Left: %s and 2 min"}, {u"%5d|%-3i|%%", u"Left:     2|2  |%"},
                      {u"%n%p%x", u"Left: %n%p%x"}, {u"%------------d", u"Left: %------------d"}};
  for (const Row &r : rows) {
    SetResString(IDS_TIME_MINUTES, r.format);
    WCHAR out[200];
    Tavona_CreateEstimatedTimeDisplay(120, u"Left:", out, 200);
    EXPECT_EQ(WStr(out), WStr(r.expect)) << Narrow(r.format) << ": got '" << Narrow(out) << "'";
  }
  SetResString(IDS_TIME_MINUTES, u"%d minutes");
}
#endif
