// Error reporting against the real platform: the external handler library
// found through the registry, the message boxes of the shipped
// texts in both languages, the general error handler and system errors.
#include <tavona/tavona32.h>

#include "frame/globals.h"
#include "frame/report.h"
#include "frame/reportcore.h"
#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace {

const wchar_t kHandlerKey[] = L"Software\\Tavona Software\\Error Handler";

void SetHandler(const std::wstring &dll, const wchar_t *function = L"StubHandler_MessageBox") {
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, kHandlerKey, L"DllName", REG_SZ, dll.c_str(),
                  DWORD((dll.size() + 1) * 2));
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, kHandlerKey, L"FunctionName", REG_SZ, function,
                  DWORD((wcslen(function) + 1) * 2));
}

template <typename T>
T At(const std::vector<BYTE> &record, int offset) {
  T value;
  std::memcpy(&value, record.data() + offset, sizeof value);
  return value;
}

struct MessageBoxTest : ::testing::Test {
  void SetUp() override {
    tv::InitPortableGlobals();
    tv::InitSecondGlobals();
    tv::g.resources = en;
    Tavona_SetErrorHandlerCallback(nullptr);
    Tavona_SetErrorHandlingMode(1);
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, kHandlerKey);
  }
  void TearDown() override {
    RegDeleteKeyW(HKEY_LOCAL_MACHINE, kHandlerKey);
    Tavona_SetErrorHandlingMode(0);
  }
  static inline HMODULE en = LanguageResources(L"en"), de = LanguageResources(L"de");
};

// The stub stays loaded through this reference, so its record survives the
// library's unloading after each request.
struct Stub {
  HMODULE module = LoadLibraryW((BinDir() + L"tvstub_handler.dll").c_str());
  template <typename F>
  F Entry(const char *name) {
    return reinterpret_cast<F>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
  }
  void SetAnswer(INT v) { Entry<void(WINAPI *)(INT)>("StubHandler_SetAnswer")(v); }
  // The last record with its LTS module and first argument; the call count.
  int Last(std::vector<BYTE> &record, wchar_t (&lts)[64], wchar_t (&arg1)[260]) {
    record.assign(448, 0);
    return Entry<int(WINAPI *)(BYTE *, wchar_t *, wchar_t *)>("StubHandler_Last")(record.data(),
                                                                                  lts, arg1);
  }
  ~Stub() { FreeLibrary(module); }
};

INT WINAPI Answer5(const WCHAR *) { return 5; }

TEST_F(MessageBoxTest, ExternalHandlerReceivesTheRecord) {
  Stub stub;
  ASSERT_TRUE(stub.module);
  SetHandler(BinDir() + L"tvstub_handler.dll");
  struct Case {
    int (*report)(UINT);
    UINT caption, id, code;
  } cases[] = {
      {[](UINT id) { return tv::ReportError(id, L"a.txt"); }, 1500, 1354, 0x8004A01D},
      {[](UINT id) { return tv::ReportErrorWithCaption(1400, id, L"a.txt"); }, 1400, 1300,
       0x8004A014},
      {[](UINT id) { return tv::ReportNotice(id, L"a.txt"); }, 1521, 1341, 0x8004A000},
  };
  std::vector<BYTE> rec;
  wchar_t lts[64], arg1[260];
  int calls = stub.Last(rec, lts, arg1);
  stub.SetAnswer(42);
  for (const Case &c : cases) {
    EXPECT_EQ(c.report(c.id), 42);
    EXPECT_EQ(stub.Last(rec, lts, arg1), ++calls);
    EXPECT_EQ(At<HMODULE>(rec, 0), en);
    EXPECT_EQ(At<UINT>(rec, 8), c.caption);
    EXPECT_EQ(At<UINT>(rec, 12), c.id);
    EXPECT_EQ(At<UINT>(rec, 64), 1u);   // flag
    EXPECT_EQ(At<UINT>(rec, 68), 0u);   // reserved
    EXPECT_EQ(At<UINT>(rec, 72), c.code);
    EXPECT_EQ(At<HWND>(rec, 80), nullptr);
    EXPECT_EQ(std::vector<BYTE>(rec.begin() + 88, rec.end()), std::vector<BYTE>(360, 0));
    EXPECT_STREQ(lts, L"TAVONADLL");
    EXPECT_STREQ(arg1, L"a.txt");
  }

  // Zero falls through to the mode; a missing entry is skipped; the
  // callback comes first of all.
  stub.SetAnswer(0);
  EXPECT_EQ(tv::ReportError(1341), 1);
  EXPECT_EQ(stub.Last(rec, lts, arg1), ++calls);
  stub.SetAnswer(42);
  SetHandler(BinDir() + L"tvstub_handler.dll", L"NoSuchEntry");
  EXPECT_EQ(tv::ReportError(1341), 1);
  Tavona_SetErrorHandlerCallback(Answer5);
  SetHandler(BinDir() + L"tvstub_handler.dll");
  EXPECT_EQ(tv::ReportError(1341), 5);
  Tavona_SetErrorHandlerCallback(nullptr);
  EXPECT_EQ(stub.Last(rec, lts, arg1), calls);
  EXPECT_EQ(Tavona_Message_Box(nullptr), 2);
}

