// The list view helpers on real report-style list views: files written
// byte for byte, loading with column definitions, registry copies, and the
// row, selection and column operations.
#include <tavona/tavona32.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "testutil.h"
#include "uidriver.h"

namespace {

const wchar_t kKey[] = L"Software\\Tavona Software\\Tests\\ListView";

std::string ReadBytes(const std::wstring &file) {
  std::ifstream in(std::filesystem::path(file), std::ios::binary);
  if (!in) return "(missing)";
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

void WriteBytes(const std::wstring &file, const std::string &bytes) {
  std::ofstream(std::filesystem::path(file), std::ios::binary) << bytes;
}

std::string Utf16(const std::wstring &s) {
  std::string b;
  for (wchar_t c : s) b += char(c & 0xFF), b += char(c >> 8);
  return b;
}

class ListView : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&icc);
  }
  void SetUp() override {
    parent_ = CreateWindowW(L"STATIC", L"list views", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 520,
                            300, nullptr, nullptr, nullptr, nullptr);
    lv_ = CreateWindowW(WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_SHOWSELALWAYS,
                        0, 0, 500, 260, parent_, nullptr, nullptr, nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
  }
  void TearDown() override {
    DestroyWindow(parent_);
    RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
    Tavona_SetErrorHandlerCallback(nullptr);
  }
  // Columns "c0", "c1", ... and rows of cells given as "a,b|c,d"; row r
  // has the value 100 + r.
  void Fill(int columns, const std::wstring &rows) {
    for (int c = 0; c < columns; ++c)
      Tavona_ListView_CreateColumns(lv_, c, (L"c" + std::to_wstring(c) + L"|60").c_str());
    std::wistringstream all(rows);
    for (std::wstring row; !rows.empty() && std::getline(all, row, L'|');) {
      std::wistringstream cells(row);
      int r = ListView_GetItemCount(lv_), c = 0;
      for (std::wstring cell; std::getline(cells, cell, L','); ++c)
        c ? (void)Tavona_ListView_SetItemText(lv_, r, c, cell.c_str())
          : (void)Tavona_ListView_InsertItem(lv_, -1, cell.c_str(), 0, 100 + r);
    }
  }
  // All cells as "a,b|c,d".
  std::wstring Dump(int columns) {
    std::wstring out;
    for (int r = 0; r < ListView_GetItemCount(lv_); ++r) {
      if (r) out += L"|";
      for (int c = 0; c < columns; ++c) {
        wchar_t text[600];
        Tavona_ListView_GetItemText(lv_, r, c, text, 600);
        out += (c ? L"," : L"") + std::wstring(text);
      }
    }
    return out;
  }
  std::wstring Selection() {
    std::wstring out;
    for (int r = 0; r < ListView_GetItemCount(lv_); ++r)
      out += Tavona_ListView_IsItemSelected(lv_, r) ? L"1" : L"0";
    return out;
  }
  HWND parent_ = nullptr, lv_ = nullptr;
};

TEST_F(ListView, SaveToFileBytes) {
  Fill(2, L"a,b|c,d|e,f");
  std::wstring file = TempPath(L"tv_lv_save.txt");
  // deliberate: one byte 0x09 between cells, CR LF in UTF-16 at row ends
  EXPECT_EQ(Tavona_ListView_SaveToFile(lv_, file.c_str(), 0, 1, 0, 1, TAVONA_LV_CRLF), 1);
  std::string expected = std::string("a\0\x09" "b\0\r\0\n\0c\0\x09" "d\0\r\0\n\0", 18);
  EXPECT_EQ(ReadBytes(file), expected);

  // deliberate: the last row is not clamped, each missing row is an empty line
  EXPECT_EQ(Tavona_ListView_SaveToFile(lv_, file.c_str(), 0, 1000, 0, 0, 0), 1000);
  std::string bytes = ReadBytes(file);
  EXPECT_EQ(bytes.size(), 3 * 2 + 1001 * 4u);
  EXPECT_EQ(bytes.substr(bytes.size() - 8), std::string("\r\0\n\0\r\0\n\0", 8));

  g_capturedReports.clear();
  Tavona_SetErrorHandlerCallback(CaptureReports);
  std::wstring bad = TempPath(L"no such folder\\x.txt");
  EXPECT_EQ(Tavona_ListView_SaveToFile(lv_, bad.c_str(), 0, -1, 0, 1, 0), -1);
  ASSERT_EQ(g_capturedReports.size(), 1u);
  EXPECT_NE(g_capturedReports[0].find(bad), std::wstring::npos) << Narrow(g_capturedReports[0]);
  DeleteFileW(file.c_str());
}

