// Print copy lists: up to ten named sets of copies, kept by applications
// as one line "name|count|name|count|...". Portable; the dialogs and the
// profile file are in copydialogs.cpp.
#pragma once

#include <tavona/tvbase.h>

namespace tv::print {

constexpr int kCopyEntries = 10;

struct CopyList {
  WCHAR *names[kCopyEntries] = {};  // owned; null for an entry not read
  INT counts[kCopyEntries] = {};
  WCHAR *profile = nullptr;  // owned; the profile file, or null

  CopyList() = default;
  ~CopyList();
  CopyList(const CopyList &) = delete;
  CopyList &operator=(const CopyList &) = delete;

  void Clear();  // every entry without name and count 0
  // A new copy of name (null: no name). False when memory runs out
  // (reported).
  bool SetName(int index, const WCHAR *name);
  // A new copy of the profile file name (null: none), false as SetName.
  bool SetProfile(const WCHAR *file);
  INT Total() const;  // wraps as 32-bit values
};

// Replaces the entries with those of text (null: ""). The text is split at
// runs of "|" as the runtime's tokenizer splits it (empty fields vanish),
// pairs of name and count are taken until one is missing, at most ten;
// leading spaces leave the names, counts read as _wtoi reads them. False
// after reporting 1300 when memory runs out.
bool ReadCopyList(const WCHAR *text, CopyList &list);

// The text of all ten entries, a missing or empty name written as one
// space; a new buffer (FreeMem), or null after reporting 1300.
WCHAR *WriteCopyList(const CopyList &list);

}  // namespace tv::print
