// Loading and unloading of tavona32.dll: the resource library for the
// user's language, the process-wide values and the global window classes.
#include "frame/globals.h"
#include "frame/handles.h"
#include "frame/platform.h"
#include "frame/wndclasses.h"
#include "base/wstr.h"
#include "frame/lts_windows.h"

#include <windows.h>

#include <utility>

namespace tv {

namespace {

// Language names live in buffers of 20 characters.
constexpr int kLangSize = 20;

void DetermineLanguages(WCHAR *full, WCHAR *shortName) {
  full[0] = 0;
  shortName[0] = 0;
  WCHAR env[1024];
  if (plat::GetEnv(L"VEL_LANGUAGE", env, 1024)) {
    // Copied as it stands; a value too long for the slot is refused like
    // any other bounded copy and leaves the slot empty.
    BoundedCopy(full, env, kLangSize);
    LCID lcid = LocaleNameToLCID(full, 0);
    if (!lcid || !GetLocaleInfoW(lcid, LOCALE_SISO639LANGNAME, shortName, kLangSize)) {
      shortName[0] = 0;
      BoundedCopy(full, L"en", kLangSize);
    }
    return;
  }
  LANGID ui = GetThreadUILanguage();
  LCID lcid = MAKELCID(ui, SORT_DEFAULT);
  if (!GetLocaleInfoW(lcid, LOCALE_SISO639LANGNAME, shortName, kLangSize)) {
    shortName[0] = 0;
    BoundedCopy(full, L"en", kLangSize);
  }
  if (!GetLocaleInfoW(lcid, LOCALE_SNAME, full, kLangSize)) BoundedCopy(full, L"en", kLangSize);
}

}  // namespace

// The "en" fallback only ever fills the full-locale slot, so an unknown
// language probes folder\en\, then folder\ with an empty language name (a
// doubled backslash), then folder\en\ again. Kept that way deliberately.
HMODULE LoadResourceLibrary(const WCHAR *fileName, HINSTANCE instance) {
  WCHAR folder[MAX_PATH];
  DWORD n = GetModuleFileNameW(instance, folder, MAX_PATH);
  if (n == 0 || n >= MAX_PATH) folder[0] = 0;
  folder[MAX_PATH - 1] = 0;
  for (int i = Len(folder); i > 0; --i) {
    if (folder[i - 1] == L'\\') {
      folder[i] = 0;
      break;
    }
  }

  WCHAR full[kLangSize], shortName[kLangSize];
  DetermineLanguages(full, shortName);

  const WCHAR *languages[3] = {full, shortName, L"en"};
  WCHAR path[MAX_PATH] = {};
  for (const WCHAR *lang : languages) {
    path[0] = 0;
    Appender a(path, MAX_PATH);
    a.Append(folder);
    a.Append(lang);
    a.Append(L'\\');
    a.Append(fileName);
    if (path[0] && plat::FileExists(path)) return LoadLibraryW(path);
  }
  MessageBoxW(nullptr, path, L"Fatal Error: File not found", MB_ICONHAND);
  return nullptr;
}

namespace {

void ProcessAttach(HINSTANCE instance) {
  g.instance = instance;
  g.resources = LoadResourceLibrary(kResourceFileName, instance);
  InitPortableGlobals();
  RegisterWindowClasses(instance);
  InitSecondGlobals();
}

// Hands a module global to an owner, which frees it at once.
void ReleaseModuleGlobal(HMODULE &module) {
  unique_hmodule(std::exchange(module, nullptr)).reset();
}

void ProcessDetach() {
  ClearLtsProvider();
  ReleaseModuleGlobal(g.pictureModule);
  UnregisterWindowClasses(g.instance);
  ReleaseModuleGlobal(g.resources);
}

}  // namespace
}  // namespace tv

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  switch (reason) {
    case DLL_PROCESS_ATTACH:
      tv::ProcessAttach(instance);
      return TRUE;
    case DLL_PROCESS_DETACH:
      tv::ProcessDetach();
      return TRUE;
    default:
      // Thread notifications do nothing and report failure, which the loader
      // ignores.
      return FALSE;
  }
}
