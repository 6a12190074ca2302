// Tavona_ReplaceString with random sizes and flags: nothing is written past
// textSize (exact heap block) and the one-pass result equals the
// step-by-step algorithm's.
#include <tavona/text.h>

#include "fuzzutil.h"

namespace {

using fuzz::WStr;

WStr Upper(WStr s) {
  for (WCHAR &c : s)
    if (c >= 'a' && c <= 'z') c = static_cast<WCHAR>(c - 32);
  return s;
}

// Searches the current text again after every replacement.
WStr StepByStep(const WStr &text, int textSize, const WStr &find, const WStr &with,
                unsigned flags) {
  WStr cur = text;
  for (size_t pos = 0;;) {
    size_t at = (flags & 2) ? Upper(cur).find(Upper(find), pos) : cur.find(find, pos);
    if (at == WStr::npos) break;
    bool atStart = at == 0, atEnd = cur.size() - at == find.size();
    bool middle = !atStart && !atEnd;
    if (!((flags & 8 && middle) || (flags & 4 && atStart) || (flags & 16 && atEnd))) {
      pos = at + 1;
      continue;
    }
    long long newLen = static_cast<long long>(cur.size() - find.size() + with.size());
    if (newLen >= textSize - 1LL) break;
    cur = cur.substr(0, at) + with + cur.substr(at + find.size());
    if (flags & 1) break;
    pos = at + with.size();
  }
  return cur;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  unsigned flags = in.Byte();
  int textSize = static_cast<int>(in.Unit() % 600) - 2;
  const char16_t *alphabet = u"aabAB";
  WStr find = in.Text(alphabet, 6), with = in.Text(alphabet, 12), text = in.Text(alphabet, 600);
  bool nullWith = with.empty() && (flags & 0x80);

  size_t units = textSize > 0 ? static_cast<size_t>(textSize) : 0;
  fuzz::Exact<WCHAR> buf(units);
  for (size_t i = 0; i < units; ++i) buf.get()[i] = i < text.size() ? text[i] : 0;
  Tavona_ReplaceString(buf.get(), textSize, find.c_str(), nullWith ? nullptr : with.c_str(), flags);

  if (textSize < 1) return 0;
  size_t len = 0;
  while (len < units && buf.get()[len]) ++len;
  WStr got(buf.get(), len);
  if (text.size() >= units || text.empty() || find.empty()) {
    fuzz::Check(got == text.substr(0, units), "left alone");
  } else {
    fuzz::Check(got == StepByStep(text, textSize, find, with, flags), "same as step by step");
  }
  return 0;
}
