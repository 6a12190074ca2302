// The files layer's seam: the module's file name and the locale's
// comparison of names. filesys_win32.cpp, filesys_host.cpp (test controls
// in filesys_host.h). Existence, environment and appending are the frame's
// (frame/platform.h).
#pragma once

#include <tavona/tvbase.h>

namespace tv::plat {

// The full file name of module (null: the program), cut to size - 1 and
// always terminated; its length, 0 on failure.
int ModuleFileName(HMODULE module, WCHAR *buffer, int size);
// The locale-aware case-insensitive comparison of lstrcmpiW.
int CompareNoCaseLocale(const WCHAR *a, const WCHAR *b);

}  // namespace tv::plat
