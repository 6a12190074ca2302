// The Windows side of the files seam.
#include "files/filesys.h"

#include <windows.h>

namespace tv::plat {

int ModuleFileName(HMODULE module, WCHAR *buffer, int size) {
  if (!buffer || size < 1) return 0;
  DWORD n = GetModuleFileNameW(module, buffer, static_cast<DWORD>(size));
  // Older systems leave a cut name unterminated.
  if (n >= static_cast<DWORD>(size)) n = static_cast<DWORD>(size - 1);
  buffer[n] = 0;
  return static_cast<int>(n);
}

int CompareNoCaseLocale(const WCHAR *a, const WCHAR *b) { return lstrcmpiW(a, b); }

}  // namespace tv::plat
