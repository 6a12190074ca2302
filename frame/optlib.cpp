#include "frame/optlib.h"

#include "base/wstr.h"
#include "frame/globals.h"
#include "frame/report.h"
#include "tvres.h"

namespace tv {

namespace {

bool HasFolderPart(const WCHAR *name) {
  for (const WCHAR *p = name; *p; ++p)
    if (*p == '\\' || *p == '/' || *p == ':') return true;
  return false;
}

// Systems before the search-path update (KB2533623) reject the
// LOAD_LIBRARY_SEARCH_* flags; AddDllDirectory came with that update.
bool SearchFlagsSupported() {
  HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
  return kernel && GetProcAddress(kernel, "AddDllDirectory");
}

HMODULE LoadFromFolder(const WCHAR *folder, const WCHAR *name) {
  WCHAR path[MAX_PATH];
  path[0] = 0;
  Appender a(path, MAX_PATH);
  if (!a.Append(folder) || (a.Length() && path[a.Length() - 1] != '\\' && !a.Append(L'\\')) ||
      !a.Append(name))
    return nullptr;
  return LoadLibraryExW(path, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

}  // namespace

unique_hmodule LoadOptionalLibrary(const WCHAR *name) {
  if (IsBlank(name)) return {};
  if (HasFolderPart(name)) return unique_hmodule(LoadLibraryW(name));
  if (SearchFlagsSupported())
    return unique_hmodule(LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_DEFAULT_DIRS));

  // The same search by hand: the application's folder, then the system folder.
  WCHAR folder[MAX_PATH];
  DWORD n = GetModuleFileNameW(nullptr, folder, MAX_PATH);
  if (n > 0 && n < MAX_PATH) {
    for (DWORD i = n; i > 0; --i) {
      if (folder[i - 1] == '\\') {
        folder[i - 1] = 0;
        break;
      }
    }
    if (HMODULE m = LoadFromFolder(folder, name)) return unique_hmodule(m);
  }
  n = GetSystemDirectoryW(folder, MAX_PATH);
  if (n > 0 && n < MAX_PATH) return unique_hmodule(LoadFromFolder(folder, name));
  return {};
}

HMODULE PictureLibrary() {
  static const WCHAR kLibrary[] = L"kv32.dll";
  if (!g.pictureModule) {
    unique_hmodule module = LoadOptionalLibrary(kLibrary);
    if (!module) {
      ReportError(IDS_ERR_PICTURE_LIBRARY, kLibrary);
      return nullptr;
    }
    g.pictureModule = module.release();
  }
  return g.pictureModule;
}

}  // namespace tv
