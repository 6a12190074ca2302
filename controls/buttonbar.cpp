// The button bar window ("TAVONA_BUTTONS_32"): painting, the mouse, drags,
// the context menu, the property dialogs and the exports over the records
// of controls/barcore.h.
#include <tavona/controls.h>

#include <tavona/frame.h>

#include "controls/barcore.h"
#include "frame/alloc.h"
#include "frame/dialog.h"
#include "frame/globals.h"
#include "frame/handles.h"
#include "frame/wndclasses.h"
#include "base/wstr.h"
#include "tvres.h"

namespace tv {
namespace {

constexpr WCHAR kBarClass[] = L"TAVONA_BUTTONS_32";
constexpr UINT kBarControlId = 133;
constexpr uint32_t kCreateMarker = 0x42415231;  // "BAR1"

// What WButtWind_CreateWindow hands to WM_CREATE.
struct CreateParams {
  uint32_t marker;
  HWND notifyWindow;
  UINT notifyMessage;
};

BarRecord *Bar(HWND w) {
  if (!w || !IsWindow(w)) return nullptr;
  WCHAR cls[32];
  if (!GetClassNameW(w, cls, 32) || lstrcmpiW(cls, kBarClass) != 0) return nullptr;
  auto *bar = reinterpret_cast<BarRecord *>(GetWindowLongPtrW(w, 0));
  return bar && bar->window == w ? bar : nullptr;
}

BarButton *Button(HWBUTTON h) {
  auto *b = reinterpret_cast<BarButton *>(h);
  return IsButton(b) ? b : nullptr;
}

void ReleaseBitmap(HANDLE bitmap) { DeleteObject(static_cast<HGDIOBJ>(bitmap)); }

RECT ToRect(const BarRect &r) { return {r.left, r.top, r.right, r.bottom}; }

bool Meets(const RECT &a, const RECT &b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

void InvalidateButton(const BarRecord *bar, const BarButton *b) {
  if (!b) return;
  RECT r = ToRect(b->rect);
  InvalidateRect(bar->window, &r, FALSE);
}

// ---- Painting ----------------------------------------------------------------

COLORREF Shade(COLORREF c, bool light) {
  auto ch = [&](int v) { return light ? v + (255 - v) * 3 / 4 : v * 2 / 3; };
  return RGB(ch(GetRValue(c)), ch(GetGValue(c)), ch(GetBValue(c)));
}

// The brushes and DCs of one paint, made once however many buttons there are.
struct PaintKit {
  explicit PaintKit(const BarRecord *bar, HDC dc)
      : dc(dc),
        background(CreateSolidBrush(bar->colours[0])),
        backLight(CreateSolidBrush(Shade(bar->colours[0], true))),
        backDark(CreateSolidBrush(Shade(bar->colours[0], false))),
        face(CreateSolidBrush(bar->colours[2])),
        faceLight(CreateSolidBrush(Shade(bar->colours[2], true))),
        faceDark(CreateSolidBrush(Shade(bar->colours[2], false))),
        second(CreateSolidBrush(bar->colours[4])) {}
  HBRUSH Brush(const unique_hgdiobj &b) const { return static_cast<HBRUSH>(b.get()); }
  HDC Memory() {
    if (!memory) memory.reset(CreateCompatibleDC(dc));
    return memory.get();
  }
  HDC dc;
  unique_hgdiobj background, backLight, backDark, face, faceLight, faceDark, second;
  unique_hdc memory;
};

void Fill(HDC dc, LONG l, LONG t, LONG r, LONG b, HBRUSH brush) {
  RECT rc = {l, t, r, b};
  FillRect(dc, &rc, brush);
}

// A 3-D edge of width pixels inside r: top and left in one brush, bottom
// and right in the other.
void Edge(HDC dc, const RECT &r, int width, HBRUSH topLeft, HBRUSH bottomRight) {
  if (width < 1) return;
  Fill(dc, r.left, r.top, r.right, r.top + width, topLeft);
  Fill(dc, r.left, r.top + width, r.left + width, r.bottom, topLeft);
  Fill(dc, r.left + width, r.bottom - width, r.right, r.bottom, bottomRight);
  Fill(dc, r.right - width, r.top, r.right, r.bottom - width, bottomRight);
}

void PaintBitmap(PaintKit &kit, HANDLE bitmap, const RECT &r) {
  BITMAP bm;
  if (r.right <= r.left || r.bottom <= r.top ||
      GetObjectW(static_cast<HGDIOBJ>(bitmap), sizeof bm, &bm) != sizeof bm)
    return;
  HDC mem = kit.Memory();
  if (!mem) return;
  select_object in(mem, static_cast<HGDIOBJ>(bitmap));
  SetStretchBltMode(kit.dc, COLORONCOLOR);
  StretchBlt(kit.dc, r.left, r.top, r.right - r.left, r.bottom - r.top, mem, 0, 0, bm.bmWidth,
             bm.bmHeight, SRCCOPY);
}

void PaintButton(const BarRecord *bar, PaintKit &kit, const BarButton *b) {
  if (b->flags & kButtonInvisible) return;
  HDC dc = kit.dc;
  RECT r = ToRect(b->rect);
  const bool down = (b->flags & kButtonLatched) || bar->pressed == b;
  const int edge = bar->longs[kPropEdgeWidth];
  if (bar->longs[kPropEdgeMode] == 2 || bar->hot == b || (b->flags & kButtonLatched)) {
    if (down)
      Edge(dc, r, edge, kit.Brush(kit.faceDark), kit.Brush(kit.faceLight));
    else
      Edge(dc, r, edge, kit.Brush(kit.faceLight), kit.Brush(kit.faceDark));
    InflateRect(&r, -edge, -edge);
  }
  FillRect(dc, &r, kit.Brush(kit.face));
  if (down) {
    OffsetRect(&r, 1, 1);
  } else {
    --r.right;
    --r.bottom;
  }
  ++r.left;
  ++r.top;
  if (b->kind == kKindTwoColour) {
    // The second colour as a swatch under the caption.
    RECT swatch = r;
    InflateRect(&swatch, -2, -2);
    if (swatch.right > swatch.left && swatch.bottom > swatch.top)
      FillRect(dc, &swatch, kit.Brush(kit.second));
  } else if (b->bitmap) {
    RECT pic = r;
    InflateRect(&pic, -1, -1);
    PaintBitmap(kit, b->bitmap, pic);
  }
  if (b->caption && b->caption[0]) {
    SetBkMode(dc, b->kind == kKindTwoColour ? TRANSPARENT : OPAQUE);
    DrawTextW(dc, b->caption, -1, &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
  }
  if (b->flags & kButtonInverted) InvertRect(dc, &r);
}

// The two-tone line in the middle of the gap before a group.
void PaintSeparator(const BarRecord *bar, PaintKit &kit, const BarButton *b, const RECT &area) {
  const int32_t arrangement = bar->longs[kPropArrangement];
  const int32_t half = (bar->longs[kPropGroupGap] + bar->longs[kPropGap]) / 2 + 1;
  RECT dark, light;
  if (arrangement == 1) {
    LONG x = b->rect.left - half;
    dark = {x, b->rect.top, x + 1, b->rect.bottom};
    light = {x + 1, b->rect.top, x + 2, b->rect.bottom};
  } else if (arrangement == 2) {
    LONG y = b->rect.top - half;
    dark = {b->rect.left, y, b->rect.right, y + 1};
    light = {b->rect.left, y + 1, b->rect.right, y + 2};
  } else {
    return;
  }
  if (!Meets(dark, area) && !Meets(light, area)) return;
  FillRect(kit.dc, &dark, kit.Brush(kit.backDark));
  FillRect(kit.dc, &light, kit.Brush(kit.backLight));
}

// Paints into dc over area. Buttons outside clip are left out (clip is the
// area itself with property 15, the update region's box for WM_PAINT).
void PaintBar(const BarRecord *bar, HDC dc, const RECT &area, const RECT *clip) {
  saved_dc keep(dc);
  PaintKit kit(bar, dc);
  FillRect(dc, &area, kit.Brush(kit.background));
  SelectObject(dc, GetStockObject(SYSTEM_FONT));
  SetTextColor(dc, bar->colours[1]);
  SetBkColor(dc, bar->colours[2]);
  const bool separators = bar->longs[kPropSeparators] == 1;
  for (const BarButton *b = bar->first; b; b = b->next) {
    if (separators && (b->flags & kButtonGroupGap) && !(b->flags & kButtonInvisible))
      PaintSeparator(bar, kit, b, clip ? *clip : area);
    if (b->kind != kKindPicture && b->kind != kKindTwoColour) continue;
    if (clip && !Meets(ToRect(b->rect), *clip)) continue;
    PaintButton(bar, kit, b);
  }
  const int frame = bar->longs[kPropFrameWidth];
  if (frame >= 1) Edge(dc, area, frame, kit.Brush(kit.faceLight), kit.Brush(kit.faceDark));
}

// ---- Layout and commands -------------------------------------------------------

void Arrange(BarRecord *bar) {
  RECT client;
  GetClientRect(bar->window, &client);
  ArrangeButtons(bar, client.right, client.bottom);
  for (BarButton *b = bar->first; b; b = b->next)
    if (b->child && IsWindow(b->child))
      MoveWindow(b->child, b->rect.left, b->rect.top, b->rect.right - b->rect.left,
                 b->childHeight, TRUE);
}

void Repaint(BarRecord *bar) { InvalidateRect(bar->window, nullptr, TRUE); }

BarButton *ButtonUnderCursor(BarRecord *bar) {
  POINT p;
  if (!GetCursorPos(&p) || !ScreenToClient(bar->window, &p)) return nullptr;
  return HitTest(bar, p.x, p.y);
}

INT_PTR EditButton(BarRecord *bar, BarButton *b);

void RunCommand(BarRecord *bar, UINT command, BarButton *target) {
  switch (command) {
    case IDM_BAR_PROPERTIES:
      WButtWind_EditProperties(bar->window);
      break;
    case IDM_BAR_BUTTON_PROPERTIES:
      if (target) EditButton(bar, target);
      break;
    case IDM_BAR_DELETE:
      if (!target) break;
      DeleteButton(bar, target, ReleaseBitmap);
      Arrange(bar);
      Repaint(bar);
      bar->hot = ButtonUnderCursor(bar);
      break;
    case IDM_BAR_NEW_BUTTON:
    case IDM_BAR_NEW_SPACE: {
      const bool space = command == IDM_BAR_NEW_SPACE;
      BarButton *b = space ? NewButton(bar, 2, nullptr, nullptr, 0, 20, 200, 0, nullptr)
                           : NewButton(bar, kKindPicture, nullptr, nullptr, 0, 20, 20, 0, nullptr);
      if (!b) break;
      b->rect = bar->first->rect;
      // The space is neither laid out nor painted until something else
      // arranges the bar.
      if (space) break;
      Arrange(bar);
      Repaint(bar);
      break;
    }
    case IDM_BAR_EDGES:
      bar->longs[kPropEdgeMode] = bar->longs[kPropEdgeMode] == 1 ? 2 : 1;
      Repaint(bar);
      break;
    case IDM_BAR_SWITCH:
      bar->longs[kPropMenuSwitch] = !bar->longs[kPropMenuSwitch];
      break;
    case IDM_BAR_WRAP:
      bar->longs[kPropWrap] = bar->longs[kPropWrap] == 1 ? 0 : 1;
      Arrange(bar);
      Repaint(bar);
      break;
  }
}

void ContextMenu(BarRecord *bar, LPARAM lp) {
  BarButton *target = HitTest(bar, static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp)));
  unique_hmenu menu(LoadMenuW(g.resources, MAKEINTRESOURCEW(target ? IDM_BAR_BUTTON : IDM_BAR_EMPTY)));
  if (!menu) return;
  HMENU popup = GetSubMenu(menu.get(), 0);
  if (!popup) return;
  auto check = [&](UINT id, bool on) {
    CheckMenuItem(popup, id, MF_BYCOMMAND | (on ? MF_CHECKED : MF_UNCHECKED));
  };
  check(IDM_BAR_EDGES, bar->longs[kPropEdgeMode] == 1);
  check(IDM_BAR_SWITCH, bar->longs[kPropMenuSwitch] != 0);
  check(IDM_BAR_WRAP, bar->longs[kPropWrap] == 1);
  POINT at;
  GetCursorPos(&at);
  Tavona_DestroyPopup();
  UINT command = static_cast<UINT>(TrackPopupMenu(popup, TPM_NONOTIFY | TPM_RETURNCMD, at.x, at.y,
                                                  0, bar->window, nullptr));
  menu.reset();
  // The menu may have outlived the button (a script, another window).
  if (target && !IsButton(target)) target = nullptr;
  RunCommand(bar, command, target);
}

// ---- Mouse -----------------------------------------------------------------

void ShowButtonPopup(BarRecord *bar, const BarButton *b) {
  if (!b || IsBlank(b->popup)) {
    Tavona_DestroyPopup();
    return;
  }
  HWND popup = Tavona_ShowPopup(bar->window, b->popup);
  if (!popup) return;
  // Below the button rather than below the whole bar.
  POINT corner = {b->rect.left, b->rect.bottom + 2};
  ClientToScreen(bar->window, &corner);
  SetWindowPos(popup, nullptr, corner.x, corner.y, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void SetHot(BarRecord *bar, BarButton *b) {
  if (b == bar->hot) return;
  InvalidateButton(bar, bar->hot);
  InvalidateButton(bar, b);
  bar->hot = b;
  if (!bar->dragged) ShowButtonPopup(bar, b);
}

void ButtonDown(BarRecord *bar, LPARAM lp) {
  Tavona_DestroyPopup();
  SetCapture(bar->window);
  bar->pressed = nullptr;
  bar->dragged = nullptr;
  bar->downX = static_cast<short>(LOWORD(lp));
  bar->downY = static_cast<short>(HIWORD(lp));
  bar->pressed = HitTest(bar, bar->downX, bar->downY);
  InvalidateButton(bar, bar->pressed);
}

bool InClient(const BarRecord *bar, POINT p) {
  RECT client;
  GetClientRect(bar->window, &client);
  return PtInRect(&client, p) != FALSE;
}

void MouseMove(BarRecord *bar, WPARAM wp, LPARAM lp) {
  POINT p = {static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp))};
  if (!bar->trackingLeave) {
    TRACKMOUSEEVENT t = {sizeof t, TME_LEAVE, bar->window, 0};
    bar->trackingLeave = TrackMouseEvent(&t) != FALSE;
  }
  // A press that moves beyond the drag distance becomes a drag, which
  // sends no click.
  if (bar->pressed && (wp & MK_LBUTTON) && GetCapture() == bar->window &&
      (abs(p.x - bar->downX) > GetSystemMetrics(SM_CXDRAG) ||
       abs(p.y - bar->downY) > GetSystemMetrics(SM_CYDRAG))) {
    bar->dragged = bar->pressed;
    bar->pressed = nullptr;
    InvalidateButton(bar, bar->dragged);
    bar->savedCursor = GetCursor();
    Tavona_DestroyPopup();
  }
  if (bar->dragged) {
    HANDLE c = InClient(bar, p) ? bar->dropCursor : bar->noDropCursor;
    if (c) SetCursor(static_cast<HCURSOR>(c));
  }
  SetHot(bar, InClient(bar, p) ? HitTest(bar, p.x, p.y) : nullptr);
}

void ButtonUp(BarRecord *bar, LPARAM lp) {
  POINT p = {static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp))};
  if (BarButton *b = bar->pressed) {
    bar->pressed = nullptr;
    InvalidateButton(bar, b);
    UpdateWindow(bar->window);
    if (bar->notifyWindow)
      PostMessageW(bar->notifyWindow, bar->notifyMessage, 1, reinterpret_cast<LPARAM>(b));
  }
  if (BarButton *b = bar->dragged) {
    bar->dragged = nullptr;
    // Outside the bar the cursor said "no drop".
    if (InClient(bar, p) && DropButton(bar, b, p.x, p.y)) {
      Arrange(bar);
      Repaint(bar);
    } else {
      InvalidateButton(bar, b);
    }
    SetCursor(static_cast<HCURSOR>(bar->savedCursor));
    bar->savedCursor = nullptr;
  }
  if (GetCapture() == bar->window) ReleaseCapture();
}

