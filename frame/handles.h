// One owner type per kind of Windows handle. Acquire into a temporary owner,
// then swap it into place; every owner releases its handle on every path.
#pragma once

#include <windows.h>
#include <winspool.h>

#include <type_traits>
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
inline void CloseFind(HANDLE h) { FindClose(h); }
inline void CloseMenu(HMENU m) { DestroyMenu(m); }
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
using unique_hfind = unique_any<HANDLE, CloseFind, InvalidFileHandle>;
using unique_hmenu = unique_any<HMENU, CloseMenu>;
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

// Runs f when the scope ends, on every path (unless dismissed).
template <typename F>
class scope_exit {
 public:
  explicit scope_exit(F f) : f_(std::move(f)) {}
  ~scope_exit() {
    if (active_) f_();
  }
  scope_exit(const scope_exit &) = delete;
  scope_exit &operator=(const scope_exit &) = delete;
  void release() { active_ = false; }

 private:
  F f_;
  bool active_ = true;
};

// Global memory locked for the guard's lifetime: get() is null when the
// handle is null or cannot be locked; size() is GlobalSize of the handle.
template <typename T = void>
class global_lock {
 public:
  explicit global_lock(HGLOBAL m) : m_(m), p_(m ? static_cast<T *>(GlobalLock(m)) : nullptr) {}
  ~global_lock() {
    if (p_) GlobalUnlock(m_);
  }
  global_lock(const global_lock &) = delete;
  global_lock &operator=(const global_lock &) = delete;
  T *get() const { return p_; }
  explicit operator bool() const { return p_ != nullptr; }
  SIZE_T size() const { return p_ ? GlobalSize(m_) : 0; }

 private:
  HGLOBAL m_;
  T *p_;
};

// Selects an object into a DC and selects the previous one back on every
// path, before the object's own owner deletes it: declare the owner first.
class select_object {
 public:
  select_object(HDC dc, HGDIOBJ o) : dc_(dc), old_(o ? SelectObject(dc, o) : nullptr) {}
  ~select_object() {
    if (old_ && old_ != HGDI_ERROR) SelectObject(dc_, old_);
  }
  select_object(const select_object &) = delete;
  select_object &operator=(const select_object &) = delete;

 private:
  HDC dc_;
  HGDIOBJ old_;
};

// GetProcAddress with the entry's type: ProcAddress<INT(WINAPI *)(int)>(m, "Name").
template <typename F>
F ProcAddress(HMODULE module, const char *name) {
  static_assert(std::is_pointer_v<F>, "a function pointer type");
  if (!module || !name) return nullptr;
  return reinterpret_cast<F>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

// Restores a DC's state (SaveDC/RestoreDC) on every path.
class saved_dc {
 public:
  explicit saved_dc(HDC dc) : dc_(dc), id_(SaveDC(dc)) {}
  ~saved_dc() {
    if (id_) RestoreDC(dc_, id_);
  }
  saved_dc(const saved_dc &) = delete;
  saved_dc &operator=(const saved_dc &) = delete;

 private:
  HDC dc_;
  int id_;
};

}  // namespace tv
