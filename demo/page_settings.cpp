// Settings: a typed value under a key the user types, read and written
// through the library, the key's subkeys, and the colour chooser.
#include <tavona/tavona32.h>

#include <cwchar>
#include <string>

#include "pages.h"
#include "ui.h"

namespace {

enum : int {
  kMachine = 100,
  kKey,
  kSection,
  kName,
  kString,
  kLong,
  kHex,
  kBit,
  kColor,
  kValue,
  kRead,
  kWrite,
  kChoose,
};

class SettingsPage : public demo::Page {
 public:
  explicit SettingsPage(HWND parent) : Page(parent) {
    demo::Form f(*this, {L"Root:", L"Key:", L"Section:", L"Value name:", L"Type:", L"Value:",
                         L"Stored text:", L"Call:", L"Subkeys:", L"Colour:"});
    f.BeginGroup(L"Typed value (Tavona_Read.../Tavona_Write...ToRegistry)");
    f.Row(L"Root:");
    machine_ = f.Check(kMachine, L"HKEY_LOCAL_MACHINE (else HKEY_CURRENT_USER)", false);
    f.Row(L"Key:");
    key_ = f.Edit(kKey, L"Software\\Tavona Software\\Demo", 0);
    f.Row(L"Section:");
    section_ = f.Edit(kSection, L"Window", 0);
    f.Row(L"Value name:");
    name_ = f.Edit(kName, L"Width", 0);
    f.Row(L"Type:");
    const wchar_t *types[] = {L"String", L"Long", L"Hex", L"Bit (mask 1)", L"Colour r,g,b"};
    for (int i = 0; i < 5; ++i)
      type_[i] = f.Button(kString + i, types[i], BS_AUTORADIOBUTTON | (i ? 0 : WS_GROUP));
    SendMessageW(type_[1], BM_SETCHECK, BST_CHECKED, 0);
    f.Row(L"Value:");
    value_ = f.Edit(kValue, L"640", 0);
    f.Row(L"");
    f.Button(kRead, L"Read", BS_PUSHBUTTON);
    f.Button(kWrite, L"Write", BS_PUSHBUTTON);
    f.Note(L"hex as 0x1F or 31, colour as r,g,b; a stored text over 24 characters "
           L"is not read (50-character buffer)");
    f.Row(L"Stored text:");
    stored_ = f.ReadOnly(0);
    f.Row(L"Call:");
    call_ = f.ReadOnly(0);
    f.Row(L"Subkeys:");
    subkeys_ = f.List(0, 4, LBS_NOSEL);
    f.EndGroup();

    f.BeginGroup(L"Colour chooser (Tavona_ColorDialog)");
    f.Row(L"Colour:");
    f.Button(kChoose, L"Choose...", BS_PUSHBUTTON);
    color_ = f.Note(L"", 0);
    f.EndGroup();
    f.Finish();
    ShowColor(0);
    Read();
  }

 protected:
  void OnCommand(int id, int code) override {
    if (code != BN_CLICKED) return;
    if (id == kRead) Read();
    if (id == kWrite) Write();
    if (id == kChoose) {
      int rc = Tavona_ColorDialog(hwnd(), &chosen_);
      ShowColor(rc);
    }
  }

 private:
  int Type() const {
    for (int i = 0; i < 5; ++i)
      if (SendMessageW(type_[i], BM_GETCHECK, 0, 0) == BST_CHECKED) return kString + i;
    return kString;
  }
  HKEY Root() const {
    return SendMessageW(machine_, BM_GETCHECK, 0, 0) == BST_CHECKED ? HKEY_LOCAL_MACHINE
                                                                    : HKEY_CURRENT_USER;
  }