void DoubleClick(BarRecord *bar, LPARAM lp) {
  if (HitTest(bar, static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp)))) {
    ButtonDown(bar, lp);
  } else if (bar->longs[kPropEditOnDoubleClick] == 1) {
    MessageBoxW(nullptr, L"EDIT PROP", L"EDIT PROP", MB_TASKMODAL);
  }
}

// ---- Property dialogs --------------------------------------------------------

void SetInt(HWND dlg, int id, int32_t v) { SetDlgItemInt(dlg, id, static_cast<UINT>(v), TRUE); }

void ReadInt(HWND dlg, int id, int32_t *v) {
  BOOL ok = FALSE;
  INT value = static_cast<INT>(GetDlgItemInt(dlg, id, &ok, TRUE));
  if (ok) *v = value;
}

void SetCheck(HWND dlg, int id, bool on) { CheckDlgButton(dlg, id, on ? BST_CHECKED : BST_UNCHECKED); }
bool Checked(HWND dlg, int id) { return IsDlgButtonChecked(dlg, id) == BST_CHECKED; }

struct ButtonEdit {
  BarRecord *bar;
  BarButton *button;
};

INT_PTR CALLBACK ButtonPropProc(HWND dlg, UINT m, WPARAM wp, LPARAM lp) {
  ButtonEdit *e = DialogRecord<ButtonEdit>(dlg, m, lp);
  if (!e) return FALSE;
  BarButton *b = e->button;
  switch (m) {
    case WM_INITDIALOG:
      SetDlgItemTextW(dlg, IDC_BUTTON_CAPTION, b->caption ? b->caption : L"");
      SetDlgItemTextW(dlg, IDC_BUTTON_POPUP, b->popup ? b->popup : L"");
      SetInt(dlg, IDC_BUTTON_ID, b->id);
      SetCheck(dlg, IDC_BUTTON_NEW_ROW, b->flags & kButtonNewRow);
      SetCheck(dlg, IDC_BUTTON_GROUP, b->flags & kButtonGroupGap);
      SetCheck(dlg, IDC_BUTTON_LATCHED, b->flags & kButtonLatched);
      SetCheck(dlg, IDC_BUTTON_HIDDEN, b->flags & kButtonInvisible);
      return TRUE;
    case WM_COMMAND:
      if (LOWORD(wp) == IDOK) {
        for (int id : {IDC_BUTTON_CAPTION, IDC_BUTTON_POPUP}) {
          int len = GetWindowTextLengthW(GetDlgItem(dlg, id));
          HeapPtr<WCHAR> text(AllocWideChars(static_cast<UINT>(len) + 1));
          if (!text) return TRUE;
          GetDlgItemTextW(dlg, id, text.get(), len + 1);
          SetButtonText(b, id == IDC_BUTTON_CAPTION ? 5 : 4, text.get());
        }
        ReadInt(dlg, IDC_BUTTON_ID, &b->id);
        auto flag = [&](int id, uint32_t bit) {
          b->flags = Checked(dlg, id) ? (b->flags | bit) : (b->flags & ~bit);
        };
        flag(IDC_BUTTON_NEW_ROW, kButtonNewRow);
        flag(IDC_BUTTON_GROUP, kButtonGroupGap);
        flag(IDC_BUTTON_LATCHED, kButtonLatched);
        flag(IDC_BUTTON_HIDDEN, kButtonInvisible);
        EndDialog(dlg, IDOK);
        return TRUE;
      }
      if (LOWORD(wp) == IDCANCEL) {
        EndDialog(dlg, IDCANCEL);
        return TRUE;
      }
      break;
  }
  return FALSE;
}

