// The progress indicator against the real dialog templates of both
// languages: its bar checked pixel by pixel, cancel with its question, and
// the owner enabled again whatever happens.
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "frame/globals.h"
#include "frame/wndclasses.h"
#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

uint32_t Rgb(COLORREF c) { return (GetRValue(c) << 16) | (GetGValue(c) << 8) | GetBValue(c); }

class Progress : public ::testing::Test {
 protected:
  void SetUp() override {
    tv::InitPortableGlobals();
    tv::InitSecondGlobals();
    tv::g.instance = GetModuleHandleW(nullptr);
    tv::g.resources = LanguageResources(L"en");
    Tavona_SetErrorHandlerCallback(nullptr);
    Tavona_SetErrorHandlingMode(0);
    owner_ = CreateWindowW(L"STATIC", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                           nullptr, nullptr, nullptr, nullptr);
    g_capturedReports.clear();
  }
  void TearDown() override {
    Tavona_SetErrorHandlerCallback(nullptr);
    DestroyWindow(owner_);
  }

  // Columns of the inner bar (width of them) in the done colour, checked
  // along its middle row; every other column must show the remaining colour.
  static int DoneColumns(HWND dialog, COLORREF done, COLORREF remaining, int &width,
                         std::string &bad) {
    tvui::Image img = tvui::Capture(dialog);
    RECT win, bar;  // the inner bar in window coordinates, as Capture sees it
    GetWindowRect(dialog, &win);
    GetWindowRect(GetDlgItem(dialog, IDC_PROGRESS_BAR), &bar);
    OffsetRect(&bar, -win.left, -win.top);
    InflateRect(&bar, -1, -1);
    width = bar.right - bar.left;
    int y = (bar.top + bar.bottom) / 2, count = 0;
    bool inRemaining = false;
    for (int x = bar.left; x < bar.right; ++x) {
      uint32_t px = img.At(x, y);
      if (px == Rgb(done) && !inRemaining) {
        ++count;
      } else if (px == Rgb(remaining)) {
        inRemaining = true;
      } else if (bad.empty()) {
        bad = "column " + std::to_string(x - bar.left) + " has " + std::to_string(px);
      }
    }
    // Just outside the bar the dialog's face shows, not the bar colours.
    uint32_t outside = img.At(bar.right + 2, y);
    if (outside == Rgb(done) && bad.empty()) bad = "bar painted outside its frame";
    return count;
  }

  HWND owner_ = nullptr;
};

// The owner is disabled while the indicator shows. Created with an upper
// bound of 0 or below, the bound becomes 1. A lower bound other than 0 set
// later offsets the bar: the position is not taken relative to it.
TEST_F(Progress, BarWidthsAndOwner) {
  struct Row {
    INT createUpper, lower, upper, position;  // lower > upper: bounds not set
    int numerator, denominator;               // of the bar width shown done
  } rows[] = {
      {0, 1, 0, 1, 1, 1},
      {100, 10, 20, 15, 1, 1},  // 15/10 of the width: all of it, nothing beyond
      {100, 10, 20, 5, 1, 2},   {100, 0, 4, -2, 0, 1},
      {100, 20, 10, 15, 0, 1},  // empty range: no done part
  };
  const COLORREF done = RGB(200, 0, 0), rest = GetSysColor(COLOR_WINDOW);
  for (const Row &r : rows) {
    HWND p = Tavona_CreateProgressIndicator(owner_, L"Working", 0, r.createUpper);
    ASSERT_TRUE(p);
    EXPECT_FALSE(IsWindowEnabled(owner_));
    Tavona_SetProgressIndicatorColor(p, done);
    if (r.createUpper > 0) Tavona_SetProgressIndicatorBounds(p, r.lower, r.upper);
    Tavona_UpdateProgressIndicator(p, r.position);
    std::string bad;
    int width = 0, columns = DoneColumns(p, done, rest, width, bad);
    EXPECT_EQ(columns, width * r.numerator / r.denominator)
        << r.createUpper << ": " << r.lower << ".." << r.upper << " at " << r.position;
    EXPECT_EQ(bad, "") << r.lower << ".." << r.upper << " at " << r.position;
    Tavona_DestroyProgressIndicator(p);
    EXPECT_TRUE(IsWindowEnabled(owner_));
    EXPECT_FALSE(IsWindow(p));
  }
  // Destroyed with its owner: the record goes, and nothing is left disabled.
  HWND other = CreateWindowW(L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 50, 50, nullptr, nullptr,
                             nullptr, nullptr);
  HWND p = Tavona_CreateProgressIndicator(other, L"x", 0, 10);
  DestroyWindow(p);
  EXPECT_TRUE(IsWindowEnabled(other));
  Tavona_UpdateProgressIndicator(p, 5);
  Tavona_DestroyProgressIndicator(p);
  DestroyWindow(other);
}

int g_paints = 0;
LRESULT CALLBACK CountPaints(HWND w, UINT m, WPARAM wp, LPARAM lp) {
  if (m == WM_PAINT) ++g_paints;
  return Call_HookOriginalCallback(w, L"PaintCounter", m, wp, lp);
}

