// Small helpers shared by the tests of both builds.
#pragma once

#include <tavona/tvbase.h>

#include <algorithm>
#include <cstdlib>
#include <cwchar>
#include <deque>
#include <string>
#include <vector>

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
// A buffer of size units (none when size < 1) followed by guard units, for
// checking that a routine keeps to the size it was given. The units start
// as kFill, or as init (cut to size - 1 and terminated) when one is given.
template <typename Ch>
class GuardedBuffer {
 public:
  static constexpr Ch kFill = static_cast<Ch>(0xBEEF);
  static constexpr int kGuards = 16;

  explicit GuardedBuffer(int size, const Ch *init = nullptr)
      : size_(size > 0 ? size : 0), units_(static_cast<size_t>(size_) + kGuards, kFill) {
    if (init && size_ > 0) {
      int n = 0;
      for (; init[n] && n < size_ - 1; ++n) units_[n] = init[n];
      units_[n] = 0;
    }
    before_.assign(units_.begin(), units_.begin() + size_);
  }
  Ch *data() { return units_.data(); }
  int size() const { return size_; }
  // Nothing was written past the size.
  bool Intact() const {
    return std::all_of(units_.begin() + size_, units_.end(), [](Ch c) { return c == kFill; });
  }
  // Something within the size differs from how the buffer started.
  bool Touched() const { return !std::equal(before_.begin(), before_.end(), units_.begin()); }
  // A zero lies within the size.
  bool Terminated() const { return End() < size_; }
  // The text up to the first zero within the size (all of it without one).
  std::basic_string<Ch> Text() const { return std::basic_string<Ch>(units_.data(), End()); }

 private:
  // Where the first zero within the size is, or the size without one.
  int End() const {
    return int(std::find(units_.begin(), units_.begin() + size_, Ch(0)) - units_.begin());
  }
  int size_;
  std::vector<Ch> units_;
  std::vector<Ch> before_;
};

#ifdef _WIN32
#include <windows.h>

#include <filesystem>

// Lines written to the debugger output so far: OutputDebugString raises
// DBG_PRINTEXCEPTION_C once per line (also for the wide call, which falls
// back to it when no debugger takes the wide one), and a vectored handler
// sees it before anyone else.
inline int g_debugLines = 0;
inline LONG CALLBACK CountDebugLine(EXCEPTION_POINTERS *e) {
  if (e->ExceptionRecord->ExceptionCode == DBG_PRINTEXCEPTION_C) ++g_debugLines;
  return EXCEPTION_CONTINUE_SEARCH;
}
inline int DebugLines() {
  static PVOID handler = AddVectoredExceptionHandler(1, CountDebugLine);
  (void)handler;
  return g_debugLines;
}

// The folder of the test program, with its trailing backslash.
inline std::wstring BinDir() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring dir = path;
  return dir.substr(0, dir.rfind(L'\\') + 1);
}

// The temporary folder (with its trailing backslash) followed by name.
inline std::wstring TempPath(const wchar_t *name = L"") {
  wchar_t dir[MAX_PATH];
  GetTempPathW(MAX_PATH, dir);
  return std::wstring(dir) + name;
}

// The resource library of one language ("en", "de") as data, loaded once
// for the whole run.
inline HMODULE LanguageResources(const wchar_t *lang) {
  static HMODULE en = LoadLibraryExW((BinDir() + L"en\\tavona32Res.dll").c_str(), nullptr,
                                     LOAD_LIBRARY_AS_DATAFILE);
  static HMODULE de = LoadLibraryExW((BinDir() + L"de\\tavona32Res.dll").c_str(), nullptr,
                                     LOAD_LIBRARY_AS_DATAFILE);
  return lang[0] == L'd' ? de : en;
}

// True in the child run that RunInGerman starts.
inline bool GermanRun() {
  wchar_t lang[8] = {};
  return GetEnvironmentVariableW(L"VEL_LANGUAGE", lang, 8) && lang[0] == L'd' && lang[1] == L'e';
}
// The English or the German text, whichever this run shows.
inline const wchar_t *Pick(const wchar_t *en, const wchar_t *de) { return GermanRun() ? de : en; }
// A screenshot name, with "_de" in the German run.
inline std::wstring Shot(const wchar_t *name) { return std::wstring(name) + (GermanRun() ? L"_de" : L""); }

// Runs this test program again with VEL_LANGUAGE=de (so that the library
// loads the German resources) and the gtest filter; its exit code, 99 when
// it could not start or did not end in time.
inline DWORD RunInGerman(const wchar_t *filter, DWORD timeoutMs = 120000) {
  wchar_t self[MAX_PATH];
  GetModuleFileNameW(nullptr, self, MAX_PATH);
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
  namespace fs = std::filesystem;
  std::error_code e;
  for (fs::recursive_directory_iterator it(dir, e), end; !e && it != end; it.increment(e))
    SetFileAttributesW(it->path().c_str(), FILE_ATTRIBUTE_NORMAL);
  SetFileAttributesW(dir.c_str(), FILE_ATTRIBUTE_NORMAL);
  fs::remove_all(dir, e);
}

// What the error reporter sent to the application's callback: install
// CaptureReports with Tavona_SetErrorHandlerCallback. Each report is
// answered with the next of g_reportAnswers (IDOK when none is left).
inline std::vector<std::wstring> g_capturedReports;
inline std::deque<int> g_reportAnswers;
inline INT WINAPI CaptureReports(const WCHAR *message) {
  g_capturedReports.push_back(message ? message : L"");
  if (g_reportAnswers.empty()) return IDOK;
  int answer = g_reportAnswers.front();
  g_reportAnswers.pop_front();
  return answer;
}
#endif