INT_PTR EditButton(BarRecord *bar, BarButton *b) {
  ButtonEdit e = {bar, b};
  INT_PTR r = RunDialog(IDD_BUTTON_PROPERTIES, ButtonPropProc, reinterpret_cast<LPARAM>(&e));
  if (r == IDOK) {
    Arrange(bar);
    Repaint(bar);
  }
  return r;
}

// ---- Window procedure --------------------------------------------------------

// The cursors are loaded once per resource library: shared cursors are
// never destroyed, and a resource library loaded as a data file (as tests
// do) gets a new copy from every load under wine.
void LoadDragCursors(BarRecord *bar) {
  static HMODULE from = nullptr;
  static HCURSOR drop = nullptr, noDrop = nullptr;
  if (!g.resources) return;
  if (from != g.resources || !drop || !noDrop) {
    from = g.resources;
    drop = LoadCursorW(g.resources, L"PICKCURSORDROPABLE");
    noDrop = LoadCursorW(g.resources, L"PICKCURSORUNDROPABLE");
  }
  bar->dropCursor = drop;
  bar->noDropCursor = noDrop;
}

LRESULT Create(HWND w, const CREATESTRUCTW *cs) {
  auto *bar = static_cast<BarRecord *>(AllocBytes(sizeof(BarRecord)));
  if (!bar) return -1;
  *bar = BarRecord{};
  InitBarRecord(bar);
  bar->window = w;
  auto *params = static_cast<const CreateParams *>(cs->lpCreateParams);
  if (params && params->marker == kCreateMarker) {
    bar->notifyWindow = params->notifyWindow;
    bar->notifyMessage = params->notifyMessage;
  }
  LoadDragCursors(bar);
  SetWindowLongPtrW(w, 0, reinterpret_cast<LONG_PTR>(bar));
  return 0;
}

