// The integer and float format dialogs driven through their controls: the
// previews follow every field, refused characters are taken back, OK
// writes the rebuilt format, Cancel leaves it, Help goes to the help file.
// The German dialogs run in a child process started with VEL_LANGUAGE=de.
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

const wchar_t kDebugKey[] = L"Software\\Tavona Software\\Debugging";

const wchar_t *IntCaption() { return GermanRun() ? L"Ganzzahlformat" : L"Integer Format"; }
const wchar_t *FloatCaption() { return GermanRun() ? L"Kommazahlformat" : L"Decimal Number Format"; }

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
};

TEST_F(NumberDialogs, IntegerEveryField) {
  wchar_t format[200] = L"%T.";
  int rc = tvui::RunModal([&] { return Tavona_EditIntFormat(format, 200); }, [](tvui::Session &s) {
    HWND dlg = s.WaitDialog(IntCaption());
    EXPECT_EQ(s.Text(dlg, IDC_FMT_THOUSANDS), L".");
    EXPECT_EQ(s.Text(dlg, IDC_FMT_WIDTH), L"");
    EXPECT_FALSE(s.IsChecked(dlg, IDC_FMT_PLUS));
    ExpectPreviews(s, dlg, L"12.345", L"-12.345", L"0", __LINE__);
    s.Screenshot(dlg, Shot(L"numbers_int_dialog"));

    s.SetText(dlg, IDC_FMT_THOUSANDS, L"'");
    ExpectPreviews(s, dlg, L"12'345", L"-12'345", L"0", __LINE__);
    s.SetText(dlg, IDC_FMT_WIDTH, L"7");
    ExpectPreviews(s, dlg, L"0'012'345", L"-0'012'345", L"0'000'000", __LINE__);
    s.Check(dlg, IDC_FMT_PLUS);
    ExpectPreviews(s, dlg, L"+0'012'345", L"-0'012'345", L"+0'000'000", __LINE__);
    s.Check(dlg, IDC_FMT_NO_MINUS);
    ExpectPreviews(s, dlg, L"+0'012'345", L"0'012'345", L"+0'000'000", __LINE__);
    s.SetText(dlg, IDC_FMT_BEFORE, L"EUR 50% ");
    s.SetText(dlg, IDC_FMT_AFTER, L" \\net");
    ExpectPreviews(s, dlg, L"EUR 50% +0'012'345 \\net", L"EUR 50% 0'012'345 \\net",
                   L"EUR 50% +0'000'000 \\net", __LINE__);
    s.SetText(dlg, IDC_FMT_ZERO, L"nil");
    ExpectPreviews(s, dlg, L"EUR 50% +0'012'345 \\net", L"EUR 50% 0'012'345 \\net", L"nil",
                   __LINE__);

    // Refused characters are taken back as soon as they are typed.
    Typed(s, dlg, IDC_FMT_BEFORE, L'|', L"EUR 50% ");
    Typed(s, dlg, IDC_FMT_AFTER, L'"', L" \\net");
    Typed(s, dlg, IDC_FMT_THOUSANDS, L'"', L"'");
    Typed(s, dlg, IDC_FMT_WIDTH, L'x', L"7");
    Typed(s, dlg, IDC_FMT_WIDTH, L'-', L"7");
    Typed(s, dlg, IDC_FMT_WIDTH, L'1', L"17");  // at the caret, before the 7
    Typed(s, dlg, IDC_FMT_WIDTH, 8, L"7");
    // Other characters pass, even '%' in a text.
    Typed(s, dlg, IDC_FMT_ZERO, L'%', L"%nil");
    ExpectPreviews(s, dlg, L"EUR 50% +0'012'345 \\net", L"EUR 50% 0'012'345 \\net", L"%nil",
                   __LINE__);
    s.Screenshot(dlg, Shot(L"numbers_int_dialog_filled"));
    s.Click(dlg, IDOK);
    s.WaitClosed(dlg);
  });
  EXPECT_EQ(rc, 1);
  EXPECT_EQ(Narrow(format), "%+%-%T'%Z\\pnil%W7%BEUR 50\\p %E \\\\net");
  // The format reads back as the previews showed it.
  wchar_t out[100];
  Int_To_FormattedInt(12345, out, 100, format);
  EXPECT_EQ(Narrow(out), "EUR 50% +0'012'345 \\net");
}

