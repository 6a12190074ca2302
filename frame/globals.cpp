#include "frame/globals.h"

#include "base/wstr.h"

namespace tv {

Globals g;

void InitPortableGlobals() { BoundedCopy(g.globalParamsKey, kGlobalParamsKey, 64); }

void InitSecondGlobals() {
  g.ltsProvider = nullptr;
  g.ltsProviderModule = nullptr;
  BoundedCopy(g.ltsModuleName, kLtsModuleName, 32);
  g.pictureModule = nullptr;
  BoundedCopy(g.colorParamsKey, kGlobalParamsKey, 64);
}

}  // namespace tv

extern "C" {

HINSTANCE WINAPI Tavona_GetInstance(void) { return tv::g.instance; }

HMODULE WINAPI Tavona_GetResourceModule(void) { return tv::g.resources; }

void WINAPI Tavona_GetLtsModuleName(WCHAR *buffer, UINT size) {
  // A size beyond INT_MAX is treated as no buffer rather than as negative.
  if (size > 0x7FFFFFFF) return;
  tv::BoundedCopy(buffer, tv::g.ltsModuleName, static_cast<int>(size));
}

INT WINAPI Tavona_SetLtsLanguageCode(INT code) {
  tv::g.ltsLanguageCode = code;
  return code;
}

}  // extern "C"