  void Read() {
    std::wstring key = demo::GetText(key_), section = demo::GetText(section_),
                 name = demo::GetText(name_);
    HKEY root = Root();
    const wchar_t *k = key.c_str(), *s = section.c_str(), *n = name.c_str();
    wchar_t text[50];
    std::wstring shown, call;
    switch (Type()) {
      case kString:
        Tavona_ReadStringFromRegistry(root, k, nullptr, s, n, L"(default)", text, 50);
        shown = text;
        call = L"Tavona_ReadStringFromRegistry(..., L\"(default)\", buffer, 50)";
        break;
      case kLong:
        shown = std::to_wstring(Tavona_ReadLongFromRegistry(root, k, nullptr, s, n, -1));
        call = L"Tavona_ReadLongFromRegistry(..., -1) = " + shown;
        break;
      case kHex:
        swprintf(text, 50, L"0x%08lX",
                 static_cast<unsigned long>(Tavona_ReadHexFromRegistry(root, k, nullptr, s, n, 0)));
        shown = text;
        call = L"Tavona_ReadHexFromRegistry(..., 0) = " + shown;
        break;
      case kBit: {
        DWORD flags = 0;
        Tavona_ReadBitFromRegistry(root, k, nullptr, s, n, 0, 1, &flags);
        shown = std::to_wstring(flags);
        call = L"Tavona_ReadBitFromRegistry(..., 0, mask 1, &flags): flags = " + shown;
        break;
      }
      case kColor: {
        COLORREF c = Tavona_ReadColorFromRegistry(root, k, nullptr, s, n, RGB(255, 255, 255));
        shown = std::to_wstring(GetRValue(c)) + L"," + std::to_wstring(GetGValue(c)) + L"," +
                std::to_wstring(GetBValue(c));
        call = L"Tavona_ReadColorFromRegistry(..., white) = " + shown;
        break;
      }
    }
    demo::SetText(value_, shown);
    Tavona_ReadStringFromRegistry(root, k, nullptr, s, n, L"(none)", text, 50);
    demo::SetText(stored_, text);
    demo::SetText(call_, call);
    Tavona_FillBoxWithRegistrySubKeys(root, k, subkeys_);
  }

  void Write() {
    std::wstring key = demo::GetText(key_), section = demo::GetText(section_),
                 name = demo::GetText(name_), value = demo::GetText(value_);
    HKEY root = Root();
    const wchar_t *k = key.c_str(), *s = section.c_str(), *n = name.c_str();
    LONG rc = 0;
    switch (Type()) {
      case kString: rc = Tavona_WriteStringToRegistry(root, k, nullptr, s, n, value.c_str()); break;
      case kLong: rc = Tavona_WriteLongToRegistry(root, k, nullptr, s, n, _wtol(value.c_str())); break;
      case kHex:
        rc = Tavona_WriteHexToRegistry(root, k, nullptr, s, n,
                                       static_cast<DWORD>(wcstoul(value.c_str(), nullptr, 0)));
        break;
      case kBit: rc = Tavona_WriteBitToRegistry(root, k, nullptr, s, n, 1, _wtol(value.c_str())); break;
      case kColor: {
        int r = 0, g = 0, b = 0;
        swscanf(value.c_str(), L"%d,%d,%d", &r, &g, &b);
        rc = Tavona_WriteColorToRegistry(root, k, nullptr, s, n, RGB(r, g, b));
        break;
      }
    }
    Read();
    demo::SetText(call_, L"write: registry error code " + std::to_wstring(rc) + L"; " +
                             demo::GetText(call_));
  }

  void ShowColor(int rc) {
    std::wstring t = L"red " + std::to_wstring(GetRValue(chosen_)) + L", green " +
                     std::to_wstring(GetGValue(chosen_)) + L", blue " +
                     std::to_wstring(GetBValue(chosen_));
    if (rc) t += rc == 1 ? L"  (1: chosen; custom colours saved)" : L"  (2: cancelled)";
    demo::SetText(color_, t);
  }

  HWND machine_, key_, section_, name_, value_, stored_, call_, subkeys_, color_;
  HWND type_[5];
  COLORREF chosen_ = RGB(0, 128, 255);
};

}  // namespace

HWND CreateSettingsPage(HWND parent) { return (new SettingsPage(parent))->hwnd(); }
