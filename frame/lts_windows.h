// Dialogs and menus translated through the provider, and the provider slot
// (Windows only).
#pragma once

#include <windows.h>

#include "frame/globals.h"
#include "frame/lts.h"

namespace tv {

// The caption and the direct children of class STATIC or BUTTON, each set
// back (also when unchanged). Defaults "GENERAL" and "DIALOGS".
void LtsTranslateDialog(HWND dialog, const WCHAR *module, const WCHAR *section);
// Every item text, submenus depth first; identifiers are kept. Defaults
// "GENERAL" and "MENU".
void LtsTranslateMenu(HMENU menu, const WCHAR *module, const WCHAR *section);
// True for the classes whose texts dialog translation touches.
bool IsLtsTextClass(HWND window);

// Fills the provider slot; the module (may be null) and the release
// routine (may be null) of the provider being replaced are freed first.
using LtsRelease = void (*)();
void SetLtsProvider(LtsProvider provider, HMODULE module, LtsRelease release);
inline void ClearLtsProvider() { SetLtsProvider(nullptr, nullptr, nullptr); }

}  // namespace tv
