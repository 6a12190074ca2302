// The Windows side of the platform seam.
#include "frame/platform.h"

#include <windows.h>

#include "frame/handles.h"
#include "frame/optlib.h"
#include "base/wstr.h"

#include <cwchar>
#include <cwctype>

namespace tv::plat {

void UpperUser(WCHAR *text) {
  if (text) CharUpperW(text);
}

void UpperCrt(WCHAR *text) {
  if (text) _wcsupr(text);
}

// _wcsupr upper-cases unit by unit with towupper, in the C runtime's locale.
WCHAR UpperCrtUnit(WCHAR c) { return static_cast<WCHAR>(towupper(c)); }

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

namespace {

// A string value of HKEY_LOCAL_MACHINE, or fallback when it cannot be read.
void ReadMachineString(const WCHAR *key, const WCHAR *value, const WCHAR *fallback, WCHAR *out,
                       DWORD size) {
  unique_hkey k;
  DWORD bytes = (size - 1) * sizeof(WCHAR), type = 0;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, key, 0, KEY_QUERY_VALUE, k.put()) == ERROR_SUCCESS &&
      RegQueryValueExW(k.get(), value, nullptr, &type, reinterpret_cast<BYTE *>(out), &bytes) ==
          ERROR_SUCCESS &&
      (type == REG_SZ || type == REG_EXPAND_SZ)) {
    out[bytes / sizeof(WCHAR)] = 0;  // the stored value need not be terminated
    return;
  }
  BoundedCopy(out, fallback, static_cast<int>(size));
}

}  // namespace

int CallExternalHandler(const MessageBoxRequest *request) {
  static const WCHAR kKey[] = L"Software\\Tavona Software\\Error Handler";
  WCHAR dllName[500], functionName[500];
  ReadMachineString(kKey, L"DllName", L"TVDEEH.DLL", dllName, 500);
  ReadMachineString(kKey, L"FunctionName", L"TVDEEH_MessageBox", functionName, 500);
  unique_hmodule library = LoadOptionalLibrary(dllName);
  char entryName[1000];
  if (!library || !WideToAnsi(functionName, entryName, 1000)) return 0;
  auto handler =
      ProcAddress<INT(WINAPI *)(MessageBoxRequest *)>(library.get(), entryName);
  return handler ? handler(const_cast<MessageBoxRequest *>(request)) : 0;
}

// ---- Files and environment ----

bool FileExists(const WCHAR *name) {
  return name && GetFileAttributesW(name) != INVALID_FILE_ATTRIBUTES;
}

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