void Destroy(HWND w) {
  auto *bar = reinterpret_cast<BarRecord *>(GetWindowLongPtrW(w, 0));
  SetWindowLongPtrW(w, 0, 0);
  if (!bar || bar->window != w) return;
  DeleteAllButtons(bar, ReleaseBitmap);
  FreeMem(bar);
}

}  // namespace
}  // namespace tv

using tv::Bar;
using tv::BarButton;
using tv::BarRecord;
using tv::Button;

extern "C" LRESULT CALLBACK WndProcButtons(HWND w, UINT m, WPARAM wp, LPARAM lp) {
  if (m == WM_CREATE) return tv::Create(w, reinterpret_cast<CREATESTRUCTW *>(lp));
  if (m == WM_DESTROY) {
    tv::Destroy(w);
    return 0;
  }
  BarRecord *bar = Bar(w);
  if (!bar) return DefWindowProcW(w, m, wp, lp);
  switch (m) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT: {
      PAINTSTRUCT ps;
      HDC dc = BeginPaint(w, &ps);
      if (dc) {
        RECT client;
        GetClientRect(w, &client);
        tv::PaintBar(bar, dc, client, &ps.rcPaint);
      }
      EndPaint(w, &ps);
      return 0;
    }
    case WM_LBUTTONDOWN:
      tv::ButtonDown(bar, lp);
      return 0;
    case WM_LBUTTONUP:
      tv::ButtonUp(bar, lp);
      return 0;
    case WM_LBUTTONDBLCLK:
      tv::DoubleClick(bar, lp);
      return 0;
    case WM_MOUSEMOVE:
      tv::MouseMove(bar, wp, lp);
      return 0;
    case WM_MOUSELEAVE:
      bar->trackingLeave = false;
      if (!bar->dragged) tv::SetHot(bar, nullptr);
      return 0;
    case WM_CAPTURECHANGED:
      // Capture taken away in the middle of a drag: the drag is over.
      if (reinterpret_cast<HWND>(lp) != w && bar->dragged) {
        tv::InvalidateButton(bar, bar->dragged);
        bar->dragged = nullptr;
        SetCursor(static_cast<HCURSOR>(bar->savedCursor));
        bar->savedCursor = nullptr;
      }
      return 0;
    case WM_RBUTTONUP:
      if (bar->longs[tv::kPropContextMenu] == 1) tv::ContextMenu(bar, lp);
      return 0;
    case WM_COMMAND:
      if (LOWORD(wp) >= IDM_BAR_PROPERTIES && LOWORD(wp) <= IDM_BAR_WRAP) {
        tv::RunCommand(bar, LOWORD(wp), bar->hot);
        return 0;
      }
      break;
  }
  return DefWindowProcW(w, m, wp, lp);
}

