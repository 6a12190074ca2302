// The step budget of the regular expression search.
#include <gtest/gtest.h>
#include <tavona/text.h>

#include "testutil.h"
#include "text/regexp.h"

namespace {

TEST(RegexLimits, StepBudgetEndsBacktracking) {
  WStr as(2000, WCHAR('a'));
  tv::RegexResult r = tv::FindRegex(as.c_str(), TEXT("(a|aa)*b"), 1000000);
  EXPECT_EQ(r.status, TAVONA_REGEXP_TOO_COMPLEX);
  // The same budget is plenty for a linear search.
  r = tv::FindRegex(as.c_str(), TEXT("a*$"), 1000000);
  EXPECT_EQ(r.status, tv::kRegexMatched);
  EXPECT_EQ(r.length, 2000);
}

}  // namespace
