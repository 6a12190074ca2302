// The Windows side of the platform seam.
#include "frame/platform.h"

#include <windows.h>

#include <share.h>

#include <cstdio>
#include <cwchar>

namespace tv::plat {

void UpperUser(WCHAR *text) {
  if (text) CharUpperW(text);
}

void UpperCrt(WCHAR *text) {
  if (text) _wcsupr(text);
}

int CompareNoCaseCrt(const WCHAR *a, const WCHAR *b) { return _wcsicmp(a, b); }

int AnsiToWide(const char *src, WCHAR *dst, int capacity) {
  return MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, src, -1, dst, capacity);
}

int WideToAnsi(const WCHAR *src, char *dst, int capacity) {
  return WideCharToMultiByte(CP_ACP, 0, src, -1, dst, capacity, nullptr, nullptr);
}

int LoadResString(HMODULE module, UINT id, WCHAR *buffer, int size) {
  if (!buffer || size < 1) return 0;
  buffer[0] = 0;
  // LoadStringW with a null module would look in the program itself.
  if (!module) return 0;
  return LoadStringW(module, id, buffer, size);
}

int ShowMessage(HWND owner, const WCHAR *text, const WCHAR *caption, UINT style) {
  return MessageBoxW(owner ? owner : GetActiveWindow(), text, caption, style);
}

bool AppendLogLine(const WCHAR *path, const WCHAR *text) {
  FILE *f = _wfsopen(path, L"ab", _SH_DENYWR);
  if (!f) return false;
  fwrite(text, sizeof(WCHAR), wcslen(text), f);
  fwrite(L"\r\n", sizeof(WCHAR), 2, f);
  fclose(f);
  return true;
}

// ---- Dates and times ----
// CurrentLocalTime and YearExpansionLimit: datetime/clock_win32.cpp (they
// need the C runtime's time functions and the settings store).

// ---- Files ----
// FileExists, ModuleFileName, CompareNoCaseLocale, GetEnv and AppendToFile
// live in files/platform_files_win32.cpp.

}  // namespace tv::plat
