// Mail through Simple MAPI and the external editors. None of these
// libraries is linked: each call loads its library, calls one entry and
// frees it, so an installation without them runs and only the feature
// reports that it is missing.
#include <tavona/settings.h>

#include <mapi.h>

#include "frame/alloc.h"
#include "frame/globals.h"
#include "frame/optlib.h"
#include "frame/platform.h"
#include "frame/report.h"
#include "base/wstr.h"
#include "frame/lts.h"
#include "tvres.h"

namespace {

// Splits a ';'-separated list in place into "a\0b\0": runs of separators
// end one entry, empty entries are dropped. Returns the number of entries.
int SplitList(WCHAR *list) {
  if (!list) return 0;
  int count = 0, out = 0;
  bool inEntry = false;
  for (const WCHAR *p = list; *p; ++p) {
    if (*p == ';') {
      if (inEntry) list[out++] = 0;
      inEntry = false;
    } else {
      if (!inEntry) ++count;
      inEntry = true;
      list[out++] = *p;
    }
  }
  list[out] = 0;
  return count;
}

const WCHAR *NextEntry(const WCHAR *entry) { return entry + tv::Len(entry) + 1; }

// The ANSI copies handed to MAPI, released together.
class AnsiTexts {
 public:
  ~AnsiTexts() {
    for (int i = 0; i < count_; ++i) tv::FreeMem(texts_[i]);
    tv::FreeMem(texts_);
  }
  bool Reserve(int n) {
    texts_ = static_cast<char **>(tv::AllocBytes(uint64_t(n) * sizeof(char *)));
    capacity_ = texts_ ? n : 0;
    return texts_ != nullptr;
  }
  // The process's ANSI code page; null for a null text or when memory runs
  // out.
  char *Add(const WCHAR *text) {
    if (!text || count_ >= capacity_) return nullptr;
    int bytes = tv::plat::WideToAnsi(text, nullptr, 0);
    if (bytes < 1) return nullptr;
    char *copy = static_cast<char *>(tv::AllocBytes(uint64_t(bytes)));
    if (!copy) return nullptr;
    if (tv::plat::WideToAnsi(text, copy, bytes) < 1) copy[0] = 0;
    texts_[count_++] = copy;
    return copy;
  }

 private:
  char **texts_ = nullptr;
  int capacity_ = 0;
  int count_ = 0;
};

// Loads an optional library and one of its entries, reporting 1342 or
// 1343. Null when either is missing (the module is then released).
FARPROC LoadEntry(const WCHAR *library, const char *entry, const WCHAR *entryName,
                  tv::unique_hmodule &module, bool report = true) {
  module = tv::LoadOptionalLibrary(library);
  if (!module) {
    if (report) tv::ReportError(IDS_ERR_LIBRARY_LOAD, library);
    return nullptr;
  }
  FARPROC proc = GetProcAddress(module.get(), entry);
  if (!proc) {
    if (report) tv::ReportError(IDS_ERR_LIBRARY_ENTRY, entryName, library);
    module.reset();
  }
  return proc;
}

template <typename Fn>
Fn As(FARPROC proc) {
  return reinterpret_cast<Fn>(reinterpret_cast<void *>(proc));
}

// The message of a MAPI error code (0 when the table has none). Code 7
// has no text; code 16 has 2964.
UINT MapiMessageId(ULONG code) {
  static const struct {
    LONG code;
    UINT id;
  } kTable[] = {{1, 1850},  {2, 1851},  {3, 1852},  {4, 1853},  {5, 1854},  {6, 1855},
                {8, 1856},  {9, 1857},  {10, 1858}, {11, 1859}, {12, 1860}, {13, 1861},
                {14, 1862}, {15, 1863}, {16, 2964}, {17, 1865}, {18, 1866}, {19, 1867},
                {20, 1868}, {21, 1869}, {22, 1870}, {23, 1871}, {24, 1872}, {25, 1873},
                {26, 1874}, {-1, 0}};
  for (int i = 0; kTable[i].code != -1; ++i)
    if (ULONG(kTable[i].code) == code) return kTable[i].id;
  return 0;
}

}  // namespace

INT WINAPI Tavona_DisplayMapiError(HWND owner, ULONG code, const WCHAR *routine, LPARAM) {
  if (code == 0) return 1;
  WCHAR title[100];
  tv::LoadTranslatedString(tv::g.resources, IDS_CAPTION_MAPI_ERROR, title, 100);
  WCHAR native[200];
  tv::Format(native, 200, L"Mapi-Error %d (hex %X) in Routine '%s'", code, code,
             routine ? routine : L"");
  constexpr int kTextChars = 400 + 2 + 200;
  WCHAR text[kTextChars];
  text[0] = 0;
  if (UINT id = MapiMessageId(code)) tv::LoadTranslatedString(tv::g.resources, id, text, 400);
  if (Tavona_ReadLongFromHKCU(L"Software\\Tavona Software\\Dump\\Mapi", nullptr,
                              L"DisplayNativeError", 0)) {
    tv::Appender a(text, kTextChars);
    a.Append(L"\r\n");
    a.Append(native);
  }
  if (tv::IsBlank(text)) lstrcpynW(text, native, kTextChars);
  MessageBoxW(owner, text, title, MB_OK);
  return 1;
}

