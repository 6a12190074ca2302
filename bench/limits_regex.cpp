// The limits of the regular expression search recorded in the design notes:
// the longest text each pattern still handles and the time to give up on
// runaway backtracking. Slow (minutes): run by hand under wine,
//   scripts/wine-run build/win64/wine build/win64/bin/limits_regex.exe
#include <tavona/text.h>

#include <chrono>
#include <cstdio>
#include <string>

#include "text/regexp.h"

namespace {

using WStr = std::basic_string<WCHAR>;

// The longest text of each pattern that the search still handles (doubling,
// then bisecting).
void LongestHandledText() {
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
    if (!handles(good)) {
      std::printf("%s: not even %d characters\n", r.name, good);
      continue;
    }
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
    if (good < r.atLeast) std::printf("%s: below the %d characters documented\n", r.name, r.atLeast);
  }
}

// How long giving up takes for runaway backtracking.
void TimeToGiveUp() {
  WStr as(300000, WCHAR('a'));
  for (const WCHAR *pattern : {TEXT("(a|b)*c"), TEXT("(a|aa)*b"), TEXT("(a*)*b")}) {
    auto start = std::chrono::steady_clock::now();
    tv::RegexResult r = tv::FindRegex(as.c_str(), pattern, tv::kRegexSteps);
    double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("%ls on 300000 characters: %s after %.2f s\n", reinterpret_cast<const wchar_t *>(pattern),
                r.status == TAVONA_REGEXP_TOO_COMPLEX ? "gave up" : "finished", s);
  }
}

}  // namespace

int main() {
  LongestHandledText();
  TimeToGiveUp();
  return 0;
}
