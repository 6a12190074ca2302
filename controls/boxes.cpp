// List box, combo box and list view helpers: the kind of a box is looked up
// on every call, and list boxes get LB_ messages, everything else CB_ ones.
#include <tavona/controls.h>

#include <tavona/frame.h>
#include <tavona/text.h>

#include <commctrl.h>

#include "frame/alloc.h"
#include "base/wstr.h"
#include "frame/lts.h"
#include "tvres.h"

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

namespace {

// What the fill helpers empty a box with: the list-box message for list
// boxes, the combo-box message for every other kind, as every helper but
// Tavona_ResetBox does.
void EmptyBox(HWND box) {
  if (box) SendMessageW(box, IsList(box) ? LB_RESETCONTENT : CB_RESETCONTENT, 0, 0);
}

}  // namespace

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

namespace {

UINT Msg(bool list, UINT lb, UINT cb) { return list ? lb : cb; }

// The index an entry-naming helper works on: -1 stands for the selection.
INT Resolve(HWND box, bool list, INT index) {
  if (index != -1) return index;
  return static_cast<INT>(SendMessageW(box, Msg(list, LB_GETCURSEL, CB_GETCURSEL), 0, 0));
}

LRESULT TextLen(HWND box, bool list, INT index) {
  return SendMessageW(box, Msg(list, LB_GETTEXTLEN, CB_GETLBTEXTLEN), static_cast<WPARAM>(index),
                      0);
}

// Owner-drawn boxes without strings keep the item data where the text
// would be; their text messages copy its bytes, unterminated.
bool HoldsStrings(HWND box, bool list) {
  LONG_PTR style = GetWindowLongPtrW(box, GWL_STYLE);
  if (list)
    return !(style & (LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE)) || (style & LBS_HASSTRINGS);
  if (Tavona_GetBoxType(box) != TAVONA_BOX_COMBOBOX) return true;
  return !(style & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE)) || (style & CBS_HASSTRINGS);
}

// Reads the text of an entry into out (size characters) when it fits; ""
// and false otherwise (also for entries without a text).
bool ReadEntry(HWND box, bool list, INT index, WCHAR *out, int size) {
  out[0] = 0;
  if (!HoldsStrings(box, list)) return false;
  LRESULT len = TextLen(box, list, index);
  if (len < 0 || len >= size) return false;
  return SendMessageW(box, Msg(list, LB_GETTEXT, CB_GETLBTEXT), static_cast<WPARAM>(index),
                      reinterpret_cast<LPARAM>(out)) >= 0;
}

LPARAM ItemData(HWND box, bool list, INT index) {
  return SendMessageW(box, Msg(list, LB_GETITEMDATA, CB_GETITEMDATA), static_cast<WPARAM>(index),
                      0);
}

INT Count(HWND box, bool list) {
  return static_cast<INT>(SendMessageW(box, Msg(list, LB_GETCOUNT, CB_GETCOUNT), 0, 0));
}

INT FindExact(HWND box, bool list, INT after, const WCHAR *text) {
  return static_cast<INT>(SendMessageW(box, Msg(list, LB_FINDSTRINGEXACT, CB_FINDSTRINGEXACT),
                                       static_cast<WPARAM>(after),
                                       reinterpret_cast<LPARAM>(text)));
}

// Length without the trailing characters of code 32 or less.
int TrimmedLen(const WCHAR *s) {
  int n = tv::Len(s);
  while (n > 0 && s[n - 1] <= 32) --n;
  return n;
}

LPARAM ParseNumber(const WCHAR *field, bool hex) {
  if (hex) {
    DWORD value = 0;
    // Signed as the decimal form, so "FFFFFFFF" and "-1" give the same
    // item data.
    return Tavona_HexStringToLong(field, &value) == 0
               ? static_cast<LPARAM>(static_cast<LONG>(value))
               : 0;
  }
  return _wtol(field);
}

}  // namespace

INT WINAPI Tavona_IsListBox(HWND box) { return Tavona_GetBoxType(box) == TAVONA_BOX_LISTBOX; }

INT WINAPI Tavona_IsComboBox(HWND box) { return Tavona_GetBoxType(box) == TAVONA_BOX_COMBOBOX; }

INT WINAPI Tavona_IsListOrComboBox(HWND box) {
  INT kind = Tavona_GetBoxType(box);
  return kind == TAVONA_BOX_LISTBOX || kind == TAVONA_BOX_COMBOBOX;
}

INT WINAPI Tavona_GetBoxCount(HWND box) { return Count(box, IsList(box)); }

INT WINAPI Tavona_GetBoxIndex(HWND box) {
  return static_cast<INT>(SendMessageW(box, Msg(IsList(box), LB_GETCURSEL, CB_GETCURSEL), 0, 0));
}

