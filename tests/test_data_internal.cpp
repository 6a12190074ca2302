// Limits of the regular expression search and the scrambling seed.
#include <gtest/gtest.h>
#include <tavona/text.h>

#include <chrono>
#include <cstdio>
#include <string>

#include "testutil.h"
#include "text/crypt.h"
#include "text/regexp.h"

namespace {

using WStr = std::basic_string<WCHAR>;

TEST(CryptSeed, EmptyKeyAndZeroSeed) {
  EXPECT_EQ(tv::CryptSeed(TEXT("")), 371293u);
  const WCHAR zero[] = {0x4C, 0x71, 0x6D, 0x98D9, 0};
  EXPECT_EQ(tv::CryptSeed(zero), 371293u);
  // (1 * 'k' + 13) = 120, then times 13 until it reaches 100000.
  EXPECT_EQ(tv::CryptSeed(TEXT("k")), 120u * 13 * 13 * 13);
}

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

// Prints the longest text of each pattern that the search still handles
// (doubling, then bisecting); the figures go into the design notes. Slow:
// run it by hand with --gtest_also_run_disabled_tests.
TEST(RegexLimits, DISABLED_LongestHandledText) {
  struct Row { const WCHAR *pattern; const char *name; WCHAR fill; const WCHAR *tail; int atLeast; };
  for (const Row &r : {Row{TEXT("(a|b)*c"), "(a|b)*c", 'a', TEXT("c"), 300000},
                       Row{TEXT("(a*)*$"), "(a*)*$", 'a', TEXT(""), 300000},
                       Row{TEXT("[ab]*c"), "[ab]*c", 'a', TEXT("c"), 300000},
                       Row{TEXT("((((a))))*c"), "((((a))))*c", 'a', TEXT("c"), 100000}}) {
    bool stackBound = false;
    auto handles = [&](int n) {
      WStr text(n, r.fill);
      text += r.tail;
      tv::RegexResult result = tv::FindRegex(text.c_str(), r.pattern, tv::kRegexSteps);
      if (result.status != tv::kRegexMatched) stackBound = result.outOfStack;
      return result.status == tv::kRegexMatched;
    };
    int good = 1000, bad = 0;
    ASSERT_TRUE(handles(good)) << r.name;
    while (bad == 0 && good < 64000000) {
      if (handles(good * 2)) good *= 2; else bad = good * 2;
    }
    if (bad == 0) bad = good;
    while (bad - good > good / 50) {
      int mid = good + (bad - good) / 2;
      if (handles(mid)) good = mid; else bad = mid;
    }
    std::printf("longest handled text for %-14s about %d characters (then out of %s)\n",
                r.name, good, stackBound ? "stack" : "steps");
    EXPECT_GE(good, r.atLeast) << r.name;
  }
}

// Prints how long giving up takes for runaway backtracking.
TEST(RegexLimits, DISABLED_TimeToGiveUp) {
  WStr as(300000, WCHAR('a'));
  for (const WCHAR *pattern : {TEXT("(a|b)*c"), TEXT("(a|aa)*b"), TEXT("(a*)*b")}) {
    auto start = std::chrono::steady_clock::now();
    tv::RegexResult r = tv::FindRegex(as.c_str(), pattern, tv::kRegexSteps);
    double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    EXPECT_EQ(r.status, TAVONA_REGEXP_TOO_COMPLEX);
    std::printf("%s on 300000 characters: gave up after %.2f s\n", Narrow(pattern).c_str(), s);
  }
}

}  // namespace
