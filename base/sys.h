// What the platform-free base needs from the operating system: raw memory and
// one line of developer diagnostics. Windows side in sys_win32.cpp, the host
// build's in sys_host.cpp (with its test controls in sys_host.h).
#pragma once

#include <tavona/tvbase.h>

#include <cstddef>

namespace tv::plat {

// Raw memory from the process heap; never throws. Free(nullptr) is a no-op.
void *Alloc(size_t bytes);
void Free(void *p);

// One line of diagnostics for the developer (OutputDebugStringW on Windows,
// stderr on the host).
void DebugOutput(const WCHAR *text);

}  // namespace tv::plat