INT WINAPI Tavona_SetBoxIndex(HWND box, INT index) { return SetBoxIndex(box, index); }

INT WINAPI Tavona_GetBoxEntry(HWND box, INT index, WCHAR *out, INT outSize) {
  if (!out || outSize < 1) return -1;
  out[0] = 0;
  bool list = IsList(box);
  index = Resolve(box, list, index);
  if (index < 0) return -1;
  return ReadEntry(box, list, index, out, outSize) ? 0 : -1;
}

LPARAM WINAPI Tavona_GetItemData(HWND box, INT index) {
  if (!box) return 0;
  bool list = IsList(box);
  if (index < 0) index = Resolve(box, list, -1);
  if (index < 0) return 0;
  return ItemData(box, list, index);
}

void WINAPI Tavona_SetItemData(HWND box, INT index, LPARAM value) {
  if (!box) return;
  bool list = IsList(box);
  if (index < 0) index = Resolve(box, list, -1);
  if (index < 0) return;
  SendMessageW(box, Msg(list, LB_SETITEMDATA, CB_SETITEMDATA), static_cast<WPARAM>(index), value);
}

INT WINAPI Tavona_DeleteBoxEntry(HWND box, INT index) {
  bool list = IsList(box);
  index = Resolve(box, list, index);
  if (index < 0) return -1;
  LRESULT r =
      SendMessageW(box, Msg(list, LB_DELETESTRING, CB_DELETESTRING), static_cast<WPARAM>(index), 0);
  return r < 0 ? -1 : 0;
}

INT WINAPI Tavona_GetBoxIndexByItemText(HWND box, const WCHAR *text) {
  if (!text) text = L"";
  INT r = FindExact(box, IsList(box), 0, text);
  return r < 0 ? -1 : r;
}

INT WINAPI Tavona_GetBoxIndexByItemData(HWND box, LPARAM value) {
  bool list = IsList(box);
  INT count = Count(box, list);
  for (INT i = 0; i < count; ++i)
    if (ItemData(box, list, i) == value) return i;
  return -1;
}

INT WINAPI Tavona_GetBoxIndexByItemDataString(HWND box, const WCHAR *text) {
  if (!text) return -1;
  bool list = IsList(box);
  INT count = Count(box, list);
  for (INT i = 0; i < count; ++i) {
    LPARAM data = ItemData(box, list, i);
    if (data == 0 || data == (list ? LB_ERR : CB_ERR)) continue;
    if (tv::Compare(reinterpret_cast<const WCHAR *>(data), text) == 0) return i;
  }
  return -1;
}

INT WINAPI Tavona_FindBoxEntry(HWND box, const WCHAR *text, INT start, UINT flags) {
  if (!text) text = L"";
  bool list = IsList(box);
  if (!(flags & TAVONA_FIND_TRIMMED)) {
    // The controls take only -1 and the indices of entries as a start (a
    // start below -1 reads far outside the box); any other start searches
    // the whole box, as the wrap-around from the last entry does.
    if (start < -1 || start >= Count(box, list)) start = -1;
    INT r = FindExact(box, list, start, text);
    return r < 0 ? -1 : r;
  }
  WCHAR wanted[500];
  int wantedLen = tv::LenBounded(text, 499);
  tv::CopyRaw(wanted, text, wantedLen);
  wanted[wantedLen] = 0;
  wantedLen = TrimmedLen(wanted);
  INT count = Count(box, list);
  WCHAR entry[500];
  for (INT i = 0; i < count; ++i) {
    if (!ReadEntry(box, list, i, entry, 500)) continue;
    if (TrimmedLen(entry) == wantedLen && tv::EqualN(entry, wanted, wantedLen)) return i;
  }
  return -1;
}

void WINAPI Tavona_FillBox(HWND box, WCHAR separator, const WCHAR *list) {
  Tavona_FillBoxExtended(box, separator, list, 0);
}

void WINAPI Tavona_FillBoxExtended(HWND box, WCHAR separator, const WCHAR *list, UINT flags) {
  if (!list) list = L"";
  if (!(flags & TAVONA_FILL_KEEP)) EmptyBox(box);
  UINT addFlags = (flags & TAVONA_FILL_UNIQUE) ? TAVONA_ADD_UNIQUE : 0;
  const WCHAR *cursor = list;
  WCHAR text[300], number[50], string[50];
  while (tv::ReadField(cursor, separator, text, 300)) {
    LPARAM data = 0;
    if (flags & TAVONA_FILL_NUMBER) {
      tv::ReadField(cursor, separator, number, 50);
      data = ParseNumber(number, (flags & TAVONA_FILL_HEX) != 0);
    }
    if (flags & TAVONA_FILL_STRING) {
      tv::ReadField(cursor, separator, string, 50);
      data = reinterpret_cast<LPARAM>(tv::DuplicateWideString(string));
    }
    Tavona_AddBoxEntry(box, text, data, -1, addFlags);
  }
}

