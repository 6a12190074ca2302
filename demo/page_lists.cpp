// Lists: a list view saved to and loaded from a list file and a buffer,
// rows moved and deleted, the registry section editor on a demo key, and
// a recent files list in a box and in a menu.
#include <tavona/tavona32.h>

#include <commctrl.h>

#include <string>
#include <vector>

#include "pages.h"
#include "ui.h"

namespace {

enum : int {
  kFile = 100,
  kSave,
  kLoad,
  kBuffer,
  kUp,
  kDown,
  kDelete,
  kKey,
  kEdit,
  kPush,
  kMenu,
  kRecentBox,
};

const wchar_t kDemoKey[] = L"Software\\Tavona Software\\Demo\\Lists";
const wchar_t kRecentKey[] = L"Software\\Tavona Software\\Demo\\Recent";

class ListsPage : public demo::Page {
 public:
  explicit ListsPage(HWND parent) : Page(parent) {
    INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&icc);
    demo::Form f(*this, {L"List view:", L"List file:", L"Rows:", L"Result:", L"Key:",
                         L"Recent files:"});
    f.BeginGroup(L"List view and list files (Tavona_ListView_...)");
    f.Row(L"List view:");
    // The form lays out list boxes; the list view takes the place of one.
    HWND placeholder = f.List(0, 8);
    RECT r;
    GetWindowRect(placeholder, &r);
    MapWindowPoints(nullptr, hwnd(), reinterpret_cast<POINT *>(&r), 2);
    ShowWindow(placeholder, SW_HIDE);
    list_ = Add(WC_LISTVIEWW, L"", WS_TABSTOP | WS_BORDER | LVS_REPORT | LVS_SHOWSELALWAYS,
                r.left, r.top, demo::DuX(360), r.bottom - r.top, 0, 0);
    SendMessageW(list_, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT, LVS_EX_FULLROWSELECT);
    f.Row(L"List file:");
    file_ = f.Edit(kFile, demo::TempPath(L"tavona_demo_list.txt").c_str(), 0);
    f.Row(L"");
    f.Button(kSave, L"Save to file");
    f.Button(kLoad, L"Load from file");
    f.Button(kBuffer, L"Save to buffer");
    f.Note(L"the file's first line defines the columns when loading");
    f.Row(L"Rows:");
    f.Button(kUp, L"Move up");
    f.Button(kDown, L"Move down");
    f.Button(kDelete, L"Delete selected");
    f.Row(L"Result:");
    result_ = f.ReadOnly(0);
    f.EndGroup();

    f.BeginGroup(L"Registry section editor (Tavona_EditRegistrySection)");
    f.Row(L"Key:");
    key_ = f.Edit(kKey, kDemoKey, 0);
    f.Row(L"");
    f.Button(kEdit, L"Edit section...");
    editResult_ = f.Note(L"", demo::DuX(200));
    f.EndGroup();

    f.BeginGroup(L"Recent files (Tavona_PushRecentListFile...)");
    f.Row(L"Recent files:");
    recent_ = f.List(kRecentBox, 4);
    f.Row(L"");
    f.Button(kPush, L"Push the list file");
    f.Button(kMenu, L"Show as menu...");
    f.EndGroup();
    f.Finish();

    Tavona_ListView_CreateColumns(list_, 0, L"Name|140\tSize|70|R\tChanged|120|C\tNote|160");
    Tavona_ListView_LoadFromBuffer(list_,
                                   L"Report.txt\t12 KB\t2026-11-03\tmonthly\n"
                                   L"Summary.xls\t48 KB\t2026-10-14\t[two\tcells kept]\n"
                                   L"Notes\t1 KB\t2026-11-23\t\n"
                                   L"Archive.zip\t2.1 MB\t2026-09-30\told\n",
                                   0, 0);
    if (!Tavona_IsRegistryKeyAvailable(HKEY_CURRENT_USER, kDemoKey, nullptr, nullptr))
      Tavona_WriteRegistryItems(HKEY_CURRENT_USER, kDemoKey, L"Width;640;Height;480;Title;Demo;");
    FillRecent();
  }

