// UI driver for GoogleTest tests that run real dialogs and message boxes.
//
//   tvui::Script script = [](tvui::Session &s) {
//     tvui::Box box = s.WaitMessageBox(L"Caption");
//     EXPECT_EQ(box.icon, UINT(MB_ICONHAND));
//     s.Answer(box, IDOK);
//   };
//   int r = tvui::RunModal([] { return MessageBoxW(...); }, script);
//
// RunModal runs the call on the calling thread and the script on a driver
// thread. Session operations that cannot do their job (timeout, missing
// control, unexpected dialog, the call returned early) add a test failure at
// the script line and end the script; RunModal then closes every window the
// call left open, so the call returns and the test goes on.
//
// When the call shows a box from DllMain it holds the loader lock: in Wine,
// a script that then loads a module or a resource (LoadLibrary, LoadIcon,
// LoadString, FindResource) hangs. The Session operations do neither.
#pragma once

#include <windows.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <source_location>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace tvui {

using Ms = std::chrono::milliseconds;
using Where = std::source_location;

inline constexpr Ms kDefaultTimeout{5000};

// A message box as the driver reads it.
struct Box {
  HWND hwnd = nullptr;
  std::wstring caption;
  std::wstring text;
  UINT icon = 0;  // MB_ICONHAND/QUESTION/EXCLAMATION/ASTERISK, MB_USERICON or 0
  std::vector<int> buttons;  // ids of the visible buttons, left to right
};

// Window pixels as 0x00RRGGBB, row by row from the top.
struct Image {
  int width = 0;
  int height = 0;
  std::vector<uint32_t> pixels;
  uint32_t At(int x, int y) const { return pixels[size_t(y) * width + x]; }
};

// Whole window including the frame, after its pending painting is done.
// Usable from any thread; empty when the window does not exist. Parts
// outside the screen come back black.
Image Capture(HWND hwnd);
// Writes <TAVONA_SCREENSHOT_DIR or .\screenshots>\<name>.png; returns the
// path, or an empty string when nothing could be written.
std::wstring SaveScreenshot(HWND hwnd, std::wstring_view name);
// Reads a message box (empty fields for other windows).
Box ReadBox(HWND hwnd);

struct Run;

// Thrown by failing Session operations to end the script; RunModal catches it.
struct Abort {};

class Session {
 public:
  // Waits. A zero timeout means the RunModal timeout. Only windows that
  // appear during the run and have not been returned by an earlier wait are
  // considered; another new dialog (#32770) seen meanwhile is a failure.
  HWND WaitDialog(std::wstring_view caption, Ms timeout = {}, Where w = Where::current());
  HWND WaitAnyDialog(Ms timeout = {}, Where w = Where::current());  // any #32770
  HWND WaitWindow(const std::function<bool(HWND)> &match, std::wstring_view what,
                  Ms timeout = {}, Where w = Where::current());
  // A #32770 whose children are only statics and buttons, the text static
  // having id 0xFFFF; an empty caption matches any.
  Box WaitMessageBox(std::wstring_view caption = {}, Ms timeout = {},
                     Where w = Where::current());
  void WaitClosed(HWND hwnd, Ms timeout = {}, Where w = Where::current());
  // Presses a button of the box and waits until the box is gone.
  void Answer(const Box &box, int id, Where w = Where::current());

  // Controls of a dialog by id. Changes notify the parent as a user's would.
  HWND Item(HWND dlg, int id, Where w = Where::current());
  std::vector<HWND> Children(HWND parent);  // all descendants, in z order
  std::wstring Text(HWND hwnd, Where w = Where::current());
  std::wstring Text(HWND dlg, int id, Where w = Where::current());
  void SetText(HWND dlg, int id, std::wstring_view text, Where w = Where::current());
  void Click(HWND dlg, int id, Where w = Where::current());  // fails if disabled
  bool IsChecked(HWND dlg, int id, Where w = Where::current());
  void Check(HWND dlg, int id, bool on = true, Where w = Where::current());
  // List boxes and combo boxes.
  void Select(HWND dlg, int id, int index, Where w = Where::current());
  void Select(HWND dlg, int id, std::wstring_view item, Where w = Where::current());
  int Selection(HWND dlg, int id, Where w = Where::current());  // -1: none
  std::vector<std::wstring> Items(HWND dlg, int id, Where w = Where::current());

  // SendMessage to a window of the call's thread, failing after the timeout.
  LRESULT Send(HWND hwnd, UINT msg, WPARAM wp = 0, LPARAM lp = 0,
               Where w = Where::current());
  std::wstring Screenshot(HWND hwnd, std::wstring_view name, Where w = Where::current());
  [[noreturn]] void Fail(const std::string &message, Where w = Where::current());

 private:
  friend void RunModalImpl(const std::function<void()> &, const std::function<void(Session &)> &,
                           Ms, Where);
  explicit Session(Run &run) : run_(run) {}
  HWND Wait(const std::function<bool(HWND)> &match, const std::wstring &what, Ms timeout,
            Where w);
  Ms Timeout(Ms t) const;
  void Notify(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, Where w);
  Run &run_;
};

// The file name field of a common open or save dialog: the edit inside its
// combo box 1148 (cmb13), waited for while the dialog is still being built.
inline HWND FileNameField(Session &s, HWND dlg, Where w = Where::current()) {
  for (int i = 0; i < 40; ++i, Sleep(50)) {
    for (HWND c : s.Children(dlg)) {
      wchar_t cls[16];
      GetClassNameW(c, cls, 16);
      if (GetDlgCtrlID(c) == 1148 && lstrcmpiW(cls, L"Edit") == 0) return c;
    }
  }
  s.Fail("no file name field", w);
}

using Script = std::function<void(Session &)>;

void RunModalImpl(const std::function<void()> &call, const Script &script, Ms timeout,
                  Where where);

// Runs call() (which shows modal windows) while script drives them; returns
// what call returned. timeout is the default of every wait in the script.
template <class F>
auto RunModal(F &&call, const Script &script, Ms timeout = kDefaultTimeout,
              Where where = Where::current()) {
  using R = std::invoke_result_t<F &>;
  if constexpr (std::is_void_v<R>) {
    RunModalImpl([&] { call(); }, script, timeout, where);
  } else {
    std::optional<R> result;
    RunModalImpl([&] { result.emplace(call()); }, script, timeout, where);
    return *result;
  }
}

}  // namespace tvui
