// Minimal PNG writer (Windows builds): 8-bit RGB, no filtering, zlib "stored" deflate blocks.
#pragma once

#include <cstdint>
#include <string>

namespace tvpng {

// Pixels are 0x00RRGGBB, row by row from the top; the alpha byte is ignored.
// False when the file cannot be written.
bool WriteFile(const std::wstring &path, int width, int height,
               const uint32_t *pixels);

}  // namespace tvpng
