// Process-wide values of the library. Written at load (DllMain) or by their
// setters, read everywhere without locking.
#pragma once

#include <tavona/tvbase.h>

namespace tv {

// A translation provider: (module, section, key, text in/out, size).
typedef INT(WINAPI *LtsProvider)(const WCHAR *module, const WCHAR *section,
                                 const WCHAR *key, WCHAR *text, INT size);

struct Globals {
  HINSTANCE instance = nullptr;
  HMODULE resources = nullptr;
  // The same key twice: one copy serves the two-digit year limit, the
  // other the custom colours. Both always hold the same text.
  WCHAR globalParamsKey[64] = {};
  WCHAR colorParamsKey[64] = {};
  WCHAR ltsModuleName[32] = {};
  INT ltsLanguageCode = 0;
  LtsProvider ltsProvider = nullptr;
  HMODULE ltsProviderModule = nullptr;
  HMODULE pictureModule = nullptr;
};

extern Globals g;

inline constexpr const WCHAR *kGlobalParamsKey = TEXT("Software\\Tavona Software\\Global Parameters");
inline constexpr const WCHAR *kLtsModuleName = TEXT("TAVONADLL");
inline constexpr const WCHAR *kResourceFileName = TEXT("tavona32Res.dll");

// Set the values that do not depend on the platform: the global parameters
// key first; then the translation slots (cleared), the library's own
// module name and the second copy of the key. The host build calls them
// from its tests; the DLL from DllMain, in that order.
void InitPortableGlobals();
void InitSecondGlobals();

}  // namespace tv