void WINAPI Tavona_FillBoxByTable(HWND box, const TAVONA_BOX_ROW *table, INT count, UINT flags) {
  if (!table || count <= 0) return;
  HMODULE res = Tavona_GetResourceModule();
  UINT addFlags = (flags & TAVONA_FILL_UNIQUE) ? TAVONA_ADD_UNIQUE : 0;
  WCHAR text[200];
  for (INT i = 0; i < count; ++i) {
    text[0] = 0;
    if (res) tv::LoadTranslatedString(res, table[i].stringId, text, 200);
    LPARAM data = 0;
    if (flags & TAVONA_FILL_NUMBER) data = table[i].number;
    if (flags & TAVONA_FILL_STRING) data = reinterpret_cast<LPARAM>(tv::DuplicateWideString(table[i].string));
    Tavona_AddBoxEntry(box, text, data, -1, addFlags);
  }
}

void WINAPI Tavona_DeleteBoxItemDataPointers(HWND box) {
  bool list = IsList(box);
  INT count = Count(box, list);
  for (INT i = 0; i < count; ++i) {
    LPARAM data = ItemData(box, list, i);
    if (data != (list ? LB_ERR : CB_ERR)) tv::FreeMem(reinterpret_cast<void *>(data));
  }
}

INT WINAPI Tavona_CopyBox(HWND source, HWND target) {
  bool fromList = IsList(source), toList = IsList(target);
  INT count = Count(source, fromList);
  LRESULT last = 0;
  for (INT i = 0; i < count; ++i) {
    LRESULT len = TextLen(source, fromList, i);
    if (len < 0) continue;
    tv::HeapPtr<WCHAR> text(tv::AllocWideChars(static_cast<UINT>(len) + 1));
    if (!text) break;
    if (!ReadEntry(source, fromList, i, text.get(), static_cast<int>(len) + 1)) continue;
    LPARAM data = ItemData(source, fromList, i);
    last = SendMessageW(target, Msg(toList, LB_ADDSTRING, CB_ADDSTRING), 0,
                        reinterpret_cast<LPARAM>(text.get()));
    if (last >= 0)
      SendMessageW(target, Msg(toList, LB_SETITEMDATA, CB_SETITEMDATA),
                   static_cast<WPARAM>(last), data);
  }
  return static_cast<INT>(last);
}

INT WINAPI Tavona_DeleteIntersectingBoxEntries(HWND box, HWND other) {
  bool list = IsList(box), otherList = IsList(other);
  INT count = Count(other, otherList);
  LRESULT last = 0;
  WCHAR text[500];
  for (INT i = 0; i < count; ++i) {
    if (!ReadEntry(other, otherList, i, text, 500)) continue;
    INT found = FindExact(box, list, -1, text);
    if (found < 0) continue;
    last = SendMessageW(box, Msg(list, LB_DELETESTRING, CB_DELETESTRING),
                        static_cast<WPARAM>(found), 0);
  }
  return static_cast<INT>(last);
}

void WINAPI Tavona_MoveBoxEntry(HWND box, INT index, INT direction) {
  bool list = IsList(box);
  if (index < 0) index = Resolve(box, list, -1);
  if (index < 0) return;
  INT count = Count(box, list);
  INT to = index;
  if (direction == TAVONA_MOVE_UP && index > 0) to = index - 1;
  if (direction == TAVONA_MOVE_DOWN && index < count - 1) to = index + 1;
  if (to != index) {
    WCHAR text[200];
    if (!ReadEntry(box, list, index, text, 200)) return;
    LPARAM data = ItemData(box, list, index);
    SendMessageW(box, Msg(list, LB_DELETESTRING, CB_DELETESTRING), static_cast<WPARAM>(index), 0);
    LRESULT at = SendMessageW(box, Msg(list, LB_INSERTSTRING, CB_INSERTSTRING),
                              static_cast<WPARAM>(to), reinterpret_cast<LPARAM>(text));
    if (at < 0) return;
    SendMessageW(box, Msg(list, LB_SETITEMDATA, CB_SETITEMDATA), static_cast<WPARAM>(at), data);
    to = static_cast<INT>(at);
  }
  SetBoxIndex(box, to);
}

