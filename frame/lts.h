// Translation of texts by key through the installed provider. Until one is
// installed, translating a text only removes an explicit key prefix
// "((KEY))". Dialogs and menus: frame/lts_windows.h.
#pragma once

#include <tavona/tvbase.h>

#include "frame/globals.h"

namespace tv {

// Removes a leading "((key))" in place; returns the length of the key
// (0 when there is no prefix). A text with "((" but no "))" is unchanged.
int StripKeyPrefix(WCHAR *text);

// Translates text in place (buffer of size characters) under module
// (null/empty: "GENERAL") and section (null/empty: "STRINGS"): the key is
// derived, the prefix removed, the provider asked, and its answer decoded
// from the escape notation.
void LtsTranslate(const WCHAR *module, const WCHAR *section, WCHAR *text, int size);

// The same in the section "STRINGS".
inline void LtsTranslateText(const WCHAR *module, WCHAR *text, int size) {
  LtsTranslate(module, nullptr, text, size);
}

// LoadStringW followed by translation under the library's module name.
// Returns the resulting length; 0 without touching anything for a null
// buffer or size < 1; 0 when the string is missing or empty.
int LoadTranslatedString(HMODULE module, UINT id, WCHAR *buffer, int size);

// Working buffer sizes of dialog and menu translation.
inline constexpr int kLtsWindowText = 500;
inline constexpr int kLtsMenuText = 200;

}  // namespace tv
