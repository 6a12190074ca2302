// Tavona_ReadLongFromRegistry against a direct RegGetValueW of the same
// value and a plain conversion: the difference is what the library adds
// (the default text, building the key path, the bounded copies).
#include <tavona/settings.h>

#include <cstdio>
#include <cstdlib>

#include "bench.h"

namespace {
const wchar_t kKey[] = L"Software\\Tavona Software\\BenchRegistry";
}

int main() {
  Tavona_WriteLongToHKCU(kKey, L"Section", L"Number", 123456);
  const wchar_t *full = L"Software\\Tavona Software\\BenchRegistry\\Section";
  volatile LONG sink = 0;
  bench::Compare(
      "Tavona_ReadLongFromRegistry",
      [&] {
        for (int i = 0; i < 200; ++i)
          sink = sink + Tavona_ReadLongFromRegistry(HKEY_CURRENT_USER, kKey, nullptr,
                                                    L"Section", L"Number", 0);
      },
      [&] {
        for (int i = 0; i < 200; ++i) {
          wchar_t text[50];
          DWORD bytes = sizeof text;
          if (RegGetValueW(HKEY_CURRENT_USER, full, L"Number", RRF_RT_REG_SZ, nullptr, text,
                           &bytes) == ERROR_SUCCESS)
            sink = sink + _wtol(text);
        }
      });  // reported, not gated: both sides wait on wineserver round trips,
           // so under wine the ratio swings with the server's own work
  RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
  return bench::ExitCode();
}
