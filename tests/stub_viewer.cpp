// Stands in for the log viewer: writes its command line, a line break and
// the show state it was started with (-1 when none was asked for) as
// UTF-16 into the file named by TAVONA_VIEWER_RECORD.
#include <windows.h>

#include <cwchar>

int main() {
  wchar_t path[MAX_PATH];
  if (!GetEnvironmentVariableW(L"TAVONA_VIEWER_RECORD", path, MAX_PATH)) return 1;
  STARTUPINFOW si = {};
  si.cb = sizeof si;
  GetStartupInfoW(&si);
  wchar_t state[16];
  std::swprintf(state, 16, L"\n%d", (si.dwFlags & STARTF_USESHOWWINDOW) ? int(si.wShowWindow) : -1);
  HANDLE f = CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  if (f == INVALID_HANDLE_VALUE) return 2;
  DWORD written;
  const wchar_t *line = GetCommandLineW();
  WriteFile(f, line, DWORD(wcslen(line) * sizeof(wchar_t)), &written, nullptr);
  WriteFile(f, state, DWORD(wcslen(state) * sizeof(wchar_t)), &written, nullptr);
  CloseHandle(f);
  return 0;
}
