// Tab pages, the temporary and popup windows, window hooks and the edit
// hooks, window placement, bitmaps from real BMP files and the picture
// conversion library.
#include <tavona/tavona32.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "controls/smallwnd.h"
#include "frame/globals.h"
#include "frame/wndclasses.h"
#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

constexpr UINT kPageName = 100, kPageMail = 101, kPageEdit = 200;

uint32_t Rgb(COLORREF c) { return (GetRValue(c) << 16) | (GetGValue(c) << 8) | GetBValue(c); }

// Dispatches messages for ms, or until the window is gone.
void Pump(int ms, HWND until) {
  auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
  MSG m;
  while (std::chrono::steady_clock::now() < end && IsWindow(until)) {
    while (PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&m);
    Sleep(5);
  }
}

std::vector<std::wstring> &g_reports = g_capturedReports;

class SmallWindows : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    tv::InitPortableGlobals();
    tv::InitSecondGlobals();
    tv::g.instance = GetModuleHandleW(nullptr);
    tv::g.resources = LoadLibraryExW((BinDir() + L"en\\tavona32Res.dll").c_str(), nullptr,
                                     LOAD_LIBRARY_AS_DATAFILE);
    tv::RegisterWindowClasses(tv::g.instance);
    INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_TAB_CLASSES};
    InitCommonControlsEx(&icc);
  }
  void SetUp() override {
    Tavona_SetErrorHandlerCallback(CaptureReports);
    g_reports.clear();
    top_ = CreateWindowW(L"TAVONA_STATUS_32", L"top", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10,
                         500, 400, nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(top_);
  }
  void TearDown() override {
    DestroyWindow(top_);
    Tavona_SetErrorHandlerCallback(nullptr);
  }
  HWND Child(const wchar_t *cls, DWORD style = 0, int x = 0, int y = 0, int w = 80, int h = 20,
             int id = 0) {
    return CreateWindowW(cls, L"", WS_CHILD | WS_VISIBLE | style, x, y, w, h, top_,
                         reinterpret_cast<HMENU>(INT_PTR(id)), nullptr, nullptr);
  }
  HWND top_ = nullptr;
};

// ---- Temporary window --------------------------------------------------------

TEST_F(SmallWindows, TempWindows) {
  HWND focus = Child(L"EDIT", WS_BORDER);
  SetFocus(focus);
  HWND w = Tavona_DisplayTempWindExt(L"Saved.", 5, RGB(255, 255, 200));
  ASSERT_TRUE(w);
  EXPECT_EQ(GetFocus(), focus) << "the focus stays where it was";
  RECT r;
  GetWindowRect(w, &r);
  HDC screen = GetDC(nullptr);
  EXPECT_EQ(r.right - r.left, 250);
  EXPECT_EQ(r.left, (GetDeviceCaps(screen, HORZRES) - 250) / 2);
  EXPECT_EQ(r.top, (GetDeviceCaps(screen, VERTRES) - (r.bottom - r.top)) / 2);
  ReleaseDC(nullptr, screen);
  EXPECT_EQ(tvui::Capture(w).At(3, 3), Rgb(RGB(255, 255, 200)));
  Pump(200, w);
  EXPECT_TRUE(IsWindow(w)) << "shown for tenths of a second";
  Pump(2000, w);
  EXPECT_FALSE(IsWindow(w));
  // No time or a negative one: 30 seconds. Black means no fill: the class's
  // light grey shows.
  for (INT time : {0, -3, 70}) {
    w = Tavona_DisplayTempWindExt(L"x", time, 0);
    EXPECT_EQ(reinterpret_cast<tv::TempWindRecord *>(GetWindowLongPtrW(w, 0))->displayTime,
              time > 0 ? time : 30000) << time;
    EXPECT_EQ(tvui::Capture(w).At(3, 3), 0xC0C0C0u);
    DestroyWindow(w);
  }
  EXPECT_FALSE(Tavona_DisplayTempWind(tv::g.resources, 9999, 5, 0)) << "missing string";
  struct { const wchar_t *name, *text; COLORREF background; } shots[] = {
      {L"tempwind_en", L"The settings were saved. They take effect the next time the "
                       L"application starts.", RGB(255, 255, 225)},
      {L"tempwind_de", L"Die Einstellungen wurden gespeichert. Sie gelten ab dem nächsten "
                       L"Start der Anwendung.", RGB(255, 255, 225)},
      {L"tempwind_nofill", L"Kurz", 0},
  };
  for (const auto &s : shots) {
    HWND t = Tavona_DisplayTempWindExt(s.text, 50, s.background);
    tvui::SaveScreenshot(t, s.name);
    DestroyWindow(t);
  }
}

