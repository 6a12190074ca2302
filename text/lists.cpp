// Separated lists and language lists: one text per language in one string,
// as text VT code VT text VT code ...
#include <tavona/text.h>

#include <climits>

#include "frame/alloc.h"
#include "base/wstr.h"

namespace {

constexpr WCHAR kVt = 11;
constexpr int kCodeSize = 10;   // 9 significant characters
constexpr int kTextSize = 500;  // when a list is rewritten
const WCHAR kMissingCode[] = {'4', '9', 0};

// The code field read as _wtoi reads it. At most 9 characters reach it, so
// the value cannot overflow.
int CodeValue(const WCHAR *s) {
  while ((*s >= 9 && *s <= 13) || *s == ' ') ++s;
  bool negative = false;
  if (*s == '-' || *s == '+') negative = *s++ == '-';
  int value = 0;
  for (; tv::IsDigit(*s); ++s) value = value * 10 + (*s - '0');
  return negative ? -value : value;
}

// A missing code field counts as 49.
void ReadCode(const WCHAR *&cursor, WCHAR (&code)[kCodeSize]) {
  if (!tv::ReadField(cursor, kVt, code, kCodeSize)) tv::CopyRaw(code, kMissingCode, 3);
}

}  // namespace

namespace tv {

// One field up to the separator, cut to size - 1 characters; the cursor
// moves past the whole field and its separator. False (and out "") at the
// end of the list: a list ending in a separator has no empty last field.
bool ReadField(const WCHAR *&cursor, WCHAR separator, WCHAR *out, int size) {
  if (!out || size < 1) return false;
  out[0] = 0;
  if (!cursor || !*cursor) return false;
  int n = 0;
  for (; *cursor && *cursor != separator; ++cursor)
    if (n < size - 1) out[n++] = *cursor;
  if (*cursor) ++cursor;
  out[n] = 0;
  return true;
}

}  // namespace tv

UINT WINAPI Tavona_GetSeparatedListLng(const WCHAR *list, WCHAR separator) {
  if (!list || !list[0] || !separator) return 0;
  UINT count = 1;
  for (; *list; ++list)
    if (*list == separator && list[1]) ++count;
  return count;
}

INT WINAPI Tavona_GetSeparatedListIndex(const WCHAR *list, const WCHAR *item, WCHAR separator) {
  if (!list || !item || !separator) return -1;
  tv::HeapPtr<WCHAR> copy(tv::DuplicateWideString(list));
  if (!copy) return -1;
  // Tokens as wcstok gives them: runs of separators are skipped, so empty
  // items are not counted here although Tavona_GetSeparatedListLng counts
  // them.
  int itemLen = tv::Len(item);
  const WCHAR *p = copy.get();
  for (int index = 0;; ++index) {
    while (*p == separator) ++p;
    if (!*p) return -1;
    const WCHAR *start = p;
    while (*p && *p != separator) ++p;
    if (p - start == itemLen && tv::EqualN(start, item, itemLen)) return index;
  }
}

INT WINAPI Tavona_ScanTextFromLanguageList(const WCHAR *list, UINT language, WCHAR *out,
                                           INT outSize) {
  if (!out || outSize < 1) return -1;
  out[0] = 0;
  if (!list) return -1;
  const WCHAR *cursor = list;
  WCHAR code[kCodeSize];
  while (tv::ReadField(cursor, kVt, out, outSize)) {
    ReadCode(cursor, code);
    if (static_cast<UINT>(CodeValue(code)) == language) return 0;
  }
  // Not there: the first text stands in for every language.
  cursor = list;
  tv::ReadField(cursor, kVt, out, outSize);
  return -1;
}

void WINAPI Tavona_ReplaceTextInLanguageList(WCHAR *list, UINT listSize, const WCHAR *text,
                                             INT language) {
  if (!list || listSize < 1 || listSize > INT_MAX) return;
  int size = static_cast<int>(listSize);
  tv::HeapPtr<WCHAR> work(tv::AllocWideChars(listSize));
  if (!work) return;
  // The new pair goes first, so the language just written moves to the
  // front; every other pair keeps its place, and all old pairs of this
  // language are dropped.
  const WCHAR kPair[] = {'%', 's', kVt, '%', 'd', 0};
  tv::Format(work.get(), size, kPair, text, language);
  tv::Appender out(work.get(), size);
  const WCHAR vt[] = {kVt, 0};
  const WCHAR *cursor = list;
  WCHAR old[kTextSize], code[kCodeSize];
  while (tv::ReadField(cursor, kVt, old, kTextSize)) {
    ReadCode(cursor, code);
    if (CodeValue(code) == language) continue;
    out.Append(vt);
    out.Append(old);
    out.Append(vt);
    out.Append(code);
  }
  tv::BoundedCopy(list, work.get(), size);
}
