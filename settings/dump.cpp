// The statement dump: before an application performs a database statement
// it is sent to the debugger output, appended to a log file and shown for
// reading or editing, as the current user configured. A diagnostic aid:
// nothing here reports an error.
#include <tavona/settings.h>

#include <share.h>
#include <shlobj.h>
#include <stdio.h>

#include "frame/dialog.h"
#include "frame/globals.h"
#include "frame/handles.h"
#include "base/wstr.h"
#include "tvres.h"

namespace {

const WCHAR kSqlKey[] = L"Software\\Tavona Software\\Dump\\Sql";
const WCHAR kMapiKey[] = L"Software\\Tavona Software\\Dump\\Mapi";
const WCHAR kDefaultLog[] = L"c:\\temp\\sqllog.txt";
constexpr int kPathChars = 256;

LONG Setting(const WCHAR *value) { return Tavona_ReadLongFromHKCU(kSqlKey, nullptr, value, 0); }

void ReadPath(const WCHAR *value, const WCHAR *defaultText, WCHAR (&out)[kPathChars]) {
  // The store is asked with half the buffer: 512 characters take 255.
  WCHAR buffer[2 * kPathChars];
  Tavona_ReadStringFromHKCU(kSqlKey, nullptr, value, defaultText, buffer, 2 * kPathChars);
  lstrcpynW(out, buffer, kPathChars);
}

// The suite's text editor in its tools folder under the programs folder.
void DefaultViewer(WCHAR (&out)[kPathChars]) {
  WCHAR programs[MAX_PATH];
  out[0] = 0;
  if (FAILED(SHGetFolderPathW(nullptr, CSIDL_PROGRAM_FILES, nullptr, 0, programs))) return;
  tv::Appender a(out, kPathChars);
  if (!a.Append(programs) || !a.Append(L"\\Tavona Software\\Tools\\TavonaEdit.exe")) out[0] = 0;
}

void ReadViewer(WCHAR (&out)[kPathChars]) {
  WCHAR fallback[kPathChars];
  DefaultViewer(fallback);
  ReadPath(L"Viewer", fallback, out);
}

// Appends text and CR LF (UTF-16LE, no byte-order mark); a file that cannot
// be opened is skipped. False when no log file is configured.
bool AppendToLog(const WCHAR *text) {
  WCHAR path[kPathChars];
  ReadPath(L"LogFile", kDefaultLog, path);
  if (!path[0]) return false;
  if (!text || !text[0]) return true;
  FILE *file = _wfsopen(path, L"a+b", _SH_DENYNO);
  if (!file) return true;
  fwrite(text, sizeof(WCHAR), size_t(tv::Len(text)), file);
  fwrite(L"\r\n", sizeof(WCHAR), 2, file);
  fclose(file);
  return true;
}

// Whether the statement's kind is one the user wants to see. The test is
// made on an upper-cased copy of its beginning; white space before the
// keyword defeats it.
bool WantedKind(const WCHAR *statement) {
  static const struct {
    const WCHAR *value;
    const WCHAR *prefix;
  } kKinds[] = {{L"CREATE", L"CREATE "}, {L"DROP", L"DROP "},     {L"ALTER", L"ALTER "},
                {L"SELECT", L"SELECT "}, {L"INSERT", L"INSERT "}, {L"DELETE", L"DELETE "},
                {L"UPDATE", L"UPDATE "}};
  WCHAR head[8];
  lstrcpynW(head, statement, 8);
  CharUpperW(head);
  for (const auto &k : kKinds) {
    int n = tv::Len(k.prefix);
    if (tv::LenBounded(head, n) == n && tv::EqualN(head, k.prefix, n) && Setting(k.value))
      return true;
  }
  return false;
}

struct StatementRecord {
  WCHAR *statement;
  INT size;
};

// The check boxes of the configuration dialog and their values.
struct Switch {
  int id;
  const WCHAR *key;
  const WCHAR *value;
};
const Switch kSwitches[] = {
    {IDC_DUMP_BEFORE, kSqlKey, L"DumpBeforePerform"},
    {IDC_DUMP_DEBUG_OUTPUT, kSqlKey, L"OutputDebugBeforePerform"},
    {IDC_DUMP_LOG, kSqlKey, L"LogBeforePerform"},
    {IDC_DUMP_SUCC_INFO, kSqlKey, L"DisplaySuccWithInfo"},
    {IDC_DUMP_ALL, kSqlKey, L"ALL"},
    {IDC_DUMP_SELECT, kSqlKey, L"SELECT"},
    {IDC_DUMP_CREATE, kSqlKey, L"CREATE"},
    {IDC_DUMP_DROP, kSqlKey, L"DROP"},
    {IDC_DUMP_ALTER, kSqlKey, L"ALTER"},
    {IDC_DUMP_UPDATE, kSqlKey, L"UPDATE"},
    {IDC_DUMP_INSERT, kSqlKey, L"INSERT"},
    {IDC_DUMP_DELETE, kSqlKey, L"DELETE"},
    {IDC_DUMP_MAPI_NATIVE, kMapiKey, L"DisplayNativeError"},
};

// The statement kinds count only while statements are shown at all.
void EnableKinds(HWND dialog) {
  BOOL on = IsDlgButtonChecked(dialog, IDC_DUMP_BEFORE) == BST_CHECKED;
  for (int id : {IDC_DUMP_ALL, IDC_DUMP_SELECT, IDC_DUMP_CREATE, IDC_DUMP_DROP, IDC_DUMP_ALTER,
                 IDC_DUMP_UPDATE, IDC_DUMP_INSERT, IDC_DUMP_DELETE, IDC_DUMP_KINDS})
    EnableWindow(GetDlgItem(dialog, id), on);
}

// Starts "viewer" "log" maximised; the handles are not waited for.
void ShowLog() {
  WCHAR log[kPathChars], viewer[kPathChars];
  ReadPath(L"LogFile", kDefaultLog, log);
  ReadViewer(viewer);
  if (!log[0] || !viewer[0]) return;
  WCHAR command[2 * kPathChars + 8];
  tv::Format(command, 2 * kPathChars + 8, L"\"%s\" \"%s\"", viewer, log);
  STARTUPINFOW si = {};
  si.cb = sizeof si;
  si.dwFlags = STARTF_USESHOWWINDOW;
  si.wShowWindow = SW_SHOWMAXIMIZED;
  // Without STARTF_USEPOSITION and STARTF_USESIZE these have no effect.
  si.dwX = 50;
  si.dwY = 50;
  si.dwXSize = 700;
  si.dwYSize = 500;
  PROCESS_INFORMATION pi = {};
  if (CreateProcessW(nullptr, command, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &si, &pi)) {
    CloseHandle(pi.hThread);
    CloseHandle(pi.hProcess);
  }
}

void BrowseViewer(HWND dialog) {
  WCHAR name[2 * kPathChars];
  GetDlgItemTextW(dialog, IDC_DUMP_VIEWER, name, kPathChars);
  // Starts from the field's text; the field keeps the choice.
  TavonaFileNameRequest request = {};
  request.module = tv::g.resources;
  request.root = HKEY_CURRENT_USER;
  request.key = kSqlKey;
  request.flags = TAVONA_FND_NOPRESET | TAVONA_FND_NOSTORE;
  request.filterId = IDS_FILTER_VIEWER;
  request.titleId = IDS_TITLE_VIEWER;
  if (Tavona_ExtendedFileNameDialog(name, 2 * kPathChars, &request))
    SetDlgItemTextW(dialog, IDC_DUMP_VIEWER, name);
}

}  // namespace