// ---- Status and popup windows ------------------------------------------------

TEST_F(SmallWindows, PopupBelowItsAnchorOneAtATime) {
  HWND anchor = Child(L"BUTTON", 0, 20, 20, 60, 24);
  EXPECT_FALSE(Tavona_ShowPopup(anchor, L"  "));
  HWND first = Tavona_ShowPopup(anchor, L"Open a file");
  ASSERT_TRUE(first);
  EXPECT_NE(GetActiveWindow(), first);
  RECT a, p;
  GetWindowRect(anchor, &a);
  GetWindowRect(first, &p);
  EXPECT_EQ(p.left, a.left);
  EXPECT_GE(p.top, a.bottom);
  EXPECT_EQ(tvui::Capture(first).At(2, 2), Rgb(GetSysColor(COLOR_INFOBK)));
  tvui::SaveScreenshot(first, L"popup");
  HWND second = Tavona_ShowPopup(anchor, L"Save the file under another name");
  EXPECT_FALSE(IsWindow(first)) << "one at a time";
  RECT q;
  GetWindowRect(second, &q);
  EXPECT_GT(q.right - q.left, p.right - p.left) << "sized to its text";
  Tavona_DestroyPopup();
  EXPECT_FALSE(IsWindow(second));
  HWND third = Tavona_ShowPopup(anchor, L"Print");
  SendMessageW(third, WM_LBUTTONDOWN, 0, 0);
  EXPECT_FALSE(IsWindow(third)) << "a click closes it";
}

// ---- Tab control ---------------------------------------------------------------

struct PageState {
  bool needsFocus = false;
  int confirmed = 0;
};

INT_PTR CALLBACK PageProc(HWND dlg, UINT m, WPARAM wp, LPARAM lp) {
  if (m == WM_INITDIALOG) {
    SetWindowLongPtrW(dlg, DWLP_USER, lp);
    return TRUE;
  }
  auto *state = reinterpret_cast<PageState *>(GetWindowLongPtrW(dlg, DWLP_USER));
  if (m == WM_COMMAND && LOWORD(wp) == IDOK && state) {
    ++state->confirmed;
    if (state->needsFocus) SetFocus(GetDlgItem(dlg, kPageEdit));
    return TRUE;
  }
  return FALSE;
}

TEST_F(SmallWindows, TabPagesShownAndConfirmed) {
  HWND tab = Child(WC_TABCONTROLW, WS_CLIPSIBLINGS, 10, 10, 400, 300);
  HINSTANCE inst = GetModuleHandleW(nullptr);
  PageState states[3];
  EXPECT_EQ(Tavona_AddTabControlItem(tab, -1, inst, 999, PageProc, 0), -1);
  HWND name = Tavona_AddTabControlItemExt(tab, -1, inst, kPageName, PageProc, LPARAM(&states[0]));
  HWND mail = Tavona_AddTabControlItemExt(tab, -1, inst, kPageMail, PageProc, LPARAM(&states[1]));
  EXPECT_EQ(Tavona_AddTabControlItem(tab, 0, inst, kPageMail, PageProc, LPARAM(&states[2])), 0);
  ASSERT_TRUE(name && mail);
  EXPECT_EQ(GetParent(name), top_);
  ASSERT_EQ(SendMessageW(tab, TCM_GETITEMCOUNT, 0, 0), 3);
  wchar_t text[50] = {};
  TCITEMW item = {TCIF_TEXT, 0, 0, text, 50, 0, 0};
  SendMessageW(tab, TCM_GETITEMW, 1, LPARAM(&item));
  EXPECT_STREQ(text, L"Name") << "the page's caption";
  Tavona_SetActiveTabControl(tab, 1);
  EXPECT_EQ(SendMessageW(tab, TCM_GETCURSEL, 0, 0), 1);
  EXPECT_TRUE(IsWindowVisible(name));
  EXPECT_FALSE(IsWindowVisible(mail));
  SendMessageW(tab, TCM_SETCURSEL, 2, 0);
  Tavona_ShowTabControlItem(tab, -1);
  EXPECT_TRUE(IsWindowVisible(mail));
  EXPECT_FALSE(IsWindowVisible(name));
  tvui::SaveScreenshot(top_, L"tabs");

  // Nothing moves the focus: every page confirmed, the tab before is back.
  SetFocus(tab);
  SendMessageW(tab, TCM_SETCURSEL, 0, 0);
  EXPECT_EQ(Tavona_ConfirmAllTabControlItems(tab), nullptr);
  for (const PageState &s : states) EXPECT_EQ(s.confirmed, 1);
  EXPECT_EQ(SendMessageW(tab, TCM_GETCURSEL, 0, 0), 0);
  // The page of the second tab wants attention: stop there.
  states[0].needsFocus = true;
  SetFocus(tab);
  EXPECT_EQ(Tavona_ConfirmAllTabControlItems(tab), GetDlgItem(name, kPageEdit));
  EXPECT_EQ(SendMessageW(tab, TCM_GETCURSEL, 0, 0), 1);
  EXPECT_TRUE(IsWindowVisible(name));
  EXPECT_EQ(states[2].confirmed, 2);
  EXPECT_EQ(states[1].confirmed, 1) << "the third tab was not reached";
}

