// Open, save and folder dialogs: filters written with a visible separator,
// titles and filters from string resources (translated), the last chosen
// name remembered in the settings store, picture filters from the picture
// library's formats.
#include <tavona/files.h>
#include <tavona/settings.h>

#include <commdlg.h>
#include <shlobj.h>

#include "frame/alloc.h"
#include "frame/globals.h"
#include "frame/optlib.h"
#include "frame/report.h"
#include "settings/regread.h"
#include "base/wstr.h"
#include "frame/lts.h"
#include "tvres.h"

#if !defined(_WIN64)
static_assert(offsetof(TavonaFileNameRequest, module) == 4);
static_assert(offsetof(TavonaFileNameRequest, filterId) == 8);
static_assert(offsetof(TavonaFileNameRequest, filter) == 12);
static_assert(offsetof(TavonaFileNameRequest, titleId) == 16);
static_assert(offsetof(TavonaFileNameRequest, title) == 20);
static_assert(offsetof(TavonaFileNameRequest, root) == 24);
static_assert(offsetof(TavonaFileNameRequest, key) == 28);
static_assert(offsetof(TavonaFileNameRequest, section) == 32);
static_assert(offsetof(TavonaFileNameRequest, profile) == 36);
static_assert(offsetof(TavonaFileNameRequest, value) == 40);
static_assert(offsetof(TavonaFileNameRequest, flags) == 44);
static_assert(offsetof(TavonaFileNameRequest, ltsModule) == 48);
static_assert(sizeof(TavonaFileNameRequest) == 52);
#else
static_assert(offsetof(TavonaFileNameRequest, flags) == 88);
static_assert(sizeof(TavonaFileNameRequest) == 104);
#endif

