// The integer and float format dialogs: one edit per code, two check boxes
// for the signs, and previews redrawn from the rebuilt format on every
// change.
#include <tavona/settings.h>
#include <tavona/text.h>

#include "frame/alloc.h"
#include "frame/dialog.h"
#include "frame/globals.h"
#include "text/numbers.h"
#include "base/wstr.h"
#include "tvres.h"

namespace {

using namespace tv::num;

constexpr int kFormatSize = 200;
constexpr int kPreviewSize = 100;

struct CodeEdit {
  int id;
  WCHAR code;
  int limit;  // the longest value the formatter reads
  bool digitsOnly;
};

// In the order the codes are written back.
constexpr CodeEdit kIntEdits[] = {
    {IDC_FMT_THOUSANDS, 'T', 9, false}, {IDC_FMT_ZERO, 'Z', 49, false},
    {IDC_FMT_WIDTH, 'W', 9, true},      {IDC_FMT_BEFORE, 'B', 99, false},
    {IDC_FMT_AFTER, 'E', 99, false},
};
constexpr CodeEdit kFloatEdits[] = {
    {IDC_FMT_THOUSANDS, 'T', 9, false}, {IDC_FMT_FRACTION, 'F', 9, true},
    {IDC_FMT_DECIMAL, 'D', 9, false},   {IDC_FMT_BEFORE, 'B', 99, false},
    {IDC_FMT_AFTER, 'E', 99, false},    {IDC_FMT_ZERO, 'Z', 49, false},
};

struct FormatDialog {
  bool isFloat = false;
  const WCHAR *initial = nullptr;  // the caller's format (or the default)
  WCHAR rebuilt[kFormatSize] = {};
  bool changed = false;
  bool loading = false;

  const WCHAR *Current() const { return changed ? rebuilt : initial; }
  const CodeEdit *Edits(int &count) const {
    count = isFloat ? 6 : 5;
    return isFloat ? kFloatEdits : kIntEdits;
  }
  const CodeEdit *Find(int id) const {
    int count = 0;
    const CodeEdit *edits = Edits(count);
    for (int i = 0; i < count; ++i)
      if (edits[i].id == id) return &edits[i];
    return nullptr;
  }
};

void ShowPreviews(HWND dialog, const FormatDialog &d) {
  WCHAR text[kPreviewSize];
  const WCHAR *format = d.Current();
  if (d.isFloat) {
    Float_To_FormattedFloat(1234567.89, text, kPreviewSize, format);
    SetDlgItemTextW(dialog, IDC_FMT_PREVIEW_POSITIVE, text);
    Float_To_FormattedFloat(-1234567.89, text, kPreviewSize, format);
    SetDlgItemTextW(dialog, IDC_FMT_PREVIEW_NEGATIVE, text);
    Float_To_FormattedFloat(0.0, text, kPreviewSize, format);
    SetDlgItemTextW(dialog, IDC_FMT_PREVIEW_ZERO, text);
  } else {
    Int_To_FormattedInt(12345, text, kPreviewSize, format);
    SetDlgItemTextW(dialog, IDC_FMT_PREVIEW_POSITIVE, text);
    Int_To_FormattedInt(-12345, text, kPreviewSize, format);
    SetDlgItemTextW(dialog, IDC_FMT_PREVIEW_NEGATIVE, text);
    Int_To_FormattedInt(0, text, kPreviewSize, format);
    SetDlgItemTextW(dialog, IDC_FMT_PREVIEW_ZERO, text);
  }
}

void Load(HWND dialog, FormatDialog &d) {
  d.loading = true;
  CheckDlgButton(dialog, IDC_FMT_PLUS, HasCode(d.initial, '+') ? BST_CHECKED : BST_UNCHECKED);
  CheckDlgButton(dialog, IDC_FMT_NO_MINUS, HasCode(d.initial, '-') ? BST_CHECKED : BST_UNCHECKED);
  int count = 0;
  const CodeEdit *edits = d.Edits(count);
  for (int i = 0; i < count; ++i) {
    WCHAR value[kTextSize];
    ReadCode(d.initial, edits[i].code, value, edits[i].limit + 1);
    SendDlgItemMessageW(dialog, edits[i].id, EM_LIMITTEXT, edits[i].limit, 0);
    SetDlgItemTextW(dialog, edits[i].id, value);
  }
  d.loading = false;
  ShowPreviews(dialog, d);
}

// Signs first, then the separator (always), then every other code whose
// edit holds a value.
void Rebuild(HWND dialog, FormatDialog &d) {
  WCHAR *out = d.rebuilt;
  out[0] = 0;
  int room = kFormatSize;
  tv::Appender signs(out, kFormatSize);
  if (IsDlgButtonChecked(dialog, IDC_FMT_PLUS) == BST_CHECKED) {
    signs.Append(L"%+");
    room -= 2;
  }
  if (IsDlgButtonChecked(dialog, IDC_FMT_NO_MINUS) == BST_CHECKED) {
    signs.Append(L"%-");
    room -= 2;
  }
  int count = 0;
  const CodeEdit *edits = d.Edits(count);
  for (int i = 0; i < count; ++i) {
    WCHAR value[kTextSize];
    GetDlgItemTextW(dialog, edits[i].id, value, kTextSize);
    if (edits[i].code == 'T' || value[0]) WriteCode(out, kFormatSize, room, edits[i].code, value);
  }
  d.changed = true;
  ShowPreviews(dialog, d);
}

bool Refused(const CodeEdit &edit, WCHAR c) {
  if (edit.digitsOnly) return !tv::IsDigit(c);
  return c == '|' || c == '"';
}

// The character just typed (before the caret) is taken back when the edit
// does not accept it.
bool TakeBackRefused(HWND dialog, const CodeEdit &edit) {
  HWND control = GetDlgItem(dialog, edit.id);
  WCHAR value[kTextSize];
  int len = GetWindowTextW(control, value, kTextSize);
  DWORD end = 0;
  SendMessageW(control, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end));
  if (end == 0 || static_cast<int>(end) > len || !Refused(edit, value[end - 1])) return false;
  MessageBeep(static_cast<UINT>(-1));
  SendMessageW(control, WM_CHAR, 8, 0);
  return true;
}

