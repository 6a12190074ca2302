// Tab pages as modeless dialogs, the temporary message window, the status
// and popup classes, and helpers that place and size windows.
#include <tavona/controls.h>

#include <tavona/frame.h>

#include <commctrl.h>

#include <cstdint>

#include "controls/smallwnd.h"
#include "frame/alloc.h"
#include "frame/handles.h"
#include "frame/wndclasses.h"
#include "text/wstr.h"

// ---- Tab control ------------------------------------------------------------

namespace {

INT TabCount(HWND tab) { return static_cast<INT>(SendMessageW(tab, TCM_GETITEMCOUNT, 0, 0)); }

HWND TabPage(HWND tab, INT index) {
  TCITEMW item = {};
  item.mask = TCIF_PARAM;
  if (!SendMessageW(tab, TCM_GETITEMW, static_cast<WPARAM>(index),
                    reinterpret_cast<LPARAM>(&item)))
    return nullptr;
  return reinterpret_cast<HWND>(item.lParam);
}

}  // namespace

HWND WINAPI Tavona_AddTabControlItemExt(HWND tab, INT position, HINSTANCE instance,
                                        UINT templateId, DLGPROC procedure, LPARAM param) {
  if (!tab || !templateId || !procedure) return nullptr;
  HWND page = CreateDialogParamW(instance, MAKEINTRESOURCEW(templateId), GetParent(tab),
                                 procedure, param);
  if (!page) return nullptr;
  WCHAR caption[100];
  caption[0] = 0;
  GetWindowTextW(page, caption, 100);
  TCITEMW item = {};
  item.mask = TCIF_TEXT | TCIF_PARAM;
  item.pszText = caption;
  item.lParam = reinterpret_cast<LPARAM>(page);
  if (position < 0) position = TabCount(tab);
  if (SendMessageW(tab, TCM_INSERTITEMW, static_cast<WPARAM>(position),
                   reinterpret_cast<LPARAM>(&item)) < 0) {
    DestroyWindow(page);
    return nullptr;
  }
  return page;
}

INT WINAPI Tavona_AddTabControlItem(HWND tab, INT position, HINSTANCE instance, UINT templateId,
                                    DLGPROC procedure, LPARAM param) {
  return Tavona_AddTabControlItemExt(tab, position, instance, templateId, procedure, param) ? 0
                                                                                           : -1;
}

void WINAPI Tavona_ShowTabControlItem(HWND tab, INT index) {
  if (!tab) return;
  INT count = TabCount(tab);
  for (INT i = 0; i < count; ++i)
    if (HWND page = TabPage(tab, i)) ShowWindow(page, SW_HIDE);
  if (index < 0) index = static_cast<INT>(SendMessageW(tab, TCM_GETCURSEL, 0, 0));
  HWND page = index >= 0 ? TabPage(tab, index) : nullptr;
  if (!page) return;
  RECT area;
  GetClientRect(tab, &area);
  SendMessageW(tab, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
  MapWindowPoints(tab, GetParent(tab), reinterpret_cast<POINT *>(&area), 2);
  SetWindowPos(page, HWND_TOP, area.left, area.top, area.right - area.left,
               area.bottom - area.top, SWP_SHOWWINDOW);
}

void WINAPI Tavona_SetActiveTabControl(HWND tab, INT index) {
  if (!tab) return;
  SendMessageW(tab, TCM_SETCURSEL, static_cast<WPARAM>(index), 0);
  Tavona_ShowTabControlItem(tab, index);
}

HWND WINAPI Tavona_ConfirmAllTabControlItems(HWND tab) {
  if (!tab) return nullptr;
  INT count = TabCount(tab);
  HWND focus = GetFocus();
  INT current = static_cast<INT>(SendMessageW(tab, TCM_GETCURSEL, 0, 0));
  for (INT i = 0; i < count; ++i) {
    Tavona_SetActiveTabControl(tab, i);
    if (HWND page = TabPage(tab, i)) SendMessageW(page, WM_COMMAND, IDOK, 0);
    // The page put the focus on a control that needs the user's attention.
    HWND now = GetFocus();
    if (now != focus) return now;
  }
  Tavona_SetActiveTabControl(tab, current);
  return nullptr;
}

// ---- Temporary window ------------------------------------------------------

namespace {

tv::TempWindRecord *TempRecord(HWND w) {
  return reinterpret_cast<tv::TempWindRecord *>(GetWindowLongPtrW(w, 0));
}

void FreeTempRecord(tv::TempWindRecord *r) {
  if (!r) return;
  tv::FreeMem(r->text);
  tv::FreeMem(r);
}

}  // namespace

extern "C" LRESULT CALLBACK WndProcTempWind(HWND w, UINT m, WPARAM wp, LPARAM lp) {
  switch (m) {
    case WM_NCCREATE:
      // Taken at once, so the record is released even when creation fails
      // later on.
      SetWindowLongPtrW(w, 0,
                        reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW *>(lp)->lpCreateParams));
      break;
    case WM_CREATE:
      if (tv::TempWindRecord *r = TempRecord(w))
        SetTimer(w, tv::kTempWindTimer, static_cast<UINT>(r->displayTime) * 100u, nullptr);
      return 0;
    case WM_PAINT: {
      PAINTSTRUCT ps;
      HDC dc = BeginPaint(w, &ps);
      tv::TempWindRecord *r = TempRecord(w);
      if (dc && r) {
        RECT client;
        GetClientRect(w, &client);
        // Black (0) means no fill: the class background stays.
        if (r->background) {
          tv::unique_hgdiobj brush(CreateSolidBrush(r->background));
          if (brush) FillRect(dc, &client, static_cast<HBRUSH>(brush.get()));
        }
        HGDIOBJ old = SelectObject(dc, GetStockObject(ANSI_VAR_FONT));
        SetBkMode(dc, TRANSPARENT);
        client.top += 10;
        client.bottom -= 10;
        DrawTextW(dc, r->text ? r->text : L"", -1, &client, DT_CENTER | DT_WORDBREAK);
        SelectObject(dc, old);
      }
      EndPaint(w, &ps);
      return 0;
    }
    case WM_TIMER:
      if (wp == tv::kTempWindTimer) DestroyWindow(w);
      return 0;
    case WM_DESTROY:
      KillTimer(w, tv::kTempWindTimer);
      return 0;
    case WM_NCDESTROY:
      FreeTempRecord(TempRecord(w));
      SetWindowLongPtrW(w, 0, 0);
      break;
  }
  return DefWindowProcW(w, m, wp, lp);
}

