// Stands in for the external error handler library: records the request it
// receives and answers what the test asked for (99 until told otherwise, so
// a copy loaded by mistake gives itself away).
#include <windows.h>

#include <cstring>

namespace {

BYTE lastRecord[448];
WCHAR lastLtsModule[64];
WCHAR lastArg1[260];
int calls = 0;
INT answer = 99;

void CopyText(WCHAR *dst, const BYTE *record, int offset, int size) {
  const WCHAR *src;
  std::memcpy(&src, record + offset, sizeof src);
  dst[0] = 0;
  for (int i = 0; src && src[i] && i < size - 1; ++i) dst[i] = src[i], dst[i + 1] = 0;
}

}  // namespace

extern "C" {

__declspec(dllexport) INT WINAPI StubHandler_MessageBox(const BYTE *record) {
  ++calls;
  std::memcpy(lastRecord, record, sizeof lastRecord);
  // Offsets of the module name and the first argument in the record.
  constexpr bool k64 = sizeof(void *) == 8;
  CopyText(lastLtsModule, record, k64 ? 16 : 12, 64);
  CopyText(lastArg1, record, k64 ? 24 : 16, 260);
  return answer;
}

__declspec(dllexport) void WINAPI StubHandler_SetAnswer(INT value) { answer = value; }

// Copies what the last call received; returns the number of calls so far.
__declspec(dllexport) int WINAPI StubHandler_Last(BYTE *record, WCHAR *ltsModule, WCHAR *arg1) {
  std::memcpy(record, lastRecord, sizeof lastRecord);
  std::memcpy(ltsModule, lastLtsModule, sizeof lastLtsModule);
  std::memcpy(arg1, lastArg1, sizeof lastArg1);
  return calls;
}

}  // extern "C"
