// Packed bitmaps of any content: an accepted one never lets GDI read past
// the bytes given, and a shorter copy of an accepted one is never accepted
// with more bits than it holds.
#include <cstdint>
#include <cstring>
#include <vector>

#include "controls/dibcheck.h"
#include "fuzzutil.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  // Most inputs would fail on the header alone: start from a plausible one
  // and let the input overwrite some of its fields.
  std::vector<uint8_t> dib(size < 40 ? 40 : size);
  const uint8_t plausible[40] = {40, 0, 0, 0, 7, 0, 0, 0, 5, 0, 0, 0, 1, 0, 24, 0};
  std::memcpy(dib.data(), plausible, 40);
  fuzz::Input in(data, size);
  size_t keep = in.Byte() % 41;
  for (size_t i = keep; i < dib.size() && !in.Empty(); ++i) dib[i] = in.Byte();
  uint64_t claimed = in.Byte() % 2 ? dib.size() : dib.size() / 2;

  tv::DibLayout d;
  if (!tv::CheckPackedDib(dib.data(), claimed, &d)) return 0;
  fuzz::Check(d.headerBytes >= 40, "header of at least 40 bytes");
  fuzz::Check(d.headerBytes + d.imageBytes <= claimed, "bits within the size given");
  fuzz::Check(d.width > 0 && d.height != 0, "a non-empty image");
  uint32_t headerSize, colorsUsed;
  std::memcpy(&headerSize, dib.data(), 4);
  std::memcpy(&colorsUsed, dib.data() + 32, 4);
  fuzz::Check(d.headerBytes >= headerSize + 4ull * (colorsUsed < 256 ? colorsUsed : 256),
              "the colour table GDI reads is within the header bytes");
  if (d.compression == 0) {
    uint64_t rows = d.height < 0 ? uint64_t(-int64_t(d.height)) : uint64_t(d.height);
    fuzz::Check(d.imageBytes >= rows * ((uint64_t(d.width) * d.bitCount + 7) / 8),
                "every row fits");
  }
  tv::DibLayout shorter;
  if (d.imageBytes > 0)
    fuzz::Check(!tv::CheckPackedDib(dib.data(), d.headerBytes + d.imageBytes - 1, &shorter),
                "one byte short is refused");
  return 0;
}
