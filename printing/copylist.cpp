// Reading and writing copy list texts, and the exports that need no window.
#include "printing/copylist.h"

#include <tavona/printing.h>

#include "frame/alloc.h"
#include "text/numbers.h"
#include "base/wstr.h"

namespace tv::print {

namespace {

constexpr WCHAR kStandardCopyList[] = TEXT("Original|1|");

// The runtime's tokenizer on one separator: runs of it count as one and
// no empty token is produced. The text is not changed.
class Tokens {
 public:
  explicit Tokens(const WCHAR *text) : p_(text ? text : TEXT("")) {}
  bool Next(const WCHAR *&start, int &len) {
    while (*p_ == '|') ++p_;
    if (!*p_) return false;
    start = p_;
    while (*p_ && *p_ != '|') ++p_;
    len = static_cast<int>(p_ - start);
    return true;
  }

 private:
  const WCHAR *p_;
};

WCHAR *DuplicateRange(const WCHAR *s, int len) {
  WCHAR *copy = AllocWideChars(static_cast<UINT>(len) + 1);
  if (!copy) return nullptr;
  CopyRaw(copy, s, len);
  copy[len] = 0;
  return copy;
}

}  // namespace

CopyList::~CopyList() {
  Clear();
  FreeMem(profile);
}

bool CopyList::SetProfile(const WCHAR *file) {
  WCHAR *copy = nullptr;
  if (file && !(copy = DuplicateWideString(file))) return false;
  FreeMem(profile);
  profile = copy;
  return true;
}

void CopyList::Clear() {
  for (int i = 0; i < kCopyEntries; ++i) {
    FreeMem(names[i]);
    names[i] = nullptr;
    counts[i] = 0;
  }
}

bool CopyList::SetName(int index, const WCHAR *name) {
  WCHAR *copy = nullptr;
  if (name && !(copy = DuplicateWideString(name))) return false;
  FreeMem(names[index]);
  names[index] = copy;
  return true;
}

INT CopyList::Total() const {
  UINT sum = 0;
  for (INT c : counts) sum += static_cast<UINT>(c);
  return static_cast<INT>(sum);
}

bool ReadCopyList(const WCHAR *text, CopyList &list) {
  list.Clear();
  Tokens tokens(text);
  for (int i = 0; i < kCopyEntries; ++i) {
    const WCHAR *name, *count;
    int nameLen, countLen;
    if (!tokens.Next(name, nameLen) || !tokens.Next(count, countLen)) break;
    while (nameLen > 0 && *name == ' ') ++name, --nameLen;
    WCHAR *copy = DuplicateRange(name, nameLen);
    if (!copy) return false;
    list.names[i] = copy;
    // The number ends at the separator (or the end), where _wtoi stops too.
    list.counts[i] = num::ToInt(count);
  }
  return true;
}

WCHAR *WriteCopyList(const CopyList &list) {
  uint64_t size = 1;
  for (int i = 0; i < kCopyEntries; ++i) size += (list.names[i] ? Len(list.names[i]) : 0) + 16;
  if (size > 0x7FFFFFFF) size = 0xFFFFFFFFu;  // refused by the allocator
  WCHAR *out = AllocWideChars(static_cast<UINT>(size));
  if (!out) return nullptr;
  out[0] = 0;
  Appender a(out, static_cast<int>(size));
  for (int i = 0; i < kCopyEntries; ++i) {
    const WCHAR *name = list.names[i] && list.names[i][0] ? list.names[i] : TEXT(" ");
    WCHAR count[16];
    Format(count, 16, TEXT("|%d|"), list.counts[i]);
    a.Append(name);
    a.Append(count);
  }
  return out;
}

}  // namespace tv::print

using namespace tv::print;

void WINAPI Tavona_GetStandardCopyList(WCHAR *buffer, INT size) {
  if (!buffer || size < 1) return;
  int n = tv::Len(kStandardCopyList);
  if (n > size - 1) n = size - 1;
  tv::CopyRaw(buffer, kStandardCopyList, n);
  buffer[n] = 0;
}

INT WINAPI Tavona_GetCopyListItem(const WCHAR *copyList, INT index, WCHAR *name, INT nameSize) {
  if (index > kCopyEntries - 1 || index < 0) return -1;
  CopyList list;
  if (!ReadCopyList(copyList, list)) return 0;
  if (name && nameSize > 0) tv::BoundedCopy(name, list.names[index] ? list.names[index] : TEXT(""), nameSize);
  return list.counts[index];
}

INT WINAPI Tavona_GetTotalCount(const WCHAR *copyList) {
  CopyList list;
  if (!ReadCopyList(copyList, list)) return 0;
  return list.Total();
}
