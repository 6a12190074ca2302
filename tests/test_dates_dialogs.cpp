// The date and time format dialogs driven through their controls. Every
// sample is compared with the formatter's text of the format the test
// expects the dialog to build, and OK must return exactly that format.
// The German dialogs run in a child process started with VEL_LANGUAGE=de.
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include <string>

#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

const wchar_t *Caption() { return Pick(L"Date and Time Format", L"Datums- und Uhrzeitformat"); }

std::wstring SampleOf(const wchar_t *format) {
  DateTimeStruct r = {3, 1, 1955, 15, 55, 26};
  wchar_t out[100] = {};
  DateTimeStruct_To_FormattedDateTime(&r, out, 100, format);
  return out;
}

// The sample shows what the format the dialog now holds gives.
void Expect(tvui::Session &s, HWND dlg, const wchar_t *format, int line) {
  EXPECT_EQ(s.Text(dlg, IDC_DTF_SAMPLE), SampleOf(format)) << "line " << line << ", format "
                                                            << Narrow(format);
}

TEST(DateDialogs, DateAndTime) {
  wchar_t format[200] = L"%W2, %D1. %M4 %Y2 %H2:%U2";
  int rc = tvui::RunModal(
      [&] { return Tavona_EditDateTimeFormat(nullptr, format, 200, 3); },
      [](tvui::Session &s) {
        HWND dlg = s.WaitDialog(Caption());
        // Taken apart (formatparts) and shown: the sample is the format's.
        Expect(s, dlg, L"%W2, %D1. %M4 %Y2 %H2:%U2", __LINE__);
        s.Screenshot(dlg, Shot(L"dates_format_dialog"));

        // Month first: the fields move, the separators stay in place.
        s.Check(dlg, IDC_DTF_ORDER_MDY);
        s.Select(dlg, IDC_DTF_DATE_2, 3);  // the day as an ordinal
        Expect(s, dlg, L"%W2, %M4. %D3 %Y2 %H2:%U2", __LINE__);

        // The 12-hour clock with its marker, seconds with a text after them.
        s.Check(dlg, IDC_DTF_CLOCK_12);
        s.Select(dlg, IDC_DTF_AMPM, 2);
        s.Select(dlg, IDC_DTF_SECOND, 1);
        s.SetText(dlg, IDC_DTF_AFTER_MINUTE, L".");
        s.SetText(dlg, IDC_DTF_AFTER_SECOND, L"s");
        s.SetText(dlg, IDC_DTF_LEADING, L"on ");
        s.SetText(dlg, IDC_DTF_BETWEEN, L", at ");
        s.Select(dlg, IDC_DTF_WEEKDAY, 0);
        s.SetText(dlg, IDC_DTF_AFTER_WEEKDAY, L"");

        // A bar, percent sign or quote is taken back as it is typed.
        for (wchar_t c : {L'%', L'|', L'"'}) {
          s.Send(s.Item(dlg, IDC_DTF_AFTER_HOUR), WM_CHAR, c, 1);
          EXPECT_EQ(s.Text(dlg, IDC_DTF_AFTER_HOUR), L":") << "typed " << char(c);
        }
        s.Send(s.Item(dlg, IDC_DTF_AFTER_DATE_2), WM_CHAR, L'/', 1);  // at the caret, before the space
        Expect(s, dlg, L"on %M4. %D3/ %Y2, at %h2:%U2.%S1s%P2", __LINE__);
        s.Screenshot(dlg, Shot(L"dates_format_dialog_changed"));
        s.Click(dlg, IDOK);
        s.WaitClosed(dlg);
      });
  EXPECT_EQ(rc, 1);
  EXPECT_EQ(Narrow(format), "on %M4. %D3/ %Y2, at %h2:%U2.%S1s%P2");
}

// Cancel leaves the caller's format; an over-long format opens and nothing
// is written past the buffer (odd codes are formatparts' Split rows).
TEST(DateDialogs, CancelAndBadFormats) {
  wchar_t format[60] = L"%H2:%U2";
  int rc = tvui::RunModal([&] { return Tavona_EditTimeFormat(format, 60); },
                          [](tvui::Session &s) {
    HWND dlg = s.WaitDialog(Caption());
    EXPECT_FALSE(IsWindowEnabled(s.Item(dlg, IDC_DTF_DATE_1)));
    s.Select(dlg, IDC_DTF_HOUR, 0);
    s.Click(dlg, IDCANCEL);
    s.WaitClosed(dlg);
  });
  EXPECT_EQ(rc, 2);
  EXPECT_EQ(Narrow(format), "%H2:%U2");

  // 1,000 characters in a buffer that is not terminated within its size.
  std::wstring big(1000, L'x');
  big += L"%H2";
  std::wstring buffer = big + L"\x1234\x1234";
  rc = tvui::RunModal([&] { return Tavona_EditDateTimeFormat(nullptr, buffer.data(), 1000, 3); },
                      [](tvui::Session &s) {
    HWND dlg = s.WaitDialog(Caption());
    EXPECT_EQ(s.Text(dlg, IDC_DTF_LEADING).size(), 99u);
    s.Click(dlg, IDOK);
    s.WaitClosed(dlg);
  });
  EXPECT_EQ(rc, 1);
  EXPECT_EQ(buffer.substr(0, 99), std::wstring(99, L'x'));
  EXPECT_EQ(buffer[99], 0);
  EXPECT_EQ(buffer.substr(1000), L"%H2\x1234\x1234");

  wchar_t tiny[9] = L"%D1";
  EXPECT_EQ(Tavona_EditDateTimeFormat(nullptr, tiny, 9, 3), 2);
  EXPECT_EQ(Narrow(tiny), "%D1");
}

TEST(DateDialogsGerman, AllInGerman) {
  if (GermanRun()) GTEST_SKIP() << "already the German run";
  EXPECT_EQ(RunInGerman(L"DateDialogs.DateAndTime"), 0u);
}

}  // namespace
