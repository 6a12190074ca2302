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

// One pass over the original text. The text after the search position is
// always an unchanged suffix of the original, so every search runs in the
// original (or its upper-cased copy, since upper-casing maps unit by unit)
// and only the classification needs the current length and position. The
// result is built in a scratch buffer and copied back once.
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

  const WCHAR *hay = text;
  const WCHAR *pattern = find;
  HeapPtr<WCHAR> upper;
  if (flags & TAVONA_REPLACE_NOCASE) {
    upper =
        HeapPtr<WCHAR>(tv::AllocWideChars(static_cast<UINT>(n) + static_cast<UINT>(findLen) + 2));
    if (!upper) return;
    WCHAR *upperFind = upper.get() + n + 1;
    tv::CopyRaw(upper.get(), text, n + 1);
    tv::CopyRaw(upperFind, find, findLen + 1);
    tv::plat::UpperCrt(upper.get());
    tv::plat::UpperCrt(upperFind);
    hay = upper.get();
    pattern = upperFind;
  }
  Finder finder;
  if (!finder.Init(pattern, findLen)) return;

  HeapPtr<WCHAR> result;
  int outLen = 0;      // units of the result written so far
  int consumed = 0;    // original units taken into the result
  int64_t curLen = n;  // length of the text as the replacements go
  const UINT places = TAVONA_REPLACE_ATSTART | TAVONA_REPLACE_INMIDDLE | TAVONA_REPLACE_ATEND;
  const bool everywhere = (flags & places) == places;
  for (int at = finder.Find(hay, n, 0); at >= 0;) {
    bool atStart = outLen + (at - consumed) == 0;
    bool atEnd = n - at == findLen;
    bool middle = !atStart && !atEnd;
    bool qualifies = everywhere || ((flags & TAVONA_REPLACE_INMIDDLE) && middle) ||
                     ((flags & TAVONA_REPLACE_ATSTART) && atStart) ||
                     ((flags & TAVONA_REPLACE_ATEND) && atEnd);
    if (!qualifies) {
      at = finder.FindAfter(hay, n, at);
      continue;
    }
    // One unit of the buffer stays unused; kept as it has always been.
    if (curLen - findLen + withLen >= int64_t{textSize} - 1) break;
    if (!result) {
      // Replaced occurrences never overlap, so there are at most n / findLen.
      int64_t most = n;
      if (withLen > findLen) most += int64_t{n / findLen} * (withLen - findLen);
      if (most > int64_t{textSize} - 2) most = int64_t{textSize} - 2;
      result = HeapPtr<WCHAR>(tv::AllocWideChars(static_cast<UINT>(most + 1)));
      if (!result) return;
    }
    if (at > consumed) tv::CopyRaw(result.get() + outLen, text + consumed, at - consumed);
    outLen += at - consumed;
    // Replacements are short: a plain loop beats a call to memcpy per match.
    for (const WCHAR *w = with; *w; ++w) result[outLen++] = *w;
    consumed = at + findLen;
    curLen += withLen - findLen;
    if (flags & TAVONA_REPLACE_FIRST) break;
    at = finder.Find(hay, n, consumed);
  }
  if (!result) return;
  tv::CopyRaw(result.get() + outLen, text + consumed, n - consumed);
  outLen += n - consumed;
  tv::CopyRaw(text, result.get(), outLen);
  text[outLen] = 0;
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
