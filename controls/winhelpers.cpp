// Helpers that place, size and tidy windows, buttons, edit fields and menus.
#include <tavona/controls.h>

#include <cstdint>

#include "frame/handles.h"
#include "base/wstr.h"

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
