#include "files/patterns.h"

#include "frame/alloc.h"
#include "frame/platform.h"
#include "base/wstr.h"

#include <cstdint>

namespace tv {
namespace {

// Copies text[0, len) split at its last dot into name and extension, each
// cut to kPart characters and terminated; returns the units written.
int SplitInto(WCHAR *out, const WCHAR *text, int len) {
  int dot = -1;
  for (int i = 0; i < len; ++i)
    if (text[i] == '.') dot = i;
  int nameLen = dot < 0 ? len : dot;
  int extStart = dot < 0 ? len : dot + 1;
  int extLen = len - extStart;
  if (nameLen > PatternList::kPart) nameLen = PatternList::kPart;
  if (extLen > PatternList::kPart) extLen = PatternList::kPart;
  CopyRaw(out, text, nameLen);
  out[nameLen] = 0;
  CopyRaw(out + nameLen + 1, text + extStart, extLen);
  out[nameLen + 1 + extLen] = 0;
  return nameLen + extLen + 2;
}

const WCHAR *NextPart(const WCHAR *p) {
  while (*p) ++p;
  return p + 1;
}

}  // namespace

bool MatchPart(const WCHAR *part, const WCHAR *pattern) {
  for (;; ++part, ++pattern) {
    if (*pattern == '*') return true;
    if (*pattern == 0) return *part == 0;
    if (*part == 0) return false;
    if (*pattern != '?' && *pattern != *part) return false;
  }
}

PatternList::~PatternList() { FreeMem(parts_); }

bool PatternList::Build(const WCHAR *list) {
  FreeMem(parts_);
  parts_ = nullptr;
  count_ = 0;
  int len = Len(list);
  if (len == 0) return true;
  // Every entry gives at most its own characters and two terminators, so
  // one-character entries need the most room: three units for two.
  auto *parts = static_cast<WCHAR *>(AllocBytes((uint64_t(len) * 2 + 2) * sizeof(WCHAR)));
  if (!parts) return false;
  int used = 0, count = 0;
  for (int start = 0; start <= len;) {
    int end = start;
    while (end < len && list[end] != '\t') ++end;
    if (end > start) {
      used += SplitInto(parts + used, list + start, end - start);
      ++count;
    }
    start = end + 1;
  }
  // Upper-cased part by part: each is a terminated string of its own.
  for (int i = 0; i < used; i += Len(parts + i) + 1) plat::UpperUser(parts + i);
  parts_ = parts;
  count_ = count;
  return true;
}

bool PatternList::Matches(const WCHAR *fileName) const {
  if (count_ == 0 || !fileName) return false;
  WCHAR split[2 * kPart + 2];
  int len = LenBounded(fileName, 4 * kPart);
  SplitInto(split, fileName, len);
  const WCHAR *name = split;
  const WCHAR *ext = NextPart(split);
  plat::UpperUser(split);
  plat::UpperUser(const_cast<WCHAR *>(ext));
  const WCHAR *p = parts_;
  for (int i = 0; i < count_; ++i) {
    const WCHAR *patExt = NextPart(p);
    if (MatchPart(name, p) && MatchPart(ext, patExt)) return true;
    p = NextPart(patExt);
  }
  return false;
}

}  // namespace tv
