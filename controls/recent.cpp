// Recent file lists: values F01 (most recent) to F20 under a key of the
// current user, rewritten as a whole on every push, shown in boxes and at
// the end of menus.
#include <tavona/controls.h>
#include <tavona/files.h>
#include <tavona/settings.h>

#include "frame/alloc.h"
#include "frame/handles.h"
#include "settings/regread.h"
#include "base/wstr.h"

namespace {

constexpr int kWorkSize = 20000;
constexpr int kMaxEntries = 20;
constexpr int kEntrySize = 256;
constexpr int kEnumNameSize = 200;
constexpr DWORD kEnumDataBytes = 256;  // so entries of 128 characters end the walk

void EntryName(int position, WCHAR (&out)[16]) { tv::Format(out, 16, L"F%02ld", position); }

bool SameFile(const WCHAR *a, const WCHAR *b) {
  return CompareStringOrdinal(a, -1, b, -1, TRUE) == CSTR_EQUAL;
}

}  // namespace

void WINAPI Tavona_PushRecentListFile(const WCHAR *key, const WCHAR *file) {
  if (tv::IsBlank(key) || tv::IsBlank(file)) return;
  tv::HeapPtr<WCHAR> list(tv::AllocWideChars(kWorkSize));
  if (!list) return;
  list[0] = 0;
  tv::Appender out(list.get(), kWorkSize);
  out.Append(file);
  int entries = 1;
  {
    tv::unique_hkey k;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, key, 0, KEY_ALL_ACCESS, k.put()) == ERROR_SUCCESS) {
      WCHAR name[kEnumNameSize];
      WCHAR data[kEnumDataBytes / sizeof(WCHAR) + 1];  // room for a missing zero
      // Entries past the twentieth would be dropped by the rewrite anyway.
      for (DWORD index = 0; entries < kMaxEntries; ++index) {
        DWORD nameLen = kEnumNameSize, dataLen = kEnumDataBytes;
        name[0] = 0;
        for (WCHAR &c : data) c = 0;
        if (RegEnumValueW(k.get(), index, name, &nameLen, nullptr, nullptr,
                          reinterpret_cast<BYTE *>(data), &dataLen) != ERROR_SUCCESS)
          break;
        // An empty entry would end every reading of the list there.
        if (!data[0] || SameFile(data, file)) continue;
        if (out.Length() + 1 + tv::Len(data) >= kWorkSize) break;
        out.Append(WCHAR('\t'));
        out.Append(data);
        ++entries;
      }
    }
  }
  RegDeleteKeyW(HKEY_CURRENT_USER, key);
  const WCHAR *cursor = list.get();
  WCHAR token[kEntrySize];
  for (int position = 1; position <= kMaxEntries && tv::ReadField(cursor, '\t', token, kEntrySize);
       ++position) {
    WCHAR name[16];
    EntryName(position, name);
    tv::WriteSettingString(HKEY_CURRENT_USER, key, nullptr, nullptr, name, token);
  }
}

void WINAPI Tavona_GetRecentListFile(const WCHAR *key, INT index, WCHAR *out, INT size) {
  if (!out || size < 1) return;
  WCHAR name[16];
  EntryName(index + 1, name);
  tv::ReadRegistryString(HKEY_CURRENT_USER, key, nullptr, name, L"", out, size);
}

void WINAPI Tavona_FillRecentListToBox(HWND box, const WCHAR *key, INT count, LPARAM itemData) {
  Tavona_ResetBox(box);
  WCHAR entry[kEntrySize];
  for (INT i = 0; i < count; ++i) {
    Tavona_GetRecentListFile(key, i, entry, kEntrySize);
    if (tv::IsBlank(entry)) break;
    Tavona_AddBoxEntry(box, entry, itemData, -1, TAVONA_ADD_UNIQUE);
  }
}

INT WINAPI Tavona_AppendRecentListToMenuExt(HMENU menu, const WCHAR *key, INT position,
                                            UINT firstId, INT count, INT displayLength,
                                            UINT displayFlags, LPARAM) {
  if (!menu) return 0;
  for (int p = GetMenuItemCount(menu) - 1; p >= 0 && p >= position; --p)
    DeleteMenu(menu, static_cast<UINT>(p), MF_BYPOSITION);
  MENUITEMINFOW item = {};
  item.cbSize = sizeof item;
  item.fMask = MIIM_FTYPE;
  item.fType = MFT_SEPARATOR;
  BOOL inserted = InsertMenuItemW(menu, static_cast<UINT>(position), TRUE, &item);
  if (count < 1) return inserted;
  WCHAR entry[kEntrySize], display[kEntrySize], text[kEntrySize + 16];
  for (INT i = 1; i <= count; ++i) {
    Tavona_GetRecentListFile(key, i - 1, entry, kEntrySize);
    if (tv::IsBlank(entry)) return 1;
    const WCHAR *shown = entry;
    if (displayLength > 0 && tv::Len(entry) > displayLength) {
      Tavona_GetFileNameDisplay(display, kEntrySize, entry, displayLength, displayFlags);
      shown = display;
    }
    tv::Format(text, kEntrySize + 16, L"&%ld:  %s", i, shown);
    item.fMask = MIIM_FTYPE | MIIM_ID | MIIM_STRING;
    item.fType = MFT_STRING;
    item.wID = firstId + static_cast<UINT>(i) - 1;
    item.dwTypeData = text;
    InsertMenuItemW(menu, static_cast<UINT>(position + i), TRUE, &item);
  }
  return count;
}

INT WINAPI Tavona_AppendRecentListToMenu(HMENU menu, const WCHAR *key, INT position,
                                         UINT firstId, INT count, LPARAM unused) {
  return Tavona_AppendRecentListToMenuExt(menu, key, position, firstId, count, 0, 0, unused);
}
