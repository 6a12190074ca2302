// The wizard: a frame dialog (template 106) over page dialogs of the
// application, all alive from the start to the end so that their fields
// keep what the user typed.
#include <tavona/controls.h>

#include <tavona/frame.h>

#include "frame/alloc.h"
#include "frame/dialog.h"
#include "frame/globals.h"
#include "frame/handles.h"
#include "frame/report.h"
#include "base/wstr.h"
#include "frame/lts.h"
#include "tvres.h"

namespace tv {
namespace {

// The context as applications see it, followed by what only the frame
// needs.
struct Wizard {
  WizzardContext c;
  HWND frame;
  WCHAR *ltsModule;
};

Wizard *Of(WizzardContext *c) { return reinterpret_cast<Wizard *>(c); }

enum Metric {
  kLeft = WIZZARD_LEFT_MARGIN,
  kRight = WIZZARD_RIGHT_MARGIN,
  kTop = WIZZARD_TOP_MARGIN,
  kBottom = WIZZARD_BOTTOM_MARGIN,
  kPictureGap = WIZZARD_PICTURE_GAP,
  kPageGap = WIZZARD_PAGE_GAP,
  kLineGap = WIZZARD_LINE_GAP,
  kCancelGap = WIZZARD_CANCEL_GAP,
  kBackGap = WIZZARD_BACK_GAP,
  kNextGap = WIZZARD_NEXT_GAP,
  kFrame = WIZZARD_FRAME_WIDTH,
};

// A string of the application's module, translated; null when missing.
WCHAR *LoadTitle(const Wizard *w, UINT id) {
  if (!id) return nullptr;
  WCHAR text[513];
  if (LoadStringW(w->c.resources, id, text, 513) < 1) return nullptr;
  if (w->ltsModule) LtsTranslateText(w->ltsModule, text, 513);
  return DuplicateWideString(text);
}

void FreeWizard(Wizard *w) {
  if (!w) return;
  for (INT i = 0; i < w->c.pageCount && w->c.pages; ++i) {
    WizzardPage &p = w->c.pages[i];
    if (p.window && IsWindow(p.window)) DestroyWindow(p.window);
    if (p.bitmap) DeleteObject(p.bitmap);
    FreeMem(p.title);
  }
  if (w->c.defaultBitmap) DeleteObject(w->c.defaultBitmap);
  FreeMem(w->c.title);
  FreeMem(w->c.pages);
  FreeMem(w->ltsModule);
  FreeMem(w);
}

WizzardPage *Current(WizzardContext *c) {
  return c->currentPage >= 0 && c->currentPage < c->pageCount ? &c->pages[c->currentPage]
                                                               : nullptr;
}

HBITMAP PictureOf(const WizzardContext *c, const WizzardPage &p) {
  return p.bitmap ? p.bitmap : c->defaultBitmap;
}

// The framed picture of a page in client coordinates; false without one.
bool PictureRect(const WizzardContext *c, const WizzardPage &p, RECT *r) {
  HBITMAP bitmap = PictureOf(c, p);
  BITMAP bm;
  if (!bitmap || GetObjectW(bitmap, sizeof bm, &bm) != sizeof bm) return false;
  const INT f = c->metrics[kFrame];
  *r = {-f, -f, bm.bmWidth + f, bm.bmHeight + f};
  OffsetRect(r, c->metrics[kLeft], c->metrics[kTop]);
  return true;
}

RECT PageRect(const WizzardContext *c, const WizzardPage &p) {
  RECT window = {};
  if (p.window) GetWindowRect(p.window, &window);
  RECT picture;
  LONG x = PictureRect(c, p, &picture) ? picture.right + c->metrics[kPictureGap]
                                       : c->metrics[kLeft];
  LONG y = c->metrics[kTop];
  return {x, y, x + window.right - window.left, y + window.bottom - window.top};
}

SIZE WindowSize(HWND w) {
  RECT r = {};
  GetWindowRect(w, &r);
  return {r.right - r.left, r.bottom - r.top};
}

void Layout(Wizard *w) {
  WizzardContext *c = &w->c;
  HWND dlg = w->frame;
  const SIZE button = WindowSize(GetDlgItem(dlg, IDOK));
  const LONG lineHeight = WindowSize(GetDlgItem(dlg, IDC_WIZARD_LINE)).cy;
  RECT window, client;
  GetWindowRect(dlg, &window);
  GetClientRect(dlg, &client);
  const LONG frameW = (window.right - window.left) - client.right;
  const LONG frameH = (window.bottom - window.top) - client.bottom;
  RECT all = {};
  for (INT i = 0; i < c->pageCount; ++i) {
    RECT r = PageRect(c, c->pages[i]);
    UnionRect(&all, &all, &r);
    if (PictureRect(c, c->pages[i], &r)) UnionRect(&all, &all, &r);
  }
  LONG width = c->metrics[kRight] + all.right + frameW;
  LONG height = c->metrics[kPageGap] + c->metrics[kBottom] + all.bottom + frameH + lineHeight +
                button.cy + c->metrics[kLineGap];
  if (width < window.right - window.left) width = window.right - window.left;
  if (height < window.bottom - window.top) height = window.bottom - window.top;
  SetWindowPos(dlg, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  GetClientRect(dlg, &client);
  const LONG row = client.bottom - c->metrics[kBottom] - button.cy;
  LONG x = client.right - c->metrics[kRight] - button.cx;
  const struct {
    int id;
    int gapBefore;  // gap to the button on its right
  } order[] = {{IDOK, -1}, {IDC_WIZARD_NEXT, kNextGap}, {IDC_WIZARD_BACK, kBackGap},
               {IDCANCEL, kCancelGap}};
  for (const auto &o : order) {
    if (o.gapBefore >= 0) x -= c->metrics[o.gapBefore] + button.cx;
    MoveWindow(GetDlgItem(dlg, o.id), x, row, button.cx, button.cy, TRUE);
  }
  const LONG lineTop = row - lineHeight - c->metrics[kLineGap];
  MoveWindow(GetDlgItem(dlg, IDC_WIZARD_LINE), c->metrics[kLeft], lineTop,
             client.right - c->metrics[kRight] - c->metrics[kLeft], lineHeight, TRUE);
}

void ShowCurrent(Wizard *w) {
  WizzardContext *c = &w->c;
  WizzardPage *current = Current(c);
  for (INT i = 0; i < c->pageCount; ++i)
    if (&c->pages[i] != current && c->pages[i].window) ShowWindow(c->pages[i].window, SW_HIDE);
  if (current && current->window) {
    RECT r = PageRect(c, *current);
    SetWindowPos(current->window, HWND_TOP, r.left, r.top, 0, 0, SWP_NOSIZE | SWP_SHOWWINDOW);
  }
  WCHAR title[301];
  title[0] = 0;
  const WCHAR *pageTitle = current ? current->title : nullptr;
  if (pageTitle && c->title && (c->flags & WIZZARD_TITLE_BOTH))
    Format(title, 301, L"%s - %s", c->title, pageTitle);
  else if (pageTitle)
    BoundedCopy(title, pageTitle, 301);
  else if (c->title)
    BoundedCopy(title, c->title, 301);
  SetWindowTextW(w->frame, title);
}

// The next (step 1) or previous (step -1) enabled page, or -1.
INT Neighbour(const WizzardContext *c, INT step) {
  for (INT i = c->currentPage + step; i >= 0 && i < c->pageCount; i += step)
    if (c->pages[i].enabled) return i;
  return -1;
}

void SetButtons(Wizard *w) {
  HWND dlg = w->frame;
  const bool next = Neighbour(&w->c, 1) >= 0;
  EnableWindow(GetDlgItem(dlg, IDC_WIZARD_NEXT), next);
  EnableWindow(GetDlgItem(dlg, IDC_WIZARD_BACK), Neighbour(&w->c, -1) >= 0);
  EnableWindow(GetDlgItem(dlg, IDOK), !next);
  // Enter presses whichever of Next and Finish is enabled; a disabled
  // button must not keep the focus.
  const int preferred = next ? IDC_WIZARD_NEXT : IDOK;
  SendMessageW(dlg, DM_SETDEFID, preferred, 0);
  HWND focus = GetFocus();
  if (!focus || !IsWindowEnabled(focus)) SetFocus(GetDlgItem(dlg, preferred));
}

// Sends the activate or leave message; returns the page's result.
INT SendPageMessage(WizzardContext *c, UINT message, WPARAM wp) {
  WizzardPageMessage block = {c, 1};
  WizzardPage *p = Current(c);
  if (p && p->window) SendMessageW(p->window, message, wp, reinterpret_cast<LPARAM>(&block));
  return block.result;
}

void Refresh(Wizard *w) {
  ShowCurrent(w);
  SetButtons(w);
  InvalidateRect(w->frame, nullptr, TRUE);
}

void Next(Wizard *w) {
  WizzardContext *c = &w->c;
  // The leave message belongs to wizards that use the activate message.
  if (c->activateMessage && SendPageMessage(c, c->leaveMessage, 1) != 1) return;
  INT to = Neighbour(c, 1);
  if (to >= 0) c->currentPage = to;
  if (c->activateMessage) SendPageMessage(c, c->activateMessage, 0);
  Refresh(w);
}

// Back asks nothing and activates nothing: the page is only told.
void Back(Wizard *w) {
  WizzardContext *c = &w->c;
  if (c->activateMessage) SendPageMessage(c, c->leaveMessage, 2);
  INT to = Neighbour(c, -1);
  if (to >= 0) c->currentPage = to;
  Refresh(w);
}

void PaintPicture(Wizard *w, HDC dc) {
  WizzardContext *c = &w->c;
  WizzardPage *p = Current(c);
  RECT r;
  if (!p || !PictureRect(c, *p, &r)) return;
  const INT f = c->metrics[kFrame];
  if (f > 0) {
    unique_hgdiobj dark(CreateSolidBrush(RGB(0x60, 0x60, 0x60)));
    unique_hgdiobj light(CreateSolidBrush(RGB(0xE6, 0xE6, 0xE6)));
    RECT line = r;
    for (INT i = 0; i < f; ++i) {
      RECT top = {line.left, line.top, line.right, line.top + 1};
      RECT left = {line.left, line.top, line.left + 1, line.bottom};
      RECT bottom = {line.left + 1, line.bottom - 1, line.right, line.bottom};
      RECT right = {line.right - 1, line.top + 1, line.right, line.bottom};
      FillRect(dc, &top, static_cast<HBRUSH>(dark.get()));
      FillRect(dc, &left, static_cast<HBRUSH>(dark.get()));
      FillRect(dc, &bottom, static_cast<HBRUSH>(light.get()));
      FillRect(dc, &right, static_cast<HBRUSH>(light.get()));
      InflateRect(&line, -1, -1);
    }
  }
  HBITMAP bitmap = PictureOf(c, *p);
  BITMAP bm;
  if (GetObjectW(bitmap, sizeof bm, &bm) != sizeof bm) return;
  unique_hdc memory(CreateCompatibleDC(dc));
  if (!memory) return;
  select_object in(memory.get(), bitmap);
  BitBlt(dc, c->metrics[kLeft], c->metrics[kTop], bm.bmWidth, bm.bmHeight, memory.get(), 0, 0,
         SRCCOPY);
}

INT_PTR CALLBACK PageProc(HWND page, UINT m, WPARAM wp, LPARAM lp) {
  if (m == WM_INITDIALOG) {
    SetWindowLongPtrW(page, DWLP_USER, lp);
    Wizard *w = reinterpret_cast<Wizard *>(lp);
    if (w && w->ltsModule) TranslateDialog(page, w->ltsModule);
  }
  auto *w = reinterpret_cast<Wizard *>(GetWindowLongPtrW(page, DWLP_USER));
  if (!w || !w->c.callback) return 0;
  WizzardPage *current = Current(&w->c);
  if (!current) return 0;
  return w->c.callback(&w->c, current->templateId, page, m, wp, lp);
}

bool Open(Wizard *w, HWND dlg) {
  WizzardContext *c = &w->c;
  w->frame = dlg;
  if (c->callback) c->callback(c, 0, dlg, WM_INITDIALOG, 0, reinterpret_cast<LPARAM>(c));
  for (INT i = 0; i < c->pageCount; ++i) {
    WizzardPage &p = c->pages[i];
    if (!p.templateId) continue;
    p.window = CreateDialogParamW(c->resources, MAKEINTRESOURCEW(p.templateId), dlg, PageProc,
                                  reinterpret_cast<LPARAM>(w));
    if (!p.window) {
      WCHAR id[16];
      Format(id, 16, L"%u", p.templateId);
      ReportError(IDS_ERR_WIZARD_PAGE, id);
      return false;
    }
  }
  Layout(w);
  Tavona_CenterWindow(dlg);
  ShowCurrent(w);
  SetButtons(w);
  if (c->activateMessage) SendPageMessage(c, c->activateMessage, 0);
  return true;
}

INT_PTR CALLBACK FrameProc(HWND dlg, UINT m, WPARAM wp, LPARAM lp) {
  Wizard *w = DialogRecord<Wizard>(dlg, m, lp);
  if (!w) return FALSE;
  if (m == WM_INITDIALOG) {
    if (!Open(w, dlg)) EndDialog(dlg, IDCANCEL);
    return FALSE;  // the focus was placed by SetButtons
  }
  if (w->c.callback) w->c.callback(&w->c, 0, dlg, m, wp, lp);
  switch (m) {
    case WM_COMMAND:
      switch (LOWORD(wp)) {
        case IDC_WIZARD_NEXT: Next(w); return TRUE;
        case IDC_WIZARD_BACK: Back(w); return TRUE;
        case IDOK: EndDialog(dlg, IDOK); return TRUE;
        case IDCANCEL: EndDialog(dlg, IDCANCEL); return TRUE;
      }
      break;
    case WM_PAINT: {
      PAINTSTRUCT ps;
      HDC dc = BeginPaint(dlg, &ps);
      if (dc) PaintPicture(w, dc);
      EndPaint(dlg, &ps);
      return TRUE;
    }
    case WM_DESTROY:
      for (INT i = 0; i < w->c.pageCount; ++i) {
        WizzardPage &p = w->c.pages[i];
        if (p.window && IsWindow(p.window)) DestroyWindow(p.window);
        p.window = nullptr;
      }
      w->frame = nullptr;
      return TRUE;
  }
  return FALSE;
}

WizzardPage *FindPage(WizzardContext *c, UINT id) {
  if (!c) return nullptr;
  for (INT i = 0; i < c->pageCount; ++i)
    if (c->pages[i].templateId == id) return &c->pages[i];
  return nullptr;
}

}  // namespace
}  // namespace tv

INT WINAPI Wizzard_Perform(const WIZZARD_PAGEDEF *pages, WIZZARD_CALLBACK callback,
                           UINT activateMessage, UINT leaveMessage, LPARAM param,
                           UINT defaultBitmapId, UINT titleId, HINSTANCE resources,
                           const WCHAR *ltsModule, INT margin, UINT flags) {
  using tv::Wizard;
  auto *w = static_cast<Wizard *>(tv::AllocBytes(sizeof(Wizard)));
  if (!w) return IDCANCEL;
  *w = Wizard{};
  WizzardContext *c = &w->c;
  c->param = param;
  c->resources = resources;
  c->flags = flags;
  c->callback = callback;
  c->activateMessage = activateMessage;
  c->leaveMessage = leaveMessage;
  if (margin < 1 || margin > 50) margin = 13;
  const INT metrics[11] = {margin, margin, margin, 8, margin, 8, 8, 10, 0, 10, 2};
  for (int i = 0; i < 11; ++i) c->metrics[i] = metrics[i];
  if (ltsModule && !(w->ltsModule = tv::DuplicateWideString(ltsModule))) {
    tv::FreeWizard(w);
    return IDCANCEL;
  }
  if (defaultBitmapId) {
    c->defaultBitmap = LoadBitmapW(resources, MAKEINTRESOURCEW(defaultBitmapId));
    if (!c->defaultBitmap && tv::g.resources)
      c->defaultBitmap = LoadBitmapW(tv::g.resources, MAKEINTRESOURCEW(defaultBitmapId));
  }
  c->title = tv::LoadTitle(w, titleId);
  INT count = 0;
  while (pages && pages[count].templateId) ++count;
  if (count) {
    c->pages = static_cast<WizzardPage *>(tv::AllocBytes(sizeof(WizzardPage) * uint64_t(count)));
    if (!c->pages) {
      tv::FreeWizard(w);
      return IDCANCEL;
    }
  }
  c->pageCount = count;
  for (INT i = 0; i < count; ++i) {
    WizzardPage &p = c->pages[i];
    p = WizzardPage{};
    p.templateId = pages[i].templateId;
    p.enabled = 1;
    if (pages[i].bitmapId)
      p.bitmap = LoadBitmapW(resources, MAKEINTRESOURCEW(pages[i].bitmapId));
    p.title = tv::LoadTitle(w, pages[i].titleId);
  }
  INT_PTR r = tv::RunDialog(IDD_WIZARD, tv::FrameProc, reinterpret_cast<LPARAM>(w));
  tv::FreeWizard(w);
  return r == IDOK ? IDOK : IDCANCEL;
}

INT WINAPI Wizzard_EnableSubDialog(WizzardContext *context, UINT pageId, INT enabled) {
  WizzardPage *p = tv::FindPage(context, pageId);
  if (!p) return 0;
  INT previous = p->enabled;
  p->enabled = enabled;
  return previous;
}

HWND WINAPI Wizzard_GetHwndSubDialog(WizzardContext *context, UINT pageId) {
  WizzardPage *p = tv::FindPage(context, pageId);
  return p ? p->window : nullptr;
}

LPARAM WINAPI Wizzard_GetParam(WizzardContext *context) { return context ? context->param : 0; }

BOOL WINAPI Wizzard_SetDefaultBitmap(WizzardContext *context, const WCHAR *file) {
  if (!context) return FALSE;
  HBITMAP bitmap = Tavona_LoadBitmapFromFile(file);
  if (!bitmap) return FALSE;
  if (context->defaultBitmap) DeleteObject(context->defaultBitmap);
  context->defaultBitmap = bitmap;
  // While the wizard runs, the picture may change the frame's size.
  if (HWND frame = tv::Of(context)->frame) {
    tv::Layout(tv::Of(context));
    tv::ShowCurrent(tv::Of(context));
    InvalidateRect(frame, nullptr, TRUE);
  }
  return TRUE;
}