// Cancel leaves the format as it was, whatever was changed.
TEST_F(NumberDialogs, CancelKeepsFormat) {
  for (bool isFloat : {false, true}) {
    wchar_t format[50];
    wcscpy(format, isFloat ? L"%T%D.%F4" : L"%T,%W3");
    int rc = tvui::RunModal(
        [&] { return isFloat ? Tavona_EditFloatFormat(format, 50) : Tavona_EditIntFormat(format, 50); },
        [&](tvui::Session &s) {
          HWND dlg = s.WaitDialog(isFloat ? FloatCaption() : IntCaption());
          if (isFloat) {
            ExpectPreviews(s, dlg, L"1234567.8900", L"-1234567.8900", L"0.0000", __LINE__);
          } else {
            EXPECT_EQ(s.Text(dlg, IDC_FMT_WIDTH), L"3");
            s.SetText(dlg, IDC_FMT_THOUSANDS, L"");
            ExpectPreviews(s, dlg, L"12345", L"-12345", L"000", __LINE__);
          }
          s.Check(dlg, IDC_FMT_PLUS);
          s.Click(dlg, IDCANCEL);
          s.WaitClosed(dlg);
        });
    EXPECT_EQ(rc, 2);
    EXPECT_EQ(Narrow(format), isFloat ? "%T%D.%F4" : "%T,%W3");
  }
}

// OK without a change gives back the format it started from (the default
// for an empty one); a rebuilt format too long for the buffer empties it,
// as the non-shortening copy does.
TEST_F(NumberDialogs, IntegerResultSizes) {
  wchar_t format[20] = L"";
  int rc = tvui::RunModal([&] { return Tavona_EditIntFormat(format, 20); }, [](tvui::Session &s) {
    HWND dlg = s.WaitDialog(IntCaption());
    s.Click(dlg, IDOK);
    s.WaitClosed(dlg);
  });
  EXPECT_EQ(rc, 1);
  EXPECT_EQ(Narrow(format), "%T.");

  rc = tvui::RunModal([&] { return Tavona_EditIntFormat(format, 10); }, [](tvui::Session &s) {
    HWND dlg = s.WaitDialog(IntCaption());
    s.SetText(dlg, IDC_FMT_BEFORE, L"12345");
    s.Click(dlg, IDOK);
    s.WaitClosed(dlg);
  });
  EXPECT_EQ(rc, 1);
  EXPECT_EQ(Narrow(format), "");

  EXPECT_EQ(Tavona_EditIntFormat(nullptr, 10), 2);
  EXPECT_EQ(Tavona_EditFloatFormat(format, -1), 2);
}

TEST_F(NumberDialogs, FloatEveryField) {
  wchar_t format[200] = L"";
  int rc = tvui::RunModal([&] { return Tavona_EditFloatFormat(format, 200); }, [](tvui::Session &s) {
    HWND dlg = s.WaitDialog(FloatCaption());
    EXPECT_EQ(s.Text(dlg, IDC_FMT_THOUSANDS), L".");
    EXPECT_EQ(s.Text(dlg, IDC_FMT_DECIMAL), L",");
    EXPECT_EQ(s.Text(dlg, IDC_FMT_FRACTION), L"02");
    ExpectPreviews(s, dlg, L"1.234.567,89", L"-1.234.567,89", L"0,00", __LINE__);
    s.Screenshot(dlg, Shot(L"numbers_float_dialog"));

    s.SetText(dlg, IDC_FMT_THOUSANDS, L",");
    s.SetText(dlg, IDC_FMT_DECIMAL, L".");
    ExpectPreviews(s, dlg, L"1,234,567.89", L"-1,234,567.89", L"0.00", __LINE__);
    s.SetText(dlg, IDC_FMT_FRACTION, L"3");
    ExpectPreviews(s, dlg, L"1,234,567.890", L"-1,234,567.890", L"0.000", __LINE__);
    s.SetText(dlg, IDC_FMT_FRACTION, L"0");
    ExpectPreviews(s, dlg, L"1,234,568", L"-1,234,568", L"0", __LINE__);
    s.SetText(dlg, IDC_FMT_FRACTION, L"1");
    s.Check(dlg, IDC_FMT_PLUS);
    s.Check(dlg, IDC_FMT_NO_MINUS);
    ExpectPreviews(s, dlg, L"+1,234,567.9", L"1,234,567.9", L"+0.0", __LINE__);
    s.Check(dlg, IDC_FMT_NO_MINUS, false);
    s.SetText(dlg, IDC_FMT_BEFORE, L"$ ");
    s.SetText(dlg, IDC_FMT_AFTER, L" (net)");
    s.SetText(dlg, IDC_FMT_ZERO, L"none");
    ExpectPreviews(s, dlg, L"$ +1,234,567.9 (net)", L"$ -1,234,567.9 (net)", L"none", __LINE__);

    Typed(s, dlg, IDC_FMT_DECIMAL, L'|', L".");
    Typed(s, dlg, IDC_FMT_FRACTION, L',', L"1");
    s.Screenshot(dlg, Shot(L"numbers_float_dialog_filled"));
    s.Click(dlg, IDOK);
    s.WaitClosed(dlg);
  });
  EXPECT_EQ(rc, 1);
  EXPECT_EQ(Narrow(format), "%+%T,%F1%D.%B$ %E (net)%Znone");
}

