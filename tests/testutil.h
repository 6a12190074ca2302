// Small helpers shared by the tests of both builds.
#pragma once

#include <string>

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

#ifdef _WIN32
#include <windows.h>

// The folder of the test program, with its trailing backslash.
inline std::wstring BinDir() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring dir = path;
  return dir.substr(0, dir.rfind(L'\\') + 1);
}
#endif
