// Translation of the library's own texts by key. Until a provider is set,
// translating a text only removes an explicit key prefix "((KEY))".
#pragma once

#include <tavona/tvbase.h>

namespace tv {

// Removes a leading "((key))" in place; returns the length of the key
// (0 when there is no prefix). A text with "((" but no "))" is unchanged.
int StripKeyPrefix(WCHAR *text);

// Translates text in place (same buffer size) under the given module name.
void LtsTranslateText(const WCHAR *module, WCHAR *text, int size);

// LoadStringW followed by translation under the library's module name.
// Returns the resulting length; 0 without touching anything for a null
// buffer or size < 1; 0 when the string is missing or empty.
int LoadTranslatedString(HMODULE module, UINT id, WCHAR *buffer, int size);

}  // namespace tv
