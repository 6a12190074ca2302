// The portable side of translation assistance and the gettext bridge: the
// line list, the reader of assistance logs, the PO template writer and the
// PO catalog with its index. No allocation throws; failures of memory are
// reported (1300) by the allocation helpers.
#pragma once

#include <tavona/tvbase.h>

#include <cstddef>
#include <cstdint>

#include "frame/alloc.h"

namespace tv {

// A growing array of trivially copyable T on the library's heap.
template <typename T>
class Growing {
 public:
  Growing() = default;
  ~Growing() { FreeMem(p_); }
  Growing(const Growing &) = delete;
  Growing &operator=(const Growing &) = delete;
  bool Push(const T &v) {
    if (n_ == cap_ && !Reserve(cap_ ? cap_ * 2 : 16)) return false;
    p_[n_++] = v;
    return true;
  }
  bool Append(const T *v, size_t count) {
    if (n_ + count > cap_ && !Reserve(n_ + count > cap_ * 2 ? n_ + count : cap_ * 2)) return false;
    for (size_t i = 0; i < count; ++i) p_[n_ + i] = v[i];
    n_ += count;
    return true;
  }
  bool Reserve(size_t cap) {
    if (cap <= cap_) return true;
    T *q = static_cast<T *>(AllocBytes(uint64_t{cap} * sizeof(T)));
    if (!q) return false;
    for (size_t i = 0; i < n_; ++i) q[i] = p_[i];
    FreeMem(p_);
    p_ = q;
    cap_ = cap;
    return true;
  }
  // Size n; new elements are left as they are.
  bool Resize(size_t n) {
    if (!Reserve(n)) return false;
    n_ = n;
    return true;
  }
  void Clear() { n_ = 0; }
  T *Data() const { return p_; }
  size_t Size() const { return n_; }
  T &operator[](size_t i) const { return p_[i]; }

 private:
  T *p_ = nullptr;
  size_t n_ = 0, cap_ = 0;
};

// FNV-1a over UTF-16 units, continued from h (start with kHashStart).
inline constexpr uint32_t kHashStart = 2166136261u;
uint32_t HashUnits(uint32_t h, const WCHAR *s, size_t n);
uint32_t HashText(uint32_t h, const WCHAR *s);  // up to the terminator

// Open addressing from a 32-bit hash to entry numbers. The entries and
// their equality belong to the caller; Find walks the candidates of a hash
// until eq(number) is true. A lookup costs O(1) on average.
class HashIndex {
 public:
  HashIndex() = default;
  ~HashIndex() { FreeMem(slots_); }
  HashIndex(const HashIndex &) = delete;
  HashIndex &operator=(const HashIndex &) = delete;
  template <typename Eq>
  int Find(uint32_t hash, Eq eq) const {
    if (!slots_) return -1;
    for (size_t i = hash & mask_;; i = (i + 1) & mask_) {
      if (slots_[i].value < 0) return -1;
      if (slots_[i].hash == hash && eq(slots_[i].value)) return slots_[i].value;
    }
  }
  bool Insert(uint32_t hash, int value);
  void Clear();

 private:
  struct Slot {
    uint32_t hash;
    int value;  // -1: empty
  };
  bool Rehash(size_t slots);
  Slot *slots_ = nullptr;
  size_t mask_ = 0, used_ = 0;
};

}  // namespace tv

// The bounded list of collected lines of one assistance pass.
struct LtsLineList {
  WCHAR **storage;
  int capacity;
  int count;
  tv::HashIndex *index;  // line -> first position, for the duplicate test
};

namespace tv {

inline constexpr int kLtsLineCapacity = 20000;

// Null when memory runs out (reported, 1300).
LtsLineList *LineListCreate(int capacity);
void LineListDestroy(LtsLineList *list);
void LineListClear(LtsLineList *list);
// Position of the first line equal to text (case-sensitive), or -1.
int LineListFind(const LtsLineList *list, const WCHAR *text);
// Appends a copy; false after reporting 1383 when the list is full (or
// 1300 when memory runs out).
bool LineListAdd(LtsLineList *list, const WCHAR *text);
// Each line and CR LF as UTF-16LE through write; stops at the first failing
// write with -1; 0 when all went out (an empty list writes nothing).
using ByteSink = bool (*)(void *sink, const void *bytes, size_t count);
int LineListWrite(const LtsLineList *list, ByteSink write, void *sink);

// The single-byte header of a pass: what the C runtime's byte-wise
// "[%s-%s]\r\n" prints when handed the wide names, i.e. the bytes of each
// UTF-16LE name up to its first zero byte ("[G-S]\r\n" for GENERAL and
// STRINGS). Returns the length written into out (at most size - 1).
int LtsHeaderBytes(const WCHAR *module, const WCHAR *section, char *out, int size);

// Problems found in an assistance log or a PO file, each with a line.
enum class CatalogError {
  kNone,
  kMemory,
  kBadUtf8,
  kMissingQuote,
  kBadEscape,
  kUnexpected,
  kPlural,
  kDuplicate,
  kNoContext,
  kNoMsgstr,
  kCharset,
  kLogHeader,
  kLogNoHeader,
  kLogLine,
  kLogModule,
};

struct CatalogProblem {
  CatalogError error = CatalogError::kNone;
  int line = 0;
};

// An assistance log (bytes of the file) into a PO template (UTF-8 bytes).
// modules: names separated by '|' (null/empty: "GENERAL"). Returns the
// number of entries, or -1 with problem set.
int ExportCatalog(const unsigned char *log, size_t size, const WCHAR *modules,
                  Growing<char> &out, CatalogProblem &problem);

// A translated PO file, indexed by module, section and key.
class Catalog {
 public:
  Catalog() = default;
  Catalog(const Catalog &) = delete;
  Catalog &operator=(const Catalog &) = delete;
  // Parses the bytes; false with problem set. May be called once.
  bool Load(const unsigned char *bytes, size_t size, CatalogProblem &problem);
  // The translation, or null when the catalog has none.
  const WCHAR *Find(const WCHAR *module, const WCHAR *section, const WCHAR *key) const;
  int Count() const { return translated_; }

  // Working state of the parser (catalog.cpp).
  struct Entry;
  bool Add(const Entry &e, CatalogProblem &problem);

 private:
  struct Item {
    size_t module, section, key, text;  // offsets into text_; text SIZE_MAX: none
    uint32_t hash;
  };
  const WCHAR *At(size_t offset) const { return text_.Data() + offset; }
  bool Store(const WCHAR *s, size_t n, size_t &offset);
  Growing<WCHAR> text_;
  Growing<Item> items_;
  HashIndex index_;
  int translated_ = 0;
};

// The catalog provider's answer: text with every backslash doubled, so
// that decoding the escape notation gives it back; cut to size - 1 without
// splitting a pair.
void EscapeBackslashes(const WCHAR *text, WCHAR *out, int size);

}  // namespace tv
