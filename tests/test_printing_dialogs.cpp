// The copy list dialogs and the bin information dialog driven through
// their controls, with a profile file of their own. The German dialogs
// run in a child process started with VEL_LANGUAGE=de.
#include <tavona/tavona32.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

const wchar_t *CopiesCaption() { return Pick(L"Copies", L"Ausfertigungen"); }

const wchar_t kEmptyRest[] = L" |0| |0| |0| |0| |0| |0| |0| |0|";

class CopyDialogs : public ::testing::Test {
 protected:
  void SetUp() override {
    ini_ = TempPath(L"tavona_copies_test.ini");
    DeleteFileW(ini_.c_str());
  }
  void TearDown() override { DeleteFileW(ini_.c_str()); }
  void Set(const wchar_t *key, const wchar_t *value) {
    ASSERT_TRUE(WritePrivateProfileStringW(L"CopyList", key, value, ini_.c_str()));
  }
  std::wstring Get(const wchar_t *key) const {
    wchar_t value[1000] = {};
    GetPrivateProfileStringW(L"CopyList", key, L"<none>", value, 1000, ini_.c_str());
    return value;
  }
  // The standard list is written after its window is gone, so a check from
  // the driver waits for the value (two seconds at most).
  std::wstring Awaited(const wchar_t *key, const std::wstring &expect) const {
    std::wstring value;
    for (int i = 0; i < 200 && (value = Get(key)) != expect; ++i) Sleep(10);
    return value;
  }
  std::wstring ini_;
};

void Typed(tvui::Session &s, HWND combo, wchar_t c) {
  s.Send(GetWindow(combo, GW_CHILD), WM_CHAR, c, 1);
}

// The ten entries the dialog shows as "name=count|", and the first ones
// of them, the rest empty.
std::wstring Shown(tvui::Session &s, HWND dlg) {
  std::wstring out;
  for (int i = 0; i < 10; ++i) out += s.Text(dlg, IDC_COPY_NAME + i) + L"=" + s.Text(dlg, IDC_COPY_COUNT + i) + L"|";
  return out;
}
std::wstring Entries(std::wstring first) {
  while (std::count(first.begin(), first.end(), L'|') < 10) first += L"=|";
  return first;
}

void Scroll(tvui::Session &s, HWND dlg, int entry, int code, int times) {
  HWND bar = s.Item(dlg, IDC_COPY_SCROLL + entry);
  for (int i = 0; i < times; ++i) s.Send(dlg, WM_VSCROLL, code, LPARAM(bar));
}

TEST_F(CopyDialogs, EditList) {
  Set(L"Names", L"Original|Copy|File copy");
  Set(L"Standard", L"Copy|2|File copy|1|");
  Set(L"ShowFlag", L"1");
  wchar_t list[300] = L"Original|1|  Customer|2|";
  int rc = tvui::RunModal([&] { return Tavona_EditCopyList(list, 300, ini_.c_str()); },
                          [](tvui::Session &s) {
    HWND dlg = s.WaitDialog(CopiesCaption());
    EXPECT_EQ(Shown(s, dlg), Entries(L"Original=1|Customer=2|"));
    EXPECT_EQ(s.Items(dlg, IDC_COPY_NAME + 9),
              (std::vector<std::wstring>{L"Original", L"Copy", L"File copy"}));
    EXPECT_TRUE(s.IsChecked(dlg, IDC_COPY_SHOW));
    s.Screenshot(dlg, Shot(L"printing_copy_list"));

    // The arrows step from empty up to 99 and back to empty.
    for (auto [code, times, count] : {std::tuple{SB_LINEDOWN, 1, L"1"}, {SB_LINEDOWN, 120, L"99"},
                                      {SB_LINEUP, 98, L"1"}, {SB_LINEUP, 3, L""}}) {
      Scroll(s, dlg, 2, code, times);
      EXPECT_EQ(s.Text(dlg, IDC_COPY_COUNT + 2), count) << "after " << times;
    }
    // Characters that would break the list are taken back.
    HWND third = s.Item(dlg, IDC_COPY_NAME + 2);
    for (wchar_t c : {L'X', L'|', L'%', L'"', L'y'}) Typed(s, third, c);
    EXPECT_EQ(s.Text(dlg, IDC_COPY_NAME + 2), L"Xy");

    // The standard list replaces what is shown.
    s.Click(dlg, IDC_COPY_LOAD_STANDARD);
    EXPECT_EQ(Shown(s, dlg), Entries(L"Copy=2|File copy=1|"));
    // A typed number above 99 stands.
    s.SetText(dlg, IDC_COPY_NAME + 3, L"Archive");
    s.SetText(dlg, IDC_COPY_COUNT + 3, L"150");
    s.Check(dlg, IDC_COPY_SHOW, false);
    s.Click(dlg, IDOK);
    s.WaitClosed(dlg);
  });
  EXPECT_EQ(rc, 1);
  EXPECT_EQ(Narrow(list), "Copy|2|File copy|1| |0|Archive|150| |0| |0| |0| |0| |0| |0|");
  EXPECT_EQ(Get(L"ShowFlag"), L"0");
}