namespace {

constexpr int kDirChars = 256;
constexpr int kFilterChars = 2000;
constexpr int kExtChars = 100;

// The text after the last dot ("" without one).
const WCHAR *ExtensionOf(const WCHAR *name) {
  const WCHAR *dot = nullptr;
  for (const WCHAR *p = name; *p; ++p)
    if (*p == '.') dot = p;
  return dot ? dot + 1 : L"";
}

// Copies at most size - 1 characters; a longer text is cut.
void CopyCut(WCHAR *dst, const WCHAR *src, int size) {
  int n = tv::LenBounded(src, size - 1);
  tv::CopyRaw(dst, src, n);
  dst[n] = 0;
}

// Every occurrence of the last character becomes a zero, which turns
// "Text|*.txt|All|*.*|" into the double-zero-terminated filter list.
void SeparatorsToZeros(WCHAR *filter) {
  int len = tv::Len(filter);
  if (len == 0) return;
  WCHAR separator = filter[len - 1];
  for (int i = 0; i < len; ++i)
    if (filter[i] == separator) filter[i] = 0;
}

// The index (from 1) of the first pair whose pattern has the name's
// extension, 1 when none has; its pattern's extension goes to defExt
// unless it is a wildcard.
DWORD MatchFilter(const WCHAR *filter, const WCHAR *name, WCHAR *defExt) {
  defExt[0] = 0;
  const WCHAR *wanted = ExtensionOf(name);
  const WCHAR *firstPattern = nullptr;
  DWORD index = 0, chosen = 0;
  const WCHAR *chosenPattern = nullptr;
  for (const WCHAR *p = filter; *p;) {
    const WCHAR *pattern = p + tv::Len(p) + 1;  // description, then pattern
    if (!*pattern) break;
    ++index;
    if (!firstPattern) firstPattern = pattern;
    if (!chosen && lstrcmpiW(ExtensionOf(pattern), wanted) == 0) {
      chosen = index;
      chosenPattern = pattern;
    }
    p = pattern + tv::Len(pattern) + 1;
  }
  if (!chosen) {
    chosen = 1;
    chosenPattern = firstPattern;
  }
  if (chosenPattern) {
    const WCHAR *ext = ExtensionOf(chosenPattern);
    bool wild = false;
    for (const WCHAR *q = ext; *q; ++q)
      if (*q == '*' || *q == '?' || *q == ';') wild = true;
    if (!wild) CopyCut(defExt, ext, kExtChars);
  }
  return chosen;
}

// Copies count BYTES of src to dst, i.e. the first count / 2 characters
// (and the low byte of the next one for an odd count); whole characters
// for the library's own callers.
void ByteCopy(WCHAR *dst, const WCHAR *src, int count, bool whole = false) {
  if (count > 0) CopyMemory(dst, src, size_t(count) * (whole ? sizeof(WCHAR) : 1));
}

// The platform's multiple selection ("dir\0name\0name\0\0") as a list of
// "dir\name" entries in the caller's buffer. Each part is copied with a
// byte count equal to its length in characters, as it always was: only
// the first half of its characters land, the rest of the slot keeps what
// the buffer held.
void SpreadSelection(WCHAR *out, int size, const WCHAR *selection, bool whole = false) {
  const WCHAR *dir = selection;
  int dirLen = tv::Len(dir);
  int pos = 0;
  for (const WCHAR *name = dir + dirLen + 1; *name; name += tv::Len(name) + 1) {
    int nameLen = tv::Len(name);
    if (dirLen + nameLen + 2 >= size - pos) break;
    ByteCopy(out + pos, dir, dirLen, whole);
    out[pos + dirLen] = '\\';
    ByteCopy(out + pos + dirLen + 1, name, nameLen, whole);
    out[pos + dirLen + 1 + nameLen] = 0;
    pos += dirLen + nameLen + 2;
  }
  if (pos < size) out[pos] = 0;
}

// True when the dialog returned several names (a zero right after the
// first string means one full name).
bool SeveralNames(const WCHAR *selection, int size) {
  int len = tv::Len(selection);
  return len + 1 < size && selection[len + 1] != 0;
}

UINT PictureDescription(const WCHAR *ext) {
  static const struct {
    const WCHAR *ext;
    UINT id;
  } kKnown[] = {{L"BMP", IDS_PICTURE_BMP},
                {L"WMF", IDS_PICTURE_WMF},
                {L"EMF", IDS_PICTURE_EMF},
                {L"PNG", IDS_PICTURE_PNG}};
  for (const auto &k : kKnown)
    if (lstrcmpiW(ext, k.ext) == 0) return k.id;
  return IDS_PICTURE_OTHER;
}

// "Description  (*.ext)|*.ext|" for every extension the picture library
// lists (kind 1 or 2); empty when the library or its list is missing.
void BuildPictureFilter(WCHAR *filter, int size, int kind) {
  filter[0] = 0;
  HMODULE library = tv::PictureLibrary();
  if (!library) return;
  using ListFn = INT(WINAPI *)(INT, WCHAR *, INT);
  auto list = reinterpret_cast<ListFn>(
      reinterpret_cast<void *>(GetProcAddress(library, "GetExtensionList")));
  if (!list) {
    tv::ReportError(IDS_ERR_LIBRARY_ENTRY, L"GetExtensionList", L"kv32.dll");
    return;
  }
  WCHAR extensions[500];
  extensions[0] = 0;
  list(kind, extensions, 500);
  extensions[499] = 0;
  CharLowerW(extensions);
  tv::Appender out(filter, size);
  const WCHAR *cursor = extensions;
  WCHAR ext[50];
  while (tv::ReadField(cursor, '\t', ext, 50)) {
    if (!ext[0]) continue;
    WCHAR description[100];
    tv::LoadTranslatedString(tv::g.resources, PictureDescription(ext), description, 100);
    WCHAR entry[300];
    tv::Format(entry, 300, L"%s  (*.%s)|*.%s|", description, ext, ext);
    if (!out.Append(entry)) break;
  }
}

// A string resource of module translated under ltsModule (null: the
// library's own name).
void LoadText(HMODULE module, UINT id, const WCHAR *ltsModule, WCHAR *out, int size) {
  out[0] = 0;
  if (!module || !id) return;
  if (LoadStringW(module, id, out, size) < 1) {
    out[0] = 0;
    return;
  }
  tv::LtsTranslateText(ltsModule ? ltsModule : tv::g.ltsModuleName, out, size);
}

// The four working buffers of one dialog.
struct Buffers {
  tv::HeapPtr<WCHAR> work, dir, filter, title;
  bool Allocate(int size, int titleChars) {
    work = tv::HeapPtr<WCHAR>(tv::AllocWideChars(UINT(size)));
    dir = tv::HeapPtr<WCHAR>(tv::AllocWideChars(kDirChars));
    filter = tv::HeapPtr<WCHAR>(tv::AllocWideChars(kFilterChars));
    title = tv::HeapPtr<WCHAR>(tv::AllocWideChars(UINT(titleChars)));
    return work && dir && filter && title;
  }
  // The common dialog's record: the file name alone in the work buffer, its
  // folder as the start, the filter entry and default extension that match
  // it. Flags are the caller's.
  OPENFILENAMEW Prepare(const WCHAR *name, int size, WCHAR (&defExt)[kExtChars]) {
    CopyCut(work.get(), name, size);
    Tavona_StripPath(work.get());
    CopyCut(dir.get(), name, kDirChars);
    Tavona_StripFileName(dir.get());
    OPENFILENAMEW ofn = {};
    ofn.lStructSize = sizeof ofn;
    ofn.hwndOwner = GetActiveWindow();
    ofn.lpstrFilter = filter[0] ? filter.get() : nullptr;
    ofn.nFilterIndex = MatchFilter(filter.get(), work.get(), defExt);
    ofn.lpstrFile = work.get();
    ofn.nMaxFile = DWORD(size);
    ofn.lpstrInitialDir = dir[0] ? dir.get() : nullptr;
    ofn.lpstrTitle = title[0] ? title.get() : nullptr;
    ofn.lpstrDefExt = defExt[0] ? defExt : nullptr;
    return ofn;
  }
};

}  // namespace