// ---- Hooks ----------------------------------------------------------------------

LRESULT CALLBACK Recording(HWND w, UINT m, WPARAM wp, LPARAM lp) {
  return Call_HookOriginalCallback(w, L"Rec", m, wp, lp);
}

// The progress tests count messages through these hooks; here the rules.
TEST_F(SmallWindows, WindowHookByProperty) {
  HWND w = Child(L"EDIT");
  WNDPROC original = WNDPROC(GetWindowLongPtrW(w, GWLP_WNDPROC));
  const LPARAM link = LPARAM(sizeof(LPARAM) > 4 ? 0x123456789ABCLL : 0x12345678);
  EXPECT_EQ(Hook_Window(w, Recording, L"", 0, nullptr), -1);
  ASSERT_EQ(Hook_Window(w, Recording, L"Rec", link, nullptr), 0);
  EXPECT_EQ(Hook_Window(w, Recording, L"Rec", 0, nullptr), -1) << "same name twice";
  EXPECT_EQ(Get_HookLink(w, L"Rec"), link);
  EXPECT_EQ(Call_HookOriginalCallback(w, L"Other", WM_GETTEXTLENGTH, 0, 0), 0);
  Unhook_Window(w, L"Rec");
  EXPECT_EQ(WNDPROC(GetWindowLongPtrW(w, GWLP_WNDPROC)), original);
  EXPECT_FALSE(GetPropW(w, L"Rec"));
}

bool CtrlDown() { return (GetKeyState(VK_CONTROL) & 0x8000) != 0; }

TEST_F(SmallWindows, EditHooksTurnEnterIntoCtrlEnter) {
  struct Row { bool tabToo; WPARAM key; bool swallowed; } rows[] = {{false, VK_RETURN, true}, {false, VK_TAB, false}, {false, 'A', false},
              {true, VK_RETURN, true},  {true, VK_TAB, true}};
  for (const Row &r : rows) {
    HWND e = Child(L"EDIT", ES_MULTILINE);
    WNDPROC original = WNDPROC(GetWindowLongPtrW(e, GWLP_WNDPROC));
    ASSERT_EQ(r.tabToo ? Hook_Edit_TabAndLf(e) : Hook_Edit_OnlyLf(e), 0);
    EXPECT_TRUE(GetPropW(e, r.tabToo ? L"TABANDLFHOOKPROPNAME" : L"ONLYLFHOOKPROPNAME"));
    BYTE keys[256] = {};
    SetKeyboardState(keys);
    SendMessageW(e, WM_KEYDOWN, r.key, 1);
    EXPECT_EQ(CtrlDown(), r.swallowed) << r.tabToo << " key " << r.key;
    SendMessageW(e, WM_KEYUP, r.key, 0xC0000001);
    EXPECT_FALSE(CtrlDown()) << r.tabToo << " key " << r.key;
    r.tabToo ? Unhook_Edit_TabAndLf(e) : Unhook_Edit_OnlyLf(e);
    EXPECT_EQ(WNDPROC(GetWindowLongPtrW(e, GWLP_WNDPROC)), original);
  }
  // Without a record the hook answers 0.
  EXPECT_EQ(Edit_OnlyLf_Hook(Child(L"EDIT"), WM_GETTEXTLENGTH, 0, 0), 0);
}

