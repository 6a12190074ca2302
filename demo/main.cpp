// The demo program of tavona32: the library's version, the resource library
// it chose, and a tab page per capability.
//
//   tavona_demo [--page N] [--screenshot FILE]
//
// --page N selects the Nth tab (from 1). --screenshot FILE shows the window,
// writes a PNG of it to FILE and exits (0 when written).
#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>
#include <tavona/tavona32.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "pages.h"
#include "png.h"
#include "ui.h"

namespace {

constexpr wchar_t kMainClass[] = L"TavonaDemoMain";
constexpr UINT kCaptionId = 1500;  // caption of the library's message boxes
constexpr int kTabId = 10;
constexpr UINT_PTR kScreenshotTimer = 1;
constexpr UINT kPaintDelayMs = 500;
#ifndef PW_RENDERFULLCONTENT
#define PW_RENDERFULLCONTENT 2  // Windows 8.1 and later
#endif

enum Info { kVersion, kResourcePath, kLanguage, kCaption, kInfoCount };
constexpr const wchar_t *kInfoLabels[kInfoCount] = {
    L"Library version:", L"Resource library:", L"Language folder:", L"Caption 1500:"};

struct App {
  HWND main = nullptr;
  HWND tab = nullptr;
  HWND labels[kInfoCount] = {};
  HWND values[kInfoCount] = {};
  std::vector<HWND> pages;
  int current = -1;
  SIZE minWindow = {};
  std::wstring screenshot;
  int exitCode = 0;
};
App app;

int InfoLabelWidth() {
  int w = 0;
  for (const wchar_t *l : kInfoLabels) w = std::max(w, demo::TextWidth(l));
  return w + 2;
}

int InfoRowPitch() { return demo::FontHeight() + demo::DuY(3); }

// Top of the tab control in client coordinates.
int TabTop() { return demo::DuY(7) + kInfoCount * InfoRowPitch() + demo::DuY(4); }

std::wstring ModulePath(HMODULE module) {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    DWORD n = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
    if (n == 0) return L"";
    if (n < path.size()) {
      path.resize(n);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

void FillInfo() {
  wchar_t version[64] = L"";
  Tavona_GetVersion(version, 64);
  SetWindowTextW(app.values[kVersion], version[0] ? version : L"(no version resource)");

  HMODULE res = Tavona_GetResourceModule();
  std::wstring path = res ? ModulePath(res) : L"";
  std::wstring language = L"(none)";
  size_t slash = path.find_last_of(L"\\/");
  if (slash != std::wstring::npos && slash > 0) {
    size_t start = path.find_last_of(L"\\/", slash - 1);
    language = path.substr(start == std::wstring::npos ? 0 : start + 1,
                           slash - (start == std::wstring::npos ? 0 : start + 1));
  }
  SetWindowTextW(app.values[kResourcePath], res ? path.c_str() : L"none was found");
  SetWindowTextW(app.values[kLanguage], language.c_str());

  wchar_t caption[256] = L"";
  if (!res || !LoadStringW(res, kCaptionId, caption, 256)) lstrcpyW(caption, L"(not found)");
  SetWindowTextW(app.values[kCaption], caption);
}

void ShowPage(int index) {
  if (index < 0 || index >= static_cast<int>(app.pages.size()) || index == app.current) return;
  if (app.current >= 0) ShowWindow(app.pages[app.current], SW_HIDE);
  app.current = index;
  TabCtrl_SetCurSel(app.tab, index);
  SetWindowPos(app.pages[index], HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
}

void Layout(int width, int height) {
  int mx = demo::DuX(7), y = demo::DuY(7);
  int labelWidth = InfoLabelWidth();
  int valueX = mx + labelWidth + demo::DuX(4);
  for (int i = 0; i < kInfoCount; ++i) {
    MoveWindow(app.labels[i], mx, y, labelWidth, demo::FontHeight(), TRUE);
    MoveWindow(app.values[i], valueX, y, std::max(width - mx - valueX, 1), demo::FontHeight(),
               TRUE);
    y += InfoRowPitch();
  }
  RECT r = {mx, TabTop(), std::max(width - mx, mx + 1),
            std::max(height - demo::DuY(7), TabTop() + 1)};
  MoveWindow(app.tab, r.left, r.top, r.right - r.left, r.bottom - r.top, TRUE);
  TabCtrl_AdjustRect(app.tab, FALSE, &r);
  for (HWND page : app.pages)
    MoveWindow(page, r.left, r.top, r.right - r.left, r.bottom - r.top, TRUE);
}

HWND AddChild(HWND parent, const wchar_t *cls, const wchar_t *text, DWORD style, int id = 0) {
  HWND c = CreateWindowExW(0, cls, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                           GetModuleHandleW(nullptr), nullptr);
  SendMessageW(c, WM_SETFONT, reinterpret_cast<WPARAM>(demo::UiFont()), FALSE);
  return c;
}

// Builds the children and returns the smallest client size that shows every
// page whole.
SIZE CreateChildren(HWND hwnd) {
  for (int i = 0; i < kInfoCount; ++i) {
    app.labels[i] = AddChild(hwnd, L"STATIC", kInfoLabels[i], SS_LEFT | SS_NOPREFIX);
    // A long path loses its middle rather than its file name.
    DWORD ellipsis = i == kResourcePath ? SS_PATHELLIPSIS : SS_ENDELLIPSIS;
    app.values[i] = AddChild(hwnd, L"STATIC", L"", SS_LEFT | SS_NOPREFIX | ellipsis);
  }
  FillInfo();

  app.tab = AddChild(hwnd, WC_TABCONTROLW, L"", WS_CLIPSIBLINGS | WS_TABSTOP, kTabId);
  size_t count = 0;
  const DemoPage *pages = DemoPages(&count);
  SIZE need = {0, 0};
  for (size_t i = 0; i < count; ++i) {
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = const_cast<wchar_t *>(pages[i].title);
    TabCtrl_InsertItem(app.tab, static_cast<int>(i), &item);
    HWND page = pages[i].create(hwnd);
    RECT r{};
    GetWindowRect(page, &r);
    need.cx = std::max(need.cx, r.right - r.left);
    need.cy = std::max(need.cy, r.bottom - r.top);
    app.pages.push_back(page);
  }

  RECT tab = {0, 0, need.cx, need.cy};
  TabCtrl_AdjustRect(app.tab, TRUE, &tab);
  int mx = demo::DuX(7);
  int infoWidth = mx + InfoLabelWidth() + demo::DuX(4) + demo::DuX(160) + mx;
  return {std::max<LONG>(tab.right - tab.left + 2 * mx, infoWidth),
          TabTop() + (tab.bottom - tab.top) + demo::DuY(7)};
}

// Under wine the window DC reads back what the window painted, frame and
// children included. On Windows the compositor draws the frame, which only
// PrintWindow with full content captures.
bool RunningOnWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

bool WriteScreenshot(HWND hwnd, const std::wstring &file) {
  RECT r;
  GetWindowRect(hwnd, &r);
  int w = r.right - r.left, h = r.bottom - r.top;
  BITMAPINFO bi{};
  bi.bmiHeader.biSize = sizeof bi.bmiHeader;
  bi.bmiHeader.biWidth = w;
  bi.bmiHeader.biHeight = -h;  // top-down rows, as the PNG writer expects
  bi.bmiHeader.biPlanes = 1;
  bi.bmiHeader.biBitCount = 32;
  bi.bmiHeader.biCompression = BI_RGB;
  void *bits = nullptr;
  HDC screen = GetDC(nullptr);
  HBITMAP bitmap = CreateDIBSection(screen, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
  HDC mem = CreateCompatibleDC(screen);
  ReleaseDC(nullptr, screen);
  if (!bitmap || !mem) {
    if (bitmap) DeleteObject(bitmap);
    if (mem) DeleteDC(mem);
    return false;
  }
  HGDIOBJ old = SelectObject(mem, bitmap);
  bool captured = !RunningOnWine() && PrintWindow(hwnd, mem, PW_RENDERFULLCONTENT);
  if (!captured) {
    HDC window = GetWindowDC(hwnd);
    captured = BitBlt(mem, 0, 0, w, h, window, 0, 0, SRCCOPY);
    ReleaseDC(hwnd, window);
  }
  GdiFlush();
  // 32-bit DIB pixels are 0xAARRGGBB words, which is the writer's layout.
  bool ok = captured && tvpng::WriteFile(file, w, h, static_cast<const uint32_t *>(bits));
  SelectObject(mem, old);
  DeleteDC(mem);
  DeleteObject(bitmap);
  return ok;
}

LRESULT CALLBACK MainProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_CREATE: {
      SIZE client = CreateChildren(hwnd);
      RECT r = {0, 0, client.cx, client.cy};
      AdjustWindowRectEx(&r, GetWindowLongW(hwnd, GWL_STYLE), FALSE,
                         GetWindowLongW(hwnd, GWL_EXSTYLE));
      app.minWindow = {r.right - r.left, r.bottom - r.top};
      SetWindowPos(hwnd, nullptr, 0, 0, app.minWindow.cx, app.minWindow.cy,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
      return 0;
    }
    case WM_GETMINMAXINFO:
      if (app.minWindow.cx > 0) {
        auto *mmi = reinterpret_cast<MINMAXINFO *>(lp);
        mmi->ptMinTrackSize = {app.minWindow.cx, app.minWindow.cy};
      }
      return 0;
    case WM_SIZE:
      if (app.tab) Layout(LOWORD(lp), HIWORD(lp));
      return 0;
    case WM_NOTIFY: {
      auto *hdr = reinterpret_cast<NMHDR *>(lp);
      if (hdr->idFrom == kTabId && hdr->code == TCN_SELCHANGE) ShowPage(TabCtrl_GetCurSel(app.tab));
      return 0;
    }
    case WM_TIMER:
      if (wp == kScreenshotTimer) {
        KillTimer(hwnd, kScreenshotTimer);
        RedrawWindow(hwnd, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
        app.exitCode = WriteScreenshot(hwnd, app.screenshot) ? 0 : 1;
        DestroyWindow(hwnd);
      }
      return 0;
    case WM_DESTROY:
      PostQuitMessage(app.exitCode);
      return 0;
  }
  return DefWindowProcW(hwnd, msg, wp, lp);
}

// A screenshot run has nobody to close a message box: it reports on the
// standard error instead (wine passes it through).
int Usage(const std::wstring &problem, bool quiet) {
  std::wstring text = problem +
                      L"\n\nUsage: tavona_demo [--page N] [--screenshot FILE]\n"
                      L"  --page N           select the Nth tab (from 1)\n"
                      L"  --screenshot FILE  write a PNG of the window to FILE and exit";
  if (quiet)
    fwprintf(stderr, L"%ls\n", text.c_str());
  else
    MessageBoxW(nullptr, text.c_str(), L"tavona32 demo", MB_ICONWARNING);
  return 2;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int show) {
  int argc = 0;
  wchar_t **argv = CommandLineToArgvW(GetCommandLineW(), &argc);
  std::vector<std::wstring> args(argv + 1, argv + argc);
  LocalFree(argv);
  for (size_t i = 0; i + 1 < args.size(); ++i)
    if (args[i] == L"--screenshot") app.screenshot = args[i + 1];
  bool quiet = !app.screenshot.empty();

  size_t pageCount = 0;
  DemoPages(&pageCount);
  int page = 1;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::wstring &arg = args[i];
    if (arg == L"--screenshot" && i + 1 < args.size()) {
      ++i;
    } else if (arg == L"--page" && i + 1 < args.size()) {
      page = _wtoi(args[++i].c_str());
      if (page < 1 || page > static_cast<int>(pageCount))
        return Usage(L"There is no page " + args[i] + L".", quiet);
    } else {
      return Usage(L"Unknown argument: " + arg, quiet);
    }
  }

  SetProcessDPIAware();
  INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_TAB_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&icc);

  WNDCLASSW wc{};
  wc.lpfnWndProc = MainProc;
  wc.hInstance = instance;
  wc.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
  wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  wc.lpszClassName = kMainClass;
  RegisterClassW(&wc);

  // WS_EX_CONTROLPARENT: Tab moves through the controls of the pages.
  app.main = CreateWindowExW(WS_EX_CONTROLPARENT, kMainClass, L"tavona32 demo",
                             WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT, CW_USEDEFAULT,
                             CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance, nullptr);
  if (!app.main) return 1;
  ShowPage(page - 1);
  ShowWindow(app.main, app.screenshot.empty() ? show : SW_SHOWNORMAL);
  UpdateWindow(app.main);
  if (!app.screenshot.empty()) SetTimer(app.main, kScreenshotTimer, kPaintDelayMs, nullptr);

  MSG msg;
  while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
    if (IsDialogMessageW(app.main, &msg)) continue;
    TranslateMessage(&msg);
    DispatchMessageW(&msg);
  }
  return static_cast<int>(msg.wParam);
}
