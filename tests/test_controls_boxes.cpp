// The box helpers driven against real list boxes and combo boxes, and
// against a box of another class.
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "testutil.h"
#include "tvres.h"

namespace {

struct Kind {
  const wchar_t *cls;
  DWORD style;
  bool list;
};
const Kind kList = {L"LISTBOX", LBS_NOTIFY | WS_VSCROLL, true};
const Kind kMultiList = {L"LISTBOX", LBS_MULTIPLESEL | WS_VSCROLL, true};
const Kind kSortedList = {L"LISTBOX", LBS_SORT, true};
const Kind kCombo = {L"COMBOBOX", CBS_DROPDOWNLIST | WS_VSCROLL, false};
const Kind kBoth[] = {kList, kCombo};

class Boxes : public ::testing::Test {
 protected:
  void SetUp() override {
    parent_ = CreateWindowW(L"STATIC", L"boxes", WS_OVERLAPPEDWINDOW, 0, 0, 400, 400, nullptr,
                            nullptr, nullptr, nullptr);
  }
  void TearDown() override { DestroyWindow(parent_); }

  HWND Make(const Kind &k) {
    return CreateWindowW(k.cls, L"", WS_CHILD | WS_VISIBLE | k.style, 0, 0, 200, 200, parent_,
                         nullptr, nullptr, nullptr);
  }
  // Entries as "text=data" for comparisons.
  static std::wstring Dump(HWND box) {
    std::wstring out;
    for (int i = 0; i < Tavona_GetBoxCount(box); ++i) {
      wchar_t text[300];
      Tavona_GetBoxEntry(box, i, text, 300);
      if (i) out += L",";
      out += text;
      out += L"=" + std::to_wstring(Tavona_GetItemData(box, i));
    }
    return out;
  }
  HWND parent_ = nullptr;
};

TEST_F(Boxes, UniqueAddingSelectsAndReplacesItemData) {
  for (const Kind &k : kBoth) {
    HWND b = Make(k);
    EXPECT_EQ(Tavona_AddBoxEntry(b, L"alpha", 1, -1, 0), 0);
    EXPECT_EQ(Tavona_AddBoxEntry(b, L"beta", 2, -1, 0), 1);
    EXPECT_EQ(Tavona_AddBoxEntry(b, L"Beta", 3, -1, TAVONA_ADD_UNIQUE), 1) << Narrow(k.cls);
    EXPECT_EQ(Dump(b), L"alpha=1,beta=3") << Narrow(k.cls);
    EXPECT_EQ(Tavona_GetBoxIndex(b), 1) << Narrow(k.cls);
    // Wrap-around: entry 0 is found too.
    EXPECT_EQ(Tavona_AddBoxEntry(b, L"ALPHA", 4, -1, TAVONA_ADD_UNIQUE), 0);
    EXPECT_EQ(Tavona_AddBoxEntry(b, nullptr, 5, 1, 0), 1) << "NULL text inserted at 1";
    EXPECT_EQ(Dump(b), L"alpha=4,=5,beta=3") << Narrow(k.cls);
    EXPECT_EQ(Tavona_AddBoxEntry(b, L"far", 6, 99, 0), -1) << "insert past the end";
  }
  HWND sorted = Make(kSortedList);
  Tavona_AddBoxEntry(sorted, L"m", 1, -1, 0);
  EXPECT_EQ(Tavona_AddBoxEntry(sorted, L"a", 2, -1, 0), 0);
}

TEST_F(Boxes, EntriesAndItemDataByIndexOrSelection) {
  for (const Kind &k : kBoth) {
    HWND b = Make(k.list ? kSortedList : k);
    Tavona_AddBoxEntry(b, L"one", 1, -1, 0);
    Tavona_AddBoxEntry(b, L"two", 2, -1, 0);
    wchar_t out[10] = L"junk";
    EXPECT_EQ(Tavona_GetBoxEntry(b, -1, out, 10), -1) << "no selection";
    EXPECT_STREQ(out, L"");
    Tavona_SetItemData(b, -5, 77);  // nothing selected: nothing happens
    EXPECT_EQ(Dump(b), L"one=1,two=2");
    Tavona_SetBoxIndex(b, 1);
    EXPECT_EQ(Tavona_GetBoxEntry(b, -1, out, 10), 0);
    EXPECT_STREQ(out, L"two");
    EXPECT_EQ(Tavona_GetBoxEntry(b, 1, out, 3), -1) << "3 characters need 4";
    EXPECT_STREQ(out, L"");
    Tavona_SetItemData(b, -2, 22);
    EXPECT_EQ(Tavona_GetItemData(b, -3), 22);
    const LPARAM wide = LPARAM(sizeof(LPARAM) > 4 ? 0x123456789ABLL : 0x12345678);
    Tavona_SetItemData(b, 0, wide);
    EXPECT_EQ(Tavona_GetBoxIndexByItemData(b, wide), 0) << "item data are pointer-sized";
    EXPECT_EQ(Tavona_GetBoxIndexByItemText(b, L"TWO"), 1);
    EXPECT_EQ(Tavona_GetBoxIndexByItemText(b, L"tw"), -1);
    EXPECT_EQ(Tavona_DeleteBoxEntry(b, -1), 0);
    EXPECT_EQ(Tavona_DeleteBoxEntry(b, -1), -1) << "the selection went with it";
    EXPECT_EQ(Dump(b), L"one=" + std::to_wstring(wide));
  }
}

// A start index outside the box searches the whole box, as -1 does (the
// controls themselves read far outside their entries for starts below -1).
TEST_F(Boxes, FindWithTrailingBlanksIgnoredFromAnyStart) {
  const Kind ownerDraw = {L"LISTBOX", LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, true};
  for (const Kind &k : {kList, kCombo, ownerDraw}) {
    HWND b = Make(k);
    const std::wstring y499(499, 'y'), z500(500, 'z');
    for (const wchar_t *s : {L"ABC", L"abc  ", L"abc\t", L"x", y499.c_str(), z500.c_str()})
      Tavona_AddBoxEntry(b, s, 0, -1, 0);
    const std::wstring y499q = y499 + L"q";
    struct Row { const wchar_t *text; INT start; UINT flags; INT expected; } rows[] = {
        {L"abc", 0, TAVONA_FIND_TRIMMED, 1},       {L"abc \t ", 0, TAVONA_FIND_TRIMMED, 1},
        {L"ABC  ", 0, TAVONA_FIND_TRIMMED, 0},     {L"Abc", 0, TAVONA_FIND_TRIMMED, -1},
        {L"ab", 0, TAVONA_FIND_TRIMMED, -1},       {L"abc", -1, 0, 0},
        {L"abc  ", 0, 0, 1},                       {L"x", 3, 0, 3},
        {L"", 0, TAVONA_FIND_TRIMMED, -1},
        {L"x", -2, 0, 3}, {L"x", INT_MIN, 0, 3}, {L"ABC", 6, 0, 0}, {L"ABC", INT_MAX, 0, 0},
        // A text is cut to 499 characters; the 500-character entry is not read.
        {y499.c_str(), 0, TAVONA_FIND_TRIMMED, 4}, {y499q.c_str(), 0, TAVONA_FIND_TRIMMED, 4},
        {z500.c_str(), 0, TAVONA_FIND_TRIMMED, -1},
    };
    for (const Row &r : rows)
      EXPECT_EQ(Tavona_FindBoxEntry(b, r.text, r.start, r.flags), r.expected)
          << Narrow(k.cls) << " '" << Narrow(r.text) << "' start " << r.start;
  }
}

// Owner-drawn boxes without strings keep item data where the text would
// be; reading one gives the empty text, never the data's bytes (the bounds
// are the hostile test's).
TEST_F(Boxes, EntriesOfBoxesWithoutStrings) {
  const Kind kinds[] = {{L"LISTBOX", LBS_OWNERDRAWFIXED, true},
                        {L"COMBOBOX", CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED, false}};
  for (const Kind &k : kinds) {
    HWND b = Make(k);
    Tavona_AddBoxEntry(b, L"", 0x0041004100410041, -1, 0);
    wchar_t out[16] = L"junk";
    EXPECT_EQ(Tavona_GetBoxEntry(b, 0, out, 16), -1) << Narrow(k.cls);
    EXPECT_STREQ(out, L"") << Narrow(k.cls);
  }
}

// A box of another class (here a superclassed combo box) gets combo-box
// messages; a fill empties it first, a reset leaves it alone.
TEST_F(Boxes, OtherClassesGetComboMessages) {
  WNDCLASSW wc = {};
  ASSERT_TRUE(GetClassInfoW(nullptr, L"COMBOBOX", &wc));
  wc.hInstance = GetModuleHandleW(nullptr);
  wc.lpszClassName = L"SuperCombo";
  RegisterClassW(&wc);
  HWND b = Make({L"SuperCombo", CBS_DROPDOWNLIST, false});
  ASSERT_EQ(Tavona_GetBoxType(b), TAVONA_BOX_OTHER);
  Tavona_FillBoxExtended(b, ';', L"a;b;c", 0);
  Tavona_FillBoxExtended(b, ';', L"x;y", 0);
  EXPECT_EQ(Tavona_AddBoxEntry(b, L"w", 7, 0, 0), 0);
  EXPECT_EQ(Dump(b), L"w=7,x=0,y=0");
  EXPECT_EQ(Tavona_GetBoxIndexByItemText(b, L"Y"), 2);
  Tavona_ResetBox(b);
  EXPECT_EQ(Tavona_GetBoxCount(b), 3) << "no reset for other classes";
}

TEST_F(Boxes, FillExtendedFlags) {
  struct Row { const wchar_t *list; UINT flags; const wchar_t *expected; } rows[] = {
      {L"Red;Green;;Blue", 0, L"Red=0,Green=0,=0,Blue=0"},
      {L"Red;1;Green;-2;Blue", TAVONA_FILL_NUMBER, L"Red=1,Green=-2,Blue=0"},
      {L"A;ff;B;zz;C;FFFFFFFF", TAVONA_FILL_NUMBER | TAVONA_FILL_HEX, L"A=255,B=0,C=-1"},
      {L"a;1;A;2;b;3", TAVONA_FILL_NUMBER | TAVONA_FILL_UNIQUE, L"a=2,b=3"},
      {L"more", TAVONA_FILL_KEEP, L"old=9,more=0"},
      {L"", 0, L""},
      {nullptr, TAVONA_FILL_KEEP, L"old=9"},
  };
  for (const Kind &k : kBoth) {
    for (const Row &r : rows) {
      HWND b = Make(k);
      Tavona_AddBoxEntry(b, L"old", 9, -1, 0);
      Tavona_FillBoxExtended(b, ';', r.list, r.flags);
      EXPECT_EQ(Dump(b), r.expected) << Narrow(k.cls) << " " << Narrow(r.list) << " " << r.flags;
    }
    // Texts longer than 299 characters are cut.
    HWND b = Make(k);
    Tavona_FillBox(b, '|', (std::wstring(400, 'L') + L"|s").c_str());
    wchar_t text[400];
    Tavona_GetBoxEntry(b, 0, text, 400);
    EXPECT_EQ(wcslen(text), 299u);
  }
}

TEST_F(Boxes, StringItemDataAreCopiesReleasedTogether) {
  for (const Kind &k : kBoth) {
    HWND b = Make(k);
    Tavona_FillBoxExtended(b, ',', L"One,id-1,Two,id-2,Three,5,id-3",
                           TAVONA_FILL_STRING);
    EXPECT_EQ(Tavona_GetBoxCount(b), 4) << "'5' is taken as a text field";
    Tavona_DeleteBoxItemDataPointers(b);
    Tavona_FillBoxExtended(b, ',', L"One,1,id-1,Two,2,id-2", TAVONA_FILL_NUMBER | TAVONA_FILL_STRING);
    ASSERT_EQ(Tavona_GetBoxCount(b), 2);
    const wchar_t *s = reinterpret_cast<const wchar_t *>(Tavona_GetItemData(b, 1));
    ASSERT_TRUE(s);
    EXPECT_STREQ(s, L"id-2");
    EXPECT_EQ(Tavona_GetBoxIndexByItemDataString(b, L"id-2"), 1);
    EXPECT_EQ(Tavona_GetBoxIndexByItemDataString(b, L"ID-2"), -1) << "case-sensitive";
    EXPECT_EQ(Tavona_GetBoxIndexByItemDataString(b, nullptr), -1);
    Tavona_AddBoxEntry(b, L"none", 0, 0, 0);
    EXPECT_EQ(Tavona_GetBoxIndexByItemDataString(b, L"id-1"), 1) << "NULL item data skipped";
    wchar_t out[200];
    Tavona_ReadBox(b, ',', TAVONA_FILL_STRING, out, 200);
    EXPECT_STREQ(out, L"none,,One,id-1,Two,id-2");
    Tavona_DeleteBoxItemDataPointers(b);
    Tavona_ResetBox(b);
  }
}

TEST_F(Boxes, MoveEntryUpAndDown) {
  struct Row { INT index, direction; const wchar_t *expected; INT selection; } rows[] = {
      {1, TAVONA_MOVE_UP, L"b=2,a=1,c=3", 0},   {1, TAVONA_MOVE_DOWN, L"a=1,c=3,b=2", 2},
      {0, TAVONA_MOVE_UP, L"a=1,b=2,c=3", 0},   {2, TAVONA_MOVE_DOWN, L"a=1,b=2,c=3", 2},
      {1, 3, L"a=1,b=2,c=3", 1},                {-1, TAVONA_MOVE_DOWN, L"a=1,c=3,b=2", 2},
  };
  for (const Kind &k : kBoth) {
    for (const Row &r : rows) {
      HWND b = Make(k);
      Tavona_FillBoxExtended(b, ';', L"a;1;b;2;c;3", TAVONA_FILL_NUMBER);
      if (r.index < 0) Tavona_SetBoxIndex(b, 1);
      Tavona_MoveBoxEntry(b, r.index, r.direction);
      EXPECT_EQ(Dump(b), r.expected) << Narrow(k.cls) << " " << r.index << "/" << r.direction;
      EXPECT_EQ(k.list ? SendMessageW(b, LB_GETSEL, r.selection, 0) > 0
                       : Tavona_GetBoxIndex(b) == r.selection, true) << r.index << "/" << r.direction;
    }
  }
}

TEST_F(Boxes, SelectUnselectAndReadBack) {
  HWND list = Make(kMultiList), combo = Make(kCombo);
  for (HWND b : {list, combo}) Tavona_FillBoxExtended(b, ';', L"a;1;b;2;c;3;d;4", TAVONA_FILL_NUMBER);
  EXPECT_EQ(Tavona_SelectBoxEntries(list, ';', L"B;d;nope", 0), 2);
  EXPECT_EQ(SendMessageW(list, LB_GETSELCOUNT, 0, 0), 2);
  EXPECT_EQ(Tavona_SelectBoxEntries(list, ';', L"", 0), 0);
  EXPECT_EQ(SendMessageW(list, LB_GETSELCOUNT, 0, 0), 0);
  // A fill list selects its own entries: the number fields are skipped.
  EXPECT_EQ(Tavona_SelectBoxEntries(list, ';', L"c;3;a;1", TAVONA_FILL_NUMBER), 2);
  EXPECT_EQ(Tavona_SelectBoxEntries(combo, ';', L"c;a", 0), 2);
  EXPECT_EQ(Tavona_GetBoxIndex(combo), 0) << "the last item found is current";

  struct Row { HWND box; UINT flags; int size; const wchar_t *expected; } rows[] = {
      {list, TAVONA_READ_SELECTED, 100, L"a;c"},
      {list, TAVONA_READ_SELECTED | TAVONA_FILL_NUMBER, 100, L"a;1;c;3"},
      {combo, TAVONA_READ_SELECTED, 100, L"a"},
      {combo, TAVONA_FILL_NUMBER, 100, L"a;1;b;2;c;3;d;4"},
      {combo, TAVONA_FILL_NUMBER, 8, L"a;1;b;2"},  // ends after a whole entry
      {combo, TAVONA_FILL_NUMBER, 7, L"a;1"},
  };
  for (const Row &r : rows) {
    wchar_t out[100];
    int n = Tavona_ReadBox(r.box, ';', r.flags, out, r.size);
    EXPECT_STREQ(out, r.expected) << r.flags << " size " << r.size;
    EXPECT_EQ(n, int(wcslen(r.expected)));
  }
  Tavona_UnselectAllBoxEntries(list);
  EXPECT_EQ(SendMessageW(list, LB_GETSELCOUNT, 0, 0), 0);
  EXPECT_EQ(Tavona_UnselectAllBoxEntries(combo), -1) << "clearing reports as the control does";
  EXPECT_EQ(Tavona_GetBoxIndex(combo), -1);
}

}  // namespace