INT WINAPI Tavona_GetDumpState(void) {
  int state = Setting(L"DumpBeforePerform") ? 1 : 0;
  if (Setting(L"DisplaySuccWithInfo")) state += 2;
  return state;
}

INT WINAPI TavonaDump(const WCHAR *a, const WCHAR *b, const WCHAR *c, const WCHAR *d) {
  WCHAR line[1000];
  tv::Format(line, 1000, L"%s %s %s %s", a ? a : L"", b ? b : L"", c ? c : L"", d ? d : L"");
  return AppendToLog(line) ? 0 : 1;
}

INT WINAPI Tavona_DumpSqlStatement(WCHAR *statement, INT size) {
  if (!statement || !statement[0]) return 1;
  if (Setting(L"OutputDebugBeforePerform")) {
    OutputDebugStringW(statement);
    OutputDebugStringW(L"\r\n");
  }
  if (Setting(L"LogBeforePerform")) AppendToLog(statement);
  if (!Setting(L"DumpBeforePerform")) return 1;
  if (!Setting(L"ALL") && !WantedKind(statement)) return 1;
  StatementRecord record = {statement, size};
  return INT(tv::RunDialog(IDD_SQL_DUMP, SqlDump_Dialog_Callback,
                           reinterpret_cast<LPARAM>(&record)));
}

