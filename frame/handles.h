// One owner type per kind of Windows handle. Acquire into a temporary owner,
// then swap it into place; every owner releases its handle on every path.
#pragma once

#include <windows.h>
#include <winspool.h>

#include <utility>

namespace tv {

template <typename T, auto Close, auto Invalid = nullptr>
class unique_any {
 public:
  unique_any() = default;
  explicit unique_any(T h) : h_(h) {}
  ~unique_any() { reset(); }
  unique_any(const unique_any &) = delete;
  unique_any &operator=(const unique_any &) = delete;
  unique_any(unique_any &&o) noexcept : h_(o.release()) {}
  unique_any &operator=(unique_any &&o) noexcept {
    if (this != &o) reset(o.release());
    return *this;
  }

  T get() const { return h_; }
  explicit operator bool() const { return h_ != invalid(); }
  void reset(T h = invalid()) {
    if (h_ != invalid()) Close(h_);
    h_ = h;
  }
  T release() { return std::exchange(h_, invalid()); }
  void swap(unique_any &o) noexcept { std::swap(h_, o.h_); }
  // For out-parameters of acquiring calls; releases what was held.
  T *put() {
    reset();
    return &h_;
  }

 private:
  static T invalid() {
    if constexpr (std::is_same_v<decltype(Invalid), std::nullptr_t>)
      return T{};
    else
      return Invalid();
  }
  T h_ = invalid();
};

inline HANDLE InvalidFileHandle() { return INVALID_HANDLE_VALUE; }
inline void CloseKey(HKEY k) { RegCloseKey(k); }
inline void CloseFile(HANDLE h) { CloseHandle(h); }
inline void CloseModule(HMODULE m) { FreeLibrary(m); }
inline void CloseGdi(HGDIOBJ o) { DeleteObject(o); }
inline void CloseGlobal(HGLOBAL m) { GlobalFree(m); }
inline void CloseDc(HDC dc) { DeleteDC(dc); }
inline void CloseIcon(HICON i) { DestroyIcon(i); }
inline void ClosePrinterHandle(HANDLE p) { ClosePrinter(p); }

using unique_hkey = unique_any<HKEY, CloseKey>;
using unique_hfile = unique_any<HANDLE, CloseFile, InvalidFileHandle>;
using unique_handle = unique_any<HANDLE, CloseFile>;
using unique_hmodule = unique_any<HMODULE, CloseModule>;
using unique_hgdiobj = unique_any<HGDIOBJ, CloseGdi>;
using unique_hbitmap = unique_any<HBITMAP, CloseGdi>;
using unique_hglobal = unique_any<HGLOBAL, CloseGlobal>;
using unique_hdc = unique_any<HDC, CloseDc>;
using unique_hicon = unique_any<HICON, CloseIcon>;
using unique_hprinter = unique_any<HANDLE, ClosePrinterHandle>;

// A window DC obtained with GetDC, released with ReleaseDC.
class window_dc {
 public:
  explicit window_dc(HWND w) : w_(w), dc_(GetDC(w)) {}
  ~window_dc() {
    if (dc_) ReleaseDC(w_, dc_);
  }
  window_dc(const window_dc &) = delete;
  window_dc &operator=(const window_dc &) = delete;
  HDC get() const { return dc_; }

 private:
  HWND w_;
  HDC dc_;
};

}  // namespace tv
