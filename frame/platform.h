// The one seam between the portable core and the operating system. The DLL
// implements it with Win32 (platform_win32.cpp); the host build with a
// minimal stand-in (platform_host.cpp) good enough for the portable tests.
// Keep it small: only what portable code cannot do itself belongs here.
#pragma once

#include "base/sys.h"
#include <tavona/frame.h>
#include <tavona/tvbase.h>

#include <cstddef>

namespace tv::plat {

// Upper-casing and case-insensitive comparison as the Windows services do
// them: the user-interface service (CharUpperW), the C runtime's (_wcsupr)
// and the C runtime's comparison (_wcsicmp).
void UpperUser(WCHAR *text);
void UpperCrt(WCHAR *text);
int CompareNoCaseCrt(const WCHAR *a, const WCHAR *b);

// ANSI code page <-> UTF-16 with the semantics of MultiByteToWideChar /
// WideCharToMultiByte for zero-terminated input (length -1): returns the
// number of units written including the terminator, or the size needed
// when capacity is 0; 0 on failure.
int AnsiToWide(const char *src, WCHAR *dst, int capacity);
int WideToAnsi(const WCHAR *src, char *dst, int capacity);

// A string resource of the library's resource module; 0 and an empty
// buffer when there is none.
int LoadResString(HMODULE module, UINT id, WCHAR *buffer, int size);

// A message box: MessageBoxW with the owner, or the active window when
// owner is null. Returns the button chosen.
int ShowMessage(HWND owner, const WCHAR *text, const WCHAR *caption, UINT style);

// Appends text and CR LF as raw UTF-16LE (no byte-order mark) to the file,
// opened for appending while denying other writers. False when it cannot
// be opened.
bool AppendLogLine(const WCHAR *path, const WCHAR *text);

// Offers a message to the external handler library: its name and entry are
// read on every call (an administrator may install or remove it while
// applications run). The handler's result; 0 when there is none or it
// leaves the message to the library.
int CallExternalHandler(const MessageBoxRequest *request);

// ---- Dates and times ----

// The local date and time of the platform clock (_time64 and
// _localtime64_s); false when the conversion fails.
struct LocalTime {
  int year, month, day, hour, minute, second;
};
bool CurrentLocalTime(LocalTime &out);

// The two-digit year limit, read from the settings at every call:
// HKEY_CURRENT_USER, the global parameters key, section "Year 2000", value
// "YearExpansionLimit", default 35.
LONG YearExpansionLimit();

// ---- Files ----

// _waccess(name, 0) succeeding: anything exists under the name.
bool FileExists(const WCHAR *name);
// The full file name of module (null: the program), cut to size - 1 and
// always terminated; its length, 0 on failure.
int ModuleFileName(HMODULE module, WCHAR *buffer, int size);
// The locale-aware case-insensitive comparison of lstrcmpiW.
int CompareNoCaseLocale(const WCHAR *a, const WCHAR *b);
// An environment variable, cut to size - 1 and terminated; false (and "")
// when it is not set.
bool GetEnv(const WCHAR *name, WCHAR *buffer, int size);
// Appends raw bytes to a file, creating it; other processes may read and
// append at the same time. False when it cannot be opened or written.
bool AppendToFile(const WCHAR *path, const void *data, size_t bytes);

}  // namespace tv::plat
