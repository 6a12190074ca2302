// Driving another program through COM automation: create its object from
// a ProgID as a local server, call methods and get or put properties by
// name, and ask it to quit when done.
#pragma once

#include <windows.h>

#include <oaidl.h>

namespace tv {

// Why the last creation failed: "CLSIDFromProgID failed with 0x800401F3"
// or "CoCreateInstance failed with 0x...". Library-wide, like the
// program that asked; empty after a creation that worked.
const WCHAR *AutomationError();

class Automation {
 public:
  Automation() = default;
  ~Automation();
  Automation(const Automation &) = delete;
  Automation &operator=(const Automation &) = delete;
  Automation(Automation &&o) noexcept : object_(o.object_) { o.object_ = nullptr; }

  // The object of progId, made visible (property "Visible" = true) unless
  // invisible is set. Empty on failure (see AutomationError). COM must be
  // initialised on the calling thread.
  static Automation Create(const WCHAR *progId, bool invisible = false);
  explicit operator bool() const { return object_ != nullptr; }

  // args in the order of the method's parameters; result may be null.
  HRESULT Call(const WCHAR *method, const VARIANT *args = nullptr, int count = 0,
               VARIANT *result = nullptr);
  HRESULT Get(const WCHAR *property, VARIANT *result);
  HRESULT Put(const WCHAR *property, const VARIANT &value);
  // Asks the program to "Quit" and lets the object go.
  void Quit();

 private:
  explicit Automation(IDispatch *object) : object_(object) {}
  HRESULT Invoke(const WCHAR *name, WORD kind, const VARIANT *args, int count, VARIANT *result);
  IDispatch *object_ = nullptr;
};

}  // namespace tv
