// Mail through a stand-in MAPI32.DLL that writes down the message it gets,
// the MAPI error texts read from the message boxes, the editor and
// extension libraries with and without their entries, and the help viewer
// (a stand-in hhctrl.ocx). The stand-ins live
// in bin\bridges_full and bin\bridges_noentry; each test adds the folder it
// needs to the library search path (the test runs with the native
// MAPI32.DLL preferred to wine's own).
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include <string>

#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

const wchar_t kMapiKey[] = L"Software\\Tavona Software\\Dump\\Mapi";

// One variant folder of the stand-ins on the search path, or none.
class StubFolder {
 public:
  explicit StubFolder(const wchar_t *variant) {
    if (variant) cookie_ = AddDllDirectory((BinDir() + variant).c_str());
  }
  ~StubFolder() {
    if (cookie_) RemoveDllDirectory(cookie_);
  }

 private:
  DLL_DIRECTORY_COOKIE cookie_ = nullptr;
};

// The stand-in, held by the test so that its transcript survives the
// library's FreeLibrary.
struct Mapi {
  HMODULE module = LoadLibraryW((BinDir() + L"bridges_full\\MAPI32.DLL").c_str());
  ~Mapi() { FreeLibrary(module); }
  void Answer(ULONG code) {
    reinterpret_cast<void(WINAPI *)(ULONG)>(GetProcAddress(module, "StubMapi_SetAnswer"))(code);
  }
  std::string Last(int *calls) {
    auto last = reinterpret_cast<const char *(WINAPI *)(int *)>(
        GetProcAddress(module, "StubMapi_Last"));
    return last(calls);
  }
};

std::wstring Resource(UINT id) {
  wchar_t text[500] = L"";
  LoadStringW(Tavona_GetResourceModule(), id, text, 500);
  return text;
}

class Mail : public ::testing::Test {
 protected:
  void SetUp() override {
    RegDeleteTreeW(HKEY_CURRENT_USER, kMapiKey);
    Tavona_SetErrorHandlerCallback(CaptureReports);
    g_capturedReports.clear();
  }
  void TearDown() override {
    Tavona_SetErrorHandlerCallback(nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, kMapiKey);
  }
  // The one report of the test: it names every text given.
  void ExpectReport(std::initializer_list<const wchar_t *> names, int line) {
    ASSERT_EQ(g_capturedReports.size(), 1u) << "line " << line;
    for (const wchar_t *name : names)
      EXPECT_NE(g_capturedReports[0].find(name), std::wstring::npos)
          << "line " << line << ": " << Narrow(g_capturedReports[0]);
    g_capturedReports.clear();
  }
};

std::string Ansi(const wchar_t *text) {
  char out[100];
  WideCharToMultiByte(CP_ACP, 0, text, -1, out, 100, nullptr, nullptr);
  return out;
}