TEST_F(MessageBoxTest, BareHandlerNameIsNotTakenFromCurrentFolder) {
  Stub stub;
  stub.SetAnswer(42);
  SetHandler(L"tvstub_handler.dll");  // the application's folder
  EXPECT_EQ(tv::ReportError(1341), 42);

  wchar_t temp[MAX_PATH], cwd[MAX_PATH];
  GetTempPathW(MAX_PATH, temp);
  GetCurrentDirectoryW(MAX_PATH, cwd);
  std::wstring planted = std::wstring(temp) + L"tvstub_planted.dll";
  ASSERT_TRUE(CopyFileW((BinDir() + L"tvstub_handler.dll").c_str(), planted.c_str(), FALSE));
  SetCurrentDirectoryW(temp);
  SetHandler(L"tvstub_planted.dll");
  EXPECT_EQ(tv::ReportError(1341), 1);  // the planted copy would answer 99
  SetHandler(planted);                  // a full path is loaded as given
  EXPECT_EQ(tv::ReportError(1341), 99);
  SetCurrentDirectoryW(cwd);
  DeleteFileW(planted.c_str());
}

// The prefixes of the shipped texts in both languages, composed directly
// (their boxes: DirectBoxes).
TEST_F(MessageBoxTest, StylePrefixesOfTheShippedTexts) {
  struct Case {
    UINT id, style;
  } cases[] = {
      {IDS_ERR_FILE_OPEN, MB_ICONHAND | MB_OK},
      {IDS_ERR_ITEM_NAME_EMPTY, MB_ICONEXCLAMATION | MB_OK},
      {IDS_INFO_HELP_TEST, MB_ICONASTERISK | MB_OK},
      {IDS_ERR_LIST_FULL, MB_ICONEXCLAMATION | MB_OKCANCEL},
      {IDS_ASK_CANCEL_OPERATION, MB_ICONQUESTION | MB_YESNO},
      {IDS_ASK_DELETE_FILE, MB_ICONQUESTION | MB_YESNOCANCEL},
      {IDS_ASK_FILE_IN_USE, MB_ICONEXCLAMATION | MB_ABORTRETRYIGNORE},
  };
  const WCHAR *args[5] = {L"C:\\Data\\report.txt", L"D:\\Backup"};
  for (HMODULE module : {en, de}) {
    for (const Case &c : cases) {
      WCHAR text[1024];
      EXPECT_EQ(tv::ComposeMessageText(module, L"TAVONADLL", c.id, args, text, 1024),
                UINT(MB_TASKMODAL | c.style))
          << c.id << (module == de ? " de: " : " en: ") << Narrow(text);
    }
  }
}

// A request to the general error handler, "a" and "b" its arguments.
INT Handler(UINT kind, const wchar_t *text, const wchar_t *caption, UINT style, UINT more) {
  ErrorHandlerRequest r = {};
  r.kind = kind, r.text = text, r.caption = caption, r.style = style, r.moreStyle = more;
  r.args[0] = L"a", r.args[1] = L"b";
  return Tavona_ErrorHandler(&r);
}

// A shipped text in either language, its prefix removed.
INT Shipped(HMODULE module) {
  MessageBoxRequest r = {};
  r.module = module, r.captionId = IDS_CAPTION_ERROR, r.messageId = IDS_ASK_FILE_IN_USE;
  r.ltsModule = L"TAVONADLL", r.args[0] = L"a", r.args[1] = L"b";
  return Tavona_Message_Box(&r);
}

TEST_F(MessageBoxTest, DirectBoxes) {
  struct Case {
    std::function<int()> call;
    const wchar_t *caption, *text;  // text null: not compared
    UINT icon;
    std::vector<int> buttons;
    const wchar_t *shot;
  } cases[] = {
      {[] { return Shipped(en); }, L"Tavona - Error", nullptr, MB_ICONEXCLAMATION,
       {IDABORT, IDRETRY, IDIGNORE}, L"msgbox_en"},
      {[] { return Shipped(de); }, L"Tavona - Fehler", nullptr, MB_ICONEXCLAMATION,
       {IDABORT, IDRETRY, IDIGNORE}, L"msgbox_de"},
      {[] { return Handler(0, L"Copy %s to %s", L"Handler", MB_ICONASTERISK, MB_OKCANCEL); },
       L"Handler", L"Copy a to b", MB_ICONASTERISK, {IDOK, IDCANCEL}, L"msgbox_handler"},
  };
  Tavona_SetErrorHandlingMode(0);
  for (const Case &c : cases) {
    int result = tvui::RunModal(
        c.call,
        [&](tvui::Session &s) {
          tvui::Box box = s.WaitMessageBox({}, tvui::Ms(3000));
          EXPECT_EQ(box.caption, c.caption);
          EXPECT_NE(box.text.rfind(L"!RIA", 0), 0u) << "prefix left: " << Narrow(box.text);
          EXPECT_EQ(c.text ? box.text : L"", c.text ? c.text : L"") << Narrow(box.text);
          EXPECT_EQ(box.icon, c.icon);
          EXPECT_EQ(box.buttons, c.buttons);
          s.Screenshot(box.hwnd, c.shot);
          s.Answer(box, c.buttons.back());
        },
        tvui::Ms(6000));
    EXPECT_EQ(result, c.buttons.back()) << Narrow(c.caption);
  }
  // A known code gets the system's text (not "Error 2") under the library's
  // caption, the extras after an empty line and after a line end.
  tvui::RunModal([] { return Tavona_DisplaySystemError(ERROR_FILE_NOT_FOUND, 0, L"x", L"y"); },
                 [](tvui::Session &s) {
                   tvui::Box box = s.WaitMessageBox(L"Tavona - Error");
                   EXPECT_EQ(box.text.find(L"Error 2"), std::wstring::npos) << Narrow(box.text);
                   EXPECT_EQ(box.text.substr(box.text.size() - 8), L"\r\n\r\nx\r\ny");
                   s.Screenshot(box.hwnd, L"msgbox_system");
                   s.Answer(box, IDOK);
                 });
}

}  // namespace
