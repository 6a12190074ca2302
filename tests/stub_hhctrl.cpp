// Stands in for the help viewer hhctrl.ocx: HtmlHelpW writes down what it
// was asked to show and opens no window.
#include <windows.h>

namespace {
HWND lastOwner;
WCHAR lastFile[MAX_PATH];
UINT lastCommand;
DWORD_PTR lastData;
int calls = 0;
}  // namespace

extern "C" {

__declspec(dllexport) HWND WINAPI HtmlHelpW(HWND owner, const WCHAR *file, UINT command,
                                            DWORD_PTR data) {
  ++calls;
  lastOwner = owner;
  lstrcpynW(lastFile, file ? file : L"(null)", MAX_PATH);
  lastCommand = command;
  lastData = data;
  return nullptr;
}

// The last request; returns the number of calls so far.
__declspec(dllexport) int WINAPI StubHelp_Last(HWND *owner, WCHAR *file, UINT *command,
                                               DWORD_PTR *data) {
  *owner = lastOwner;
  lstrcpynW(file, lastFile, MAX_PATH);
  *command = lastCommand;
  *data = lastData;
  return calls;
}
}
