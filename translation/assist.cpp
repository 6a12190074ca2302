// The LTS exports: translating texts, dialogs and menus, the provider slot,
// and the assistance mode that collects every text of a module's resources
// into the translation log.
#include <tavona/settings.h>
#include <tavona/text.h>
#include <tavona/translation.h>

#include "base/ltskey.h"
#include "frame/alloc.h"
#include "frame/dialog.h"
#include "frame/globals.h"
#include "frame/report.h"
#include "base/wstr.h"
#include "translation/catalog.h"
#include "frame/lts_windows.h"
#include "tvres.h"

#include <commdlg.h>

namespace tv {

namespace {

constexpr const WCHAR *kLtsKey = L"Software\\Tavona Language Translation System";
constexpr int kTextSize = 500;
constexpr int kStringSize = 300;
constexpr int kMaxIds = 10000;

// The five texts template 117 shows.
struct TextDisplay {
  const WCHAR *module, *section, *key, *source, *translated;
};

// A copy with every line feed turned into CR LF, for an edit control.
HeapPtr<WCHAR> WithCrLf(const WCHAR *text) {
  int n = Len(text), feeds = 0;
  for (int i = 0; i < n; ++i) feeds += text[i] == '\n';
  HeapPtr<WCHAR> out(AllocWideChars(static_cast<UINT>(n + feeds + 1)));
  if (!out) return out;
  int w = 0;
  for (int i = 0; i < n; ++i) {
    if (text[i] == '\n') out[w++] = '\r';
    out[w++] = text[i];
  }
  out[w] = 0;
  return out;
}

INT_PTR CALLBACK TextDisplayProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  TextDisplay *t = DialogRecord<TextDisplay>(dialog, message, lParam);
  switch (message) {
    case WM_INITDIALOG: {
      SetDlgItemTextW(dialog, IDC_LTS_MODULE, t->module);
      SetDlgItemTextW(dialog, IDC_LTS_SECTION, t->section);
      SetDlgItemTextW(dialog, IDC_LTS_KEY, t->key);
      HeapPtr<WCHAR> source = WithCrLf(t->source);
      if (source) SetDlgItemTextW(dialog, IDC_LTS_SOURCE, source.get());
      HeapPtr<WCHAR> translated = WithCrLf(t->translated);
      if (translated) SetDlgItemTextW(dialog, IDC_LTS_TRANSLATED, translated.get());
      return TRUE;
    }
    case WM_COMMAND:
      switch (LOWORD(wParam)) {
        case IDOK: EndDialog(dialog, 1); return TRUE;
        case IDCANCEL: EndDialog(dialog, 2); return TRUE;
        case IDC_LTS_STOP: EndDialog(dialog, LTS_STOP_PASS); return TRUE;
      }
      break;
  }
  return FALSE;
}

// Collects one text into the pass's line list: 1 to go on, 2 to abort,
// LTS_STOP_PASS to stop the pass.
int CollectText(LtsAssistanceContext *context, const WCHAR *text) {
  if (!text || !context->moduleName || !context->sectionName || IsBlank(text) || !context->lines)
    return 1;
  WCHAR key[kLtsKeySize];
  LtsMakeKey(text, key, kLtsKeySize);
  WCHAR copy[kTextSize];
  CopyRaw(copy, text, LenBounded(text, kTextSize - 1));
  copy[LenBounded(text, kTextSize - 1)] = 0;
  LtsTranslate(context->moduleName, context->sectionName, copy, kTextSize);
  WCHAR escaped[kTextSize];
  Tavona_EncodeString(copy, escaped, kTextSize, TAVONA_ENCODE_LEADING_SPACES);
  WCHAR line[kTextSize];
  Format(line, kTextSize, L"%s=%s", key, escaped);
  if (LineListFind(context->lines, line) >= 0) return 1;
  if (!LineListAdd(context->lines, line)) return 2;
  if (!(context->flags & LTS_FLAG_CONFIRM_EACH)) return 1;
  TextDisplay display = {context->moduleName, context->sectionName, key, text, copy};
  return static_cast<int>(RunDialog(IDD_LTS_TEXT, TextDisplayProc, reinterpret_cast<LPARAM>(&display)));
}

int CollectWindowText(LtsAssistanceContext *context, HWND window) {
  WCHAR text[kTextSize];
  if (GetWindowTextW(window, text, kTextSize) < 1) text[0] = 0;
  return CollectText(context, text);
}

// Not through the dialog base: these are the module's own dialogs, and their
// texts are collected as they stand, untranslated.
INT_PTR CALLBACK CollectDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) SetWindowLongPtrW(dialog, DWLP_USER, lParam);
  auto *context = reinterpret_cast<LtsAssistanceContext *>(GetWindowLongPtrW(dialog, DWLP_USER));
  switch (message) {
    case WM_INITDIALOG: {
      int result = CollectWindowText(context, dialog);
      for (HWND child = GetWindow(dialog, GW_CHILD); child && result == 1;
           child = GetWindow(child, GW_HWNDNEXT)) {
        if (IsLtsTextClass(child)) result = CollectWindowText(context, child);
      }
      bool child = (GetWindowLongW(dialog, GWL_STYLE) & WS_CHILD) != 0;
      if (result == 1 && (context->flags & LTS_FLAG_SHOW_DIALOGS) && !child) {
        LtsTranslateDialog(dialog, context->moduleName, context->sectionName);
        SetFocus(GetDlgItem(dialog, IDOK));
        return FALSE;
      }
      EndDialog(dialog, result);
      return TRUE;
    }
    case WM_COMMAND:
      if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) {
        EndDialog(dialog, 1);
        return TRUE;
      }
      break;
  }
  return FALSE;
}