INT WINAPI Tavona_ExtendedFileNameDialog(WCHAR *name, INT size,
                                         const TavonaFileNameRequest *request) {
  if (!name || size < 1 || !request) return 0;
  Buffers b;
  if (!b.Allocate(size, 200)) {
    tv::ReportError(IDS_ERR_OUT_OF_MEMORY);
    return 0;
  }
  const TavonaFileNameRequest &r = *request;
  const DWORD flags = r.flags;

  if (r.title && r.title[0])
    CopyCut(b.title.get(), r.title, 200);
  else
    LoadText(r.module, r.titleId, r.ltsModule, b.title.get(), 200);

  if (flags & TAVONA_FND_PICTURES)
    BuildPictureFilter(b.filter.get(), kFilterChars, (flags & TAVONA_FND_PICTURE_KIND1) ? 1 : 2);
  else if (r.filter && r.filter[0])
    CopyCut(b.filter.get(), r.filter, kFilterChars);
  else
    LoadText(r.module, r.filterId, r.ltsModule, b.filter.get(), kFilterChars);
  SeparatorsToZeros(b.filter.get());

  HKEY root = r.root ? r.root : HKEY_CURRENT_USER;
  const bool remembered = !tv::IsBlank(r.section) && !tv::IsBlank(r.value);
  if (!(flags & TAVONA_FND_NOPRESET) && remembered)
    tv::ReadSettingString(root, r.key, r.profile, r.section, r.value, L"", name, size);

  WCHAR defExt[kExtChars];
  OPENFILENAMEW ofn = b.Prepare(name, size, defExt);
  DWORD common = OFN_EXPLORER | OFN_LONGNAMES | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY;
  if (flags & TAVONA_FND_SAVE)
    ofn.Flags = common | OFN_SHAREAWARE | OFN_OVERWRITEPROMPT;
  else if (flags & TAVONA_FND_NOVALIDATE)
    ofn.Flags = common | OFN_NOVALIDATE;
  else
    ofn.Flags = common | OFN_SHAREAWARE | OFN_FILEMUSTEXIST;
  if (flags & TAVONA_FND_MULTISELECT) ofn.Flags |= OFN_ALLOWMULTISELECT;

  BOOL ok = (flags & TAVONA_FND_SAVE) ? GetSaveFileNameW(&ofn) : GetOpenFileNameW(&ofn);
  if (!ok) return 0;

  if ((flags & TAVONA_FND_MULTISELECT) && SeveralNames(b.work.get(), size)) {
    SpreadSelection(name, size, b.work.get());
  } else {
    ByteCopy(name, b.work.get(), size);
    name[size - 1] = 0;
    if (size > 1) name[size - 2] = 0;
  }
  if (!(flags & TAVONA_FND_NOSTORE) && remembered)
    tv::WriteSettingString(root, r.key, r.profile, r.section, r.value, name);
  return ofn.nFilterIndex ? INT(ofn.nFilterIndex) : 1;
}

