// Small helpers shared by the tests of both builds.
#pragma once

#include <tavona/tvbase.h>

#include <string>

// A wide text of either build (wchar_t on Windows, char16_t on the host).
using WStr = std::basic_string<WCHAR>;

// ASCII rendering of a wide text for failure messages (others as \uXXXX).
template <typename Ch>
std::string Narrow(const Ch *s) {
  std::string out;
  static const char hex[] = "0123456789ABCDEF";
  for (; s && *s; ++s) {
    unsigned c = static_cast<unsigned>(*s) & 0xFFFF;
    if (c >= 32 && c < 127) {
      out += static_cast<char>(c);
    } else {
      out += "\\u";
      for (int shift = 12; shift >= 0; shift -= 4) out += hex[(c >> shift) & 15];
    }
  }
  return out;
}
template <typename Ch>
std::string Narrow(const std::basic_string<Ch> &s) {
  return Narrow(s.c_str());
}

#ifdef TAVONA_HOST_TEST
#include "base/sys_host.h"

// Lines written to the debugger output so far.
inline int DebugLines() { return tv::plat::host::DebugOutputCount(); }
#endif

#ifdef _WIN32
#include <windows.h>

// Lines written to the debugger output so far: OutputDebugString raises
// DBG_PRINTEXCEPTION_C once per line (also for the wide call, which falls
// back to it when no debugger takes the wide one), and a vectored handler
// sees it before anyone else.
inline int &DebugLineCount() {
  static int count = 0;
  return count;
}
inline LONG CALLBACK CountDebugLine(EXCEPTION_POINTERS *e) {
  if (e->ExceptionRecord->ExceptionCode == DBG_PRINTEXCEPTION_C) ++DebugLineCount();
  return EXCEPTION_CONTINUE_SEARCH;
}
inline int DebugLines() {
  static PVOID handler = AddVectoredExceptionHandler(1, CountDebugLine);
  (void)handler;
  return DebugLineCount();
}

// The folder of the test program, with its trailing backslash.
inline std::wstring BinDir() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring dir = path;
  return dir.substr(0, dir.rfind(L'\\') + 1);
}
#endif
