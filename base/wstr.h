// The library's own wide-string primitives. Portable code uses these and
// never the C runtime's wcs* functions, whose WCHAR differs between Windows
// (wchar_t) and the host build (char16_t).
#pragma once

#include <tavona/tvbase.h>

#include <cstdarg>
#include <cstddef>

namespace tv {

inline int Len(const WCHAR *s) {
  if (!s) return 0;
  const WCHAR *p = s;
  while (*p) ++p;
  return static_cast<int>(p - s);
}

// Length, looking at no more than max units; returns max when no zero was
// found among them.
inline int LenBounded(const WCHAR *s, int max) {
  int n = 0;
  if (!s) return 0;
  while (n < max && s[n]) ++n;
  return n;
}

// Null, empty, or only characters with codes 1 to 32.
inline bool IsBlank(const WCHAR *s) {
  if (!s) return true;
  for (; *s; ++s)
    if (*s > 32) return false;
  return true;
}

inline bool IsDigit(WCHAR c) { return c >= '0' && c <= '9'; }

// Unbounded primitives for internal buffers whose size is known to fit.
inline void CopyRaw(WCHAR *dst, const WCHAR *src, int count) {
  for (int i = 0; i < count; ++i) dst[i] = src[i];
}
inline bool EqualN(const WCHAR *a, const WCHAR *b, int count) {
  for (int i = 0; i < count; ++i)
    if (a[i] != b[i]) return false;
  return true;
}
// Unsigned unit comparison: -1, 0 or 1.
int Compare(const WCHAR *a, const WCHAR *b);

// Linear-time search (Knuth-Morris-Pratt): position of the first occurrence
// of the pattern in text[from, textLen), or -1. The table is built once and
// reused for every search in the same text.
class Finder {
 public:
  Finder() = default;
  ~Finder();
  Finder(const Finder &) = delete;
  Finder &operator=(const Finder &) = delete;
  // False when memory runs out (reported) or the pattern is empty.
  bool Init(const WCHAR *pattern, int patternLen);
  struct NoFold {
    WCHAR operator()(WCHAR c) const { return c; }
  };
  // With a fold, each text unit is folded (upper-cased, say) before it is
  // compared; the pattern must be given folded already.
  template <typename Fold = NoFold>
  int Find(const WCHAR *text, int textLen, int from, Fold fold = {}) const {
    if (!fail_ || !text) return -1;
    return Scan(text, textLen, from < 0 ? 0 : from, 0, fold);
  }
  // The next occurrence starting after the one at previous (a result of
  // Find or FindAfter in the same text), overlapping it if need be; resumes
  // without looking at the matched units again.
  template <typename Fold = NoFold>
  int FindAfter(const WCHAR *text, int textLen, int previous, Fold fold = {}) const {
    if (!fail_ || !text) return -1;
    if (previous < 0) return Scan(text, textLen, 0, 0, fold);
    return Scan(text, textLen, previous + patLen_, fail_[patLen_ - 1], fold);
  }

 private:
  // Inline: callers that replace every occurrence call it once per match.
  template <typename Fold>
  int Scan(const WCHAR *text, int textLen, int from, int k, Fold fold) const {
    const WCHAR first = pat_[0];
    for (int i = from; i < textLen; ++i) {
      // Outside a partial match, skip quickly to the next first unit.
      if (k == 0) {
        while (i < textLen && fold(text[i]) != first) ++i;
        if (i == textLen) break;
        if (patLen_ == 1) return i;
      }
      const WCHAR c = fold(text[i]);
      while (k > 0 && c != pat_[k]) k = fail_[k - 1];
      if (c == pat_[k] && ++k == patLen_) return i - patLen_ + 1;
    }
    return -1;
  }

  static constexpr int kInline = 32;  // short patterns need no heap
  const WCHAR *pat_ = nullptr;
  int patLen_ = 0;
  int *fail_ = nullptr;
  int inline_[kInline];
};

// The bounded copy and append rules of TavonaCopyString and
// TavonaAppendString: a source that does not fit empties the destination
// and is reported as a programming error. They return false in that case.
bool BoundedCopy(WCHAR *dst, const WCHAR *src, int dstSize);
bool BoundedAppend(WCHAR *dst, const WCHAR *src, int dstSize);
void ReportNoFit(const char *routine);

// Repeated bounded appends into one buffer without rescanning it: follows
// the rule of BoundedAppend while remembering where the text ends. The
// buffer must not be changed behind the appender's back.
class Appender {
 public:
  Appender(WCHAR *buffer, int size);
  // Inline and in one pass: a text is built from many short appends. A
  // source that does not fit empties the buffer (units after the terminator
  // may have been written, never past the size).
  bool Append(const WCHAR *src) {
    if (!src || !at_) return false;
    WCHAR *p = at_;
    for (WCHAR c; (c = *src) != 0; ++src) {
      if (p == last_) return Overflow();
      *p++ = c;
    }
    return Close(p);
  }
  // At most count units of src (fewer when it ends before).
  bool Append(const WCHAR *src, int count) {
    if (!src || !at_) return false;
    WCHAR *p = at_;
    for (int i = 0; i < count && src[i]; ++i) {
      if (p == last_) return Overflow();
      *p++ = src[i];
    }
    return Close(p);
  }
  bool Append(WCHAR c) {
    if (!at_) return false;
    WCHAR *p = at_;
    if (c) {
      if (p == last_) return Overflow();
      *p++ = c;
    }
    return Close(p);
  }
  // Appends as much of src[0, count) as fits before the terminator and
  // leaves the text terminated: for outputs that are cut, not emptied.
  // False when something was left out.
  bool AppendCut(const WCHAR *src, int count);
  // A buffer without a terminator within its size counts as full.
  int Length() const { return at_ ? static_cast<int>(at_ - buf_) : full_; }

 private:
  bool Close(WCHAR *p) {
    *p = 0;
    at_ = p;
    return true;
  }
  // The text did not fit: the buffer is emptied and the programming error
  // reported, as BoundedAppend does.
  bool Overflow();

  WCHAR *buf_;
  WCHAR *last_ = nullptr;  // the last unit, where the longest text ends
  WCHAR *at_ = nullptr;    // the terminator; null when nothing can be appended
  int full_ = 0;
};

// One field of a separated text up to the separator, cut to size - 1
// characters; the cursor moves past the whole field and its separator.
// False (and out "") at the end of the text.
bool ReadField(const WCHAR *&cursor, WCHAR separator, WCHAR *out, int size);

// printf-style formatting with Windows wide-printf semantics on every build:
// %s and %ls are wide strings (NULL prints "(null)"), %hs and %S narrow ones,
// %c a wide character, %d %i %u %x %X %o take 32-bit values ('l' is 32-bit
// as on Windows), %lld %I64d 64-bit, %zd %Id %p pointer-sized, %e %f %g
// doubles; flags - + space 0 #, width and precision with '*'.
// Writes at most size - 1 characters and a terminating zero (nothing when
// size < 1) and returns the length the whole text would have had, so
// result >= size means it was cut.
int Format(WCHAR *dst, int size, const WCHAR *format, ...);
int FormatV(WCHAR *dst, int size, const WCHAR *format, va_list args);

}  // namespace tv
