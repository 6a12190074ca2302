// The directory routines that show something: scans into boxes, the copy
// with a progress indicator and the copy statistics dialog.
#include <tavona/controls.h>
#include <tavona/files.h>

#include <cstdint>

#include "files/dirwalk.h"
#include "frame/dialog.h"
#include "frame/globals.h"
#include "base/wstr.h"
#include "frame/lts.h"
#include "tvres.h"

namespace {

constexpr int kLine = 200;

// The progress text: message 1460, and below it the directory, shortened
// in its middle to the width of the text control.
void ShowDirectory(HWND indicator, const WCHAR *directory) {
  WCHAR text[kLine + 1 + tv::kDirPath + 4];
  int len = tv::g.resources
                ? tv::LoadTranslatedString(tv::g.resources, IDS_COPY_PROGRESS, text, kLine)
                : 0;
  text[len] = 0;
  if (directory) {
    if (len > 0) text[len++] = '\n';
    WCHAR *dir = text + len;
    // Room for the ellipsis that DT_MODIFYSTRING may write.
    tv::CopyRaw(dir, directory, tv::LenBounded(directory, tv::kDirPath - 1));
    dir[tv::LenBounded(directory, tv::kDirPath - 1)] = 0;
    HWND control = GetDlgItem(indicator, IDC_PROGRESS_TEXT);
    RECT r;
    if (control && GetClientRect(control, &r)) {
      tv::window_dc dc(control);
      HGDIOBJ old = SelectObject(dc.get(), reinterpret_cast<HGDIOBJ>(
                                               SendMessageW(control, WM_GETFONT, 0, 0)));
      DrawTextW(dc.get(), dir, -1, &r,
                DT_PATH_ELLIPSIS | DT_MODIFYSTRING | DT_SINGLELINE | DT_NOPREFIX | DT_CALCRECT);
      SelectObject(dc.get(), old);
    }
  }
  Tavona_SetProgressIndicatorText(indicator, text);
}

struct StatField {
  int control;
  INT COPYDIRCTL::*counter;
};

const StatField kStatFields[] = {
    {IDC_STAT_FILES_FOUND, &COPYDIRCTL::filesFound},
    {IDC_STAT_FILES_COPIED, &COPYDIRCTL::filesCopied},
    {IDC_STAT_NOT_INCLUDED, &COPYDIRCTL::filesNotIncluded},
    {IDC_STAT_EXCLUDED, &COPYDIRCTL::filesExcluded},
    {IDC_STAT_SKIPPED_EXISTING, &COPYDIRCTL::filesSkippedExisting},
    {IDC_STAT_SKIPPED_NOT_OLDER, &COPYDIRCTL::filesSkippedNotOlder},
    {IDC_STAT_BEFORE_DATE, &COPYDIRCTL::filesSkippedBeforeDate},
    {IDC_STAT_FROM_DATE, &COPYDIRCTL::filesSkippedFromDate},
    {IDC_STAT_DIRS_PROCESSED, &COPYDIRCTL::directoriesProcessed},
    {IDC_STAT_DIRS_CREATED, &COPYDIRCTL::directoriesCreated},
    {IDC_STAT_DIRS_EXISTING, &COPYDIRCTL::directoriesExisting},
};

void FillStatistic(HWND dialog, const COPYDIRCTL &c) {
  for (const StatField &f : kStatFields) SetDlgItemInt(dialog, f.control, c.*f.counter, TRUE);
  // Rounded up to whole kilobytes; wide enough that no counter overflows.
  int64_t kb = int64_t(c.kilobytesCopied) + (int64_t(c.bytesCopied) + 1023) / 1024;
  WCHAR text[32];
  tv::Format(text, 32, L"%lld", static_cast<long long>(kb));
  SetDlgItemTextW(dialog, IDC_STAT_KILOBYTES, text);
}

}  // namespace

