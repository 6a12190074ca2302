#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>
#include <tuple>

#include "png.h"
#include "uidriver.h"

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

double Seconds(Clock::time_point since) {
  return std::chrono::duration<double>(Clock::now() - since).count();
}

uint32_t SlowAdler32(const std::vector<uint8_t> &data) {
  uint32_t a = 1, b = 0;
  for (uint8_t v : data) a = (a + v) % 65521, b = (b + a) % 65521;
  return b << 16 | a;
}

TEST(Png, ChecksumsMatchKnownValues) {
  const std::string digits = "123456789", wiki = "Wikipedia";
  EXPECT_EQ(tvpng::Crc32(reinterpret_cast<const uint8_t *>(digits.data()), digits.size()),
            0xCBF43926u);
  EXPECT_EQ(tvpng::Adler32(reinterpret_cast<const uint8_t *>(wiki.data()), wiki.size()),
            0x11E60398u);
  std::vector<uint8_t> ff(100000, 0xFF);  // overflows a sum that is reduced too late
  EXPECT_EQ(tvpng::Adler32(ff.data(), ff.size()), SlowAdler32(ff));
}

// Reads a PNG of stored deflate blocks and unfiltered RGB rows, checking
// what a strict reader checks; false on any error.
bool DecodeStoredPng(const std::vector<uint8_t> &f, tvui::Image &out) {
  auto be32 = [](const uint8_t *p) { return uint32_t(p[0]) << 24 | p[1] << 16 | p[2] << 8 | p[3]; };
  const uint8_t sig[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  if (f.size() < 8 || !std::equal(sig, sig + 8, f.begin())) return false;
  std::vector<uint8_t> z, raw;
  for (size_t p = 8, len = 0;; p += 12 + len) {
    if (p + 12 > f.size() || p + 12 + (len = be32(&f[p])) > f.size()) return false;
    if (tvpng::Crc32(&f[p + 4], len + 4) != be32(&f[p + 8 + len])) return false;
    std::string type(f.begin() + long(p + 4), f.begin() + long(p + 8));
    const uint8_t *d = &f[p + 8];
    if (type == "IHDR" && (len != 13 || d[8] != 8 || d[9] != 2 || d[10] || d[11] || d[12]))
      return false;
    if (type == "IHDR") out.width = int(be32(d)), out.height = int(be32(d + 4));
    if (type == "IDAT") z.insert(z.end(), d, d + len);
    if (type == "IEND") break;
  }
  if (z.size() < 6 || (z[0] << 8 | z[1]) % 31 || (z[0] & 0x0F) != 8) return false;
  size_t p = 2;
  for (bool last = false; !last;) {
    if (p + 5 > z.size() || (z[p] & 6)) return false;  // stored blocks only
    last = z[p] & 1;
    unsigned len = z[p + 1] | z[p + 2] << 8, nlen = z[p + 3] | z[p + 4] << 8;
    if ((len ^ 0xFFFF) != nlen || p + 5 + len > z.size()) return false;
    raw.insert(raw.end(), z.begin() + long(p + 5), z.begin() + long(p + 5 + len));
    p += 5 + len;
  }
  if (p + 4 != z.size() || be32(&z[p]) != SlowAdler32(raw)) return false;
  size_t stride = size_t(out.width) * 3 + 1;
  if (raw.size() != stride * size_t(out.height)) return false;
  out.pixels.clear();
  for (size_t r = 0; r < raw.size(); r += stride) {
    if (raw[r] != 0) return false;
    for (size_t i = r + 1; i < r + stride; i += 3)
      out.pixels.push_back(uint32_t(raw[i]) << 16 | raw[i + 1] << 8 | raw[i + 2]);
  }
  return true;
}

TEST(UiDriver, ReadsAndAnswersMessageBoxes) {
  struct Case {
    UINT style;
    UINT icon;
    std::vector<int> buttons;
    int answer;
  } cases[] = {
      {MB_ICONHAND | MB_OK, MB_ICONHAND, {IDOK}, IDOK},
      {MB_ICONQUESTION | MB_YESNOCANCEL, MB_ICONQUESTION, {IDYES, IDNO, IDCANCEL}, IDNO},
      {MB_ICONEXCLAMATION | MB_ABORTRETRYIGNORE, MB_ICONEXCLAMATION,
       {IDABORT, IDRETRY, IDIGNORE}, IDIGNORE},
      {MB_ICONASTERISK | MB_RETRYCANCEL, MB_ICONASTERISK, {IDRETRY, IDCANCEL}, IDRETRY},
      {MB_CANCELTRYCONTINUE, 0, {IDCANCEL, IDTRYAGAIN, IDCONTINUE}, IDCONTINUE},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(testing::Message() << "style 0x" << std::hex << c.style);
    tvui::Script script = [&](tvui::Session &s) {
      tvui::Box box = s.WaitMessageBox(L"Driver \u00c4 Box");
      EXPECT_EQ(box.caption, L"Driver \u00c4 Box");
      EXPECT_EQ(box.text, L"First line\nC:\\en\\tavona32Res.dll");
      EXPECT_EQ(box.icon, c.icon);
      EXPECT_EQ(box.buttons, c.buttons);
      s.Answer(box, c.answer);
    };
    auto start = Clock::now();
    int r = tvui::RunModal(
        [&] { return MessageBoxW(nullptr, L"First line\nC:\\en\\tavona32Res.dll",
                                 L"Driver \u00c4 Box", c.style); },
        script);
    EXPECT_EQ(r, c.answer);
    // Without HKCU\Software\Wine\X11 Driver\Managed=N, Wine waits 2 s for a
    // window manager at every hide.
    EXPECT_LT(Seconds(start), 1.5) << "slow close: is Managed=N set in the prefix?";
  }
}

// ---------------------------------------------------------------- dialog

enum { kEdit = 101, kCheck = 102, kList = 103, kCombo = 104 };

struct DlgItem {
  WORD atom;  // predefined class: 0x80 button, 0x81 edit, 0x83 list box, 0x85 combo box
  int id;
  DWORD style;
  const wchar_t *text;
  short x, y, cx, cy;
};

// DLGTEMPLATE followed by DWORD-aligned DLGITEMTEMPLATEs.
std::vector<WORD> BuildTemplate(const wchar_t *caption, std::initializer_list<DlgItem> items) {
  std::vector<WORD> w;
  auto dword = [&](DWORD v) { w.insert(w.end(), {WORD(v), WORD(v >> 16)}); };
  auto str = [&](const wchar_t *s) { w.insert(w.end(), s, s + wcslen(s) + 1); };
  dword(DS_MODALFRAME | DS_SETFONT | WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE);
  dword(0);
  w.insert(w.end(), {WORD(items.size()), 40, 40, 200, 130, 0, 0});  // no menu, default class
  str(caption);
  w.push_back(8);
  str(L"MS Shell Dlg");
  for (const DlgItem &i : items) {
    if (w.size() % 2) w.push_back(0);
    dword(i.style | WS_CHILD | WS_VISIBLE);
    dword(0);
    w.insert(w.end(), {WORD(i.x), WORD(i.y), WORD(i.cx), WORD(i.cy), WORD(i.id), 0xFFFF, i.atom});
    str(i.text);
    w.push_back(0);  // no creation data
  }
  return w;
}

struct Seen {
  int edit_changes = 0, check_clicks = 0, list_changes = 0, combo_changes = 0;
  std::wstring name;
  bool remember = false;
  int list = -1, combo = -1;
} seen;

INT_PTR CALLBACK TestDialogProc(HWND dlg, UINT msg, WPARAM wp, LPARAM) {
  if (msg == WM_INITDIALOG) {
    for (const wchar_t *s : {L"Alpha", L"Beta", L"Gamma"})
      SendDlgItemMessageW(dlg, kList, LB_ADDSTRING, 0, LPARAM(s));
    for (const wchar_t *s : {L"Red", L"Green", L"Blue"})
      SendDlgItemMessageW(dlg, kCombo, CB_ADDSTRING, 0, LPARAM(s));
    SendDlgItemMessageW(dlg, kCombo, CB_SETCURSEL, 0, 0);
    return TRUE;
  }
  if (msg != WM_COMMAND) return FALSE;
  switch (MAKELONG(LOWORD(wp), HIWORD(wp))) {
    case MAKELONG(kEdit, EN_CHANGE): ++seen.edit_changes; break;
    case MAKELONG(kCheck, BN_CLICKED): ++seen.check_clicks; break;
    case MAKELONG(kList, LBN_SELCHANGE): ++seen.list_changes; break;
    case MAKELONG(kCombo, CBN_SELCHANGE): ++seen.combo_changes; break;
    case MAKELONG(IDCANCEL, BN_CLICKED): EndDialog(dlg, IDCANCEL); break;
    case MAKELONG(IDOK, BN_CLICKED): {
      wchar_t name[100];
      if (!GetDlgItemTextW(dlg, kEdit, name, 100)) {
        MessageBoxW(dlg, L"Please enter a name.", L"Driver Dialog", MB_ICONEXCLAMATION);
        break;
      }
      seen.name = name;
      seen.remember = IsDlgButtonChecked(dlg, kCheck) == BST_CHECKED;
      seen.list = int(SendDlgItemMessageW(dlg, kList, LB_GETCURSEL, 0, 0));
      seen.combo = int(SendDlgItemMessageW(dlg, kCombo, CB_GETCURSEL, 0, 0));
      EndDialog(dlg, IDOK);
      break;
    }
  }
  return TRUE;
}

INT_PTR ShowTestDialog() {
  static const std::vector<WORD> dialog = BuildTemplate(
      L"Driver Dialog",
      {{0x81, kEdit, WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, L"", 8, 8, 120, 14},
       {0x80, kCheck, BS_AUTOCHECKBOX | WS_TABSTOP, L"Remember", 8, 28, 120, 12},
       {0x83, kList, LBS_NOTIFY | WS_BORDER | WS_VSCROLL, L"", 8, 44, 90, 50},
       {0x85, kCombo, CBS_DROPDOWNLIST | WS_VSCROLL, L"", 104, 44, 88, 60},
       {0x80, IDOK, BS_DEFPUSHBUTTON | WS_TABSTOP, L"OK", 88, 108, 50, 14},
       {0x80, IDCANCEL, BS_PUSHBUTTON | WS_TABSTOP, L"Cancel", 142, 108, 50, 14}});
  return DialogBoxIndirectParamW(GetModuleHandleW(nullptr),
                                 reinterpret_cast<LPCDLGTEMPLATEW>(dialog.data()), nullptr,
                                 TestDialogProc, 0);
}

TEST(UiDriver, DrivesADialogFully) {
  seen = {};
  tvui::Script script = [](tvui::Session &s) {
    HWND dlg = s.WaitDialog(L"Driver Dialog");
    EXPECT_EQ(s.Children(dlg).size(), 6u);
    EXPECT_EQ(s.Items(dlg, kList), (std::vector<std::wstring>{L"Alpha", L"Beta", L"Gamma"}));
    EXPECT_EQ(s.SelectedText(dlg, kCombo), L"Red");
    EXPECT_EQ(s.Selection(dlg, kList), -1);

    s.Click(dlg, IDOK);  // no name yet: the dialog answers with a nested box
    tvui::Box box = s.WaitMessageBox(L"Driver Dialog");
    EXPECT_EQ(box.text, L"Please enter a name.");
    s.Answer(box, IDOK);

    s.SetText(dlg, kEdit, L"Zo\u00eb Smith");
    EXPECT_EQ(s.Text(dlg, kEdit), L"Zo\u00eb Smith");
    s.Check(dlg, kCheck);
    s.Check(dlg, kCheck, false);
    EXPECT_FALSE(s.IsChecked(dlg, kCheck));
    s.Check(dlg, kCheck);
    s.Select(dlg, kList, 2);
    s.Select(dlg, kList, L"beta");  // found regardless of case, like the control does
    EXPECT_EQ(s.SelectedText(dlg, kList), L"Beta");
    s.Select(dlg, kCombo, L"Blue");
    EXPECT_EQ(s.Selection(dlg, kCombo), 2);
    s.Screenshot(dlg, L"uidriver_dialog");
    s.Click(dlg, IDOK);
    s.WaitClosed(dlg);
  };
  EXPECT_EQ(tvui::RunModal(ShowTestDialog, script), IDOK);
  EXPECT_EQ(seen.name, L"Zo\u00eb Smith");
  EXPECT_EQ(std::tie(seen.remember, seen.list, seen.combo), std::make_tuple(true, 1, 2));
  // Every change the script made reached the dialog procedure.
  EXPECT_GE(seen.edit_changes, 1);
  EXPECT_EQ(std::tie(seen.check_clicks, seen.list_changes, seen.combo_changes),
            std::make_tuple(3, 2, 1));
}

// The box as a library shows it from DllMain, with the loader lock held:
// in Wine the driver must not need that lock (loading resources does).
int FatalBoxUnderLoaderLock() {
  using Lock = LONG(NTAPI *)(ULONG, ULONG *, ULONG_PTR *);
  using Unlock = LONG(NTAPI *)(ULONG, ULONG_PTR);
  HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
  auto lock = reinterpret_cast<Lock>(
      reinterpret_cast<void *>(GetProcAddress(ntdll, "LdrLockLoaderLock")));
  auto unlock = reinterpret_cast<Unlock>(
      reinterpret_cast<void *>(GetProcAddress(ntdll, "LdrUnlockLoaderLock")));
  ULONG_PTR cookie = 0;
  if (!lock || !unlock || lock(0, nullptr, &cookie)) return -1;
  int r = MessageBoxW(nullptr, L"Z:\\lang\\en\\tavona32Res.dll", L"Fatal Error: File not found",
                      MB_ICONHAND);
  unlock(0, cookie);
  return r;
}

TEST(UiDriver, ScreenshotIsAPngOfTheWholeWindow) {
  std::wstring path;
  tvui::Image shot;
  RECT rect{};
  tvui::Script script = [&](tvui::Session &s) {
    tvui::Box box = s.WaitMessageBox(L"Fatal Error: File not found");
    EXPECT_EQ(box.icon, UINT(MB_ICONHAND));
    path = s.Screenshot(box.hwnd, L"uidriver_fatal_box");
    shot = tvui::Capture(box.hwnd);
    GetWindowRect(box.hwnd, &rect);
    s.Answer(box, IDOK);
  };
  EXPECT_EQ(tvui::RunModal(FatalBoxUnderLoaderLock, script), IDOK);
  std::ifstream in(std::filesystem::path(path), std::ios::binary);
  std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
  tvui::Image png;
  ASSERT_TRUE(DecodeStoredPng(bytes, png));
  EXPECT_EQ(png.width, rect.right - rect.left);  // frame included
  EXPECT_EQ(png.height, rect.bottom - rect.top);
  EXPECT_EQ(png.pixels, shot.pixels);
  std::set<uint32_t> colors(png.pixels.begin(), png.pixels.end());
  EXPECT_GE(colors.size(), 16u) << "the capture looks blank";
}

// ---------------------------------------------------------------- failures

TEST(UiDriver, FailingScriptsEndQuicklyWithWindowsClosed) {
  auto stuck = [] { return MessageBoxW(nullptr, L"Nobody answers", L"Stuck", MB_OKCANCEL); };
  struct Case {
    const char *name;
    std::function<int()> call;
    tvui::Script script;
    const char *message;
  } cases[] = {
      {"timeout", stuck,
       [](tvui::Session &s) { s.WaitClosed(s.WaitMessageBox(L"Stuck").hwnd, 300ms); },
       "timed out after 300 ms"},
      {"throws", stuck,
       [](tvui::Session &s) { s.WaitMessageBox(L"Stuck"); throw std::runtime_error("boom"); },
       "the script threw: boom"},
      {"unexpected window", stuck, [](tvui::Session &s) { s.WaitDialog(L"Expected"); },
       "unexpected window \"Stuck\" (#32770) while waiting for window \"Expected\""},
      {"left open", stuck, [](tvui::Session &s) { s.WaitMessageBox(L"Stuck"); },
       "still open: \"Stuck\""},
      {"no such button", stuck,
       [](tvui::Session &s) { s.Answer(s.WaitMessageBox(L"Stuck"), IDYES); },
       "has no button 6"},
      {"nested box left open", ShowTestDialog,
       [](tvui::Session &s) { s.Click(s.WaitDialog(L"Driver Dialog"), IDOK); s.WaitAnyDialog(); },
       "still open: \"Driver Dialog\" (#32770), \"Driver Dialog\" (#32770)"},
      {"call returns first", [] { return 7; },
       [](tvui::Session &s) { s.WaitDialog(L"Never", 10s); },
       "the call returned while waiting for window \"Never\""},
  };
  for (const Case &c : cases) {
    SCOPED_TRACE(c.name);
    testing::TestPartResultArray failures;
    auto start = Clock::now();
    {
      testing::ScopedFakeTestPartResultReporter intercept(
          testing::ScopedFakeTestPartResultReporter::INTERCEPT_ALL_THREADS, &failures);
      tvui::RunModal(c.call, c.script);
    }
    EXPECT_LT(Seconds(start), 3.0);
    EXPECT_FALSE(FindWindowW(nullptr, L"Stuck") || FindWindowW(nullptr, L"Driver Dialog"));
    std::string all;
    for (int i = 0; i < failures.size(); ++i) all += failures.GetTestPartResult(i).message();
    EXPECT_NE(all.find(c.message), std::string::npos) << all;
  }
}

}  // namespace
