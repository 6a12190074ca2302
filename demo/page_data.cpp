// Data utilities: descriptor editing, scrambling of a typed text with a
// key, Roman numerals and the string hash, and a regular-expression tester,
// recomputed as the user types.
#include <tavona/tavona32.h>

#include <algorithm>
#include <cwchar>
#include <string>

#include "pages.h"
#include "ui.h"

namespace {

enum : int {
  kDescriptor = 100,
  kName,
  kValue,
  kKey,
  kPlain,
  kNumber,
  kText,
  kPattern,
};

// Descriptors show their tabs as '|'.
std::wstring ShowTabs(std::wstring s) {
  std::replace(s.begin(), s.end(), L'\t', L'|');
  return s;
}
std::wstring MakeTabs(std::wstring s) {
  std::replace(s.begin(), s.end(), L'|', L'\t');
  return s;
}

std::wstring Hex(const std::wstring &s) {
  std::wstring out;
  wchar_t code[8];
  for (wchar_t c : s) {
    swprintf(code, 8, L"%02X ", static_cast<unsigned>(c));
    out += code;
  }
  return out;
}

class DataPage : public demo::Page {
 public:
  explicit DataPage(HWND parent) : Page(parent) {
    demo::Form f(*this, {L"Descriptor:", L"Name:", L"Value:", L"After adding:",
                         L"After deleting:", L"Reading:", L"Key:", L"Text:", L"Scrambled:",
                         L"Stored as:", L"Number:", L"Roman:", L"Pattern:", L"Match:"});

    f.BeginGroup(L"Descriptor (DescriptorAddStringItem, DescriptorDeleteItem, ...GetStringItem)");
    f.Row(L"Descriptor:");
    descriptor_ = f.Edit(kDescriptor, L"width=640|height=480|title=Demo", 0);
    f.Row(L"Name:");
    name_ = f.Edit(kName, L"height", demo::DuX(80));
    f.Note(L"tabs between items are shown as |");
    f.Row(L"Value:");
    value_ = f.Edit(kValue, L"600", demo::DuX(80));
    f.Row(L"After adding:");
    added_ = f.ReadOnly(0);
    f.Row(L"After deleting:");
    deleted_ = f.ReadOnly(0);
    f.Row(L"Reading:");
    read_ = f.ReadOnly(0);
    f.EndGroup();

    f.BeginGroup(L"Scrambling (Tavona_Crypt, Tavona_StringToAutoCrypt) - obfuscation only");
    f.Row(L"Key:");
    key_ = f.Edit(kKey, L"Demo key", demo::DuX(120));
    f.Row(L"Text:");
    plain_ = f.Edit(kPlain, L"Password: \"open sesame\"", 0);
    f.Row(L"Scrambled:");
    scrambled_ = f.ReadOnly(0);
    f.Row(L"Stored as:");
    stored_ = f.ReadOnly(0);
    f.EndGroup();

    f.BeginGroup(L"Roman numerals and hash (Tavona_LongToRoman, Tavona_CreateHash)");
    f.Row(L"Number:");
    number_ = f.Edit(kNumber, L"1994", demo::DuX(40), ES_NUMBER);
    SendMessageW(number_, EM_LIMITTEXT, 9, 0);
    f.Row(L"Roman:");
    roman_ = f.ReadOnly(0);
    f.EndGroup();

    f.BeginGroup(L"Regular expression, ECMAScript (Tavona_ParseRegExp)");
    f.Row(L"Text:");
    text_ = f.Edit(kText, L"Order 4711 shipped on 2024-05-17", 0);
    f.Row(L"Pattern:");
    pattern_ = f.Edit(kPattern, L"\\d{4}-\\d{2}-\\d{2}", 0);
    f.Row(L"Match:");
    match_ = f.ReadOnly(0);
    f.EndGroup();
    f.Finish();

    ready_ = true;
    UpdateDescriptor();
    UpdateCrypt();
    UpdateRoman();
    UpdateRegex();
  }

