// The own EXIF reader on arbitrary bytes, mostly shaped like a JPEG or a
// TIFF so that the directory walks are reached: it must never read past the
// data, whatever the offsets say.
#include <cstring>
#include <vector>

#include "files/exif.h"
#include "fuzzutil.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  if (size < 1) return 0;
  std::vector<uint8_t> bytes;
  switch (data[0] % 4) {
    case 0: break;  // as given
    case 1: bytes = {0xFF, 0xD8, 0xFF, 0xE1, 0xFF, 0xF0, 'E', 'x', 'i', 'f', 0, 0}; break;
    case 2: bytes = {'I', 'I', 42, 0}; break;
    case 3: bytes = {'M', 'M', 0, 42}; break;
  }
  bytes.insert(bytes.end(), data + 1, data + size);
  fuzz::Exact<uint8_t> exact(bytes.size() ? bytes.size() : 1);
  if (!bytes.empty()) std::memcpy(exact.get(), bytes.data(), bytes.size());

  tv::exif::MemorySource src(exact.get(), bytes.size());
  char text[64];
  if (tv::exif::FindDateTimeOriginal(src, text, sizeof text))
    fuzz::Check(std::memchr(text, 0, sizeof text) != nullptr, "terminated text");
  DateTimeStruct when = {};
  tv::exif::ReadDateTimeOriginal(src, &when);
  char small[1];
  tv::exif::FindDateTimeOriginal(src, small, 1);
  return 0;
}
