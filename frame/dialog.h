// The one way the library runs its dialogs.
#pragma once

#include <windows.h>

namespace tv {

// Runs the dialog template templateId of the resource library modally,
// owned by the active window, with param for the dialog procedure. The
// window that had the focus gets it back afterwards. Returns the result of
// DialogBoxParamW (-1 when the template cannot be loaded).
INT_PTR RunDialog(UINT templateId, DLGPROC proc, LPARAM param);

// The dialog procedure pattern: on WM_INITDIALOG the parameter record is
// stored in the dialog's user data and the dialog translated; afterwards
// DialogRecord returns it.
template <typename Record>
Record *DialogRecord(HWND dialog, UINT message, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    return reinterpret_cast<Record *>(lParam);
  }
  return reinterpret_cast<Record *>(GetWindowLongPtrW(dialog, DWLP_USER));
}

// Translates a dialog of the library itself (its caption and controls).
void TranslateOwnDialog(HWND dialog);

}  // namespace tv