TEST_F(Mail, MessageFieldByField) {
  StubFolder folder(L"bridges_full");
  Mapi mapi;
  ASSERT_TRUE(mapi.module);
  int rc = Tavona_SendMail(L"Jürg Sender", L";;anna@x.ch;;; bruno@x.ch;", L"carla@x.ch",
                           L";", L"Subject", L"Line 1\r\nLine 2", L"C:\\a.txt;C:\\b c.pdf");
  EXPECT_EQ(rc, 0);
  int calls = 0;
  std::string expected =
      "session=0\nowner=none\nflags=8\nreserved=0\nmessage.reserved=0\n"
      "subject=Subject\nnote=Line 1\r\nLine 2\ntype=(null)\n"
      "date=2002/09/16 23:23\nconversation=TS\nmessage.flags=0\n"
      "originator.class=0\noriginator.name=" + Ansi(L"Jürg Sender") + "\n"
      "recip.1=anna@x.ch\nrecip.1= bruno@x.ch\nrecip.2=carla@x.ch\n"
      "file=C:\\a.txt\nfile.position=4294967295\nfile=C:\\b c.pdf\nfile.position=4294967295\n";
  EXPECT_EQ(mapi.Last(&calls), expected);
  EXPECT_EQ(calls, 1);
  EXPECT_TRUE(g_capturedReports.empty());

  // Nothing but nulls, and a long subject.
  EXPECT_EQ(Tavona_SendMail(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(mapi.Last(&calls),
            "session=0\nowner=none\nflags=8\nreserved=0\nmessage.reserved=0\nsubject=(null)\n"
            "note=(null)\ntype=(null)\ndate=2002/09/16 23:23\nconversation=TS\n"
            "message.flags=0\noriginator.class=0\noriginator.name=(null)\n");
  std::wstring subject(10000, L's');
  EXPECT_EQ(Tavona_SendMail(L"a", L"b", nullptr, nullptr, subject.c_str(), L"", L";;;"), 0);
  std::string last = mapi.Last(&calls);
  EXPECT_NE(last.find("subject=" + std::string(10000, 's') + "\n"), std::string::npos);
  EXPECT_EQ(last.find("file="), std::string::npos) << "only separators: no attachment";
  EXPECT_EQ(calls, 3);
}

// Cancelling the compose window shows nothing; other answers are shown.
TEST_F(Mail, ServiceAnswersAreShown) {
  StubFolder folder(L"bridges_full");
  Mapi mapi;
  mapi.Answer(1);
  EXPECT_EQ(Tavona_SendMail(L"a", L"b", nullptr, nullptr, L"s", L"t", nullptr), 0);
  mapi.Answer(3);
  int rc = tvui::RunModal(
      [&] { return Tavona_SendMail(L"a", L"b", nullptr, nullptr, L"s", L"t", nullptr); },
      [](tvui::Session &s) {
        tvui::Box box = s.WaitMessageBox(Resource(IDS_CAPTION_MAPI_ERROR));
        EXPECT_EQ(box.text, Resource(1852));
        s.Answer(box, IDOK);
      });
  EXPECT_EQ(rc, 0);
}

TEST_F(Mail, MissingServiceOrEntry) {
  {
    StubFolder folder(nullptr);
    EXPECT_EQ(Tavona_SendMail(L"a", L"b", nullptr, nullptr, L"s", L"t", nullptr), -1);
    ExpectReport({L"MAPI32.DLL"}, __LINE__);
  }
  StubFolder folder(L"bridges_noentry");
  EXPECT_EQ(Tavona_SendMail(L"a", L"b", nullptr, nullptr, L"s", L"t", nullptr), -1);
  ExpectReport({L"MAPISendMail", L"MAPI32.DLL"}, __LINE__);
}

// Every code of the table with its text, in the language of the run; with
// DisplayNativeError the native line follows, and codes without a text
// show the native line alone.
TEST_F(Mail, ErrorTexts) {
  struct Row {
    ULONG code;
    UINT id;
  } rows[] = {{1, 1850},  {2, 1851},  {3, 1852},  {4, 1853},  {5, 1854},  {6, 1855},
              {7, 0},     {8, 1856},  {9, 1857},  {10, 1858}, {11, 1859}, {12, 1860},
              {13, 1861}, {14, 1862}, {15, 1863}, {16, 2964}, {17, 1865}, {18, 1866},
              {19, 1867}, {20, 1868}, {21, 1869}, {22, 1870}, {23, 1871}, {24, 1872},
              {25, 1873}, {26, 1874}, {30, 0}};
  auto shown = [](ULONG code, const wchar_t *routine) {
    std::wstring text;
    int rc = tvui::RunModal([&] { return Tavona_DisplayMapiError(nullptr, code, routine, 0); },
                            [&](tvui::Session &s) {
                              tvui::Box box = s.WaitMessageBox(Resource(IDS_CAPTION_MAPI_ERROR));
                              text = box.text;
                              EXPECT_EQ(box.buttons, std::vector<int>{IDOK});
                              if (code == 3) s.Screenshot(box.hwnd, Shot(L"mail_error"));
                              s.Answer(box, IDOK);
                            });
    EXPECT_EQ(rc, 1);
    return text;
  };
  for (const Row &r : rows) {
    wchar_t native[100];
    swprintf(native, 100, L"Mapi-Error %lu (hex %lX) in Routine 'MAPISendMail'", r.code, r.code);
    std::wstring expected = r.id ? Resource(r.id) : native;
    ASSERT_FALSE(expected.empty()) << r.id;
    EXPECT_EQ(shown(r.code, L"MAPISendMail"), expected) << "code " << r.code;
  }
  EXPECT_EQ(Tavona_DisplayMapiError(nullptr, 0, L"x", 0), 1) << "code 0 shows nothing";

  Tavona_WriteLongToHKCU(kMapiKey, nullptr, L"DisplayNativeError", 1);
  EXPECT_EQ(shown(3, nullptr), Resource(1852) + L"\r\nMapi-Error 3 (hex 3) in Routine ''");
  EXPECT_EQ(shown(30, L"R"), L"\r\nMapi-Error 30 (hex 1E) in Routine 'R'");
}

TEST(MailGerman, ErrorTextsInGerman) {
  if (GermanRun()) GTEST_SKIP() << "already the German run";
  EXPECT_EQ(RunInGerman(L"Mail.ErrorTexts"), 0u);
}

TEST_F(Mail, Editors) {
  auto call = [] {
    return std::pair{Tavona_ModalEditor(1, 1, 2, 3, 4, 5, 6, 7), Tavona_EditRtf(1, 2, 3)};
  };
  EXPECT_EQ(Tavona_ModalEditor(0, 1, 2, 3, 4, 5, 6, 7), 2);
  EXPECT_EQ(Tavona_ModalEditor(2, 1, 2, 3, 4, 5, 6, 7), 2);
  EXPECT_TRUE(g_capturedReports.empty()) << "other modes load nothing";
  {
    StubFolder folder(nullptr);
    EXPECT_EQ(Tavona_ModalEditor(1, 1, 2, 3, 4, 5, 6, 7), 2);
    ExpectReport({L"xeddll.dll"}, __LINE__);
    EXPECT_EQ(Tavona_EditRtf(1, 2, 3), 0);
    ExpectReport({L"TAVONAEX.DLL"}, __LINE__);
    EXPECT_EQ(Tavona_IsRtfEditorAvailable(), 0);
    EXPECT_TRUE(g_capturedReports.empty());
  }
  {
    StubFolder folder(L"bridges_noentry");
    EXPECT_EQ(Tavona_ModalEditor(1, 1, 2, 3, 4, 5, 6, 7), 2);
    ExpectReport({L"Xed_ModalEditor", L"xeddll.dll"}, __LINE__);
    EXPECT_EQ(Tavona_EditRtf(1, 2, 3), 0);
    ExpectReport({L"TavonaExt_EditRTF", L"TAVONAEX.DLL"}, __LINE__);
    EXPECT_EQ(Tavona_IsRtfEditorAvailable(), 0);
    EXPECT_TRUE(g_capturedReports.empty());
  }
  StubFolder folder(L"bridges_full");
  // 1*1 + 2*2 + ... + 7*7 = 140, and the final value 0.
  EXPECT_EQ(call(), std::pair(140, 123));
  EXPECT_EQ(Tavona_IsRtfEditorAvailable(), 1);
  EXPECT_TRUE(g_capturedReports.empty());
  EXPECT_EQ(GetModuleHandleW(L"xeddll.dll"), nullptr) << "freed after the call";
  EXPECT_EQ(GetModuleHandleW(L"TAVONAEX.DLL"), nullptr);
}

// The help file beside the module is opened on the topic: the desktop as
// owner, the help-context command (15) and the context number.
TEST_F(Mail, HelpViewerCall) {
  StubFolder folder(L"bridges_full");
  HMODULE viewer = LoadLibraryW((BinDir() + L"bridges_full\\hhctrl.ocx").c_str());
  ASSERT_TRUE(viewer);
  auto last = reinterpret_cast<int(WINAPI *)(HWND *, WCHAR *, UINT *, DWORD_PTR *)>(
      GetProcAddress(viewer, "StubHelp_Last"));
  wchar_t self[MAX_PATH];
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  std::wstring help = self;
  help = help.substr(0, help.rfind(L'.')) + L".chm";
  HANDLE file = CreateFileW(help.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  CloseHandle(file);
  Tavona_PerformHelp(GetModuleHandleW(nullptr), 4711, 0);
  DeleteFileW(help.c_str());
  Tavona_PerformHelp(GetModuleHandleW(nullptr), 12, 0);  // missing now: reported, not shown
  HWND owner = nullptr;
  wchar_t shown[MAX_PATH] = L"";
  UINT command = 0;
  DWORD_PTR context = 0;
  EXPECT_EQ(last(&owner, shown, &command, &context), 1);
  EXPECT_EQ(owner, GetDesktopWindow());
  EXPECT_EQ(shown, help);
  EXPECT_EQ(command, 15u);
  EXPECT_EQ(context, 4711u);
  EXPECT_EQ(g_capturedReports.size(), 1u);
  FreeLibrary(viewer);
}

}  // namespace