INT WINAPI Tavona_UnselectAllBoxEntries(HWND box) {
  if (!IsList(box)) return SetBoxIndex(box, -1);
  LRESULT last = 0;
  for (INT i = Count(box, true) - 1; i >= 0; --i)
    last = SendMessageW(box, LB_SETSEL, FALSE, static_cast<LPARAM>(i));
  return static_cast<INT>(last);
}

INT WINAPI Tavona_SelectBoxEntries(HWND box, WCHAR separator, const WCHAR *list, UINT flags) {
  if (!list) list = L"";
  bool isList = IsList(box);
  if (!(flags & TAVONA_FILL_KEEP)) Tavona_UnselectAllBoxEntries(box);
  const WCHAR *cursor = list;
  WCHAR item[100], skipped[50];
  INT selected = 0;
  while (tv::ReadField(cursor, separator, item, 100)) {
    if (flags & TAVONA_FILL_NUMBER) tv::ReadField(cursor, separator, skipped, 50);
    if (flags & TAVONA_FILL_STRING) tv::ReadField(cursor, separator, skipped, 50);
    INT found = FindExact(box, isList, -1, item);
    if (found < 0) continue;
    if (isList)
      SendMessageW(box, LB_SETSEL, TRUE, static_cast<LPARAM>(found));
    else
      SetBoxIndex(box, found);
    ++selected;
  }
  return selected;
}

INT WINAPI Tavona_ReadBox(HWND box, WCHAR separator, UINT flags, WCHAR *out, INT outSize) {
  if (!out || outSize < 1) return 0;
  out[0] = 0;
  bool list = IsList(box);
  INT count = Count(box, list);
  INT current = (flags & TAVONA_READ_SELECTED) && !list ? Resolve(box, false, -1) : -1;
  tv::Appender all(out, outSize);
  const WCHAR sep[2] = {separator, 0};
  WCHAR text[200], number[20];
  bool first = true;
  for (INT i = 0; i < count; ++i) {
    if (flags & TAVONA_READ_SELECTED) {
      if (list ? SendMessageW(box, LB_GETSEL, static_cast<WPARAM>(i), 0) <= 0 : i != current)
        continue;
    }
    if (!ReadEntry(box, list, i, text, 200)) continue;
    // One entry at a time, so a list that does not fit ends after its last
    // whole entry.
    WCHAR entry[300];
    entry[0] = 0;
    tv::Appender one(entry, 300);
    if (!first) one.Append(sep);
    one.Append(text);
    LPARAM data = ItemData(box, list, i);
    if (flags & TAVONA_FILL_NUMBER) {
      tv::Format(number, 20, L"%d", static_cast<INT>(data));
      one.Append(sep);
      one.Append(number);
    }
    if (flags & TAVONA_FILL_STRING) {
      one.Append(sep);
      if (data && data != (list ? LB_ERR : CB_ERR)) {
        const WCHAR *s = reinterpret_cast<const WCHAR *>(data);
        one.Append(s, tv::LenBounded(s, 49));
      }
    }
    if (all.Length() + tv::Len(entry) >= outSize) break;
    all.Append(entry);
    first = false;
  }
  return all.Length();
}

namespace {

// The box LocaleEnumProc adds to; one enumeration at a time.
HWND g_localeBox = nullptr;

BOOL CALLBACK LocaleEnumProc(LPWSTR localeText) {
  if (!g_localeBox || !IsWindow(g_localeBox)) return FALSE;
  DWORD lcid = 0;
  Tavona_HexStringToLong(localeText, &lcid);
  WCHAR name[100];
  if (GetLocaleInfoW(lcid, LOCALE_SLANGUAGE, name, 100) > 0)
    Tavona_AddBoxEntry(g_localeBox, name, static_cast<LPARAM>(lcid), -1, TAVONA_ADD_UNIQUE);
  return TRUE;
}

}  // namespace

BOOL WINAPI Tavona_FillLanguagesBox(HWND box) {
  EmptyBox(box);
  WCHAR pairs[1024];
  pairs[0] = 0;
  if (HMODULE res = Tavona_GetResourceModule()) tv::LoadTranslatedString(res, IDS_LANGUAGE_LIST, pairs, 1024);
  const WCHAR *cursor = pairs;
  WCHAR number[50], name[200];
  while (tv::ReadField(cursor, '|', number, 50) && tv::ReadField(cursor, '|', name, 200)) {
    LPARAM id = _wtol(number);
    INT at = Tavona_GetBoxIndexByItemText(box, name);
    if (at >= 0)
      SetBoxIndex(box, at);
    else
      Tavona_AddBoxEntry(box, name, id, -1, 0);
  }
  g_localeBox = box;
  BOOL r = EnumSystemLocalesW(LocaleEnumProc, LCID_INSTALLED);
  g_localeBox = nullptr;
  return r;
}
