// File versions from version resources.
#include "frame/alloc.h"
#include "frame/globals.h"
#include "frame/misuse.h"
#include "frame/platform.h"
#include "base/wstr.h"

#include <windows.h>

extern "C" {

void WINAPI Tavona_GetResourceFileVersion(HMODULE module, INT unused, WCHAR *out, INT outSize,
                                          const WCHAR *format) {
  if (!out || outSize < 1) return;
  out[0] = 0;
  WCHAR file[256];
  DWORD n = GetModuleFileNameW(module, file, 256);
  if (n == 0 || n >= 256) return;
  DWORD handle = 0;
  DWORD size = GetFileVersionInfoSizeW(file, &handle);
  if (size == 0) return;
  tv::HeapPtr<BYTE> info(static_cast<BYTE *>(tv::plat::Alloc(2 * static_cast<size_t>(size))));
  if (!info) return;
  if (!GetFileVersionInfoW(file, 0, size, info.get())) return;
  VS_FIXEDFILEINFO *fixed = nullptr;
  UINT length = 0;
  if (!VerQueryValueW(info.get(), L"\\", reinterpret_cast<void **>(&fixed), &length)) return;
  if (length != sizeof(VS_FIXEDFILEINFO) || !fixed) return;
  const WCHAR *fmt = tv::IsBlank(format) ? L"%d.%d.%d.%d" : format;
  // The four numbers are all there is to print.
  if (!tv::FormatTakesIntegers(fmt, 4)) {
    tv::ReportMisuse("Tavona_GetResourceFileVersion", "format asks for more than four integers");
    return;
  }
  int written = tv::Format(out, outSize, fmt, static_cast<int>(HIWORD(fixed->dwFileVersionMS)),
                           static_cast<int>(LOWORD(fixed->dwFileVersionMS)),
                           static_cast<int>(HIWORD(fixed->dwFileVersionLS)),
                           static_cast<int>(LOWORD(fixed->dwFileVersionLS)));
  // Like every bounded copy of the library: a text that does not fit is
  // not shortened but left out.
  if (written < 0 || written >= outSize) out[0] = 0;
}

void WINAPI Tavona_GetVersion(WCHAR *buffer, INT size) {
  Tavona_GetResourceFileVersion(tv::g.instance, 0, buffer, size, nullptr);
}

}  // extern "C"