// ---- Placing windows ---------------------------------------------------------

TEST_F(SmallWindows, CenterAndFitWindows) {
  HWND child = Child(L"STATIC", 0, 0, 0, 100, 50);
  Tavona_CenterWindow(child);
  RECT pc, r;
  GetClientRect(top_, &pc);
  GetWindowRect(child, &r);
  MapWindowPoints(nullptr, top_, reinterpret_cast<POINT *>(&r), 2);
  EXPECT_EQ(r.left, (pc.right - 100) / 2);
  EXPECT_EQ(r.top, (pc.bottom - 50) / 2);
  EXPECT_EQ(r.right - r.left, 100);

  HWND big = CreateWindowW(L"TAVONA_STATUS_32", L"", WS_POPUP, -300, -200, 5000, 4000, nullptr,
                           nullptr, nullptr, nullptr);
  EXPECT_TRUE(Tavona_SizeWindowToScreen(big));
  RECT work, b;
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  GetWindowRect(big, &b);
  EXPECT_TRUE(EqualRect(&b, &work));
  SetWindowPos(big, nullptr, work.right - 50, work.top + 10, 200, 100, SWP_NOZORDER);
  Tavona_SizeWindowToScreen(big);
  GetWindowRect(big, &b);
  EXPECT_EQ(b.right, work.right) << "moved inside, size kept";
  EXPECT_EQ(b.right - b.left, 200);
  EXPECT_EQ(b.top, work.top + 10);
  DestroyWindow(big);
}

TEST_F(SmallWindows, ArrangeGroupClosesGaps) {
  const UINT ids[] = {301, 302, 303, 304};
  for (int i = 0; i < 4; ++i) Child(L"BUTTON", 0, 10 + i * 100, 200, 60 + i * 10, 20, ids[i]);
  ShowWindow(GetDlgItem(top_, 302), SW_HIDE);
  EXPECT_EQ(Tavona_ArrangeWindowGroup(top_, ids, 4, 5, 0), 3);
  auto pos = [&](UINT id) {
    RECT r;
    GetWindowRect(GetDlgItem(top_, id), &r);
    MapWindowPoints(nullptr, top_, reinterpret_cast<POINT *>(&r), 2);
    return r;
  };
  EXPECT_EQ(pos(301).left, 10);
  EXPECT_EQ(pos(303).left, 10 + 60 + 5);
  EXPECT_EQ(pos(304).left, 10 + 60 + 5 + 80 + 5);
  EXPECT_EQ(pos(304).top, 200);
  EXPECT_EQ(Tavona_ArrangeWindowGroup(top_, ids, 4, 2, TAVONA_ARRANGE_COLUMN), 3);
  EXPECT_EQ(pos(303).top, 200 + 20 + 2);
  EXPECT_EQ(pos(303).left, 10 + 60 + 5) << "the other coordinate is kept";
}

TEST_F(SmallWindows, EditSteps) {
  HWND e = Child(L"EDIT");
  struct Row { const wchar_t *text; bool inc; INT step, min, max, expected; } rows[] = {
      {L"10", true, 1, 0, 10, 10},      {L"7", false, 3, 0, 10, 4},
      {L"abc", true, 2, -5, 5, 2},      {L"-20", true, 1, -5, 5, -5},
      {L"2147483647", true, 1, INT_MIN, INT_MAX, INT_MAX},
      {L"5", false, INT_MIN, 0, 100, 100},
  };
  for (const Row &r : rows) {
    SetWindowTextW(e, r.text);
    INT v = r.inc ? Tavona_IncEditField(e, r.step, r.min, r.max)
                  : Tavona_DecEditField(e, r.step, r.min, r.max);
    EXPECT_EQ(v, r.expected) << Narrow(r.text) << (r.inc ? " +" : " -") << r.step;
    wchar_t text[20];
    GetWindowTextW(e, text, 20);
    EXPECT_EQ(_wtoi(text), r.expected);
  }
}

