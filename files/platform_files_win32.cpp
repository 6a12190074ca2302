// The Windows side of the platform seam for the file routines and the
// tracer (declared in frame/platform.h).
#include <windows.h>

#include <io.h>

#include "frame/handles.h"
#include "frame/platform.h"

namespace tv::plat {

bool FileExists(const WCHAR *name) { return name && _waccess(name, 0) == 0; }

int ModuleFileName(HMODULE module, WCHAR *buffer, int size) {
  if (!buffer || size < 1) return 0;
  DWORD n = GetModuleFileNameW(module, buffer, static_cast<DWORD>(size));
  // Older systems leave a cut name unterminated.
  if (n >= static_cast<DWORD>(size)) n = static_cast<DWORD>(size - 1);
  buffer[n] = 0;
  return static_cast<int>(n);
}

int CompareNoCaseLocale(const WCHAR *a, const WCHAR *b) { return lstrcmpiW(a, b); }

bool GetEnv(const WCHAR *name, WCHAR *buffer, int size) {
  if (!buffer || size < 1) return false;
  buffer[0] = 0;
  DWORD n = GetEnvironmentVariableW(name, buffer, static_cast<DWORD>(size));
  if (n == 0) return GetLastError() != ERROR_ENVVAR_NOT_FOUND;
  if (n >= static_cast<DWORD>(size)) {  // too long: nothing was copied
    buffer[0] = 0;
    return false;
  }
  return true;
}

bool AppendToFile(const WCHAR *path, const void *data, size_t bytes) {
  if (!path || !*path) return false;
  unique_hfile f(CreateFileW(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                             OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!f) return false;
  DWORD written = 0;
  return WriteFile(f.get(), data, static_cast<DWORD>(bytes), &written, nullptr) &&
         written == bytes;
}

}  // namespace tv::plat
