#include "frame/dialog.h"

#include "frame/globals.h"
#include "frame/lts.h"

namespace tv {

INT_PTR RunDialog(UINT templateId, DLGPROC proc, LPARAM param) {
  return RunDialog(templateId, proc, param, nullptr);
}

INT_PTR RunDialog(UINT templateId, DLGPROC proc, LPARAM param, HWND owner) {
  HWND focus = GetFocus();
  if (!owner) owner = GetActiveWindow();
  INT_PTR result =
      DialogBoxParamW(g.resources, MAKEINTRESOURCEW(templateId), owner, proc, param);
  if (focus && IsWindow(focus)) SetFocus(focus);
  return result;
}

namespace {

void TranslateWindowText(HWND w) {
  WCHAR text[1024];
  if (GetWindowTextW(w, text, 1024) < 1) return;
  WCHAR before[1024];
  lstrcpynW(before, text, 1024);
  LtsTranslateText(g.ltsModuleName, text, 1024);
  if (lstrcmpW(before, text) != 0) SetWindowTextW(w, text);
}

BOOL CALLBACK TranslateChild(HWND child, LPARAM) {
  TranslateWindowText(child);
  return TRUE;
}

}  // namespace

void TranslateOwnDialog(HWND dialog) {
  TranslateWindowText(dialog);
  EnumChildWindows(dialog, TranslateChild, 0);
}

}  // namespace tv
