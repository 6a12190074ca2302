// Tab pages, the temporary and popup windows, window hooks and the edit
// hooks, edit steps and bitmaps from real BMP files.
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
    g_capturedReports.clear();
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
  HWND w = Tavona_DisplayTempWindExt(L"The settings were saved. They take effect the next time "
                                     L"the application starts.", 5, RGB(255, 255, 200));
  ASSERT_TRUE(w);
  EXPECT_EQ(GetFocus(), focus) << "the focus stays where it was";
  EXPECT_EQ(tvui::Capture(w).At(3, 3), Rgb(RGB(255, 255, 200)));
  tvui::SaveScreenshot(w, L"tempwind");
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
}

// ---- Status and popup windows ------------------------------------------------

TEST_F(SmallWindows, PopupOneAtATime) {
  HWND anchor = Child(L"BUTTON", 0, 20, 20, 60, 24);
  EXPECT_FALSE(Tavona_ShowPopup(anchor, L"  "));
  HWND first = Tavona_ShowPopup(anchor, L"Open a file");
  ASSERT_TRUE(first);
  EXPECT_NE(GetActiveWindow(), first);  // its place below the anchor: the bar's hover test
  EXPECT_EQ(tvui::Capture(first).At(2, 2), Rgb(GetSysColor(COLOR_INFOBK)));
  tvui::SaveScreenshot(first, L"popup");
  HWND second = Tavona_ShowPopup(anchor, L"Save the file under another name");
  EXPECT_FALSE(IsWindow(first)) << "one at a time";
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
  ASSERT_EQ(SendMessageW(tab, TCM_GETITEMCOUNT, 0, 0), 3);
  wchar_t text[50] = {};
  TCITEMW item = {TCIF_TEXT, 0, 0, text, 50, 0, 0};
  SendMessageW(tab, TCM_GETITEMW, 1, LPARAM(&item));
  EXPECT_STREQ(text, L"Name") << "the page's caption";
  Tavona_SetActiveTabControl(tab, 1);
  EXPECT_EQ(SendMessageW(tab, TCM_GETCURSEL, 0, 0), 1);
  EXPECT_TRUE(IsWindowVisible(name));
  EXPECT_FALSE(IsWindowVisible(mail));
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

// ---- Edit fields ----------------------------------------------------------------

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

// ---- Bitmaps --------------------------------------------------------------------

// The test bitmaps: a diagonal in red, green below it and blue above. 24-bit
// files hold the colours, 8-bit ones index a palette of the three.
const RGBQUAD kThree[] = {{0, 0, 255, 0}, {0, 255, 0, 0}, {255, 0, 0, 0}};
int Index(int x, int y) { return x == y ? 0 : (x < y ? 1 : 2); }
uint32_t Colour(int x, int y) {
  const RGBQUAD &q = kThree[Index(x, y)];
  return (q.rgbRed << 16) | (q.rgbGreen << 8) | q.rgbBlue;
}

// A bottom-up 7 × 5 BMP file of bitCount bits (24 or 8) with gap bytes
// before the bits.
std::vector<BYTE> MakeBmp(int bitCount, int gap) {
  const int width = 7, height = 5, stride = ((width * bitCount + 31) / 32) * 4;
  const DWORD colours = bitCount == 8 ? 3 : 0;
  BITMAPINFOHEADER ih = {sizeof ih, width, height, 1, WORD(bitCount), BI_RGB, 0, 0, 0, colours, 0};
  DWORD offset = DWORD(sizeof(BITMAPFILEHEADER) + sizeof ih + colours * sizeof(RGBQUAD) + gap);
  BITMAPFILEHEADER fh = {0x4D42, offset + DWORD(stride * height), 0, 0, offset};
  std::vector<BYTE> out(fh.bfSize);
  memcpy(out.data(), &fh, sizeof fh);
  memcpy(out.data() + sizeof fh, &ih, sizeof ih);
  memcpy(out.data() + sizeof fh + sizeof ih, kThree, colours * sizeof(RGBQUAD));
  for (int y = 0; y < height; ++y) {
    BYTE *row = out.data() + offset + size_t(height - 1 - y) * stride;
    for (int x = 0; x < width; ++x) {
      if (bitCount == 8) row[x] = BYTE(Index(x, y));
      else memcpy(row + x * 3, &kThree[Index(x, y)], 3);  // blue, green, red
    }
  }
  return out;
}

std::wstring WriteTemp(const std::wstring &name, const std::vector<BYTE> &data) {
  wchar_t dir[MAX_PATH];
  GetTempPathW(MAX_PATH, dir);
  std::wstring path = std::wstring(dir) + name;
  std::ofstream(std::filesystem::path(path), std::ios::binary)
      .write(reinterpret_cast<const char *>(data.data()), std::streamsize(data.size()));
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

// Damaged packed bitmaps are the fuzzer's; here the files around them, each
// read back through a DIB: the one conversion round trip.
TEST_F(SmallWindows, BitmapFilesAndConversions) {
  struct Row {
    const wchar_t *name;
    int bits, gap;
  } rows[] = {
      {L"tv_rgb24.bmp", 24, 0}, {L"tv_gap24.bmp", 24, 6},
      {L"tv_pal8.bmp", 8, 0},   {L"tv_gap8.bmp", 8, 2},
  };
  for (const Row &r : rows) {
    std::wstring path = WriteTemp(r.name, MakeBmp(r.bits, r.gap));
    HBITMAP bmp = Tavona_LoadBitmapFromFile(path.c_str());
    ASSERT_TRUE(bmp) << Narrow(r.name);
    for (int y = 0; y < 5; ++y)
      for (int x = 0; x < 7; ++x)
        EXPECT_EQ(ReadBack(bmp, x, y), Colour(x, y)) << Narrow(r.name) << " at " << x << "," << y;
    DeleteObject(bmp);
    DeleteFileW(path.c_str());
  }
  std::vector<BYTE> good = MakeBmp(24, 0);
  std::vector<BYTE> shortFile(good.begin(), good.end() - 5), notBmp = good;
  notBmp[0] = 'X';
  for (const auto &bad : {shortFile, notBmp, std::vector<BYTE>(10, 0)}) {
    std::wstring path = WriteTemp(L"tv_bad.bmp", bad);
    EXPECT_FALSE(Tavona_LoadBitmapFromFile(path.c_str())) << bad.size();
    DeleteFileW(path.c_str());
  }
  EXPECT_FALSE(Tavona_LoadBitmapFromFile(L"C:\\no\\such.bmp"));
}

}  // namespace