// The file's first line defines the columns; trailing TABs go with the
// CR LF (deliberate), a bracketed cell keeps its TAB.
TEST_F(ListView, LoadFromFile) {
  std::wstring file = TempPath(L"tv_lv_load.txt");
  WriteBytes(file, Utf16(Pick(L"File|170\tSize|80|R\tChanged|150\r\nReport.txt\t12 KB\t11/03/2026\t\t\r\n"
                              L"Summary.xls\t48 KB\t10/14/2026\r\nNotes\t1 KB\t[today\tearly]\r\n",
                              L"Datei|170\tGröße|80|R\tGeändert|150\r\nBericht.txt\t12 KB\t03.11.2026\t\t\r\n"
                              L"Übersicht.xls\t48 KB\t14.10.2026\r\nNotizen\t1 KB\t[heute\tfrüh]\r\n")));
  Tavona_ListView_InsertItem(lv_, -1, L"old", 0, 0);
  EXPECT_EQ(Tavona_ListView_LoadFromFileExtended(lv_, file.c_str(), TAVONA_LV_FILE_COLUMNS), 3);
  EXPECT_EQ(Dump(3), Pick(L"Report.txt,12 KB,11/03/2026|Summary.xls,48 KB,10/14/2026|Notes,1 KB,[today\tearly]",
                          L"Bericht.txt,12 KB,03.11.2026|Übersicht.xls,48 KB,14.10.2026|Notizen,1 KB,[heute\tfrüh]"));
  wchar_t title[100] = {};
  LVCOLUMNW c = {};
  c.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT, c.pszText = title, c.cchTextMax = 100;
  ASSERT_TRUE(ListView_GetColumn(lv_, 1, &c));
  EXPECT_EQ(Narrow(title) + "/" + std::to_string(c.cx) + "/" + std::to_string(c.fmt & 3),
            Narrow(Pick(L"Size", L"Größe")) + "/80/" + std::to_string(LVCFMT_RIGHT));
  ListView_SetItemState(lv_, 1, LVIS_SELECTED, LVIS_SELECTED);
  UpdateWindow(parent_);
  tvui::SaveScreenshot(parent_, Shot(L"listview_loaded"));

  // Keeping rows appends; without, rows go even when the file is missing.
  EXPECT_EQ(Tavona_ListView_LoadFromFileExtended(lv_, file.c_str(), TAVONA_LV_KEEP_ROWS), 7);
  EXPECT_EQ(Tavona_ListView_LoadFromFileExtended(lv_, L"Z:\\no\\such.txt", 0), 0);
  EXPECT_EQ(ListView_GetItemCount(lv_), 0);
  Tavona_ListView_InsertItem(lv_, -1, L"kept", 0, 0);
  EXPECT_EQ(Tavona_ListView_LoadFromFileExtended(lv_, nullptr, TAVONA_LV_KEEP_ROWS), 0);
  EXPECT_EQ(ListView_GetItemCount(lv_), 1);
  DeleteFileW(file.c_str());
}

// The bytes FF FE are a unit like any other (long lines are the fuzzer's).
TEST_F(ListView, LoadBadFiles) {
  Fill(2, L"");
  std::wstring file = TempPath(L"tv_lv_bad.txt");
  wchar_t cell[600];
  WriteBytes(file, std::string("\xff\xfe\x00\xd8\x0a\x00\x00\x00\x41\x00", 10));
  EXPECT_EQ(Tavona_ListView_LoadFromFile(lv_, file.c_str()), 2);
  Tavona_ListView_GetItemText(lv_, 0, 0, cell, 600);
  EXPECT_EQ(cell[0], 0xFEFF);
  DeleteFileW(file.c_str());
}

