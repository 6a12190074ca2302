// Bitmap files and the conversions between device-independent bitmaps in
// memory (the clipboard's CF_DIB layout) and bitmaps of the screen.
#include <tavona/controls.h>

#include <cstdint>
#include <cstring>

#include "controls/dibcheck.h"
#include "frame/alloc.h"
#include "frame/handles.h"
#include "base/wstr.h"


HBITMAP WINAPI Tavona_DibToDdb(const void *dib, DWORD size) {
  tv::DibLayout layout;
  if (!tv::CheckPackedDib(dib, size, &layout)) return nullptr;
  const BYTE *bits = static_cast<const BYTE *>(dib) + layout.headerBytes;
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
  uint64_t image = ((uint64_t(h.biWidth) * bitCount + 31) / 32) * 4 * uint64_t(h.biHeight);
  uint64_t total = sizeof h + uint64_t(h.biClrUsed) * sizeof(RGBQUAD) + image;
  if (image == 0 || total > 0x7FFFFFFF) return nullptr;
  h.biSizeImage = static_cast<DWORD>(image);
  tv::unique_hglobal memory(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, static_cast<SIZE_T>(total)));
  if (!memory) return nullptr;
  int lines;
  {
    tv::global_lock<BITMAPINFO> locked(memory.get());
    BITMAPINFO *info = locked.get();
    if (!info) return nullptr;
    info->bmiHeader = h;
    BYTE *bits = reinterpret_cast<BYTE *>(info) + sizeof h + h.biClrUsed * sizeof(RGBQUAD);
    tv::window_dc screen(nullptr);
    lines = GetDIBits(screen.get(), bitmap, 0, static_cast<UINT>(bm.bmHeight), bits, info,
                      DIB_RGB_COLORS);
    // GetDIBits may rewrite the header (biClrUsed, biSizeImage); keep ours.
    info->bmiHeader = h;
  }
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
  BYTE *dib = data.get() + sizeof fh;
  tv::DibLayout layout;
  if (!tv::CheckPackedDib(dib, dibBytes, &layout)) return nullptr;
  // The bits usually follow the colour table at once; when the file says
  // otherwise, they are moved there so the packed form holds (and is
  // checked again).
  uint64_t wantOffset = sizeof fh + layout.headerBytes;
  if (fh.bfOffBits == 0 || fh.bfOffBits == wantOffset) return Tavona_DibToDdb(dib, dibBytes);
  if (fh.bfOffBits < wantOffset || fh.bfOffBits >= bytes) return nullptr;
  DWORD imageBytes = bytes - fh.bfOffBits;
  memmove(dib + layout.headerBytes, data.get() + fh.bfOffBits, imageBytes);
  return Tavona_DibToDdb(dib, static_cast<DWORD>(layout.headerBytes) + imageBytes);
}
