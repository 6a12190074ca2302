// The host side of the files seam: a module name set by the tests and a
// comparison that folds Latin-1 like the user-interface service.
#include "files/filesys.h"
#include "files/filesys_host.h"

#include <string>

namespace tv::plat {

namespace {

std::u16string moduleName;
bool moduleNameSet = false;

WCHAR UpperLatin1(WCHAR c) {
  if (c >= 'a' && c <= 'z') return static_cast<WCHAR>(c - 32);
  if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return static_cast<WCHAR>(c - 32);
  if (c == 0xFF) return 0x178;
  return c;
}

}  // namespace

int ModuleFileName(HMODULE, WCHAR *buffer, int size) {
  if (!buffer || size < 1) return 0;
  buffer[0] = 0;
  if (!moduleNameSet) return 0;
  int n = 0;
  for (; n < size - 1 && n < static_cast<int>(moduleName.size()); ++n) buffer[n] = moduleName[n];
  buffer[n] = 0;
  return n;
}

int CompareNoCaseLocale(const WCHAR *a, const WCHAR *b) {
  for (;; ++a, ++b) {
    int ca = UpperLatin1(*a), cb = UpperLatin1(*b);
    if (ca != cb || !ca) return ca < cb ? -1 : ca > cb ? 1 : 0;
  }
}

namespace host {
void SetModuleFileName(const WCHAR *name) {
  moduleNameSet = name != nullptr;
  moduleName = name ? name : u"";
}
}  // namespace host

}  // namespace tv::plat