INT_PTR DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  FormatDialog *d = tv::DialogRecord<FormatDialog>(dialog, message, lParam);
  if (!d) return FALSE;
  switch (message) {
    case WM_INITDIALOG:
      Load(dialog, *d);
      return TRUE;
    case WM_COMMAND: {
      int id = LOWORD(wParam);
      int code = HIWORD(wParam);
      switch (id) {
        case IDOK:
          EndDialog(dialog, 1);
          return TRUE;
        case IDCANCEL:
          EndDialog(dialog, 2);
          return TRUE;
        case IDHELP:
          Tavona_PerformHelp(tv::g.instance, d->isFloat ? IDD_FLOAT_FORMAT : IDD_INT_FORMAT, 0);
          return TRUE;
        case IDC_FMT_PLUS:
        case IDC_FMT_NO_MINUS:
          if (code == BN_CLICKED && !d->loading) Rebuild(dialog, *d);
          return TRUE;
        default:
          if (code == EN_UPDATE && !d->loading) {
            if (const CodeEdit *edit = d->Find(id)) {
              if (!TakeBackRefused(dialog, *edit)) Rebuild(dialog, *d);
              return TRUE;
            }
          }
          break;
      }
      break;
    }
  }
  return FALSE;
}

INT EditFormat(WCHAR *format, INT formatSize, bool isFloat) {
  if (!format || formatSize < 1) return 2;
  const WCHAR *source = format[0] ? format : (isFloat ? kDefaultFloatFormat : kDefaultIntFormat);
  tv::HeapPtr<WCHAR> copy(tv::DuplicateWideString(source));
  if (!copy) return 2;
  FormatDialog d;
  d.isFloat = isFloat;
  d.initial = copy.get();
  INT_PTR result = tv::RunDialog(isFloat ? IDD_FLOAT_FORMAT : IDD_INT_FORMAT,
                                 isFloat ? FloatFormat_Dialog_Callback : IntFormat_Dialog_Callback,
                                 reinterpret_cast<LPARAM>(&d));
  if (result != 1) return 2;
  tv::BoundedCopy(format, d.Current(), formatSize);
  format[formatSize - 1] = 0;
  return 1;
}

}  // namespace

INT_PTR CALLBACK IntFormat_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                           LPARAM lParam) {
  return DialogProc(dialog, message, wParam, lParam);
}

INT_PTR CALLBACK FloatFormat_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                             LPARAM lParam) {
  return DialogProc(dialog, message, wParam, lParam);
}

INT WINAPI Tavona_EditIntFormat(WCHAR *format, INT formatSize) {
  return EditFormat(format, formatSize, false);
}

INT WINAPI Tavona_EditFloatFormat(WCHAR *format, INT formatSize) {
  return EditFormat(format, formatSize, true);
}
