// Tavona_EncodeString (flags 1|2) then Tavona_DecodeString gives the text
// back whenever the encoder had room for all of it, and the encoder never
// writes past dstSize nor more than dstSize - 7 characters.
#include <tavona/text.h>

#include "fuzzutil.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  int dstSize = in.Byte() % 80 - 2;
  fuzz::WStr src = in.Text(u" \"\\\r\n\t\x01\x1f\x0b\x08" u"axdq0", 200);

  size_t units = dstSize > 0 ? static_cast<size_t>(dstSize) : 0;
  fuzz::Exact<WCHAR> enc(units);
  for (size_t i = 0; i < units; ++i) enc.get()[i] = 0x7777;
  Tavona_EncodeString(src.c_str(), enc.get(), dstSize, 1 | 2);
  if (dstSize < 1) return 0;

  size_t len = 0;
  while (len < units && enc.get()[len]) ++len;
  fuzz::Check(len < units, "terminated");
  fuzz::Check(len + 7 <= units || len == 0, "at most dstSize - 7");
  fuzz::Exact<WCHAR> dec(len + 1);
  for (size_t i = 0; i <= len; ++i) dec.get()[i] = enc.get()[i];
  Tavona_DecodeString(dec.get());
  fuzz::WStr back(dec.get());
  // Each source character takes at most 4 units; with that much room left
  // beyond the 10 kept back, nothing was dropped.
  if (src.size() * 4 + 10 < units) fuzz::Check(back == src, "round trip");
  else fuzz::Check(src.compare(0, back.size(), back) == 0, "a prefix of the source");
  return 0;
}
