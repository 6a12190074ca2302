// The frame's seam between the portable core and the operating system. The
// DLL implements it with Win32 (platform_win32.cpp); the host build with a
// minimal stand-in (platform_host.cpp) good enough for the portable tests.
// Keep it small: only what portable code cannot do itself belongs here. The
// layers above have seams of their own (datetime/clock.h, files/filesys.h,
// text/stack.h).
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
// One unit as UpperCrt changes it.
WCHAR UpperCrtUnit(WCHAR c);
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

// Offers a message to the external handler library: its name and entry are
// read on every call (an administrator may install or remove it while
// applications run). The handler's result; 0 when there is none or it
// leaves the message to the library.
int CallExternalHandler(const MessageBoxRequest *request);

// ---- Files and environment ----

// Anything exists under the name.
bool FileExists(const WCHAR *name);
// An environment variable of the process, cut to size - 1 and terminated;
// false (and "") when it is not set or does not fit.
bool GetEnv(const WCHAR *name, WCHAR *buffer, int size);
// Appends raw bytes to a file, creating it; other processes may read and
// append at the same time. False when it cannot be opened or written.
bool AppendToFile(const WCHAR *path, const void *data, size_t bytes);

}  // namespace tv::plat
