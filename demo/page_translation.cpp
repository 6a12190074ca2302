// Translation: a small dialog untranslated and translated through a German
// gettext catalog (Tavona_LtsLoadCatalog, LTS_TranslateDialog), and the
// assistance mode collecting the library's own texts into its log, which
// becomes a PO template (Tavona_LtsExportCatalog).
#include <tavona/tavona32.h>

#include <fstream>
#include <string>

#include "pages.h"
#include "ui.h"

namespace {

enum : int { kSample = 100, kCollect, kLog };

const char kCatalog[] =
    "msgid \"\"\n"
    "msgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n"
    "\nmsgctxt \"DEMO|DIALOGS\"\nmsgid \"Sample dialog\"\nmsgstr \"Beispieldialog\"\n"
    "\nmsgctxt \"DEMO|DIALOGS\"\nmsgid \"&Name:\"\nmsgstr \"&Name:\"\n"
    "\n#. ID_SAVE\nmsgctxt \"DEMO|DIALOGS\"\nmsgid \"Save on exit\"\nmsgstr \"Beim Beenden sichern\"\n"
    "\nmsgctxt \"DEMO|DIALOGS\"\nmsgid \"Cancel\"\nmsgstr \"Abbrechen\"\n";

// The log as lines: single-byte headers and separators, UTF-16LE lines.
void ShowLog(HWND list, const std::string &bytes) {
  SendMessageW(list, LB_RESETCONTENT, 0, 0);
  size_t pos = 0;
  while (pos + 1 < bytes.size()) {
    std::wstring line;
    if (bytes.compare(pos, 4, "\r\n\r\n") == 0) {
      pos += 4;
      continue;
    }
    if (bytes[pos] == '[' && bytes[pos + 1] != 0) {
      size_t end = bytes.find("\r\n", pos);
      if (end == std::string::npos) end = bytes.size();
      for (size_t i = pos; i < end; ++i) line += wchar_t(static_cast<unsigned char>(bytes[i]));
      pos = end + 2;
    } else {
      while (pos + 1 < bytes.size()) {
        wchar_t c = wchar_t(static_cast<unsigned char>(bytes[pos]) |
                            static_cast<unsigned char>(bytes[pos + 1]) << 8);
        pos += 2;
        if (c == L'\r' && pos + 1 < bytes.size() && bytes[pos] == '\n' && bytes[pos + 1] == 0) {
          pos += 2;
          break;
        }
        line += c;
      }
      line = L"    " + line;
    }
    SendMessageW(list, LB_ADDSTRING, 0, LPARAM(line.c_str()));
  }
}

class TranslationPage : public demo::Page {
 public:
  explicit TranslationPage(HWND parent) : Page(parent) {
    demo::Form f(*this, {L"Untranslated:", L"Translated:", L"Catalog:", L"Assistance:", L"Log:"});
    f.BeginGroup(L"A dialog through the German catalog (LTS_TranslateDialog)");
    f.Row(L"Untranslated:");
    HWND plain = Sample(f);
    f.Row(L"Translated:");
    HWND german = Sample(f);
    f.Row(L"Catalog:");
    catalog_ = f.Note(L"", 0);
    f.EndGroup();

    f.BeginGroup(L"Assistance over the library's texts (LTS_OpenAssistance ...)");
    f.Row(L"Assistance:");
    f.Button(kCollect, L"Collect texts...");
    f.Note(L"module TAVONADLL; the log becomes a PO template beside it");
    f.Row(L"Log:");
    log_ = f.List(kLog, 10, LBS_NOSEL);
    f.EndGroup();
    f.Finish();

    std::wstring po = demo::TempPath(L"tavona_demo_de.po");
    std::ofstream(po.c_str(), std::ios::binary) << kCatalog;
    int count = Tavona_LtsLoadCatalog(po.c_str());
    demo::SetText(catalog_, po + L": " + std::to_wstring(count) + L" translations, module DEMO");
    LTS_TranslateDialog(german, L"DEMO", nullptr);
    (void)plain;
    SendMessageW(log_, LB_ADDSTRING, 0, LPARAM(L"(Collect texts... writes the log and shows it here)"));
  }

 protected:
  void OnCommand(int id, int code) override {
    if (id != kCollect || code != BN_CLICKED) return;
    const wchar_t *key = L"Software\\Tavona Language Translation System";
    wchar_t stored[600] = {};
    Tavona_ReadStringFromHKCU(key, nullptr, L"LogFile", L"", stored, 600);
    if (!stored[0]) {
      Tavona_WriteStringToHKCU(key, nullptr, L"LogFile",
                               demo::TempPath(L"tavona_demo_lts.log").c_str());
      Tavona_WriteLongToHKCU(key, nullptr, L"Flags", LTS_FLAG_WRITE_LOG);
    }
    LtsAssistanceContext ctx = {};
    if (LTS_OpenAssistance(&ctx) != 1) return;
    LTS_PerformAssistance(&ctx, Tavona_GetResourceModule(), L"TAVONADLL");
    std::wstring log = ctx.logFileName;
    bool wrote = ctx.logFile != nullptr;
    LTS_CloseAssistance(&ctx);
    if (!wrote) return;
    std::ifstream in(log.c_str(), std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    ShowLog(log_, bytes);
    std::wstring pot = log + L".pot";
    int entries = Tavona_LtsExportCatalog(log.c_str(), pot.c_str(), L"TAVONADLL");
    std::wstring note = L"template " + pot + L": " + std::to_wstring(entries) + L" entries";
    SendMessageW(log_, LB_INSERTSTRING, 0, LPARAM(note.c_str()));
  }

 private:
  // A group box standing for a dialog: its caption and three controls.
  HWND Sample(demo::Form &f) {
    HWND place = f.List(0, 3);
    RECT r;
    GetWindowRect(place, &r);
    MapWindowPoints(nullptr, hwnd(), reinterpret_cast<POINT *>(&r), 2);
    ShowWindow(place, SW_HIDE);
    int h = r.bottom - r.top, line = demo::FontHeight();
    HWND box = Add(L"BUTTON", L"Sample dialog", WS_CHILD | WS_VISIBLE | BS_GROUPBOX, r.left, r.top,
                   demo::DuX(260), h, kSample);
    int y = h - line - demo::DuY(4), x = demo::DuX(6);
    auto child = [&](const wchar_t *cls, const wchar_t *text, DWORD style, int width) {
      HWND c = CreateWindowExW(0, cls, text, WS_CHILD | WS_VISIBLE | style, x, y, demo::DuX(width),
                               line + 2, box, nullptr, nullptr, nullptr);
      SendMessageW(c, WM_SETFONT, WPARAM(demo::UiFont()), TRUE);
      x += demo::DuX(width + 6);
    };
    child(L"STATIC", L"&Name:", 0, 40);
    child(L"BUTTON", L"((ID_SAVE))Save on exit", BS_AUTOCHECKBOX, 110);
    child(L"BUTTON", L"Cancel", BS_PUSHBUTTON, 60);
    return box;
  }

  HWND catalog_, log_;
};

}  // namespace

HWND CreateTranslationPage(HWND parent) { return (new TranslationPage(parent))->hwnd(); }
