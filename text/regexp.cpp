// First match of an ECMAScript regular expression, over the standard
// library's wide regular expressions.
//
// The standard library's matcher backtracks recursively: its stack depth
// grows with the length of the text (several hundred bytes per character)
// and its running time can grow exponentially with it. So the match runs
// on a thread of its own with a large reserved stack, and it reads the text
// through an iterator that watches both the stack left and the number of
// steps taken; when either runs out the iterator throws, the matcher
// unwinds normally and the routine returns TAVONA_REGEXP_TOO_COMPLEX.
// Starting a thread costs far more than a short search, so a short pattern
// is first tried on the caller's own stack within a small budget, when the
// caller has room to spare; only a search that needs more stack moves on
// to the thread.
#include <tavona/text.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <new>
#include <regex>
#include <string>

#include "text/regexp.h"
#include "text/stack.h"
#include "base/wstr.h"

namespace tv {

namespace {

// Stack reserves to try, largest first: reserving costs address space only,
// pages are committed as the matcher reaches them. A 32-bit process may not
// find the larger ranges free.
constexpr bool kWidePointers = sizeof(void *) > 4;
constexpr size_t kStackReserves[] = {kWidePointers ? size_t(1) << 30 : size_t(512) << 20,
                                     size_t(256) << 20, size_t(128) << 20};
constexpr size_t kStackMargin = kWidePointers ? size_t(64) << 20 : size_t(24) << 20;

// Compiling recurses once per nesting level and per term of the pattern,
// without a guard; this keeps that depth well inside the stack.
constexpr int kMaxPatternLength = 20000;

// Short patterns compile within a few kilobytes of stack; the matcher is
// held to the budget by the guard. The caller must have the room free.
constexpr int kInlinePatternLength = 128;
constexpr size_t kInlineBudget = size_t(256) << 10;
constexpr size_t kInlineRoom = size_t(1) << 20;

struct GiveUp {
  bool stack;  // else the steps ran out
};

struct Guard {
  const char *stackLimit = nullptr;  // the matcher stops below this address
  uint64_t stepsLeft = 0;

  void Check() {
    if (--stepsLeft == 0) throw GiveUp{false};
    if (static_cast<const char *>(__builtin_frame_address(0)) < stackLimit) throw GiveUp{true};
  }
};

// A bidirectional iterator over UTF-16 units yielding wchar_t, so that the
// host build (whose WCHAR is char16_t) runs the same engine on the same
// units. Every step checks the guard.
class Iter {
 public:
  using iterator_category = std::bidirectional_iterator_tag;
  using value_type = wchar_t;
  using difference_type = std::ptrdiff_t;
  using pointer = void;
  using reference = wchar_t;

  Iter() = default;
  Iter(const WCHAR *p, Guard *g) : p_(p), g_(g) {}

  wchar_t operator*() const {
    Step();
    return static_cast<wchar_t>(*p_);
  }
  Iter &operator++() {
    Step();
    ++p_;
    return *this;
  }
  Iter operator++(int) {
    Iter old = *this;
    ++*this;
    return old;
  }
  Iter &operator--() {
    Step();
    --p_;
    return *this;
  }
  Iter operator--(int) {
    Iter old = *this;
    --*this;
    return old;
  }
  friend bool operator==(const Iter &a, const Iter &b) {
    a.Step();
    return a.p_ == b.p_;
  }
  friend bool operator!=(const Iter &a, const Iter &b) { return !(a == b); }
  const WCHAR *Get() const { return p_; }

 private:
  void Step() const {
    if (g_) g_->Check();
  }