std::vector<std::wstring> g_reported;
INT WINAPI Capture(const WCHAR *message) {
  g_reported.push_back(message ? message : L"");
  return IDOK;
}

void SetHelpTest(const wchar_t *value) {
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, kDebugKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                            nullptr),
            ERROR_SUCCESS);
  RegSetValueExW(key, L"HelpTest", 0, REG_SZ, reinterpret_cast<const BYTE *>(value),
                 DWORD((wcslen(value) + 1) * sizeof(wchar_t)));
  RegCloseKey(key);
}

// With HelpTest = 1 the help button only tells which file and topic would
// open.
TEST_F(NumberDialogs, HelpButton) {
  SetHelpTest(L"1");
  for (bool isFloat : {false, true}) {
    wchar_t format[50] = L"";
    tvui::RunModal(
        [&] { return isFloat ? Tavona_EditFloatFormat(format, 50) : Tavona_EditIntFormat(format, 50); },
        [&](tvui::Session &s) {
          HWND dlg = s.WaitDialog(isFloat ? FloatCaption() : IntCaption());
          s.Click(dlg, IDHELP);
          tvui::Box box = s.WaitMessageBox();
          EXPECT_NE(box.text.find(L"tavona32.chm"), std::wstring::npos) << Narrow(box.text);
          EXPECT_NE(box.text.find(isFloat ? L"1500" : L"1300"), std::wstring::npos)
              << Narrow(box.text);
          EXPECT_EQ(box.icon, UINT(MB_ICONASTERISK));
          if (!isFloat) s.Screenshot(box.hwnd, Shot(L"numbers_help_test"));
          s.Answer(box, IDOK);
          s.Click(dlg, IDCANCEL);
          s.WaitClosed(dlg);
        });
  }
}

// The help file is the module's name with ".chm"; only HelpTest = 1 means
// the test mode.
TEST_F(NumberDialogs, PerformHelpPaths) {
  g_reported.clear();
  Tavona_SetErrorHandlerCallback(Capture);
  HMODULE self = GetModuleHandleW(nullptr);
  Tavona_PerformHelp(nullptr, 5, 0);
  EXPECT_TRUE(g_reported.empty());

  SetHelpTest(L"1");
  Tavona_PerformHelp(self, 4294967295u, 7);
  ASSERT_EQ(g_reported.size(), 1u);
  EXPECT_NE(g_reported[0].find(L"number_dialog_tests.chm"), std::wstring::npos)
      << Narrow(g_reported[0]);
  EXPECT_NE(g_reported[0].find(L"4294967295"), std::wstring::npos) << Narrow(g_reported[0]);

  SetHelpTest(L"2");
  Tavona_PerformHelp(self, 12, 0);
  ASSERT_EQ(g_reported.size(), 2u);
  EXPECT_EQ(g_reported[1].find(L".chm"), std::wstring::npos) << Narrow(g_reported[1]);
  EXPECT_FALSE(g_reported[1].empty());
  Tavona_SetErrorHandlerCallback(nullptr);
}

// The dialogs and the help box again in German, in a child process that
// loads the German resource library.
TEST(NumberDialogsGerman, AllInGerman) {
  if (GermanRun()) GTEST_SKIP() << "already the German run";
  EXPECT_EQ(RunInGerman(L"NumberDialogs.*EveryField:NumberDialogs.HelpButton"), 0u);
}

}  // namespace
