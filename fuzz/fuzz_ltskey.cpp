// Key derivation on any text: never writes past n, always terminates,
// only key characters, at most 21 readable characters plus "_" and the
// eight hash digits; an explicit key comes back as it stands.
#include "base/ltskey.h"

#include "fuzzutil.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  int n = in.Byte() % 120;
  fuzz::WStr text = in.Text(u"aZ09 _-&!\"()\u00E4\u00FF`\u00CD", 400);
  size_t units = n > 0 ? static_cast<size_t>(n) : 0;
  fuzz::Exact<WCHAR> key(units);
  for (size_t i = 0; i < units; ++i) key.get()[i] = 0x7777;
  tv::LtsMakeKey(text.c_str(), key.get(), n);
  if (n < 50) {
    for (size_t i = 0; i < units; ++i) fuzz::Check(key.get()[i] == 0x7777, "small buffer untouched");
    return 0;
  }
  size_t len = 0;
  while (len < units && key.get()[len]) ++len;
  fuzz::Check(len < units, "terminated");
  int keyLen, restAt;
  if (tv::LtsFindPrefix(text.c_str(), keyLen, restAt)) {
    size_t expect = static_cast<size_t>(keyLen) < units - 1 ? static_cast<size_t>(keyLen) : units - 1;
    fuzz::Check(len == expect && text.compare(2, len, key.get(), len) == 0, "explicit key");
    return 0;
  }
  if (text.empty()) {
    fuzz::Check(len == 0, "empty text, empty key");
    return 0;
  }
  fuzz::Check(len >= 10 && len <= 30, "length");
  for (size_t i = 0; i + 8 < len; ++i) {
    WCHAR c = key.get()[i];
    bool ok = (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '@';
    fuzz::Check(ok, "key characters");
    fuzz::Check(!(c == '_' && i + 9 < len && key.get()[i + 1] == '_'), "no run of _");
  }
  fuzz::Check(key.get()[len - 9] == '_', "separator before the hash");
  return 0;
}
