// Bitmap files and the conversions between device-independent bitmaps in
// memory (the clipboard's CF_DIB layout) and bitmaps of the screen, and the
// picture information of the optional conversion library.
#include <tavona/controls.h>

#include <cstdint>
#include <cstring>

#include "frame/alloc.h"
#include "frame/globals.h"
#include "frame/handles.h"
#include "frame/optlib.h"
#include "frame/report.h"
#include "text/wstr.h"
#include "tvres.h"

namespace {

// Bytes of the header and colour table of a packed DIB, or 0 when the
// header is not one we can read within size bytes.
uint64_t DibHeaderBytes(const BITMAPINFOHEADER &h, uint64_t size) {
  if (h.biSize < sizeof(BITMAPINFOHEADER) || h.biSize > size) return 0;
  if (h.biWidth <= 0 || h.biHeight == 0 || h.biPlanes != 1) return 0;
  switch (h.biBitCount) {
    case 1: case 4: case 8: case 16: case 24: case 32: break;
    default: return 0;
  }
  uint64_t colors = h.biClrUsed;
  if (h.biBitCount <= 8) {
    uint64_t max = uint64_t{1} << h.biBitCount;
    if (colors == 0 || colors > max) colors = max;
  }
  uint64_t bytes = h.biSize + colors * sizeof(RGBQUAD);
  // The three masks follow a plain header; larger headers hold them.
  if (h.biCompression == BI_BITFIELDS && h.biSize == sizeof(BITMAPINFOHEADER)) bytes += 12;
  return bytes <= size ? bytes : 0;
}

uint64_t DibImageBytes(const BITMAPINFOHEADER &h) {
  uint64_t stride = ((uint64_t(h.biWidth) * h.biBitCount + 31) / 32) * 4;
  int64_t height = h.biHeight < 0 ? -int64_t(h.biHeight) : h.biHeight;
  return stride * uint64_t(height);
}

}  // namespace

HBITMAP WINAPI Tavona_DibToDdb(const void *dib, DWORD size) {
  if (!dib || size < sizeof(BITMAPINFOHEADER)) return nullptr;
  BITMAPINFOHEADER h;
  memcpy(&h, dib, sizeof h);
  uint64_t headerBytes = DibHeaderBytes(h, size);
  if (!headerBytes) return nullptr;
  const BYTE *bits = static_cast<const BYTE *>(dib) + headerBytes;
  uint64_t available = size - headerBytes;
  if (h.biCompression == BI_RGB || h.biCompression == BI_BITFIELDS) {
    if (DibImageBytes(h) > available) return nullptr;
  } else if ((h.biCompression != BI_RLE8 && h.biCompression != BI_RLE4) ||
             h.biSizeImage > available) {
    return nullptr;
  }
  tv::window_dc screen(nullptr);
  return CreateDIBitmap(screen.get(), static_cast<const BITMAPINFOHEADER *>(dib), CBM_INIT, bits,
                        static_cast<const BITMAPINFO *>(dib), DIB_RGB_COLORS);
}

HGLOBAL WINAPI Tavona_DdbToDib(HBITMAP bitmap, WORD bitCount) {
  BITMAP bm;
  if (!bitmap || GetObjectW(bitmap, sizeof bm, &bm) != sizeof bm) return nullptr;
  if (bitCount == 0) bitCount = static_cast<WORD>(bm.bmBitsPixel * bm.bmPlanes);
  switch (bitCount) {
    case 1: case 4: case 8: case 16: case 24: case 32: break;
    default: return nullptr;
  }
  BITMAPINFOHEADER h = {};
  h.biSize = sizeof h;
  h.biWidth = bm.bmWidth;
  h.biHeight = bm.bmHeight;
  h.biPlanes = 1;
  h.biBitCount = bitCount;
  h.biCompression = BI_RGB;
  h.biClrUsed = bitCount <= 8 ? (1u << bitCount) : 0;
  uint64_t image = DibImageBytes(h);
  uint64_t total = sizeof h + uint64_t(h.biClrUsed) * sizeof(RGBQUAD) + image;
  if (image == 0 || total > 0x7FFFFFFF) return nullptr;
  h.biSizeImage = static_cast<DWORD>(image);
  tv::unique_hglobal memory(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, static_cast<SIZE_T>(total)));
  if (!memory) return nullptr;
  auto *info = static_cast<BITMAPINFO *>(GlobalLock(memory.get()));
  if (!info) return nullptr;
  info->bmiHeader = h;
  BYTE *bits = reinterpret_cast<BYTE *>(info) + sizeof h + h.biClrUsed * sizeof(RGBQUAD);
  int lines;
  {
    tv::window_dc screen(nullptr);
    lines = GetDIBits(screen.get(), bitmap, 0, static_cast<UINT>(bm.bmHeight), bits, info,
                      DIB_RGB_COLORS);
  }
  // GetDIBits may rewrite the header (biClrUsed, biSizeImage); keep ours.
  info->bmiHeader = h;
  GlobalUnlock(memory.get());
  if (lines != bm.bmHeight) return nullptr;
  return memory.release();
}

