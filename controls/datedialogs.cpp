// The date, time and date-time format dialogs: a format taken apart into
// choice boxes and texts, a live sample of 3 January 1955 15:55:26, and
// the format built back on OK.
#include <tavona/controls.h>
#include <tavona/datetime.h>
#include <tavona/frame.h>

#include "datetime/formatparts.h"
#include "frame/dialog.h"
#include "frame/globals.h"
#include "base/wstr.h"
#include "frame/lts.h"
#include "tvres.h"

namespace {

using namespace tv::dtf;

constexpr int kFormatSize = 200;  // the sample's format
constexpr int kSampleSize = 100;
constexpr int kChoicesSize = 500;

constexpr TAVONA_VALUE_PAIR kOrderRadios[] = {
    {IDC_DTF_ORDER_DMY, kDayMonthYear},
    {IDC_DTF_ORDER_YMD, kYearMonthDay},
    {IDC_DTF_ORDER_MDY, kMonthDayYear},
    {static_cast<DWORD>(-1), 0}};
constexpr TAVONA_VALUE_PAIR kClockRadios[] = {
    {IDC_DTF_CLOCK_12, 12}, {IDC_DTF_CLOCK_24, 24}, {static_cast<DWORD>(-1), 0}};

struct Choice {
  int id;
  UINT list;
  int FormatParts::*digit;
};
constexpr Choice kChoices[] = {
    {IDC_DTF_WEEKDAY, IDS_DTF_WEEKDAY_CHOICES, &FormatParts::weekday},
    {IDC_DTF_HOUR, IDS_DTF_HOUR_CHOICES, &FormatParts::hour},
    {IDC_DTF_MINUTE, IDS_DTF_MINUTE_CHOICES, &FormatParts::minute},
    {IDC_DTF_SECOND, IDS_DTF_SECOND_CHOICES, &FormatParts::second},
    {IDC_DTF_AMPM, IDS_DTF_AMPM_CHOICES, &FormatParts::ampm},
};
constexpr UINT kDateChoices[3] = {IDS_DTF_DAY_CHOICES, IDS_DTF_MONTH_CHOICES,
                                  IDS_DTF_YEAR_CHOICES};
constexpr int kDateBoxes[3] = {IDC_DTF_DATE_1, IDC_DTF_DATE_2, IDC_DTF_DATE_3};
constexpr int kDateTexts[2] = {IDC_DTF_AFTER_DATE_1, IDC_DTF_AFTER_DATE_2};

struct TextEdit {
  int id;
  WCHAR (FormatParts::*text)[kTextSize];
};
constexpr TextEdit kTexts[] = {
    {IDC_DTF_LEADING, &FormatParts::leading},
    {IDC_DTF_AFTER_WEEKDAY, &FormatParts::afterWeekday},
    {IDC_DTF_BETWEEN, &FormatParts::between},
    {IDC_DTF_AFTER_HOUR, &FormatParts::afterHour},
    {IDC_DTF_AFTER_MINUTE, &FormatParts::afterMinute},
    {IDC_DTF_AFTER_SECOND, &FormatParts::afterSecond},
};

// Controls that only a date or only a time needs.
constexpr int kDateControls[] = {IDC_DTF_LEADING, IDC_DTF_WEEKDAY, IDC_DTF_AFTER_WEEKDAY,
                                 IDC_DTF_DATE_1, IDC_DTF_DATE_2, IDC_DTF_DATE_3,
                                 IDC_DTF_AFTER_DATE_1, IDC_DTF_AFTER_DATE_2,
                                 IDC_DTF_ORDER_DMY, IDC_DTF_ORDER_YMD, IDC_DTF_ORDER_MDY};
constexpr int kTimeControls[] = {IDC_DTF_HOUR, IDC_DTF_AFTER_HOUR, IDC_DTF_MINUTE,
                                 IDC_DTF_AFTER_MINUTE, IDC_DTF_SECOND, IDC_DTF_AFTER_SECOND,
                                 IDC_DTF_AMPM, IDC_DTF_CLOCK_12, IDC_DTF_CLOCK_24};

struct DateDialog {
  FormatParts parts;
  bool busy = false;
};

// A choice box gets its list and the digit as its selection; a digit that
// is not one of the entries leaves it without selection, which reads as 0
// (a hidden field, as the formatter treats unknown digits).
void FillChoice(HWND dialog, int id, UINT list, int digit) {
  HWND box = GetDlgItem(dialog, id);
  WCHAR choices[kChoicesSize] = {};
  tv::LoadTranslatedString(tv::g.resources, list, choices, kChoicesSize);
  Tavona_FillBox(box, '|', choices);
  SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(digit), 0);
}