INT WINAPI Tavona_SendMail(const WCHAR *sender, const WCHAR *to, const WCHAR *cc,
                           const WCHAR *bcc, const WCHAR *subject, const WCHAR *text,
                           const WCHAR *attachments) {
  HWND owner = GetActiveWindow();
  static const WCHAR kLibrary[] = L"MAPI32.DLL";
  tv::unique_hmodule mapi;
  auto send = As<LPMAPISENDMAIL>(LoadEntry(kLibrary, "MAPISendMail", L"MAPISendMail", mapi));
  if (!send) return -1;

  // Recipients by class: to (1), cc (2), bcc (3).
  const WCHAR *lists[3] = {to, cc, bcc};
  tv::HeapPtr<WCHAR> copies[3];
  int counts[3] = {};
  int recipients = 0;
  for (int k = 0; k < 3; ++k) {
    copies[k] = tv::HeapPtr<WCHAR>(tv::DuplicateWideString(lists[k]));
    counts[k] = SplitList(copies[k].get());
    recipients += counts[k];
  }
  tv::HeapPtr<WCHAR> files(tv::DuplicateWideString(attachments));
  int fileCount = SplitList(files.get());

  AnsiTexts ansi;
  ansi.Reserve(3 + recipients + fileCount);

  tv::HeapPtr<MapiRecipDesc> recips(
      recipients ? static_cast<MapiRecipDesc *>(
                       tv::AllocBytes(uint64_t(recipients) * sizeof(MapiRecipDesc)))
                 : nullptr);
  ULONG recipCount = 0;
  if (recips) {
    for (int k = 0; k < 3; ++k) {
      const WCHAR *entry = copies[k].get();
      for (int i = 0; i < counts[k]; ++i, entry = NextEntry(entry)) {
        MapiRecipDesc &r = recips[recipCount++];
        r = MapiRecipDesc{};
        r.ulRecipClass = ULONG(k + 1);
        r.lpszName = ansi.Add(entry);
      }
    }
  }
  tv::HeapPtr<MapiFileDesc> fileRecords(
      fileCount ? static_cast<MapiFileDesc *>(
                      tv::AllocBytes(uint64_t(fileCount) * sizeof(MapiFileDesc)))
                : nullptr);
  ULONG fileRecordCount = 0;
  if (fileRecords) {
    const WCHAR *entry = files.get();
    for (int i = 0; i < fileCount; ++i, entry = NextEntry(entry)) {
      MapiFileDesc &f = fileRecords[fileRecordCount++];
      f = MapiFileDesc{};
      f.nPosition = ULONG(-1);  // not placed in the text
      f.lpszPathName = ansi.Add(entry);
    }
  }

  MapiRecipDesc originator = {};
  originator.ulRecipClass = MAPI_ORIG;
  originator.lpszName = ansi.Add(sender);

  char dateReceived[] = "2002/09/16 23:23";
  char conversation[] = "TS";
  MapiMessage message = {};
  message.lpszSubject = ansi.Add(subject);
  message.lpszNoteText = ansi.Add(text);
  message.lpszDateReceived = dateReceived;
  message.lpszConversationID = conversation;
  message.lpOriginator = &originator;
  message.nRecipCount = recipCount;
  message.lpRecips = recipCount ? recips.get() : nullptr;
  message.nFileCount = fileRecordCount;
  message.lpFiles = fileRecordCount ? fileRecords.get() : nullptr;

  ULONG result = send(0, ULONG_PTR(owner), &message, MAPI_DIALOG, 0);
  if (result != SUCCESS_SUCCESS && result != MAPI_USER_ABORT)
    Tavona_DisplayMapiError(owner, result, L"MAPISendMail", 0);
  return 0;
}

INT WINAPI Tavona_ModalEditor(INT mode, LPARAM v1, LPARAM v2, LPARAM v3, LPARAM v4, LPARAM v5,
                              LPARAM v6, LPARAM v7) {
  if (mode != 1) return 2;
  using EditorFn = INT(WINAPI *)(LPARAM, LPARAM, LPARAM, LPARAM, LPARAM, LPARAM, LPARAM, LPARAM);
  tv::unique_hmodule module;
  auto editor = As<EditorFn>(LoadEntry(L"xeddll.dll", "Xed_ModalEditor", L"Xed_ModalEditor",
                                       module));
  if (!editor) return 2;
  return editor(v1, v2, v3, v4, v5, v6, v7, 0);
}

namespace {
using EditRtfFn = INT(WINAPI *)(LPARAM, LPARAM, LPARAM);
FARPROC LoadRtfEditor(tv::unique_hmodule &module, bool report) {
  return LoadEntry(L"TAVONAEX.DLL", "TavonaExt_EditRTF", L"TavonaExt_EditRTF", module, report);
}
}  // namespace

INT WINAPI Tavona_EditRtf(LPARAM v1, LPARAM v2, LPARAM v3) {
  tv::unique_hmodule module;
  auto edit = As<EditRtfFn>(LoadRtfEditor(module, true));
  if (!edit) return 0;
  return edit(v1, v2, v3);
}

INT WINAPI Tavona_IsRtfEditorAvailable(void) {
  tv::unique_hmodule module;
  return LoadRtfEditor(module, false) ? 1 : 0;
}
