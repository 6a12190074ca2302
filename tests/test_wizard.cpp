// The wizard over four pages of the test program, driven through the UI
// driver: the messages every page receives in order, vetoes, disabled
// pages, margins and the picture, failures, both languages.
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/globals.h"
#include "frame/wndclasses.h"
#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

constexpr UINT kActivate = WM_APP + 1, kLeave = WM_APP + 2, kPing = WM_APP + 3;
const WIZZARD_PAGEDEF kPages[] = {{201, 0, 301}, {202, 0, 302}, {203, 0, 303}, {204, 0, 304},
                                  {0, 0, 0}};

// What the callback saw, as "receiver:message:wparam@current page".
struct Recorder {
  std::vector<std::string> log;
  UINT vetoPage = 0;  // answers the leave message of this page with 0
  WizzardContext *context = nullptr;
  UINT frameMessages = 0;
  std::wstring pictureFile;  // given to Wizzard_SetDefaultBitmap as the frame opens
} g_rec;

std::string PageOf(WizzardContext *c, HWND w) {
  for (UINT id = 201; id <= 204; ++id)
    if (Wizzard_GetHwndSubDialog(c, id) == w) return std::to_string(id);
  return "new";  // still in CreateDialogParamW
}

INT CALLBACK Callback(WizzardContext *c, UINT pageId, HWND w, UINT m, WPARAM wp, LPARAM lp) {
  g_rec.context = c;
  if (pageId == 0) {
    ++g_rec.frameMessages;
    if (m == WM_INITDIALOG && !g_rec.pictureFile.empty()) {
      EXPECT_EQ(Wizzard_SetDefaultBitmap(c, g_rec.pictureFile.c_str()),
                g_rec.pictureFile.find(L"missing") == std::wstring::npos);
    }
    return 0;
  }
  const char *name = m == WM_INITDIALOG ? "init" : m == kActivate ? "activate"
                     : m == kLeave ? "leave" : m == kPing ? "ping" : nullptr;
  if (!name) return 0;
  // WM_INITDIALOG's WPARAM is a control handle: not worth comparing.
  if (m == WM_INITDIALOG) wp = 0;
  g_rec.log.push_back(PageOf(c, w) + ":" + name + ":" + std::to_string(wp) + "@" +
                      std::to_string(pageId));
  if (m == kLeave || m == kActivate) {
    auto *block = reinterpret_cast<WizzardPageMessage *>(lp);
    EXPECT_EQ(block->context, c);
    EXPECT_EQ(block->result, 1);
    if (m == kLeave && pageId == g_rec.vetoPage) block->result = 0;
  }
  return m == WM_INITDIALOG;
}

class Wizard : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    tv::InitPortableGlobals();
    tv::InitSecondGlobals();
    tv::g.instance = GetModuleHandleW(nullptr);
    tv::RegisterWindowClasses(tv::g.instance);
  }
  void SetUp() override {
    tv::g.resources = LanguageResources(L"en");
    g_rec = Recorder{};
    g_capturedReports.clear();
    Tavona_SetErrorHandlerCallback(CaptureReports);
  }
  void TearDown() override { Tavona_SetErrorHandlerCallback(nullptr); }

  static INT Run(const tvui::Script &script, const WIZZARD_PAGEDEF *pages = kPages,
                 UINT activate = kActivate, INT margin = 13, UINT bitmap = IDB_WIZARD_DEFAULT) {
    return tvui::RunModal(
        [&] {
          return Wizzard_Perform(pages, Callback, activate, kLeave, 77, bitmap, 300,
                                 GetModuleHandleW(nullptr), L"TESTAPP", margin, WIZZARD_TITLE_BOTH);
        },
        script);
  }
  // Which of Back, Next, Finish are enabled ("BNF" with '-' for disabled).
  static std::string Buttons(HWND d) {
    auto on = [&](int id, char c) { return IsWindowEnabled(GetDlgItem(d, id)) ? c : '-'; };
    return {on(IDC_WIZARD_BACK, 'B'), on(IDC_WIZARD_NEXT, 'N'), on(IDOK, 'F')};
  }
  static UINT Visible(HWND d) {
    UINT shown = 0;
    for (UINT id = 201; id <= 204; ++id)
      if (IsWindowVisible(Wizzard_GetHwndSubDialog(g_rec.context, id))) shown = shown * 1000 + id;
    return shown;
  }
};

