#include "base/sys.h"

#include <windows.h>

namespace tv::plat {

void *Alloc(size_t bytes) { return HeapAlloc(GetProcessHeap(), 0, bytes ? bytes : 1); }

void Free(void *p) {
  if (p) HeapFree(GetProcessHeap(), 0, p);
}

void DebugOutput(const WCHAR *text) { OutputDebugStringW(text); }

}  // namespace tv::plat
