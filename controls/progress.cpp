// The progress indicator: a modeless dialog that draws its own bar while the
// caller's loop does the work, with its owner disabled meanwhile.
#include <tavona/controls.h>
#include <tavona/datetime.h>

#include <cstdint>

#include "frame/alloc.h"
#include "frame/dialog.h"
#include "frame/globals.h"
#include "frame/handles.h"
#include "frame/report.h"
#include "frame/lts.h"
#include "tvres.h"

namespace {

struct ProgressIndicator {
  INT lower;
  INT position;
  INT upper;
  UINT flags;
  RECT bar;
  HWND owner;
  COLORREF done;
  COLORREF remaining;
  INT abortRequested;
  INT paintedWidth;
  SYSTEMTIME start;
  // Set by the creator once CreateDialogParamW returned the dialog: from
  // then on the dialog releases the record; a dialog that fails during
  // creation leaves it to the creator.
  bool created;
};

ProgressIndicator *RecordOf(HWND dialog) {
  return reinterpret_cast<ProgressIndicator *>(GetWindowLongPtrW(dialog, DWLP_USER));
}

// width × position ÷ (upper − lower): the position is taken as it is, not
// relative to the lower bound, so a lower bound other than 0 offsets the bar.
INT CompletedWidth(INT width, const ProgressIndicator &p) {
  int64_t range = int64_t(p.upper) - p.lower;
  if (range <= 0) return 0;
  int64_t d = int64_t(width) * p.position / range;
  if (d > INT32_MAX) return INT32_MAX;
  if (d < INT32_MIN) return INT32_MIN;
  return static_cast<INT>(d);
}

void FillPart(HDC dc, LONG left, LONG top, LONG right, LONG bottom, COLORREF color) {
  if (right <= left || bottom <= top) return;
  RECT r = {left, top, right, bottom};
  tv::unique_hgdiobj brush(CreateSolidBrush(color));
  if (brush) FillRect(dc, &r, static_cast<HBRUSH>(brush.get()));
}

void Paint(HWND dialog, ProgressIndicator &p) {
  PAINTSTRUCT ps;
  HDC dc = BeginPaint(dialog, &ps);
  if (!dc) return;
  RECT r = p.bar;
  InflateRect(&r, -1, -1);
  INT d = CompletedWidth(r.right - r.left, p);
  // An offset bar may reach past either end; nothing is drawn outside it.
  int saved = SaveDC(dc);
  IntersectClipRect(dc, r.left, r.top, r.right, r.bottom);
  LONG split = static_cast<LONG>(int64_t(r.left) + d > INT32_MAX ? INT32_MAX : int64_t(r.left) + d);
  FillPart(dc, r.left, r.top, split, r.bottom, p.done);
  FillPart(dc, split, r.top, r.right, r.bottom, p.remaining);
  RestoreDC(dc, saved);
  p.paintedWidth = d;
  EndPaint(dialog, &ps);
}

void RepaintBar(HWND dialog, const ProgressIndicator &p) {
  InvalidateRect(dialog, &p.bar, FALSE);
  UpdateWindow(dialog);
}

void ShowRemainingTime(HWND dialog, const ProgressIndicator &p) {
  SYSTEMTIME now;
  GetSystemTime(&now);
  INT elapsed = Tavona_GetSystemTimeDelta(&p.start, &now);
  // 32-bit arithmetic that wraps instead of overflowing.
  INT left = static_cast<INT>(static_cast<uint32_t>(p.upper) - static_cast<uint32_t>(p.position));
  INT remainingMs = MulDiv(elapsed, left, p.position < 1 ? 1 : p.position);
  INT seconds = static_cast<INT>((int64_t(remainingMs) + 999) / 1000);
  WCHAR leading[200];
  leading[0] = 0;
  if (tv::g.resources) tv::LoadTranslatedString(tv::g.resources, IDS_ESTIMATED_TIME, leading, 200);
  WCHAR text[200];
  text[0] = 0;
  Tavona_CreateEstimatedTimeDisplay(seconds, leading, text, 200);
  SetDlgItemTextW(dialog, IDC_PROGRESS_TIME, text);
}

INT_PTR CALLBACK ProgressDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  ProgressIndicator *p = tv::DialogRecord<ProgressIndicator>(dialog, message, lParam);
  switch (message) {
    case WM_INITDIALOG:
      SetDlgItemTextW(dialog, IDC_PROGRESS_TEXT, L"");
      SetDlgItemTextW(dialog, IDC_PROGRESS_TIME, L"");
      if (p && (p->flags & TAVONA_PROGRESS_NOCANCEL))
        ShowWindow(GetDlgItem(dialog, IDCANCEL), SW_HIDE);
      return 1;
    case WM_PAINT:
      if (!p) return 0;
      Paint(dialog, *p);
      return 1;
    case WM_COMMAND:
      // Escape sends IDCANCEL too; without the button there is nothing to
      // cancel.
      if (LOWORD(wParam) != IDCANCEL || !p) return 0;
      if (!(p->flags & TAVONA_PROGRESS_NOCANCEL)) p->abortRequested = 1;
      return 1;
    case WM_NCDESTROY:
      // Destroyed behind the caller's back (with its owner, say): the owner
      // must not stay disabled.
      if (p) {
        SetWindowLongPtrW(dialog, DWLP_USER, 0);
        if (p->owner) EnableWindow(p->owner, TRUE);
        if (p->created) tv::FreeMem(p);
      }
      return 0;
  }
  return 0;
}

}  // namespace