INT WINAPI Tavona_ScanDirsToBox(HWND box, const WCHAR *directory) {
  if (tv::IsBlank(directory)) return 0;
  tv::PathBuf dir;
  if (!dir.Init(directory)) return 0;
  INT added = 0;
  for (tv::DirEnum entries(dir); entries.Next();)
    if (entries.IsDirectory() && Tavona_AddBoxEntry(box, entries.Entry().cFileName, 0, -1, 0) >= 0)
      ++added;
  return added;
}

INT WINAPI Tavona_ScanFilesToBox(HWND box, const WCHAR *directory, const WCHAR *include,
                                 const WCHAR *exclude, UINT flags) {
  if (tv::IsBlank(directory)) return 0;
  tv::FileFilter filter;
  tv::PathBuf dir;
  if (!filter.Build(include, exclude, 0) || !dir.Init(directory)) return 0;
  INT added = 0;
  for (tv::DirEnum entries(dir); entries.Next();) {
    const WCHAR *name = entries.Entry().cFileName;
    if (entries.IsDirectory() || !filter.PassesNames(name)) continue;
    WCHAR text[tv::kDirEntry];
    if (!tv::BoundedCopy(text, name, tv::kDirEntry)) continue;
    if (flags & TAVONA_SCAN_STRIP_EXTENSION) Tavona_StripExtension(text);
    if (Tavona_AddBoxEntry(box, text, 0, -1, 0) >= 0) ++added;
  }
  return added;
}

INT WINAPI CopyDirCallback(const WCHAR *source, const WCHAR *, INT event, COPYDIRCTL *ctl,
                           INT_PTR value) {
  HWND indicator = reinterpret_cast<HWND>(value);
  if (!IsWindow(indicator)) return 2;
  if (ctl && (event == TAVONA_DIR_FILE_FOUND || event == TAVONA_DIR_START ||
              event == TAVONA_DIR_END))
    Tavona_UpdateProgressIndicator(indicator, ctl->filesFound);
  if (event == TAVONA_DIR_ENTER) ShowDirectory(indicator, source);
  return Tavona_CheckProgressIndicatorAborted(indicator) ? 2 : 1;
}

INT WINAPI Tavona_CopyDirectoriesWithProgInd(const WCHAR *sources, const WCHAR *destinations,
                                             COPYDIRCTL *ctl, const WCHAR *title,
                                             COLORREF color) {
  if (!sources || !destinations || !ctl) return 2;
  HWND indicator = Tavona_CreateProgressIndicatorExtended(
      GetActiveWindow(), title ? title : L"", 0, 1000,
      TAVONA_PROGRESS_TIME | TAVONA_PROGRESS_LARGE);
  if (!indicator) return 2;
  if (color) Tavona_SetProgressIndicatorColor(indicator, color);
  ShowDirectory(indicator, nullptr);
  DIRSTATISTIC stat;
  Tavona_DirectoriesStatistic(sources, &stat, (ctl->flags & TAVONA_COPY_RECURSE) != 0);
  Tavona_SetProgressIndicatorBounds(indicator, 0, stat.files);
  Tavona_UpdateProgressIndicator(indicator, 0);
  INT result = Tavona_CopyDirectories(sources, destinations, ctl, CopyDirCallback,
                                      reinterpret_cast<INT_PTR>(indicator));
  Tavona_DestroyProgressIndicator(indicator);
  return result;
}

INT_PTR CALLBACK CopyDirStatistic_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                                  LPARAM lParam) {
  COPYDIRCTL *ctl = tv::DialogRecord<COPYDIRCTL>(dialog, message, lParam);
  switch (message) {
    case WM_INITDIALOG:
      if (ctl) FillStatistic(dialog, *ctl);
      return TRUE;
    case WM_COMMAND:
      if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL) return FALSE;
      EndDialog(dialog, 1);
      return TRUE;
  }
  return FALSE;
}

INT WINAPI Tavona_DisplayCopyStatistic(COPYDIRCTL *ctl, HWND) {
  if (!ctl) return 0;
  return static_cast<INT>(tv::RunDialog(IDD_COPY_STATISTIC, CopyDirStatistic_Dialog_Callback,
                                        reinterpret_cast<LPARAM>(ctl)));
}