// Depth first; the first result other than 1 ends the walk.
int CollectMenu(LtsAssistanceContext *context, HMENU menu) {
  int count = GetMenuItemCount(menu);
  for (int pos = 0; pos < count; ++pos) {
    WCHAR text[kLtsMenuText];
    if (GetMenuStringW(menu, pos, text, kLtsMenuText, MF_BYPOSITION) > 0 && text[0]) {
      int result = CollectText(context, text);
      if (result != 1) return result;
    }
    if (GetMenuItemID(menu, pos) == 0xFFFFFFFF) {
      int result = CollectMenu(context, GetSubMenu(menu, pos));
      if (result != 1) return result;
    }
  }
  return 1;
}

bool WriteBytes(void *sink, const void *bytes, size_t count) {
  DWORD written = 0;
  return WriteFile(static_cast<HANDLE>(sink), bytes, static_cast<DWORD>(count), &written, nullptr) &&
         written == count;
}

// One pass over the resources of one type; 1 or 2.
int RunPass(LtsAssistanceContext *context, HMODULE resources, const WCHAR *module, UINT type,
            const WCHAR *section) {
  context->moduleName = module;
  context->sectionName = section;
  if (context->logFile) {
    LARGE_INTEGER zero = {}, position = {};
    SetFilePointerEx(context->logFile, zero, &position, FILE_CURRENT);
    if (position.QuadPart > 0 && !WriteBytes(context->logFile, "\r\n\r\n", 4)) return 2;
    char header[600];
    int n = LtsHeaderBytes(module, section, header, sizeof header);
    if (!WriteBytes(context->logFile, header, static_cast<size_t>(n))) return 2;
  }
  LineListClear(context->lines);

  HeapPtr<INT> ids(static_cast<INT *>(AllocBytes(sizeof(INT) * kMaxIds)));
  if (!ids) return 2;
  int count = Tavona_GetListOfResourceIds(resources, type, ids.get(), kMaxIds);
  if (count < 0) count = 0;
  if (count > kMaxIds - 1) count = kMaxIds - 1;
  ids[static_cast<size_t>(count)] = 0;

  for (int i = 0; ids[static_cast<size_t>(i)] != 0; ++i) {
    UINT id = static_cast<UINT>(ids[static_cast<size_t>(i)]);
    int result = 1;
    if (type == 6) {
      WCHAR text[kStringSize];
      if (LoadStringW(resources, id, text, kStringSize) < 1) text[0] = 0;
      result = CollectText(context, text);
    } else if (type == 5) {
      result = static_cast<int>(DialogBoxParamW(resources, MAKEINTRESOURCEW(id), GetActiveWindow(),
                                                CollectDialogProc,
                                                reinterpret_cast<LPARAM>(context)));
    } else {
      HMENU menu = LoadMenuW(resources, MAKEINTRESOURCEW(id));
      if (menu) {
        result = CollectMenu(context, menu);
        DestroyMenu(menu);
      }
    }
    if (result == 2) return 2;
    if (result == LTS_STOP_PASS) return 1;  // the pass's lines are discarded
  }
  if (context->logFile && LineListWrite(context->lines, WriteBytes, context->logFile) != 0) return 2;
  return 1;
}

