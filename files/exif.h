// The library's own reader of the EXIF DateTimeOriginal tag (0x9003) in
// JPEG files (APP1 "Exif" segment) and plain TIFF files, either byte
// order. Platform-free: it reads through a ByteSource and never asks for a
// byte beyond the source's end, whatever the offsets in the data say.
#pragma once

#include <tavona/files.h>

#include <cstdint>

namespace tv::exif {

class ByteSource {
 public:
  virtual ~ByteSource() = default;
  virtual uint64_t Size() const = 0;
  // Reads count bytes at offset; only called inside Size().
  virtual bool ReadAt(uint64_t offset, void *dst, uint32_t count) = 0;
};

class MemorySource : public ByteSource {
 public:
  MemorySource(const void *data, uint64_t size) : data_(static_cast<const uint8_t *>(data)), size_(size) {}
  uint64_t Size() const override { return size_; }
  bool ReadAt(uint64_t offset, void *dst, uint32_t count) override;

 private:
  const uint8_t *data_;
  uint64_t size_;
};

// The tag's ASCII value up to its first zero, cut to size - 1 bytes and
// terminated. False when there is none.
bool FindDateTimeOriginal(ByteSource &src, char *out, int size);

// Scans "YYYY:MM:DD HH:MM:SS" field by field (widths 4, 2, 2, 2, 2, 2) as
// the C runtime's scanf would: blanks before a number are skipped, a sign is
// allowed, a space in the pattern matches any run of blanks, the colons must
// stand where they are. Fields not reached stay 0. Returns the number of
// fields converted.
int ScanDateTime(const char *text, int fields[6]);

// Both steps into the record: 0 when at least one field was converted,
// else 1 with the record untouched.
int ReadDateTimeOriginal(ByteSource &src, DateTimeStruct *when);
// The text step alone (the platform's picture loader yields the text).
int DateTimeFromText(const char *text, DateTimeStruct *when);

}  // namespace tv::exif