 protected:
  void OnCommand(int id, int code) override {
    if (!ready_ || code != EN_CHANGE) return;
    switch (id) {
      case kDescriptor: case kName: case kValue: UpdateDescriptor(); break;
      case kKey: case kPlain: UpdateCrypt(); break;
      case kNumber: UpdateRoman(); break;
      case kText: case kPattern: UpdateRegex(); break;
    }
  }

 private:
  void UpdateDescriptor() {
    constexpr int kSize = 1000;
    std::wstring start = MakeTabs(demo::GetText(descriptor_)).substr(0, kSize - 1);
    std::wstring name = demo::GetText(name_);
    std::wstring value = demo::GetText(value_);
    wchar_t buffer[kSize];
    wcscpy(buffer, start.c_str());
    DescriptorAddStringItem(buffer, kSize, name.c_str(), value.c_str());
    demo::SetText(added_, ShowTabs(buffer));
    wcscpy(buffer, start.c_str());
    DescriptorDeleteItem(buffer, name.c_str());
    demo::SetText(deleted_, ShowTabs(buffer));
    wchar_t text[200];
    DescriptorGetStringItem(start.c_str(), name.c_str(), L"(missing)", text, 200);
    int number = DescriptorGetLongItem(start.c_str(), name.c_str(), -1);
    demo::SetText(read_, L"text \"" + std::wstring(text) + L"\", number " +
                             std::to_wstring(number) +
                             L"  (only the last item reads back; others read as empty)");
  }

  void UpdateCrypt() {
    std::wstring key = demo::GetText(key_);
    std::wstring text = demo::GetText(plain_).substr(0, 900);
    std::wstring scrambled = text;
    Tavona_Crypt(key.c_str(), scrambled.data());
    demo::SetText(scrambled_, Hex(scrambled));
    wchar_t stored[4000];
    Tavona_StringToAutoCrypt(text.c_str(), stored, 4000, key.c_str());
    wchar_t back[1000];
    Tavona_AutoCryptToString(stored, back, 1000, key.c_str());
    demo::SetText(stored_, std::wstring(stored) + L"   (reads back as \"" + back + L"\")");
  }

  void UpdateRoman() {
    std::wstring digits = demo::GetText(number_);
    int value = _wtoi(digits.c_str());
    wchar_t roman[40];
    Tavona_LongToRoman(value, roman, 40);
    std::wstring line = *roman ? roman : L"(only 1 to 3999)";
    line += L"    hash of the number's text: " +
            std::to_wstring(Tavona_CreateHash(digits.c_str(), 0));
    demo::SetText(roman_, line);
  }

  void UpdateRegex() {
    std::wstring text = demo::GetText(text_);
    std::wstring pattern = demo::GetText(pattern_);
    UINT length = 0;
    wchar_t match[1000];
    int at = Tavona_ParseRegExp(text.c_str(), 0, pattern.c_str(), &length, match, 0, 0, 0, 1000);
    std::wstring line;
    switch (at) {
      case TAVONA_REGEXP_NO_MATCH: line = L"no match (-1)"; break;
      case TAVONA_REGEXP_BAD_PATTERN: line = L"not a valid pattern (-3)"; break;
      case TAVONA_REGEXP_TOO_COMPLEX: line = L"too complex for the engine (-2)"; break;
      default:
        line = L"at " + std::to_wstring(at) + L", " + std::to_wstring(length) +
               L" characters: \"" + match + L"\"";
    }
    demo::SetText(match_, line);
  }

  bool ready_ = false;
  HWND descriptor_, name_, value_, added_, deleted_, read_;
  HWND key_, plain_, scrambled_, stored_;
  HWND number_, roman_;
  HWND text_, pattern_, match_;
};

}  // namespace

HWND CreateDataPage(HWND parent) { return (new DataPage(parent))->hwnd(); }