// The log file name chooser of template 116.
void BrowseLogFile(HWND dialog) {
  WCHAR name[MAX_PATH] = {};
  GetDlgItemTextW(dialog, IDC_LTS_LOGFILE, name, MAX_PATH);
  WCHAR filter[200] = {}, title[200] = {};
  LoadTranslatedString(g.resources, IDS_LTS_LOG_FILTER, filter, 200);
  LoadTranslatedString(g.resources, IDS_LTS_LOG_TITLE, title, 200);
  // The filter's last character separates its parts.
  int n = Len(filter);
  WCHAR separator = n ? filter[n - 1] : 0;
  for (int i = 0; i < n; ++i)
    if (filter[i] == separator) filter[i] = 0;
  OPENFILENAMEW ofn = {};
  ofn.lStructSize = sizeof ofn;
  ofn.hwndOwner = dialog;
  ofn.lpstrFilter = n ? filter : nullptr;
  ofn.lpstrFile = name;
  ofn.nMaxFile = 256;
  ofn.lpstrTitle = title[0] ? title : nullptr;
  ofn.lpstrDefExt = L"txt";
  ofn.Flags = OFN_EXPLORER | OFN_LONGNAMES | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT;
  if (GetSaveFileNameW(&ofn)) SetDlgItemTextW(dialog, IDC_LTS_LOGFILE, name);
}

struct FlagBox {
  int control;
  UINT flag;
};
constexpr FlagBox kFlagBoxes[] = {{IDC_LTS_WRITE_LOG, LTS_FLAG_WRITE_LOG},
                                  {IDC_LTS_SHOW_DIALOGS, LTS_FLAG_SHOW_DIALOGS},
                                  {IDC_LTS_CONFIRM, LTS_FLAG_CONFIRM_EACH}};

INT_PTR CALLBACK SettingsProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  LtsAssistanceContext *context = DialogRecord<LtsAssistanceContext>(dialog, message, lParam);
  switch (message) {
    case WM_INITDIALOG:
      SendDlgItemMessageW(dialog, IDC_LTS_LOGFILE, EM_LIMITTEXT, 255, 0);
      SetDlgItemTextW(dialog, IDC_LTS_LOGFILE, context->logFileName);
      for (const FlagBox &b : kFlagBoxes)
        CheckDlgButton(dialog, b.control, (context->flags & b.flag) ? BST_CHECKED : BST_UNCHECKED);
      return TRUE;
    case WM_COMMAND:
      switch (LOWORD(wParam)) {
        case IDC_LTS_BROWSE: BrowseLogFile(dialog); return TRUE;
        case IDOK:
          GetDlgItemTextW(dialog, IDC_LTS_LOGFILE, context->logFileName, 256);
          for (const FlagBox &b : kFlagBoxes) {
            if (IsDlgButtonChecked(dialog, b.control) == BST_CHECKED)
              context->flags |= b.flag;
            else
              context->flags &= ~b.flag;
          }
          EndDialog(dialog, 1);
          return TRUE;
        case IDCANCEL: EndDialog(dialog, 2); return TRUE;
      }
      break;
  }
  return FALSE;
}

}  // namespace

}  // namespace tv

