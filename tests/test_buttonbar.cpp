// The button bar window under wine: mouse messages, notifications, drags
// with their cursors, painted states read back pixel by pixel, the context
// menus and property dialogs in both languages. The layouts are the host
// test's.
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "controls/barcore.h"
#include "frame/globals.h"
#include "frame/wndclasses.h"
#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

constexpr UINT kNotify = WM_APP + 7;
constexpr COLORREF kBack = RGB(0, 128, 128);

LPARAM At(int x, int y) { return MAKELPARAM(x, y); }

class ButtonBar : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    tv::InitPortableGlobals();
    tv::InitSecondGlobals();
    tv::g.instance = GetModuleHandleW(nullptr);
    tv::RegisterWindowClasses(tv::g.instance);
  }
  void SetUp() override {
    tv::g.resources = LanguageResources(L"en");
    top_ = CreateWindowW(L"TAVONA_STATUS_32", L"bar test", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10,
                         10, 520, 300, nullptr, nullptr, nullptr, nullptr);
    bar_ = WButtWind_CreateWindow(top_, top_, kNotify);
    ASSERT_TRUE(bar_);
    WButtWind_SetColorProperty(bar_, WBAR_COLOR_BACKGROUND, kBack);
  }
  void TearDown() override { DestroyWindow(top_); }

  // Buttons width x 24 with ids 1..n, captions "B1"...
  std::vector<HWBUTTON> Fill(int n, int width = 40) {
    std::vector<HWBUTTON> v;
    for (int i = 1; i <= n; ++i) {
      v.push_back(WButtWind_CreateNewButton(bar_, 1, L"k", nullptr, i, 24, width, 0, nullptr));
      WButton_SetStringProperty(v.back(), 5, (L"B" + std::to_wstring(i)).c_str());
    }
    WButtWind_Arrange(bar_);
    return v;
  }
  std::vector<int> Order() {
    std::vector<int> ids;
    for (HWBUTTON b = nullptr; (b = WButtWind_FindButton(bar_, nullptr, nullptr, 0, b));)
      ids.push_back(int(WButton_GetLongProperty(b, 2)));
    return ids;
  }
  // Notifications the bar posted to the top window since the last call.
  std::vector<LPARAM> Notes() {
    std::vector<LPARAM> notes;
    for (MSG m; PeekMessageW(&m, top_, kNotify, kNotify, PM_REMOVE);) {
      EXPECT_EQ(m.wParam, 1u);
      notes.push_back(m.lParam);
    }
    return notes;
  }
  void Mouse(UINT msg, int x, int y) {
    SendMessageW(bar_, msg, msg == WM_LBUTTONUP ? 0 : MK_LBUTTON, At(x, y));
  }
  HWND top_ = nullptr, bar_ = nullptr;
};

TEST_F(ButtonBar, ClickNotifiesTheParentAndPaintsPressed) {
  std::vector<HWBUTTON> b = Fill(3);
  Notes();
  Mouse(WM_LBUTTONDOWN, 50, 10);
  EXPECT_EQ(GetCapture(), bar_);
  // Pressed: sunken edge, dark above, light below.
  tvui::Image img = tvui::Capture(bar_);
  EXPECT_EQ(img.At(44, 4), 0x808080u);
  EXPECT_EQ(img.At(83, 27), 0xEFEFEFu);
  Mouse(WM_LBUTTONUP, 50, 10);
  EXPECT_NE(GetCapture(), bar_);
  EXPECT_EQ(Notes(), std::vector<LPARAM>{reinterpret_cast<LPARAM>(b[1])});
  EXPECT_EQ(tvui::Capture(bar_).At(44, 4), 0xEFEFEFu) << "raised again";
  // An empty place, and an invisible button, notify nothing.
  WButtWind_SetButtonsInvisible(bar_, nullptr, nullptr, 3, TRUE);
  for (int x : {150, 90}) Mouse(WM_LBUTTONDOWN, x, 10), Mouse(WM_LBUTTONUP, x, 10);
  EXPECT_TRUE(Notes().empty());
}

