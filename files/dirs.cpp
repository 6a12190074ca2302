// Directory trees: copy with filters and overwrite rules, statistics,
// directory chains, the file buffer scan, and the delete walk that mirrors
// the copy.
#include <tavona/files.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "files/dirwalk.h"
#include "frame/report.h"
#include "base/wstr.h"
#include "tvres.h"

// The records callers of both builds lay out by offset.
#if INTPTR_MAX == INT32_MAX
static_assert(offsetof(COPYDIRCTL, exclude) == 4);
static_assert(offsetof(COPYDIRCTL, referenceDate) == 8);
static_assert(offsetof(COPYDIRCTL, flags) == 12);
static_assert(offsetof(COPYDIRCTL, kilobytesCopied) == 16);
static_assert(offsetof(COPYDIRCTL, filesFound) == 24);
static_assert(offsetof(COPYDIRCTL, filesSkippedFromDate) == 52);
static_assert(offsetof(COPYDIRCTL, text) == 56);
static_assert(offsetof(COPYDIRCTL, directoriesProcessed) == 256);
static_assert(offsetof(COPYDIRCTL, directoriesCreated) == 260);
static_assert(offsetof(COPYDIRCTL, directoriesExisting) == 264);
static_assert(sizeof(COPYDIRCTL) == 268);
static_assert(sizeof(DELETEDIRCTL) == 60);
#else
static_assert(offsetof(COPYDIRCTL, exclude) == 8);
static_assert(offsetof(COPYDIRCTL, referenceDate) == 16);
static_assert(offsetof(COPYDIRCTL, flags) == 24);
static_assert(offsetof(COPYDIRCTL, kilobytesCopied) == 28);
static_assert(offsetof(COPYDIRCTL, filesSkippedFromDate) == 64);
static_assert(offsetof(COPYDIRCTL, text) == 68);
static_assert(offsetof(COPYDIRCTL, directoriesProcessed) == 268);
static_assert(offsetof(COPYDIRCTL, directoriesCreated) == 272);
static_assert(offsetof(COPYDIRCTL, directoriesExisting) == 276);
static_assert(sizeof(COPYDIRCTL) == 280);
static_assert(sizeof(DELETEDIRCTL) == 72);
#endif
static_assert(sizeof(DIRSTATISTIC) == 16);

namespace {

using tv::DirEnum;
using tv::DirList;
using tv::PathBuf;
using tv::Verdict;

bool IsSep(WCHAR c) { return c == '\\' || c == '/'; }

bool IsDirectory(const WCHAR *path) {
  DWORD a = GetFileAttributesW(path);
  return a != INVALID_FILE_ATTRIBUTES && (a & FILE_ATTRIBUTE_DIRECTORY);
}

// Answers to the in-use questions that no person gave (silent or log mode,
// an application's handler answering OK) would retry for ever.
constexpr int kUnattendedRetries = 20;

enum class InUse { Retry, Ignore, Fail };

InUse AskInUse(UINT message, const WCHAR *a, const WCHAR *b, int &unattended) {
  int answer = tv::ReportError(message, a, b);
  if (answer == IDCANCEL || answer == IDABORT) return InUse::Fail;
  if (answer == IDIGNORE) return InUse::Ignore;
  if (answer != IDRETRY) {
    if (++unattended > kUnattendedRetries) return InUse::Fail;
    Sleep(100);
  }
  return InUse::Retry;
}

// ---- Copy ----------------------------------------------------------------

class CopyRun {
 public:
  CopyRun(COPYDIRCTL *ctl, TAVONA_COPYDIR_CALLBACK callback, INT_PTR value)
      : ctl_(ctl), callback_(callback), value_(value) {}

  bool Event(const WCHAR *source, const WCHAR *destination, INT event) {
    return !callback_ || callback_(source, destination, event, ctl_, value_) != TAVONA_DIR_ABORT;
  }
  bool Prepare() {
    return filter_.Build(ctl_->include, ctl_->exclude, ctl_->flags) && src_.Init(L"") &&
           dst_.Init(L"") && srcFile_.Init(L"") && dstFile_.Init(L"");
  }
  // One pair of the lists.
  bool CopyPair(const WCHAR *source, const WCHAR *destination) {
    if (!src_.Init(source) || !dst_.Init(destination)) return false;
    top_ = destination;
    return CopyDirectory(0, 0);
  }

