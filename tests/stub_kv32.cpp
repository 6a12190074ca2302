// Stands in for the picture conversion library kv32.dll. Its GetInfo writes
// "kv32:" and the file name into the caller's buffer and returns 7; the
// variant built with KV32_NO_ENTRY exports nothing of that name.
#include <windows.h>

extern "C" {

#ifndef KV32_NO_ENTRY
__declspec(dllexport) INT WINAPI GetInfo(const WCHAR *file, void *info, INT infoSize) {
  WCHAR *out = static_cast<WCHAR *>(info);
  int room = infoSize / int(sizeof(WCHAR));
  if (room < 1) return -1;
  const WCHAR prefix[] = L"kv32:";
  int n = 0;
  for (const WCHAR *p = prefix; *p && n < room - 1; ++p) out[n++] = *p;
  for (const WCHAR *p = file; p && *p && n < room - 1; ++p) out[n++] = *p;
  out[n] = 0;
  return 7;
}
#else
__declspec(dllexport) INT WINAPI SomethingElse(void) { return 0; }
#endif
}
