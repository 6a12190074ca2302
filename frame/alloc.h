// Allocation helpers of the whole library. Memory comes from the process
// heap (never throws) and is released with FreeMem (or Tavona_FreeMemory by
// callers outside the library).
#pragma once

#include <tavona/tvbase.h>

#include <cstdint>

namespace tv {

// A new, uninitialised buffer of count wide characters, or nullptr after
// reporting error 1300. A byte size beyond 32 bits fails the same way.
WCHAR *AllocWideChars(UINT count);

// A new copy of s, or nullptr: silently for a null s, after reporting error
// 1300 when memory runs out.
WCHAR *DuplicateWideString(const WCHAR *s);

// Raw bytes with the same failure rule as AllocWideChars.
void *AllocBytes(uint64_t bytes);

void FreeMem(void *p);

// Owns one allocation of the helpers above.
template <typename T>
class HeapPtr {
 public:
  HeapPtr() = default;
  explicit HeapPtr(T *p) : p_(p) {}
  ~HeapPtr() { FreeMem(p_); }
  HeapPtr(const HeapPtr &) = delete;
  HeapPtr &operator=(const HeapPtr &) = delete;
  HeapPtr(HeapPtr &&o) noexcept : p_(o.p_) { o.p_ = nullptr; }
  HeapPtr &operator=(HeapPtr &&o) noexcept {
    if (this != &o) {
      FreeMem(p_);
      p_ = o.p_;
      o.p_ = nullptr;
    }
    return *this;
  }
  T *get() const { return p_; }
  T *release() {
    T *p = p_;
    p_ = nullptr;
    return p;
  }
  explicit operator bool() const { return p_ != nullptr; }
  T &operator[](size_t i) const { return p_[i]; }

 private:
  T *p_ = nullptr;
};

}  // namespace tv
