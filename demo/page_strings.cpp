// String primitives: search and replace with its position flags, the fields
// of a separated line, and hexadecimal numbers, recomputed as the user types.
#include <tavona/tavona32.h>

#include <algorithm>
#include <cwchar>
#include <string>
#include <vector>

#include "pages.h"
#include "ui.h"

namespace {

enum : int {
  kText = 100,
  kFind,
  kWith,
  kFirst,
  kNoCase,
  kAtStart,
  kInMiddle,
  kAtEnd,
  kSize,
  kLine,
  kSeparator,
  kFields,
  kHex,
};

struct FlagBox {
  int id;
  const wchar_t *label;
  UINT flag;
  bool checked;
};

constexpr FlagBox kFlagBoxes[] = {
    {kFirst, L"First only", TAVONA_REPLACE_FIRST, false},
    {kNoCase, L"Ignore case", TAVONA_REPLACE_NOCASE, true},
    {kAtStart, L"At start", TAVONA_REPLACE_ATSTART, true},
    {kInMiddle, L"In the middle", TAVONA_REPLACE_INMIDDLE, true},
    {kAtEnd, L"At end", TAVONA_REPLACE_ATEND, true},
};

constexpr int kMaxTextSize = 100000;

std::wstring Quoted(const std::wstring &s) { return L"L\"" + s + L"\""; }

class StringsPage : public demo::Page {
 public:
  explicit StringsPage(HWND parent) : Page(parent) {
    demo::Form f(*this, {L"Text:", L"Find:", L"Replace with:", L"Flags:", L"Text size:",
                         L"Result:", L"Call:", L"Line:", L"Separator:", L"Fields:",
                         L"Hexadecimal:"});

    f.BeginGroup(L"Search and replace (Tavona_ReplaceString)");
    f.Row(L"Text:");
    text_ = f.Edit(kText, L"Cat, cat and CAT", 0);
    f.Row(L"Find:");
    find_ = f.Edit(kFind, L"cat", 0);
    f.Row(L"Replace with:");
    with_ = f.Edit(kWith, L"dog", 0);
    f.Row(L"Flags:");
    for (const FlagBox &b : kFlagBoxes) flags_.push_back(f.Check(b.id, b.label, b.checked));
    f.Row(L"Text size:");
    size_ = f.Edit(kSize, L"100", demo::DuX(32), ES_NUMBER);
    SendMessageW(size_, EM_LIMITTEXT, 6, 0);
    f.Note(L"characters, including the terminating zero");
    f.Row(L"Result:");
    result_ = f.ReadOnly(0);
    f.Row(L"Call:");
    call_ = f.ReadOnly(0);
    f.EndGroup();

    f.BeginGroup(L"Fields of a separated line (Tavona_ScanString)");
    f.Row(L"Line:");
    line_ = f.Edit(kLine, L"Smith,\"Main Street, 12\",,Berlin", 0);
    f.Row(L"Separator:");
    separator_ = f.Edit(kSeparator, L",", demo::DuX(16));
    SendMessageW(separator_, EM_LIMITTEXT, 1, 0);
    f.Note(L"one character; a field in double quotes may contain it");
    f.Row(L"Fields:");
    fields_ = f.List(kFields, 5, LBS_USETABSTOPS | LBS_NOSEL);
    int tabStop = 16;  // dialog units
    SendMessageW(fields_, LB_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&tabStop));
    f.EndGroup();

    f.BeginGroup(L"Hexadecimal number (Tavona_HexStringToLong)");
    f.Row(L"Hexadecimal:");
    hex_ = f.Edit(kHex, L" 1f a", demo::DuX(60));
    hexValue_ = f.Note(L"", 0);
    f.EndGroup();
    f.Finish();

    ready_ = true;
    UpdateReplace();
    UpdateFields();
    UpdateHex();
  }