TEST_F(Progress, RepaintsOnlyWhenTheWidthChanges) {
  HWND p = Tavona_CreateProgressIndicator(owner_, L"Paints", 0, 100000);
  ASSERT_EQ(Hook_Window(p, CountPaints, L"PaintCounter", 0, nullptr), 0);
  UpdateWindow(p);
  g_paints = 0;
  // The full width times these positions over 100000 stays 0 as painted.
  for (int i = 0; i < 5; ++i) Tavona_UpdateProgressIndicator(p, i);
  EXPECT_EQ(g_paints, 0);
  Tavona_UpdateProgressIndicator(p, 50000);
  Tavona_UpdateProgressIndicator(p, 50001);
  EXPECT_EQ(g_paints, 2) << "kept as it stands: full and inner widths differ, so 50001 repaints";
  Tavona_SetProgressIndicatorColor(p, RGB(1, 2, 3));
  EXPECT_EQ(g_paints, 3) << "a new colour repaints at once";
  Unhook_Window(p, L"PaintCounter");
  Tavona_DestroyProgressIndicator(p);
}

int g_posted = 0;
LRESULT CALLBACK CountPosted(HWND w, UINT m, WPARAM wp, LPARAM lp) {
  if (m == WM_APP + 1) ++g_posted;
  return Call_HookOriginalCallback(w, L"PostCounter", m, wp, lp);
}

TEST_F(Progress, AbortCheckHandlesOneMessageAndAsks) {
  HWND p = Tavona_CreateProgressIndicator(owner_, L"Abort", 0, 10);
  Hook_Window(owner_, CountPosted, L"PostCounter", 0, nullptr);
  MSG m;
  while (PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&m);
  g_posted = 0;
  for (int i = 0; i < 3; ++i) PostMessageW(owner_, WM_APP + 1, 0, 0);
  Tavona_CheckProgressIndicatorAborted(p);
  EXPECT_EQ(g_posted, 1) << "one message a check";
  Unhook_Window(owner_, L"PostCounter");

  // Without a cancel button Escape still sends IDCANCEL: nothing is asked and
  // nothing stops (the answers to the question: CancelAnsweredNoThenYes).
  Tavona_SetErrorHandlerCallback(CaptureReports);
  HWND q = Tavona_CreateProgressIndicatorExtended(owner_, L"Abort", 0, 10,
                                                  TAVONA_PROGRESS_NOCANCEL);
  EXPECT_FALSE(IsWindowVisible(GetDlgItem(q, IDCANCEL)));
  SendMessageW(q, WM_COMMAND, IDCANCEL, 0);
  EXPECT_EQ(Tavona_CheckProgressIndicatorAborted(q), 0);
  EXPECT_TRUE(g_capturedReports.empty());
  Tavona_DestroyProgressIndicator(q);
  Tavona_DestroyProgressIndicator(p);
}

// The cancel button pressed for real: "no" goes on, "yes" stops the loop.
// English shows the small template, German the large one, both with the
// remaining time from position 0 on (where it divides by 1, not 0).
TEST_F(Progress, CancelAnsweredNoThenYes) {
  for (const wchar_t *lang : {L"en", L"de"}) {
    tv::g.resources = LanguageResources(lang);
    std::wstring caption = std::wstring(L"Cancel test ") + lang;
    UINT flags = TAVONA_PROGRESS_TIME | (lang[0] == 'd' ? TAVONA_PROGRESS_LARGE : 0);
    tvui::Script script = [&](tvui::Session &s) {
      // Created under the template's caption, renamed at once.
      HWND dlg = s.WaitAnyDialog();
      s.Screenshot(dlg, std::wstring(L"progress_") + lang);
      s.Click(dlg, IDCANCEL);
      tvui::Box no = s.WaitMessageBox();
      EXPECT_EQ(no.icon, UINT(MB_ICONQUESTION));
      EXPECT_EQ(no.buttons, (std::vector<int>{IDYES, IDNO}));
      s.Screenshot(no.hwnd, std::wstring(L"progress_cancel_question_") + lang);
      s.Answer(no, IDNO);
      s.Click(dlg, IDCANCEL);
      tvui::Box yes = s.WaitMessageBox();
      s.Answer(yes, IDYES);
    };
    int aborted = tvui::RunModal(
        [&] {
          HWND p = Tavona_CreateProgressIndicatorExtended(owner_, caption.c_str(), 0, 1000000,
                                                          flags);
          Tavona_SetProgressIndicatorText(p, L"C:\\Data\\Reports\\2026\\November\\summary.txt");
          auto end = std::chrono::steady_clock::now() + std::chrono::seconds(8);
          int stopped = 0;
          for (int i = 0; !stopped && std::chrono::steady_clock::now() < end; ++i, Sleep(1)) {
            Tavona_UpdateProgressIndicator(p, i);
            stopped = Tavona_CheckProgressIndicatorAborted(p);
          }
          Tavona_DestroyProgressIndicator(p);
          return stopped;
        },
        script);
    EXPECT_EQ(aborted, 1) << Narrow(lang);
    EXPECT_TRUE(IsWindowEnabled(owner_));
  }
}

}  // namespace
