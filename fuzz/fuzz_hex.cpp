// Tavona_HexStringToLong against its rules, on an exact-size text.
#include <tavona/text.h>

#include <cstring>

#include "fuzzutil.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  fuzz::WStr text = in.Text(u"0123456789abcdefABCDEFxg \t", 64);
  fuzz::Exact<WCHAR> t(text.size() + 1);
  std::memcpy(t.get(), text.c_str(), (text.size() + 1) * sizeof(WCHAR));

  DWORD value = 0x12345678;
  int ret = Tavona_HexStringToLong(t.get(), &value);
  DWORD expect = 0;
  int expectRet = 0;
  for (WCHAR c : text) {
    if (c <= 32) continue;
    int d = c >= '0' && c <= '9'   ? c - '0'
            : c >= 'a' && c <= 'f' ? c - 'a' + 10
            : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                   : -1;
    if (d < 0) {
      expectRet = -1;
      break;
    }
    expect = (expect << 4) | static_cast<DWORD>(d);
  }
  fuzz::Check(ret == expectRet && value == expect, "hex value");
  return 0;
}
