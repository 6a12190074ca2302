#include "files/dirwalk.h"

#include <tavona/datetime.h>

#include <cstdint>

#include "base/sys.h"
#include "base/wstr.h"

namespace tv {

int DirList::Next(WCHAR *out) {
  out[0] = 0;
  if (!p_ || !*p_) return 0;
  const WCHAR *end = p_;
  while (*end && *end != '\n') ++end;
  int len = static_cast<int>(end - p_);
  const WCHAR *start = p_;
  p_ = *end ? end + 1 : end;
  if (len > 0 && start[len - 1] == '\r') --len;
  if (len > kDirEntry) return -1;
  CopyRaw(out, start, len);
  out[len] = 0;
  return 1;
}

bool PathBuf::Init(const WCHAR *start, bool quiet) {
  if (!buf_) {
    buf_ = HeapPtr<WCHAR>(quiet ? static_cast<WCHAR *>(plat::Alloc(kDirPath * sizeof(WCHAR)))
                                : AllocWideChars(kDirPath));
  }
  if (!buf_) return false;
  len_ = 0;
  buf_[0] = 0;
  int n = Len(start);
  if (n >= kDirPath) return false;
  CopyRaw(buf_.get(), start, n + 1);
  len_ = n;
  return true;
}

bool PathBuf::Push(const WCHAR *name) {
  int n = Len(name);
  bool sep = len_ > 0 && buf_[len_ - 1] != '\\' && buf_[len_ - 1] != '/';
  if (len_ + (sep ? 1 : 0) + n >= kDirPath) return false;
  if (sep) buf_[len_++] = '\\';
  CopyRaw(buf_.get() + len_, name, n + 1);
  len_ += n;
  return true;
}

void PathBuf::Cut(int length) {
  len_ = length;
  buf_[len_] = 0;
}

DirEnum::DirEnum(PathBuf &dir) {
  int len = dir.Length();
  if (!dir.Push(L"*.*")) return;
  // The basic information leaves out the short names nobody here reads.
  find_.reset(FindFirstFileExW(dir.Get(), FindExInfoBasic, &data_, FindExSearchNameMatch,
                               nullptr, FIND_FIRST_EX_LARGE_FETCH));
  dir.Cut(len);
  pending_ = static_cast<bool>(find_);
}

bool DirEnum::Next() {
  if (!find_) return false;
  for (;;) {
    if (pending_) {
      pending_ = false;
    } else if (!FindNextFileW(find_.get(), &data_)) {
      find_.reset();
      return false;
    }
    // Not only "." and "..": every name of that form stays out.
    if (data_.cFileName[0] != '.') return true;
  }
}

bool FileFilter::Build(const WCHAR *includeList, const WCHAR *excludeList, UINT copyFlags) {
  flags = copyFlags;
  return include.Build(includeList) && exclude.Build(excludeList);
}

const FILETIME *ReferenceTime(const DateTimeStruct *date, FILETIME &out) {
  if (!date) return nullptr;
  DateTimeStruct_To_FileTime(date, &out);
  return &out;
}

Verdict FileFilter::NameVerdict(const WCHAR *name) const {
  if (!include.Empty() && !include.Matches(name)) return Verdict::NotIncluded;
  if (exclude.Matches(name)) return Verdict::Excluded;
  return Verdict::Pass;
}

Verdict FileFilter::Judge(const WIN32_FIND_DATAW &entry, const FILETIME *reference) const {
  Verdict v = NameVerdict(entry.cFileName);
  if (v != Verdict::Pass || !reference) return v;
  int order = CompareFileTime(&entry.ftLastWriteTime, reference);
  if ((flags & 0x100) && order < 0) return Verdict::BeforeDate;
  if ((flags & 0x200) && order >= 0) return Verdict::FromDate;
  return Verdict::Pass;
}

void AddSize(INT &kilobytes, INT &bytes, DWORD size) {
  uint32_t rest = static_cast<uint32_t>(bytes) + (size & 1023u);
  kilobytes = static_cast<INT>(static_cast<uint32_t>(kilobytes) + (size >> 10) + (rest >> 10));
  bytes = static_cast<INT>(rest & 1023u);
}

}  // namespace tv