TEST_F(Wizard, EveryPageMessageInOrder) {
  for (std::wstring lang : {L"en", L"de"}) {
    SetUp();
    tv::g.resources = LanguageResources(lang.c_str());
    std::wstring suffix = L"_" + lang;
    INT r = Run([&](tvui::Session &s) {
      HWND d = s.WaitAnyDialog();
      EXPECT_EQ(s.Text(d), L"Setup - Your name");
      EXPECT_EQ(Buttons(d), "-N-");
      EXPECT_EQ(Visible(d), 201u);
      s.Screenshot(d, L"wizard_page1" + suffix);
      // Hidden pages speak with the current page's identifier.
      s.Send(Wizzard_GetHwndSubDialog(g_rec.context, 203), kPing);
      const char *expectButtons[] = {"BN-", "BN-", "B-F"};
      for (int i = 0; i < 3; ++i) {
        s.Click(d, IDC_WIZARD_NEXT);
        EXPECT_EQ(Buttons(d), expectButtons[i]) << i;
        EXPECT_EQ(Visible(d), 202u + i);
        s.Screenshot(d, L"wizard_page" + std::to_wstring(i + 2) + suffix);
      }
      EXPECT_EQ(s.Text(d), L"Setup - Ready");
      s.Click(d, IDC_WIZARD_BACK);
      EXPECT_EQ(Visible(d), 203u);
      s.Click(d, IDC_WIZARD_NEXT);
      s.Click(d, IDOK);
    });
    EXPECT_EQ(r, 1);
    const std::vector<std::string> expected = {
        "new:init:0@201",   "new:init:0@201",     "new:init:0@201",   "new:init:0@201",
        "201:activate:0@201", "203:ping:0@201",   "201:leave:1@201",  "202:activate:0@202",
        "202:leave:1@202",  "203:activate:0@203", "203:leave:1@203",  "204:activate:0@204",
        "204:leave:2@204",  // Back: told, no activate
        "203:leave:1@203",  "204:activate:0@204",
    };
    EXPECT_EQ(g_rec.log, expected);
    EXPECT_GT(g_rec.frameMessages, 10u) << "the frame's messages go to the callback";
  }
}

TEST_F(Wizard, VetoesAndDisabledPages) {
  g_rec.vetoPage = 202;
  INT r = Run([&](tvui::Session &s) {
    HWND d = s.WaitAnyDialog();
    WizzardContext *c = g_rec.context;
    EXPECT_EQ(Wizzard_EnableSubDialog(c, 203, 0), 1);
    EXPECT_EQ(Wizzard_EnableSubDialog(c, 203, 0), 0) << "was disabled already";
    s.Click(d, IDC_WIZARD_NEXT);
    s.Click(d, IDC_WIZARD_NEXT);  // vetoed by 202
    EXPECT_EQ(Visible(d), 202u);
    s.Click(d, IDC_WIZARD_BACK);  // the same answer does not stop Back
    EXPECT_EQ(Visible(d), 201u);
    g_rec.vetoPage = 0;
    s.Click(d, IDC_WIZARD_NEXT);
    s.Click(d, IDC_WIZARD_NEXT);
    EXPECT_EQ(Visible(d), 204u) << "203 skipped";
    s.Click(d, IDC_WIZARD_BACK);
    EXPECT_EQ(Visible(d), 202u);
    EXPECT_EQ(Wizzard_EnableSubDialog(c, 204, 0), 1);
    s.Click(d, IDC_WIZARD_BACK);  // the buttons follow at the next move
    EXPECT_EQ(Buttons(d), "-N-");
    s.Click(d, IDC_WIZARD_NEXT);
    EXPECT_EQ(Buttons(d), "B-F") << "every later page disabled";
    s.Click(d, IDCANCEL);
  });
  EXPECT_EQ(r, 2);
}

TEST_F(Wizard, FailuresEndWithTwo) {
  // A page that cannot be created: reported, the wizard ends at once.
  const WIZZARD_PAGEDEF broken[] = {{201, 0, 0}, {999, 0, 0}, {0, 0, 0}};
  EXPECT_EQ(Run([](tvui::Session &) {}, broken), 2);
  ASSERT_EQ(g_capturedReports.size(), 1u);
  wchar_t text[200];
  LoadStringW(tv::g.resources, IDS_ERR_WIZARD_PAGE, text, 200);
  EXPECT_NE(std::wstring(text).find(g_capturedReports[0].substr(0, 10)), std::wstring::npos);
  // A picture from a file, or none when the file is missing; the page starts
  // right of the framed picture (96 wide, frame 2), margins outside 1..50 are 13.
  wchar_t source[MAX_PATH] = {};
  GetEnvironmentVariableW(L"TAVONA_SOURCE_DIR", source, MAX_PATH);
  struct Row { const wchar_t *file; INT margin; LONG pageX; } rows[] = {
      {L"\\resources\\wizard.bmp", 0, 13 + 96 + 2 + 13},
      {L"\\resources\\wizard.bmp", 20, 20 + 96 + 2 + 20},
      {L"\\resources\\missing.bmp", 51, 13}};
  for (const Row &r : rows) {
    g_rec.pictureFile = std::wstring(source) + r.file;
    Run(
        [&](tvui::Session &s) {
          HWND d = s.WaitAnyDialog();
          POINT page = {};
          MapWindowPoints(Wizzard_GetHwndSubDialog(g_rec.context, 201), d, &page, 1);
          EXPECT_EQ(page.x, r.pageX) << Narrow(r.file) << " margin " << r.margin;
          EXPECT_EQ(page.y, r.margin == 20 ? 20 : 13);
          s.Click(d, IDCANCEL);
        },
        kPages, kActivate, r.margin, 0);
  }
}

}  // namespace