TEST_F(ButtonBar, PaintedStates) {
  MoveWindow(bar_, 0, 0, 400, 60, TRUE);
  std::vector<HWBUTTON> b = Fill(5);
  WButton_SetStringProperty(b[0], 5, nullptr);
  WButton_SetLongProperty(b[1], 6, WBUTTON_LATCHED);
  WButton_SetLongProperty(b[2], 6, WBUTTON_INVERTED);
  WButton_SetStringProperty(b[2], 5, nullptr);
  ASSERT_TRUE(WButtWind_CreateNewButton(bar_, 8, nullptr, nullptr, 6, 24, 40, 0, nullptr));
  ASSERT_TRUE(WButtWind_CreateNewButton(bar_, 2, nullptr, nullptr, 7, 24, 40, 0, nullptr));
  WButtWind_SetColorProperty(bar_, WBAR_COLOR_SECOND, RGB(255, 0, 0));
  ASSERT_TRUE(WButton_LoadBitmapFromResource(b[4], LanguageResources(L"en"),
                                             MAKEINTRESOURCEW(IDB_WIZARD_DEFAULT)));
  WButtWind_Arrange(bar_);
  // One pixel per state.
  struct Px { const char *what; int x, y; uint32_t want; bool equal; } px[] = {
      {"bar frame", 0, 0, 0xEFEFEF, true},         {"background", 350, 40, 0x008080, true},
      {"raised edge", 4, 4, 0xEFEFEF, true},       {"face", 24, 16, 0xC0C0C0, true},
      {"latched: sunken", 44, 4, 0x808080, true},  {"inverted face", 100, 16, 0x3F3F3F, true},
      {"swatch of colour 104", 210, 10, 0xFF0000, true},
      {"kind 2 is not painted", 264, 16, 0x008080, true},
      {"the picture stretched over the face", 170, 8, 0xC0C0C0, false},
  };
  tvui::Image img = tvui::Capture(bar_);
  for (const Px &p : px) EXPECT_EQ(img.At(p.x, p.y) == p.want, p.equal) << p.what;
  tvui::SaveScreenshot(bar_, L"buttonbar_states");
}

TEST_F(ButtonBar, DragMovesButtonsWithTheirCursors) {
  Fill(4);
  // The bar's own copies of the resource library's cursors.
  auto *record = reinterpret_cast<tv::BarRecord *>(GetWindowLongPtrW(bar_, 0));
  HANDLE drop = record->dropCursor, noDrop = record->noDropCursor;
  ASSERT_TRUE(drop && noDrop && drop != noDrop);
  // x of the press, where the release is, the order after it.
  struct Row { const char *what; int from, to, toY; std::vector<int> order; } rows[] = {
      {"second onto fourth", 50, 130, 10, {1, 3, 4, 2}},
      {"outside the bar", 10, 180, 400, {1, 2, 3, 4}},
  };
  for (const Row &r : rows) {
    WButtWind_DeleteAllButtons(bar_);
    Fill(4);
    Notes();
    Mouse(WM_LBUTTONDOWN, r.from, 10);
    Mouse(WM_MOUSEMOVE, r.from + 20, 12);
    EXPECT_EQ(GetCursor(), drop) << r.what;
    Mouse(WM_MOUSEMOVE, r.to, r.toY);
    EXPECT_EQ(GetCursor(), r.toY < 200 ? drop : noDrop) << r.what;
    Mouse(WM_LBUTTONUP, r.to, r.toY);
    EXPECT_EQ(Order(), r.order) << r.what;
    EXPECT_TRUE(Notes().empty()) << r.what << ": a drag is no click";
    EXPECT_NE(GetCursor(), drop) << r.what;
  }
}

TEST_F(ButtonBar, CommandsOfTheContextMenu) {
  std::vector<HWBUTTON> b = Fill(3, 30);
  auto command = [&](UINT id) { SendMessageW(bar_, WM_COMMAND, id, 0); };
  auto rect = [](HWBUTTON h) {
    const tv::BarRect &r = reinterpret_cast<tv::BarButton *>(h)->rect;
    return std::to_string(r.left) + "," + std::to_string(r.top) + "," +
           std::to_string(r.right) + "," + std::to_string(r.bottom);
  };
  SendMessageW(bar_, WM_MOUSEMOVE, 0, At(40, 10));  // the second is hot
  command(IDM_BAR_DELETE);
  EXPECT_EQ(Order(), (std::vector<int>{1, 3}));
  command(IDM_BAR_NEW_BUTTON);
  HWBUTTON added = WButtWind_FindButton(bar_, nullptr, nullptr, 0, b[2]);
  ASSERT_TRUE(added);
  WCHAR name[4] = L"x";
  WButton_GetStringProperty(added, 1, name, 4);
  EXPECT_STREQ(name, L"");
  EXPECT_EQ(rect(added), "64,4,94,28") << "the first button's size, laid out";
  // Kept as it stands: the space takes the first button's rectangle and
  // nothing is laid out.
  command(IDM_BAR_NEW_SPACE);
  EXPECT_EQ(Order(), (std::vector<int>{1, 3, 0, 0}));
  EXPECT_EQ(rect(WButtWind_FindButton(bar_, nullptr, nullptr, 0, added)), "4,4,34,28");
}

