// The integer and float format dialogs driven through their controls: the
// previews follow every field, refused characters are taken back, OK
// writes the rebuilt format, Cancel leaves it, Help goes to the help file.
// The German dialogs run in a child process started with VEL_LANGUAGE=de.
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include <string>

#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

const wchar_t kDebugKey[] = L"Software\\Tavona Software\\Debugging";

const wchar_t *IntCaption() { return Pick(L"Integer Format", L"Ganzzahlformat"); }
const wchar_t *FloatCaption() { return Pick(L"Decimal Number Format", L"Kommazahlformat"); }

// Types one character where the caret is, as a keyboard would; the field
// then reads after.
void Typed(tvui::Session &s, HWND dlg, int id, wchar_t c, const wchar_t *after) {
  s.Send(s.Item(dlg, id), WM_CHAR, c, 1);
  EXPECT_EQ(s.Text(dlg, id), after) << "typed " << int(c);
}

void ExpectPreviews(tvui::Session &s, HWND dlg, const wchar_t *positive, const wchar_t *negative,
                    const wchar_t *zero, int line) {
  EXPECT_EQ(s.Text(dlg, IDC_FMT_PREVIEW_POSITIVE), positive) << "line " << line;
  EXPECT_EQ(s.Text(dlg, IDC_FMT_PREVIEW_NEGATIVE), negative) << "line " << line;
  EXPECT_EQ(s.Text(dlg, IDC_FMT_PREVIEW_ZERO), zero) << "line " << line;
}

class NumberDialogs : public ::testing::Test {
 protected:
  void SetUp() override { RegDeleteTreeW(HKEY_CURRENT_USER, kDebugKey); }
  void TearDown() override { RegDeleteTreeW(HKEY_CURRENT_USER, kDebugKey); }
  // Opens the dialog on format (size units), runs script, returns its result.
  template <typename Script>
  int Run(bool isFloat, wchar_t *format, int size, Script script) {
    return tvui::RunModal(
        [&] { return isFloat ? Tavona_EditFloatFormat(format, size) : Tavona_EditIntFormat(format, size); },
        [&](tvui::Session &s) {
          HWND dlg = s.WaitDialog(isFloat ? FloatCaption() : IntCaption());
          script(s, dlg);
          s.WaitClosed(dlg);
        });
  }
};

TEST_F(NumberDialogs, IntegerEveryField) {
  RegSetKeyValueW(HKEY_CURRENT_USER, kDebugKey, L"HelpTest", REG_SZ, L"1", 2 * sizeof(wchar_t));
  wchar_t format[200] = L"%T.";
  EXPECT_EQ(Run(false, format, 200, [](tvui::Session &s, HWND dlg) {
    // With HelpTest = 1 the help button only tells which file and topic would open.
    s.Click(dlg, IDHELP);
    tvui::Box box = s.WaitMessageBox();
    EXPECT_NE(box.text.find(L"tavona32.chm"), std::wstring::npos) << Narrow(box.text);
    EXPECT_NE(box.text.find(L"1300"), std::wstring::npos) << Narrow(box.text);
    EXPECT_EQ(box.icon, UINT(MB_ICONASTERISK));
    s.Screenshot(box.hwnd, Shot(L"numbers_help_test"));
    s.Answer(box, IDOK);
    ExpectPreviews(s, dlg, L"12.345", L"-12.345", L"0", __LINE__);
    s.Screenshot(dlg, Shot(L"numbers_int_dialog"));

    s.SetText(dlg, IDC_FMT_THOUSANDS, L"'");
    s.SetText(dlg, IDC_FMT_WIDTH, L"7");
    s.Check(dlg, IDC_FMT_PLUS);
    s.Check(dlg, IDC_FMT_NO_MINUS);
    s.SetText(dlg, IDC_FMT_BEFORE, L"EUR 50% ");
    s.SetText(dlg, IDC_FMT_AFTER, L" \\net");
    s.SetText(dlg, IDC_FMT_ZERO, L"nil");
    ExpectPreviews(s, dlg, L"EUR 50% +0'012'345 \\net", L"EUR 50% 0'012'345 \\net", L"nil",
                   __LINE__);

    // Refused characters are taken back as soon as they are typed; others
    // pass, even '%' in a text.
    Typed(s, dlg, IDC_FMT_BEFORE, L'|', L"EUR 50% ");
    Typed(s, dlg, IDC_FMT_WIDTH, L'x', L"7");
    Typed(s, dlg, IDC_FMT_ZERO, L'%', L"%nil");  // at the caret, before the text
    s.Screenshot(dlg, Shot(L"numbers_int_dialog_filled"));
    s.Click(dlg, IDOK);
  }), 1);
  EXPECT_EQ(Narrow(format), "%+%-%T'%Z\\pnil%W7%BEUR 50\\p %E \\\\net");
}

TEST_F(NumberDialogs, FloatEveryField) {
  wchar_t format[200] = L"";
  EXPECT_EQ(Run(true, format, 200, [](tvui::Session &s, HWND dlg) {
    ExpectPreviews(s, dlg, L"1.234.567,89", L"-1.234.567,89", L"0,00", __LINE__);
    s.Screenshot(dlg, Shot(L"numbers_float_dialog"));

    // The signs and texts are the integer dialog's (one table of edits).
    s.SetText(dlg, IDC_FMT_THOUSANDS, L",");
    s.SetText(dlg, IDC_FMT_DECIMAL, L".");
    s.SetText(dlg, IDC_FMT_FRACTION, L"1");
    ExpectPreviews(s, dlg, L"1,234,567.9", L"-1,234,567.9", L"0.0", __LINE__);
    Typed(s, dlg, IDC_FMT_FRACTION, L',', L"1");
    s.Screenshot(dlg, Shot(L"numbers_float_dialog_filled"));
    s.Click(dlg, IDOK);
  }), 1);
  EXPECT_EQ(Narrow(format), "%T,%F1%D.");
}

// Cancel leaves the format, whatever was changed; a rebuilt format too long
// for the buffer empties it (the copy never cuts).
TEST_F(NumberDialogs, CancelAndResultTooLong) {
  wchar_t format[50] = L"%T,%W3";
  EXPECT_EQ(Run(false, format, 50, [&](tvui::Session &s, HWND dlg) {
    s.Check(dlg, IDC_FMT_PLUS);
    s.Click(dlg, IDCANCEL);
  }), 2);
  EXPECT_EQ(Narrow(format), "%T,%W3");
  EXPECT_EQ(Run(false, format, 10, [](tvui::Session &s, HWND dlg) {
    s.SetText(dlg, IDC_FMT_BEFORE, L"12345");
    s.Click(dlg, IDOK);
  }), 1);
  EXPECT_EQ(Narrow(format), "");
  EXPECT_EQ(Tavona_EditIntFormat(nullptr, 10), 2);
  EXPECT_EQ(Tavona_EditFloatFormat(format, -1), 2);
}

// The dialogs and the help box again in German, in a child process that
// loads the German resource library.
TEST(NumberDialogsGerman, AllInGerman) {
  if (GermanRun()) GTEST_SKIP() << "already the German run";
  EXPECT_EQ(RunInGerman(L"NumberDialogs.*EveryField"), 0u);
}

}  // namespace
