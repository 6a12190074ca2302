// The statement dump against the real registry: the statement and settings
// dialogs, the log file, the debugger output and a stand-in log viewer.
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

const wchar_t kSqlKey[] = L"Software\\Tavona Software\\Dump\\Sql";
const wchar_t kMapiKey[] = L"Software\\Tavona Software\\Dump\\Mapi";

const wchar_t *StatementCaption() { return Pick(L"Database Statement", L"Datenbankanweisung"); }
const wchar_t *ConfigCaption() {
  return Pick(L"Statement Dump Settings", L"Einstellungen der Anweisungsprotokollierung");
}

void Set(const wchar_t *value, LONG number) { Tavona_WriteLongToHKCU(kSqlKey, nullptr, value, number); }
void SetText(const wchar_t *value, const wchar_t *text) {
  Tavona_WriteStringToHKCU(kSqlKey, nullptr, value, text);
}
std::wstring Stored(const wchar_t *key, const wchar_t *value) {
  wchar_t buf[600] = {};
  DWORD bytes = sizeof buf;
  LSTATUS rc = RegGetValueW(HKEY_CURRENT_USER, key, value, RRF_RT_REG_SZ, nullptr, buf, &bytes);
  return rc ? L"<missing>" : buf;
}

// The whole file as UTF-16 units; "<missing>" when it does not exist.
std::wstring FileText(const std::wstring &path) {
  HANDLE h = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                         OPEN_EXISTING, 0, nullptr);
  if (h == INVALID_HANDLE_VALUE) return L"<missing>";
  std::wstring text(GetFileSize(h, nullptr) / 2, L'\0');
  DWORD read = 0;
  ReadFile(h, text.data(), DWORD(text.size() * 2), &read, nullptr);
  CloseHandle(h);
  return text;
}

class Dump : public ::testing::Test {
 protected:
  void SetUp() override {
    RegDeleteTreeW(HKEY_CURRENT_USER, kSqlKey);
    RegDeleteTreeW(HKEY_CURRENT_USER, kMapiKey);
    DeleteFileW(log_.c_str());
  }
  void TearDown() override { SetUp(); }
  const std::wstring log_ = TempPath(L"tavona_dump_test.log");
};

// The keyword test looks at an upper-cased copy: the keyword and one space
// at the very start.
TEST_F(Dump, WhichStatementsAreShown) {
  const std::vector<const wchar_t *> kinds = {L"DumpBeforePerform", L"CREATE", L"DROP", L"ALTER",
                                              L"INSERT", L"DELETE"};
  struct Row { std::vector<const wchar_t *> on; const wchar_t *statement; bool shown; };
  const Row rows[] = {
      {{L"SELECT"}, L"SELECT x", false},
      {{L"DumpBeforePerform", L"SELECT"}, L" select * from t", false},
      {{L"DumpBeforePerform", L"UPDATE"}, L"update\tt", false},
      {{L"DumpBeforePerform", L"UPDATE"}, L"Update t set a=1", true},
      {kinds, L"drop table t", true},
  };
  for (const Row &r : rows) {
    RegDeleteTreeW(HKEY_CURRENT_USER, kSqlKey);
    for (const wchar_t *value : r.on) Set(value, 1);
    wchar_t statement[100];
    lstrcpyW(statement, r.statement);
    std::wstring seen = L"<not shown>";
    auto dump = [&] { return Tavona_DumpSqlStatement(statement, 100); };
    int rc = tvui::RunModal(dump, [&](tvui::Session &s) {
      if (!r.shown) return;  // a dialog left open fails below
      HWND dlg = s.WaitDialog(StatementCaption());
      seen = s.Text(dlg, IDC_DUMP_STATEMENT);
      s.Click(dlg, IDCANCEL);
    });
    EXPECT_EQ(rc, r.shown ? 2 : 1) << Narrow(r.statement);
    EXPECT_EQ(seen, r.shown ? r.statement : L"<not shown>");
  }
}

