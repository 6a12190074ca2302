// The pieces every directory walk of the library shares: the line-feed
// directory lists, one growing path buffer per walk, the enumeration that
// passes over dot-names, and the file filters.
#pragma once

#include <windows.h>

#include <tavona/datetime.h>

#include "files/patterns.h"
#include "frame/alloc.h"
#include "frame/handles.h"

namespace tv {

constexpr int kDirPath = 1024;  // path buffers of the walks, terminator included
constexpr int kDirEntry = 256;  // one entry of a directory list

// The entries of a directory list, one at a time.
class DirList {
 public:
  explicit DirList(const WCHAR *list) : p_(list) {}
  // 1: out holds the next entry (a carriage return before the line feed is
  // dropped); 0: the list has ended; -1: the entry is longer than
  // kDirEntry (out ""). Entries may be blank. out has kDirEntry + 1 units.
  int Next(WCHAR *out);

 private:
  const WCHAR *p_;
};

// A path that grows and shrinks by one component as a walk goes down and
// up, in one kDirPath buffer from the allocation helpers.
class PathBuf {
 public:
  // False when memory runs out (1300 reported unless quiet) or start does
  // not fit.
  bool Init(const WCHAR *start, bool quiet = false);
  const WCHAR *Get() const { return buf_.get(); }
  int Length() const { return len_; }
  // Adds a separator (unless the path ends in one or is empty) and name;
  // false, and the path unchanged, when the result would not fit.
  bool Push(const WCHAR *name);
  void Cut(int length);

 private:
  HeapPtr<WCHAR> buf_;
  int len_ = 0;
};

// The entries of a directory (dir\*.*) except names beginning with a dot.
class DirEnum {
 public:
  explicit DirEnum(PathBuf &dir);
  // False when the enumeration could not start or has ended.
  bool Next();
  const WIN32_FIND_DATAW &Entry() const { return data_; }
  bool IsDirectory() const { return (data_.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

 private:
  unique_hfind find_;
  WIN32_FIND_DATAW data_;
  bool pending_ = false;
};

// Why a file is left out, in the order the filters are applied.
enum class Verdict { Pass, NotIncluded, Excluded, BeforeDate, FromDate };

struct FileFilter {
  PatternList include, exclude;
  UINT flags = 0;  // the date flags of the copy

  // Builds both lists; false when memory runs out (1300 reported).
  bool Build(const WCHAR *includeList, const WCHAR *excludeList, UINT copyFlags);
  bool PassesNames(const WCHAR *name) const { return NameVerdict(name) == Verdict::Pass; }
  Verdict NameVerdict(const WCHAR *name) const;
  // reference: the reference date as a file time, null when none is given.
  Verdict Judge(const WIN32_FIND_DATAW &entry, const FILETIME *reference) const;
};

// The reference date of a walk as a file time, converted afresh for each
// directory; null without a date.
const FILETIME *ReferenceTime(const DateTimeStruct *date, FILETIME &out);

// Adds a size (its low 32 bits) to a kilobyte counter and its remainder,
// carrying whole kilobytes; wraps instead of overflowing.
void AddSize(INT &kilobytes, INT &bytes, DWORD size);

}  // namespace tv
