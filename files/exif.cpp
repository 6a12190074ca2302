// Own EXIF reader: JPEG APP1 "Exif" segments and TIFF structures, bounded
// by the source's size and, inside a JPEG, by the segment's own length.
#include "files/exif.h"

#include <cstring>

namespace tv::exif {
namespace {

constexpr uint16_t kTagDateTimeOriginal = 0x9003;
constexpr uint16_t kTagExifIfd = 0x8769;
constexpr int kMaxSegments = 1000;  // real files have a few dozen before the scan
constexpr uint32_t kEntriesPerRead = 64;

// One TIFF structure at base whose offsets may not lead past limit.
class Tiff {
 public:
  Tiff(ByteSource &src, uint64_t base, uint64_t limit) : src_(src), base_(base), limit_(limit) {}

  bool Read(uint64_t offset, void *dst, uint32_t count) {
    uint64_t room = limit_ - base_;
    if (offset > room || count > room - offset) return false;
    return src_.ReadAt(base_ + offset, dst, count);
  }
  uint16_t U16(const uint8_t *p) const {
    return bigEndian_ ? static_cast<uint16_t>(p[0] << 8 | p[1])
                      : static_cast<uint16_t>(p[1] << 8 | p[0]);
  }
  uint32_t U32(const uint8_t *p) const {
    return bigEndian_ ? (uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 | uint32_t{p[2]} << 8 | p[3])
                      : (uint32_t{p[3]} << 24 | uint32_t{p[2]} << 16 | uint32_t{p[1]} << 8 | p[0]);
  }

  // The header; the offset of IFD0.
  bool Header(uint32_t *ifd0) {
    uint8_t h[8];
    if (!Read(0, h, 8)) return false;
    if (h[0] == 'I' && h[1] == 'I')
      bigEndian_ = false;
    else if (h[0] == 'M' && h[1] == 'M')
      bigEndian_ = true;
    else
      return false;
    if (U16(h + 2) != 42) return false;
    *ifd0 = U32(h + 4);
    return true;
  }

  // The 12-byte entry of tag in the directory at offset. Entries beyond the
  // end of the data are not there.
  bool FindEntry(uint32_t offset, uint16_t tag, uint8_t entry[12]) {
    uint8_t countBytes[2];
    if (!Read(offset, countBytes, 2)) return false;
    uint32_t count = U16(countBytes);
    uint64_t first = uint64_t{offset} + 2;
    uint8_t chunk[kEntriesPerRead * 12];
    for (uint32_t done = 0; done < count;) {
      uint32_t n = count - done < kEntriesPerRead ? count - done : kEntriesPerRead;
      if (!Read(first + uint64_t{done} * 12, chunk, n * 12)) return false;
      for (uint32_t i = 0; i < n; ++i) {
        if (U16(chunk + i * 12) == tag) {
          std::memcpy(entry, chunk + i * 12, 12);
          return true;
        }
      }
      done += n;
    }
    return false;
  }

  // An ASCII (or, from some writers, undefined) value, cut to size - 1.
  bool Text(const uint8_t entry[12], char *out, int size) {
    uint16_t type = U16(entry + 2);
    if (type != 2 && type != 7) return false;
    uint32_t count = U32(entry + 4);
    uint32_t take = count < static_cast<uint32_t>(size - 1) ? count : static_cast<uint32_t>(size - 1);
    if (count <= 4)
      std::memcpy(out, entry + 8, take);
    else if (!Read(U32(entry + 8), out, take))
      return false;
    out[take] = 0;
    return true;
  }