// ---- Exports -------------------------------------------------------------------

HWND WINAPI WButtWind_CreateWindow(HWND parent, HWND notifyWindow, UINT notifyMessage) {
  tv::CreateParams params = {tv::kCreateMarker, notifyWindow, notifyMessage};
  HWND w = CreateWindowExW(0, tv::kBarClass, nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, 100,
                           100, 200, 200, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(tv::kBarControlId)),
                           Tavona_GetInstance(), &params);
  if (!w) return nullptr;
  ShowWindow(w, SW_SHOW);
  return w;
}

void WINAPI WButtWind_DestroyWindow(HWND bar) {
  if (Bar(bar)) DestroyWindow(bar);
}

HWBUTTON WINAPI WButtWind_CreateNewButton(HWND window, INT kind, const WCHAR *key,
                                          const WCHAR *name, INT id, INT height, INT width,
                                          UINT flags, HWBUTTON insertBefore) {
  BarRecord *bar = Bar(window);
  if (!bar) return nullptr;
  return reinterpret_cast<HWBUTTON>(tv::NewButton(bar, kind, key, name, id, height, width, flags,
                                                  reinterpret_cast<BarButton *>(insertBefore)));
}

void WINAPI WButtWind_DeleteAllButtons(HWND window) {
  if (BarRecord *bar = Bar(window)) tv::DeleteAllButtons(bar, tv::ReleaseBitmap);
}

