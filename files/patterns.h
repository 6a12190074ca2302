// File name pattern lists of the directory routines: tab-separated patterns,
// each split at its last dot into a name part and an extension part that
// are compared separately, upper-cased.
#pragma once

#include <tavona/tvbase.h>

namespace tv {

class PatternList {
 public:
  // Each part of a pattern or a file name counts up to this many characters.
  static constexpr int kPart = 256;

  PatternList() = default;
  ~PatternList();
  PatternList(const PatternList &) = delete;
  PatternList &operator=(const PatternList &) = delete;

  // Takes the patterns of list (null or "": none; empty entries are left
  // out). False when memory runs out (error 1300 reported).
  bool Build(const WCHAR *list);
  bool Empty() const { return count_ == 0; }
  // Whether some pattern matches the file name: '?' takes one character,
  // '*' ends the comparison with a match (characters after it are not
  // looked at), anything else must be equal, and without a '*' the part
  // must end where the pattern ends.
  bool Matches(const WCHAR *fileName) const;

 private:
  WCHAR *parts_ = nullptr;  // per pattern: name part, 0, extension part, 0
  int count_ = 0;
};

// One part against one pattern part, both upper-cased already.
bool MatchPart(const WCHAR *part, const WCHAR *pattern);

}  // namespace tv
