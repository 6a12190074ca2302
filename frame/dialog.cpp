#include "frame/dialog.h"

#include "frame/globals.h"
#include "frame/lts.h"

namespace tv {

INT_PTR RunDialog(UINT templateId, DLGPROC proc, LPARAM param) {
  HWND focus = GetFocus();
  INT_PTR result = DialogBoxParamW(g.resources, MAKEINTRESOURCEW(templateId), GetActiveWindow(),
                                   proc, param);
  if (focus && IsWindow(focus)) SetFocus(focus);
  return result;
}

namespace {

void TranslateWindowText(HWND w, const WCHAR *module) {
  WCHAR text[1024];
  if (GetWindowTextW(w, text, 1024) < 1) return;
  WCHAR before[1024];
  lstrcpynW(before, text, 1024);
  LtsTranslateText(module, text, 1024);
  if (lstrcmpW(before, text) != 0) SetWindowTextW(w, text);
}

BOOL CALLBACK TranslateChild(HWND child, LPARAM module) {
  TranslateWindowText(child, reinterpret_cast<const WCHAR *>(module));
  return TRUE;
}

}  // namespace

void TranslateOwnDialog(HWND dialog) { TranslateDialog(dialog, g.ltsModuleName); }

void TranslateDialog(HWND dialog, const WCHAR *module) {
  TranslateWindowText(dialog, module);
  EnumChildWindows(dialog, TranslateChild, reinterpret_cast<LPARAM>(module));
}

}  // namespace tv
