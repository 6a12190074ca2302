// Exported string primitives.
#include <tavona/text.h>

#include <cstdint>
#include <cstring>

#include "frame/alloc.h"
#include "frame/platform.h"
#include "base/wstr.h"

namespace {

using tv::Finder;
using tv::HeapPtr;

// Position of the first occurrence of pattern in text, or -1 (also when the
// search table could not be allocated). An empty pattern is found at 0.
int Search(const WCHAR *text, const WCHAR *pattern) {
  int patLen = tv::Len(pattern);
  if (patLen == 0) return 0;
  Finder finder;
  if (!finder.Init(pattern, patLen)) return -1;
  return finder.Find(text, tv::Len(text), 0);
}

WCHAR *DuplicateUpper(const WCHAR *s, void (*upper)(WCHAR *)) {
  WCHAR *copy = tv::DuplicateWideString(s);
  if (copy) upper(copy);
  return copy;
}

}  // namespace

void WINAPI TavonaCopyString(WCHAR *dst, const WCHAR *src, INT dstSize) {
  tv::BoundedCopy(dst, src, dstSize);
}

void WINAPI TavonaAppendString(WCHAR *dst, const WCHAR *src, INT dstSize) {
  tv::BoundedAppend(dst, src, dstSize);
}

INT WINAPI TavonaCompareString(const WCHAR *a, const WCHAR *b, INT flags) {
  if (!a) a = TEXT("");
  if (!b) b = TEXT("");
  if (flags & 1) return tv::plat::CompareNoCaseCrt(a, b);
  return tv::Compare(a, b);
}

INT WINAPI TavonaFindString(const WCHAR *text, const WCHAR *sought, INT flags) {
  if (!text || !sought) return 0;
  if (!(flags & 1)) return Search(text, sought) >= 0 ? 1 : 0;
  // Blank texts are refused here although the case-sensitive search would
  // find a space; callers rely on that.
  HeapPtr<WCHAR> t(tv::DuplicateWideString(text));
  if (!t) return 0;
  HeapPtr<WCHAR> s(tv::DuplicateWideString(sought));
  if (!s || tv::IsBlank(t.get()) || tv::IsBlank(s.get())) return 0;
  tv::plat::UpperUser(t.get());
  tv::plat::UpperUser(s.get());
  return Search(t.get(), s.get()) >= 0 ? 1 : 0;
}

WCHAR *WINAPI Tavona_strstri(const WCHAR *text, const WCHAR *sought) {
  if (!text || !sought) return nullptr;
  HeapPtr<WCHAR> t(DuplicateUpper(text, tv::plat::UpperCrt));
  if (!t) return nullptr;
  HeapPtr<WCHAR> s(DuplicateUpper(sought, tv::plat::UpperCrt));
  if (!s) return nullptr;
  int at = Search(t.get(), s.get());
  return at < 0 ? nullptr : const_cast<WCHAR *>(text) + at;
}