HWND WINAPI Tavona_DisplayTempWindExt(const WCHAR *text, INT displayTime, COLORREF background) {
  auto *r = static_cast<tv::TempWindRecord *>(tv::AllocBytes(sizeof(tv::TempWindRecord)));
  if (!r) return nullptr;
  // 0 or less: 50 minutes, practically until the application closes it.
  r->displayTime = displayTime < 1 ? 30000 : displayTime;
  r->background = background;
  r->text = tv::DuplicateWideString(text ? text : L"");
  if (!r->text) {
    FreeTempRecord(r);
    return nullptr;
  }
  WNDCLASSW cls;
  if (!GetClassInfoW(Tavona_GetInstance(), L"TAVONATEMPWIND32", &cls)) {
    FreeTempRecord(r);
    return nullptr;
  }
  RECT measure = {0, 0, tv::kTempWindWidth, 0};
  {
    tv::window_dc screen(nullptr);
    HGDIOBJ old = SelectObject(screen.get(), GetStockObject(ANSI_VAR_FONT));
    DrawTextW(screen.get(), r->text, -1, &measure, DT_CALCRECT | DT_WORDBREAK | DT_CENTER);
    SelectObject(screen.get(), old);
  }
  HWND focus = GetFocus();
  HWND active = GetActiveWindow();
  HWND owner = active ? GetAncestor(active, GA_ROOT) : nullptr;
  HWND w = CreateWindowExW(0, L"TAVONATEMPWIND32", L"", 0x80800001, 0, 0, tv::kTempWindWidth,
                           measure.bottom - measure.top + 24, owner, nullptr, Tavona_GetInstance(),
                           r);
  // Once the class exists the window owns the record, created or not.
  if (!w) return nullptr;
  Tavona_CenterWindow(w);
  ShowWindow(w, SW_SHOW);
  UpdateWindow(w);
  if (focus && IsWindow(focus)) SetFocus(focus);
  return w;
}

HWND WINAPI Tavona_DisplayTempWind(HINSTANCE module, UINT stringId, INT displayTime,
                                   COLORREF background) {
  tv::HeapPtr<WCHAR> text(tv::AllocWideChars(1001));
  if (!text) return nullptr;
  if (LoadStringW(module, stringId, text.get(), 1001) < 1) return nullptr;
  return Tavona_DisplayTempWindExt(text.get(), displayTime, background);
}

// ---- Status and popup windows -----------------------------------------------

extern "C" LRESULT CALLBACK WndProcStatus(HWND w, UINT m, WPARAM wp, LPARAM lp) {
  return DefWindowProcW(w, m, wp, lp);
}

namespace {

// The one popup of the library at a time.
HWND g_popup = nullptr;
constexpr int kPopupPadding = 4;

HFONT PopupFont() { return static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)); }

}  // namespace

