// Minimal PNG writer: 8-bit RGB, no filtering, zlib "stored" deflate blocks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tvpng {

uint32_t Crc32(const uint8_t *data, size_t size, uint32_t crc = 0);
uint32_t Adler32(const uint8_t *data, size_t size, uint32_t adler = 1);

// Pixels are 0x00RRGGBB, row by row from the top; the alpha byte is ignored.
std::vector<uint8_t> Encode(int width, int height, const uint32_t *pixels);

// Writes Encode()'s output to a file; false when the file cannot be written.
bool WriteFile(const std::wstring &path, int width, int height,
               const uint32_t *pixels);

}  // namespace tvpng
