// Controls: boxes filled from a typed list and read back, a progress run
// that can be cancelled, a temporary message, and tab pages that are
// confirmed one after the other.
#include <tavona/tavona32.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "pages.h"
#include "ui.h"

namespace {

enum : int {
  kList = 100,
  kSeparator,
  kNumber,
  kHex,
  kKeep,
  kUnique,
  kFill,
  kUp,
  kDown,
  kListBox,
  kCombo,
  kSteps,
  kTime,
  kLarge,
  kNoCancel,
  kRun,
  kTempText,
  kTenths,
  kShowTemp,
  kTabs,
  kConfirm,
};

// An in-memory child dialog with one edit field: the pages of the tab demo.
struct PageTemplate {
  DLGTEMPLATE dlg;
  WORD menu, cls, title;
  alignas(4) DLGITEMTEMPLATE item;
  WORD itemClass[2], itemTitle, itemData;
};

INT_PTR CALLBACK DemoPageProc(HWND dlg, UINT m, WPARAM wp, LPARAM) {
  // A page whose field is empty asks for attention by taking the focus.
  if (m == WM_COMMAND && LOWORD(wp) == IDOK) {
    HWND edit = GetDlgItem(dlg, 10);
    if (GetWindowTextLengthW(edit) == 0) SetFocus(edit);
    return TRUE;
  }
  return m == WM_INITDIALOG;
}

const wchar_t kHookName[] = L"DemoTabHook";

LRESULT CALLBACK TabNotifyHook(HWND w, UINT m, WPARAM wp, LPARAM lp) {
  if (m == WM_NOTIFY) {
    auto *hdr = reinterpret_cast<NMHDR *>(lp);
    HWND tabs = reinterpret_cast<HWND>(Get_HookLink(w, kHookName));
    if (hdr->hwndFrom == tabs && hdr->code == TCN_SELCHANGE) Tavona_ShowTabControlItem(tabs, -1);
  }
  if (m == WM_NCDESTROY) {
    LRESULT r = Call_HookOriginalCallback(w, kHookName, m, wp, lp);
    Unhook_Window(w, kHookName);
    return r;
  }
  return Call_HookOriginalCallback(w, kHookName, m, wp, lp);
}

class ControlsPage : public demo::Page {
 public:
  explicit ControlsPage(HWND parent) : Page(parent) {
    demo::Form f(*this, {L"List:", L"Separator:", L"Flags:", L"List box:", L"Combo box:",
                         L"Read back:", L"Steps:", L"Options:", L"Result:", L"Text:",
                         L"Tenths:", L"Tabs:"});
    f.BeginGroup(L"List and combo boxes (Tavona_FillBoxExtended, Tavona_ReadBox)");
    f.Row(L"List:");
    list_ = f.Edit(kList, L"Red;1;Green;2;Blue;3;green;4", 0);
    f.Row(L"Separator:");
    separator_ = f.Edit(kSeparator, L";", demo::DuX(16));
    f.Row(L"Flags:");
    number_ = f.Check(kNumber, L"Number field (1)", true);
    hex_ = f.Check(kHex, L"Hexadecimal (4)", false);
    keep_ = f.Check(kKeep, L"Keep entries (2)", false);
    unique_ = f.Check(kUnique, L"Unique (8)", true);
    f.Row(L"");
    f.Button(kFill, L"Fill both");
    f.Button(kUp, L"Move up");
    f.Button(kDown, L"Move down");
    f.Row(L"List box:");
    listBox_ = f.List(kListBox, 4, LBS_NOTIFY);
    f.Row(L"Combo box:");
    HWND spot = f.Note(L"", demo::DuX(120));
    RECT r;
    GetWindowRect(spot, &r);
    MapWindowPoints(nullptr, hwnd(), reinterpret_cast<POINT *>(&r), 2);
    DestroyWindow(spot);
    combo_ = Add(L"COMBOBOX", L"", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, r.left, r.top - 3,
                 demo::DuX(120), demo::DuY(80), kCombo);
    f.Row(L"Read back:");
    readBack_ = f.ReadOnly(0);
    f.EndGroup();

    f.BeginGroup(L"Progress indicator (Tavona_CreateProgressIndicatorExtended)");
    f.Row(L"Steps:");
    steps_ = f.Edit(kSteps, L"3000", demo::DuX(40), ES_NUMBER);
    f.Row(L"Options:");
    time_ = f.Check(kTime, L"Remaining time (1)", true);
    large_ = f.Check(kLarge, L"Large template (2)", false);
    noCancel_ = f.Check(kNoCancel, L"No cancel button (4)", false);
    f.Button(kRun, L"Run");
    f.Row(L"Result:");
    result_ = f.ReadOnly(0);
    f.EndGroup();

    f.BeginGroup(L"Temporary message (Tavona_DisplayTempWindExt)");
    f.Row(L"Text:");
    tempText_ = f.Edit(kTempText, L"The document was saved.", 0);
    f.Row(L"Tenths:");
    tenths_ = f.Edit(kTenths, L"30", demo::DuX(32), ES_NUMBER);
    f.Note(L"of a second; 0 keeps it for 50 minutes");
    f.Button(kShowTemp, L"Show");
    f.EndGroup();

    f.BeginGroup(L"Tab pages (Tavona_SetActiveTabControl, Tavona_ConfirmAllTabControlItems)");
    f.Row(L"Tabs:");
    f.Button(kConfirm, L"Confirm all");
    confirm_ = f.Note(L"", 0);
    f.Row(L"");
    HWND tabSpot = f.Note(L"", 0);
    f.Row(L"");
    f.Row(L"");
    f.Row(L"");
    f.EndGroup();
    f.Finish();
    GetWindowRect(tabSpot, &r);
    MapWindowPoints(nullptr, hwnd(), reinterpret_cast<POINT *>(&r), 2);
    DestroyWindow(tabSpot);
    tabs_ = Add(WC_TABCONTROLW, L"", WS_TABSTOP | WS_CLIPSIBLINGS, r.left, r.top,
                demo::DuX(220), demo::DuY(46), kTabs);
    // Above the group box, which would otherwise clip it away.
    SetWindowPos(tabs_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    // The page window does not pass on WM_NOTIFY; a hook shows the page of
    // the tab the user picks.
    Hook_Window(hwnd(), TabNotifyHook, kHookName, reinterpret_cast<LPARAM>(tabs_), nullptr);
    AddTab(L"Name", L"");
    AddTab(L"Address", L"Main Street 1");
    Tavona_SetActiveTabControl(tabs_, 0);
    Fill();
  }

 protected:
  void OnCommand(int id, int code) override {
    if (id == kTabs) return;
    if (code != BN_CLICKED && code != LBN_SELCHANGE) return;
    switch (id) {
      case kFill: Fill(); break;
      case kUp: Move(TAVONA_MOVE_UP); break;
      case kDown: Move(TAVONA_MOVE_DOWN); break;
      case kRun: Run(); break;
      case kShowTemp:
        Tavona_DisplayTempWindExt(demo::GetText(tempText_).c_str(),
                                  _wtoi(demo::GetText(tenths_).c_str()), RGB(255, 255, 225));
        break;
      case kConfirm: Confirm(); break;
    }
  }

 private:
  static bool Checked(HWND b) { return SendMessageW(b, BM_GETCHECK, 0, 0) == BST_CHECKED; }

  UINT Flags() const {
    return (Checked(number_) ? TAVONA_FILL_NUMBER : 0) | (Checked(hex_) ? TAVONA_FILL_HEX : 0) |
           (Checked(keep_) ? TAVONA_FILL_KEEP : 0) | (Checked(unique_) ? TAVONA_FILL_UNIQUE : 0);
  }
  WCHAR Separator() const {
    std::wstring s = demo::GetText(separator_);
    return s.empty() ? L';' : s[0];
  }

  void Fill() {
    std::wstring list = demo::GetText(list_);
    for (HWND b : {listBox_, combo_}) Tavona_FillBoxExtended(b, Separator(), list.c_str(), Flags());
    Tavona_SetBoxIndex(combo_, 0);
    ShowReadBack();
  }

  void Move(INT direction) {
    Tavona_MoveBoxEntry(listBox_, -1, direction);
    ShowReadBack();
  }

  void ShowReadBack() {
    WCHAR out[500];
    Tavona_ReadBox(listBox_, Separator(), Checked(number_) ? TAVONA_FILL_NUMBER : 0, out, 500);
    demo::SetText(readBack_, std::wstring(out) + L"   (" +
                                 std::to_wstring(Tavona_GetBoxCount(listBox_)) + L" entries)");
  }

  void Run() {
    int steps = _wtoi(demo::GetText(steps_).c_str());
    UINT flags = (Checked(time_) ? TAVONA_PROGRESS_TIME : 0) |
                 (Checked(large_) ? TAVONA_PROGRESS_LARGE : 0) |
                 (Checked(noCancel_) ? TAVONA_PROGRESS_NOCANCEL : 0);
    HWND top = GetAncestor(hwnd(), GA_ROOT);
    HWND p = Tavona_CreateProgressIndicatorExtended(top, L"Demo run", 0, steps, flags);
    if (!p) {
      demo::SetText(result_, L"no progress dialog (resource library missing?)");
      return;
    }
    int i = 0;
    bool aborted = false;
    for (; i < steps; ++i) {
      if (i % 100 == 0) {
        wchar_t text[64];
        wsprintfW(text, L"Step %d of %d", i, steps);
        Tavona_SetProgressIndicatorText(p, text);
      }
      Tavona_UpdateProgressIndicator(p, i + 1);
      if (Tavona_CheckProgressIndicatorAborted(p)) {
        aborted = true;
        break;
      }
      Sleep(1);
    }
    Tavona_DestroyProgressIndicator(p);
    demo::SetText(result_, aborted ? L"cancelled after " + std::to_wstring(i) + L" steps"
                                   : L"all " + std::to_wstring(steps) + L" steps done");
  }

  void AddTab(const wchar_t *title, const wchar_t *value) {
    PageTemplate t = {};
    t.dlg.style = DS_CONTROL | WS_CHILD;
    t.dlg.cdit = 1;
    t.dlg.cx = 200;
    t.dlg.cy = 40;
    t.item.style = WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL;
    t.item.x = 7;
    t.item.y = 7;
    t.item.cx = 150;
    t.item.cy = 12;
    t.item.id = 10;
    t.itemClass[0] = 0xFFFF;
    t.itemClass[1] = 0x0081;  // edit
    HWND page = CreateDialogIndirectParamW(nullptr, &t.dlg, hwnd(), DemoPageProc, 0);
    SendMessageW(page, WM_SETFONT, WPARAM(demo::UiFont()), FALSE);
    SendDlgItemMessageW(page, 10, WM_SETFONT, WPARAM(demo::UiFont()), FALSE);
    SetDlgItemTextW(page, 10, value);
    TCITEMW item = {};
    item.mask = TCIF_TEXT | TCIF_PARAM;
    item.pszText = const_cast<wchar_t *>(title);
    item.lParam = reinterpret_cast<LPARAM>(page);
    SendMessageW(tabs_, TCM_INSERTITEMW, SendMessageW(tabs_, TCM_GETITEMCOUNT, 0, 0),
                 reinterpret_cast<LPARAM>(&item));
    SendMessageW(tabs_, WM_SETFONT, WPARAM(demo::UiFont()), FALSE);
  }

  void Confirm() {
    SetFocus(tabs_);
    HWND stopped = Tavona_ConfirmAllTabControlItems(tabs_);
    demo::SetText(confirm_, stopped ? L"stopped at tab " +
                                          std::to_wstring(SendMessageW(tabs_, TCM_GETCURSEL, 0, 0)) +
                                          L": its field is empty"
                                    : L"every page confirmed");
  }

  HWND list_, separator_, number_, hex_, keep_, unique_, listBox_, combo_, readBack_;
  HWND steps_, time_, large_, noCancel_, result_, tempText_, tenths_, tabs_ = nullptr, confirm_;
};

}  // namespace

HWND CreateControlsPage(HWND parent) { return (new ControlsPage(parent))->hwnd(); }
