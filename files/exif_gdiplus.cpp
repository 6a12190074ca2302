// The EXIF exposure date of a picture: GDI+ first, the own reader when GDI+
// yields no DateTimeOriginal (Wine's GDI+ never does, and installations
// without the codec neither).
#include <tavona/files.h>

#include <gdiplus.h>

#include "files/exif.h"
#include "frame/alloc.h"
#include "frame/handles.h"
#include "frame/platform.h"

namespace {

constexpr PROPID kDateTimeOriginal = 36867;  // 0x9003

void CloseGdiplus(ULONG_PTR token) { Gdiplus::GdiplusShutdown(token); }
void CloseImage(Gdiplus::GpImage *image) { Gdiplus::DllExports::GdipDisposeImage(image); }
using unique_gdiplus = tv::unique_any<ULONG_PTR, CloseGdiplus>;
using unique_gpimage = tv::unique_any<Gdiplus::GpImage *, CloseImage>;

// Raw bytes from the heap; a failure is not reported here.
struct RawBuffer {
  void *p;
  explicit RawBuffer(size_t bytes) : p(tv::plat::Alloc(bytes)) {}
  ~RawBuffer() { tv::plat::Free(p); }
  RawBuffer(const RawBuffer &) = delete;
  RawBuffer &operator=(const RawBuffer &) = delete;
};

enum class Found { Text, NoTag };

// The tag's text through GDI+, started for this call alone.
Found TextFromGdiplus(const WCHAR *name, char *text, int size) {
  using namespace Gdiplus::DllExports;
  Gdiplus::GdiplusStartupInput input;  // version 1, no callback, nothing suppressed
  unique_gdiplus session;
  if (Gdiplus::GdiplusStartup(session.put(), &input, nullptr) != Gdiplus::Ok) return Found::NoTag;
  unique_gpimage image;
  if (GdipLoadImageFromFile(name, image.put()) != Gdiplus::Ok) return Found::NoTag;
  UINT total = 0, count = 0;
  GdipGetPropertySize(image.get(), &total, &count);  // only a status
  UINT itemSize = 0;
  if (GdipGetPropertyItemSize(image.get(), kDateTimeOriginal, &itemSize) != Gdiplus::Ok ||
      itemSize < sizeof(Gdiplus::PropertyItem))
    return Found::NoTag;
  RawBuffer item(itemSize);
  auto *property = static_cast<Gdiplus::PropertyItem *>(item.p);
  if (!property ||
      GdipGetPropertyItem(image.get(), kDateTimeOriginal, itemSize, property) != Gdiplus::Ok)
    return Found::NoTag;
  const char *value = static_cast<const char *>(property->value);
  int n = 0;
  // The value lies inside the item; its length counts the terminator.
  UINT room = itemSize - static_cast<UINT>(sizeof(Gdiplus::PropertyItem));
  UINT length = property->length < room ? property->length : room;
  for (; value && n < size - 1 && static_cast<UINT>(n) < length && value[n]; ++n) text[n] = value[n];
  text[n] = 0;
  return Found::Text;
}

// Random access to an open file for the own reader.
class FileSource : public tv::exif::ByteSource {
 public:
  explicit FileSource(const WCHAR *name)
      : file_(CreateFileW(name, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                          FILE_ATTRIBUTE_NORMAL, nullptr)) {
    LARGE_INTEGER li;
    if (file_ && GetFileSizeEx(file_.get(), &li)) size_ = static_cast<uint64_t>(li.QuadPart);
  }
  uint64_t Size() const override { return size_; }
  bool ReadAt(uint64_t offset, void *dst, uint32_t count) override {
    OVERLAPPED at = {};
    at.Offset = static_cast<DWORD>(offset);
    at.OffsetHigh = static_cast<DWORD>(offset >> 32);
    DWORD got = 0;
    return ReadFile(file_.get(), dst, count, &got, &at) && got == count;
  }

 private:
  tv::unique_hfile file_;
  uint64_t size_ = 0;
};

}  // namespace

INT WINAPI Tavona_GetExifExposureDateTimeFromJpegFile(const WCHAR *name, DateTimeStruct *when) {
  if (!name || !when) return 1;
  char text[64];
  if (TextFromGdiplus(name, text, sizeof text) == Found::Text)
    return tv::exif::DateTimeFromText(text, when);
  FileSource file(name);
  return tv::exif::ReadDateTimeOriginal(file, when);
}
