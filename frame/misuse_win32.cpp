#include <windows.h>

#include "frame/misuse.h"
#include "base/wstr.h"

namespace tv {

bool ProfileNameFits(const WCHAR *file, const char *routine) {
  if (!file) return true;  // the platform's own default file
  // The profile functions put a name without a folder into the Windows
  // folder and expand every other one; wine copies both into MAX_PATH
  // buffers without a check.
  int len = LenBounded(file, MAX_PATH);
  bool bare = true;
  for (const WCHAR *p = file; *p && bare; ++p) bare = *p != '\\' && *p != '/' && *p != ':';
  DWORD full = 0;
  if (len < MAX_PATH) {
    WCHAR dir[MAX_PATH];
    full = bare ? GetWindowsDirectoryW(dir, MAX_PATH) + 1 + len + 1
                : GetFullPathNameW(file, 0, nullptr, nullptr);
  }
  if (len < MAX_PATH && full > 0 && full <= MAX_PATH) return true;
  ReportMisuse(routine, "profile file name longer than the platform takes (refused)");
  SetLastError(ERROR_FILENAME_EXCED_RANGE);
  return false;
}

}  // namespace tv
