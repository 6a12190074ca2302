// Windows of the library's own: a button bar that wraps as the window
// narrows (drag buttons, right-click for its menu) and a wizard whose
// second page is switched on from the first.
#include <tavona/tavona32.h>

#include <string>

#include "pages.h"
#include "ui.h"

namespace {

enum : int { kRunWizard = 100, kBarNotify = WM_APP + 21 };
const wchar_t kHookName[] = L"DemoBarHook";
const UINT kActivate = WM_APP + 22, kLeave = WM_APP + 23;

// The wizard's pages answer through one callback: the first keeps the
// wizard while its name is empty and decides whether the second is shown.
INT CALLBACK WizardCallback(WizzardContext *c, UINT page, HWND w, UINT m, WPARAM wp, LPARAM lp) {
  if (m == WM_INITDIALOG) return TRUE;
  if (page == 910 && m == kLeave && wp == 1) {
    HWND first = Wizzard_GetHwndSubDialog(c, 910);
    auto *block = reinterpret_cast<WizzardPageMessage *>(lp);
    if (GetWindowTextLengthW(GetDlgItem(first, 400)) == 0) {
      MessageBeep(MB_ICONEXCLAMATION);
      SetFocus(GetDlgItem(first, 400));
      block->result = 0;
      return 0;
    }
    Wizzard_EnableSubDialog(c, 911, IsDlgButtonChecked(first, 401) == BST_CHECKED);
  }
  return 0;
}

class WindowsPage : public demo::Page {
 public:
  explicit WindowsPage(HWND parent) : Page(parent) {
    demo::Form f(*this, {L"Bar:", L"Clicked:", L"Wizard:"});
    f.BeginGroup(L"Button bar (WButtWind_CreateWindow, WButtWind_Arrange)");
    f.Row(L"Bar:");
    f.Note(L"Drag a button to move it; right-click for the bar's menu; narrow the window "
           L"and the buttons wrap.", 0);
    f.Row(L"Clicked:");
    clicked_ = f.ReadOnly(0);
    f.EndGroup();
    f.BeginGroup(L"Wizard (Wizzard_Perform)");
    f.Row(L"Wizard:");
    f.Button(kRunWizard, L"Run the wizard...");
    result_ = f.Note(L"", demo::DuX(120));
    f.EndGroup();
    f.Finish();
    RECT r;
    GetWindowRect(result_, &r);
    MapWindowPoints(nullptr, hwnd(), reinterpret_cast<POINT *>(&r), 2);
    barTop_ = r.bottom + demo::DuY(14);
    bar_ = WButtWind_CreateWindow(hwnd(), hwnd(), kBarNotify);
    WButtWind_SetLongProperty(bar_, WBAR_WRAP, 1);
    WButtWind_SetLongProperty(bar_, WBAR_SEPARATORS, 1);
    WButtWind_SetLongProperty(bar_, WBAR_GAP, 2);
    const wchar_t *names[] = {L"New", L"Open", L"Save", L"Print", L"Cut", L"Copy",
                              L"Paste", L"Find", L"Replace", L"Help"};
    for (int i = 0; i < 10; ++i) {
      UINT flags = (i == 3 || i == 4 || i == 7 || i == 9) ? WBUTTON_GROUP : 0;
      HWBUTTON b = WButtWind_CreateNewButton(bar_, WBUTTON_KIND_PICTURE, names[i], names[i],
                                             i + 1, 26, demo::TextWidth(names[i]) + 20, flags,
                                             nullptr);
      WButton_SetStringProperty(b, 5, names[i]);
      WButton_SetStringProperty(b, 4, (std::wstring(L"Button ") + names[i]).c_str());
    }
    HWBUTTON swatch = WButtWind_CreateNewButton(bar_, WBUTTON_KIND_SWATCH, L"colour", L"Colour",
                                                11, 26, 60, WBUTTON_GROUP, nullptr);
    WButton_SetStringProperty(swatch, 5, L"Colour");
    WButtWind_SetColorProperty(bar_, WBAR_COLOR_SECOND, RGB(90, 160, 230));
    // The page passes on only commands: a hook hears the bar's clicks and
    // the page's size.
    Hook_Window(hwnd(), Hook, kHookName, reinterpret_cast<LPARAM>(this), nullptr);
    SetPreferredSize(demo::DuX(330), barTop_ + 80);
  }

 protected:
  void OnCommand(int id, int code) override {
    if (id != kRunWizard || code != BN_CLICKED) return;
    static const WIZZARD_PAGEDEF pages[] = {{910, 0, 901}, {911, 0, 902}, {912, 0, 903}, {0, 0, 0}};
    INT r = Wizzard_Perform(pages, WizardCallback, kActivate, kLeave, 0, IDB_WIZARD_DEFAULT, 900,
                            GetModuleHandleW(nullptr), L"DEMO", 0, WIZZARD_TITLE_BOTH);
    SetWindowTextW(result_, r == 1 ? L"Finished (1)" : L"Cancelled (2)");
  }

 private:
  static constexpr UINT IDB_WIZARD_DEFAULT = 106;  // the library's own picture

  void Fit(int width) {
    int w = width - 2 * demo::DuX(7);
    if (w < 40) w = 40;
    MoveWindow(bar_, demo::DuX(7), barTop_, w, WButtWind_CalculateHeight(bar_, w), TRUE);
    WButtWind_Arrange(bar_);
    WButtWind_Repaint(bar_);
  }

  static LRESULT CALLBACK Hook(HWND w, UINT m, WPARAM wp, LPARAM lp) {
    auto *self = reinterpret_cast<WindowsPage *>(Get_HookLink(w, kHookName));
    if (m == kBarNotify && self) {
      WCHAR caption[64];
      WButton_GetStringProperty(reinterpret_cast<HWBUTTON>(lp), 5, caption, 64);
      SetWindowTextW(self->clicked_, caption);
      return 0;
    }
    if (m == WM_SIZE && self) self->Fit(LOWORD(lp));
    if (m == WM_NCDESTROY) {
      LRESULT r = Call_HookOriginalCallback(w, kHookName, m, wp, lp);
      Unhook_Window(w, kHookName);
      return r;
    }
    return Call_HookOriginalCallback(w, kHookName, m, wp, lp);
  }

  HWND bar_ = nullptr, clicked_ = nullptr, result_ = nullptr;
  int barTop_ = 0;
};

}  // namespace

HWND CreateWindowsPage(HWND parent) { return (new WindowsPage(parent))->hwnd(); }
