// Run-time translation on real dialogs and menus of the test module, the
// assistance mode with its log compared byte for byte, templates 116 and
// 117 through the UI driver, and the gettext round trip.
#include <tavona/tavona32.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "test_lts_ids.h"
#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

const wchar_t kLtsKey[] = L"Software\\Tavona Language Translation System";

// ---- A provider of the test: German for some keys, in escape notation ----

std::vector<std::wstring> g_calls;
const std::map<std::wstring, std::wstring> kGerman = {
    {L"XOK_0509C774", L"&Jawohl"},    {L"CANCEL_21ED1D6D", L"Abbrechen"},
    {L"FIRST_34D6DE02", L"Erste"},    {L"TEST_SETTINGS_73439B61", L"Testeinstellungen"},
    {L"ID_EXIT", L"&Beenden"},        {L"ID_SAVE", L"Beim Beenden \\qsichern\\q"},
    {L"XFILE_2132B37D", L"&Datei"},   {L"LINES_00000000", L"Zeile\\nzwei"},
};

INT WINAPI TestProvider(const WCHAR *module, const WCHAR *section, const WCHAR *key, WCHAR *text,
                        INT size) {
  g_calls.push_back(std::wstring(module) + L"|" + section + L"|" + key + L"|" + text);
  auto it = kGerman.find(key);
  if (it != kGerman.end()) lstrcpynW(text, it->second.c_str(), size);
  return 0;
}

// The calls that mention key, for failure messages and checks.
std::string Calls() {
  std::string all;
  for (const auto &c : g_calls) all += Narrow(c) + "\n";
  return all;
}

std::wstring Text(HWND w) {
  wchar_t buf[12000];
  GetWindowTextW(w, buf, 12000);
  return buf;
}

