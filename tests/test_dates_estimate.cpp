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

// The amount texts of the English resource library (set on the host).
void UseEnglish() {
#ifndef _WIN32
  static const struct { UINT id; const char16_t *text; } kTexts[] = {
      {IDS_TIME_HOURS, u"%d hours"},     {IDS_TIME_HOUR, u"%d hour"},
      {IDS_TIME_MINUTES, u"%d minutes"}, {IDS_TIME_MINUTE, u"%d minute"},
      {IDS_TIME_SECONDS, u"%d seconds"}, {IDS_TIME_SECOND, u"%d second"},
      {IDS_TIME_SEPARATOR, u","}};
  for (const auto &t : kTexts) tv::plat::host::SetResString(t.id, t.text);
#endif
}

std::string Estimate(INT seconds, const WCHAR *lead, int size = 200) {
  WCHAR out[200];
  Tavona_CreateEstimatedTimeDisplay(seconds, lead, out, size);
  return Narrow(out);
}

}  // namespace

TEST(Estimate, UnitsDroppedAsAmountsGrow) {
  UseEnglish();
  struct Row { INT seconds; const char *expect; };
  const Row rows[] = {
      {3725, "Left: 1 hour, 2 minutes"}, {3600, "Left: 1 hour"},  // seconds dropped, zeros left out
      {7300, "Left: 2 hours, 1 minute"},      {5 * 3600 + 60, "Left: 5 hours"},  // minutes dropped
      {4 * 60 + 1, "Left: 4 minutes, 1 second"}, {5 * 60 + 1, "Left: 5 minutes"},
  };
  for (const Row &r : rows) EXPECT_EQ(Estimate(r.seconds, TEXT("Left:")), r.expect) << r.seconds << " s";
}

TEST(Estimate, NothingToSayAndTightBuffers) {
  UseEnglish();
  // Zero and negative counts keep the leading text and its space: only an
  // output that is still empty falls back to the "0 seconds" text.
  EXPECT_EQ(Estimate(-5, TEXT("Left:")), "Left: ");
  // An amount that does not fit empties the whole output (the append never
  // shortens); the fallback then takes its place, cut to the buffer.
  EXPECT_EQ(Estimate(10, TEXT("Remaining time"), 5), "0 se");
  WCHAR out[1] = {'x'};
  Tavona_CreateEstimatedTimeDisplay(10, TEXT("x"), out, 0);
  EXPECT_EQ(out[0], 'x');
}

#ifndef _WIN32
TEST(Estimate, TranslationsCannotReadMissingArguments) {
  using tv::plat::host::SetResString;
  UseEnglish();
  struct Row { const char16_t *format; const char16_t *expect; };
  const Row rows[] = {{u"%s and %d min", u"Left: %s and 2 min"}, {u"%5d|%-3i|%%", u"Left:     2|2  |%"},
                      {u"%n%p%x", u"Left: %n%p%x"}, {u"%------------d", u"Left: %------------d"}};
  for (const Row &r : rows) {
    SetResString(IDS_TIME_MINUTES, r.format);
    EXPECT_EQ(Estimate(120, u"Left:"), Narrow(r.expect)) << Narrow(r.format);
  }
  SetResString(IDS_TIME_MINUTES, u"%d minutes");
}
#endif
