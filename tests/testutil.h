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

// Whether this run shows the German resource library (VEL_LANGUAGE=de).
inline bool GermanRun() {
  wchar_t lang[8] = {};
  return GetEnvironmentVariableW(L"VEL_LANGUAGE", lang, 8) >= 2 && lang[0] == L'd' &&
         lang[1] == L'e';
}

// Runs this test program again with VEL_LANGUAGE=de and a gtest filter;
// the exit code (99 when it could not start or did not end in time).
inline unsigned long RunSelfInGerman(const wchar_t *filter, unsigned long timeoutMs = 120000) {
  wchar_t self[MAX_PATH];
  if (GetModuleFileNameW(nullptr, self, MAX_PATH) == 0) return 99;
  std::wstring command = L"\"" + std::wstring(self) + L"\" --gtest_filter=" + filter;
  SetEnvironmentVariableW(L"VEL_LANGUAGE", L"de");
  STARTUPINFOW si = {};
  si.cb = sizeof si;
  PROCESS_INFORMATION pi = {};
  BOOL started = CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                nullptr, &si, &pi);
  SetEnvironmentVariableW(L"VEL_LANGUAGE", nullptr);
  if (!started) return 99;
  DWORD code = 99;
  if (WaitForSingleObject(pi.hProcess, timeoutMs) != WAIT_OBJECT_0)
    TerminateProcess(pi.hProcess, 99);
  else
    GetExitCodeProcess(pi.hProcess, &code);
  CloseHandle(pi.hThread);
  CloseHandle(pi.hProcess);
  return code;
}

// The folder of the test program, with its trailing backslash.
inline std::wstring BinDir() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring dir = path;
  return dir.substr(0, dir.rfind(L'\\') + 1);
}
#endif
