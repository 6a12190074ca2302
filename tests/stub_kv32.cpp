// Stands in for the picture conversion library kv32.dll. Its GetInfo writes
// "kv32:" and the file name into the caller's buffer and returns 7;
// GetExtensionList gives a tab-separated list of extensions for list kind
// 1 (what it reads) or 2 (what it writes). The variant built with
// KV32_NO_ENTRY exports neither.
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

__declspec(dllexport) INT WINAPI GetExtensionList(INT kind, WCHAR *list, INT size) {
  const WCHAR *text = kind == 1 ? L"BMP\tPng\tjpg\t\twmf\tEMF" : L"gif\ttif";
  int n = 0;
  for (; text[n] && n < size - 1; ++n) list[n] = text[n];
  if (size > 0) list[n] = 0;
  return n;
}
#else
__declspec(dllexport) INT WINAPI SomethingElse(void) { return 0; }
#endif
}