// The menus through the right button, read and answered by keyboard. The
// last item of the empty-place menu is "wrap", the sixth below the separator
// that the keyboard skips.
TEST_F(ButtonBar, ContextMenusInBothLanguages) {
  Fill(2);
  struct Row { const wchar_t *lang; bool onButton; int downs, wrap; const wchar_t *shot; } rows[] = {
      {L"en", false, 6, 1, L"buttonbar_menu_empty_en"}, {L"de", false, 6, 0, L"buttonbar_menu_empty_de"},
      {L"en", true, 0, 0, L"buttonbar_menu_button_en"}, {L"de", true, 0, 0, L"buttonbar_menu_button_de"}};
  for (const Row &r : rows) {
    tv::g.resources = LanguageResources(r.lang);
    tvui::RunModal([&] { SendMessageW(bar_, WM_RBUTTONUP, 0, r.onButton ? At(10, 10) : At(150, 150)); },
                   [&](tvui::Session &s) {
                     HWND menu = s.WaitWindow(
                         [](HWND h) {
                           WCHAR cls[16];
                           GetClassNameW(h, cls, 16);
                           return lstrcmpW(cls, L"#32768") == 0 && IsWindowVisible(h);
                         },
                         L"the context menu");
                     Sleep(200);
                     s.Screenshot(menu, r.shot);
                     for (int i = 0; i < r.downs; ++i) PostMessageW(menu, WM_KEYDOWN, VK_DOWN, 0);
                     PostMessageW(menu, WM_KEYDOWN, r.downs ? VK_RETURN : VK_ESCAPE, 0);
                     s.WaitClosed(menu);
                   });
    EXPECT_EQ(WButtWind_GetLongProperty(bar_, WBAR_WRAP), r.wrap) << Narrow(r.shot);
  }
}

TEST_F(ButtonBar, PropertyDialogsAndEditProp) {
  std::vector<HWBUTTON> b = Fill(2);
  for (std::wstring lang : {L"en", L"de"}) {
    tv::g.resources = LanguageResources(lang.c_str());
    std::wstring suffix = L"_" + lang;
    auto dialog = [&](const wchar_t *shot, int field, const wchar_t *text, int check) {
      return [=](tvui::Session &s) {
        HWND d = s.WaitAnyDialog();
        s.Screenshot(d, shot + suffix);
        s.SetText(d, field, text);
        s.Check(d, check);
        s.Click(d, IDOK);
      };
    };
    EXPECT_EQ(tvui::RunModal([&] { return WButtWind_EditProperties(bar_); },
                             dialog(L"buttonbar_properties", IDC_BAR_MARGIN, L"10", IDC_BAR_VERTICAL)),
              1);
    EXPECT_EQ(WButtWind_GetLongProperty(bar_, WBAR_MARGIN), 10);
    EXPECT_EQ(WButtWind_GetLongProperty(bar_, WBAR_ARRANGEMENT), 2);
    WButtWind_SetLongProperty(bar_, WBAR_ARRANGEMENT, 1);
    WButtWind_SetLongProperty(bar_, WBAR_MARGIN, 4);
    WButtWind_Arrange(bar_);
    SendMessageW(bar_, WM_MOUSEMOVE, 0, At(10, 10));
    tvui::RunModal([&] { SendMessageW(bar_, WM_COMMAND, IDM_BAR_BUTTON_PROPERTIES, 0); },
                   dialog(L"buttonbar_button", IDC_BUTTON_CAPTION, L"Neu", IDC_BUTTON_LATCHED));
    WCHAR caption[8];
    WButton_GetStringProperty(b[0], 5, caption, 8);
    EXPECT_STREQ(caption, L"Neu");
    EXPECT_EQ(WButton_GetLongProperty(b[0], 6), WBUTTON_LATCHED);
    WButton_SetLongProperty(b[0], 6, 0);
  }
  // A double click on an empty place: the box as it stands.
  tvui::RunModal([&] { Mouse(WM_LBUTTONDBLCLK, 150, 150); },
                 [&](tvui::Session &s) {
                   tvui::Box box = s.WaitMessageBox(L"EDIT PROP");
                   EXPECT_EQ(box.text, L"EDIT PROP");
                   s.Answer(box, IDOK);
                 });
}

}  // namespace
