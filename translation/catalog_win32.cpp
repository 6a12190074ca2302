// The gettext bridge on Windows: files in and out, error reports, and the
// catalog provider installed into the translation slot.
#include <tavona/translation.h>

#include "frame/globals.h"
#include "frame/handles.h"
#include "frame/report.h"
#include "base/wstr.h"
#include "translation/catalog.h"
#include "frame/lts_windows.h"
#include "tvres.h"

#include <new>

namespace tv {

namespace {

Catalog *g_catalog = nullptr;

// The whole file, or false after reporting 1341.
bool ReadWholeFile(const WCHAR *name, Growing<unsigned char> &out) {
  unique_hfile file(CreateFileW(name, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
  LARGE_INTEGER size = {};
  if (!file || !GetFileSizeEx(file.get(), &size)) {
    ReportError(IDS_ERR_FILE_OPEN, name);
    return false;
  }
  // Catalogs and logs are text: beyond 1 GiB is taken as running out of memory.
  if (size.QuadPart > (1 << 30)) {
    ReportError(IDS_ERR_OUT_OF_MEMORY);
    return false;
  }
  if (!out.Resize(static_cast<size_t>(size.QuadPart))) return false;
  DWORD got = 0;
  if (size.QuadPart && (!ReadFile(file.get(), out.Data(), static_cast<DWORD>(size.QuadPart), &got, nullptr) ||
                        got != size.QuadPart)) {
    ReportError(IDS_ERR_FILE_OPEN, name);
    return false;
  }
  return true;
}

void ReportProblem(UINT message, const WCHAR *file, const CatalogProblem &problem) {
  WCHAR line[16], reason[300];
  Format(line, 16, L"%d", problem.line);
  if (LoadTranslatedString(g.resources, IDS_LTS_REASON_BASE + static_cast<UINT>(problem.error), reason,
                           300) < 1)
    reason[0] = 0;
  ReportError(message, file, line, reason);
}

INT WINAPI CatalogProvider(const WCHAR *module, const WCHAR *section, const WCHAR *key, WCHAR *text,
                           INT size) {
  const WCHAR *found = g_catalog ? g_catalog->Find(module, section, key) : nullptr;
  if (found) {
    EscapeBackslashes(found, text, size);
  } else {
    // Untranslated texts must survive the decoding that follows.
    bool backslash = false;
    for (const WCHAR *p = text; *p && !backslash; ++p) backslash = *p == '\\';
    if (backslash) {
      HeapPtr<WCHAR> copy(DuplicateWideString(text));
      if (copy) EscapeBackslashes(copy.get(), text, size);
    }
  }
  return 0;
}

void ReleaseCatalog() {
  if (!g_catalog) return;
  g_catalog->~Catalog();
  FreeMem(g_catalog);
  g_catalog = nullptr;
}

}  // namespace

}  // namespace tv

using namespace tv;

extern "C" {

INT WINAPI Tavona_LtsExportCatalog(const WCHAR *logFile, const WCHAR *catalogFile,
                                   const WCHAR *modules) {
  if (IsBlank(logFile) || IsBlank(catalogFile)) return -1;
  Growing<unsigned char> log;
  if (!ReadWholeFile(logFile, log)) return -1;
  Growing<char> out;
  CatalogProblem problem;
  int entries = ExportCatalog(log.Data(), log.Size(), modules, out, problem);
  if (entries < 0) {
    if (problem.error != CatalogError::kMemory) ReportProblem(IDS_ERR_LTS_LOG_READ, logFile, problem);
    return -1;
  }
  unique_hfile file(CreateFileW(catalogFile, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
  DWORD written = 0;
  if (!file || !WriteFile(file.get(), out.Data(), static_cast<DWORD>(out.Size()), &written, nullptr) ||
      written != out.Size()) {
    ReportError(IDS_ERR_FILE_SAVE, catalogFile);
    return -1;
  }
  return entries;
}

INT WINAPI Tavona_LtsLoadCatalog(const WCHAR *catalogFile) {
  if (IsBlank(catalogFile)) return -1;
  Growing<unsigned char> bytes;
  if (!ReadWholeFile(catalogFile, bytes)) return -1;
  void *memory = AllocBytes(sizeof(Catalog));
  if (!memory) return -1;
  Catalog *catalog = new (memory) Catalog();
  CatalogProblem problem;
  if (!catalog->Load(bytes.Data(), bytes.Size(), problem)) {
    if (problem.error != CatalogError::kMemory) ReportProblem(IDS_ERR_LTS_CATALOG, catalogFile, problem);
    catalog->~Catalog();
    FreeMem(memory);
    return -1;
  }
  SetLtsProvider(CatalogProvider, nullptr, ReleaseCatalog);
  g_catalog = catalog;
  return catalog->Count();
}

}  // extern "C"
