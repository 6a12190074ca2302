// The registry section editor: the string values of one key as a
// two-column list that the user edits; the key is rewritten only on OK.
#include <tavona/controls.h>
#include <tavona/settings.h>

#include <commctrl.h>

#include "frame/alloc.h"
#include "frame/dialog.h"
#include "frame/globals.h"
#include "frame/handles.h"
#include "frame/report.h"
#include "text/datautil.h"
#include "base/wstr.h"
#include "frame/lts.h"
#include "tvres.h"

namespace {

constexpr int kTitleSize = 200;
constexpr int kWidthSize = 10;
constexpr int kNameSize = 200;
constexpr int kDefaultDataSize = 500;
constexpr int kAddFieldSize = 200;

// The editor context, in the order of its fields.
struct EditRegCtl {
  HKEY root;
  const WCHAR *key;
  const WCHAR *title;
  const WCHAR *columns;
  const WCHAR *addTitle;
  const WCHAR *defaults;
  LPARAM value1;  // kept for the caller, not used
  LPARAM value2;
  HWND dialog;
  HWND list;
};

bool Given(const WCHAR *s) { return s && s[0]; }

void UpdateButtons(const EditRegCtl &c) {
  ShowWindow(GetDlgItem(c.dialog, IDC_REGEDIT_DEFAULTS), Given(c.defaults) ? SW_SHOW : SW_HIDE);
  EnableWindow(GetDlgItem(c.dialog, IDC_REGEDIT_DELETE),
               Tavona_ListView_GetSelectedItemCount(c.list) > 0);
}

// "title|width|title|width...": left-aligned columns in order.
void CreateColumns(const EditRegCtl &c) {
  const WCHAR *cursor = c.columns;
  WCHAR title[kTitleSize], width[kWidthSize + 1];
  for (int index = 0; cursor && tv::ReadField(cursor, '|', title, kTitleSize); ++index) {
    tv::ReadField(cursor, '|', width, kWidthSize + 1);
    LVCOLUMNW col = {};
    col.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT;
    col.fmt = LVCFMT_LEFT;
    col.cx = tv::TextToLong(width);
    col.pszText = title;
    SendMessageW(c.list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&col));
  }
}

void DeleteSelected(const EditRegCtl &c) {
  for (int row; (row = Tavona_ListView_GetFirstSelectedItem(c.list)) >= 0;)
    if (!SendMessageW(c.list, LVM_DELETEITEM, static_cast<WPARAM>(row), 0)) break;
  UpdateButtons(c);
}

// Names and data alternate, separated by the text's last character.
void RestoreDefaults(const EditRegCtl &c) {
  SendMessageW(c.list, LVM_DELETEALLITEMS, 0, 0);
  if (Given(c.defaults)) {
    WCHAR separator = c.defaults[tv::Len(c.defaults) - 1];
    WCHAR name[kNameSize], data[kDefaultDataSize];
    const WCHAR *cursor = c.defaults;
    while (tv::ReadField(cursor, separator, name, kNameSize) &&
           tv::ReadField(cursor, separator, data, kDefaultDataSize)) {
      int row = Tavona_ListView_InsertItem(c.list, -1, name, 0, 0);
      if (row < 0) break;
      Tavona_ListView_SetItemText(c.list, row, 1, data);
    }
  }
  UpdateButtons(c);
}

void TranslateMenu(HMENU menu) {
  for (int i = 0, n = GetMenuItemCount(menu); i < n; ++i) {
    WCHAR text[kTitleSize];
    MENUITEMINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    info.dwTypeData = text;
    info.cch = kTitleSize;
    if (!GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &info) || !text[0]) continue;
    tv::LtsTranslateText(tv::g.ltsModuleName, text, kTitleSize);
    info.dwTypeData = text;
    SetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &info);
  }
}

// The context menu's command at the cursor, 0 when none was chosen.
UINT ContextCommand(HWND dialog) {
  tv::unique_hmenu menu(LoadMenuW(tv::g.resources, MAKEINTRESOURCEW(IDM_REGEDIT_CONTEXT)));
  HMENU popup = menu ? GetSubMenu(menu.get(), 0) : nullptr;
  if (!popup) return 0;
  TranslateMenu(popup);
  POINT at;
  GetCursorPos(&at);
  return static_cast<UINT>(TrackPopupMenu(popup, TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON,
                                          at.x, at.y, 0, dialog, nullptr));
}

void AddItem(const EditRegCtl &c) {
  if (tv::RunDialog(IDD_REGEDIT_ADD, AddItem_Dialog_Callback,
                    reinterpret_cast<LPARAM>(&c)) == IDOK)
    UpdateButtons(c);
}

}  // namespace