using namespace tv;

extern "C" {

void WINAPI Tavona_LtsInstallProvider(LtsTranslationProvider provider, HMODULE module) {
  if (provider) {
    SetLtsProvider(provider, module, nullptr);
    return;
  }
  // A removal still frees a module handed over with it.
  HMODULE installed = g.ltsProviderModule;
  ClearLtsProvider();
  if (module && module != installed) FreeLibrary(module);
}

void WINAPI Tavona_LtsRemoveProvider(void) { ClearLtsProvider(); }

void WINAPI LTS_TranslateString(const WCHAR *module, const WCHAR *section, WCHAR *text, INT size) {
  LtsTranslate(module, section, text, size);
}

void WINAPI LTS_TranslateDialog(HWND dialog, const WCHAR *module, const WCHAR *section) {
  LtsTranslateDialog(dialog, module, section);
}

void WINAPI LTS_TranslateMenu(HMENU menu, const WCHAR *module, const WCHAR *section) {
  LtsTranslateMenu(menu, module, section);
}

INT WINAPI LTS_OpenAssistance(LtsAssistanceContext *context) {
  if (!context) return 2;
  // The string reader asks the registry for half its buffer in bytes.
  WCHAR name[2 * 256 + 8];
  Tavona_ReadStringFromHKCU(kLtsKey, nullptr, L"LogFile", L"", name, 2 * 256 + 8);
  int n = LenBounded(name, 255);
  CopyRaw(context->logFileName, name, n);
  context->logFileName[n] = 0;
  context->flags = static_cast<UINT>(Tavona_ReadLongFromHKCU(kLtsKey, nullptr, L"Flags", 0));

  if (RunDialog(IDD_LTS_SETTINGS, SettingsProc, reinterpret_cast<LPARAM>(context)) != 1) return 2;
  Tavona_WriteStringToHKCU(kLtsKey, nullptr, L"LogFile", context->logFileName);
  Tavona_WriteLongToHKCU(kLtsKey, nullptr, L"Flags", static_cast<LONG>(context->flags));

  LineListDestroy(context->lines);
  context->lines = LineListCreate(kLtsLineCapacity);
  if (!context->lines) return 2;  // 1300 already reported

  if (context->flags & LTS_FLAG_WRITE_LOG) {
    DeleteFileW(context->logFileName);
    HANDLE file = CreateFileW(context->logFileName, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
      ReportError(IDS_ERR_LTS_LOG, context->logFileName);
      LineListDestroy(context->lines);
      context->lines = nullptr;
      return 2;
    }
    // A stream still open from an earlier opening is replaced, not leaked.
    if (context->logFile) CloseHandle(context->logFile);
    context->logFile = file;
  }
  return 1;
}

INT WINAPI LTS_PerformAssistance(LtsAssistanceContext *context, HMODULE resources,
                                 const WCHAR *module) {
  if (!context || !resources) return 2;
  if (!module || !module[0]) module = L"GENERAL";
  if (RunPass(context, resources, module, 6, L"STRINGS") == 2) return 2;
  if (RunPass(context, resources, module, 5, L"DIALOGS") == 2) return 2;
  if (RunPass(context, resources, module, 4, L"MENU") == 2) return 2;
  return 1;
}

void WINAPI LTS_CloseAssistance(LtsAssistanceContext *context) {
  if (!context) return;
  LineListDestroy(context->lines);
  context->lines = nullptr;
  if (context->logFile) {
    CloseHandle(context->logFile);
    context->logFile = nullptr;
  }
  ReportError(IDS_INFO_LTS_CLOSED);
}

}  // extern "C"
