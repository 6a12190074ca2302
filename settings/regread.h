// Internal entry points of the settings store for the rest of the library.
// Windows only (registry and private profile files).
#pragma once

#include <windows.h>

namespace tv {

// A registry string with a result: key, then "\section" when a section is
// given, under root (nothing is read without a root and a key; there is no
// profile file here). out receives defaultText (null = "") first, so a
// value that cannot be read leaves it. The registry query gets size BYTES
// of room, i.e. half the buffer: a 500-character buffer takes values of up
// to 249 characters. Returns 1 when the value was read from the store, 0 when out
// holds the default (or nothing was done: null out or size < 1).
int ReadRegistryString(HKEY root, const WCHAR *key, const WCHAR *section, const WCHAR *value,
                       const WCHAR *defaultText, WCHAR *out, int size);

// The same with a profile file (used when the root or key is missing).
int ReadSettingString(HKEY root, const WCHAR *key, const WCHAR *profile, const WCHAR *section,
                      const WCHAR *value, const WCHAR *defaultText, WCHAR *out, int size);

// Tavona_WriteStringToRegistry: registry error code in the registry case,
// the profile write result in the profile case.
LONG WriteSettingString(HKEY root, const WCHAR *key, const WCHAR *profile, const WCHAR *section,
                        const WCHAR *value, const WCHAR *text);

}  // namespace tv
