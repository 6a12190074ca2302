// Integration: open and save dialogs that remember the last name, the
// folder browser, a database statement through the statement dump, and a
// mail through whatever mail service the machine has.
#include <tavona/tavona32.h>

#include <string>

#include "pages.h"
#include "ui.h"

namespace {

enum : int {
  kName = 100,
  kOpen,
  kSave,
  kFolder,
  kChooseFolder,
  kStatement,
  kShowAll,
  kDump,
  kConfigure,
  kTo,
  kSubject,
  kSend,
  kResult,
};

const wchar_t kKey[] = L"Software\\Tavona Software\\Demo";
const wchar_t kSqlKey[] = L"Software\\Tavona Software\\Dump\\Sql";

// A check box row turned into a push button (the form lays out check boxes
// only).
class IntegrationPage : public demo::Page {
 public:
  explicit IntegrationPage(HWND parent) : Page(parent) {
    demo::Form f(*this, {L"File name:", L"Folder:", L"Statement:", L"To:", L"Subject:",
                         L"Result:"});
    f.BeginGroup(L"File dialogs (Tavona_ExtendedFileNameDialog, Tavona_DirectoryDialog)");
    f.Row(L"File name:");
    name_ = f.ReadOnly(0);
    f.Row(L"");
    f.Button(kOpen, L"Open...");
    f.Button(kSave, L"Save...");
    f.Note(L"the last name is kept under HKCU\\Software\\Tavona Software\\Demo\\Files");
    f.Row(L"Folder:");
    folder_ = f.ReadOnly(0);
    f.Row(L"");
    f.Button(kChooseFolder, L"Choose folder...");
    f.EndGroup();

    f.BeginGroup(L"Statement dump (Tavona_DumpSqlStatement, TavonaDumpConfigure)");
    f.Row(L"Statement:");
    statement_ = f.Edit(kStatement, L"SELECT name, city FROM customers WHERE city = 'Bern'", 0);
    f.Row(L"");
    showAll_ = f.Check(kShowAll, L"Show every statement before it runs (DumpBeforePerform, ALL)",
                       Tavona_ReadLongFromHKCU(kSqlKey, nullptr, L"DumpBeforePerform", 0) &&
                           Tavona_ReadLongFromHKCU(kSqlKey, nullptr, L"ALL", 0));
    f.Row(L"");
    f.Button(kDump, L"Dump statement");
    f.Button(kConfigure, L"Settings...");
    f.EndGroup();

    f.BeginGroup(L"Mail (Tavona_SendMail)");
    f.Row(L"To:");
    to_ = f.Edit(kTo, L"anna@example.com; ;bruno@example.com", 0);
    f.Row(L"Subject:");
    subject_ = f.Edit(kSubject, L"Greetings from the demo", 0);
    f.Row(L"");
    f.Button(kSend, L"Send...");
    f.Note(L"the mail client's compose window opens; without one the error is shown");
    f.EndGroup();

    f.BeginGroup(L"Result");
    f.Row(L"Result:");
    result_ = f.ReadOnly(0);
    f.EndGroup();
    f.Finish();
    Show(L"");
  }

 protected:
  void OnCommand(int id, int code) override {
    if (code != BN_CLICKED) return;
    switch (id) {
      case kOpen:
      case kSave: {
        wchar_t name[1040] = L"";
        TavonaFileNameRequest r = {};
        r.filter = L"Text files (*.txt)|*.txt|All files (*.*)|*.*|";
        r.title = id == kOpen ? L"Open a File" : L"Save a File";
        r.key = kKey;
        r.section = L"Files";
        r.value = L"Last";
        r.flags = id == kSave ? TAVONA_FND_SAVE : 0;
        int rc = Tavona_ExtendedFileNameDialog(name, 1040, &r);
        if (rc) demo::SetText(name_, name);
        Show(L"Tavona_ExtendedFileNameDialog = " + std::to_wstring(rc) +
             (rc ? L" (filter index)" : L" (cancelled)"));
        break;
      }
      case kChooseFolder: {
        wchar_t path[MAX_PATH];
        lstrcpynW(path, demo::GetText(folder_).c_str(), MAX_PATH);
        int rc = Tavona_DirectoryDialog(path, MAX_PATH, L"Choose a folder for the demo",
                                        TAVONA_DIR_NEWSTYLE | TAVONA_DIR_EDITBOX);
        if (rc == 1) demo::SetText(folder_, path);
        Show(L"Tavona_DirectoryDialog = " + std::to_wstring(rc));
        break;
      }
      case kShowAll: {
        LONG on = SendMessageW(showAll_, BM_GETCHECK, 0, 0) == BST_CHECKED ? 1 : 0;
        Tavona_WriteLongToHKCU(kSqlKey, nullptr, L"DumpBeforePerform", on);
        Tavona_WriteLongToHKCU(kSqlKey, nullptr, L"ALL", on);
        Show(on ? L"statements are shown before they run" : L"statements run unseen");
        break;
      }
      case kDump: {
        wchar_t statement[1000];
        lstrcpynW(statement, demo::GetText(statement_).c_str(), 1000);
        int rc = Tavona_DumpSqlStatement(statement, 1000);
        if (rc == 1) demo::SetText(statement_, statement);
        Show(L"Tavona_DumpSqlStatement = " + std::to_wstring(rc) +
             (rc == 1 ? L" (perform)" : L" (cancelled)") + L"; Tavona_GetDumpState = " +
             std::to_wstring(Tavona_GetDumpState()));
        break;
      }
      case kConfigure:
        Show(L"TavonaDumpConfigure = " + std::to_wstring(TavonaDumpConfigure()));
        break;
      case kSend: {
        std::wstring to = demo::GetText(to_), subject = demo::GetText(subject_);
        int rc = Tavona_SendMail(L"Tavona Demo", to.c_str(), nullptr, nullptr, subject.c_str(),
                                 L"This mail was prepared by the tavona32 demo.", nullptr);
        Show(L"Tavona_SendMail = " + std::to_wstring(rc) +
             (rc == 0 ? L" (the mail service was called)" : L" (no mail service)"));
        break;
      }
    }
  }

 private:
  void Show(const std::wstring &text) { demo::SetText(result_, text); }

  HWND name_, folder_, statement_, showAll_, to_, subject_, result_;
};

}  // namespace

HWND CreateIntegrationPage(HWND parent) { return (new IntegrationPage(parent))->hwnd(); }
