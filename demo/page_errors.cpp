// Error reporting: one message of the resource library sent through
// Tavona_Message_Box in each handling mode (message box, silent, log file,
// application callback), with the answer and the log file's lines.
#include <tavona/tavona32.h>

#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

#include "pages.h"
#include "ui.h"

namespace {

enum : int {
  kMessageId = 100,
  kArg1,
  kArg2,
  kDisplay,
  kSilent,
  kLog,
  kCallback,
  kLogPath,
  kReport,
  kClearLog,
  kResult,
  kLogLines,
};

constexpr int kModes[] = {kDisplay, kSilent, kLog, kCallback};

const wchar_t *ButtonName(int result) {
  static const wchar_t *const names[] = {L"",        L"IDOK",     L"IDCANCEL", L"IDABORT",
                                         L"IDRETRY", L"IDIGNORE", L"IDYES",    L"IDNO"};
  return result >= 1 && result <= 7 ? names[result] : L"";
}

std::wstring callbackText;

INT WINAPI DemoCallback(const WCHAR *text) {
  callbackText = text;
  return IDOK;
}

class ErrorsPage : public demo::Page {
 public:
  explicit ErrorsPage(HWND parent) : Page(parent) {
    demo::Form f(*this, {L"Message id:", L"Arguments:", L"Mode:", L"Log file:", L"Result:",
                         L"Log lines:"});
    f.BeginGroup(L"Report a message (Tavona_Message_Box)");
    f.Row(L"Message id:");
    id_ = f.Edit(kMessageId, L"1354", demo::DuX(40), ES_NUMBER);
    f.Note(L"1300-1390 and 1599; the prefix before the first space picks icon and buttons");
    f.Row(L"Arguments:");
    arg1_ = f.Edit(kArg1, L"C:\\Data\\report.txt", demo::DuX(110));
    arg2_ = f.Edit(kArg2, L"D:\\Backup", 0);
    f.Row(L"Mode:");
    const wchar_t *labels[] = {L"Message box (0)", L"Silent (1)", L"Log file (2)",
                               L"Application callback"};
    for (int i = 0; i < 4; ++i)
      modes_[i] = f.Button(kModes[i], labels[i], BS_AUTORADIOBUTTON | (i ? 0 : WS_GROUP));
    SendMessageW(modes_[0], BM_SETCHECK, BST_CHECKED, 0);
    f.Row(L"Log file:");
    logPath_ = f.Edit(kLogPath, demo::TempPath(L"tavona_demo_errors.log").c_str(), 0);
    f.Row(L"");
    f.Button(kReport, L"Report", BS_PUSHBUTTON);
    f.Button(kClearLog, L"Delete log file", BS_PUSHBUTTON);
    f.Row(L"Result:");
    result_ = f.ReadOnly(0);
    f.Row(L"Log lines:");
    logLines_ = f.List(kLogLines, 6, LBS_NOSEL);
    f.EndGroup();
    f.Finish();
    ShowLog();
  }

 protected:
  void OnCommand(int id, int code) override {
    if (code != BN_CLICKED) return;
    if (id == kReport) Report();
    if (id == kClearLog) {
      DeleteFileW(demo::GetText(logPath_).c_str());
      ShowLog();
    }
  }

 private:
  int Mode() const {
    for (int i = 0; i < 4; ++i)
      if (SendMessageW(modes_[i], BM_GETCHECK, 0, 0) == BST_CHECKED) return i;
    return 0;
  }

  void Report() {
    int mode = Mode();
    std::wstring arg1 = demo::GetText(arg1_), arg2 = demo::GetText(arg2_);
    std::wstring path = demo::GetText(logPath_);
    MessageBoxRequest request = {};
    request.module = Tavona_GetResourceModule();
    request.captionId = 1500;
    request.messageId = static_cast<UINT>(_wtoi(demo::GetText(id_).c_str()));
    request.ltsModule = L"TAVONADLL";
    request.args[0] = arg1.c_str();
    request.args[1] = arg2.c_str();
    request.flag = 1;
    request.owner = GetAncestor(hwnd(), GA_ROOT);

    // The settings are process-wide: set them for this one report only.
    callbackText.clear();
    Tavona_SetErrorHandlerCallback(mode == 3 ? DemoCallback : nullptr);
    Tavona_SetErrorHandlingMode(mode == 3 ? 0 : mode);
    Tavona_SetErrorLogFile(path.c_str());
    int result = Tavona_Message_Box(&request);
    Tavona_SetErrorHandlerCallback(nullptr);
    Tavona_SetErrorHandlingMode(0);

    std::wstring text = L"Tavona_Message_Box returned " + std::to_wstring(result);
    if (mode == 0) text += std::wstring(L" (") + ButtonName(result) + L")";
    if (mode == 1) text += L" (silent: nothing shown)";
    if (mode == 2) text += result == 1 ? L" (line appended)" : L" (log file cannot be opened)";
    if (mode == 3) text += L"; the callback received: " + callbackText;
    demo::SetText(result_, text);
    ShowLog();
  }

  // The log is raw UTF-16LE, one message per line ended by CR LF.
  void ShowLog() {
    SendMessageW(logLines_, LB_RESETCONTENT, 0, 0);
    FILE *f = _wfopen(demo::GetText(logPath_).c_str(), L"rb");
    if (!f) {
      SendMessageW(logLines_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"(no log file yet)"));
      return;
    }
    std::wstring content;
    wchar_t c;
    while (fread(&c, sizeof c, 1, f) == 1) content += c;
    fclose(f);
    size_t start = 0;
    for (size_t end; (end = content.find(L"\r\n", start)) != std::wstring::npos; start = end + 2) {
      std::wstring line = content.substr(start, end - start);
      SendMessageW(logLines_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    }
    int count = static_cast<int>(SendMessageW(logLines_, LB_GETCOUNT, 0, 0));
    SendMessageW(logLines_, LB_SETTOPINDEX, count > 0 ? count - 1 : 0, 0);
  }

  HWND id_, arg1_, arg2_, logPath_, result_, logLines_;
  HWND modes_[4];
};

}  // namespace

HWND CreateErrorsPage(HWND parent) { return (new ErrorsPage(parent))->hwnd(); }