  const WCHAR *p_ = nullptr;
  Guard *g_ = nullptr;
};

struct Job {
  const WCHAR *text;
  const WCHAR *pattern;
  uint64_t steps;
  size_t budget;  // stack the matcher may use below Match's frame
  RegexResult result;
};

void Match(Job &job) {
  Guard guard;
  guard.stepsLeft = job.steps;
  const char *top = static_cast<const char *>(__builtin_frame_address(0));
  guard.stackLimit = top - job.budget;
  try {
    std::wstring pattern;
    for (const WCHAR *p = job.pattern; *p; ++p) pattern += static_cast<wchar_t>(*p);
    std::wregex re(pattern, std::regex_constants::ECMAScript);
    Iter first(job.text, &guard), last(job.text + Len(job.text), &guard);
    std::match_results<Iter> m;
    if (std::regex_search(first, last, m, re)) {
      job.result.status = tv::kRegexMatched;
      job.result.position = static_cast<int>(m[0].first.Get() - job.text);
      job.result.length = static_cast<int>(m[0].second.Get() - m[0].first.Get());
    } else {
      job.result.status = TAVONA_REGEXP_NO_MATCH;
    }
  } catch (const std::regex_error &e) {
    // The engine's own complexity and memory limits are hostile input too.
    job.result.status = e.code() == std::regex_constants::error_complexity ||
                                e.code() == std::regex_constants::error_stack ||
                                e.code() == std::regex_constants::error_space
                            ? TAVONA_REGEXP_TOO_COMPLEX
                            : TAVONA_REGEXP_BAD_PATTERN;
  } catch (const GiveUp &g) {
    job.result.status = TAVONA_REGEXP_TOO_COMPLEX;
    job.result.outOfStack = g.stack;
  } catch (...) {
    job.result.status = TAVONA_REGEXP_TOO_COMPLEX;  // bad_alloc
  }
}

void MatchThread(void *p) { Match(*static_cast<Job *>(p)); }

// Whether the calling thread has kInlineRoom of stack left below here.
bool CallerHasRoom() {
  const char *here = static_cast<const char *>(__builtin_frame_address(0));
  const char *bottom = plat::StackBottom();
  return bottom && here > bottom && size_t(here - bottom) > kInlineRoom;
}

// Runs the match on a thread with stack reserved and waits for it.
bool RunWithStack(Job &job, size_t stack) {
  job.budget = stack - kStackMargin;
  return plat::RunWithStack(stack, MatchThread, &job);
}

}  // namespace

RegexResult FindRegex(const WCHAR *text, const WCHAR *pattern, uint64_t steps) {
  Job job{text, pattern, steps, 0, {}};
  job.result.status = TAVONA_REGEXP_TOO_COMPLEX;  // when no thread can start
  if (LenBounded(pattern, kMaxPatternLength + 1) > kMaxPatternLength) return job.result;
  if (LenBounded(pattern, kInlinePatternLength + 1) <= kInlinePatternLength && CallerHasRoom()) {
    job.budget = kInlineBudget;
    Match(job);
    if (!job.result.outOfStack) return job.result;
    job.result = RegexResult{};
    job.result.status = TAVONA_REGEXP_TOO_COMPLEX;
  }
  for (size_t stack : kStackReserves)
    if (RunWithStack(job, stack)) break;
  return job.result;
}

}  // namespace tv

extern "C" {

INT WINAPI Tavona_ParseRegExp(const WCHAR *text, INT unused2, const WCHAR *pattern,
                              UINT *matchLength, WCHAR *match, INT unused6, INT unused7,
                              INT unused8, INT matchSize) {
  if (!text || !pattern) return 0;
  tv::RegexResult r = tv::FindRegex(text, pattern, tv::kRegexSteps);
  if (r.status != tv::kRegexMatched) return r.status;
  if (matchLength) *matchLength = static_cast<UINT>(r.length);
  if (match && matchSize > 0) {
    // The runtime's bounded copy of exactly the match: one that does not
    // fit leaves the buffer empty.
    if (r.length < matchSize) {
      tv::CopyRaw(match, text + r.position, r.length);
      match[r.length] = 0;
    } else {
      match[0] = 0;
    }
  }
  return r.position;
}

}  // extern "C"
