#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "uidriver.h"

namespace {

enum { kEdit = 101 };

// DLGTEMPLATE with an edit and an OK button, each DWORD-aligned.
std::vector<WORD> BuildTemplate() {
  std::vector<WORD> w;
  auto dword = [&](DWORD v) { w.insert(w.end(), {WORD(v), WORD(v >> 16)}); };
  auto str = [&](const wchar_t *s) { w.insert(w.end(), s, s + wcslen(s) + 1); };
  dword(DS_MODALFRAME | DS_SETFONT | WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE);
  dword(0);
  w.insert(w.end(), {2, 40, 40, 140, 50, 0, 0});
  str(L"Driver Dialog");
  w.push_back(8);
  str(L"MS Shell Dlg");
  struct { WORD atom; int id; DWORD style; const wchar_t *text; short x, y, cx, cy; } items[] = {
      {0x81, kEdit, WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, L"", 8, 8, 120, 14},
      {0x80, IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, L"OK", 78, 30, 50, 14}};
  for (const auto &i : items) {
    if (w.size() % 2) w.push_back(0);
    dword(i.style | WS_CHILD | WS_VISIBLE);
    dword(0);
    w.insert(w.end(), {WORD(i.x), WORD(i.y), WORD(i.cx), WORD(i.cy), WORD(i.id), 0xFFFF, i.atom});
    str(i.text);
    w.push_back(0);
  }
  return w;
}

std::wstring entered;

INT_PTR CALLBACK TestDialogProc(HWND dlg, UINT msg, WPARAM wp, LPARAM) {
  if (msg != WM_COMMAND || LOWORD(wp) != IDOK) return msg == WM_INITDIALOG;
  wchar_t name[100];
  if (!GetDlgItemTextW(dlg, kEdit, name, 100)) {
    MessageBoxW(dlg, L"Please enter a name.", L"Driver Dialog", MB_ICONEXCLAMATION);
    return TRUE;
  }
  entered = name;
  EndDialog(dlg, IDOK);
  return TRUE;
}

TEST(UiDriver, DrivesADialogAndAMessageBox) {
  static const std::vector<WORD> dialog = BuildTemplate();
  std::wstring path;
  tvui::Script script = [&](tvui::Session &s) {
    HWND dlg = s.WaitDialog(L"Driver Dialog");
    s.Click(dlg, IDOK);  // no name yet: the dialog answers with a nested box
    tvui::Box box = s.WaitMessageBox(L"Driver Dialog");
    EXPECT_EQ(box.text, L"Please enter a name.");
    EXPECT_EQ(box.icon, UINT(MB_ICONEXCLAMATION));
    EXPECT_EQ(box.buttons, std::vector<int>{IDOK});
    s.Answer(box, IDOK);
    s.SetText(dlg, kEdit, L"Zo\u00eb Smith");
    path = s.Screenshot(dlg, L"uidriver_dialog");
    s.Click(dlg, IDOK);
    s.WaitClosed(dlg);
  };
  auto show = [] {
    return DialogBoxIndirectParamW(GetModuleHandleW(nullptr),
                                   reinterpret_cast<LPCDLGTEMPLATEW>(dialog.data()), nullptr,
                                   TestDialogProc, 0);
  };
  EXPECT_EQ(tvui::RunModal(show, script), IDOK);
  EXPECT_EQ(entered, L"Zo\u00eb Smith");
  EXPECT_GT(std::filesystem::file_size(std::filesystem::path(path)), 100u);
}

}  // namespace
