// Small helpers shared by the tests of both builds.
#pragma once

#include <cstdlib>
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

// The value of VEL_LANGUAGE starts with "de": the German run of a test.
inline bool GermanRun() {
  const wchar_t *lang = _wgetenv(L"VEL_LANGUAGE");
  return lang && lang[0] == 'd';
}

// Runs this test program again with the arguments (a --gtest_filter) and
// VEL_LANGUAGE=language; its exit code, 99 when it did not end in time.
inline DWORD RunSelfInLanguage(const std::wstring &args, const wchar_t *language,
                               DWORD timeoutMs = 120000) {
  wchar_t self[MAX_PATH];
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  std::wstring command = L"\"" + std::wstring(self) + L"\" " + args;
  SetEnvironmentVariableW(L"VEL_LANGUAGE", language);
  STARTUPINFOW si = {};
  si.cb = sizeof si;
  PROCESS_INFORMATION pi = {};
  BOOL started = CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                nullptr, &si, &pi);
  SetEnvironmentVariableW(L"VEL_LANGUAGE", nullptr);
  if (!started) return 99;
  DWORD code = 99;
  if (WaitForSingleObject(pi.hProcess, timeoutMs) == WAIT_OBJECT_0)
    GetExitCodeProcess(pi.hProcess, &code);
  else
    TerminateProcess(pi.hProcess, 99);
  CloseHandle(pi.hThread);
  CloseHandle(pi.hProcess);
  return code;
}

// Removes a directory tree, read-only and system entries too.
inline void RemoveTree(const std::wstring &dir) {
  WIN32_FIND_DATAW fd;
  HANDLE h = FindFirstFileW((dir + L"\\*").c_str(), &fd);
  if (h != INVALID_HANDLE_VALUE) {
    do {
      std::wstring name = fd.cFileName, path = dir + L"\\" + name;
      if (name == L"." || name == L"..") continue;
      SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
      if (fd.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
        RemoveTree(path);
      else
        DeleteFileW(path.c_str());
    } while (FindNextFileW(h, &fd));
    FindClose(h);
  }
  SetFileAttributesW(dir.c_str(), FILE_ATTRIBUTE_NORMAL);
  RemoveDirectoryW(dir.c_str());
}
#endif
