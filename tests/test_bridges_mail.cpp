// Mail, MAPI error boxes, editor libraries and the help viewer through the
// stand-ins of bin\bridges_full and bin\bridges_noentry (the test runs with
// the native MAPI32.DLL preferred to wine's own).
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

const wchar_t kMapiKey[] = L"Software\\Tavona Software\\Dump\\Mapi";

// One variant folder of the stand-ins on the search path, or none.
struct StubFolder {
  explicit StubFolder(const wchar_t *variant)
      : cookie(variant ? AddDllDirectory((BinDir() + variant).c_str()) : nullptr) {}
  ~StubFolder() { if (cookie) RemoveDllDirectory(cookie); }
  DLL_DIRECTORY_COOKIE cookie;
};

// A stand-in's entry with its type (through void(*)() as GetProcAddress needs).
template <typename F>
F Entry(HMODULE module, const char *name) {
  return reinterpret_cast<F>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

// The stand-in, held by the test so that its transcript survives the
// library's FreeLibrary.
struct Mapi {
  HMODULE module = LoadLibraryW((BinDir() + L"bridges_full\\MAPI32.DLL").c_str());
  ~Mapi() { FreeLibrary(module); }
  void Answer(ULONG code) {
    Entry<void(WINAPI *)(ULONG)>(module, "StubMapi_SetAnswer")(code);
  }
  std::string Last(int *calls) {
    return Entry<const char *(WINAPI *)(int *)>(module, "StubMapi_Last")(calls);
  }
};

std::wstring Resource(UINT id) {
  wchar_t text[500] = L"";
  LoadStringW(Tavona_GetResourceModule(), id, text, 500);
  return text;
}

int Send() { return Tavona_SendMail(L"a", L"b", nullptr, nullptr, L"s", L"t", nullptr); }

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

TEST_F(Mail, MessageFieldByField) {
  StubFolder folder(L"bridges_full");
  Mapi mapi;
  ASSERT_TRUE(mapi.module);
  EXPECT_EQ(Tavona_SendMail(L"Jürg Sender", L";;anna@x.ch;;; bruno@x.ch;", L"carla@x.ch", L";",
                            L"Subject", L"Line 1\r\nLine 2", L"C:\\a.txt;C:\\b c.pdf"), 0);
  char sender[100];
  WideCharToMultiByte(CP_ACP, 0, L"Jürg Sender", -1, sender, 100, nullptr, nullptr);
  const std::string head = "session=0\nowner=none\nflags=8\nreserved=0\nmessage.reserved=0\n";
  const std::string middle = "type=(null)\ndate=2002/09/16 23:23\nconversation=TS\nmessage.flags=0\n"
                             "originator.class=0\noriginator.name=";
  int calls = 0;
  EXPECT_EQ(mapi.Last(&calls), head + "subject=Subject\nnote=Line 1\r\nLine 2\n" + middle + sender +
                                   "\nrecip.1=anna@x.ch\nrecip.1= bruno@x.ch\nrecip.2=carla@x.ch\n"
                                   "file=C:\\a.txt\nfile.position=4294967295\n"
                                   "file=C:\\b c.pdf\nfile.position=4294967295\n");
  EXPECT_EQ(calls, 1);
  EXPECT_TRUE(g_capturedReports.empty());
}

// Cancelling the compose window shows nothing; other answers are shown.
// Without the service or its entry the call fails with a report.
TEST_F(Mail, ServiceAnswersAndMissingService) {
  {
    StubFolder folder(L"bridges_full");
    Mapi mapi;
    mapi.Answer(1);
    EXPECT_EQ(Send(), 0);
    mapi.Answer(3);
    EXPECT_EQ(tvui::RunModal(Send, [](tvui::Session &s) {
                tvui::Box box = s.WaitMessageBox(Resource(IDS_CAPTION_MAPI_ERROR));
                EXPECT_EQ(box.text, Resource(1852));
                s.Answer(box, IDOK);
              }), 0);
  }
  {
    StubFolder folder(nullptr);
    EXPECT_EQ(Send(), -1);
    ExpectReport({L"MAPI32.DLL"}, __LINE__);
  }
  StubFolder folder(L"bridges_noentry");
  EXPECT_EQ(Send(), -1);
  ExpectReport({L"MAPISendMail", L"MAPI32.DLL"}, __LINE__);
}

// Codes with their text, in the language of the run (16 has a text of its
// own); with DisplayNativeError the native line follows, and codes without
// a text show the native line alone.
TEST_F(Mail, ErrorTexts) {
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
  for (auto [code, id] : {std::pair<ULONG, UINT>{3, 1852}, {16, 2964}, {26, 1874}}) {
    ASSERT_FALSE(Resource(id).empty()) << id;
    EXPECT_EQ(shown(code, L"MAPISendMail"), Resource(id)) << "code " << code;
  }
  EXPECT_EQ(shown(7, L"MAPISendMail"), L"Mapi-Error 7 (hex 7) in Routine 'MAPISendMail'");
  EXPECT_EQ(Tavona_DisplayMapiError(nullptr, 0, L"x", 0), 1) << "code 0 shows nothing";
  Tavona_WriteLongToHKCU(kMapiKey, nullptr, L"DisplayNativeError", 1);
  EXPECT_EQ(shown(3, nullptr), Resource(1852) + L"\r\nMapi-Error 3 (hex 3) in Routine ''");
  EXPECT_EQ(shown(30, L"R"), L"\r\nMapi-Error 30 (hex 1E) in Routine 'R'");
}

TEST(MailGerman, ErrorTextsInGerman) {
  if (GermanRun()) GTEST_SKIP() << "already the German run";
  EXPECT_EQ(RunInGerman(L"Mail.ErrorTexts"), 0u);
}

// Other modes load nothing; a missing library or entry is reported by its
// name; the full stand-ins answer and are freed after the call.
TEST_F(Mail, Editors) {
  auto editor = [](int mode) { return Tavona_ModalEditor(mode, 1, 2, 3, 4, 5, 6, 7); };
  EXPECT_EQ(editor(0), 2);
  EXPECT_EQ(editor(2), 2);
  EXPECT_TRUE(g_capturedReports.empty());
  struct Row { const wchar_t *variant, *editorEntry, *extensionEntry; };
  for (const Row &r : {Row{nullptr, nullptr, nullptr},
                       Row{L"bridges_noentry", L"Xed_ModalEditor", L"TavonaExt_EditRTF"}}) {
    StubFolder folder(r.variant);
    EXPECT_EQ(editor(1), 2);
    ExpectReport({L"xeddll.dll", r.editorEntry ? r.editorEntry : L""}, __LINE__);
    EXPECT_EQ(Tavona_EditRtf(1, 2, 3), 0);
    ExpectReport({L"TAVONAEX.DLL", r.extensionEntry ? r.extensionEntry : L""}, __LINE__);
    EXPECT_EQ(Tavona_IsRtfEditorAvailable(), 0);
    EXPECT_TRUE(g_capturedReports.empty());
  }
  StubFolder folder(L"bridges_full");
  EXPECT_EQ(editor(1), 140);  // 1*1 + 2*2 + ... + 7*7
  EXPECT_EQ(Tavona_EditRtf(1, 2, 3), 123);
  EXPECT_EQ(Tavona_IsRtfEditorAvailable(), 1);
  EXPECT_TRUE(g_capturedReports.empty());
  EXPECT_EQ(GetModuleHandleW(L"xeddll.dll"), nullptr) << "freed after the call";
  EXPECT_EQ(GetModuleHandleW(L"TAVONAEX.DLL"), nullptr);
}

// The help file beside the module is opened on the topic: the desktop as
// owner, the help-context command (15) and the context number; a missing
// file is reported, not shown.
TEST_F(Mail, HelpViewerCall) {
  StubFolder folder(L"bridges_full");
  HMODULE viewer = LoadLibraryW((BinDir() + L"bridges_full\\hhctrl.ocx").c_str());
  ASSERT_TRUE(viewer);
  auto last = Entry<int(WINAPI *)(HWND *, WCHAR *, UINT *, DWORD_PTR *)>(viewer, "StubHelp_Last");
  wchar_t self[MAX_PATH];
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  std::wstring help = self;
  help = help.substr(0, help.rfind(L'.')) + L".chm";
  CloseHandle(CreateFileW(help.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  Tavona_PerformHelp(GetModuleHandleW(nullptr), 4711, 0);
  DeleteFileW(help.c_str());
  Tavona_PerformHelp(GetModuleHandleW(nullptr), 12, 0);
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
