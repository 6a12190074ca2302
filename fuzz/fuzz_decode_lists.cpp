// Arbitrary text through both decoders, the escape-to-binary copy and the
// language-list routines with small buffers in exact heap blocks: nothing
// is read or written outside them, and the results keep their bounds.
#include <tavona/text.h>

#include "fuzzutil.h"

namespace {

size_t LenIn(const WCHAR *p, size_t n) {
  size_t len = 0;
  while (len < n && p[len]) ++len;
  return len;
}

fuzz::Exact<WCHAR> *CopyOf(const fuzz::WStr &s) {
  auto *b = new fuzz::Exact<WCHAR>(s.size() + 1);
  for (size_t i = 0; i <= s.size(); ++i) b->get()[i] = s.c_str()[i];
  return b;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  int outSize = in.Byte() % 16 - 2;
  unsigned listSize = in.Byte() % 48;
  WCHAR escape = static_cast<WCHAR>(u"\\^dx\x0b"[in.Byte() % 5]);
  unsigned language = in.Byte() % 4 == 0 ? 0xFFFFFFFF : u"\x31\x34\x39"[in.Byte() % 3] - '0' + 40;
  fuzz::WStr text = in.Text(u"\\^adxqtnrv0149AZ \x0b-", 300);
  fuzz::WStr newText = in.Text(u"ab\x0b", 12);

  for (int mode = 0; mode < 2; ++mode) {
    fuzz::Exact<WCHAR> *t = CopyOf(text);
    if (mode == 0) Tavona_DecodeString(t->get());
    else Tavona_DecodeStringExpanded(t->get(), escape);
    fuzz::Check(LenIn(t->get(), text.size() + 1) <= text.size(), "never longer");
    delete t;
  }

  size_t units = outSize > 0 ? static_cast<size_t>(outSize) : 0;
  {
    fuzz::Exact<WCHAR> out(units);
    Tavona_EscapeToBinary(text.c_str(), out.get(), outSize);
    if (units) fuzz::Check(LenIn(out.get(), units) < units, "binary terminated");
  }
  {
    fuzz::Exact<WCHAR> *list = CopyOf(text);
    fuzz::Exact<WCHAR> out(units);
    for (size_t i = 0; i < units; ++i) out.get()[i] = 0x7777;
    int r = Tavona_ScanTextFromLanguageList(list->get(), language, out.get(), outSize);
    fuzz::Check(r == 0 || r == -1, "result");
    if (units) fuzz::Check(LenIn(out.get(), units) < units, "out terminated");
    Tavona_GetSeparatedListLng(list->get(), 11);
    Tavona_GetSeparatedListIndex(list->get(), newText.c_str(), 11);
    delete list;
  }
  if (text.size() < listSize) {
    fuzz::Exact<WCHAR> list(listSize);
    for (size_t i = 0; i < listSize; ++i) list.get()[i] = i < text.size() ? text[i] : 0;
    Tavona_ReplaceTextInLanguageList(list.get(), listSize, newText.c_str(), language);
    fuzz::Check(LenIn(list.get(), listSize) < listSize, "list terminated");
    // Where the whole rewritten list fits, the new pair is the first one. (A
    // pair that does not fit empties what was built so far, as every bounded
    // append does, and quotes change how fields are read back.)
    fuzz::Exact<WCHAR> out(16);
    if (newText.find(WCHAR(11)) == fuzz::WStr::npos && newText.find(WCHAR('"')) == fuzz::WStr::npos &&
        4 * text.size() + newText.size() + 24 < listSize &&
        LenIn(list.get(), listSize) > 0 &&
        Tavona_ScanTextFromLanguageList(list.get(), language, out.get(), 16) == 0)
      fuzz::Check(fuzz::WStr(out.get()) == newText.substr(0, 15) || newText.empty(), "moved to front");
  }
  return 0;
}