TEST_F(ListView, Columns) {
  EXPECT_EQ(Tavona_ListView_CreateColumns(lv_, 0, L"Name||L\t|150|\tX|40"), 3);
  EXPECT_EQ(Tavona_ListView_CreateColumns(lv_, 3, L""), 3);
  wchar_t widths[32];
  EXPECT_EQ(Tavona_ListView_GetColumnWidths(lv_, 0, 10, widths, 32), 3);
  EXPECT_STREQ(widths, L"100,150,40");
  EXPECT_EQ(Tavona_ListView_GetColumnWidths(lv_, 0, 2, widths, 8), 2);  // whole numbers only
  EXPECT_STREQ(widths, L"100,150");
  EXPECT_EQ(Tavona_ListView_SetColumnWidths(lv_, 1, L"120,80"), TRUE);
  Tavona_ListView_GetColumnWidths(lv_, 0, 2, widths, 32);
  EXPECT_STREQ(widths, L"100,120,80");
  EXPECT_EQ(Tavona_ListView_SetColumnWidths(lv_, 2, L"55,66,77"), FALSE);  // stops at column 3
  EXPECT_EQ(Tavona_ListView_DeleteColumns(lv_, 1, 0), 0);
  EXPECT_EQ(Tavona_ListView_DeleteColumns(lv_, 1, -1), 2);  // up to the first failure
  EXPECT_EQ(Tavona_ListView_GetColumnWidths(lv_, 0, 10, widths, 32), 1);
}

TEST_F(ListView, RegistryCopies) {
  Fill(2, L"Alpha,1|,skipped|Beta,2");
  auto set = [](const wchar_t *name, DWORD type, const void *data, DWORD bytes) {
    RegSetKeyValueW(HKEY_CURRENT_USER, kKey, name, type, data, bytes);
  };
  auto has = [](const wchar_t *name) {
    return RegGetValueW(HKEY_CURRENT_USER, kKey, name, RRF_RT_ANY, nullptr, nullptr, nullptr) == 0;
  };
  set(L"Old", REG_SZ, L"x", 4);
  EXPECT_EQ(Tavona_ListView_To_Registry(lv_, HKEY_CURRENT_USER, kKey), 0);
  wchar_t data[64];
  DWORD bytes = sizeof data;
  EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, kKey, L"Beta", RRF_RT_REG_SZ, nullptr, data, &bytes), 0);
  EXPECT_STREQ(data, L"2");
  EXPECT_FALSE(has(L"Old"));
  EXPECT_EQ(Tavona_CountRegistryItems(HKEY_CURRENT_USER, kKey), 2);

  // A DWORD is shown as its raw bytes; data over 200 bytes end the list.
  // Names in creation order sort alike, as wine enumerates by name.
  DWORD number = 0x31;
  set(L"Count", REG_DWORD, &number, 4);
  std::wstring longText(100, L'L');
  set(L"Long", REG_SZ, longText.c_str(), 202);
  set(L"Zafter", REG_SZ, L"a", 4);
  EXPECT_EQ(Tavona_Registry_To_ListView(HKEY_CURRENT_USER, kKey, lv_), 0);
  EXPECT_EQ(Dump(2), L"Alpha,1|Beta,2|Count,1");

  EXPECT_EQ(Tavona_Registry_To_ListView(HKEY_CURRENT_USER, L"Software\\Tavona Software\\None", lv_),
            ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(ListView_GetItemCount(lv_), 0);
  EXPECT_EQ(Tavona_ListView_To_Registry(lv_, HKEY_CURRENT_USER, kKey), 0);  // the count
  EXPECT_EQ(Tavona_IsRegistryKeyAvailable(HKEY_CURRENT_USER, kKey, nullptr, nullptr), 0);
  // Kept as it stands: a key with a subkey cannot be deleted, so the values
  // missing from the list survive.
  RegSetKeyValueW(HKEY_CURRENT_USER, (std::wstring(kKey) + L"\\Sub").c_str(), L"S", REG_SZ, L"s", 4);
  set(L"Old", REG_SZ, L"x", 4);
  Tavona_ListView_To_Registry(lv_, HKEY_CURRENT_USER, kKey);
  EXPECT_TRUE(has(L"Old"));
}