 private:
  ByteSource &src_;
  uint64_t base_, limit_;
  bool bigEndian_ = false;
};

bool FromTiff(ByteSource &src, uint64_t base, uint64_t limit, char *out, int size) {
  Tiff tiff(src, base, limit);
  uint32_t ifd0;
  uint8_t entry[12];
  if (!tiff.Header(&ifd0)) return false;
  // Some writers put the tag into IFD0 itself.
  if (tiff.FindEntry(ifd0, kTagDateTimeOriginal, entry)) return tiff.Text(entry, out, size);
  if (!tiff.FindEntry(ifd0, kTagExifIfd, entry)) return false;
  uint32_t exifIfd = tiff.U32(entry + 8);
  return tiff.FindEntry(exifIfd, kTagDateTimeOriginal, entry) && tiff.Text(entry, out, size);
}

bool Read(ByteSource &src, uint64_t offset, void *dst, uint32_t count) {
  uint64_t size = src.Size();
  if (offset > size || count > size - offset) return false;
  return src.ReadAt(offset, dst, count);
}

bool FromJpeg(ByteSource &src, char *out, int size) {
  uint64_t pos = 2;
  for (int step = 0; step < kMaxSegments; ++step) {
    uint8_t m[4];
    if (!Read(src, pos, m, 2) || m[0] != 0xFF) return false;
    uint8_t marker = m[1];
    if (marker == 0xFF) {  // fill byte before a marker
      ++pos;
      continue;
    }
    if (marker == 0xDA || marker == 0xD9) return false;  // image data or end: no more headers
    if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8)) {  // no length
      pos += 2;
      continue;
    }
    if (!Read(src, pos + 2, m + 2, 2)) return false;
    uint32_t length = uint32_t{m[2]} << 8 | m[3];
    if (length < 2) return false;
    uint64_t end = pos + 2 + length;
    uint8_t id[6];
    if (marker == 0xE1 && length >= 8 && Read(src, pos + 4, id, 6) &&
        std::memcmp(id, "Exif\0\0", 6) == 0) {
      uint64_t limit = end < src.Size() ? end : src.Size();
      if (FromTiff(src, pos + 10, limit, out, size)) return true;
    }
    pos = end;
  }
  return false;
}

bool IsBlankChar(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

}  // namespace

bool MemorySource::ReadAt(uint64_t offset, void *dst, uint32_t count) {
  if (offset > size_ || count > size_ - offset) return false;
  std::memcpy(dst, data_ + offset, count);
  return true;
}

bool FindDateTimeOriginal(ByteSource &src, char *out, int size) {
  if (!out || size < 1) return false;
  out[0] = 0;
  uint8_t head[4];
  if (!Read(src, 0, head, 4)) return false;
  if ((head[0] == 'I' && head[1] == 'I' && head[2] == 42 && head[3] == 0) ||
      (head[0] == 'M' && head[1] == 'M' && head[2] == 0 && head[3] == 42))
    return FromTiff(src, 0, src.Size(), out, size);
  if (head[0] == 0xFF && head[1] == 0xD8) return FromJpeg(src, out, size);
  return false;
}

int ScanDateTime(const char *text, int fields[6]) {
  // The pattern "%4d:%2d:%2d %2d:%2d:%2d" as steps: a number of the given
  // width, or a literal before it.
  static const int kWidth[6] = {4, 2, 2, 2, 2, 2};
  static const char kBefore[6] = {0, ':', ':', ' ', ':', ':'};
  const char *p = text ? text : "";
  for (int f = 0; f < 6; ++f) {
    if (kBefore[f] == ' ') {
      while (IsBlankChar(*p)) ++p;
    } else if (kBefore[f]) {
      if (*p != kBefore[f]) return f;
      ++p;
    }
    while (IsBlankChar(*p)) ++p;
    int width = kWidth[f];
    bool negative = false;
    if (*p == '-' || *p == '+') {
      negative = *p == '-';
      ++p;
      --width;
    }
    int value = 0, digits = 0;
    for (; digits < width && *p >= '0' && *p <= '9'; ++digits, ++p) value = value * 10 + (*p - '0');
    if (digits == 0) return f;
    fields[f] = negative ? -value : value;
  }
  return 6;
}

int DateTimeFromText(const char *text, DateTimeStruct *when) {
  int fields[6] = {0, 0, 0, 0, 0, 0};
  if (!when || ScanDateTime(text, fields) < 1) return 1;
  when->year = fields[0];
  when->month = fields[1];
  when->day = fields[2];
  when->hour = fields[3];
  when->minute = fields[4];
  when->second = fields[5];
  return 0;
}

int ReadDateTimeOriginal(ByteSource &src, DateTimeStruct *when) {
  char text[64];
  if (!FindDateTimeOriginal(src, text, sizeof text)) return 1;
  return DateTimeFromText(text, when);
}

}  // namespace tv::exif
