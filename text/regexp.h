// The regular expression search behind Tavona_ParseRegExp, for the tests
// and the demo.
#pragma once

#include <tavona/text.h>

#include <cstdint>

namespace tv {

constexpr INT kRegexMatched = 0;  // internal status; the others are TAVONA_REGEXP_*

// Steps (reads, moves and comparisons of the text position) one search may
// take before it gives up. A search without backtracking takes about 5 to
// 20 per character, so this suffices for about a million characters, as
// much as the stack holds; runaway backtracking stops after a few seconds.
constexpr uint64_t kRegexSteps = 20000000;

struct RegexResult {
  INT status = TAVONA_REGEXP_NO_MATCH;
  int position = 0;  // of the match, in characters
  int length = 0;
  bool outOfStack = false;  // gave up for want of stack rather than steps
};

// First match of pattern in text; gives up after steps steps or when the
// large stack would run out.
RegexResult FindRegex(const WCHAR *text, const WCHAR *pattern, uint64_t steps);

}  // namespace tv