TEST_F(SmallWindows, MenuSeparatorsTidied) {
  auto layout = [](HMENU m) {
    std::wstring out;
    for (int i = 0; i < GetMenuItemCount(m); ++i) {
      wchar_t text[20] = {};
      out += GetMenuStringW(m, i, text, 20, MF_BYPOSITION) ? text : L"-";
    }
    return out;
  };
  // One item per character: '-' a separator, 'S' the submenu.
  auto build = [](HMENU m, const wchar_t *items, HMENU sub) {
    for (const wchar_t *i = items; *i; ++i) {
      wchar_t text[2] = {*i, 0};
      if (*i == '-') AppendMenuW(m, MF_SEPARATOR, 0, nullptr);
      else if (*i == 'S') AppendMenuW(m, MF_POPUP, UINT_PTR(sub), text);
      else AppendMenuW(m, MF_STRING, *i, text);
    }
    return m;
  };
  HMENU sub = build(CreatePopupMenu(), L"x-", nullptr);
  HMENU menu = build(CreatePopupMenu(), L"-A--S-B-", sub);
  EXPECT_EQ(Tavona_DeleteMenuSeparators(menu), 4);
  EXPECT_EQ(layout(menu), L"A-S-B");
  EXPECT_EQ(layout(sub), L"x");
  EXPECT_EQ(Tavona_DeleteMenuSeparators(menu), 0);
  DestroyMenu(menu);
}

// ---- Bitmaps --------------------------------------------------------------------

// A bottom-up BMP file of width × height with bitCount bits (24 or 8) and
// gap bytes before the bits; pixel(x, y) gives the colour or palette index.
std::vector<BYTE> MakeBmp(int width, int height, int bitCount,
                          const std::vector<RGBQUAD> &palette, uint32_t (*pixel)(int, int),
                          int gap = 0) {
  int stride = ((width * bitCount + 31) / 32) * 4;
  BITMAPINFOHEADER ih = {sizeof ih, width, height, 1, WORD(bitCount), BI_RGB, 0, 0, 0,
                         DWORD(palette.size()), 0};
  DWORD offset = DWORD(sizeof(BITMAPFILEHEADER) + sizeof ih + palette.size() * sizeof(RGBQUAD) + gap);
  BITMAPFILEHEADER fh = {0x4D42, offset + DWORD(stride * height), 0, 0, offset};
  std::vector<BYTE> out(fh.bfSize);
  memcpy(out.data(), &fh, sizeof fh);
  memcpy(out.data() + sizeof fh, &ih, sizeof ih);
  if (!palette.empty())
    memcpy(out.data() + sizeof fh + sizeof ih, palette.data(), palette.size() * sizeof(RGBQUAD));
  for (int y = 0; y < height; ++y) {
    BYTE *row = out.data() + offset + size_t(height - 1 - y) * stride;
    for (int x = 0; x < width; ++x) {
      uint32_t v = pixel(x, y);
      if (bitCount == 8) row[x] = BYTE(v);
      else row[x * 3] = BYTE(v), row[x * 3 + 1] = BYTE(v >> 8), row[x * 3 + 2] = BYTE(v >> 16);
    }
  }
  return out;
}

std::wstring WriteTemp(const std::wstring &name, const std::vector<BYTE> &data) {
  wchar_t dir[MAX_PATH];
  GetTempPathW(MAX_PATH, dir);
  std::wstring path = std::wstring(dir) + name;
  std::ofstream(std::filesystem::path(path), std::ios::binary).write(reinterpret_cast<const char *>(data.data()),
                                               std::streamsize(data.size()));
  return path;
}

// The colour at (x, y) of a bitmap read back as a 32-bit top-down DIB.
uint32_t ReadBack(HBITMAP bmp, int x, int y) {
  HGLOBAL dib = Tavona_DdbToDib(bmp, 32);
  if (!dib) return 0xFFFFFFFF;
  auto *info = static_cast<BITMAPINFOHEADER *>(GlobalLock(dib));
  const uint32_t *bits = reinterpret_cast<const uint32_t *>(info + 1);
  uint32_t v = bits[size_t(info->biHeight - 1 - y) * info->biWidth + x] & 0xFFFFFF;
  GlobalUnlock(dib);
  GlobalFree(dib);
  return v;
}

uint32_t Diagonal(int x, int y) { return x == y ? 0xFF0000u : (x < y ? 0x00FF00u : 0x0000FFu); }
uint32_t Stripes(int x, int) { return uint32_t(x % 3); }