INT_PTR CALLBACK EditRegCtl_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                            LPARAM lParam) {
  EditRegCtl *c = tv::DialogRecord<EditRegCtl>(dialog, message, lParam);
  if (!c) return FALSE;
  switch (message) {
    case WM_INITDIALOG:
      c->dialog = dialog;
      c->list = GetDlgItem(dialog, IDC_REGEDIT_LIST);
      if (Given(c->title)) SetWindowTextW(dialog, c->title);
      SendMessageW(c->list, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT,
                   LVS_EX_FULLROWSELECT);
      CreateColumns(*c);
      Tavona_Registry_To_ListView(c->root, c->key, c->list);
      UpdateButtons(*c);
      return TRUE;
    case WM_NOTIFY: {
      const NMHDR *h = reinterpret_cast<const NMHDR *>(lParam);
      if (!h || h->idFrom != IDC_REGEDIT_LIST) break;
      // With nothing selected there is no menu, so its Add needs a selection.
      if (h->code == NM_RCLICK && Tavona_ListView_GetSelectedItemCount(c->list) > 0) {
        switch (ContextCommand(dialog)) {
          case IDM_REGEDIT_ADD: AddItem(*c); break;
          case IDM_REGEDIT_DELETE: DeleteSelected(*c); break;
        }
      }
      if (h->code == NM_RCLICK || h->code == LVN_ITEMCHANGED) UpdateButtons(*c);
      break;
    }
    case WM_COMMAND:
      switch (LOWORD(wParam)) {
        case IDOK:
          Tavona_ListView_To_Registry(c->list, c->root, c->key);
          EndDialog(dialog, 1);
          return TRUE;
        case IDCANCEL: EndDialog(dialog, 2); return TRUE;
        case IDC_REGEDIT_ADD: AddItem(*c); return TRUE;
        case IDC_REGEDIT_DELETE: DeleteSelected(*c); return TRUE;
        case IDC_REGEDIT_DEFAULTS: RestoreDefaults(*c); return TRUE;
      }
      break;
  }
  return FALSE;
}

INT_PTR CALLBACK AddItem_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                         LPARAM lParam) {
  EditRegCtl *c = tv::DialogRecord<EditRegCtl>(dialog, message, lParam);
  if (!c) return FALSE;
  switch (message) {
    case WM_INITDIALOG: {
      if (Given(c->addTitle)) SetWindowTextW(dialog, c->addTitle);
      for (int column = 0; column < 2; ++column) {
        WCHAR title[kTitleSize] = {};
        LVCOLUMNW col = {};
        col.mask = LVCF_TEXT;
        col.pszText = title;
        col.cchTextMax = kTitleSize;
        if (SendMessageW(c->list, LVM_GETCOLUMNW, static_cast<WPARAM>(column),
                         reinterpret_cast<LPARAM>(&col)))
          SetDlgItemTextW(dialog, column ? IDC_REGEDIT_DATA_LABEL : IDC_REGEDIT_NAME_LABEL,
                          col.pszText ? col.pszText : title);
      }
      SendDlgItemMessageW(dialog, IDC_REGEDIT_NAME, EM_LIMITTEXT, kAddFieldSize - 1, 0);
      SendDlgItemMessageW(dialog, IDC_REGEDIT_DATA, EM_LIMITTEXT, kAddFieldSize - 1, 0);
      return TRUE;
    }
    case WM_COMMAND:
      switch (LOWORD(wParam)) {
        case IDOK: {
          WCHAR name[kAddFieldSize], data[kAddFieldSize];
          GetDlgItemTextW(dialog, IDC_REGEDIT_NAME, name, kAddFieldSize);
          GetDlgItemTextW(dialog, IDC_REGEDIT_DATA, data, kAddFieldSize);
          if (!name[0]) {
            tv::ReportError(IDS_ERR_ITEM_NAME_EMPTY);
            SetFocus(GetDlgItem(dialog, IDC_REGEDIT_NAME));
            return TRUE;
          }
          int row = Tavona_ListView_InsertItem(c->list, -1, name, 0, 0);
          if (row >= 0) {
            Tavona_ListView_SetItemText(c->list, row, 1, data);
            Tavona_ListView_SelectItem(c->list, row);
            SendMessageW(c->list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
          }
          EndDialog(dialog, 1);
          return TRUE;
        }
        case IDCANCEL: EndDialog(dialog, 2); return TRUE;
      }
      break;
  }
  return FALSE;
}

INT WINAPI Tavona_EditRegistrySection(HWND parent, HKEY root, const WCHAR *key,
                                      const WCHAR *title, const WCHAR *columns,
                                      const WCHAR *addTitle, const WCHAR *defaults,
                                      LPARAM value1, LPARAM value2) {
  (void)parent;  // the dialog helper owns the editor to the active window
  tv::HeapPtr<EditRegCtl> c(static_cast<EditRegCtl *>(tv::AllocBytes(sizeof(EditRegCtl))));
  if (!c) return 2;  // reported (1300) by the allocation helper
  *c.get() = EditRegCtl{root, key, title, columns, addTitle, defaults, value1, value2,
                        nullptr, nullptr};
  INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&icc);
  return tv::RunDialog(IDD_REGEDIT, EditRegCtl_Dialog_Callback,
                       reinterpret_cast<LPARAM>(c.get())) == 1
             ? 1
             : 2;
}