HWND WINAPI Tavona_CreateProgressIndicatorExtended(HWND owner, const WCHAR *title, INT lower,
                                                   INT upper, UINT flags) {
  UINT id = (flags & TAVONA_PROGRESS_LARGE) ? IDD_PROGRESS_LARGE : IDD_PROGRESS;
  if (!tv::g.resources || !FindResourceW(tv::g.resources, MAKEINTRESOURCEW(id), RT_DIALOG))
    return nullptr;
  auto *p = static_cast<ProgressIndicator *>(tv::AllocBytes(sizeof(ProgressIndicator)));
  if (!p) return nullptr;
  *p = ProgressIndicator{};
  p->lower = p->position = lower;
  p->upper = upper > lower ? upper : lower + 1;
  p->flags = flags;
  p->abortRequested = 0;
  p->paintedWidth = -1;
  p->done = GetSysColor(COLOR_ACTIVECAPTION);
  p->remaining = GetSysColor(COLOR_WINDOW);
  p->owner = owner;
  HWND dialog = CreateDialogParamW(tv::g.resources, MAKEINTRESOURCEW(id), owner,
                                   ProgressDialogProc, reinterpret_cast<LPARAM>(p));
  if (!dialog) {
    tv::FreeMem(p);
    return nullptr;
  }
  p->created = true;
  if (owner) EnableWindow(owner, FALSE);
  if (title) SetWindowTextW(dialog, title);
  RECT bar = {};
  if (HWND frame = GetDlgItem(dialog, IDC_PROGRESS_BAR)) GetWindowRect(frame, &bar);
  POINT corners[2] = {{bar.left, bar.top}, {bar.right, bar.bottom}};
  ScreenToClient(dialog, &corners[0]);
  ScreenToClient(dialog, &corners[1]);
  p->bar = {corners[0].x, corners[0].y, corners[1].x, corners[1].y};
  GetSystemTime(&p->start);
  return dialog;
}

HWND WINAPI Tavona_CreateProgressIndicator(HWND owner, const WCHAR *title, INT lower,
                                           INT upper) {
  return Tavona_CreateProgressIndicatorExtended(owner, title, lower, upper, 0);
}

void WINAPI Tavona_UpdateProgressIndicator(HWND dialog, INT position) {
  if (!dialog) return;
  ProgressIndicator *p = RecordOf(dialog);
  if (!p) return;
  p->position = position;
  // The full bar width here and the inner one when painting rarely agree,
  // so most updates repaint.
  if (CompletedWidth(p->bar.right - p->bar.left, *p) == p->paintedWidth) return;
  if (p->flags & TAVONA_PROGRESS_TIME) ShowRemainingTime(dialog, *p);
  RepaintBar(dialog, *p);
}

void WINAPI Tavona_SetProgressIndicatorBounds(HWND dialog, INT lower, INT upper) {
  if (!dialog) return;
  ProgressIndicator *p = RecordOf(dialog);
  if (!p) return;
  p->lower = lower;
  p->upper = upper;
  p->paintedWidth = -1;
  RepaintBar(dialog, *p);
}

void WINAPI Tavona_SetProgressIndicatorColor(HWND dialog, COLORREF color) {
  if (!dialog) return;
  ProgressIndicator *p = RecordOf(dialog);
  if (!p) return;
  p->done = color;
  RepaintBar(dialog, *p);
}

void WINAPI Tavona_SetProgressIndicatorText(HWND dialog, const WCHAR *text) {
  if (!dialog) return;
  SetDlgItemTextW(dialog, IDC_PROGRESS_TEXT, text ? text : L"");
}

INT WINAPI Tavona_CheckProgressIndicatorAborted(HWND dialog) {
  if (!dialog) return 0;
  MSG msg;
  // One message per call keeps the caller's loop fast.
  if (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE) && !IsDialogMessageW(dialog, &msg)) {
    TranslateMessage(&msg);
    DispatchMessageW(&msg);
  }
  ProgressIndicator *p = RecordOf(dialog);
  if (!p || !p->abortRequested) return 0;
  p->abortRequested = 0;
  return tv::ReportError(IDS_ASK_CANCEL_OPERATION) == IDYES ? 1 : 0;
}

void WINAPI Tavona_DestroyProgressIndicator(HWND dialog) {
  if (!dialog) return;
  ProgressIndicator *p = RecordOf(dialog);
  if (p) {
    SetWindowLongPtrW(dialog, DWLP_USER, 0);
    // Enabled before the dialog goes, so the owner gets the activation.
    if (p->owner) EnableWindow(p->owner, TRUE);
  }
  DestroyWindow(dialog);
  tv::FreeMem(p);
}