HBITMAP WINAPI Tavona_LoadBitmapFromFile(const WCHAR *file) {
  if (tv::IsBlank(file)) return nullptr;
  tv::unique_hfile f(CreateFileW(file, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                 FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!f) return nullptr;
  LARGE_INTEGER size;
  if (!GetFileSizeEx(f.get(), &size) || size.QuadPart <= LONGLONG(sizeof(BITMAPFILEHEADER)) ||
      size.QuadPart > 0x7FFFFFFF)
    return nullptr;
  DWORD bytes = static_cast<DWORD>(size.QuadPart);
  tv::HeapPtr<BYTE> data(static_cast<BYTE *>(tv::AllocBytes(bytes)));
  if (!data) return nullptr;
  DWORD read = 0;
  if (!ReadFile(f.get(), data.get(), bytes, &read, nullptr) || read != bytes) return nullptr;
  BITMAPFILEHEADER fh;
  memcpy(&fh, data.get(), sizeof fh);
  if (fh.bfType != 0x4D42) return nullptr;  // "BM"
  DWORD dibBytes = bytes - sizeof fh;
  HBITMAP result = nullptr;
  // The bits usually follow the colour table at once; when the file says
  // otherwise, they are moved there so the packed form holds.
  BITMAPINFOHEADER h;
  if (dibBytes < sizeof h) return nullptr;
  memcpy(&h, data.get() + sizeof fh, sizeof h);
  uint64_t headerBytes = DibHeaderBytes(h, dibBytes);
  if (!headerBytes) return nullptr;
  uint64_t wantOffset = sizeof fh + headerBytes;
  if (fh.bfOffBits == 0 || fh.bfOffBits == wantOffset) {
    result = Tavona_DibToDdb(data.get() + sizeof fh, dibBytes);
  } else if (fh.bfOffBits > wantOffset && fh.bfOffBits < bytes) {
    DWORD imageBytes = bytes - fh.bfOffBits;
    memmove(data.get() + wantOffset, data.get() + fh.bfOffBits, imageBytes);
    result = Tavona_DibToDdb(data.get() + sizeof fh, static_cast<DWORD>(headerBytes) + imageBytes);
  }
  return result;
}

INT WINAPI Tavona_PicConv_GetInfo(const WCHAR *file, void *info, INT infoSize) {
  if (tv::IsBlank(file) || !info || infoSize < 1) return -1;
  static const WCHAR kLibrary[] = L"kv32.dll";
  if (!tv::g.pictureModule) {
    tv::unique_hmodule module = tv::LoadOptionalLibrary(kLibrary);
    if (!module) {
      tv::ReportError(IDS_ERR_PICTURE_LIBRARY, kLibrary);
      return -1;
    }
    // Kept until the library unloads.
    tv::g.pictureModule = module.release();
  }
  using GetInfoFn = INT(WINAPI *)(const WCHAR *, void *, INT);
  auto getInfo =
      reinterpret_cast<GetInfoFn>(reinterpret_cast<void *>(GetProcAddress(tv::g.pictureModule, "GetInfo")));
  if (!getInfo) {
    tv::ReportError(IDS_ERR_PICTURE_INFO, file);
    return -1;
  }
  return getInfo(file, info, infoSize);
}
