// File names taken apart and put together in the caller's buffers.
#include <tavona/files.h>

#include "files/filesys.h"
#include "frame/platform.h"
#include "base/wstr.h"

namespace {

constexpr int kAssembly = 260;  // the classic path limit

bool IsSeparator(WCHAR c) { return c == '\\' || c == '/'; }

bool IsAbsolute(const WCHAR *name) {
  if (IsSeparator(name[0])) return true;
  for (; *name; ++name)
    if (*name == ':') return true;
  return false;
}

// The last dot of the name, separators notwithstanding; null without one.
WCHAR *LastDot(WCHAR *name) {
  WCHAR *dot = nullptr;
  for (; *name; ++name)
    if (*name == '.') dot = name;
  return dot;
}

// A part longer than the whole buffer is refused anyway, so its length is
// only looked at up to there.
int PartLength(const WCHAR *s) { return tv::LenBounded(s, kAssembly + 1); }

}  // namespace

INT WINAPI Tavona_Assemble_FileName(WCHAR *dst, const WCHAR *path, const WCHAR *name,
                                    const WCHAR *extension, INT dstSize) {
  WCHAR work[kAssembly];
  int len = 0;
  int budget = kAssembly;
  if (path) {
    int n = PartLength(path);
    budget -= n;
    if (budget < 3) return -1;
    tv::CopyRaw(work, path, n);
    len = n;
    // Also for an empty path: the result is then a rooted name.
    if (len == 0 || !IsSeparator(work[len - 1])) work[len++] = '\\';
  }
  if (name) {
    int n = PartLength(name);
    budget -= n;
    if (budget < 3) return -1;
    tv::CopyRaw(work + len, name, n);
    len += n;
  }
  if (extension) {
    int n = PartLength(extension);
    budget -= n;
    if (budget < 3) return -1;
    if (n > 0 && extension[0] == '.') {
      ++extension;
      --n;
    }
    if (len == 0 || work[len - 1] != '.') work[len++] = '.';
    tv::CopyRaw(work + len, extension, n);
    len += n;
  }
  work[len] = 0;
  tv::BoundedCopy(dst, work, dstSize);
  return 0;
}

INT WINAPI Tavona_AddPath(WCHAR *name, INT nameSize, const WCHAR *base, UINT flags,
                          HMODULE module) {
  // A size below 1 holds no name: refused before the name is moved.
  if (!name || !base || nameSize < 1) return -1;
  WCHAR moduleDir[256];
  if (tv::plat::CompareNoCaseCrt(base, TEXT("[MODULEPATH]")) == 0) {
    tv::plat::ModuleFileName(module, moduleDir, 256);
    Tavona_StripFileName(moduleDir);
    base = moduleDir;
  }
  if (IsAbsolute(name)) {
    if (flags & TAVONA_ADDPATH_KEEPABSOLUTE) return 1;
    Tavona_StripPath(name);
  }
  return Tavona_Assemble_FileName(name, base, name, nullptr, nameSize);
}

void WINAPI Tavona_GetExtension(const WCHAR *name, WCHAR *dst, INT dstSize) {
  if (!dst || dstSize < 1) return;
  const WCHAR *dot = nullptr;
  for (const WCHAR *p = name; p && *p; ++p)
    if (*p == '.') dot = p;
  tv::BoundedCopy(dst, dot ? dot + 1 : TEXT(""), dstSize);
  dst[dstSize - 1] = 0;
}

INT WINAPI Tavona_CheckExtension(const WCHAR *name, const WCHAR *extension) {
  if (!name || !extension) return 0;
  WCHAR found[100];
  Tavona_GetExtension(name, found, 100);
  return tv::plat::CompareNoCaseLocale(found, extension) == 0 ? 1 : 0;
}

WCHAR *WINAPI Tavona_StripExtension(WCHAR *name) {
  if (!name) return nullptr;
  WCHAR *dot = LastDot(name);
  if (dot) *dot = 0;
  return dot;
}

void WINAPI Tavona_StripFileName(WCHAR *path) {
  if (!path) return;
  for (int i = tv::Len(path) - 1; i >= 0; --i) {
    WCHAR c = path[i];
    if (c == ':') return;
    if (IsSeparator(c)) {
      // The separator of a root stays: "\" and "C:\".
      if (i > 0 && path[i - 1] != ':') path[i] = 0;
      return;
    }
    path[i] = 0;
  }
}

WCHAR *WINAPI Tavona_StripPath(WCHAR *path) {
  if (!path) return nullptr;
  int start = 0, len = 0;
  for (; path[len]; ++len)
    if (IsSeparator(path[len]) || path[len] == ':') start = len + 1;
  if (start > 0) {
    tv::CopyRaw(path, path + start, len - start);
    path[len - start] = 0;
  }
  return path;
}

void WINAPI Tavona_StripTrailingSlashes(WCHAR *path) {
  if (tv::IsBlank(path)) return;
  int len = tv::Len(path);
  while (len > 0 && IsSeparator(path[len - 1])) path[--len] = 0;
}

INT WINAPI Tavona_ConvertFilenameToWildcard(WCHAR *name, INT nameSize) {
  if (!name) return -1;
  WCHAR dir[256];
  WCHAR extension[100];
  // A name too long for the copy would leave an empty directory and give
  // a rooted "\*.ext"; it is refused instead.
  if (!tv::BoundedCopy(dir, name, 256)) return -1;
  Tavona_StripFileName(dir);
  Tavona_GetExtension(name, extension, 100);
  return Tavona_Assemble_FileName(name, dir, TEXT("*"), extension, nameSize);
}

INT WINAPI Tavona_GetProfileName(HMODULE module, WCHAR *dst, INT dstSize) {
  if (!dst || dstSize < 1) return -1;
  // The folder goes before the destination's size counts, so a destination
  // that holds the bare name gets it whatever the folder's length.
  WCHAR full[1024];
  tv::plat::ModuleFileName(module, full, 1024);
  Tavona_StripPath(full);
  Tavona_StripExtension(full);
  int len = tv::Len(full);
  // One character more than ".ini" and the terminator need, as always.
  if (len + 5 >= dstSize) {
    tv::BoundedCopy(dst, full, dstSize);
    return len + 5;
  }
  tv::CopyRaw(dst, full, len);
  tv::CopyRaw(dst + len, TEXT(".ini"), 5);
  return 0;
}

void WINAPI Tavona_GetFileNameDisplay(WCHAR *dst, INT dstSize, const WCHAR *name, INT, UINT) {
  if (!dst || dstSize < 1) return;
  tv::BoundedCopy(dst, name ? name : TEXT(""), dstSize);
  dst[dstSize - 1] = 0;
}

INT WINAPI Tavona_IsFileNamePure(const WCHAR *name) {
  for (; name && *name; ++name)
    if (*name == ':' || IsSeparator(*name)) return 0;
  return 1;
}

INT WINAPI Tavona_IsFilePathAbsolute(const WCHAR *path) {
  return path && IsAbsolute(path) ? 1 : 0;
}

INT WINAPI Tavona_DoesFileExist(const WCHAR *name) {
  return name && tv::plat::FileExists(name) ? 1 : 0;
}