// OK hands the edited text back, bounded by the caller's size; button 3
// opens the settings and the statement stays.
TEST_F(Dump, StatementDialog) {
  Set(L"DumpBeforePerform", 1);
  Set(L"ALL", 1);
  wchar_t statement[20] = L"SELECT 1";
  int rc = tvui::RunModal([&] { return Tavona_DumpSqlStatement(statement, 12); }, [](tvui::Session &s) {
    HWND dlg = s.WaitDialog(StatementCaption());
    s.Screenshot(dlg, Shot(L"bridges_statement_dialog"));
    s.Click(dlg, IDC_DUMP_CONFIGURE);
    HWND config = s.WaitDialog(ConfigCaption());
    s.Click(config, IDCANCEL);
    s.WaitClosed(config);
    s.SetText(dlg, IDC_DUMP_STATEMENT, L"SELECT 12345678901");
    s.Click(dlg, IDOK);
  });
  EXPECT_EQ(rc, 1);
  EXPECT_STREQ(statement, L"SELECT 1234");
}

TEST_F(Dump, LogFileAndDebugOutput) {
  SetText(L"LogFile", log_.c_str());
  wchar_t statement[50] = L"SELECT 1";
  EXPECT_EQ(Tavona_DumpSqlStatement(statement, 50), 1);
  EXPECT_EQ(FileText(log_), L"<missing>") << "logging is off";
  Set(L"LogBeforePerform", 1);
  Set(L"OutputDebugBeforePerform", 1);
  const int lines = DebugLines();
  EXPECT_EQ(Tavona_DumpSqlStatement(statement, 50), 1);
  EXPECT_EQ(DebugLines(), lines + 2) << "the statement and its line end";
  lstrcpyW(statement, L"UPDATE t SET ä = 1");
  EXPECT_EQ(Tavona_DumpSqlStatement(statement, 50), 1);
  EXPECT_EQ(TavonaDump(L"a", nullptr, L"c", L"d"), 0);
  EXPECT_EQ(TavonaDump(std::wstring(1200, L'x').c_str(), nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(FileText(log_),
            L"SELECT 1\r\nUPDATE t SET ä = 1\r\na  c d\r\n" + std::wstring(999, L'x') + L"\r\n");
  // A log file that cannot be opened.
  SetText(L"LogFile", L"C:\\no such folder\\x\\log.txt");
  EXPECT_EQ(TavonaDump(L"a", L"b", L"c", L"d"), 0);
}

// The switches come from the registry; the statement kinds follow "show
// statements"; the viewer is stored at once, everything else on OK.
TEST_F(Dump, ConfigurationDialog) {
  Set(L"SELECT", 1);
  Set(L"LogBeforePerform", 1);
  Tavona_WriteLongToHKCU(kMapiKey, nullptr, L"DisplayNativeError", 1);
  SetText(L"LogFile", L"C:\\logs\\old.txt");
  int rc = tvui::RunModal([] { return TavonaDumpConfigure(); }, [](tvui::Session &s) {
    HWND dlg = s.WaitDialog(ConfigCaption());
    EXPECT_TRUE(s.IsChecked(dlg, IDC_DUMP_SELECT) && s.IsChecked(dlg, IDC_DUMP_MAPI_NATIVE) &&
                !s.IsChecked(dlg, IDC_DUMP_BEFORE));
    EXPECT_EQ(s.Text(dlg, IDC_DUMP_LOG_FILE), L"C:\\logs\\old.txt");
    EXPECT_FALSE(IsWindowEnabled(s.Item(dlg, IDC_DUMP_KINDS)));
    s.Check(dlg, IDC_DUMP_BEFORE);
    EXPECT_TRUE(IsWindowEnabled(s.Item(dlg, IDC_DUMP_SELECT)));
    s.Screenshot(dlg, Shot(L"bridges_dump_settings"));
    s.SetText(dlg, IDC_DUMP_VIEWER, L"C:\\tools\\view.exe");
    EXPECT_EQ(Stored(kSqlKey, L"Viewer"), L"C:\\tools\\view.exe") << "kept at once";
    EXPECT_EQ(Stored(kSqlKey, L"DumpBeforePerform"), L"<missing>") << "the rest waits for OK";
    for (int id : {IDC_DUMP_ALL, IDC_DUMP_SUCC_INFO}) s.Check(dlg, id);
    s.Check(dlg, IDC_DUMP_LOG, false);
    s.SetText(dlg, IDC_DUMP_LOG_FILE, L"C:\\logs\\new.txt");
    s.Click(dlg, IDOK);
  });
  EXPECT_EQ(rc, 1);
  for (const wchar_t *on : {L"DumpBeforePerform", L"ALL", L"SELECT", L"DisplaySuccWithInfo"})
    EXPECT_EQ(Stored(kSqlKey, on), L"1") << Narrow(on);
  for (const wchar_t *off : {L"DELETE", L"LogBeforePerform", L"OutputDebugBeforePerform"})
    EXPECT_EQ(Stored(kSqlKey, off), L"0") << Narrow(off);
  EXPECT_EQ(Stored(kMapiKey, L"DisplayNativeError"), L"1");
  EXPECT_EQ(Stored(kSqlKey, L"LogFile"), L"C:\\logs\\new.txt");
}

// Delete the log, choose the viewer through the file dialog, and open the
// log in it: started maximised with the viewer and the log quoted.
TEST_F(Dump, ConfigurationButtons) {
  std::wstring viewer = BinDir() + L"tvstub_viewer.exe", record = TempPath(L"tavona_viewer_record.txt");
  DeleteFileW(record.c_str());
  SetEnvironmentVariableW(L"TAVONA_VIEWER_RECORD", record.c_str());
  SetText(L"LogFile", log_.c_str());
  EXPECT_EQ(TavonaDump(L"to", L"be", L"deleted", L""), 0);
  ASSERT_NE(FileText(log_), L"<missing>");
  int rc = tvui::RunModal([] { return TavonaDumpConfigure(); }, [&](tvui::Session &s) {
    HWND dlg = s.WaitDialog(ConfigCaption());
    s.Click(dlg, IDC_DUMP_DELETE_LOG);
    s.Click(dlg, IDC_DUMP_BROWSE_VIEWER);
    wchar_t title[100];
    LoadStringW(Tavona_GetResourceModule(), IDS_TITLE_VIEWER, title, 100);
    HWND browse = s.WaitDialog(title);
    s.Screenshot(browse, Shot(L"bridges_dump_choose_viewer"));
    s.Send(tvui::FileNameField(s, browse), WM_SETTEXT, 0, LPARAM(viewer.c_str()));
    s.Click(browse, IDOK);
    s.WaitClosed(browse);
    EXPECT_EQ(s.Text(dlg, IDC_DUMP_VIEWER), viewer);
    s.Click(dlg, IDC_DUMP_SHOW_LOG);
    s.Click(dlg, IDCANCEL);
  });
  EXPECT_EQ(rc, 2);
  EXPECT_EQ(FileText(log_), L"<missing>") << "deleted by the button";
  std::wstring seen;
  for (int i = 0; i < 100 && (seen = FileText(record)) == L"<missing>"; ++i) Sleep(100);
  EXPECT_EQ(seen, L"\"" + viewer + L"\" \"" + log_ + L"\"\n3");
  SetEnvironmentVariableW(L"TAVONA_VIEWER_RECORD", nullptr);
  DeleteFileW(record.c_str());
}

TEST(DumpGerman, DialogsInGerman) {
  if (GermanRun()) GTEST_SKIP() << "already the German run";
  EXPECT_EQ(RunInGerman(L"Dump.StatementDialog:Dump.ConfigurationDialog:Dump.ConfigurationButtons"), 0u);
}

}  // namespace
