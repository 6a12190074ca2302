#include "frame/dialog.h"

#include "frame/globals.h"
#include "frame/lts_windows.h"

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

void TranslateOwnDialog(HWND dialog) { LtsTranslateDialog(dialog, g.ltsModuleName, nullptr); }

void TranslateDialog(HWND dialog, const WCHAR *module) {
  LtsTranslateDialog(dialog, module, nullptr);
}

}  // namespace tv
