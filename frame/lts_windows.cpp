// Dialogs and menus translated through the provider, and the provider slot.
#include "frame/globals.h"
#include "frame/lts_windows.h"

#include <windows.h>

namespace tv {

namespace {

LtsRelease g_providerRelease = nullptr;

void TranslateWindowText(HWND window, const WCHAR *module, const WCHAR *section) {
  WCHAR text[kLtsWindowText];
  if (GetWindowTextW(window, text, kLtsWindowText) < 1) text[0] = 0;
  LtsTranslate(module, section, text, kLtsWindowText);
  SetWindowTextW(window, text);
}

}  // namespace

bool IsLtsTextClass(HWND window) {
  WCHAR cls[50];
  if (GetClassNameW(window, cls, 50) < 1) return false;
  return lstrcmpiW(cls, L"STATIC") == 0 || lstrcmpiW(cls, L"BUTTON") == 0;
}

void LtsTranslateDialog(HWND dialog, const WCHAR *module, const WCHAR *section) {
  if (!dialog || !IsWindow(dialog)) return;
  if (!module || !module[0]) module = L"GENERAL";
  if (!section || !section[0]) section = L"DIALOGS";
  TranslateWindowText(dialog, module, section);
  for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    if (IsLtsTextClass(child)) TranslateWindowText(child, module, section);
  }
}

void LtsTranslateMenu(HMENU menu, const WCHAR *module, const WCHAR *section) {
  if (!menu) return;
  if (!module || !module[0]) module = L"GENERAL";
  if (!section || !section[0]) section = L"MENU";
  int count = GetMenuItemCount(menu);
  for (int pos = 0; pos < count; ++pos) {
    WCHAR text[kLtsMenuText];
    if (GetMenuStringW(menu, pos, text, kLtsMenuText, MF_BYPOSITION) > 0 && text[0]) {
      LtsTranslate(module, section, text, kLtsMenuText);
      // Only the text changes: ModifyMenuW with MF_STRING would drop the
      // item's submenu, its check mark and its grayed state.
      MENUITEMINFOW info = {};
      info.cbSize = sizeof info;
      info.fMask = MIIM_STRING;
      info.dwTypeData = text;
      SetMenuItemInfoW(menu, pos, TRUE, &info);
    }
    if (GetMenuItemID(menu, pos) == 0xFFFFFFFF) {
      LtsTranslateMenu(GetSubMenu(menu, pos), module, section);
    }
  }
}

void SetLtsProvider(LtsProvider provider, HMODULE module, LtsRelease release) {
  HMODULE oldModule = g.ltsProviderModule;
  LtsRelease oldRelease = g_providerRelease;
  g.ltsProvider = nullptr;
  g.ltsProviderModule = nullptr;
  g_providerRelease = nullptr;
  if (oldRelease) oldRelease();
  if (oldModule && oldModule != module) FreeLibrary(oldModule);
  g.ltsProvider = provider;
  g.ltsProviderModule = module;
  g_providerRelease = release;
}

}  // namespace tv