namespace {

// The C runtime's upper-casing, one unit at a time, ASCII without a call.
struct UpperFold {
  WCHAR operator()(WCHAR c) const {
    if (c < 0x80) return c >= 'a' && c <= 'z' ? static_cast<WCHAR>(c - 32) : c;
    return tv::plat::UpperCrtUnit(c);
  }
};

// Walks the occurrences that Tavona_ReplaceString replaces, at most cap of
// them, in order, and calls emit(consumed, at) for each: the original units
// [consumed, at) come before it. Returns how many there are; consumed ends
// after the last one. The text after the search position is always an
// unchanged suffix of the original, so every search runs in the original
// and only the classification needs the current position.
template <bool everywhere, typename Fold, typename Emit>
int WalkReplacements(const Finder &finder, const WCHAR *hay, int n, int findLen, int withLen,
                     UINT flags, int64_t cap, Fold fold, int &consumed, Emit emit) {
  int count = 0;
  int outLen = 0;  // units of the result so far
  consumed = 0;
  for (int at = finder.Find(hay, n, 0, fold); at >= 0 && count < cap;) {
    if (!everywhere) {
      bool atStart = outLen + (at - consumed) == 0;
      bool atEnd = n - at == findLen;
      bool middle = !atStart && !atEnd;
      bool qualifies = ((flags & TAVONA_REPLACE_INMIDDLE) && middle) ||
                       ((flags & TAVONA_REPLACE_ATSTART) && atStart) ||
                       ((flags & TAVONA_REPLACE_ATEND) && atEnd);
      if (!qualifies) {
        at = finder.FindAfter(hay, n, at, fold);
        continue;
      }
      outLen += at - consumed + withLen;
    }
    emit(consumed, at);
    consumed = at + findLen;
    ++count;
    at = finder.Find(hay, n, consumed, fold);
  }
  return count;
}

template <bool everywhere, typename Fold>
void ReplaceInPlace(WCHAR *text, INT textSize, int n, const WCHAR *pattern, int findLen,
                    const WCHAR *with, int withLen, UINT flags, Fold fold) {
  Finder finder;
  if (!finder.Init(pattern, findLen)) return;
  // The text may grow to textSize - 2 units: one unit of the buffer stays
  // unused, kept as it has always been. A replacement that would pass that
  // ends the work.
  const int64_t growth = withLen - findLen;
  int64_t cap = growth > 0    ? (int64_t{textSize} - 2 - n) / growth
                : growth == 0 ? (n < textSize - 1 ? n : 0)
                              : n;
  if (flags & TAVONA_REPLACE_FIRST) cap = cap < 1 ? cap : 1;
  if (cap < 1) return;  // a full buffer takes no replacement at all
  // A growing text is first moved to the end of its final length; writing
  // from the start then never overtakes the units still to be read, since
  // the growth so far never exceeds the whole growth. A shrinking one is
  // rewritten where it stands.
  const WCHAR *src = text;
  int consumed = 0;
  if (growth > 0) {
    if (everywhere && findLen == 1) {
      // One unit (a character doubled, say): every occurrence is replaced,
      // so a plain count does, and it vectorises.
      int64_t count = 0;
      for (int i = 0; i < n; ++i) count += fold(text[i]) == pattern[0];
      cap = count < cap ? count : cap;
    } else {
      cap = WalkReplacements<everywhere>(finder, text, n, findLen, withLen, flags, cap, fold,
                                         consumed, [](int, int) {});
    }
    if (cap == 0) return;
    std::memmove(text + cap * growth, text, (static_cast<size_t>(n) + 1) * sizeof(WCHAR));
    src = text + cap * growth;
  }
  WCHAR *out = text;
  int count = WalkReplacements<everywhere>(finder, src, n, findLen, withLen, flags, cap, fold,
                                           consumed, [&](int from, int at) {
                                             for (int i = from; i < at; ++i) *out++ = src[i];
                                             // Replacements are short: a plain
                                             // loop beats a call to memcpy.
                                             for (const WCHAR *w = with; *w; ++w) *out++ = *w;
                                           });
  if (count == 0) return;
  for (int i = consumed; i < n; ++i) *out++ = src[i];
  *out = 0;
}

}  // namespace

// Works in the caller's buffer: no copy of the text, no scratch buffer.
void WINAPI Tavona_ReplaceString(WCHAR *text, INT textSize, const WCHAR *find, const WCHAR *with,
                                 UINT flags) {
  if (!text || textSize < 1 || !text[0] || !find || !find[0]) return;
  if (!(flags & (TAVONA_REPLACE_ATSTART | TAVONA_REPLACE_INMIDDLE | TAVONA_REPLACE_ATEND))) return;
  const int n = tv::LenBounded(text, textSize);
  if (n == textSize) return;
  const int findLen = tv::Len(find);
  if (findLen > n) return;
  if (!with) with = TEXT("");
  const int withLen = tv::Len(with);
  const UINT places = TAVONA_REPLACE_ATSTART | TAVONA_REPLACE_INMIDDLE | TAVONA_REPLACE_ATEND;
  const bool everywhere = (flags & places) == places;
  if (!(flags & TAVONA_REPLACE_NOCASE)) {
    auto replace = everywhere ? ReplaceInPlace<true, Finder::NoFold>
                              : ReplaceInPlace<false, Finder::NoFold>;
    replace(text, textSize, n, find, findLen, with, withLen, flags, Finder::NoFold{});
    return;
  }
  // The pattern upper-cased as a whole, the text unit by unit as it is read:
  // the same thing, since the C runtime upper-cases unit by unit.
  HeapPtr<WCHAR> upperFind(tv::DuplicateWideString(find));
  if (!upperFind) return;
  tv::plat::UpperCrt(upperFind.get());
  auto replace = everywhere ? ReplaceInPlace<true, UpperFold> : ReplaceInPlace<false, UpperFold>;
  replace(text, textSize, n, upperFind.get(), findLen, with, withLen, flags, UpperFold{});
}

void WINAPI Tavona_Replace(WCHAR *text, INT textSize, const WCHAR *find, const WCHAR *with,
                           UINT flags) {
  Tavona_ReplaceString(
      text, textSize, find, with,
      flags | TAVONA_REPLACE_ATSTART | TAVONA_REPLACE_INMIDDLE | TAVONA_REPLACE_ATEND);
}