HWBUTTON WINAPI WButtWind_FindButton(HWND window, const WCHAR *key, const WCHAR *name, INT id,
                                     HWBUTTON startAfter) {
  BarRecord *bar = Bar(window);
  if (!bar) return nullptr;
  return reinterpret_cast<HWBUTTON>(
      tv::FindButton(bar, key, name, id, reinterpret_cast<BarButton *>(startAfter)));
}

namespace {

void SetMatchingFlag(HWND window, const WCHAR *key, const WCHAR *name, INT id, BOOL on,
                     uint32_t flag) {
  BarRecord *bar = Bar(window);
  if (!bar) return;
  for (BarButton *b = bar->first; b; b = b->next)
    if (tv::Matches(b, key, name, id)) b->flags = on ? (b->flags | flag) : (b->flags & ~flag);
}

}  // namespace

void WINAPI WButtWind_SetButtonsActive(HWND window, const WCHAR *key, const WCHAR *name, INT id,
                                       BOOL on) {
  SetMatchingFlag(window, key, name, id, on, tv::kButtonLatched);
}

void WINAPI WButtWind_SetButtonsInvisible(HWND window, const WCHAR *key, const WCHAR *name,
                                          INT id, BOOL on) {
  SetMatchingFlag(window, key, name, id, on, tv::kButtonInvisible);
}

