#include "frame/alloc.h"

#include "frame/platform.h"
#include "frame/report.h"
#include "tvres.h"
#include "base/wstr.h"

#include <cstdint>

namespace tv {

void *AllocBytes(uint64_t bytes) {
  // Sizes that do not fit in 32 bits fail like an exhausted heap.
  void *p = bytes > UINT32_MAX ? nullptr : plat::Alloc(static_cast<size_t>(bytes));
  if (!p) ReportError(IDS_ERR_OUT_OF_MEMORY);
  return p;
}

WCHAR *AllocWideChars(UINT count) {
  return static_cast<WCHAR *>(AllocBytes(uint64_t{count} * sizeof(WCHAR)));
}

WCHAR *DuplicateWideString(const WCHAR *s) {
  if (!s) return nullptr;
  int n = Len(s) + 1;
  WCHAR *copy = AllocWideChars(static_cast<UINT>(n));
  if (copy) CopyRaw(copy, s, n);
  return copy;
}

void FreeMem(void *p) { plat::Free(p); }

}  // namespace tv

extern "C" void WINAPI Tavona_FreeMemory(void *memory) { tv::FreeMem(memory); }