int ReadChoice(HWND dialog, int id) {
  LRESULT index = SendDlgItemMessageW(dialog, id, CB_GETCURSEL, 0, 0);
  return index < 0 ? 0 : static_cast<int>(index);
}

void Fill(HWND dialog, DateDialog &d) {
  d.busy = true;
  FormatParts &p = d.parts;
  for (const TextEdit &t : kTexts) {
    SendDlgItemMessageW(dialog, t.id, EM_LIMITTEXT, kTextSize - 1, 0);
    SetDlgItemTextW(dialog, t.id, p.*t.text);
  }
  for (const Choice &c : kChoices) FillChoice(dialog, c.id, c.list, p.*c.digit);
  DateField fields[3];
  FieldsInOrder(p.order, fields);
  for (int i = 0; i < 3; ++i) FillChoice(dialog, kDateBoxes[i], kDateChoices[fields[i]], p.date[fields[i]]);
  for (int i = 0; i < 2; ++i) {
    SendDlgItemMessageW(dialog, kDateTexts[i], EM_LIMITTEXT, kTextSize - 1, 0);
    SetDlgItemTextW(dialog, kDateTexts[i], p.afterDate[fields[i]]);
  }
  UINT order = Tavona_Translate(static_cast<UINT>(p.order), kOrderRadios, static_cast<UINT>(-1),
                                IDC_DTF_ORDER_DMY, TAVONA_TRANSLATE_REVERSE);
  CheckRadioButton(dialog, IDC_DTF_ORDER_DMY, IDC_DTF_ORDER_MDY, static_cast<int>(order));
  UINT clock = Tavona_Translate(static_cast<UINT>(p.clock), kClockRadios, static_cast<UINT>(-1),
                                IDC_DTF_CLOCK_24, TAVONA_TRANSLATE_REVERSE);
  CheckRadioButton(dialog, IDC_DTF_CLOCK_12, IDC_DTF_CLOCK_24, static_cast<int>(clock));
  d.busy = false;
}

// The state as the controls show it. The text after the third date field
// has no control and stays as it was.
void ReadBack(HWND dialog, FormatParts &p) {
  for (const TextEdit &t : kTexts) GetDlgItemTextW(dialog, t.id, p.*t.text, kTextSize);
  for (const Choice &c : kChoices) p.*c.digit = ReadChoice(dialog, c.id);
  DateField fields[3];
  FieldsInOrder(p.order, fields);
  for (int i = 0; i < 3; ++i) p.date[fields[i]] = ReadChoice(dialog, kDateBoxes[i]);
  for (int i = 0; i < 2; ++i) GetDlgItemTextW(dialog, kDateTexts[i], p.afterDate[fields[i]], kTextSize);
}

void ShowSample(HWND dialog, const FormatParts &p) {
  WCHAR format[kFormatSize] = {};
  BuildFormat(p, format, kFormatSize);
  DateTimeStruct sample = {3, 1, 1955, 15, 55, 26};
  WCHAR text[kSampleSize] = {};
  DateTimeStruct_To_FormattedDateTime(&sample, text, kSampleSize, format);
  SetDlgItemTextW(dialog, IDC_DTF_SAMPLE, text);
}

bool IsTextEdit(int id) {
  for (const TextEdit &t : kTexts)
    if (t.id == id) return true;
  return id == kDateTexts[0] || id == kDateTexts[1];
}

bool IsChoice(int id) {
  for (const Choice &c : kChoices)
    if (c.id == id) return true;
  return id == kDateBoxes[0] || id == kDateBoxes[1] || id == kDateBoxes[2];
}

