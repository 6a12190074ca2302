#include "base/wstr.h"

#include <cstdint>
#include <initializer_list>

#include "base/sys.h"

namespace tv {

int Compare(const WCHAR *a, const WCHAR *b) {
  if (!a) a = TEXT("");
  if (!b) b = TEXT("");
  for (;; ++a, ++b) {
    WORD ca = static_cast<WORD>(*a), cb = static_cast<WORD>(*b);
    if (ca != cb) return ca < cb ? -1 : 1;
    if (!ca) return 0;
  }
}

// ---------------------------------------------------------------------------
// Finder

Finder::~Finder() {
  if (fail_ != inline_) plat::Free(fail_);
}

bool Finder::Init(const WCHAR *pattern, int patternLen) {
  if (fail_ != inline_) plat::Free(fail_);
  fail_ = nullptr;
  pat_ = nullptr;
  patLen_ = 0;
  if (!pattern || patternLen < 1) return false;
  // Patterns are at most INT_MAX long, so the table's size fits in size_t.
  fail_ = patternLen <= kInline
              ? inline_
              : static_cast<int *>(plat::Alloc(size_t{static_cast<UINT>(patternLen)} * sizeof(int)));
  if (!fail_) return false;
  pat_ = pattern;
  patLen_ = patternLen;
  // fail_[i]: length of the longest proper border of pattern[0..i].
  fail_[0] = 0;
  for (int i = 1, k = 0; i < patLen_; ++i) {
    while (k > 0 && pat_[i] != pat_[k]) k = fail_[k - 1];
    if (pat_[i] == pat_[k]) ++k;
    fail_[i] = k;
  }
  return true;
}

// ---------------------------------------------------------------------------
// Bounded copy and append

void ReportNoFit(const char *routine) {
  static const char kHead[] = "tavona32: ";
  static const char kTail[] = ": the text does not fit in the buffer (emptied)";
  WCHAR line[200];
  int n = 0;
  for (const char *part : {kHead, routine ? routine : "?", kTail})
    for (; *part && n < 199; ++part)
      line[n++] = static_cast<WCHAR>(static_cast<unsigned char>(*part));
  line[n] = 0;
  plat::DebugOutput(line);
}

namespace {

// Appends count units of src (no zero among them) to the text of length len
// in dst[size]. When they do not fit, dst becomes empty and the caller hears
// of it as a programming error. A text that already fills the buffer
// (unterminated) is left alone. The last unit of the buffer is always
// zeroed, as the C runtime's bounded concatenation does.
bool AppendAt(WCHAR *dst, int size, int &len, const WCHAR *src, int count, const char *routine) {
  if (size - len <= 0) return false;
  if (count >= size - len) {
    dst[0] = 0;
    dst[size - 1] = 0;
    len = 0;
    ReportNoFit(routine);
    return false;
  }
  CopyRaw(dst + len, src, count);
  len += count;
  dst[len] = 0;
  dst[size - 1] = 0;
  return true;
}

}  // namespace

bool BoundedCopy(WCHAR *dst, const WCHAR *src, int dstSize) {
  if (!dst || dstSize < 1) return false;
  if (!src) src = TEXT("");
  // The copy count equals the capacity: never truncates, so a source of
  // dstSize units or more is an overflow, not a shorter copy.
  int n = LenBounded(src, dstSize);
  bool fits = n < dstSize;
  if (fits) {
    CopyRaw(dst, src, n);
    dst[n] = 0;
  } else {
    dst[0] = 0;
    ReportNoFit("TavonaCopyString");
  }
  dst[dstSize - 1] = 0;
  return fits;
}

bool BoundedAppend(WCHAR *dst, const WCHAR *src, int dstSize) {
  if (!dst || !src || dstSize < 1) return false;
  int len = LenBounded(dst, dstSize);
  int room = dstSize - len;
  return AppendAt(dst, dstSize, len, src, LenBounded(src, room), "TavonaAppendString");
}

// The last unit is zeroed at once, as the C runtime's bounded concatenation
// does on every append: nothing else is ever written there.
Appender::Appender(WCHAR *buffer, int size) : buf_(buffer) {
  if (!buffer || size < 1) return;
  int len = LenBounded(buffer, size);
  if (len == size) {
    full_ = size;
    return;
  }
  last_ = buffer + size - 1;
  at_ = buffer + len;
  *last_ = 0;
}

bool Appender::Overflow() {
  buf_[0] = 0;
  at_ = buf_;
  ReportNoFit("TavonaAppendString (appender)");
  return false;
}

bool Appender::AppendCut(const WCHAR *src, int count) {
  if (!at_) return false;
  if (!src || count < 0) count = 0;
  int room = static_cast<int>(last_ - at_);
  int n = count < room ? count : room;
  CopyRaw(at_, src, n);
  at_ += n;
  *at_ = 0;
  return n == count;
}

}  // namespace tv