// Damaged packed bitmaps are the fuzzer's; here the files around them, each
// read back through a DIB: the one conversion round trip.
TEST_F(SmallWindows, BitmapFilesAndConversions) {
  const std::vector<RGBQUAD> three = {{0, 0, 255, 0}, {0, 255, 0, 0}, {255, 0, 0, 0}};
  struct Row {
    const wchar_t *name;
    int width, height, bits, gap;
    uint32_t (*pixel)(int, int);
    const std::vector<RGBQUAD> *palette;
  } rows[] = {
      {L"tv_rgb24.bmp", 7, 5, 24, 0, Diagonal, nullptr},
      {L"tv_gap24.bmp", 7, 5, 24, 6, Diagonal, nullptr},
      {L"tv_pal8.bmp", 5, 3, 8, 0, Stripes, &three},
  };
  for (const Row &r : rows) {
    std::wstring path = WriteTemp(
        r.name, MakeBmp(r.width, r.height, r.bits, r.palette ? *r.palette : std::vector<RGBQUAD>{},
                        r.pixel, r.gap));
    HBITMAP bmp = Tavona_LoadBitmapFromFile(path.c_str());
    ASSERT_TRUE(bmp) << Narrow(r.name);
    for (int y = 0; y < r.height; ++y)
      for (int x = 0; x < r.width; ++x) {
        uint32_t want = r.pixel(x, y);
        if (r.palette) {
          const RGBQUAD &q = (*r.palette)[want];
          want = (q.rgbRed << 16) | (q.rgbGreen << 8) | q.rgbBlue;
        }
        EXPECT_EQ(ReadBack(bmp, x, y), want) << Narrow(r.name) << " at " << x << "," << y;
      }
    DeleteObject(bmp);
    DeleteFileW(path.c_str());
  }
  std::vector<BYTE> good = MakeBmp(4, 4, 24, {}, Diagonal);
  std::vector<BYTE> shortFile(good.begin(), good.end() - 5), notBmp = good;
  notBmp[0] = 'X';
  for (const auto &bad : {shortFile, notBmp, std::vector<BYTE>(10, 0)}) {
    std::wstring path = WriteTemp(L"tv_bad.bmp", bad);
    EXPECT_FALSE(Tavona_LoadBitmapFromFile(path.c_str())) << bad.size();
    DeleteFileW(path.c_str());
  }
  EXPECT_FALSE(Tavona_LoadBitmapFromFile(L"C:\\no\\such.bmp"));
}

// ---- Picture conversion library ----------------------------------------------

void Unload() {
  if (tv::g.pictureModule) FreeLibrary(tv::g.pictureModule);
  tv::g.pictureModule = nullptr;
  DeleteFileW((BinDir() + L"kv32.dll").c_str());
}

// One report holding the name and a piece of message id's own text.
void ExpectReport(UINT id, size_t from, const wchar_t *name) {
  wchar_t text[300];
  LoadStringW(tv::g.resources, id, text, 300);
  ASSERT_EQ(g_reports.size(), 1u) << id;
  EXPECT_TRUE(g_reports[0].find(name) != std::wstring::npos &&
              g_reports[0].find(std::wstring(text).substr(from, 8)) != std::wstring::npos)
      << "message " << id << ": " << Narrow(g_reports[0]);
  g_reports.clear();
}

TEST_F(SmallWindows, PictureInfoThroughTheConversionLibrary) {
  auto install = [](const wchar_t *variant) {
    Unload();
    if (variant) {
      ASSERT_TRUE(CopyFileW((BinDir() + variant + L"\\kv32.dll").c_str(),
                            (BinDir() + L"kv32.dll").c_str(), FALSE));
    }
  };
  wchar_t info[64] = L"?";
  install(nullptr);
  EXPECT_EQ(Tavona_PicConv_GetInfo(L"photo.jpg", info, sizeof info), -1);
  ExpectReport(IDS_ERR_PICTURE_LIBRARY, 4, L"kv32.dll");
  install(L"kv32_noentry");
  EXPECT_EQ(Tavona_PicConv_GetInfo(L"photo.jpg", info, sizeof info), -1);
  ExpectReport(IDS_ERR_PICTURE_INFO, 3, L"photo.jpg");
  install(L"kv32_full");
  EXPECT_EQ(Tavona_PicConv_GetInfo(L"photo.jpg", info, sizeof info), 7);
  EXPECT_STREQ(info, L"kv32:photo.jpg");
  EXPECT_EQ(Tavona_PicConv_GetInfo(L"b.png", info, 12), 7) << "kept loaded";
  EXPECT_STREQ(info, L"kv32:");
  EXPECT_TRUE(g_reports.empty());
  EXPECT_EQ(Tavona_PicConv_GetInfo(L" ", info, sizeof info), -1);
  Unload();
}

}  // namespace
