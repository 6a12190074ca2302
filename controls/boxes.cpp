// List box, combo box and list view helpers: the kind of a box is looked up
// on every call, and list boxes get LB_ messages, everything else CB_ ones.
#include <tavona/controls.h>

#include <commctrl.h>

namespace {

bool IsList(HWND box) { return Tavona_GetBoxType(box) == TAVONA_BOX_LISTBOX; }

// The selection rule of the box helpers: an index at or beyond the count
// selects the last entry (0 in an empty box); -1 clears the selection.
INT SetBoxIndex(HWND box, INT index) {
  bool list = IsList(box);
  INT count = static_cast<INT>(SendMessageW(box, list ? LB_GETCOUNT : CB_GETCOUNT, 0, 0));
  if (index >= count) index = count > 0 ? count - 1 : 0;
  LRESULT r = SendMessageW(box, list ? LB_SETCURSEL : CB_SETCURSEL, static_cast<WPARAM>(index), 0);
  return r < 0 ? -1 : 0;
}

}  // namespace

INT WINAPI Tavona_GetBoxType(HWND box) {
  WCHAR name[100];
  int len = GetClassNameW(box, name, 100);
  if (len <= 0) return TAVONA_BOX_OTHER;
  struct Kind {
    const WCHAR *name;
    INT kind;
  };
  static const Kind kinds[] = {{L"LISTBOX", TAVONA_BOX_LISTBOX},
                               {L"COMBOBOX", TAVONA_BOX_COMBOBOX},
                               {L"SYSLISTVIEW32", TAVONA_BOX_LISTVIEW}};
  for (const Kind &k : kinds)
    if (CompareStringOrdinal(name, len, k.name, -1, TRUE) == CSTR_EQUAL) return k.kind;
  return TAVONA_BOX_OTHER;
}

void WINAPI Tavona_ResetBox(HWND box) {
  if (!box) return;
  switch (Tavona_GetBoxType(box)) {
    case TAVONA_BOX_LISTBOX: SendMessageW(box, LB_RESETCONTENT, 0, 0); break;
    case TAVONA_BOX_COMBOBOX: SendMessageW(box, CB_RESETCONTENT, 0, 0); break;
    case TAVONA_BOX_LISTVIEW: SendMessageW(box, LVM_DELETEALLITEMS, 0, 0); break;
  }
}

INT WINAPI Tavona_AddBoxEntry(HWND box, const WCHAR *text, LPARAM itemData, INT position,
                              UINT flags) {
  if (!text) text = L"";
  bool list = IsList(box);
  LPARAM textArg = reinterpret_cast<LPARAM>(text);
  if (flags & TAVONA_ADD_UNIQUE) {
    // Searching from entry 0 wraps around, so every entry is looked at.
    LRESULT found = SendMessageW(box, list ? LB_FINDSTRINGEXACT : CB_FINDSTRINGEXACT, 0, textArg);
    if (found >= 0) {
      SendMessageW(box, list ? LB_SETITEMDATA : CB_SETITEMDATA, static_cast<WPARAM>(found),
                   itemData);
      SetBoxIndex(box, static_cast<INT>(found));
      return static_cast<INT>(found);
    }
  }
  LRESULT index =
      position == -1
          ? SendMessageW(box, list ? LB_ADDSTRING : CB_ADDSTRING, 0, textArg)
          : SendMessageW(box, list ? LB_INSERTSTRING : CB_INSERTSTRING,
                         static_cast<WPARAM>(position), textArg);
  if (index < 0) return -1;
  SendMessageW(box, list ? LB_SETITEMDATA : CB_SETITEMDATA, static_cast<WPARAM>(index), itemData);
  return static_cast<INT>(index);
}