extern "C" LRESULT CALLBACK WndProcButtPopup(HWND w, UINT m, WPARAM wp, LPARAM lp) {
  switch (m) {
    case WM_NCCREATE: {
      auto *cs = reinterpret_cast<CREATESTRUCTW *>(lp);
      // Created by class name, the popup shows its window text.
      const WCHAR *source = cs->lpCreateParams ? static_cast<const WCHAR *>(cs->lpCreateParams)
                                               : cs->lpszName;
      WCHAR *text = tv::DuplicateWideString(source ? source : L"");
      if (!text) return FALSE;
      SetWindowLongPtrW(w, 0, reinterpret_cast<LONG_PTR>(text));
      break;
    }
    case WM_PAINT: {
      PAINTSTRUCT ps;
      HDC dc = BeginPaint(w, &ps);
      if (dc) {
        RECT r;
        GetClientRect(w, &r);
        FillRect(dc, &r, GetSysColorBrush(COLOR_INFOBK));
        HGDIOBJ old = SelectObject(dc, PopupFont());
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, GetSysColor(COLOR_INFOTEXT));
        InflateRect(&r, -kPopupPadding, -kPopupPadding);
        auto *text = reinterpret_cast<const WCHAR *>(GetWindowLongPtrW(w, 0));
        DrawTextW(dc, text ? text : L"", -1, &r, DT_LEFT | DT_NOPREFIX);
        SelectObject(dc, old);
      }
      EndPaint(w, &ps);
      return 0;
    }
    case WM_LBUTTONDOWN:
      DestroyWindow(w);
      return 0;
    case WM_NCDESTROY:
      tv::FreeMem(reinterpret_cast<WCHAR *>(GetWindowLongPtrW(w, 0)));
      SetWindowLongPtrW(w, 0, 0);
      if (g_popup == w) g_popup = nullptr;
      break;
  }
  return DefWindowProcW(w, m, wp, lp);
}

HWND WINAPI Tavona_ShowPopup(HWND anchor, const WCHAR *text) {
  Tavona_DestroyPopup();
  if (!anchor || !IsWindow(anchor) || tv::IsBlank(text)) return nullptr;
  RECT size = {0, 0, 0, 0};
  {
    tv::window_dc screen(nullptr);
    HGDIOBJ old = SelectObject(screen.get(), PopupFont());
    DrawTextW(screen.get(), text, -1, &size, DT_CALCRECT | DT_LEFT | DT_NOPREFIX);
    SelectObject(screen.get(), old);
  }
  RECT frame = {0, 0, size.right + 2 * kPopupPadding, size.bottom + 2 * kPopupPadding};
  AdjustWindowRectEx(&frame, WS_POPUP | WS_BORDER, FALSE, WS_EX_TOOLWINDOW);
  int width = frame.right - frame.left, height = frame.bottom - frame.top;
  RECT a;
  GetWindowRect(anchor, &a);
  // Below the anchor, or above it when the screen ends first; never beyond
  // the right edge of the work area.
  RECT work;
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  int x = a.left, y = a.bottom + 2;
  if (y + height > work.bottom) y = a.top - height - 2;
  if (x + width > work.right) x = work.right - width;
  if (x < work.left) x = work.left;
  HWND w = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_TOPMOST, L"TAVONA_POPUP_32", L"",
                           WS_POPUP | WS_BORDER, x, y, width, height, GetAncestor(anchor, GA_ROOT),
                           nullptr, Tavona_GetInstance(), const_cast<WCHAR *>(text));
  if (!w) return nullptr;
  g_popup = w;
  ShowWindow(w, SW_SHOWNOACTIVATE);
  UpdateWindow(w);
  return w;
}

void WINAPI Tavona_DestroyPopup(void) {
  if (g_popup && IsWindow(g_popup)) DestroyWindow(g_popup);
  g_popup = nullptr;
}

// ---- Placing windows -------------------------------------------------------

void WINAPI Tavona_CenterWindow(HWND window) {
  if (!window) return;
  RECT r;
  if (!GetWindowRect(window, &r)) return;
  int width = r.right - r.left, height = r.bottom - r.top;
  int availW, availH;
  if (GetWindowLongW(window, GWL_STYLE) & WS_CHILD) {
    RECT parent = {};
    GetClientRect(GetParent(window), &parent);
    availW = parent.right;
    availH = parent.bottom;
  } else {
    tv::window_dc screen(nullptr);
    availW = GetDeviceCaps(screen.get(), HORZRES);
    availH = GetDeviceCaps(screen.get(), VERTRES);
  }
  MoveWindow(window, (availW - width) / 2, (availH - height) / 2, width, height, TRUE);
}

