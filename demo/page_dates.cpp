// Dates and times: a record edited field by field, its text in a format of
// one's own, its day number, weekday and Easter, and a typed text read back.
#include <tavona/tavona32.h>

#include <cwchar>
#include <string>

#include "pages.h"
#include "ui.h"

namespace {

enum : int {
  kDay = 100,
  kMonth,
  kYear,
  kHour,
  kMinute,
  kSecond,
  kFormat,
  kText,
  kReadFormat,
};

std::wstring Fields(const DateTimeStruct &r) {
  wchar_t buf[100];
  swprintf(buf, 100, L"day %d, month %d, year %d, %02d:%02d:%02d", r.day, r.month, r.year,
           r.hour, r.minute, r.second);
  return buf;
}

std::wstring Formatted(const DateTimeStruct &r, const wchar_t *format) {
  wchar_t buf[200] = {};
  DateTimeStruct_To_FormattedDateTime(&r, buf, 200, format);
  return buf;
}

class DatesPage : public demo::Page {
 public:
  explicit DatesPage(HWND parent) : Page(parent) {
    demo::Form f(*this, {L"Date:", L"Time:", L"Format:", L"Formatted:", L"ODBC:",
                         L"Day number:", L"Easter:", L"Text:", L"Read with:", L"Result:"});
    DateTimeStruct now{};
    Get_CurrentDateAndTime(&now);

    f.BeginGroup(L"A date and time (DateTimeStruct_To_FormattedDateTime)");
    f.Row(L"Date:");
    day_ = Number(f, kDay, now.day);
    f.Note(L"day");
    month_ = Number(f, kMonth, now.month);
    f.Note(L"month");
    year_ = Number(f, kYear, now.year);
    f.Note(L"year");
    f.Row(L"Time:");
    hour_ = Number(f, kHour, now.hour);
    f.Note(L"hour");
    minute_ = Number(f, kMinute, now.minute);
    f.Note(L"minute");
    second_ = Number(f, kSecond, now.second);
    f.Note(L"second");
    f.Row(L"Format:");
    format_ = f.Edit(kFormat, L"%W2, %D1. %M4 %Y2, %h1:%U2:%S2%P1", 0);
    f.Row(L"");
    f.Note(L"%D day, %M month, %Y year, %W weekday, %H %h hour, %U minute, %S second, "
           L"%P am/pm; digit 1, 2 or 0 (hidden), 3 and 4 for names");
    f.Row(L"Formatted:");
    formatted_ = f.ReadOnly(0);
    f.Row(L"ODBC:");
    odbc_ = f.ReadOnly(0);
    f.Row(L"Day number:");
    dayNumber_ = f.ReadOnly(0);
    f.Row(L"Easter:");
    easter_ = f.ReadOnly(0);
    f.EndGroup();

    f.BeginGroup(L"Reading a text (FormattedDateTime_To_DateTimeStruct)");
    f.Row(L"Text:");
    // A sample in the resource library's language, so that its month
    // names read back.
    text_ = f.Edit(kText, Formatted(DateTimeStruct{15, 3, 2015, 0, 0, 0}, L"%D1 %M4 %Y1").c_str(), 0);
    f.Row(L"Read with:");
    readFormat_ = f.Edit(kReadFormat, L"%D1 %M4 %Y2", 0);
    f.Row(L"Result:");
    result_ = f.ReadOnly(0);
    f.EndGroup();
    f.Finish();

    ready_ = true;
    UpdateRecord();
    UpdateRead();
  }

 protected:
  void OnCommand(int id, int code) override {
    if (!ready_ || code != EN_CHANGE) return;
    if (id == kText || id == kReadFormat)
      UpdateRead();
    else
      UpdateRecord();
  }

 private:
  static HWND Number(demo::Form &f, int id, int value) {
    HWND h = f.Edit(id, std::to_wstring(value).c_str(), demo::DuX(30));
    SendMessageW(h, EM_LIMITTEXT, 11, 0);
    return h;
  }

  static int Value(HWND h) { return _wtoi(demo::GetText(h).c_str()); }

  void UpdateRecord() {
    DateTimeStruct r{};
    Tavona_SetDateTimeStruct(&r, Value(year_), Value(month_), Value(day_), Value(hour_),
                             Value(minute_), Value(second_));
    std::wstring format = demo::GetText(format_);
    demo::SetText(formatted_, Formatted(r, format.c_str()));

    wchar_t odbc[40] = {}, constant[40] = {};
    DateTimeStruct_To_OdbcTimeStamp(&r, odbc, 40);
    DateTimeStruct_To_OdbcDateConstant(&r, constant, 40);
    demo::SetText(odbc_, std::wstring(odbc) + L"    " + constant);

    std::wstring days = std::to_wstring(Get_DaysSinceBaseDate(&r));
    if (Is_Date_Correct(&r))
      days += L", weekday " + std::to_wstring(Get_Weekday(&r)) + L" (" + Formatted(r, L"%W2") +
              L")";
    else
      days += L": not a valid date (weekday 6 as for day 0)";
    if (!Is_Time_Correct(&r)) days += L"; not a valid time";
    demo::SetText(dayNumber_, days);

    DateTimeStruct easter{};
    Tavona_ComputeEasterSunday(r.year, &easter);
    demo::SetText(easter_, Formatted(easter, L"%W2, %D1. %M4 %Y2"));
  }

  void UpdateRead() {
    std::wstring text = demo::GetText(text_), format = demo::GetText(readFormat_);
    DateTimeStruct r{};
    int rc = FormattedDateTime_To_DateTimeStruct(text.c_str(), &r, format.c_str());
    demo::SetText(result_, std::to_wstring(rc) + L": " + Fields(r) +
                               (rc == 0 ? L"" : L"  (not a valid date and time)"));
  }

  bool ready_ = false;
  HWND day_, month_, year_, hour_, minute_, second_, format_, formatted_, odbc_, dayNumber_,
      easter_;
  HWND text_, readFormat_, result_;
};

}  // namespace

HWND CreateDatesPage(HWND parent) { return (new DatesPage(parent))->hwnd(); }