INT WINAPI Tavona_ScanString(const WCHAR **cursor, WCHAR *out, INT outSize, WCHAR separator) {
  if (!cursor || !*cursor) {
    if (out && outSize > 0) out[0] = 0;
    return 0;
  }
  if (!out) outSize = 0;
  const WCHAR *p = *cursor;
  // The counter stops at 0, so a negative size (or a field longer than
  // INT_MAX) never wraps it round into storing.
  int counter = outSize > 0 ? outSize : 0;
  int stored = 0;
  auto take = [&] {
    if (counter > 1) out[stored++] = *p;
    if (counter > 0) --counter;
    ++p;
  };
  if (*p == '"') {
    ++p;
    if (*p == '"') {
      ++p;
    } else {
      while (*p && *p != '"') take();
      if (*p == '"') ++p;
    }
  } else if (!separator || *p != separator) {
    while (*p && *p != '"' && *p != separator) take();
  }
  // A field too long for out is left unterminated; callers size out for
  // their longest field.
  if (counter > 0) out[stored] = 0;
  while (separator && *p == separator) ++p;
  *cursor = p;
  return stored;
}

INT WINAPI Tavona_ScanStringlistLogarithmic(const WCHAR *key, const WCHAR *const *list, INT count) {
  if (!list) return -1;
  const WCHAR *const *base = list;
  for (int n = count; n >= 1 && key;) {
    int mid = n / 2;
    int c = tv::Compare(key, base[mid]);
    if (c == 0) return mid;  // index within the current range, as callers expect
    if (c < 0) {
      n = mid;
    } else {
      base += mid + 1;
      n = (n - 1) / 2;
    }
  }
  return -1;
}

INT WINAPI Tavona_ScanDigitString(const WCHAR *text, INT minDigits, const WCHAR *prefix,
                                  const WCHAR *suffix, const WCHAR **found, INT *digitCount) {
  const int prefixLen = tv::Len(prefix);
  const int suffixLen = tv::Len(suffix);
  int runEnd = 0;  // end of the digit run that p lies in, once measured
  for (int p = 0; text && text[p];) {
    if (p >= runEnd) {
      runEnd = p;
      while (tv::IsDigit(text[runEnd])) ++runEnd;
    }
    const int n = runEnd - p;
    if (digitCount) *digitCount = n;
    if (n < minDigits) {
      p += n > 0 ? n : 1;
      continue;
    }
    if (prefixLen && (p < prefixLen || !tv::EqualN(text + p - prefixLen, prefix, prefixLen))) {
      ++p;
      continue;
    }
    if (suffixLen) {
      // The text's terminator differs from every unit of suffix, so the
      // comparison never reads past it.
      int i = 0;
      while (i < suffixLen && text[p + n + i] == suffix[i]) ++i;
      if (i < suffixLen) {
        ++p;
        continue;
      }
    }
    if (found) *found = text + p;
    return 1;
  }
  if (found) *found = nullptr;
  if (digitCount) *digitCount = 0;
  return 0;
}

INT WINAPI Tavona_ExtractFirstDigitString(const WCHAR *text, INT minDigits, const WCHAR *prefix,
                                          const WCHAR *suffix, WCHAR *out, INT outSize) {
  if (!out || outSize < 1 || minDigits < 1) return 0;
  out[0] = 0;
  const WCHAR *found = nullptr;
  INT count = 0;
  if (!Tavona_ScanDigitString(text, minDigits, prefix, suffix, &found, &count)) return 0;
  int k = count < outSize - 1 ? count : outSize - 1;
  // Bytes, not characters: the routine has always copied this way and
  // callers depend on it.
  std::memcpy(out, found, static_cast<size_t>(k));
  out[k] = 0;
  return 1;
}

INT WINAPI Tavona_HexStringToLong(const WCHAR *text, DWORD *value) {
  if (!value) return -1;
  *value = 0;
  if (!text) return 0;
  for (; *text; ++text) {
    WCHAR c = *text;
    if (c <= 32) continue;  // spaces and control characters anywhere
    if (c >= 'a' && c <= 'z') c = static_cast<WCHAR>(c - 32);
    DWORD digit;
    if (c >= '0' && c <= '9')
      digit = c - '0';
    else if (c >= 'A' && c <= 'F')
      digit = c - 'A' + 10;
    else
      return -1;
    *value = (*value << 4) | digit;
  }
  return 0;
}

WCHAR *WINAPI Tavona_ConvertMB2Wide(const char *src) {
  if (!src) return nullptr;
  int n = tv::plat::AnsiToWide(src, nullptr, 0) + 1;
  WCHAR *dst = tv::AllocWideChars(static_cast<UINT>(n));
  if (!dst) return nullptr;
  dst[0] = 0;
  if (tv::plat::AnsiToWide(src, dst, n) == 0) {
    tv::FreeMem(dst);
    return nullptr;
  }
  return dst;
}

char *WINAPI Tavona_ConvertWide2MB(const WCHAR *src) {
  if (!src) return nullptr;
  int n = tv::plat::WideToAnsi(src, nullptr, 0) + 1;
  char *dst = static_cast<char *>(tv::AllocBytes(static_cast<UINT>(n)));
  if (!dst) return nullptr;
  dst[0] = 0;
  // Returned even when the conversion failed: then it is empty.
  tv::plat::WideToAnsi(src, dst, n);
  return dst;
}