TEST_F(ListView, ItemAccessors) {
  Fill(2, L"one,1|Two,2|three,3");
  // Nothing selected: row -1 names nothing.
  wchar_t text[16] = L"junk";
  EXPECT_EQ(Tavona_ListView_GetItemText(lv_, -1, 0, text, 16), 0);
  EXPECT_STREQ(text, L"");
  EXPECT_FALSE(Tavona_ListView_SetItemText(lv_, -1, 0, L"x"));
  EXPECT_EQ(Tavona_ListView_GetFirstSelectedItem(lv_), -1);

  Tavona_ListView_SelectItem(lv_, 1);
  EXPECT_EQ(Tavona_ListView_GetFirstSelectedItem(lv_), 1);
  Tavona_ListView_GetItemText(lv_, -1, 1, text, 16);
  EXPECT_STREQ(text, L"2");
  EXPECT_EQ(Tavona_ListView_GetItemParam(lv_, -1), 101);
  EXPECT_TRUE(Tavona_ListView_SetItemParam(lv_, -1, 77));
  EXPECT_EQ(Tavona_ListView_GetItemParam(lv_, 1), 77);
  EXPECT_EQ(Tavona_ListView_InsertItem(lv_, -1, L"four", 4, 9), 3);
  Tavona_ListView_InsertItem(lv_, 0, L"zero", 0, 0);

  struct { const wchar_t *text; UINT flags; int row; } finds[] = {
      {L"two", 0, -1}, {L"Two", 0, 2}, {L"TWO", TAVONA_LV_FIND_IGNORE_CASE, 2},
      {L"th", TAVONA_LV_FIND_PREFIX, 3}, {L"TH", TAVONA_LV_FIND_PREFIX | TAVONA_LV_FIND_IGNORE_CASE, 3},
      {L"", TAVONA_LV_FIND_PREFIX, 0}, {L"fourth", TAVONA_LV_FIND_PREFIX, -1},
  };
  for (const auto &f : finds)
    EXPECT_EQ(Tavona_ListView_FindText(lv_, 0, f.text, f.flags), f.row) << Narrow(f.text);
}

TEST_F(ListView, SelectionMovesAndDeletes) {
  Fill(2, L"a,1|b,2|c,3|d,4|e,5");
  EXPECT_EQ(Tavona_ListView_MoveSelectedItemsDown(lv_, 0, 1), -1);  // nothing selected

  Tavona_ListView_SelectItem(lv_, 1);
  Tavona_ListView_SelectItem(lv_, 2);
  EXPECT_GE(Tavona_ListView_MoveSelectedItemsDown(lv_, 0, 1), 0);
  EXPECT_EQ(Dump(2), L"a,1|d,4|b,2|c,3|e,5");
  EXPECT_EQ(Selection(), L"00110");
  EXPECT_EQ(Tavona_ListView_GetItemParam(lv_, 2), 102);  // values stay with their rows
  Tavona_ListView_MoveSelectedItemsUp(lv_, 1, 1);        // only column 1 moves
  EXPECT_EQ(Dump(2), L"a,1|d,2|b,3|c,4|e,5");
  EXPECT_EQ(Selection(), L"01100");
  Tavona_ListView_SelectItem(lv_, 4);
  EXPECT_EQ(Tavona_ListView_MoveSelectedItemsDown(lv_, 0, 1), 1);  // the last row is selected
  Tavona_ListView_UnselectItem(lv_, 4);
  Tavona_ListView_SelectItem(lv_, 0);
  EXPECT_EQ(Tavona_ListView_MoveSelectedItemsUp(lv_, 0, 1), 1);
  EXPECT_EQ(Dump(2), L"a,1|d,2|b,3|c,4|e,5");

  EXPECT_EQ(Tavona_ListView_SwapColumns(lv_, 0, 1, TAVONA_LV_SWAP_SELECTED), 3);
  EXPECT_EQ(Dump(2), L"1,a|2,d|3,b|c,4|e,5");
  EXPECT_EQ(Tavona_ListView_SwapColumns(lv_, 0, 1, 0), 5);
  EXPECT_EQ(Dump(2), L"a,1|d,2|b,3|4,c|5,e");

  EXPECT_EQ(Tavona_ListView_DeleteSelectedItems(lv_, TAVONA_LV_SELECT_NEXT), 3);
  EXPECT_EQ(Dump(2), L"4,c|5,e");
  EXPECT_EQ(Selection(), L"10");  // the row now where the first deleted one was
  Tavona_ListView_SelectItem(lv_, 1);
  EXPECT_EQ(Tavona_ListView_DeleteSelectedItems(lv_, TAVONA_LV_SELECT_NEXT), 2);
  EXPECT_EQ(Tavona_ListView_DeleteSelectedItems(lv_, 0), 0);
  EXPECT_EQ(Tavona_ListView_MoveSelectedItemsUp(lv_, 0, 1), 0);  // the count of an empty list
  Tavona_ListView_InsertItem(lv_, -1, L"only", 0, 0);
  EXPECT_EQ(Tavona_ListView_MoveSelectedItemsUp(lv_, 0, 1), -1);
}

TEST(ListViewGerman, LoadedListInGerman) {
  if (GermanRun()) GTEST_SKIP() << "already the German run";
  EXPECT_EQ(RunInGerman(L"ListView.LoadFromFile"), 0u);
}

}  // namespace
