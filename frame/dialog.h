// The one way the library runs its dialogs.
#pragma once

#include <windows.h>

namespace tv {

// Runs the dialog template templateId of the resource library modally,
// owned by the active window, with param for the dialog procedure. The
// window that had the focus gets it back afterwards. Returns the result of
// DialogBoxParamW (-1 when the template cannot be loaded).
INT_PTR RunDialog(UINT templateId, DLGPROC proc, LPARAM param);
// The same owned by owner (the active window when owner is null).
INT_PTR RunDialog(UINT templateId, DLGPROC proc, LPARAM param, HWND owner);

// Translates a dialog of the library itself (its caption and controls)
// under the library's module name.
void TranslateOwnDialog(HWND dialog);
// The same under another module name (an application's dialog).
void TranslateDialog(HWND dialog, const WCHAR *module);

// The dialog base: every dialog procedure of the library starts with
//   Record *r = tv::DialogRecord<Record>(dialog, message, lParam);
// On WM_INITDIALOG it stores the parameter record in the dialog's user data
// and translates the dialog, before the procedure fills in any data; on
// every other message it returns the stored record (null before
// WM_INITDIALOG, e.g. for WM_SETFONT).
template <typename Record>
Record *DialogRecord(HWND dialog, UINT message, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    TranslateOwnDialog(dialog);
    return reinterpret_cast<Record *>(lParam);
  }
  return reinterpret_cast<Record *>(GetWindowLongPtrW(dialog, DWLP_USER));
}

}  // namespace tv
