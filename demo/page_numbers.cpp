// Numbers: a value written with an integer or float format that the user
// types or edits in the library's dialog, the text read back, live.
#include <tavona/tavona32.h>

#include <cwchar>
#include <string>

#include "pages.h"
#include "ui.h"

namespace {

enum : int {
  kIntValue = 100,
  kIntFormat,
  kIntEdit,
  kFloatValue,
  kFloatFormat,
  kFloatEdit,
};

class NumbersPage : public demo::Page {
 public:
  explicit NumbersPage(HWND parent) : Page(parent) {
    demo::Form f(*this, {L"Value:", L"Format:", L"Formatted:", L"Read back:"});
    f.BeginGroup(L"Integer (Int_To_FormattedInt, FormattedInt_To_Int)");
    f.Row(L"Value:");
    intValue_ = f.Edit(kIntValue, L"-1234567", demo::DuX(80));
    f.Row(L"Format:");
    intFormat_ = f.Edit(kIntFormat, L"%T.%BTotal: %E pcs", demo::DuX(160));
    f.Button(kIntEdit, L"Edit...");
    f.Row(L"Formatted:");
    intOut_ = f.ReadOnly(0);
    f.Row(L"Read back:");
    intBack_ = f.ReadOnly(0);
    f.EndGroup();

    f.BeginGroup(L"Float (Float_To_FormattedFloat, FormattedFloat_To_Float)");
    f.Row(L"Value:");
    floatValue_ = f.Edit(kFloatValue, L"1234567.891", demo::DuX(80));
    f.Row(L"Format:");
    floatFormat_ = f.Edit(kFloatFormat, L"%T,%D.%F2%B$ ", demo::DuX(160));
    f.Button(kFloatEdit, L"Edit...");
    f.Row(L"Formatted:");
    floatOut_ = f.ReadOnly(0);
    f.Row(L"Read back:");
    floatBack_ = f.ReadOnly(0);
    f.Row(L"");
    f.Note(L"read in the \"C\" locale: a fraction comes back only with '.' as decimal separator",
           0);
    f.EndGroup();
    f.Finish();
    ready_ = true;
    UpdateInt();
    UpdateFloat();
  }

 protected:
  void OnCommand(int id, int code) override {
    if (!ready_) return;
    if (code == EN_CHANGE) {
      if (id == kIntValue || id == kIntFormat) UpdateInt();
      if (id == kFloatValue || id == kFloatFormat) UpdateFloat();
    } else if (code == BN_CLICKED && (id == kIntEdit || id == kFloatEdit)) {
      HWND edit = id == kIntEdit ? intFormat_ : floatFormat_;
      wchar_t format[200];
      GetWindowTextW(edit, format, 200);
      int rc = id == kIntEdit ? Tavona_EditIntFormat(format, 200) : Tavona_EditFloatFormat(format, 200);
      if (rc == 1) SetWindowTextW(edit, format);  // EN_CHANGE updates the output
    }
  }

 private:
  void UpdateInt() {
    std::wstring format = demo::GetText(intFormat_);
    INT value = static_cast<INT>(wcstol(demo::GetText(intValue_).c_str(), nullptr, 10));
    wchar_t out[100];
    Int_To_FormattedInt(value, out, 100, format.c_str());
    demo::SetText(intOut_, out);
    INT back = 0;
    FormattedInt_To_Int(out, &back, format.c_str());
    demo::SetText(intBack_, std::to_wstring(back));
  }

  void UpdateFloat() {
    std::wstring format = demo::GetText(floatFormat_);
    double value = wcstod(demo::GetText(floatValue_).c_str(), nullptr);
    wchar_t out[100];
    Float_To_FormattedFloat(value, out, 100, format.c_str());
    demo::SetText(floatOut_, out);
    double back = 0;
    FormattedFloat_To_Float(out, &back, format.c_str());
    wchar_t text[64];
    swprintf(text, 64, L"%.15g", back);
    demo::SetText(floatBack_, text);
  }

  bool ready_ = false;
  HWND intValue_, intFormat_, intOut_, intBack_;
  HWND floatValue_, floatFormat_, floatOut_, floatBack_;
};

}  // namespace

HWND CreateNumbersPage(HWND parent) { return (new NumbersPage(parent))->hwnd(); }