// Nothing to print: the message, and the dialog stays. A buffer too small
// for the result takes what fits (Cancel leaving the caller's text is below).
TEST_F(CopyDialogs, ZeroTotalAndSmallBuffer) {
  GuardedBuffer<wchar_t> small(12, L"A|0|");
  int rc = tvui::RunModal([&] { return Tavona_EditCopyList(small.data(), 12, nullptr); },
                          [](tvui::Session &s) {
    HWND dlg = s.WaitDialog(CopiesCaption());
    EXPECT_EQ(s.Text(dlg, IDC_COPY_COUNT), L"");
    s.Click(dlg, IDOK);
    tvui::Box box = s.WaitMessageBox();
    EXPECT_NE(box.text.find(L"greater than 0"), std::wstring::npos) << Narrow(box.text);
    s.Answer(box, IDOK);
    EXPECT_TRUE(IsWindowVisible(dlg));
    s.SetText(dlg, IDC_COPY_COUNT, L"1");
    s.Click(dlg, IDOK);
    s.WaitClosed(dlg);
  });
  EXPECT_EQ(rc, 1);
  EXPECT_EQ(Narrow(small.Text()), "A|1| |0| |0");
  EXPECT_TRUE(small.Intact());
}

TEST_F(CopyDialogs, StandardListAndNames) {
  Set(L"Names", L"Original|Copy");
  Set(L"Standard", L"Copy|3|");
  wchar_t list[300] = L"Original|1|";
  int rc = tvui::RunModal([&] { return Tavona_EditCopyList(list, 300, ini_.c_str()); },
                          [&](tvui::Session &s) {
    HWND dlg = s.WaitDialog(CopiesCaption());
    const wchar_t *standardCaption =
        Pick(L"Standard Copy List", L"Standardliste der Ausfertigungen");
    // Cancel in the standard list writes it back as it was read, in its
    // ten-entry form.
    s.Click(dlg, IDC_COPY_EDIT_STANDARD);
    HWND standard = s.WaitDialog(standardCaption);
    s.Screenshot(standard, Shot(L"printing_copy_standard"));
    s.SetText(standard, IDC_COPY_COUNT, L"4");
    s.Click(standard, IDCANCEL);
    s.WaitClosed(standard);
    const std::wstring asRead = std::wstring(L"Copy|3| |0|") + kEmptyRest;
    EXPECT_EQ(Awaited(L"Standard", asRead), asRead);
    s.Click(dlg, IDC_COPY_EDIT_STANDARD);
    standard = s.WaitDialog(standardCaption);
    s.SetText(standard, IDC_COPY_COUNT, L"4");
    s.Click(standard, IDOK);
    s.WaitClosed(standard);
    const std::wstring changed = std::wstring(L"Copy|4| |0|") + kEmptyRest;
    EXPECT_EQ(Awaited(L"Standard", changed), changed);

    s.Click(dlg, IDC_COPY_EDIT_NAMES);
    HWND names = s.WaitDialog(Pick(L"Copy Names", L"Namen der Ausfertigungen"));
    EXPECT_EQ(s.Items(names, IDC_COPY_NAMES_LIST),
              (std::vector<std::wstring>{L"Original", L"Copy"}));
    const wchar_t *addCaption = Pick(L"New Copy Name", L"Neuer Name");
    s.Click(names, IDC_COPY_NAMES_ADD);
    HWND add = s.WaitDialog(addCaption);
    s.SetText(add, IDC_COPY_NEW_NAME, L"Invoice");
    s.Screenshot(add, Shot(L"printing_copy_add_name"));
    s.Click(add, IDOK);
    s.WaitClosed(add);
    s.Screenshot(names, Shot(L"printing_copy_names"));
    EXPECT_EQ(s.Items(names, IDC_COPY_NAMES_LIST),
              (std::vector<std::wstring>{L"Original", L"Copy", L"Invoice"}));
    s.Select(names, IDC_COPY_NAMES_LIST, 2);
    s.Click(names, IDC_COPY_NAMES_DELETE);
    s.Select(names, IDC_COPY_NAMES_LIST, 0);
    s.Click(names, IDC_COPY_NAMES_DELETE);
    s.Click(names, IDOK);
    s.WaitClosed(names);
    s.Click(dlg, IDCANCEL);
    s.WaitClosed(dlg);
  });
  EXPECT_EQ(rc, 2);
  EXPECT_EQ(Get(L"Names"), L"Copy");
  EXPECT_EQ(Narrow(list), "Original|1|");
}

TEST(BinInfoDialog, ShowsBins) {
  INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&icc);
  ASSERT_TRUE(WriteProfileStringW(L"Devices", L"Tavona Office", L"winspool,Ne00:"));
  bool printer = Tavona_IsPrinterAvailable(L"TavonaPDF") == 1;
  int rc = tvui::RunModal([] { return Tavona_BinInfoDialog(nullptr); }, [&](tvui::Session &s) {
    HWND dlg = s.WaitDialog(Pick(L"Paper Bins", L"Papierschächte"));
    HWND list = s.Item(dlg, IDC_BININFO_LIST);
    s.Select(dlg, IDC_BININFO_PRINTERS, L"Tavona Office");
    EXPECT_EQ(s.Send(list, LVM_GETITEMCOUNT), 0);
    if (printer) {
      s.Select(dlg, IDC_BININFO_PRINTERS, L"TavonaPDF");
      EXPECT_GE(s.Send(list, LVM_GETITEMCOUNT), 3);
    }
    s.Screenshot(dlg, Shot(L"printing_bin_info"));
    EXPECT_EQ(GetDlgItem(dlg, IDOK), nullptr) << "closes only with Cancel";
    s.Click(dlg, IDCANCEL);
    s.WaitClosed(dlg);
  });
  WriteProfileStringW(L"Devices", L"Tavona Office", nullptr);
  EXPECT_EQ(rc, 2);
  if (!printer) GTEST_SKIP() << "no printer TavonaPDF: bins not shown (private CUPS scheduler)";
}

TEST(PrintingDialogsGerman, AllInGerman) {
  if (GermanRun()) GTEST_SKIP() << "already the German run";
  EXPECT_EQ(RunInGerman(L"CopyDialogs.EditList:CopyDialogs.StandardListAndNames:"
                            L"BinInfoDialog.*"),
            0u);
}

}  // namespace
