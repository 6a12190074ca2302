#include "png.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace tvpng {
namespace {

const std::array<uint32_t, 256> &CrcTable() {
  static const std::array<uint32_t, 256> table = [] {
    std::array<uint32_t, 256> t{};
    for (uint32_t n = 0; n < 256; ++n) {
      uint32_t c = n;
      for (int k = 0; k < 8; ++k) c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
      t[n] = c;
    }
    return t;
  }();
  return table;
}

void PutBE32(std::vector<uint8_t> &out, uint32_t v) {
  out.push_back(uint8_t(v >> 24));
  out.push_back(uint8_t(v >> 16));
  out.push_back(uint8_t(v >> 8));
  out.push_back(uint8_t(v));
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
    bool last = pos + len == raw.size();
    z.push_back(last ? 1 : 0);
    z.push_back(uint8_t(len));
    z.push_back(uint8_t(len >> 8));
    z.push_back(uint8_t(~len));
    z.push_back(uint8_t(~len >> 8));
    z.insert(z.end(), raw.begin() + pos, raw.begin() + pos + len);
    pos += len;
  } while (pos < raw.size());
  PutBE32(z, Adler32(raw.data(), raw.size()));
  return z;
}

}  // namespace

uint32_t Crc32(const uint8_t *data, size_t size, uint32_t crc) {
  const auto &t = CrcTable();
  crc = ~crc;
  for (size_t i = 0; i < size; ++i) crc = t[(crc ^ data[i]) & 0xFF] ^ (crc >> 8);
  return ~crc;
}

uint32_t Adler32(const uint8_t *data, size_t size, uint32_t adler) {
  uint32_t a = adler & 0xFFFF, b = adler >> 16;
  while (size > 0) {
    // 5552 is the largest run that cannot overflow b before the reduction.
    size_t n = std::min<size_t>(size, 5552);
    size -= n;
    while (n--) {
      a += *data++;
      b += a;
    }
    a %= 65521;
    b %= 65521;
  }
  return (b << 16) | a;
}

std::vector<uint8_t> Encode(int width, int height, const uint32_t *pixels) {
  std::vector<uint8_t> raw;
  raw.reserve(size_t(height) * (size_t(width) * 3 + 1));
  for (int y = 0; y < height; ++y) {
    raw.push_back(0);  // filter type None
    for (int x = 0; x < width; ++x) {
      uint32_t p = pixels[size_t(y) * width + x];
      raw.push_back(uint8_t(p >> 16));
      raw.push_back(uint8_t(p >> 8));
      raw.push_back(uint8_t(p));
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
  return png;
}

bool WriteFile(const std::wstring &path, int width, int height,
               const uint32_t *pixels) {
  std::vector<uint8_t> png = Encode(width, height, pixels);
#ifdef _WIN32
  FILE *f = _wfopen(path.c_str(), L"wb");
#else
  FILE *f = std::fopen(std::string(path.begin(), path.end()).c_str(), "wb");
#endif
  if (!f) return false;
  bool ok = std::fwrite(png.data(), 1, png.size(), f) == png.size();
  return std::fclose(f) == 0 && ok;
}

}  // namespace tvpng
