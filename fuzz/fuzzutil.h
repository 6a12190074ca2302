// Helpers shared by the libFuzzer targets (host build only).
#pragma once

#include <tavona/tvbase.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace fuzz {

using WStr = std::basic_string<WCHAR>;

// Fails the run with a message when a property does not hold.
inline void Check(bool ok, const char *what) {
  if (ok) return;
  std::fprintf(stderr, "property violated: %s\n", what);
  std::abort();
}

// Reads the fuzzer's bytes as small decisions and texts.
class Input {
 public:
  Input(const uint8_t *data, size_t size) : p_(data), end_(data + size) {}
  bool Empty() const { return p_ >= end_; }
  uint8_t Byte() { return p_ < end_ ? *p_++ : 0; }
  uint16_t Unit() {
    uint16_t lo = Byte();
    return static_cast<uint16_t>(lo | (Byte() << 8));
  }
  // Units mostly from alphabet, sometimes any unit but zero; a byte 0xFF
  // ends the text.
  WStr Text(const char16_t *alphabet, size_t maxLen) {
    size_t n = 0;
    while (alphabet[n]) ++n;
    WStr s;
    while (!Empty() && s.size() < maxLen) {
      uint8_t b = Byte();
      if (b == 0xFF) break;
      WCHAR c = b == 0xFE ? static_cast<WCHAR>(Unit()) : static_cast<WCHAR>(alphabet[b % n]);
      if (c) s += c;
    }
    return s;
  }

 private:
  const uint8_t *p_, *end_;
};

// A heap block of exactly n elements, so that ASan reports any access past
// the size given to the routine.
template <typename T>
class Exact {
 public:
  explicit Exact(size_t n) : p_(new T[n]) {}
  ~Exact() { delete[] p_; }
  Exact(const Exact &) = delete;
  Exact &operator=(const Exact &) = delete;
  T *get() const { return p_; }

 private:
  T *p_;
};

}  // namespace fuzz