void WINAPI WButtWind_Arrange(HWND window) {
  if (BarRecord *bar = Bar(window)) tv::Arrange(bar);
}

INT WINAPI WButtWind_CalculateHeight(HWND window, INT width) {
  BarRecord *bar = Bar(window);
  return bar ? tv::CalculateHeight(bar, width) : 0;
}

INT WINAPI WButtWind_CalculateWidth(HWND window, INT height) {
  BarRecord *bar = Bar(window);
  return bar ? tv::CalculateWidth(bar, height) : 0;
}

void WINAPI WButtWind_PaintToHdc(HWND window, HDC dc, const RECT *rect, LPARAM, LPARAM) {
  BarRecord *bar = Bar(window);
  if (!bar || !dc) return;
  RECT area;
  if (rect)
    area = *rect;
  else
    GetClientRect(window, &area);
  tv::PaintBar(bar, dc, area, bar->longs[tv::kPropPaintClipped] == 1 ? &area : nullptr);
}

void WINAPI WButtWind_Repaint(HWND window) {
  if (BarRecord *bar = Bar(window)) tv::Repaint(bar);
}

INT WINAPI WButtWind_GetLongProperty(HWND window, INT id) {
  BarRecord *bar = Bar(window);
  return bar ? tv::GetBarLong(bar, id) : 0;
}

void WINAPI WButtWind_SetLongProperty(HWND window, INT id, INT value) {
  if (BarRecord *bar = Bar(window)) tv::SetBarLong(bar, id, value);
}

COLORREF WINAPI WButtWind_GetColorProperty(HWND window, INT id) {
  BarRecord *bar = Bar(window);
  return bar ? tv::GetBarColour(bar, id) : 0;
}

void WINAPI WButtWind_SetColorProperty(HWND window, INT id, COLORREF value) {
  if (BarRecord *bar = Bar(window)) tv::SetBarColour(bar, id, value);
}

namespace {

struct BarFields {
  int id, prop;
};
const BarFields kBarNumbers[] = {{IDC_BAR_MARGIN, tv::kPropMargin},
                                 {IDC_BAR_GAP, tv::kPropGap},
                                 {IDC_BAR_GROUP_GAP, tv::kPropGroupGap},
                                 {IDC_BAR_EDGE_WIDTH, tv::kPropEdgeWidth},
                                 {IDC_BAR_FRAME_WIDTH, tv::kPropFrameWidth}};
// Check boxes: the property and the value that the box stands for.
struct BarSwitch {
  int id, prop, on, off;
};
const BarSwitch kBarSwitches[] = {{IDC_BAR_ALL_EDGES, tv::kPropEdgeMode, 2, 1},
                                  {IDC_BAR_SEPARATORS, tv::kPropSeparators, 1, 0},
                                  {IDC_BAR_WRAP, tv::kPropWrap, 1, 0},
                                  {IDC_BAR_VERTICAL, tv::kPropArrangement, 2, 1},
                                  {IDC_BAR_MENU, tv::kPropContextMenu, 1, 0}};

}  // namespace

