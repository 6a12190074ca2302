// Loading a 64 MB file through the library against a plain CreateFileW +
// ReadFile of the same file into the same kind of memory: the difference is
// the trace check, the message and the global block.
#include <tavona/files.h>

#include <cstdio>
#include <string>

#include "bench.h"

namespace {

constexpr DWORD kSize = 64u << 20;

// Reads the whole file into dst, as plainly as it gets.
void PlainRead(const wchar_t *name, void *dst) {
  HANDLE h = CreateFileW(name, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
  if (h == INVALID_HANDLE_VALUE) return;
  DWORD got = 0;
  ReadFile(h, dst, kSize, &got, nullptr);
  CloseHandle(h);
}

}  // namespace

int main() {
  wchar_t tmp[MAX_PATH];
  GetTempPathW(MAX_PATH, tmp);
  std::wstring name = std::wstring(tmp) + L"tavona_bench_64mb.bin";
  {
    std::string block(1 << 20, 'x');
    HANDLE h = CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (h == INVALID_HANDLE_VALUE) return 1;
    for (DWORD i = 0; i < kSize / block.size(); ++i) {
      DWORD w;
      WriteFile(h, block.data(), static_cast<DWORD>(block.size()), &w, nullptr);
    }
    CloseHandle(h);
  }
  const wchar_t *file = name.c_str();

  void *buffer = HeapAlloc(GetProcessHeap(), 0, kSize + 1);
  bench::Compare(
      "Tavona_LoadFileToBuffer 64 MB", [&] { Tavona_LoadFileToBuffer(file, buffer, kSize + 1, 0); },
      [&] { PlainRead(file, buffer); }, 1.2);
  HeapFree(GetProcessHeap(), 0, buffer);

  bench::Compare(
      "Tavona_LoadFileToMemory 64 MB", [&] { GlobalFree(Tavona_LoadFileToMemory(file, 0)); },
      [&] {
        void *p = HeapAlloc(GetProcessHeap(), 0, kSize + 1);
        PlainRead(file, p);
        HeapFree(GetProcessHeap(), 0, p);
      },
      1.2);

  DeleteFileW(file);
  return bench::ExitCode();
}