 protected:
  void OnCommand(int id, int code) override {
    if (code != BN_CLICKED) return;
    std::wstring file = demo::GetText(file_);
    switch (id) {
      case kSave: {
        // The definition line first, then the rows (CR LF, UTF-16 TABs).
        int size = Tavona_ListView_CalculateBuffer(list_, 0, -1, 0, 3, TAVONA_LV_CRLF) + 1;
        std::wstring text(size, L'\0');
        Tavona_ListView_SaveToBuffer(list_, text.data(), size, 0, -1, 0, 3, TAVONA_LV_CRLF);
        text.resize(wcslen(text.c_str()));
        wchar_t widths[64];
        Tavona_ListView_GetColumnWidths(list_, 0, 3, widths, 64);
        std::wstring all = L"Name|140\tSize|70|R\tChanged|120|C\tNote|160\r\n" + text;
        Tavona_SaveBufferToFile(file.c_str(), all.c_str(), DWORD(all.size() * sizeof(wchar_t)), 0);
        demo::SetText(result_, L"saved " + std::to_wstring(ListView_GetItemCount(list_)) +
                                   L" rows; widths " + widths);
        break;
      }
      case kLoad: {
        Tavona_ListView_DeleteColumns(list_, 0, -1);
        int rows = Tavona_ListView_LoadFromFileExtended(list_, file.c_str(), TAVONA_LV_FILE_COLUMNS);
        demo::SetText(result_, L"Tavona_ListView_LoadFromFileExtended(..., 2) = " +
                                   std::to_wstring(rows) + L" rows");
        break;
      }
      case kBuffer: {
        wchar_t text[400];
        int last = Tavona_ListView_SaveToBuffer(list_, text, 400, 0, -1, 0, 3, 0);
        std::wstring shown = text;
        for (auto &c : shown)
          if (c == L'\t') c = L'\x2192';
          else if (c == L'\n') c = L'\x00B6';
        demo::SetText(result_, L"last row " + std::to_wstring(last) + L": " + shown);
        break;
      }
      case kUp:
      case kDown: {
        int r = id == kUp ? Tavona_ListView_MoveSelectedItemsUp(list_, 0, 3)
                          : Tavona_ListView_MoveSelectedItemsDown(list_, 0, 3);
        demo::SetText(result_, std::wstring(id == kUp ? L"MoveSelectedItemsUp" : L"MoveSelectedItemsDown") +
                                   L" = " + std::to_wstring(r));
        break;
      }
      case kDelete:
        demo::SetText(result_, L"deleted " +
                                   std::to_wstring(Tavona_ListView_DeleteSelectedItems(
                                       list_, TAVONA_LV_SELECT_NEXT)));
        break;
      case kEdit: {
        std::wstring key = demo::GetText(key_);
        int rc = Tavona_EditRegistrySection(hwnd(), HKEY_CURRENT_USER, key.c_str(), nullptr,
                                            L"Setting|120|Contents|200", nullptr,
                                            L"Width;640;Height;480;Title;Demo;", 0, 0);
        demo::SetText(editResult_, rc == 1 ? L"1: the key was rewritten" : L"2: cancelled");
        break;
      }
      case kPush:
        Tavona_PushRecentListFile(kRecentKey, file.c_str());
        FillRecent();
        break;
      case kMenu: {
        HMENU menu = CreatePopupMenu();
        AppendMenuW(menu, MF_STRING, 1, L"&Open...");
        AppendMenuW(menu, MF_STRING, 2, L"E&xit");
        Tavona_AppendRecentListToMenu(menu, kRecentKey, 1, 100, 9, 0);
        AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        AppendMenuW(menu, MF_STRING, 2, L"E&xit");
        POINT at;
        GetCursorPos(&at);
        UINT chosen = TrackPopupMenu(menu, TPM_RETURNCMD, at.x, at.y, 0, hwnd(), nullptr);
        DestroyMenu(menu);
        if (chosen >= 100) {
          wchar_t name[256];
          Tavona_GetRecentListFile(kRecentKey, int(chosen - 100), name, 256);
          demo::SetText(file_, name);
        }
        break;
      }
    }
  }

 private:
  void FillRecent() { Tavona_FillRecentListToBox(recent_, kRecentKey, 20, 0); }

  HWND list_, file_, result_, key_, editResult_, recent_;
};

}  // namespace

HWND CreateListsPage(HWND parent) { return (new ListsPage(parent))->hwnd(); }
