#include "settings/automation.h"

#include "frame/alloc.h"
#include "base/wstr.h"

namespace tv {

namespace {
WCHAR g_automationError[500];

void Failed(const WCHAR *step, HRESULT hr) {
  Format(g_automationError, 500, L"%s failed with 0x%08X", step, unsigned(hr));
}
}  // namespace

const WCHAR *AutomationError() { return g_automationError; }

Automation Automation::Create(const WCHAR *progId, bool invisible) {
  g_automationError[0] = 0;
  CLSID clsid;
  HRESULT hr = CLSIDFromProgID(progId, &clsid);
  if (FAILED(hr)) {
    Failed(L"CLSIDFromProgID", hr);
    return {};
  }
  IDispatch *object = nullptr;
  hr = CoCreateInstance(clsid, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch,
                        reinterpret_cast<void **>(&object));
  if (FAILED(hr) || !object) {
    Failed(L"CoCreateInstance", hr);
    return {};
  }
  Automation a(object);
  if (!invisible) {
    VARIANT visible;
    VariantInit(&visible);
    visible.vt = VT_BOOL;
    visible.boolVal = VARIANT_TRUE;
    a.Put(L"Visible", visible);
  }
  return a;
}

Automation::~Automation() {
  if (object_) object_->Release();
}

void Automation::Quit() {
  if (!object_) return;
  Call(L"Quit");
  object_->Release();
  object_ = nullptr;
}

HRESULT Automation::Call(const WCHAR *method, const VARIANT *args, int count, VARIANT *result) {
  return Invoke(method, DISPATCH_METHOD, args, count, result);
}

HRESULT Automation::Get(const WCHAR *property, VARIANT *result) {
  return Invoke(property, DISPATCH_PROPERTYGET, nullptr, 0, result);
}

HRESULT Automation::Put(const WCHAR *property, const VARIANT &value) {
  return Invoke(property, DISPATCH_PROPERTYPUT, &value, 1, nullptr);
}

HRESULT Automation::Invoke(const WCHAR *name, WORD kind, const VARIANT *args, int count,
                           VARIANT *result) {
  if (!object_ || !name || count < 0) return E_INVALIDARG;
  DISPID id;
  LPOLESTR names[1] = {const_cast<LPOLESTR>(name)};
  HRESULT hr = object_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(hr)) return hr;
  // IDispatch takes the arguments last to first.
  HeapPtr<VARIANT> reversed(count ? static_cast<VARIANT *>(AllocBytes(uint64_t(count) *
                                                                      sizeof(VARIANT)))
                                  : nullptr);
  if (count && !reversed) return E_OUTOFMEMORY;
  for (int i = 0; i < count; ++i) reversed[size_t(i)] = args[count - 1 - i];
  DISPPARAMS params = {reversed.get(), nullptr, UINT(count), 0};
  DISPID named = DISPID_PROPERTYPUT;
  if (kind == DISPATCH_PROPERTYPUT) {
    params.rgdispidNamedArgs = &named;
    params.cNamedArgs = 1;
  }
  if (result) VariantInit(result);
  return object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &params, result, nullptr,
                         nullptr);
}

}  // namespace tv
