#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "uidriver.h"

namespace {

// Two boxes in turn: the driver reads each (text, icon, buttons in order),
// answers it, and the call sees the answers. The dialog steps (click, text,
// nested boxes) are driven by every dialog test.
TEST(UiDriver, ReadsAndAnswersMessageBoxes) {
  std::wstring path;
  tvui::Script script = [&](tvui::Session &s) {
    tvui::Box first = s.WaitMessageBox(L"Driver");
    EXPECT_EQ(first.text, L"Save the changes to Zo\u00eb's file?");
    EXPECT_EQ(first.icon, UINT(MB_ICONQUESTION));
    EXPECT_EQ(first.buttons, (std::vector<int>{IDYES, IDNO, IDCANCEL}));
    path = s.Screenshot(first.hwnd, L"uidriver_box");
    s.Answer(first, IDNO);
    s.Answer(s.WaitMessageBox(L"Driver"), IDOK);  // a new box, not the first again
  };
  auto show = [] {
    int first = MessageBoxW(nullptr, L"Save the changes to Zo\u00eb's file?", L"Driver",
                            MB_YESNOCANCEL | MB_ICONQUESTION);
    return first * 10 + MessageBoxW(nullptr, L"Not saved.", L"Driver", MB_ICONEXCLAMATION);
  };
  EXPECT_EQ(tvui::RunModal(show, script), IDNO * 10 + IDOK);
  EXPECT_GT(std::filesystem::file_size(std::filesystem::path(path)), 100u);
}

}  // namespace
