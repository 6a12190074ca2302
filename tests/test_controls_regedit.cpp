// The registry section editor driven through its dialogs on a real key of
// the current user, and recent file lists in the registry, boxes and menus.
// The German dialogs run in a child process started with VEL_LANGUAGE=de.
#include <tavona/tavona32.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

const wchar_t kKey[] = L"Software\\Tavona Software\\Tests\\RegEdit";
const wchar_t kRecent[] = L"Software\\Tavona Software\\Tests\\Recent";

void SetValue(const wchar_t *key, const wchar_t *name, const std::wstring &data) {
  RegSetKeyValueW(HKEY_CURRENT_USER, key, name, REG_SZ, data.c_str(),
                  DWORD((data.size() + 1) * sizeof(wchar_t)));
}

// Every value of the key as "name=data;", sorted by name.
std::wstring ReadKey(const wchar_t *key) {
  HKEY k;
  if (RegOpenKeyExW(HKEY_CURRENT_USER, key, 0, KEY_READ, &k) != 0) return L"(no key)";
  std::vector<std::wstring> values;
  wchar_t name[300], data[600];
  for (DWORD i = 0, len = 300, bytes = sizeof data;
       RegEnumValueW(k, i, name, &len, nullptr, nullptr, LPBYTE(data), &bytes) == 0;
       ++i, len = 300, bytes = sizeof data)
    values.push_back(std::wstring(name) + L"=" + data + L";");
  RegCloseKey(k);
  std::sort(values.begin(), values.end());
  std::wstring out;
  for (const auto &v : values) out += v;
  return out;
}

// The editor's rows as "name=data;".
std::wstring Rows(tvui::Session &s, HWND list) {
  std::wstring out;
  int count = int(s.Send(list, LVM_GETITEMCOUNT));
  for (int r = 0; r < count; ++r) {
    for (int c = 0; c < 2; ++c) {
      wchar_t text[300] = {};
      LVITEMW item = {};
      item.iSubItem = c, item.pszText = text, item.cchTextMax = 300;
      s.Send(list, LVM_GETITEMTEXTW, r, LPARAM(&item));
      out += std::wstring(text) + (c ? L";" : L"=");
    }
  }
  return out;
}

void SelectRow(tvui::Session &s, HWND list, int row) {
  LVITEMW item = {};
  item.stateMask = item.state = LVIS_SELECTED | LVIS_FOCUSED;
  s.Send(list, LVM_SETITEMSTATE, row, LPARAM(&item));
}

bool Enabled(tvui::Session &s, HWND dlg, int id) { return IsWindowEnabled(s.Item(dlg, id)) != 0; }

void AddEntry(tvui::Session &s, HWND editor, const wchar_t *caption, const wchar_t *name,
              const wchar_t *data, bool shot = false) {
  s.Click(editor, IDC_REGEDIT_ADD);
  HWND add = s.WaitDialog(caption);
  if (shot) {
    // The labels are the list's column titles.
    EXPECT_EQ(s.Text(add, IDC_REGEDIT_NAME_LABEL), Pick(L"Setting", L"Wertname"));
    EXPECT_EQ(s.Text(add, IDC_REGEDIT_DATA_LABEL), Pick(L"Contents", L"Inhalt"));
    s.Screenshot(add, Shot(L"regedit_add"));
    // An empty name is refused with message 1386; the dialog stays.
    s.Click(add, IDOK);
    tvui::Box box = s.WaitMessageBox();
    EXPECT_EQ(box.icon, UINT(MB_ICONEXCLAMATION));
    s.Answer(box, IDOK);
    EXPECT_TRUE(IsWindow(add));
  }
  s.SetText(add, IDC_REGEDIT_NAME, name);
  s.SetText(add, IDC_REGEDIT_DATA, data);
  s.Click(add, IDOK);
  s.WaitClosed(add);
}

