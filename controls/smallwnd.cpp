// Tab pages as modeless dialogs, the temporary message window, and the
// status and popup classes.
#include <tavona/controls.h>

#include <tavona/frame.h>

#include <commctrl.h>

#include <cstdint>
#include <memory>

#include "controls/smallwnd.h"
#include "frame/alloc.h"
#include "frame/handles.h"
#include "frame/wndclasses.h"
#include "base/wstr.h"

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

struct TempRecordFree {
  void operator()(tv::TempWindRecord *r) const { FreeTempRecord(r); }
};
using TempRecordPtr = std::unique_ptr<tv::TempWindRecord, TempRecordFree>;

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
        tv::select_object font(dc, GetStockObject(ANSI_VAR_FONT));
        SetBkMode(dc, TRANSPARENT);
        client.top += 10;
        client.bottom -= 10;
        DrawTextW(dc, r->text ? r->text : L"", -1, &client, DT_CENTER | DT_WORDBREAK);
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
  TempRecordPtr r(static_cast<tv::TempWindRecord *>(tv::AllocBytes(sizeof(tv::TempWindRecord))));
  if (!r) return nullptr;
  // 0 or less: 50 minutes, practically until the application closes it.
  r->displayTime = displayTime < 1 ? 30000 : displayTime;
  r->background = background;
  r->text = tv::DuplicateWideString(text ? text : L"");
  WNDCLASSW cls;
  if (!r->text || !GetClassInfoW(Tavona_GetInstance(), L"TAVONATEMPWIND32", &cls)) return nullptr;
  RECT measure = {0, 0, tv::kTempWindWidth, 0};
  {
    tv::window_dc screen(nullptr);
    tv::select_object font(screen.get(), GetStockObject(ANSI_VAR_FONT));
    DrawTextW(screen.get(), r->text, -1, &measure, DT_CALCRECT | DT_WORDBREAK | DT_CENTER);
  }
  HWND focus = GetFocus();
  HWND active = GetActiveWindow();
  HWND owner = active ? GetAncestor(active, GA_ROOT) : nullptr;
  HWND w = CreateWindowExW(0, L"TAVONATEMPWIND32", L"", 0x80800001, 0, 0, tv::kTempWindWidth,
                           measure.bottom - measure.top + 24, owner, nullptr, Tavona_GetInstance(),
                           r.release());
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
        tv::select_object font(dc, PopupFont());
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, GetSysColor(COLOR_INFOTEXT));
        InflateRect(&r, -kPopupPadding, -kPopupPadding);
        auto *text = reinterpret_cast<const WCHAR *>(GetWindowLongPtrW(w, 0));
        DrawTextW(dc, text ? text : L"", -1, &r, DT_LEFT | DT_NOPREFIX);
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
    tv::select_object font(screen.get(), PopupFont());
    DrawTextW(screen.get(), text, -1, &size, DT_CALCRECT | DT_LEFT | DT_NOPREFIX);
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
