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

#include <cwchar>
#include <deque>
#include <vector>

// The folder of the test program, with its trailing backslash.
inline std::wstring BinDir() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring dir = path;
  return dir.substr(0, dir.rfind(L'\\') + 1);
}
// The language run: true in a child started by RunSelfInLanguage(L"de").
inline bool IsGermanRun() {
  wchar_t lang[8] = {};
  return GetEnvironmentVariableW(L"VEL_LANGUAGE", lang, 8) && lang[0] == L'd' && lang[1] == L'e';
}

// Runs this test program again with VEL_LANGUAGE set to language and the
// given --gtest_filter; returns its exit code (99 when it did not end
// within two minutes).
inline DWORD RunSelfInLanguage(const wchar_t *language, const std::wstring &filter) {
  wchar_t self[MAX_PATH];
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  std::wstring command = L"\"" + std::wstring(self) + L"\" --gtest_filter=" + filter;
  SetEnvironmentVariableW(L"VEL_LANGUAGE", language);
  STARTUPINFOW si = {};
  si.cb = sizeof si;
  PROCESS_INFORMATION pi = {};
  BOOL started = CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                nullptr, &si, &pi);
  SetEnvironmentVariableW(L"VEL_LANGUAGE", nullptr);
  if (!started) return 98;
  DWORD wait = WaitForSingleObject(pi.hProcess, 120000);
  if (wait != WAIT_OBJECT_0) TerminateProcess(pi.hProcess, 99);
  DWORD code = 99;
  GetExitCodeProcess(pi.hProcess, &code);
  CloseHandle(pi.hThread);
  CloseHandle(pi.hProcess);
  return wait == WAIT_OBJECT_0 ? code : 99;
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