class RegEdit : public ::testing::Test {
 protected:
  void SetUp() override {
    RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
    for (const wchar_t *v : {L"A1", L"B2", L"C3"}) SetValue(kKey, std::wstring(v, 1).c_str(), v + 1);
  }
  void TearDown() override { RegDeleteTreeW(HKEY_CURRENT_USER, kKey); }
  const wchar_t *columns_ = Pick(L"Setting|120|Contents|200", L"Wertname|120|Inhalt|200");
};

// Delete, defaults, add (a second X: the later write wins), then OK writes
// exactly the list. The captions are the templates'.
TEST_F(RegEdit, ChangesWrittenOnOk) {
  const wchar_t *addCaption = Pick(L"Add Entry", L"Eintrag hinzufügen");
  int rc = tvui::RunModal(
      [&] {
        return Tavona_EditRegistrySection(nullptr, HKEY_CURRENT_USER, kKey, nullptr, columns_,
                                          L"", L"X;10;Y;20;", 7, 8);
      },
      [&](tvui::Session &s) {
        HWND dlg = s.WaitDialog(Pick(L"Edit Settings", L"Einstellungen bearbeiten"));
        HWND list = s.Item(dlg, IDC_REGEDIT_LIST);
        EXPECT_EQ(Rows(s, list), L"A=1;B=2;C=3;");
        EXPECT_FALSE(Enabled(s, dlg, IDC_REGEDIT_DELETE));
        SelectRow(s, list, 0);
        EXPECT_TRUE(Enabled(s, dlg, IDC_REGEDIT_DELETE));
        s.Screenshot(dlg, Shot(L"regedit_editor"));
        s.Click(dlg, IDC_REGEDIT_DELETE);
        EXPECT_EQ(Rows(s, list), L"B=2;C=3;");
        EXPECT_FALSE(Enabled(s, dlg, IDC_REGEDIT_DELETE));
        s.Click(dlg, IDC_REGEDIT_DEFAULTS);
        EXPECT_EQ(Rows(s, list), L"X=10;Y=20;");
        s.Screenshot(dlg, Shot(L"regedit_defaults"));
        AddEntry(s, dlg, addCaption, L"X", L"11", true);
        AddEntry(s, dlg, addCaption, L"D", L"4 with spaces");
        EXPECT_EQ(Rows(s, list), L"X=10;Y=20;X=11;D=4 with spaces;");
        s.Click(dlg, IDOK);
        s.WaitClosed(dlg);
      });
  EXPECT_EQ(rc, 1);
  EXPECT_EQ(ReadKey(kKey), L"D=4 with spaces;X=11;Y=20;");
}

TEST(RegEditGerman, AllInGerman) {
  if (GermanRun()) GTEST_SKIP() << "already the German run";
  EXPECT_EQ(RunInGerman(L"RegEdit.*"), 0u);
}

// ---- Recent file lists ------------------------------------------------------

class RecentFiles : public ::testing::Test {
 protected:
  void SetUp() override { RegDeleteTreeW(HKEY_CURRENT_USER, kRecent); }
  void TearDown() override { RegDeleteTreeW(HKEY_CURRENT_USER, kRecent); }
  static std::wstring Entry(int index) {
    wchar_t out[256] = L"junk";
    Tavona_GetRecentListFile(kRecent, index, out, 256);
    return out;
  }
  static std::wstring All() {
    std::wstring out;
    for (int i = 0; i < 25; ++i) {
      std::wstring e = Entry(i);
      if (e.empty()) break;
      out += (i ? L"," : L"") + e;
    }
    return out;
  }
};