INT WINAPI TavonaDumpConfigure(void) {
  return INT(tv::RunDialog(IDD_SQL_DUMP_CONFIG, SqlDumpConfig_Dialog_Callback, 0));
}

INT_PTR CALLBACK SqlDump_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                         LPARAM lParam) {
  auto *record = tv::DialogRecord<StatementRecord>(dialog, message, lParam);
  switch (message) {
    case WM_INITDIALOG:
      SetDlgItemTextW(dialog, IDC_DUMP_STATEMENT, record->statement);
      SetFocus(GetDlgItem(dialog, IDOK));
      return FALSE;
    case WM_COMMAND:
      switch (LOWORD(wParam)) {
        case IDOK:
          if (record && record->size > 0)
            GetDlgItemTextW(dialog, IDC_DUMP_STATEMENT, record->statement, record->size);
          EndDialog(dialog, 1);
          return TRUE;
        case IDCANCEL:
          EndDialog(dialog, 2);
          return TRUE;
        case IDC_DUMP_CONFIGURE:
          TavonaDumpConfigure();
          return TRUE;
      }
      break;
  }
  return FALSE;
}

INT_PTR CALLBACK SqlDumpConfig_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                               LPARAM lParam) {
  tv::DialogRecord<void>(dialog, message, lParam);
  switch (message) {
    case WM_INITDIALOG: {
      for (const Switch &s : kSwitches)
        CheckDlgButton(dialog, s.id,
                       Tavona_ReadLongFromHKCU(s.key, nullptr, s.value, 0) ? BST_CHECKED
                                                                           : BST_UNCHECKED);
      WCHAR path[kPathChars];
      ReadPath(L"LogFile", kDefaultLog, path);
      SendDlgItemMessageW(dialog, IDC_DUMP_LOG_FILE, EM_LIMITTEXT, kPathChars - 1, 0);
      SetDlgItemTextW(dialog, IDC_DUMP_LOG_FILE, path);
      ReadViewer(path);
      SendDlgItemMessageW(dialog, IDC_DUMP_VIEWER, EM_LIMITTEXT, kPathChars - 1, 0);
      SetDlgItemTextW(dialog, IDC_DUMP_VIEWER, path);
      EnableKinds(dialog);
      return TRUE;
    }
    case WM_COMMAND: {
      WCHAR path[kPathChars];
      switch (LOWORD(wParam)) {
        case IDC_DUMP_BEFORE:
          if (HIWORD(wParam) == BN_CLICKED) EnableKinds(dialog);
          return TRUE;
        case IDC_DUMP_VIEWER:
          // Kept at once, even when the dialog is cancelled later.
          if (HIWORD(wParam) == EN_CHANGE) {
            GetDlgItemTextW(dialog, IDC_DUMP_VIEWER, path, kPathChars);
            Tavona_WriteStringToHKCU(kSqlKey, nullptr, L"Viewer", path);
          }
          return TRUE;
        case IDC_DUMP_DELETE_LOG:
          ReadPath(L"LogFile", kDefaultLog, path);
          if (path[0]) DeleteFileW(path);
          return TRUE;
        case IDC_DUMP_BROWSE_VIEWER:
          BrowseViewer(dialog);
          return TRUE;
        case IDC_DUMP_SHOW_LOG:
          ShowLog();
          return TRUE;
        case IDOK:
          for (const Switch &s : kSwitches)
            Tavona_WriteLongToHKCU(s.key, nullptr, s.value,
                                   IsDlgButtonChecked(dialog, s.id) == BST_CHECKED ? 1 : 0);
          GetDlgItemTextW(dialog, IDC_DUMP_LOG_FILE, path, kPathChars);
          Tavona_WriteStringToHKCU(kSqlKey, nullptr, L"LogFile", path);
          GetDlgItemTextW(dialog, IDC_DUMP_VIEWER, path, kPathChars);
          Tavona_WriteStringToHKCU(kSqlKey, nullptr, L"Viewer", path);
          EndDialog(dialog, 1);
          return TRUE;
        case IDCANCEL:
          EndDialog(dialog, 2);
          return TRUE;
      }
      break;
    }
  }
  return FALSE;
}