// A bar, percent sign or quote would break the format: the character just
// typed goes again.
void TakeBackForbidden(HWND edit) {
  WCHAR text[kTextSize + 1] = {};
  GetWindowTextW(edit, text, kTextSize + 1);
  for (const WCHAR *c = text; *c; ++c) {
    if (*c == '|' || *c == '%' || *c == '"') {
      MessageBeep(static_cast<UINT>(-1));
      SendMessageW(edit, WM_CHAR, 8, 0);
      return;
    }
  }
}

void EnableFor(HWND dialog, int kind) {
  if (kind == kTimeOnly)
    for (int id : kDateControls) EnableWindow(GetDlgItem(dialog, id), FALSE);
  if (kind == kDateOnly)
    for (int id : kTimeControls) EnableWindow(GetDlgItem(dialog, id), FALSE);
}

}  // namespace

INT_PTR CALLBACK DateTimeFormat_Dialog_Callback(HWND dialog, UINT message, WPARAM wParam,
                                                LPARAM lParam) {
  DateDialog *d = tv::DialogRecord<DateDialog>(dialog, message, lParam);
  if (!d) return FALSE;
  switch (message) {
    case WM_INITDIALOG:
      Fill(dialog, *d);
      // From here on the state is what the controls show.
      ReadBack(dialog, d->parts);
      EnableFor(dialog, d->parts.kind);
      ShowSample(dialog, d->parts);
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
        case IDC_DTF_ORDER_DMY:
        case IDC_DTF_ORDER_YMD:
        case IDC_DTF_ORDER_MDY:
          if (code == BN_CLICKED && !d->busy) {
            ReadBack(dialog, d->parts);
            Reorder(d->parts, static_cast<int>(Tavona_Translate(static_cast<UINT>(id), kOrderRadios,
                                                                static_cast<UINT>(-1), 1, 0)));
            Fill(dialog, *d);
            ShowSample(dialog, d->parts);
          }
          return TRUE;
        case IDC_DTF_CLOCK_12:
        case IDC_DTF_CLOCK_24:
          if (code == BN_CLICKED && !d->busy) {
            ReadBack(dialog, d->parts);
            d->parts.clock = id == IDC_DTF_CLOCK_12 ? 12 : 24;
            Fill(dialog, *d);
            ShowSample(dialog, d->parts);
          }
          return TRUE;
      }
      if (d->busy) break;
      if (code == EN_UPDATE && IsTextEdit(id)) {
        TakeBackForbidden(reinterpret_cast<HWND>(lParam));
        ReadBack(dialog, d->parts);
        ShowSample(dialog, d->parts);
        return TRUE;
      }
      if (code == CBN_SELCHANGE && IsChoice(id)) {
        ReadBack(dialog, d->parts);
        ShowSample(dialog, d->parts);
        return TRUE;
      }
      break;
    }
  }
  return FALSE;
}

INT WINAPI Tavona_EditDateTimeFormat(HWND owner, WCHAR *format, INT size, INT kind) {
  if (!format || size < 10) return 2;
  // The caller's text as far as its buffer goes.
  WCHAR *copyEnd = format;
  while (copyEnd - format < size - 1 && *copyEnd) ++copyEnd;
  WCHAR saved = *copyEnd;
  *copyEnd = 0;
  DateDialog d;
  SplitFormat(format, kind, d.parts);
  *copyEnd = saved;
  INT_PTR result = tv::RunDialog(IDD_DATETIME_FORMAT, DateTimeFormat_Dialog_Callback,
                                 reinterpret_cast<LPARAM>(&d), owner);
  if (result != 1) return 2;
  BuildFormat(d.parts, format, size);
  return 1;
}

INT WINAPI Tavona_EditDateFormat(WCHAR *format, INT size) {
  return Tavona_EditDateTimeFormat(GetActiveWindow(), format, size, kDateOnly);
}

INT WINAPI Tavona_EditTimeFormat(WCHAR *format, INT size) {
  return Tavona_EditDateTimeFormat(GetActiveWindow(), format, size, kTimeOnly);
}