extern "C" INT_PTR CALLBACK EditButtonProp_Dialog_Callback(HWND dlg, UINT m, WPARAM wp,
                                                           LPARAM lp) {
  BarRecord *bar = tv::DialogRecord<BarRecord>(dlg, m, lp);
  if (!bar) return FALSE;
  switch (m) {
    case WM_INITDIALOG:
      for (const BarFields &f : kBarNumbers) tv::SetInt(dlg, f.id, bar->longs[f.prop]);
      for (const BarSwitch &s : kBarSwitches) tv::SetCheck(dlg, s.id, bar->longs[s.prop] == s.on);
      return TRUE;
    case WM_COMMAND:
      if (LOWORD(wp) == IDOK) {
        for (const BarFields &f : kBarNumbers) tv::ReadInt(dlg, f.id, &bar->longs[f.prop]);
        for (const BarSwitch &s : kBarSwitches)
          bar->longs[s.prop] = tv::Checked(dlg, s.id) ? s.on : s.off;
        EndDialog(dlg, IDOK);
        return TRUE;
      }
      if (LOWORD(wp) == IDCANCEL) {
        EndDialog(dlg, IDCANCEL);
        return TRUE;
      }
      break;
  }
  return FALSE;
}

INT WINAPI WButtWind_EditProperties(HWND window) {
  BarRecord *bar = Bar(window);
  if (!bar) return 0;
  INT r = static_cast<INT>(tv::RunDialog(IDD_BAR_PROPERTIES, EditButtonProp_Dialog_Callback,
                                         reinterpret_cast<LPARAM>(bar)));
  if (r == IDOK) {
    tv::Arrange(bar);
    tv::Repaint(bar);
  }
  return r;
}

LONG_PTR WINAPI WButton_GetLongProperty(HWBUTTON button, INT id) {
  BarButton *b = Button(button);
  return b ? tv::GetButtonLong(b, id) : 0;
}

void WINAPI WButton_SetLongProperty(HWBUTTON button, INT id, INT value) {
  if (BarButton *b = Button(button)) tv::SetButtonLong(b, id, value);
}

void WINAPI WButton_GetStringProperty(HWBUTTON button, INT id, WCHAR *buffer, INT size) {
  if (!buffer || size < 1) return;
  BarButton *b = Button(button);
  WCHAR **slot = b ? tv::ButtonText(b, id) : nullptr;
  tv::BoundedCopy(buffer, slot && *slot ? *slot : L"", size);
}

void WINAPI WButton_SetStringProperty(HWBUTTON button, INT id, const WCHAR *text) {
  if (BarButton *b = Button(button)) tv::SetButtonText(b, id, text);
}

namespace {

BOOL TakeBitmap(BarButton *b, HBITMAP bitmap) {
  if (!bitmap) return FALSE;
  if (b->bitmap) DeleteObject(static_cast<HGDIOBJ>(b->bitmap));
  b->bitmap = bitmap;
  return TRUE;
}

}  // namespace

BOOL WINAPI WButton_LoadBitmapFromFile(HWBUTTON button, const WCHAR *file) {
  BarButton *b = Button(button);
  return b ? TakeBitmap(b, Tavona_LoadBitmapFromFile(file)) : FALSE;
}

BOOL WINAPI WButton_LoadBitmapFromResource(HWBUTTON button, HINSTANCE module,
                                           const WCHAR *name) {
  BarButton *b = Button(button);
  return b ? TakeBitmap(b, LoadBitmapW(module, name)) : FALSE;
}

BOOL WINAPI WButton_LoadPopupTextFromResource(HWBUTTON button, UINT stringId, HINSTANCE module) {
  BarButton *b = Button(button);
  if (!b) return FALSE;
  tv::HeapPtr<WCHAR> text(tv::AllocWideChars(1001));
  if (!text) return FALSE;
  if (LoadStringW(module ? module : tv::g.resources, stringId, text.get(), 1001) < 1)
    text[0] = 0;
  return tv::SetButtonText(b, 4, text.get()) ? TRUE : FALSE;
}

void WINAPI WButton_Repaint(HWBUTTON button) {
  BarButton *b = Button(button);
  if (!b) return;
  if (BarRecord *bar = Bar(b->window)) tv::InvalidateButton(bar, b);
}

void WINAPI WButton_SetChildWindow(HWBUTTON button, HWND child, INT height) {
  BarButton *b = Button(button);
  if (!b) return;
  b->child = child;
  b->childHeight = height;
}