 private:
  bool CopyDirectory(int depth, DWORD attributes);
  bool CopyFileEntry(const WIN32_FIND_DATAW &entry, const FILETIME *reference, bool existed);
  int CopyOne(bool existed);

  COPYDIRCTL *ctl_;
  TAVONA_COPYDIR_CALLBACK callback_;
  INT_PTR value_;
  tv::FileFilter filter_;
  PathBuf src_, dst_, srcFile_, dstFile_;
  const WCHAR *top_ = nullptr;
};

bool CopyRun::CopyDirectory(int depth, DWORD attributes) {
  FILETIME refTime;
  const FILETIME *reference = tv::ReferenceTime(ctl_->referenceDate, refTime);
  if (depth > 0 && (attributes & FILE_ATTRIBUTE_SYSTEM)) return true;
  if (!Event(src_.Get(), dst_.Get(), TAVONA_DIR_ENTER)) return false;
  bool existed = IsDirectory(dst_.Get());
  if (!(ctl_->flags & TAVONA_COPY_DRY_RUN) && !existed &&
      Tavona_CreateDirectoryChain(dst_.Get()) != 0)
    return false;
  ++ctl_->directoriesProcessed;
  ++(existed ? ctl_->directoriesExisting : ctl_->directoriesCreated);

  for (DirEnum entries(src_); entries.Next();) {
    const WIN32_FIND_DATAW &entry = entries.Entry();
    if (entries.IsDirectory()) {
      if (!(ctl_->flags & TAVONA_COPY_RECURSE)) continue;
      int srcLen = src_.Length(), dstLen = dst_.Length();
      if (!src_.Push(entry.cFileName) || !dst_.Push(entry.cFileName)) {
        src_.Cut(srcLen);
        tv::ReportError(IDS_ERR_FILE_COPY, src_.Get(), entry.cFileName);
        return false;
      }
      // A destination inside its own source is not copied into itself.
      bool ok = lstrcmpiW(src_.Get(), top_) == 0 || CopyDirectory(depth + 1, entry.dwFileAttributes);
      src_.Cut(srcLen);
      dst_.Cut(dstLen);
      if (!ok) return false;
      continue;
    }
    if (!CopyFileEntry(entry, reference, existed)) return false;
  }
  return Event(src_.Get(), dst_.Get(), TAVONA_DIR_LEAVE);
}

bool CopyRun::CopyFileEntry(const WIN32_FIND_DATAW &entry, const FILETIME *reference,
                            bool existed) {
  ++ctl_->filesFound;
  if (!Event(src_.Get(), dst_.Get(), TAVONA_DIR_FILE_FOUND)) return false;
  switch (filter_.Judge(entry, reference)) {
    case Verdict::NotIncluded: ++ctl_->filesNotIncluded; return true;
    case Verdict::Excluded: ++ctl_->filesExcluded; return true;
    case Verdict::BeforeDate: ++ctl_->filesSkippedBeforeDate; return true;
    case Verdict::FromDate: ++ctl_->filesSkippedFromDate; return true;
    case Verdict::Pass: break;
  }
  srcFile_.Init(src_.Get());
  dstFile_.Init(dst_.Get());
  if (!srcFile_.Push(entry.cFileName) || !dstFile_.Push(entry.cFileName)) {
    tv::ReportError(IDS_ERR_FILE_COPY, src_.Get(), entry.cFileName);
    return false;
  }
  // Without the overwrite rules the destination is only looked at when the
  // copy fails (a directory in the way): one call less per file.
  WIN32_FILE_ATTRIBUTE_DATA there;
  if (existed && (ctl_->flags & (TAVONA_COPY_NO_OVERWRITE | TAVONA_COPY_NEWER_ONLY)) &&
      GetFileAttributesExW(dstFile_.Get(), GetFileExInfoStandard, &there)) {
    if (there.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
      tv::ReportError(IDS_ERR_DEST_IS_FOLDER, dstFile_.Get());
      return false;
    }
    if (ctl_->flags & TAVONA_COPY_NO_OVERWRITE) {
      ++ctl_->filesSkippedExisting;
      return true;
    }
    if ((ctl_->flags & TAVONA_COPY_NEWER_ONLY) &&
        CompareFileTime(&entry.ftLastWriteTime, &there.ftLastWriteTime) <= 0) {
      ++ctl_->filesSkippedNotOlder;
      return true;
    }
  }
  if (ctl_->flags & TAVONA_COPY_DRY_RUN) {
    if (existed && IsDirectory(dstFile_.Get())) {
      tv::ReportError(IDS_ERR_DEST_IS_FOLDER, dstFile_.Get());
      return false;
    }
  } else if (CopyOne(existed) < 0) {
    return false;
  }
  ++ctl_->filesCopied;
  tv::AddSize(ctl_->kilobytesCopied, ctl_->bytesCopied, entry.nFileSizeLow);
  return Event(src_.Get(), dst_.Get(), TAVONA_DIR_FILE_DONE);
}

// 1 copied, 0 left as it is on the user's word (ignore), -1 failed.
int CopyRun::CopyOne(bool existed) {
  for (int unattended = 0;;) {
    if (CopyFileW(srcFile_.Get(), dstFile_.Get(), FALSE)) return 1;
    DWORD error = GetLastError();
    if (existed && IsDirectory(dstFile_.Get())) {
      tv::ReportError(IDS_ERR_DEST_IS_FOLDER, dstFile_.Get());
      return -1;
    }
    if (error != ERROR_SHARING_VIOLATION && error != ERROR_LOCK_VIOLATION) {
      tv::ReportError(IDS_ERR_FILE_COPY, srcFile_.Get(), dstFile_.Get());
      return -1;
    }
    switch (AskInUse(IDS_ASK_FILE_IN_USE, srcFile_.Get(), dstFile_.Get(), unattended)) {
      case InUse::Fail: return -1;
      case InUse::Ignore: return 0;
      case InUse::Retry: break;
    }
  }
}

// ---- Statistics ------------------------------------------------------------

bool CountDirectory(PathBuf &dir, DIRSTATISTIC &stat, bool recurse) {
  for (DirEnum entries(dir); entries.Next();) {
    const WIN32_FIND_DATAW &entry = entries.Entry();
    if (!entries.IsDirectory()) {
      ++stat.files;
      tv::AddSize(stat.kilobytes, stat.bytes, entry.nFileSizeLow);
      continue;
    }
    if (!recurse) continue;
    int len = dir.Length();
    if (!dir.Push(entry.cFileName)) return false;
    bool ok = CountDirectory(dir, stat, recurse);
    dir.Cut(len);
    if (!ok) return false;
  }
  return true;
}

// ---- Directory chains ------------------------------------------------------

bool IsDriveLetter(WCHAR c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// Whether no parent of the path is to be created: shorter than 3
// characters, "\\server\share", or "C:\" and at most one component.
bool ParentIsRoot(const WCHAR *p, int len) {
  if (len < 3) return true;
  if (IsSep(p[0]) && IsSep(p[1])) {
    int i = 2;
    while (i < len && !IsSep(p[i])) ++i;
    if (i == 2 || i == len) return false;
    int share = ++i;
    while (i < len && !IsSep(p[i])) ++i;
    return i > share && i == len;
  }
  if (IsDriveLetter(p[0]) && p[1] == ':' && IsSep(p[2])) {
    for (int i = 3; i < len; ++i)
      if (IsSep(p[i])) return false;
    return true;
  }
  return false;
}

// Length of the parent of p[0, len) without its trailing separators (a
// root keeps its own), 0 when there is none.
int ParentLength(const WCHAR *p, int len) {
  int i = len - 1;
  while (i >= 0 && !IsSep(p[i])) --i;
  if (i < 0) return 0;
  if (i == 0) return 1;  // "\dir": the root
  while (i > 1 && IsSep(p[i - 1])) --i;
  return p[i - 1] == ':' ? i + 1 : i;
}

// p holds the path in a writable buffer; parents are cut off in place and
// put back.
int CreateChain(WCHAR *p, int len) {
  DWORD a = GetFileAttributesW(p);
  if (a != INVALID_FILE_ATTRIBUTES) {
    if (a & FILE_ATTRIBUTE_DIRECTORY) return 0;
    tv::ReportError(IDS_ERR_PATH_NOT_FOLDER, p);
    return -1;
  }
  if (!ParentIsRoot(p, len)) {
    int parent = ParentLength(p, len);
    if (parent > 0) {
      WCHAR kept = p[parent];
      p[parent] = 0;
      int r = CreateChain(p, parent);
      p[parent] = kept;
      if (r != 0) return -1;
    }
  }
  if (CreateDirectoryW(p, nullptr)) return 0;
  tv::ReportError(IDS_ERR_CREATE_FOLDER, p);
  return -1;
}

// ---- Delete and scan -------------------------------------------------------

class DeleteRun {
 public:
  DeleteRun(DELETEDIRCTL *ctl, TAVONA_DELETE_CALLBACK callback, INT_PTR value)
      : ctl_(ctl), callback_(callback), value_(value) {}

  bool Event(const WCHAR *path, INT event) {
    return !callback_ || callback_(path, event, ctl_, value_) != TAVONA_DIR_ABORT;
  }
  bool Prepare() {
    return filter_.Build(ctl_->include, ctl_->exclude, ctl_->flags) && dir_.Init(L"") &&
           file_.Init(L"");
  }
  bool DeleteIn(const WCHAR *directory) { return dir_.Init(directory) && DeleteDirectory(0, 0); }

 private:
  bool DeleteDirectory(int depth, DWORD attributes);
  bool DeleteFileEntry(const WIN32_FIND_DATAW &entry, const FILETIME *reference);
  int DeleteOne(DWORD attributes);

  DELETEDIRCTL *ctl_;
  TAVONA_DELETE_CALLBACK callback_;
  INT_PTR value_;
  tv::FileFilter filter_;
  PathBuf dir_, file_;
};

bool DeleteRun::DeleteDirectory(int depth, DWORD attributes) {
  FILETIME refTime;
  const FILETIME *reference = tv::ReferenceTime(ctl_->referenceDate, refTime);
  if (depth > 0 && (attributes & FILE_ATTRIBUTE_SYSTEM)) return true;
  if (!Event(dir_.Get(), TAVONA_DIR_ENTER)) return false;
  ++ctl_->directoriesProcessed;
  for (DirEnum entries(dir_); entries.Next();) {
    const WIN32_FIND_DATAW &entry = entries.Entry();
    if (!entries.IsDirectory()) {
      if (!DeleteFileEntry(entry, reference)) return false;
      continue;
    }
    if (!(ctl_->flags & TAVONA_COPY_RECURSE)) continue;
    int len = dir_.Length();
    if (!dir_.Push(entry.cFileName)) return false;
    bool ok = DeleteDirectory(depth + 1, entry.dwFileAttributes);
    dir_.Cut(len);
    if (!ok) return false;
  }
  if (!Event(dir_.Get(), TAVONA_DIR_LEAVE)) return false;
  // Fails, as it should, while anything is left in it (dot-names too).
  if (depth > 0 && (ctl_->flags & TAVONA_DELETE_EMPTY_DIRS) &&
      !(ctl_->flags & TAVONA_COPY_DRY_RUN) && RemoveDirectoryW(dir_.Get()))
    ++ctl_->directoriesRemoved;
  return true;
}

bool DeleteRun::DeleteFileEntry(const WIN32_FIND_DATAW &entry, const FILETIME *reference) {
  ++ctl_->filesFound;
  if (!Event(dir_.Get(), TAVONA_DIR_FILE_FOUND)) return false;
  switch (filter_.Judge(entry, reference)) {
    case Verdict::NotIncluded: ++ctl_->filesNotIncluded; return true;
    case Verdict::Excluded: ++ctl_->filesExcluded; return true;
    case Verdict::BeforeDate: ++ctl_->filesSkippedBeforeDate; return true;
    case Verdict::FromDate: ++ctl_->filesSkippedFromDate; return true;
    case Verdict::Pass: break;
  }
  if ((ctl_->flags & TAVONA_DELETE_KEEP_READONLY) &&
      (entry.dwFileAttributes & FILE_ATTRIBUTE_READONLY)) {
    ++ctl_->filesSkippedReadOnly;
    return true;
  }
  if (!(ctl_->flags & TAVONA_COPY_DRY_RUN)) {
    file_.Init(dir_.Get());
    if (!file_.Push(entry.cFileName)) return false;
    int r = DeleteOne(entry.dwFileAttributes);
    if (r < 0) return false;
    if (r == 0) return true;
  }
  ++ctl_->filesDeleted;
  tv::AddSize(ctl_->kilobytesDeleted, ctl_->bytesDeleted, entry.nFileSizeLow);
  return Event(dir_.Get(), TAVONA_DIR_FILE_DONE);
}

// 1 deleted, 0 left on the user's word (ignore), -1 failed.
int DeleteRun::DeleteOne(DWORD attributes) {
  bool readOnly = attributes & FILE_ATTRIBUTE_READONLY;
  if (readOnly) SetFileAttributesW(file_.Get(), attributes & ~FILE_ATTRIBUTE_READONLY);
  for (int unattended = 0;;) {
    if (DeleteFileW(file_.Get())) return 1;
    InUse answer = AskInUse(IDS_ASK_DELETE_IN_USE, file_.Get(), nullptr, unattended);
    if (answer == InUse::Retry) continue;
    // A file that stays keeps its attribute.
    if (readOnly) SetFileAttributesW(file_.Get(), attributes);
    return answer == InUse::Ignore ? 0 : -1;
  }
}

}  // namespace

INT WINAPI Tavona_CopyDirectories(const WCHAR *sources, const WCHAR *destinations,
                                  COPYDIRCTL *ctl, TAVONA_COPYDIR_CALLBACK callback,
                                  INT_PTR value) {
  if (!ctl) return 2;
  ctl->kilobytesCopied = ctl->bytesCopied = ctl->filesFound = ctl->filesCopied = 0;
  ctl->filesNotIncluded = ctl->filesExcluded = ctl->filesSkippedExisting = 0;
  ctl->filesSkippedNotOlder = ctl->filesSkippedBeforeDate = ctl->filesSkippedFromDate = 0;
  ctl->directoriesProcessed = ctl->directoriesCreated = ctl->directoriesExisting = 0;
  if (!sources) sources = L"";
  if (!destinations) destinations = L"";
  CopyRun run(ctl, callback, value);
  if (!run.Event(sources, destinations, TAVONA_DIR_START)) return 2;
  if (!run.Prepare()) return 2;
  DirList sourceList(sources), destinationList(destinations);
  WCHAR source[tv::kDirEntry + 1], destination[tv::kDirEntry + 1];
  WCHAR lastSource[tv::kDirEntry + 1] = L"", lastDestination[tv::kDirEntry + 1] = L"";
  for (;;) {
    int s = sourceList.Next(source), d = destinationList.Next(destination);
    if (s == 0 || d == 0) break;
    if (s < 0 || d < 0) return 2;
    // A blank entry would stand for the current drive's root.
    if (tv::IsBlank(source) || tv::IsBlank(destination)) continue;
    tv::CopyRaw(lastSource, source, tv::Len(source) + 1);
    tv::CopyRaw(lastDestination, destination, tv::Len(destination) + 1);
    if (!run.CopyPair(source, destination)) return 2;
  }
  return run.Event(lastSource, lastDestination, TAVONA_DIR_END) ? 1 : 2;
}

INT WINAPI Tavona_DirectoriesStatistic(const WCHAR *directories, DIRSTATISTIC *stat,
                                       BOOL recurse) {
  if (!stat) return 2;
  *stat = DIRSTATISTIC{};
  PathBuf dir;
  // Out of memory here is answered, not reported.
  if (!dir.Init(L"", true)) return 2;
  DirList list(directories);
  WCHAR entry[tv::kDirEntry + 1];
  for (int r; (r = list.Next(entry)) != 0;) {
    if (r < 0 || tv::IsBlank(entry)) continue;
    dir.Init(entry);
    if (!CountDirectory(dir, *stat, recurse != FALSE)) return 2;
  }
  return 1;
}

INT WINAPI Tavona_CreateDirectoryChain(const WCHAR *path) {
  if (tv::IsBlank(path)) return 0;
  int len = tv::LenBounded(path, tv::kDirPath);
  if (len >= tv::kDirPath) {
    tv::ReportError(IDS_ERR_CREATE_FOLDER, path);
    return -1;
  }
  tv::HeapPtr<WCHAR> p(tv::AllocWideChars(tv::kDirPath));
  if (!p) return -1;
  tv::CopyRaw(p.get(), path, len + 1);
  // Trailing separators go, except the one of a root ("C:\", "\").
  while (len > 1 && IsSep(p[len - 1]) && p[len - 2] != ':') p[--len] = 0;
  return CreateChain(p.get(), len);
}

BOOL WINAPI Tavona_IsDirectoryEmpty(const WCHAR *directory) {
  DIRSTATISTIC stat;
  Tavona_DirectoriesStatistic(directory, &stat, FALSE);
  return stat.files == 0;
}

INT WINAPI Tavona_ScanFilesToBuffer(const WCHAR *directory, const WCHAR *include,
                                    const WCHAR *exclude, WCHAR separator, WCHAR *dst,
                                    INT dstSize) {
  if (!dst || dstSize < 1) return 0;
  dst[0] = 0;
  if (tv::IsBlank(directory) || separator == 0) return 0;
  tv::FileFilter filter;
  PathBuf dir;
  if (!filter.Build(include, exclude, 0) || !dir.Init(directory)) return 0;
  int count = 0, pos = 0;
  for (DirEnum entries(dir); entries.Next();) {
    const WCHAR *name = entries.Entry().cFileName;
    if (entries.IsDirectory() || !filter.PassesNames(name)) continue;
    ++count;
    int len = tv::Len(name);
    if (len + 2 >= dstSize - pos) continue;
    if (pos > 0) dst[pos++] = separator;
    // Bytes, not characters: half of the name, deliberately.
    std::memcpy(dst + pos, name, static_cast<size_t>(len));
    pos += len;
  }
  if (pos < dstSize) dst[pos] = 0;
  return count;
}

INT WINAPI Tavona_DeleteFiles(const WCHAR *directories, DELETEDIRCTL *ctl,
                              TAVONA_DELETE_CALLBACK callback, INT_PTR value) {
  if (!ctl) return 2;
  ctl->kilobytesDeleted = ctl->bytesDeleted = ctl->filesFound = ctl->filesDeleted = 0;
  ctl->filesNotIncluded = ctl->filesExcluded = ctl->filesSkippedReadOnly = 0;
  ctl->filesSkippedBeforeDate = ctl->filesSkippedFromDate = 0;
  ctl->directoriesProcessed = ctl->directoriesRemoved = 0;
  if (!directories) directories = L"";
  DeleteRun run(ctl, callback, value);
  if (!run.Event(directories, TAVONA_DIR_START)) return 2;
  if (!run.Prepare()) return 2;
  DirList list(directories);
  WCHAR entry[tv::kDirEntry + 1], last[tv::kDirEntry + 1] = L"";
  for (int r; (r = list.Next(entry)) != 0;) {
    if (r < 0) return 2;
    if (tv::IsBlank(entry)) continue;
    tv::CopyRaw(last, entry, tv::Len(entry) + 1);
    if (!run.DeleteIn(entry)) return 2;
  }
  return run.Event(last, TAVONA_DIR_END) ? 1 : 2;
}

INT WINAPI Tavona_ScanDirectory(const WCHAR *directories, DELETEDIRCTL *ctl,
                                TAVONA_DELETE_CALLBACK callback, INT_PTR value) {
  if (!ctl) return 2;
  UINT flags = ctl->flags;
  ctl->flags |= TAVONA_COPY_DRY_RUN;
  INT result = Tavona_DeleteFiles(directories, ctl, callback, value);
  ctl->flags = flags;
  return result;
}
