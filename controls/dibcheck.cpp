#include "controls/dibcheck.h"

namespace tv {

namespace {

uint32_t U32(const uint8_t *p) {
  return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}
uint16_t U16(const uint8_t *p) { return static_cast<uint16_t>(p[0] | p[1] << 8); }

constexpr uint32_t kInfoHeader = 40;
constexpr uint32_t kRgb = 0, kRle8 = 1, kRle4 = 2, kBitFields = 3;

}  // namespace

bool CheckPackedDib(const void *dib, uint64_t size, DibLayout *out) {
  if (!dib || !out || size < kInfoHeader) return false;
  const uint8_t *p = static_cast<const uint8_t *>(dib);
  uint32_t headerSize = U32(p);
  DibLayout d = {};
  d.width = static_cast<int32_t>(U32(p + 4));
  d.height = static_cast<int32_t>(U32(p + 8));
  uint16_t planes = U16(p + 12);
  d.bitCount = U16(p + 14);
  d.compression = U32(p + 16);
  uint32_t sizeImage = U32(p + 20);
  uint32_t colorsUsed = U32(p + 32);
  if (headerSize < kInfoHeader || headerSize > size) return false;
  if (d.width <= 0 || d.height == 0 || planes != 1) return false;
  switch (d.bitCount) {
    case 1: case 4: case 8: case 16: case 24: case 32: break;
    default: return false;
  }
  uint64_t colors = colorsUsed;
  // GDI reads as many colours as the header names, up to 256, even where
  // the depth needs fewer: the table must hold all of them.
  if (d.bitCount <= 8) {
    if (colors == 0) colors = uint64_t{1} << d.bitCount;
    if (colors > 256) colors = 256;
  }
  d.headerBytes = headerSize + colors * 4;
  // The three masks follow a plain header; larger headers hold them.
  if (d.compression == kBitFields && headerSize == kInfoHeader) d.headerBytes += 12;
  if (d.headerBytes > size) return false;
  uint64_t available = size - d.headerBytes;
  if (d.compression == kRgb || d.compression == kBitFields) {
    if (d.compression == kBitFields && d.bitCount != 16 && d.bitCount != 32) return false;
    uint64_t stride = ((uint64_t(uint32_t(d.width)) * d.bitCount + 31) / 32) * 4;
    uint64_t rows = d.height < 0 ? uint64_t(-int64_t(d.height)) : uint64_t(d.height);
    d.imageBytes = stride * rows;
  } else if ((d.compression == kRle8 && d.bitCount == 8) ||
             (d.compression == kRle4 && d.bitCount == 4)) {
    // Run-length bits are read up to the image size, and a top-down image
    // cannot be compressed.
    if (d.height < 0 || sizeImage == 0) return false;
    d.imageBytes = sizeImage;
  } else {
    return false;
  }
  if (d.imageBytes > available) return false;
  *out = d;
  return true;
}

}  // namespace tv
