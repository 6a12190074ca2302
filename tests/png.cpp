#include "png.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace tvpng {
namespace {

uint32_t Crc32(const uint8_t *data, size_t size) {
  uint32_t crc = ~0u;
  for (size_t i = 0; i < size; ++i) {
    crc ^= data[i];
    for (int k = 0; k < 8; ++k) crc = (crc & 1) ? 0xEDB88320u ^ (crc >> 1) : crc >> 1;
  }
  return ~crc;
}

void PutBE32(std::vector<uint8_t> &out, uint32_t v) {
  for (int shift = 24; shift >= 0; shift -= 8) out.push_back(uint8_t(v >> shift));
}

void PutChunk(std::vector<uint8_t> &out, const char type[4],
              const std::vector<uint8_t> &data) {
  PutBE32(out, uint32_t(data.size()));
  size_t start = out.size();
  out.insert(out.end(), type, type + 4);
  out.insert(out.end(), data.begin(), data.end());
  PutBE32(out, Crc32(out.data() + start, out.size() - start));
}

// zlib stream of stored deflate blocks (at most 65535 bytes each).
std::vector<uint8_t> ZlibStored(const std::vector<uint8_t> &raw) {
  std::vector<uint8_t> z{0x78, 0x01};
  size_t pos = 0;
  do {
    size_t len = std::min<size_t>(raw.size() - pos, 65535);
    z.push_back(pos + len == raw.size() ? 1 : 0);  // the last block
    z.insert(z.end(), {uint8_t(len), uint8_t(len >> 8), uint8_t(~len), uint8_t(~len >> 8)});
    z.insert(z.end(), raw.begin() + pos, raw.begin() + pos + len);
    pos += len;
  } while (pos < raw.size());
  uint32_t a = 1, b = 0;  // Adler-32
  for (uint8_t byte : raw) {
    a = (a + byte) % 65521;
    b = (b + a) % 65521;
  }
  PutBE32(z, (b << 16) | a);
  return z;
}

}  // namespace

bool WriteFile(const std::wstring &path, int width, int height,
               const uint32_t *pixels) {
  std::vector<uint8_t> raw;
  raw.reserve(size_t(height) * (size_t(width) * 3 + 1));
  for (int y = 0; y < height; ++y) {
    raw.push_back(0);  // filter type None
    for (int x = 0; x < width; ++x) {
      uint32_t p = pixels[size_t(y) * width + x];
      raw.insert(raw.end(), {uint8_t(p >> 16), uint8_t(p >> 8), uint8_t(p)});
    }
  }
  std::vector<uint8_t> png{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  std::vector<uint8_t> ihdr;
  PutBE32(ihdr, uint32_t(width));
  PutBE32(ihdr, uint32_t(height));
  ihdr.insert(ihdr.end(), {8, 2, 0, 0, 0});  // 8 bit, RGB, deflate, none, no interlace
  PutChunk(png, "IHDR", ihdr);
  PutChunk(png, "IDAT", ZlibStored(raw));
  PutChunk(png, "IEND", {});
  FILE *f = _wfopen(path.c_str(), L"wb");
  if (!f) return false;
  bool ok = std::fwrite(png.data(), 1, png.size(), f) == png.size();
  return std::fclose(f) == 0 && ok;
}

}  // namespace tvpng