TEST_F(RecentFiles, PushOrderAndLimits) {
  struct Step { const wchar_t *push, *list; } steps[] = {
      {L"A", L"A"},
      {L"B", L"B,A"},
      {L"A", L"A,B"},
      {L"C:\\X.TXT", L"C:\\X.TXT,A,B"},
      {L"c:\\x.txt", L"c:\\x.txt,A,B"},  // equal in any case: moves to the front
      {L"  ", L"c:\\x.txt,A,B"},         // blank: nothing happens
  };
  for (const Step &st : steps) {
    Tavona_PushRecentListFile(kRecent, st.push);
    EXPECT_EQ(All(), st.list) << Narrow(st.push);
  }
  for (int i = 0; i < 21; ++i) Tavona_PushRecentListFile(kRecent, (L"f" + std::to_wstring(i)).c_str());
  EXPECT_EQ(Tavona_CountRegistryItems(HKEY_CURRENT_USER, kRecent), 20);
  EXPECT_EQ(Entry(0), L"f20");
  EXPECT_EQ(Entry(20), L"");
}

// deliberate: an entry of 128 characters or more ends the list read back
TEST_F(RecentFiles, LongEntryDropsTheOlderOnes) {
  for (auto [name, data] : {std::pair(L"F01", std::wstring(L"one")), {L"F02", L"two"},
                            {L"F03", std::wstring(130, L'x')}, {L"F04", L"four"}})
    SetValue(kRecent, name, data);
  Tavona_PushRecentListFile(kRecent, L"new");
  EXPECT_EQ(ReadKey(kRecent), L"F01=new;F02=one;F03=two;");

  // Reading takes size bytes: a 6-character buffer holds 2 characters.
  GuardedBuffer<wchar_t> small(6, L"dflt");
  Tavona_GetRecentListFile(kRecent, 0, small.data(), 6);
  EXPECT_EQ(small.Text(), L"");
  EXPECT_TRUE(small.Intact());
}

TEST_F(RecentFiles, BoxesAndMenus) {
  Tavona_PushRecentListFile(kRecent, L"Z:\\gone\\no longer there.txt");
  Tavona_PushRecentListFile(kRecent, L"C:\\b.txt");
  Tavona_PushRecentListFile(kRecent, L"C:\\a.txt");
  HWND combo = CreateWindowW(L"COMBOBOX", L"", CBS_DROPDOWNLIST, 0, 0, 200, 200, nullptr, nullptr,
                             nullptr, nullptr);
  Tavona_AddBoxEntry(combo, L"old", 0, -1, 0);
  Tavona_FillRecentListToBox(combo, kRecent, 2, 42);
  EXPECT_EQ(Tavona_GetBoxCount(combo), 2);
  EXPECT_EQ(Tavona_GetItemData(combo, 1), 42);
  Tavona_FillRecentListToBox(combo, kRecent, 10, 5);
  EXPECT_EQ(Tavona_GetBoxCount(combo), 3);  // stops at the first blank entry
  DestroyWindow(combo);

  HMENU menu = CreatePopupMenu();
  for (int i = 0; i < 9; ++i) AppendMenuW(menu, MF_STRING, 100 + i, (L"item " + std::to_wstring(i)).c_str());
  auto dump = [&] {
    std::wstring out;
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
      wchar_t text[300] = {};
      GetMenuStringW(menu, i, text, 300, MF_BYPOSITION);
      out += std::to_wstring(GetMenuItemID(menu, i)) + L":" + text + L";";
    }
    return out;
  };
  EXPECT_EQ(Tavona_AppendRecentListToMenuExt(menu, kRecent, 5, 500, 2, 0, 0, 0), 2);
  const std::wstring five = L"100:item 0;101:item 1;102:item 2;103:item 3;104:item 4;0:;"
                           L"500:&1:  C:\\a.txt;501:&2:  C:\\b.txt;";
  EXPECT_EQ(dump(), five);
  // Replaced on every update; a missing file is listed as it is.
  EXPECT_EQ(Tavona_AppendRecentListToMenu(menu, kRecent, 5, 500, 9, 0), 1);
  EXPECT_EQ(dump(), five + L"502:&3:  Z:\\gone\\no longer there.txt;");
  DestroyMenu(menu);
}

}  // namespace
