// Compiled HTML help of a module: the .chm file beside it, opened on a
// topic by its context number.
#include <tavona/settings.h>

#include "frame/handles.h"
#include "frame/optlib.h"
#include "frame/report.h"
#include "base/wstr.h"
#include "tvres.h"

namespace {

constexpr UINT kHelpContext = 0x000F;  // HH_HELP_CONTEXT
using HtmlHelpProc = HWND(WINAPI *)(HWND, const WCHAR *, UINT, DWORD_PTR);

// The viewer lives in hhctrl.ocx, found as a bare name is (the program's
// folder, then the system folders; never the current directory). It stays
// loaded while the process runs, since its help window outlives the call
// that opened it.
HtmlHelpProc HtmlHelpEntry() {
  static tv::unique_hmodule viewer = tv::LoadOptionalLibrary(L"hhctrl.ocx");
  if (!viewer) return nullptr;
  return tv::ProcAddress<HtmlHelpProc>(viewer.get(), "HtmlHelpW");
}

// The module's file name with its extension replaced by ".chm"; false when
// it cannot be had.
bool HelpFileOf(HMODULE module, WCHAR (&path)[MAX_PATH]) {
  DWORD n = GetModuleFileNameW(module, path, 256);
  if (n == 0 || n >= 256) return false;
  int dot = -1;
  for (int i = static_cast<int>(n) - 1; i >= 0 && path[i] != '\\' && path[i] != '/'; --i)
    if (path[i] == '.') {
      dot = i;
      break;
    }
  if (dot >= 0) path[dot] = 0;
  return tv::BoundedAppend(path, L".chm", MAX_PATH);
}

}  // namespace

void WINAPI Tavona_PerformHelp(HMODULE module, DWORD context, DWORD unused) {
  (void)unused;
  if (!module) return;
  WCHAR path[MAX_PATH];
  if (!HelpFileOf(module, path)) return;

  if (Tavona_ReadLongFromHKCU(L"Software\\Tavona Software\\Debugging", nullptr, L"HelpTest", 0) ==
      1) {
    // Lets help authors see which topic would open.
    WCHAR number[16];
    tv::Format(number, 16, L"%u", context);
    tv::ReportError(IDS_INFO_HELP_TEST, path, number);
    return;
  }
  DWORD attributes = GetFileAttributesW(path);
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY)) {
    tv::ReportError(IDS_ERR_HELP_MISSING);
    return;
  }
  if (HtmlHelpProc show = HtmlHelpEntry()) show(GetDesktopWindow(), path, kHelpContext, context);
}
