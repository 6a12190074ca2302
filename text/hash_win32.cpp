// Temporary file names and the resource IDs of a module.
#include <tavona/text.h>

#include <windows.h>

#include "base/wstr.h"

namespace {

struct IdList {
  INT *ids;
  int limit;  // capacity - 1
  int count;
};

void Store(IdList &list, INT id) { list.ids[list.count++] = id; }

BOOL CALLBACK StringBlock(HMODULE module, LPCWSTR type, LPWSTR name, LONG_PTR param) {
  IdList &list = *reinterpret_cast<IdList *>(param);
  if (!IS_INTRESOURCE(name)) return TRUE;
  HRSRC info = FindResourceW(module, name, type);
  if (!info) return TRUE;
  HGLOBAL loaded = LoadResource(module, info);  // not freed: module memory
  const WORD *data = loaded ? static_cast<const WORD *>(LockResource(loaded)) : nullptr;
  if (!data) return TRUE;
  DWORD units = SizeofResource(module, info) / sizeof(WORD);
  INT base = (static_cast<INT>(reinterpret_cast<ULONG_PTR>(name)) - 1) * 16;
  DWORD at = 0;
  for (INT position = 0; at < units; ++position) {
    WORD length = data[at++];
    if (length > units - at) break;  // a damaged block ends the walk
    at += length;
    if (length == 0) continue;
    Store(list, base + position);
    // The check follows the store: a capacity of 1 still stores one ID.
    if (list.count >= list.limit) return FALSE;
  }
  return TRUE;
}

BOOL CALLBACK NamedResource(HMODULE, LPCWSTR, LPWSTR name, LONG_PTR param) {
  IdList &list = *reinterpret_cast<IdList *>(param);
  if (list.count >= list.limit) return FALSE;
  INT id = -1;
  if (IS_INTRESOURCE(name)) {
    id = static_cast<INT>(reinterpret_cast<ULONG_PTR>(name));
  } else if (name[0] == '#' && tv::IsDigit(name[1])) {
    INT value = 0;
    const WCHAR *p = name + 1;
    for (; tv::IsDigit(*p); ++p) value = value * 10 + (*p - '0');
    if (!*p) id = value;
  }
  Store(list, id);
  return TRUE;
}

}  // namespace

extern "C" {

void WINAPI CreateTemporaryFileName(WCHAR *out, INT outSize, const WCHAR *prefix) {
  if (!out || outSize < 1) return;
  WCHAR folder[256];
  DWORD n = GetTempPathW(256, folder);
  if (n == 0 || n >= 256) folder[0] = 0;
  WCHAR name[MAX_PATH];
  if (!GetTempFileNameW(folder, prefix ? prefix : L"CF", 0, name)) name[0] = 0;
  tv::BoundedCopy(out, name, outSize);
  out[outSize - 1] = 0;
}

INT WINAPI Tavona_GetListOfResourceIds(HMODULE module, UINT type, INT *ids, UINT capacity) {
  if (type < 4 || type > 6) return -1;
  if (!ids || capacity < 1) return 0;
  IdList list{ids, static_cast<int>(capacity > 0x7FFFFFFF ? 0x7FFFFFFF : capacity) - 1, 0};
  LONG_PTR param = reinterpret_cast<LONG_PTR>(&list);
  if (type == 6)
    EnumResourceNamesW(module, MAKEINTRESOURCEW(6), StringBlock, param);
  else
    EnumResourceNamesW(module, MAKEINTRESOURCEW(type), NamedResource, param);
  return list.count;
}

}  // extern "C"
