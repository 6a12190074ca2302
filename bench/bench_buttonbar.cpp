// The button bar with 500 buttons: laying out and painting against a plain
// loop that computes the same rectangles and fills each with FillRect; and
// a drag across all of them, which must cost in proportion to the buttons
// passed (dragging across 1,000 against twice across 500).
#include <tavona/controls.h>

#include <cstdio>

#include "bench.h"
#include "frame/globals.h"
#include "frame/wndclasses.h"

namespace {

constexpr int kWidth = 1000, kHeight = 700, kButtonW = 40, kButtonH = 24;

HWND MakeBar(HWND top, int buttons, int edgeMode, int y = 0, int height = kHeight, int w = kButtonW,
             int h = kButtonH) {
  HWND bar = WButtWind_CreateWindow(top, top, WM_APP);
  MoveWindow(bar, 0, y, kWidth, height, FALSE);
  WButtWind_SetLongProperty(bar, WBAR_WRAP, 1);
  WButtWind_SetLongProperty(bar, WBAR_EDGE_MODE, edgeMode);
  for (int i = 0; i < buttons; ++i)
    WButtWind_CreateNewButton(bar, WBUTTON_KIND_PICTURE, nullptr, nullptr, i + 1, h, w, 0,
                              nullptr);
  WButtWind_Arrange(bar);
  return bar;
}

// The reference: the same wrapped rows, one FillRect per button.
void PlainLayoutAndPaint(HDC dc, HBRUSH back, HBRUSH face, int buttons) {
  RECT all = {0, 0, kWidth, kHeight};
  FillRect(dc, &all, back);
  int x = 4, y = 4;
  for (int i = 0; i < buttons; ++i) {
    if (x != 4 && x + kButtonW >= kWidth - 4) {
      x = 4;
      y += kButtonH + 4;
    }
    RECT r = {x, y, x + kButtonW, y + kButtonH};
    FillRect(dc, &r, face);
    x += kButtonW;
  }
}

// Small buttons for the drags, so that 1,000 fit into half the window.
constexpr int kDragW = 20, kDragH = 12;

void Drag(HWND bar, int across) {
  auto at = [](int i) {
    int perRow = (kWidth - 8) / kDragW;
    return MAKELPARAM(4 + (i % perRow) * kDragW + kDragW / 2,
                      4 + (i / perRow) * (kDragH + 4) + kDragH / 2);
  };
  SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, at(0));
  for (int i = 1; i < across; ++i) {
    SendMessageW(bar, WM_MOUSEMOVE, MK_LBUTTON, at(i));
    UpdateWindow(bar);
  }
  SendMessageW(bar, WM_LBUTTONUP, 0, at(across - 1));
  UpdateWindow(bar);
}

}  // namespace

int main() {
  tv::InitPortableGlobals();
  tv::InitSecondGlobals();
  tv::g.instance = GetModuleHandleW(nullptr);
  tv::RegisterWindowClasses(tv::g.instance);
  HWND top = CreateWindowW(L"TAVONA_STATUS_32", L"bench", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                           kWidth + 40, kHeight + 60, nullptr, nullptr, nullptr, nullptr);
  HBRUSH back = CreateSolidBrush(RGB(192, 192, 192)), face = CreateSolidBrush(RGB(200, 200, 200));
  for (int edgeMode : {2, 1}) {
    HWND bar = MakeBar(top, 500, edgeMode);
    HDC dc = GetDC(bar);
    RECT client = {0, 0, kWidth, kHeight};
    char name[120];
    std::snprintf(name, sizeof name, "layout and paint, 500 buttons, edge mode %d%s", edgeMode,
                  edgeMode == 2 ? " (edges on every button)" : "");
    bench::Compare(
        name,
        [&] {
          WButtWind_Arrange(bar);
          WButtWind_PaintToHdc(bar, dc, &client, 0, 0);
          GdiFlush();
        },
        [&] {
          PlainLayoutAndPaint(dc, back, face, 500);
          GdiFlush();
        },
        edgeMode == 1 ? 3.0 : 0);
    ReleaseDC(bar, dc);
    DestroyWindow(bar);
  }
  HWND small = MakeBar(top, 500, 2, 0, kHeight / 2, kDragW, kDragH);
  HWND large = MakeBar(top, 1000, 2, kHeight / 2, kHeight / 2, kDragW, kDragH);
  bench::Compare("drag across 1,000 buttons against twice across 500 (1.0 = linear)",
                 [&] { Drag(large, 1000); },
                 [&] {
                   Drag(small, 500);
                   Drag(small, 500);
                 },
                 2.0);
  DeleteObject(back);
  DeleteObject(face);
  DestroyWindow(top);
  return bench::ExitCode();
}