BOOL WINAPI Tavona_SizeWindowToScreen(HWND window) {
  RECT r;
  if (!window || !GetWindowRect(window, &r)) return FALSE;
  MONITORINFO mi = {};
  mi.cbSize = sizeof mi;
  if (!GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &mi)) return FALSE;
  const RECT &work = mi.rcWork;
  LONG width = r.right - r.left, height = r.bottom - r.top;
  if (width > work.right - work.left) width = work.right - work.left;
  if (height > work.bottom - work.top) height = work.bottom - work.top;
  LONG x = r.left, y = r.top;
  if (x + width > work.right) x = work.right - width;
  if (y + height > work.bottom) y = work.bottom - height;
  if (x < work.left) x = work.left;
  if (y < work.top) y = work.top;
  return SetWindowPos(window, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
}

INT WINAPI Tavona_ArrangeWindowGroup(HWND parent, const UINT *ids, INT count, INT gap,
                                     UINT flags) {
  if (!parent || !ids || count <= 0) return 0;
  bool column = (flags & TAVONA_ARRANGE_COLUMN) != 0;
  LONG next = 0;
  bool first = true;
  INT placed = 0;
  for (INT i = 0; i < count; ++i) {
    HWND control = GetDlgItem(parent, static_cast<int>(ids[i]));
    if (!control || !(GetWindowLongW(control, GWL_STYLE) & WS_VISIBLE)) continue;
    RECT r;
    GetWindowRect(control, &r);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT *>(&r), 2);
    if (first) {
      next = column ? r.top : r.left;
      first = false;
    }
    LONG x = column ? r.left : next, y = column ? next : r.top;
    SetWindowPos(control, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    next += (column ? r.bottom - r.top : r.right - r.left) + gap;
    ++placed;
  }
  return placed;
}

BOOL WINAPI Tavona_ScreenToClient(HWND window, RECT *rect) {
  if (!window || !rect) return FALSE;
  POINT corners[2] = {{rect->left, rect->top}, {rect->right, rect->bottom}};
  if (!ScreenToClient(window, &corners[0]) || !ScreenToClient(window, &corners[1])) return FALSE;
  *rect = {corners[0].x, corners[0].y, corners[1].x, corners[1].y};
  return TRUE;
}

void WINAPI Tavona_MakeDefPushButton(HWND dialog, UINT id) {
  if (!dialog) return;
  LRESULT old = SendMessageW(dialog, DM_GETDEFID, 0, 0);
  if (HIWORD(old) == DC_HASDEFID && LOWORD(old) != id) {
    if (HWND previous = GetDlgItem(dialog, LOWORD(old)))
      SendMessageW(previous, BM_SETSTYLE, BS_PUSHBUTTON, TRUE);
  }
  SendMessageW(dialog, DM_SETDEFID, id, 0);
  if (HWND button = GetDlgItem(dialog, static_cast<int>(id)))
    SendMessageW(button, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
}

namespace {

INT StepEditField(HWND edit, INT step, INT minimum, INT maximum) {
  if (!edit) return minimum;
  WCHAR text[32];
  text[0] = 0;
  GetWindowTextW(edit, text, 32);
  long long value = static_cast<long long>(_wtol(text)) + step;
  if (value > maximum) value = maximum;
  if (value < minimum) value = minimum;
  INT result = static_cast<INT>(value);
  tv::Format(text, 32, L"%d", result);
  SetWindowTextW(edit, text);
  return result;
}

}  // namespace

INT WINAPI Tavona_IncEditField(HWND edit, INT step, INT minimum, INT maximum) {
  return StepEditField(edit, step, minimum, maximum);
}

INT WINAPI Tavona_DecEditField(HWND edit, INT step, INT minimum, INT maximum) {
  return StepEditField(edit, step == INT32_MIN ? INT32_MAX : -step, minimum, maximum);
}

INT WINAPI Tavona_DeleteMenuSeparators(HMENU menu) {
  if (!menu) return 0;
  INT removed = 0;
  bool previousSeparator = true;  // a leading separator goes too
  for (int i = 0; i < GetMenuItemCount(menu);) {
    MENUITEMINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_SUBMENU;
    if (!GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &info)) break;
    if (info.hSubMenu) removed += Tavona_DeleteMenuSeparators(info.hSubMenu);
    bool separator = (info.fType & MFT_SEPARATOR) != 0;
    if (separator && previousSeparator) {
      DeleteMenu(menu, static_cast<UINT>(i), MF_BYPOSITION);
      ++removed;
      continue;
    }
    previousSeparator = separator;
    ++i;
  }
  int last = GetMenuItemCount(menu) - 1;
  if (last >= 0) {
    MENUITEMINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE;
    if (GetMenuItemInfoW(menu, static_cast<UINT>(last), TRUE, &info) &&
        (info.fType & MFT_SEPARATOR)) {
      DeleteMenu(menu, static_cast<UINT>(last), MF_BYPOSITION);
      ++removed;
    }
  }
  return removed;
}
