#include "ui.h"

#include <algorithm>

namespace demo {

namespace {

struct FontMetrics {
  HFONT font;
  int height;
  int baseX;  // average character width, as dialog templates compute it
  int baseY;
};

const FontMetrics &Metrics() {
  static const FontMetrics m = [] {
    FontMetrics r{};
    NONCLIENTMETRICSW ncm{};
    ncm.cbSize = sizeof ncm;
    if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof ncm, &ncm, 0))
      r.font = CreateFontIndirectW(&ncm.lfMessageFont);
    if (!r.font) r.font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    HDC dc = GetDC(nullptr);
    HGDIOBJ old = SelectObject(dc, r.font);
    TEXTMETRICW tm{};
    GetTextMetricsW(dc, &tm);
    SIZE s{};
    const wchar_t sample[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    GetTextExtentPoint32W(dc, sample, 52, &s);
    SelectObject(dc, old);
    ReleaseDC(nullptr, dc);
    r.height = tm.tmHeight;
    r.baseX = (s.cx / 26 + 1) / 2;
    r.baseY = tm.tmHeight;
    return r;
  }();
  return m;
}

constexpr wchar_t kPageClass[] = L"TavonaDemoPage";

int EditHeight() { return FontHeight() + 8; }

}  // namespace

HFONT UiFont() { return Metrics().font; }
int FontHeight() { return Metrics().height; }
int DuX(int units) { return MulDiv(units, Metrics().baseX, 4); }
int DuY(int units) { return MulDiv(units, Metrics().baseY, 8); }

int TextWidth(const wchar_t *text) {
  HDC dc = GetDC(nullptr);
  HGDIOBJ old = SelectObject(dc, UiFont());
  SIZE s{};
  GetTextExtentPoint32W(dc, text, lstrlenW(text), &s);
  SelectObject(dc, old);
  ReleaseDC(nullptr, dc);
  return s.cx;
}

std::wstring TempPath(const wchar_t *name) {
  wchar_t dir[MAX_PATH] = L"";
  GetTempPathW(MAX_PATH, dir);
  return std::wstring(dir) + name;
}

std::wstring GetText(HWND control) {
  std::wstring s(GetWindowTextLengthW(control) + 1, L'\0');
  s.resize(GetWindowTextW(control, s.data(), static_cast<int>(s.size())));
  return s;
}

void SetText(HWND control, const std::wstring &text) {
  if (GetText(control) != text) SetWindowTextW(control, text.c_str());
}

// ---------------------------------------------------------------- Page

Page::Page(HWND parent) {
  static const ATOM registered = [] {
    WNDCLASSW wc{};
    wc.lpfnWndProc = Proc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    wc.lpszClassName = kPageClass;
    return RegisterClassW(&wc);
  }();
  (void)registered;
  // WS_EX_CONTROLPARENT lets the Tab key walk into the page's controls. No
  // WS_CLIPCHILDREN: group boxes do not paint their inside, the page does.
  hwnd_ = CreateWindowExW(WS_EX_CONTROLPARENT, kPageClass, L"", WS_CHILD | WS_CLIPSIBLINGS, 0, 0,
                          0, 0, parent, nullptr, GetModuleHandleW(nullptr), this);
}

HWND Page::Add(const wchar_t *cls, const wchar_t *text, DWORD style, int x, int y, int w, int h,
               int id, DWORD exStyle) {
  HWND c = CreateWindowExW(exStyle, cls, text, WS_CHILD | WS_VISIBLE | style, x, y, w, h, hwnd_,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                           GetModuleHandleW(nullptr), nullptr);
  SendMessageW(c, WM_SETFONT, reinterpret_cast<WPARAM>(UiFont()), FALSE);
  return c;
}

void Page::StretchRight(HWND control, int inset) { stretch_.push_back({control, inset}); }

