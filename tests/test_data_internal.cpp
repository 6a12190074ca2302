// The step budget of the regular expression search.
#include <gtest/gtest.h>
#include <tavona/text.h>

#include <chrono>

#include "testutil.h"
#include "text/regexp.h"

namespace {

TEST(RegexLimits, StepBudgetEndsBacktracking) {
  WStr as(2000, WCHAR('a'));
  auto start = std::chrono::steady_clock::now();
  tv::RegexResult r = tv::FindRegex(as.c_str(), TEXT("(a|aa)*b"), 1000000);
  double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  EXPECT_EQ(r.status, TAVONA_REGEXP_TOO_COMPLEX);
  EXPECT_LT(seconds, 10.0);
  // The same budget is plenty for a linear search.
  r = tv::FindRegex(as.c_str(), TEXT("a*$"), 1000000);
  EXPECT_EQ(r.status, tv::kRegexMatched);
  EXPECT_EQ(r.length, 2000);
}

}  // namespace