UINT_PTR CALLBACK ExtendedFileNameDialog(HWND dialog, UINT message, WPARAM wParam,
                                         LPARAM lParam) {
  constexpr UINT kPlace = WM_USER + 1;
  switch (message) {
    case WM_NOTIFY:
      return 0;
    case WM_INITDIALOG:
      // The explorer dialog is the hook dialog's parent and is not yet
      // placed: move it once the start-up is done.
      PostMessageW(dialog, kPlace, 0, 0);
      return 1;
    case kPlace:
      MoveWindow(GetParent(dialog), 150, 200, GetSystemMetrics(SM_CXSCREEN) - 300,
                 GetSystemMetrics(SM_CYSCREEN) - 600, TRUE);
      return 1;
  }
  return 0;
}

namespace {

int CALLBACK BrowseCallback(HWND window, UINT message, LPARAM, LPARAM data) {
  if (message == BFFM_INITIALIZED && data)
    SendMessageW(window, BFFM_SETSELECTIONW, TRUE, data);
  return 0;
}

// The same for open and save: see the header.
INT FileNameDialog(bool save, WCHAR *name, INT size, HMODULE module, UINT filterId,
                   UINT titleId, const WCHAR *profile, const WCHAR *section, const WCHAR *key,
                   const WCHAR *filter, DWORD flags, bool whole = false) {
  if (!name || size < 1) return 0;
  Buffers b;
  if (!b.Allocate(size, 100)) {
    tv::ReportError(IDS_ERR_OUT_OF_MEMORY);
    return 0;
  }
  LoadText(module, titleId, nullptr, b.title.get(), 100);
  if (filter && filter[0])
    CopyCut(b.filter.get(), filter, kFilterChars);
  else if (module && filterId)
    LoadText(module, filterId, nullptr, b.filter.get(), kFilterChars);
  else
    b.filter[0] = 0;
  SeparatorsToZeros(b.filter.get());

  const bool remembered = !tv::IsBlank(profile) && !tv::IsBlank(section) && !tv::IsBlank(key);
  if (remembered) GetPrivateProfileStringW(section, key, L"", name, DWORD(size), profile);

  WCHAR defExt[kExtChars];
  OPENFILENAMEW ofn = b.Prepare(name, size, defExt);
  ofn.Flags = flags | OFN_LONGNAMES | OFN_EXPLORER | OFN_SHAREAWARE | OFN_PATHMUSTEXIST |
              OFN_HIDEREADONLY | (save ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
  if (save) ofn.Flags &= ~DWORD(OFN_ALLOWMULTISELECT);
  if (!(save ? GetSaveFileNameW(&ofn) : GetOpenFileNameW(&ofn))) return 0;

  if (!save && (flags & OFN_ALLOWMULTISELECT) && SeveralNames(b.work.get(), size)) {
    SpreadSelection(name, size, b.work.get(), whole);
  } else if (whole) {
    tv::CopyRaw(name, b.work.get(), size);
  } else {
    if (save && size > 1) b.work[size - 2] = 0;
    ByteCopy(name, b.work.get(), size);
  }
  if (remembered) {
    // A cut name may have no terminator left in the buffer: store what the
    // buffer holds, and read nothing past it.
    if (tv::LenBounded(name, size) >= size) {
      CopyCut(b.work.get(), name, size);
      WritePrivateProfileStringW(section, key, b.work.get(), profile);
    } else {
      WritePrivateProfileStringW(section, key, name, profile);
    }
  }
  return ofn.nFilterIndex ? INT(ofn.nFilterIndex) : 1;
}

}  // namespace

INT WINAPI Tavona_DirectoryDialog(WCHAR *path, INT size, const WCHAR *title, DWORD flags) {
  WCHAR display[MAX_PATH];
  display[0] = 0;
  if (path && size > 0) CopyCut(display, path, MAX_PATH);
  BROWSEINFOW bi = {};
  bi.hwndOwner = GetActiveWindow();
  bi.pszDisplayName = display;
  bi.lpszTitle = title;
  bi.ulFlags = BIF_RETURNONLYFSDIRS;
  if (flags & TAVONA_DIR_NEWSTYLE) bi.ulFlags |= BIF_NEWDIALOGSTYLE;
  if (flags & TAVONA_DIR_EDITBOX) bi.ulFlags |= BIF_EDITBOX;
  bi.lpfn = BrowseCallback;
  bi.lParam = display[0] ? reinterpret_cast<LPARAM>(display) : 0;
  PIDLIST_ABSOLUTE item = SHBrowseForFolderW(&bi);
  if (!item) return 2;
  WCHAR chosen[MAX_PATH];
  BOOL isPath = SHGetPathFromIDListW(item, chosen);
  CoTaskMemFree(item);
  if (!isPath) return 2;
  if (path && size > 0) tv::BoundedCopy(path, chosen, size);
  return 1;
}

INT WINAPI Tavona_OpenFileNameDialog(WCHAR *name, INT size, HMODULE module, UINT filterId,
                                     UINT titleId, const WCHAR *profile, const WCHAR *section,
                                     const WCHAR *key, const WCHAR *filter, DWORD flags) {
  return FileNameDialog(false, name, size, module, filterId, titleId, profile, section, key,
                        filter, flags);
}

INT WINAPI Tavona_SaveFileNameDialog(WCHAR *name, INT size, HMODULE module, UINT filterId,
                                     UINT titleId, const WCHAR *profile, const WCHAR *section,
                                     const WCHAR *key, const WCHAR *filter, DWORD flags) {
  return FileNameDialog(true, name, size, module, filterId, titleId, profile, section, key,
                        filter, flags);
}

INT WINAPI Tavona_FileName_Dialog(WCHAR *name, INT size, INT selector, HMODULE module,
                                  UINT filterId, UINT titleId, const WCHAR *profile,
                                  const WCHAR *section, const WCHAR *key, const WCHAR *filter,
                                  DWORD flags) {
  return FileNameDialog(selector != 1, name, size, module, filterId, titleId, profile, section,
                        key, filter, flags);
}

// Takes the names whole, unlike the exported open dialog, so that what the
// user confirms is the file that gets deleted.
INT WINAPI Tavona_DeleteFilesDialog(const WCHAR *folder, const WCHAR *filter) {
  constexpr int kChars = 30000;
  tv::HeapPtr<WCHAR> names(tv::AllocWideChars(kChars));
  if (!names) return 0;
  names[0] = 0;
  // A trailing backslash makes the folder the initial directory.
  if (!tv::IsBlank(folder)) {
    tv::Appender a(names.get(), kChars);
    if (!a.Append(folder) || (names[a.Length() - 1] != '\\' && !a.Append(L'\\'))) names[0] = 0;
  }
  if (!FileNameDialog(false, names.get(), kChars, tv::g.resources, 0, IDS_TITLE_DELETE_FILES,
                      nullptr, nullptr, nullptr, filter ? filter : L"*.*|*.*|",
                      OFN_ALLOWMULTISELECT, true))
    return 0;
  int deleted = 0;
  for (const WCHAR *entry = names.get(); *entry; entry += tv::Len(entry) + 1) {
    int answer = tv::ReportError(IDS_ASK_DELETE_FILE, entry);
    if (answer == IDCANCEL) break;
    if (answer == IDYES && DeleteFileW(entry)) ++deleted;
  }
  return deleted;
}
