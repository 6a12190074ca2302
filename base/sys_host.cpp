// The host build's side of the base seam.
#include "base/sys.h"
#include "base/sys_host.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace tv::plat {
namespace {
bool failAlloc = false;
int debugLines = 0;
}  // namespace

void *Alloc(size_t bytes) {
  if (failAlloc) return nullptr;
  return std::malloc(bytes ? bytes : 1);
}

void Free(void *p) { std::free(p); }

void DebugOutput(const WCHAR *text) {
  std::string s;
  for (; text && *text; ++text) s += *text < 128 ? static_cast<char>(*text) : '?';
  std::fprintf(stderr, "%s\n", s.c_str());
  ++debugLines;
}

namespace host {
void SetFailAllocations(bool fail) { failAlloc = fail; }
int DebugOutputCount() { return debugLines; }
}  // namespace host

}  // namespace tv::plat
