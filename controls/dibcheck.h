// The layout of a packed device-independent bitmap (header, colour table,
// bits, as the clipboard's CF_DIB), checked before GDI reads it.
#pragma once

#include <cstdint>

namespace tv {

struct DibLayout {
  uint64_t headerBytes;  // header, masks and colour table: where the bits start
  uint64_t imageBytes;   // bytes of the bits that GDI will read
  int32_t width;
  int32_t height;        // negative: top-down
  uint16_t bitCount;
  uint32_t compression;  // 0 RGB, 1 RLE8, 2 RLE4, 3 bit fields
};

// Fills out and returns true when size bytes at dib hold a whole packed DIB
// that GDI can read without going past them: a header of at least 40 bytes,
// width above 0, height not 0, one plane, 1/4/8/16/24/32 bits, uncompressed,
// bit fields or run-length encoded (with its image size given).
bool CheckPackedDib(const void *dib, uint64_t size, DibLayout *out);

}  // namespace tv