std::string ReadBytes(const std::wstring &path) {
  std::ifstream in(path.c_str(), std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

void WriteBytes(const std::wstring &path, const std::string &bytes) {
  std::ofstream out(path.c_str(), std::ios::binary);
  out << bytes;
}

// Builds a log as assistance writes it, by hand: single-byte headers,
// UTF-16LE lines.
struct Log {
  std::string bytes;
  Log &Header(const char *h) {
    bytes += (bytes.empty() ? "" : "\r\n\r\n") + std::string(h) + "\r\n";
    return *this;
  }
  Log &Line(const std::wstring &s) {
    for (wchar_t c : s + L"\r\n") bytes += {char(c & 0xFF), char(c >> 8)};
    return *this;
  }
  Log &Lines(std::initializer_list<const wchar_t *> lines) {
    for (const wchar_t *l : lines) Line(l);
    return *this;
  }
};

// The test module's texts, as its three passes log them without a provider.
const std::initializer_list<const wchar_t *> kStringLines = {
    L"XOK_0509C774=&OK", L"CANCEL_21ED1D6D=Cancel", L"LEADING_SPACES_5D3D1589=\\x20\\x20Leading spaces",
    L"LINEBREAK_DFD222B2=Line\\nbreak", L"ID_SAVE=Save", L"C_DIR_D8407403=C:\\\\dir",
    L"DATEI_XOFFNEN_6D3F1AFC=Datei &\u00F6ffnen..."};
const std::initializer_list<const wchar_t *> kDialogLines = {
    L"TEST_SETTINGS_73439B61=Test Settings", L"XNAME_F94C2D54=&Name:", L"ID_SAVE=Save on exit",
    L"OPTIONS_256BAA88=Options", L"XOK_0509C774=&OK", L"CANCEL_21ED1D6D=Cancel", L"PAGE_6F969E4B=Page",
    L"PAGE_TEXT_F0C87427=Page text", L"ABOUT_7C282312=About", L"VERSION_1_0_22750ACD=Version 1.0"};
const std::initializer_list<const wchar_t *> kMenuLines = {
    L"XFILE_2132B37D=&File", L"XOPEN_78931797=&Open...", L"XRECENT_CB8FF852=&Recent",
    L"FIRST_34D6DE02=First", L"ID_EXIT=E&xit", L"XHELP_8270358C=&Help"};
// All three passes of the test module.
std::string FullLog() {
  return Log().Header("[E-S]").Lines(kStringLines).Header("[E-D]").Lines(kDialogLines)
      .Header("[E-M]").Lines(kMenuLines).bytes;
}

class Lts : public ::testing::Test {
 protected:
  void SetUp() override {
    RegDeleteTreeW(HKEY_CURRENT_USER, kLtsKey);
    Tavona_LtsRemoveProvider();
    g_calls.clear();
    g_capturedReports.clear();
    Tavona_SetErrorHandlerCallback(CaptureReports);
    INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_WIN95_CLASSES};
    InitCommonControlsEx(&icc);
    // An active top-level window owns the dialogs of the passes, so that a
    // child-style template is created (and ended) too.
    owner_ = CreateWindowExW(0, L"STATIC", L"Owner", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                             nullptr, nullptr, nullptr);
    SetActiveWindow(owner_);
  }
  void TearDown() override {
    Tavona_LtsRemoveProvider();
    Tavona_SetErrorHandlerCallback(nullptr);
    DestroyWindow(owner_);
    RegDeleteTreeW(HKEY_CURRENT_USER, kLtsKey);
  }
  // Opens assistance without its dialog's decisions mattering: the
  // registry holds the settings and the script presses OK.
  void Open(LtsAssistanceContext &ctx, const std::wstring &log, DWORD flags, int expected = 1) {
    Tavona_WriteStringToHKCU(kLtsKey, nullptr, L"LogFile", log.c_str());
    Tavona_WriteLongToHKCU(kLtsKey, nullptr, L"Flags", LONG(flags));
    int rc = tvui::RunModal([&] { return LTS_OpenAssistance(&ctx); }, [](tvui::Session &s) {
      s.Click(s.WaitAnyDialog(), IDOK);
    });
    ASSERT_EQ(rc, expected);
  }
  HMODULE Self() const { return GetModuleHandleW(nullptr); }
  HWND owner_ = nullptr;
};

TEST_F(Lts, TranslateStringRows) {
  struct Row {
    bool provider;
    const wchar_t *module, *section, *text;
    int size;
    const wchar_t *result, *call;  // call: nullptr when the provider is not asked
  } rows[] = {
      {false, nullptr, nullptr, L"((ID_SAVE))Save", 100, L"Save", nullptr},
      {true, nullptr, L"", L"((ID_SAVE))Save", 100, L"Beim Beenden \"sichern\"",
       L"GENERAL|STRINGS|ID_SAVE|Save"},
      {true, L"APP", L"DIALOGS", L"&OK", 100, L"&Jawohl", L"APP|DIALOGS|XOK_0509C774|&OK"},
      {true, L"APP", nullptr, L"((LINES_00000000))x", 100, L"Zeile\nzwei",
       L"APP|STRINGS|LINES_00000000|x"},
      {true, nullptr, nullptr, L"&OK", 4, L"&Ja", L"GENERAL|STRINGS|XOK_0509C774|&OK"},
      {true, nullptr, nullptr, L"(())x", 100, L"x", nullptr},  // empty key: not asked
      // What the provider leaves is decoded too: "\dir" reads "\d" and "ir".
      {true, nullptr, nullptr, L"C:\\dir", 100, L"C:", L"GENERAL|STRINGS|C_DIR_D8407403|C:\\dir"},
  };
  for (const Row &r : rows) {
    Tavona_LtsInstallProvider(r.provider ? TestProvider : nullptr, nullptr);
    g_calls.clear();
    std::vector<wchar_t> buf(r.size + 8, L'#');
    lstrcpynW(buf.data(), r.text, r.size);
    LTS_TranslateString(r.module, r.section, buf.data(), r.size);
    std::wstring where = std::wstring(r.text) + L" size " + std::to_wstring(r.size);
    EXPECT_EQ(Narrow(buf.data()), Narrow(r.result)) << Narrow(where);
    EXPECT_EQ(buf[r.size], L'#') << Narrow(where);
    EXPECT_EQ(g_calls.size(), r.call ? 1u : 0u) << Narrow(where) << Calls();
    if (r.call && !g_calls.empty()) {
      EXPECT_EQ(Narrow(g_calls[0]), Narrow(r.call));
    }
  }
}

INT_PTR CALLBACK PlainProc(HWND, UINT m, WPARAM, LPARAM) { return m == WM_INITDIALOG; }

TEST_F(Lts, TranslateDialogTouchesCaptionAndDirectStaticsAndButtons) {
  HWND dlg = CreateDialogParamW(Self(), MAKEINTRESOURCEW(IDD_TEST_SETTINGS), nullptr, PlainProc, 0);
  ASSERT_NE(dlg, nullptr);
  HWND group = GetDlgItem(dlg, IDC_TEST_GROUP);
  HWND grandchild = CreateWindowExW(0, L"STATIC", L"Cancel", WS_CHILD, 0, 0, 40, 10, group,
                                    nullptr, nullptr, nullptr);
  SetDlgItemTextW(dlg, IDC_TEST_EDIT, L"Cancel");
  Tavona_LtsInstallProvider(TestProvider, nullptr);
  LTS_TranslateDialog(dlg, L"EXAMPLE", nullptr);
  struct Expect { HWND w; const char *text; } expects[] = {
      {dlg, "Testeinstellungen"}, {GetDlgItem(dlg, IDC_TEST_CHECK), "Beim Beenden \"sichern\""},
      {GetDlgItem(dlg, IDOK), "&Jawohl"}, {GetDlgItem(dlg, IDCANCEL), "Abbrechen"},
      {group, "Options"}, {GetDlgItem(dlg, IDC_TEST_EDIT), "Cancel"}, {grandchild, "Cancel"}};
  for (const Expect &e : expects) EXPECT_EQ(Narrow(Text(e.w)), e.text);
  // Caption first, then the children in window order; all under DIALOGS.
  ASSERT_EQ(g_calls.size(), 6u) << Calls();
  EXPECT_EQ(Narrow(g_calls[0]), "EXAMPLE|DIALOGS|TEST_SETTINGS_73439B61|Test Settings");
  // A caption beyond the 500-character buffer comes back cut.
  SetWindowTextW(dlg, std::wstring(10000, L'x').c_str());
  LTS_TranslateDialog(dlg, nullptr, L"");
  EXPECT_EQ(Text(dlg), std::wstring(499, L'x'));
  DestroyWindow(dlg);
}

TEST_F(Lts, TranslateMenuKeepsIdentifiersSubmenusAndStates) {
  HMENU menu = LoadMenuW(Self(), MAKEINTRESOURCEW(IDM_TEST));
  ASSERT_NE(menu, nullptr);
  Tavona_LtsInstallProvider(TestProvider, nullptr);
  LTS_TranslateMenu(menu, L"EXAMPLE", nullptr);
  auto text = [](HMENU m, int pos) {
    wchar_t buf[200] = {};
    GetMenuStringW(m, pos, buf, 200, MF_BYPOSITION);
    return Narrow(buf);
  };
  HMENU file = GetSubMenu(menu, 0), recent = GetSubMenu(file, 2);
  ASSERT_NE(recent, nullptr);
  struct Item { HMENU m; int pos; const char *text; UINT id; } items[] = {
      {menu, 0, "&Datei", UINT(-1)}, {file, 0, "&Open...", IDM_TEST_OPEN}, {recent, 0, "Erste", IDM_TEST_FIRST}};
  for (const Item &i : items) {
    EXPECT_EQ(text(i.m, i.pos), i.text);
    EXPECT_EQ(GetMenuItemID(i.m, i.pos), i.id) << i.text;
  }
  EXPECT_EQ(g_calls.size(), 6u) << Calls();  // the separator has no text
  EXPECT_EQ(Narrow(g_calls[0]), "EXAMPLE|MENU|XFILE_2132B37D|&File");
  DestroyMenu(menu);
}

// Removing or replacing the provider frees the module it came with.
TEST_F(Lts, ProviderModuleIsFreedWhenRemovedOrReplaced) {
  ASSERT_EQ(GetModuleHandleW(L"msimg32.dll"), nullptr) << "loaded by someone else";
  Tavona_LtsInstallProvider(TestProvider, LoadLibraryW(L"msimg32.dll"));
  EXPECT_NE(GetModuleHandleW(L"msimg32.dll"), nullptr);
  Tavona_LtsRemoveProvider();
  EXPECT_EQ(GetModuleHandleW(L"msimg32.dll"), nullptr);
  Tavona_LtsInstallProvider(TestProvider, LoadLibraryW(L"msimg32.dll"));
  Tavona_LtsInstallProvider(TestProvider, nullptr);
  EXPECT_EQ(GetModuleHandleW(L"msimg32.dll"), nullptr);
}

// The passes over the library's own English resources (the test module's
// log is compared byte for byte in GettextRoundTrip).
TEST_F(Lts, AssistanceOverTheLibrary) {
  std::wstring path = BinDir() + L"lts_passes.log";
  LtsAssistanceContext ctx = {};
  Open(ctx, path, LTS_FLAG_WRITE_LOG);
  HMODULE en = LanguageResources(L"en");
  ASSERT_NE(en, nullptr);
  EXPECT_EQ(LTS_PerformAssistance(&ctx, en, nullptr), 1);
  LTS_CloseAssistance(&ctx);
  ASSERT_EQ(g_capturedReports.size(), 1u);
  EXPECT_NE(g_capturedReports[0].find(L"Translation assistance has ended"), std::wstring::npos);

  EXPECT_EQ(ReadBytes(path).substr(0, 7), "[G-S]\r\n");
  // Its texts come from every part of the library: the reader finds them all.
  std::wstring pot = BinDir() + L"lts_library.pot";
  int entries = Tavona_LtsExportCatalog(path.c_str(), pot.c_str(), L"GENERAL");
  EXPECT_GT(entries, 100);
}

// A log that cannot be created is reported with its name.
TEST_F(Lts, LogFileCannotBeCreated) {
  std::wstring path = BinDir() + L"no such folder\\x.log";
  LtsAssistanceContext ctx = {};
  Open(ctx, path, LTS_FLAG_WRITE_LOG, 2);
  EXPECT_EQ(ctx.lines, nullptr);
  ASSERT_EQ(g_capturedReports.size(), 1u);
  EXPECT_NE(g_capturedReports[0].find(path), std::wstring::npos) << Narrow(g_capturedReports[0]);
}

// Template 116: the registry values in, the user's choices out.
TEST_F(Lts, SettingsDialog) {
  std::wstring first = BinDir() + L"lts_first.log", second = BinDir() + L"lts_second.log";
  Tavona_WriteStringToHKCU(kLtsKey, nullptr, L"LogFile", first.c_str());
  Tavona_WriteLongToHKCU(kLtsKey, nullptr, L"Flags", 5);
  LtsAssistanceContext ctx = {};
  const wchar_t *caption = Pick(L"Translation Assistance", L"\u00DCbersetzungshilfe");
  int rc = tvui::RunModal([&] { return LTS_OpenAssistance(&ctx); }, [&](tvui::Session &s) {
    HWND dlg = s.WaitDialog(caption);
    EXPECT_EQ(s.Text(dlg, IDC_LTS_LOGFILE), first);
    EXPECT_TRUE(s.IsChecked(dlg, IDC_LTS_WRITE_LOG) && s.IsChecked(dlg, IDC_LTS_SHOW_DIALOGS) &&
                !s.IsChecked(dlg, IDC_LTS_CONFIRM));
    s.Screenshot(dlg, Shot(L"lts_settings"));
    s.SetText(dlg, IDC_LTS_LOGFILE, second);
    s.Check(dlg, IDC_LTS_SHOW_DIALOGS, false);
    s.Check(dlg, IDC_LTS_CONFIRM, true);
    s.Click(dlg, IDOK);
  });
  ASSERT_EQ(rc, 1);
  EXPECT_EQ(ctx.flags, UINT(LTS_FLAG_WRITE_LOG | LTS_FLAG_CONFIRM_EACH));
  EXPECT_EQ(std::wstring(ctx.logFileName), second);
  EXPECT_EQ(Tavona_ReadLongFromHKCU(kLtsKey, nullptr, L"Flags", -1), 3);
  wchar_t stored[600] = {};
  Tavona_ReadStringFromHKCU(kLtsKey, nullptr, L"LogFile", L"", stored, 600);
  EXPECT_EQ(std::wstring(stored), second);
  LTS_CloseAssistance(&ctx);
}

// Template 117 for each new text; Stop discards the string pass, the
// dialog pass still runs, Abort in the menu pass ends everything.
TEST_F(Lts, TextDisplayStopAndAbort) {
  std::wstring path = BinDir() + L"lts_confirm.log";
  LtsAssistanceContext ctx = {};
  Open(ctx, path, LTS_FLAG_WRITE_LOG | LTS_FLAG_CONFIRM_EACH);
  const wchar_t *caption = Pick(L"Translation Assistance - New Text", L"\u00DCbersetzungshilfe - Neuer Text");
  int rc = tvui::RunModal([&] { return LTS_PerformAssistance(&ctx, Self(), L"EXAMPLE"); },
                          [&](tvui::Session &s) {
    for (const wchar_t *source : {L"&OK", L"Cancel", L"  Leading spaces"}) {
      HWND dlg = s.WaitDialog(caption);
      EXPECT_EQ(s.Text(dlg, IDC_LTS_SOURCE), source);
      s.Click(dlg, IDOK);
    }
    HWND dlg = s.WaitDialog(caption);
    std::wstring fields;
    for (int id : {IDC_LTS_MODULE, IDC_LTS_SECTION, IDC_LTS_KEY, IDC_LTS_SOURCE, IDC_LTS_TRANSLATED})
      fields += s.Text(dlg, id) + L"|";
    EXPECT_EQ(fields, L"EXAMPLE|STRINGS|LINEBREAK_DFD222B2|Line\r\nbreak|Line\r\nbreak|");
    s.Screenshot(dlg, Shot(L"lts_text"));
    s.Click(dlg, IDC_LTS_STOP);
    for (int i = 0; i < 10; ++i) s.Click(s.WaitDialog(caption), IDOK);
    s.Click(s.WaitDialog(caption), IDCANCEL);
  }, tvui::Ms(20000));
  EXPECT_EQ(rc, 2);
  LTS_CloseAssistance(&ctx);
  EXPECT_EQ(ReadBytes(path), Log().Header("[E-S]").Header("[E-D]").Lines(kDialogLines).Header("[E-M]").bytes);
}

// Replaces msgstr "" after each msgid of the map, as a translator would
// (the header keeps its placeholders: msgfmt only warns about them).
std::string Translate(std::string po, const std::map<std::string, std::string> &german) {
  for (const auto &[id, str] : german) {
    std::string from = "msgid \"" + id + "\"\nmsgstr \"\"";
    for (size_t at = po.find(from); at != std::string::npos; at = po.find(from, at + 1))
      po.replace(at, from.size(), "msgid \"" + id + "\"\nmsgstr \"" + str + "\"");
  }
  return po;
}

// Log -> template -> a German catalog -> the catalog provider -> German
// texts. msgfmt checks both files afterwards (lts_msgfmt).
TEST_F(Lts, GettextRoundTrip) {
  std::wstring log = BinDir() + L"lts_example.log", pot = BinDir() + L"lts_example.pot",
               po = BinDir() + L"lts_example_de.po";
  LtsAssistanceContext ctx = {};
  Open(ctx, log, LTS_FLAG_WRITE_LOG);
  ASSERT_EQ(LTS_PerformAssistance(&ctx, Self(), L"EXAMPLE"), 1);
  LTS_CloseAssistance(&ctx);
  EXPECT_EQ(ReadBytes(log), FullLog());
  g_capturedReports.clear();
  EXPECT_EQ(Tavona_LtsExportCatalog(log.c_str(), pot.c_str(), L"EXAMPLE"), 23);
  std::string german = Translate(ReadBytes(pot), {{"Test Settings", "Testeinstellungen"},
      {"Save on exit", "Beim Beenden \\\"sichern\\\""}, {"&OK", "&Jawohl"}, {"Cancel", "Abbrechen"},
      {"Options", "Optionen"}, {"C:\\\\dir", "C:\\\\Verzeichnis"}, {"&File", "&Datei"}});
  WriteBytes(po, german);
  EXPECT_EQ(Tavona_LtsLoadCatalog(po.c_str()), 9);  // "&OK" and "Cancel" twice
  auto translated = [](const wchar_t *source, const wchar_t *section = L"STRINGS") {
    wchar_t text[100];
    lstrcpynW(text, source, 100);
    LTS_TranslateString(L"EXAMPLE", section, text, 100);
    return Narrow(text);
  };
  // A key of its own, a derived key with an escaped quote, and one untranslated.
  EXPECT_EQ(translated(L"((ID_SAVE))Save on exit", L"DIALOGS"), "Beim Beenden \"sichern\"");
  EXPECT_EQ(translated(L"Options", L"DIALOGS"), "Optionen");
  EXPECT_EQ(translated(L"C:\\dir"), "C:\\Verzeichnis");
  EXPECT_EQ(translated(L"D:\\untranslated"), "D:\\untranslated");
  EXPECT_TRUE(g_capturedReports.empty()) << Narrow(g_capturedReports.front());

  // A damaged catalog is reported with its line and leaves the one loaded.
  std::wstring bad = BinDir() + L"lts_bad.po";
  WriteBytes(bad, "msgctxt \"EXAMPLE|STRINGS\"\nmsgid \"Cancel\"\nmsgstr \"Abbrechen\n");
  EXPECT_EQ(Tavona_LtsLoadCatalog(bad.c_str()), -1);
  ASSERT_EQ(g_capturedReports.size(), 1u);
  EXPECT_NE(g_capturedReports[0].find(L"Line 3: a closing quotation mark is missing"), std::wstring::npos)
      << Narrow(g_capturedReports[0]);
  EXPECT_EQ(translated(L"Cancel"), "Abbrechen");
}

// The dialogs of this test again with the German resource library.
TEST(LtsGerman, DialogsInGerman) {
  if (GermanRun()) GTEST_SKIP() << "already the German run";
  EXPECT_EQ(RunInGerman(L"Lts.SettingsDialog:Lts.TextDisplayStopAndAbort"), 0u);
}

}  // namespace