 protected:
  void OnCommand(int id, int code) override {
    if (!ready_ || (code != EN_CHANGE && code != BN_CLICKED)) return;
    switch (id) {
      case kText: case kFind: case kWith: case kSize:
      case kFirst: case kNoCase: case kAtStart: case kInMiddle: case kAtEnd:
        UpdateReplace();
        break;
      case kLine: case kSeparator:
        UpdateFields();
        break;
      case kHex:
        UpdateHex();
        break;
    }
  }

 private:
  void UpdateReplace() {
    std::wstring text = demo::GetText(text_);
    std::wstring find = demo::GetText(find_);
    std::wstring with = demo::GetText(with_);
    UINT flags = 0;
    for (size_t i = 0; i < flags_.size(); ++i)
      if (SendMessageW(flags_[i], BM_GETCHECK, 0, 0) == BST_CHECKED) flags |= kFlagBoxes[i].flag;
    int size = std::min(_wtoi(demo::GetText(size_).c_str()), kMaxTextSize);

    // The buffer is textSize characters, or longer when the typed text does
    // not fit in it (the library then leaves the text alone).
    std::vector<wchar_t> buffer(std::max<size_t>(size, text.size() + 1) + 1, L'\0');
    std::copy(text.begin(), text.end(), buffer.begin());
    Tavona_ReplaceString(buffer.data(), size, find.c_str(), with.c_str(), flags);
    std::wstring result(buffer.data());
    demo::SetText(result_, result);

    std::wstring call = L"Tavona_ReplaceString(text, " + std::to_wstring(size) + L", " +
                        Quoted(find) + L", " + Quoted(with) + L", " + std::to_wstring(flags) +
                        L")  ->  " + std::to_wstring(result.size()) + L" characters";
    if (!(flags & (TAVONA_REPLACE_ATSTART | TAVONA_REPLACE_INMIDDLE | TAVONA_REPLACE_ATEND)))
      call += L" (no position flag: nothing qualifies)";
    demo::SetText(call_, call);
  }

  void UpdateFields() {
    std::wstring line = demo::GetText(line_);
    std::wstring sep = demo::GetText(separator_);
    wchar_t separator = sep.empty() ? L'\0' : sep[0];
    // Large enough for any field: a field that fills the buffer would be
    // left without its terminating zero.
    std::vector<wchar_t> field(line.size() + 2, L'\0');

    SendMessageW(fields_, WM_SETREDRAW, FALSE, 0);
    SendMessageW(fields_, LB_RESETCONTENT, 0, 0);
    const wchar_t *cursor = line.c_str();
    for (int n = 1; *cursor; ++n) {
      const wchar_t *before = cursor;
      int len = Tavona_ScanString(&cursor, field.data(), static_cast<int>(field.size()),
                                  separator);
      std::wstring item = std::to_wstring(n) + L"\t" +
                          (len > 0 ? std::wstring(field.data(), len) : L"(empty)");
      SendMessageW(fields_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
      if (cursor == before) break;
    }
    SendMessageW(fields_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(fields_, nullptr, TRUE);
  }

  void UpdateHex() {
    DWORD value = 0;
    int rc = Tavona_HexStringToLong(demo::GetText(hex_).c_str(), &value);
    wchar_t text[128];
    if (rc == 0)
      swprintf(text, 128, L"= 0x%08lX = %lu", static_cast<unsigned long>(value),
               static_cast<unsigned long>(value));
    else
      swprintf(text, 128, L"not hexadecimal (-1); read so far: 0x%08lX",
               static_cast<unsigned long>(value));
    demo::SetText(hexValue_, text);
  }

  bool ready_ = false;
  HWND text_, find_, with_, size_, result_, call_;
  std::vector<HWND> flags_;
  HWND line_, separator_, fields_;
  HWND hex_, hexValue_;
};

}  // namespace

HWND CreateStringsPage(HWND parent) { return (new StringsPage(parent))->hwnd(); }
