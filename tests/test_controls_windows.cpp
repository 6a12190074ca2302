// Tab pages, the edit hooks, bitmaps from real BMP files and picture info
// through the conversion library's stand-ins (the popup window: the button
// bar's hover test).
#include <tavona/tavona32.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "frame/globals.h"
#include "frame/wndclasses.h"
#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

constexpr UINT kPageName = 100, kPageMail = 101, kPageEdit = 200;

class SmallWindows : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    tv::InitPortableGlobals();
    tv::InitSecondGlobals();
    tv::g.instance = GetModuleHandleW(nullptr);
    tv::g.resources = LanguageResources(L"en");
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
  HWND Child(const wchar_t *cls, DWORD style = 0, int w = 80, int h = 20) {
    return CreateWindowW(cls, L"", WS_CHILD | WS_VISIBLE | style, 10, 10, w, h, top_, nullptr,
                         nullptr, nullptr);
  }
  HWND top_ = nullptr;
};

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
  HWND tab = Child(WC_TABCONTROLW, WS_CLIPSIBLINGS, 400, 300);
  HINSTANCE inst = GetModuleHandleW(nullptr);
  PageState states[3];
  EXPECT_EQ(Tavona_AddTabControlItem(tab, -1, inst, 999, PageProc, 0), -1) << "no such page";
  HWND name = Tavona_AddTabControlItemExt(tab, -1, inst, kPageName, PageProc, LPARAM(&states[0]));
  HWND mail = Tavona_AddTabControlItemExt(tab, -1, inst, kPageMail, PageProc, LPARAM(&states[1]));
  EXPECT_EQ(Tavona_AddTabControlItem(tab, 0, inst, kPageMail, PageProc, LPARAM(&states[2])), 0);
  ASSERT_TRUE(name && mail);
  ASSERT_EQ(SendMessageW(tab, TCM_GETITEMCOUNT, 0, 0), 3);  // named by the pages' captions
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

bool CtrlDown() { return (GetKeyState(VK_CONTROL) & 0x8000) != 0; }

// Through Hook_Window, which the progress tests also count messages with.
TEST_F(SmallWindows, EditHooksTurnEnterIntoCtrlEnter) {
  struct Row { bool tabToo; WPARAM key; bool swallowed; } rows[] = {{false, VK_RETURN, true}, {false, VK_TAB, false}, {false, 'A', false},
              {true, VK_RETURN, true},  {true, VK_TAB, true}};
  for (const Row &r : rows) {
    HWND e = Child(L"EDIT", ES_MULTILINE);
    WNDPROC original = WNDPROC(GetWindowLongPtrW(e, GWLP_WNDPROC));
    ASSERT_EQ(r.tabToo ? Hook_Edit_TabAndLf(e) : Hook_Edit_OnlyLf(e), 0);
    EXPECT_EQ(r.tabToo ? Hook_Edit_TabAndLf(e) : Hook_Edit_OnlyLf(e), -1) << "hooked twice";
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
  std::filesystem::path path = std::filesystem::temp_directory_path() / name;
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char *>(data.data()), std::streamsize(data.size()));
  return path.wstring();
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

// The conversion library is loaded once and kept: missing, without its
// entry (both reported with their own message) and the stand-in that
// answers "kv32:" and the name, cut to the buffer's bytes.
TEST_F(SmallWindows, PictureInfoThroughTheConversionLibrary) {
  auto install = [](const wchar_t *variant) {
    if (tv::g.pictureModule) FreeLibrary(tv::g.pictureModule);
    tv::g.pictureModule = nullptr;
    DeleteFileW((BinDir() + L"kv32.dll").c_str());
    if (variant) {
      ASSERT_TRUE(CopyFileW((BinDir() + variant + L"\\kv32.dll").c_str(),
                            (BinDir() + L"kv32.dll").c_str(), FALSE));
    }
  };
  struct Row { const wchar_t *variant, *file; int size, rc; UINT report; const wchar_t *info; };
  const Row rows[] = {{nullptr, L"photo.jpg", 128, -1, IDS_ERR_PICTURE_LIBRARY, nullptr},
                      {L"kv32_noentry", L"photo.jpg", 128, -1, IDS_ERR_PICTURE_INFO, nullptr},
                      {L"kv32_full", L"photo.jpg", 128, 7, 0, L"kv32:photo.jpg"},
                      {nullptr, L"b.png", 12, 7, 0, L"kv32:"},  // kept loaded
                      {nullptr, L" ", 128, -1, 0, nullptr}};
  for (const Row &r : rows) {
    if (r.variant || r.report == IDS_ERR_PICTURE_LIBRARY) install(r.variant);
    wchar_t info[64] = L"?";
    g_capturedReports.clear();
    EXPECT_EQ(Tavona_PicConv_GetInfo(r.file, info, r.size), r.rc) << Narrow(r.file);
    if (r.info) {
      EXPECT_STREQ(info, r.info);
    }
    wchar_t text[300] = {};
    if (r.report) LoadStringW(tv::g.resources, r.report, text, 300);
    EXPECT_EQ(g_capturedReports.size(), r.report ? 1u : 0u) << Narrow(r.file);
    if (r.report && !g_capturedReports.empty()) {
      EXPECT_NE(g_capturedReports[0].find(std::wstring(text).substr(7, 14)), std::wstring::npos)
          << Narrow(g_capturedReports[0]);
    }
  }
  install(nullptr);
}

}  // namespace
