#include "uidriver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <map>
#include <set>
#include <thread>

#include "png.h"

namespace tvui {

struct Run {
  DWORD pid = GetCurrentProcessId();
  std::atomic<DWORD> driver_tid{0};
  Ms timeout{};
  std::set<HWND> before;  // windows present before the call
  std::set<HWND> known;   // those and the ones returned by a wait
  std::atomic<bool> call_returned{false};
};

namespace {

using Clock = std::chrono::steady_clock;
constexpr Ms kPoll{10};
constexpr DWORD kSendTimeoutMs = 5000;

std::string Utf8(std::wstring_view w) {  // "" for an empty text: both calls fail
  int n = WideCharToMultiByte(CP_UTF8, 0, w.data(), int(w.size()), nullptr, 0, nullptr, nullptr);
  std::string s(size_t(n), '\0');
  WideCharToMultiByte(CP_UTF8, 0, w.data(), int(w.size()), s.data(), n, nullptr, nullptr);
  return s;
}

// Reads the text the window manager keeps; never sends a message, so it
// cannot block on a busy thread.
std::wstring Caption(HWND hwnd) {
  wchar_t buf[512];
  int n = InternalGetWindowText(hwnd, buf, 512);
  return std::wstring(buf, size_t(std::max(n, 0)));
}

std::wstring ClassOf(HWND hwnd) {
  wchar_t buf[256];
  int n = GetClassNameW(hwnd, buf, 256);
  return std::wstring(buf, size_t(std::max(n, 0)));
}

bool IsDialog(HWND hwnd) { return ClassOf(hwnd) == L"#32770"; }

std::string Describe(HWND hwnd) {
  if (!IsWindow(hwnd)) return "a window that is gone";
  return "\"" + Utf8(Caption(hwnd)) + "\" (" + Utf8(ClassOf(hwnd)) + ")";
}

std::string DescribeAll(const std::vector<HWND> &windows) {
  if (windows.empty()) return "none";
  std::string s;
  for (HWND h : windows) s += (s.empty() ? "" : ", ") + Describe(h);
  return s;
}

void Report(Where w, const std::string &message) {
  ADD_FAILURE_AT(w.file_name(), int(w.line())) << "tvui: " << message;
}

bool SendTimed(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, LRESULT *result) {
  DWORD_PTR r = 0;
  bool ok = SendMessageTimeoutW(hwnd, msg, wp, lp, SMTO_NORMAL, kSendTimeoutMs, &r) != 0;
  if (result) *result = LRESULT(r);
  return ok;
}

// All top-level windows (parent null) or all descendants of parent.
std::vector<HWND> Windows(HWND parent) {
  std::vector<HWND> all;
  WNDENUMPROC add = [](HWND h, LPARAM lp) -> BOOL {
    reinterpret_cast<std::vector<HWND> *>(lp)->push_back(h);
    return TRUE;
  };
  parent ? EnumChildWindows(parent, add, LPARAM(&all)) : EnumWindows(add, LPARAM(&all));
  return all;
}

// Visible top-level windows of this process, but not of the driver thread,
// that are not in the given set.
std::vector<HWND> NewWindows(const Run &run, const std::set<HWND> &seen) {
  std::vector<HWND> found;
  for (HWND h : Windows(nullptr)) {
    DWORD pid = 0;
    DWORD tid = GetWindowThreadProcessId(h, &pid);
    if (pid == run.pid && tid != run.driver_tid && IsWindowVisible(h) && !seen.count(h))
      found.push_back(h);
  }
  return found;
}

// Loaded once, before any call runs: in Wine, loading a resource takes the
// loader lock, which a call that shows a box from DllMain is holding.
const std::vector<std::pair<HICON, UINT>> &StandardIcons() {
  static const std::vector<std::pair<HICON, UINT>> icons{
      {LoadIconW(nullptr, IDI_HAND), MB_ICONHAND},
      {LoadIconW(nullptr, IDI_QUESTION), MB_ICONQUESTION},
      {LoadIconW(nullptr, IDI_EXCLAMATION), MB_ICONEXCLAMATION},
      {LoadIconW(nullptr, IDI_ASTERISK), MB_ICONASTERISK}};
  return icons;
}

UINT IconKind(HICON icon) {
  if (!icon) return 0;
  for (auto [handle, kind] : StandardIcons())
    if (handle == icon) return kind;
  return MB_USERICON;
}

// Wine's message box is a #32770 dialog: an SS_ICON static with id 1088
// (stc1, there even without an icon), the text static with id 0xFFFF and
// buttons with the IDOK..IDCONTINUE ids, the unused ones hidden.
bool IsMessageBox(HWND hwnd) {
  if (!IsDialog(hwnd)) return false;
  bool text = false;
  for (HWND c = GetWindow(hwnd, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
    std::wstring cls = ClassOf(c);
    if (cls == L"Static" && GetDlgCtrlID(c) == 0xFFFF) text = true;
    if (cls != L"Static" && cls != L"Button") return false;
  }
  return text;
}

bool StyleIsIcon(HWND c) { return (GetWindowLongW(c, GWL_STYLE) & SS_TYPEMASK) == SS_ICON; }

void RepaintAndSettle(HWND hwnd) {
  const UINT flags = RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN;
  if (GetWindowThreadProcessId(hwnd, nullptr) == GetCurrentThreadId()) {
    RedrawWindow(hwnd, nullptr, nullptr, flags | RDW_UPDATENOW);
    return;
  }
  // Another thread paints when it next runs its message loop: wait until no
  // window of the tree has an update region left.
  RedrawWindow(hwnd, nullptr, nullptr, flags);
  auto pending = [hwnd] {
    bool any = GetUpdateRect(hwnd, nullptr, FALSE);
    for (HWND c : Windows(hwnd))
      if (IsWindowVisible(c) && GetUpdateRect(c, nullptr, FALSE)) any = true;
    return any;
  };
  auto deadline = Clock::now() + Ms(2000);
  while (pending() && Clock::now() < deadline) Sleep(10);
  Sleep(30);
}

std::wstring ScreenshotDir() {
  wchar_t buf[MAX_PATH];
  DWORD n = GetEnvironmentVariableW(L"TAVONA_SCREENSHOT_DIR", buf, MAX_PATH);
  std::wstring dir = (n > 0 && n < MAX_PATH) ? std::wstring(buf, n) : L".\\screenshots";
  std::error_code ignored;
  std::filesystem::create_directories(dir, ignored);
  return dir;
}

}  // namespace

// ---------------------------------------------------------------- capture

Image Capture(HWND hwnd) {
  Image img;
  RECT r;
  if (!IsWindow(hwnd) || !GetWindowRect(hwnd, &r)) return img;
  RepaintAndSettle(hwnd);
  GetWindowRect(hwnd, &r);
  int w = r.right - r.left, h = r.bottom - r.top;
  if (w <= 0 || h <= 0) return img;
  // The window DC reads Wine's own window surface, frame included; a
  // PrintWindow from another thread comes back blank.
  HDC src = GetWindowDC(hwnd);
  HDC mem = CreateCompatibleDC(src);
  BITMAPINFO bi{};
  bi.bmiHeader = {sizeof(bi.bmiHeader), w, -h /* top-down */, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void *bits = nullptr;
  HBITMAP bmp = CreateDIBSection(mem, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (bmp && bits) {
    HGDIOBJ old = SelectObject(mem, bmp);
    if (BitBlt(mem, 0, 0, w, h, src, 0, 0, SRCCOPY)) {
      GdiFlush();
      const uint32_t *p = static_cast<const uint32_t *>(bits);
      img.width = w;
      img.height = h;
      img.pixels.resize(size_t(w) * h);
      std::transform(p, p + img.pixels.size(), img.pixels.begin(),
                     [](uint32_t v) { return v & 0xFFFFFF; });
    }
    SelectObject(mem, old);
    DeleteObject(bmp);
  }
  DeleteDC(mem);
  ReleaseDC(hwnd, src);
  return img;
}

std::wstring SaveScreenshot(HWND hwnd, std::wstring_view name) {
  Image img = Capture(hwnd);
  if (img.pixels.empty()) return {};
  std::wstring file(name);
  for (wchar_t &c : file)
    if (wcschr(L"\\/:*?\"<>|", c)) c = L'_';
  std::wstring path = ScreenshotDir() + L"\\" + file + L".png";
  return tvpng::WriteFile(path, img.width, img.height, img.pixels.data()) ? path : L"";
}

Box ReadBox(HWND hwnd) {
  Box box;
  box.hwnd = hwnd;
  box.caption = Caption(hwnd);
  std::vector<std::pair<RECT, int>> buttons;
  for (HWND c = GetWindow(hwnd, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
    std::wstring cls = ClassOf(c);
    if (cls == L"Static" && StyleIsIcon(c)) {
      LRESULT icon = 0;
      SendTimed(c, STM_GETICON, 0, 0, &icon);
      box.icon = IconKind(HICON(icon));
    } else if (cls == L"Static" && GetDlgCtrlID(c) == 0xFFFF) {
      box.text = Caption(c);
    } else if (cls == L"Button" && IsWindowVisible(c)) {
      RECT r;
      GetWindowRect(c, &r);
      buttons.push_back({r, GetDlgCtrlID(c)});
    }
  }
  std::sort(buttons.begin(), buttons.end(), [](const auto &a, const auto &b) {
    return a.first.top != b.first.top ? a.first.top < b.first.top
                                      : a.first.left < b.first.left;
  });
  for (auto &b : buttons) box.buttons.push_back(b.second);
  return box;
}

// ---------------------------------------------------------------- session

Ms Session::Timeout(Ms t) const { return t.count() > 0 ? t : run_.timeout; }

void Session::Fail(const std::string &message, Where w) {
  Report(w, message);
  throw Abort{};
}

HWND Session::Wait(const std::function<bool(HWND)> &match, const std::wstring &what,
                   Ms timeout, Where w) {
  timeout = Timeout(timeout);
  auto deadline = Clock::now() + timeout;
  for (;;) {
    // Read before looking, so that a window shown just before the call
    // returned is still found.
    bool returned = run_.call_returned;
    for (HWND h : NewWindows(run_, run_.known)) {
      if (match(h)) {
        run_.known.insert(h);
        return h;
      }
      if (IsDialog(h))
        Fail("unexpected window " + Describe(h) + " while waiting for " + Utf8(what), w);
    }
    if (returned) Fail("the call returned while waiting for " + Utf8(what), w);
    if (Clock::now() >= deadline)
      Fail("timed out after " + std::to_string(timeout.count()) + " ms waiting for " +
               Utf8(what) + "; open windows: " + DescribeAll(NewWindows(run_, run_.before)),
           w);
    Sleep(DWORD(kPoll.count()));
  }
}

HWND Session::WaitDialog(std::wstring_view caption, Ms timeout, Where w) {
  std::wstring c(caption);
  return Wait([&](HWND h) { return Caption(h) == c; }, L"window \"" + c + L"\"", timeout, w);
}

HWND Session::WaitAnyDialog(Ms timeout, Where w) {
  return Wait(IsDialog, L"a dialog", timeout, w);
}

HWND Session::WaitWindow(const std::function<bool(HWND)> &match, std::wstring_view what,
                         Ms timeout, Where w) {
  return Wait(match, std::wstring(what), timeout, w);
}

Box Session::WaitMessageBox(std::wstring_view caption, Ms timeout, Where w) {
  std::wstring c(caption);
  HWND h = Wait([&](HWND h) { return IsMessageBox(h) && (c.empty() || Caption(h) == c); },
                c.empty() ? L"a message box" : L"message box \"" + c + L"\"", timeout, w);
  return ReadBox(h);
}

void Session::WaitClosed(HWND hwnd, Ms timeout, Where w) {
  timeout = Timeout(timeout);
  std::string what = Describe(hwnd);
  auto deadline = Clock::now() + timeout;
  while (IsWindow(hwnd)) {
    if (Clock::now() >= deadline)
      Fail("timed out after " + std::to_string(timeout.count()) + " ms waiting for " + what +
               " to close",
           w);
    Sleep(DWORD(kPoll.count()));
  }
}

void Session::Answer(const Box &box, int id, Where w) {
  if (std::find(box.buttons.begin(), box.buttons.end(), id) == box.buttons.end())
    Fail("message box " + Describe(box.hwnd) + " has no button " + std::to_string(id), w);
  PostMessageW(box.hwnd, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), LPARAM(GetDlgItem(box.hwnd, id)));
  WaitClosed(box.hwnd, {}, w);
}

HWND Session::Item(HWND dlg, int id, Where w) {
  HWND h = GetDlgItem(dlg, id);
  if (!h) Fail(Describe(dlg) + " has no control " + std::to_string(id), w);
  return h;
}

std::vector<HWND> Session::Children(HWND parent) { return Windows(parent); }

LRESULT Session::Send(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, Where w) {
  LRESULT r = 0;
  if (!SendTimed(hwnd, msg, wp, lp, &r))
    Fail("message " + std::to_string(msg) + " to " + Describe(hwnd) +
             (IsWindow(hwnd) ? " got no answer" : ": the window is gone"),
         w);
  return r;
}

std::wstring Session::Text(HWND hwnd, Where w) {
  auto n = size_t(Send(hwnd, WM_GETTEXTLENGTH, 0, 0, w));
  std::wstring s(n + 1, L'\0');
  s.resize(size_t(Send(hwnd, WM_GETTEXT, s.size(), LPARAM(s.data()), w)));
  return s;
}

std::wstring Session::Text(HWND dlg, int id, Where w) { return Text(Item(dlg, id, w), w); }

void Session::SetText(HWND dlg, int id, std::wstring_view text, Where w) {
  std::wstring s(text);  // an edit control tells its parent with EN_CHANGE
  if (!Send(Item(dlg, id, w), WM_SETTEXT, 0, LPARAM(s.c_str()), w))
    Fail("control " + std::to_string(id) + " refused the text", w);
}

// Delivered without waiting for the handler, which may run a nested modal
// loop (a button that opens a message box); the WM_NULL after it returns
// once the handler has finished or is inside such a loop.
void Session::Notify(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, Where w) {
  if (!SendNotifyMessageW(hwnd, msg, wp, lp))
    Fail("message " + std::to_string(msg) + " to " + Describe(hwnd) + " failed", w);
  SendTimed(hwnd, WM_NULL, 0, 0, nullptr);
}

void Session::Click(HWND dlg, int id, Where w) {
  HWND h = Item(dlg, id, w);
  // BM_CLICK would reach a disabled or hidden button too; a user could not.
  if (!IsWindowEnabled(h) || !IsWindowVisible(h))
    Fail("button " + std::to_string(id) + " is disabled or hidden", w);
  Notify(h, BM_CLICK, 0, 0, w);
}

bool Session::IsChecked(HWND dlg, int id, Where w) {
  return Send(Item(dlg, id, w), BM_GETCHECK, 0, 0, w) == BST_CHECKED;
}

void Session::Check(HWND dlg, int id, bool on, Where w) {
  HWND h = Item(dlg, id, w);
  // Clicks, so that the dialog procedure sees BN_CLICKED; three-state boxes
  // may need two. A plain check box is left to its dialog procedure.
  for (int i = 0; i < 3 && IsChecked(dlg, id, w) != on; ++i) Notify(h, BM_CLICK, 0, 0, w);
  if (IsChecked(dlg, id, w) != on)
    Fail("check box " + std::to_string(id) + " did not turn " + (on ? "on" : "off"), w);
}

namespace {
struct ListMsgs {
  UINT count, gettextlen, gettext, getcursel, setcursel, findexact;
  WORD selchange;
  bool combo;
};
constexpr ListMsgs kListBox{LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT, LB_GETCURSEL,
                            LB_SETCURSEL, LB_FINDSTRINGEXACT, LBN_SELCHANGE, false};
constexpr ListMsgs kComboBox{CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT, CB_GETCURSEL,
                             CB_SETCURSEL, CB_FINDSTRINGEXACT, CBN_SELCHANGE, true};

std::pair<HWND, const ListMsgs *> List(Session &s, HWND dlg, int id, Where w) {
  HWND h = s.Item(dlg, id, w);
  std::wstring cls = ClassOf(h);
  if (_wcsicmp(cls.c_str(), L"ListBox") == 0) return {h, &kListBox};
  if (_wcsicmp(cls.c_str(), L"ComboBox") == 0) return {h, &kComboBox};
  s.Fail("control " + std::to_string(id) + " is a " + Utf8(cls) + ", not a list or combo box", w);
}
}  // namespace

std::vector<std::wstring> Session::Items(HWND dlg, int id, Where w) {
  auto [h, m] = List(*this, dlg, id, w);
  std::vector<std::wstring> items;
  LRESULT n = Send(h, m->count, 0, 0, w);
  for (LRESULT i = 0; i < n; ++i) {
    std::wstring s(size_t(std::max<LRESULT>(Send(h, m->gettextlen, i, 0, w), 0)) + 1, L'\0');
    LRESULT len = Send(h, m->gettext, i, LPARAM(s.data()), w);
    s.resize(size_t(std::max<LRESULT>(len, 0)));
    items.push_back(s);
  }
  return items;
}

void Session::Select(HWND dlg, int id, int index, Where w) {
  auto [h, m] = List(*this, dlg, id, w);
  LONG style = GetWindowLongW(h, GWL_STYLE);
  LRESULT r = (!m->combo && (style & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)))
                  ? Send(h, LB_SETSEL, TRUE, index, w)
                  : Send(h, m->setcursel, index, 0, w);
  if (r == LB_ERR && index >= 0)
    Fail("control " + std::to_string(id) + " has no item " + std::to_string(index), w);
  // Selecting by message does not notify; a user's selection does.
  if (m->combo || (style & LBS_NOTIFY))
    Notify(GetParent(h), WM_COMMAND, MAKEWPARAM(id, m->selchange), LPARAM(h), w);
}

void Session::Select(HWND dlg, int id, std::wstring_view item, Where w) {
  auto [h, m] = List(*this, dlg, id, w);
  std::wstring s(item);
  LRESULT i = Send(h, m->findexact, WPARAM(-1), LPARAM(s.c_str()), w);
  if (i < 0) {
    std::string all;
    for (auto &t : Items(dlg, id, w)) all += " \"" + Utf8(t) + "\"";
    Fail("control " + std::to_string(id) + " has no item \"" + Utf8(s) + "\"; items:" + all, w);
  }
  Select(dlg, id, int(i), w);
}

int Session::Selection(HWND dlg, int id, Where w) {
  auto [h, m] = List(*this, dlg, id, w);
  return int(Send(h, m->getcursel, 0, 0, w));
}

std::wstring Session::Screenshot(HWND hwnd, std::wstring_view name, Where w) {
  std::wstring path = SaveScreenshot(hwnd, name);
  if (path.empty()) Fail("no screenshot of " + Describe(hwnd) + " as " + Utf8(name), w);
  return path;
}

// ---------------------------------------------------------------- run

namespace {

// Asks a window to go away, a little more insistently at every step.
void Nudge(HWND h, int step) {
  static const int kCommands[] = {IDCANCEL, IDNO, IDOK, IDABORT};
  int i = step % 5;
  if (i < 4)
    PostMessageW(h, WM_COMMAND, MAKEWPARAM(kCommands[i], BN_CLICKED),
                 LPARAM(GetDlgItem(h, kCommands[i])));
  else
    PostMessageW(h, WM_CLOSE, 0, 0);
}

// Driver thread after the script: closes what the call left open until the
// call returns. A call that never returns ends the process: a hung test
// would otherwise stop the whole run.
void CloseLeftovers(Run &run, bool report, Where where) {
  const Ms grace = report ? Ms(1000) : Ms(0);  // windows the script closed asynchronously
  const Ms limit = std::max(Ms(20000), 4 * run.timeout);
  const Ms step{150};
  auto start = Clock::now(), last = start - step;
  std::map<HWND, int> nudges;
  while (!run.call_returned) {
    auto now = Clock::now();
    std::vector<HWND> open = NewWindows(run, run.before);
    if (!open.empty() && now - start >= grace && now - last >= step) {
      if (report) {
        Report(where, "the script ended while windows were still open: " + DescribeAll(open) +
                          "; closing them");
        report = false;
      }
      for (HWND h : open) Nudge(h, nudges[h]++);
      last = now;
    }
    if (now - start > limit) {
      std::fprintf(stderr,
                   "tvui: the call did not return %lld ms after its script ended (%s); "
                   "terminating\n",
                   static_cast<long long>(limit.count()), DescribeAll(open).c_str());
      std::fflush(nullptr);
      TerminateProcess(GetCurrentProcess(), 3);
    }
    Sleep(DWORD(kPoll.count()));
  }
}

}  // namespace

void RunModalImpl(const std::function<void()> &call, const Script &script, Ms timeout,
                  Where where) {
  Run run;
  run.timeout = timeout;
  StandardIcons();
  for (HWND h : Windows(nullptr)) run.before.insert(h);
  run.known = run.before;

  std::thread driver([&] {
    run.driver_tid = GetCurrentThreadId();
    Session session(run);
    bool report = false;
    try {
      script(session);
      report = true;
    } catch (const Abort &) {
    } catch (const std::exception &e) {
      Report(where, std::string("the script threw: ") + e.what());
    } catch (...) {
      Report(where, "the script threw an unknown exception");
    }
    CloseLeftovers(run, report, where);
  });
  // The thread must be past its start-up before the call runs: a call that
  // loads a library holds the loader lock, which a starting thread needs.
  while (!run.driver_tid) Sleep(1);

  std::exception_ptr thrown;
  try {
    call();
  } catch (...) {
    thrown = std::current_exception();
  }
  run.call_returned = true;
  driver.join();
  if (thrown) std::rethrow_exception(thrown);
}

}  // namespace tvui
