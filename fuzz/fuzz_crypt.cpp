// Scrambling and the self-marking form with arbitrary keys, texts and small
// buffers in exact heap blocks: scrambling is undone exactly, never yields a
// zero, and a marked text that fits comes back whole.
#include <tavona/text.h>

#include "fuzzutil.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  int outSize = in.Byte() % 64;
  fuzz::WStr key = in.Text(u"kK \x00ff\x1234", 8);
  fuzz::WStr text = in.Text(u"ab \"\\\t\x01\x7f\x00e4\x20ac", 40);

  fuzz::WStr work = text;
  Tavona_Crypt(key.c_str(), work.data());
  for (WCHAR c : work) fuzz::Check(c != 0, "no character becomes 0");
  Tavona_DeCrypt(key.c_str(), work.data());
  fuzz::Check(work == text, "unscrambling undoes scrambling");

  fuzz::Exact<WCHAR> marked(outSize > 0 ? outSize : 1);
  marked.get()[0] = 0;
  Tavona_StringToAutoCrypt(text.c_str(), marked.get(), outSize, key.c_str());
  size_t len = 0;
  while (outSize > 0 && len < static_cast<size_t>(outSize) && marked.get()[len]) ++len;
  if (outSize > 0) fuzz::Check(len < static_cast<size_t>(outSize), "terminated");
  // Escaped, a character takes at most 4: then the marked text fits whole.
  bool blank = true;
  for (WCHAR c : text) blank = blank && c <= 32;
  if (blank && outSize >= 10 && text.size() < static_cast<size_t>(outSize))
    fuzz::Check(fuzz::WStr(marked.get()) == text, "a blank text is kept as it is");
  if (!blank && outSize >= 10 && 7 + 4 * text.size() + 11 <= static_cast<size_t>(outSize)) {
    // The buffer holds the escaped form before it is decoded in place.
    int backSize = static_cast<int>(len) - 7 + 1;
    fuzz::Exact<WCHAR> back(backSize);
    Tavona_AutoCryptToString(marked.get(), back.get(), backSize, key.c_str());
    fuzz::Check(fuzz::WStr(back.get()) == text, "marked text comes back");
  }
  return 0;
}
