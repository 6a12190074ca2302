// Tavona_ScanString over whole lines: never writes past outSize, always
// advances, stores at most outSize - 1 units and terminates exactly when the
// field was shorter than outSize.
#include <tavona/text.h>

#include <cstring>

#include "fuzzutil.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  fuzz::Input in(data, size);
  static const WCHAR kSeparators[] = {',', ';', '\t', '"', ' ', 0};
  WCHAR sep = kSeparators[in.Byte() % 6];
  int outSize = in.Byte() % 12 - 2;
  fuzz::WStr line = in.Text(u"ab,;\t \"", 4096);
  fuzz::Exact<WCHAR> text(line.size() + 1);
  for (size_t i = 0; i <= line.size(); ++i) text.get()[i] = line.c_str()[i];
  fuzz::Exact<WCHAR> out(outSize > 0 ? outSize : 0);

  const WCHAR *cursor = text.get();
  while (*cursor) {
    const WCHAR *before = cursor;
    for (int i = 0; i < outSize; ++i) out.get()[i] = 0x7777;
    int n = Tavona_ScanString(&cursor, out.get(), outSize, sep);
    fuzz::Check(cursor > before && cursor <= text.get() + line.size(), "cursor advances");
    fuzz::Check(n >= 0 && n <= (outSize > 0 ? outSize - 1 : 0), "length within out");
    // The stored units are the first units of the field, after its quote.
    const WCHAR *field = before + (*before == '"' ? 1 : 0);
    fuzz::Check(std::memcmp(out.get(), field, n * sizeof(WCHAR)) == 0, "stored");
    if (n < outSize - 1) fuzz::Check(out.get()[n] == 0, "terminated");
  }
  return 0;
}