void Page::SetPreferredSize(int width, int height) {
  SetWindowPos(hwnd_, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Page::OnSize(int width) {
  for (const Stretch &s : stretch_) {
    RECT r;
    GetWindowRect(s.control, &r);
    MapWindowPoints(nullptr, hwnd_, reinterpret_cast<POINT *>(&r), 2);
    int w = std::max<int>(width - s.inset - r.left, 1);
    SetWindowPos(s.control, nullptr, 0, 0, w, r.bottom - r.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
}

LRESULT CALLBACK Page::Proc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
  auto *page = reinterpret_cast<Page *>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  switch (msg) {
    case WM_NCCREATE:
      page = static_cast<Page *>(reinterpret_cast<CREATESTRUCTW *>(lp)->lpCreateParams);
      SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(page));
      break;
    case WM_COMMAND:
      if (page && lp) page->OnCommand(LOWORD(wp), HIWORD(wp));
      return 0;
    case WM_SIZE:
      if (page) page->OnSize(LOWORD(lp));
      return 0;
    case WM_NCDESTROY:
      SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
      delete page;
      break;
  }
  return DefWindowProcW(hwnd, msg, wp, lp);
}

// ---------------------------------------------------------------- Form

Form::Form(Page &page, std::initializer_list<const wchar_t *> labels)
    : page_(page), margin_(DuX(7)), left_(margin_), inset_(margin_), nextTop_(DuY(7)) {
  for (const wchar_t *l : labels) labelWidth_ = std::max(labelWidth_, TextWidth(l));
  labelWidth_ += 2;
}

void Form::BeginGroup(const wchar_t *title) {
  groupTop_ = nextTop_;
  group_ = page_.Add(L"BUTTON", title, BS_GROUPBOX, margin_, groupTop_, 10, 10);
  page_.StretchRight(group_, margin_);
  left_ = margin_ + DuX(7);
  inset_ = margin_ + DuX(7);
  right_ = std::max(right_, left_ + TextWidth(title) + DuX(4) + inset_);
  nextTop_ = groupTop_ + DuY(12);
}

void Form::EndGroup() {
  int bottom = rowBottom_ + DuY(7);
  SetWindowPos(group_, nullptr, 0, 0, 10, bottom - groupTop_,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  group_ = nullptr;
  left_ = margin_;
  inset_ = margin_;
  rowBottom_ = bottom;
  nextTop_ = bottom + DuY(5);
}

void Form::Row(const wchar_t *label) {
  rowTop_ = nextTop_;
  rowBottom_ = rowTop_ + EditHeight();
  nextTop_ = rowBottom_ + DuY(4);
  x_ = left_ + labelWidth_ + DuX(4);
  page_.Add(L"STATIC", label, SS_LEFT | SS_NOPREFIX, left_,
            rowTop_ + (EditHeight() - FontHeight()) / 2, labelWidth_, FontHeight());
}

HWND Form::Place(const wchar_t *cls, const wchar_t *text, DWORD style, DWORD exStyle, int id,
                 int width, int height, int top) {
  bool stretch = width == 0;
  if (stretch) width = DuX(200);
  HWND c = page_.Add(cls, text, style, x_, top, width, height, id, exStyle);
  if (stretch) page_.StretchRight(c, inset_);
  right_ = std::max(right_, x_ + width + inset_);
  x_ += width + DuX(4);
  rowBottom_ = std::max(rowBottom_, top + height);
  nextTop_ = std::max(nextTop_, rowBottom_ + DuY(4));
  return c;
}

HWND Form::Edit(int id, const wchar_t *text, int width, DWORD style) {
  return Place(L"EDIT", text, WS_TABSTOP | ES_AUTOHSCROLL | style, WS_EX_CLIENTEDGE, id, width,
               EditHeight(), rowTop_);
}

HWND Form::ReadOnly(int width) {
  return Place(L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL | ES_READONLY, WS_EX_CLIENTEDGE, 0,
               width, EditHeight(), rowTop_);
}

HWND Form::Check(int id, const wchar_t *text, bool checked) {
  int h = FontHeight() + 4;
  // Room for the box, the gap the control leaves before its text, and the
  // text: the box is drawn larger than SM_CXMENUCHECK on some systems.
  int w = GetSystemMetrics(SM_CXMENUCHECK) + DuX(6) + TextWidth(text);
  HWND c = Place(L"BUTTON", text, WS_TABSTOP | BS_AUTOCHECKBOX, 0, id, w, h,
                 rowTop_ + (EditHeight() - h) / 2);
  SendMessageW(c, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
  return c;
}

HWND Form::Button(int id, const wchar_t *text, DWORD style) {
  HWND b = Check(id, text, false);
  SetWindowLongPtrW(b, GWL_STYLE, (GetWindowLongPtrW(b, GWL_STYLE) & ~0xFL) | style);
  SendMessageW(b, BM_SETSTYLE, style, TRUE);
  return b;
}

HWND Form::Note(const wchar_t *text, int width) {
  if (width < 0) width = TextWidth(text) + 2;
  return Place(L"STATIC", text, SS_LEFT | SS_NOPREFIX, 0, 0, width, FontHeight(),
               rowTop_ + (EditHeight() - FontHeight()) / 2);
}

HWND Form::List(int id, int visibleRows, DWORD style) {
  int h = visibleRows * FontHeight() + 4;
  return Place(L"LISTBOX", L"", WS_TABSTOP | WS_VSCROLL | LBS_NOINTEGRALHEIGHT | style,
               WS_EX_CLIENTEDGE, id, 0, h, rowTop_);
}

void Form::Finish() { page_.SetPreferredSize(right_, rowBottom_ + DuY(7)); }

}  // namespace demo
