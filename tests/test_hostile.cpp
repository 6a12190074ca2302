// Every export against the arguments of careless callers: sizes from INT_MIN
// to far more than needed, null pointers, invalid handles and texts of
// 300,000 characters. Each routine must not crash, must not write past the
// size given, must leave a terminated text wherever it writes one and must
// answer within a second.
//
// A family is one table of rows; a row names the routine and calls it with
// an input text, an output buffer and a size (captures are allowed). Add a
// family as a TEST that builds its rows and hands them to ExpectHolds.
#include <tavona/tavona32.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "testutil.h"

namespace {

using Buffer = GuardedBuffer<WCHAR>;
using Call = std::function<void(const WCHAR *input, WCHAR *out, INT size)>;

struct Row {
  const char *name;
  Call call;
  bool mayStayUnterminated = false;  // a field cut to the size deliberately stays so
};

constexpr INT kHuge = 1 << 19;  // a real buffer larger than the longest input

// What is being called, for the crash report of the filter below.
char g_current[200] = "";

LONG WINAPI ReportCrash(EXCEPTION_POINTERS *e) {
  std::fprintf(stderr, "\ncrash 0x%08lX in %s\n", e->ExceptionRecord->ExceptionCode, g_current);
  std::fflush(stderr);
  return EXCEPTION_CONTINUE_SEARCH;
}

// Inputs every row is given: none, empty, short, a typical mix of the
// characters that routines look at, and a long text.
std::vector<const WCHAR *> AllInputs() {
  static const std::wstring mixed =
      L"C:\\dir.v2\\na me.txt;\"quoted;field\"\t12345=%s%d%2147483647s\\n ";
  static const std::wstring huge = [] {
    std::wstring h;
    while (h.size() < 300000) h += mixed;
    return h.substr(0, 300000);
  }();
  return {nullptr, L"", L"a", mixed.c_str(), huge.c_str()};
}

std::string Describe(const char *name, const WCHAR *input, INT size) {
  std::string in = input ? std::to_string(std::wstring(input).size()) + " characters" : "null";
  return std::string(name) + " input " + in + " size " + std::to_string(size);
}

// One call into a fresh guarded buffer: nothing past the size, terminated
// if written, in time.
void Check(const Row &row, const WCHAR *input, INT size) {
  std::string what = Describe(row.name, input, size);
  std::snprintf(g_current, sizeof g_current, "%s", what.c_str());
  Buffer b(size, L"");
  auto start = std::chrono::steady_clock::now();
  row.call(input, b.data(), size);
  auto took = std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now() - start);
  EXPECT_TRUE(b.Intact()) << what << ": written past the size";
  if (b.Touched() && !row.mayStayUnterminated) {
    EXPECT_TRUE(b.Terminated()) << what << ": left unterminated";
  }
  EXPECT_LT(took.count(), 1000) << what << ": milliseconds taken";
}

// huge: the largest real buffer tried; families with short results may
// pass less to stay quick.
void ExpectHolds(const std::vector<Row> &rows,
                 const std::vector<const WCHAR *> &inputs = AllInputs(), INT huge = kHuge) {
  for (const Row &row : rows) {
    for (const WCHAR *input : inputs) {
      Buffer b(huge, L"");  // for the size the result needs, terminator included
      row.call(input, b.data(), huge);
      INT exact = static_cast<INT>(b.Text().size()) + 1;
      for (INT size : {INT_MIN, -1, 0, 1, exact - 1, exact, huge}) Check(row, input, size);
      std::snprintf(g_current, sizeof g_current, "%s", Describe(row.name, input, -2).c_str());
      for (INT size : {INT_MIN, 0, exact, huge}) row.call(input, nullptr, size);  // null buffer
    }
  }
  g_current[0] = 0;
}

// Routines that work in the caller's buffer take the input there first
// (Seeded: a row that takes nothing else).
void Seed(WCHAR *out, INT size, const WCHAR *input) {
  if (!out || size < 1) return;
  INT n = 0;
  for (; input && input[n] && n < size - 1; ++n) out[n] = input[n];
  out[n] = 0;
}
Call Seeded(void (*work)(WCHAR *out, INT size)) {
  return [work](const WCHAR *in, WCHAR *out, INT n) {
    Seed(out, n, in);
    work(out, n);
  };
}

class Hostile : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { SetUnhandledExceptionFilter(ReportCrash); }
  // Errors go to the callback: a message box would wait for a click.
  void SetUp() override { Tavona_SetErrorHandlerCallback(CaptureReports); }
  void TearDown() override {
    Tavona_SetErrorHandlerCallback(nullptr);
    g_capturedReports.clear();
  }
};

TEST_F(Hostile, Strings) {
  ExpectHolds({
      {"TavonaCopyString", [](auto in, auto out, INT n) { TavonaCopyString(out, in, n); }},
      {"TavonaAppendString",
       [](auto in, auto out, INT n) {
         Seed(out, n, L"ab");
         TavonaAppendString(out, in, n);
       }},
      {"Tavona_Replace",
       Seeded([](WCHAR *out, INT n) { Tavona_Replace(out, n, L"a", L"xyz", 0); })},
      {"Tavona_ScanString",
       [](auto in, auto out, INT n) {
         const WCHAR *cursor = in;
         while (Tavona_ScanString(&cursor, out, n, ';') > 0 || (cursor && *cursor)) {
         }
       },
       true},
      {"Tavona_ExtractFirstDigitString",
       [](auto in, auto out, INT n) { Tavona_ExtractFirstDigitString(in, 1, L"", L"", out, n); }},
      {"Tavona_EncodeString",
       [](auto in, auto out, INT n) { Tavona_EncodeString(in, out, n, 0xFFFF); }},
      {"Tavona_EscapeToBinary", [](auto in, auto out, INT n) { Tavona_EscapeToBinary(in, out, n); }},
      {"Tavona_LongToRoman",
       [](auto in, auto out, INT n) { Tavona_LongToRoman(in ? 3888 : INT_MIN, out, n); }},
      {"Tavona_StringToAutoCrypt",
       [](auto in, auto out, INT n) { Tavona_StringToAutoCrypt(in, out, n, L"key"); }},
      {"Tavona_AutoCryptToString",
       [](auto in, auto out, INT n) { Tavona_AutoCryptToString(in, out, n, L"key"); }},
  });
}

TEST_F(Hostile, ListsAndDescriptors) {
  ExpectHolds({
      {"Tavona_ScanTextFromLanguageList",
       [](auto in, auto out, INT n) { Tavona_ScanTextFromLanguageList(in, 7, out, n); }},
      {"Tavona_ReplaceTextInLanguageList",
       [](auto in, auto out, INT n) {
         Seed(out, n, L"eins\x000B" L"7\x000B" L"two\x000B" L"9");
         Tavona_ReplaceTextInLanguageList(out, static_cast<UINT>(n), in, 7);
       }},
      {"DescriptorAddStringItem",
       [](auto in, auto out, INT n) {
         Seed(out, n, L"a=1");
         DescriptorAddStringItem(out, static_cast<UINT>(n), L"name", in);
       }},
      {"DescriptorAddLongItem", Seeded([](WCHAR *out, INT n) {
         DescriptorAddLongItem(out, static_cast<UINT>(n), L"name", INT_MIN);
       })},
      {"DescriptorGetStringItem",
       [](auto in, auto out, INT n) { DescriptorGetStringItem(in, L"dir.v2\\na me.txt;\"quoted;field\"\t12345", L"d", out, n); }},
  });
}

TEST_F(Hostile, NumbersAndDates) {
  static const DateTimeStruct when = {29, 2, 2024, 23, 59, 58};
  ExpectHolds({
      {"Int_To_FormattedInt", [](auto in, auto out, INT n) { Int_To_FormattedInt(INT_MIN, out, n, in); }},
      {"Float_To_FormattedFloat",
       [](auto in, auto out, INT n) { Float_To_FormattedFloat(-1.5e300, out, n, in); }},
      {"DateTimeStruct_To_FormattedDate",
       [](auto in, auto out, INT n) { DateTimeStruct_To_FormattedDate(&when, out, n, in); }},
      {"DateTimeStruct_To_FormattedTime",
       [](auto in, auto out, INT n) { DateTimeStruct_To_FormattedTime(&when, out, n, in); }},
      {"DateTimeStruct_To_OdbcTimeStamp",
       [](auto in, auto out, INT n) { DateTimeStruct_To_OdbcTimeStamp(in ? &when : nullptr, out, n); }},
  });
}

TEST_F(Hostile, FileNames) {
  ExpectHolds({
      {"Tavona_Assemble_FileName",
       [](auto in, auto out, INT n) { Tavona_Assemble_FileName(out, in, L"name", L"ext", n); }},
      {"Tavona_AddPath",
       Seeded([](WCHAR *out, INT n) { Tavona_AddPath(out, n, L"D:\\base", 0, nullptr); })},
      {"Tavona_AddPath [MODULEPATH]",
       Seeded([](WCHAR *out, INT n) { Tavona_AddPath(out, n, L"[modulepath]", 0, nullptr); })},
      {"Tavona_ConvertFilenameToWildcard",
       Seeded([](WCHAR *out, INT n) { Tavona_ConvertFilenameToWildcard(out, n); })},
      {"Tavona_GetExtension", [](auto in, auto out, INT n) { Tavona_GetExtension(in, out, n); }},
      {"Tavona_GetProfileName",
       [](auto, auto out, INT n) { Tavona_GetProfileName(nullptr, out, n); }},
      {"Tavona_GetFileNameDisplay",
       [](auto in, auto out, INT n) { Tavona_GetFileNameDisplay(out, n, in, 40, 0); }},
  });
}

TEST_F(Hostile, FrameAndSettings) {
  static const TAVONA_TEXT_PAIR pairs[] = {{1, L"one"}, {0, nullptr}};
  ExpectHolds({
      {"Tavona_GetVersion", [](auto, auto out, INT n) { Tavona_GetVersion(out, n); }},
      {"Tavona_GetResourceFileVersion",
       [](auto in, auto out, INT n) {
         Tavona_GetResourceFileVersion(GetModuleHandleW(L"tavona32.dll"), 0, out, n, in);
       }},
      {"Tavona_GetLtsModuleName",
       [](auto, auto out, INT n) { Tavona_GetLtsModuleName(out, static_cast<UINT>(n)); }},
      {"Tavona_Translate_LongToString",
       [](auto in, auto out, INT n) {
         Tavona_Translate_LongToString(2, out, static_cast<UINT>(n), pairs, in);
       }},
      {"Tavona_ReadStringFromRegistry (profile)",
       [](auto in, auto out, INT n) {
         Tavona_ReadStringFromRegistry(nullptr, nullptr, in, L"S", L"V", L"default", out, n);
       }},
      {"Tavona_ReadStringFromRegistry (key)",
       [](auto in, auto out, INT n) {
         Tavona_ReadStringFromRegistry(HKEY_CURRENT_USER, in, nullptr, in, in, in, out, n);
       }},
      {"Tavona_ReadRegistryItems",
       [](auto in, auto out, INT n) { Tavona_ReadRegistryItems(HKEY_CURRENT_USER, in, out, n, ';'); }},
      {"Tavona_ReadCryptedProfileString",
       [](auto in, auto out, INT n) {
         Tavona_ReadCryptedProfileString(L"k", in, L"S", L"V", in, out, n);
       }},
      // Writers have no buffer: once per input, as the file name too when
      // no file can come of it.
      {"profile writers",
       [](auto in, auto, INT n) {
         if (n != 1 || (in && wcslen(in) < 1000)) return;
         Tavona_WriteStringToRegistry(nullptr, nullptr, in, L"S", L"V", in);
         Tavona_WriteCryptedProfileString(L"k", in, L"S", L"V", in);
         Tavona_DeleteRegistryKey(nullptr, nullptr, in, L"S");
         Tavona_IsRegistryKeyAvailable(nullptr, nullptr, in, L"S");
       }},
  });
}

// Boxes of every kind, a window of another class, a destroyed window and
// null, named by indices from INT_MIN to INT_MAX.
TEST_F(Hostile, Boxes) {
  INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&icc);
  HWND parent = CreateWindowW(L"STATIC", L"hostile", WS_OVERLAPPEDWINDOW, 0, 0, 300, 300,
                              nullptr, nullptr, nullptr, nullptr);
  struct Kind {
    const wchar_t *cls;
    DWORD style;
  } kinds[] = {
      {L"LISTBOX", LBS_NOTIFY},
      {L"LISTBOX", LBS_MULTIPLESEL},
      {L"LISTBOX", LBS_OWNERDRAWFIXED},
      {L"LISTBOX", LBS_OWNERDRAWVARIABLE | LBS_HASSTRINGS},
      {L"COMBOBOX", CBS_DROPDOWNLIST},
      {L"COMBOBOX", CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED},
      {L"COMBOBOX", CBS_DROPDOWN | CBS_OWNERDRAWVARIABLE | CBS_HASSTRINGS},
      {WC_LISTVIEWW, LVS_REPORT},
      {L"EDIT", 0},
  };
  std::vector<HWND> boxes;
  for (const Kind &k : kinds) {
    HWND b = CreateWindowW(k.cls, L"", WS_CHILD | WS_VISIBLE | k.style, 0, 0, 200, 200, parent,
                           nullptr, nullptr, nullptr);
    Tavona_FillBoxExtended(b, ';', L"alpha;Beta;gamma  ;;delta", 0);
    boxes.push_back(b);
  }
  HWND gone = CreateWindowW(L"LISTBOX", L"", WS_CHILD, 0, 0, 10, 10, parent, nullptr, nullptr,
                            nullptr);
  DestroyWindow(gone);
  boxes.push_back(gone);
  boxes.push_back(nullptr);

  const std::wstring longText(300000, 'b');
  for (HWND box : boxes) {
    wchar_t cls[64] = L"null";
    if (box) GetClassNameW(box, cls, 64);
    for (INT index : {INT_MIN, -2, -1, 0, 3, 4, 5, INT_MAX}) {
      SCOPED_TRACE(Narrow(cls) + " index " + std::to_string(index));
      ExpectHolds({
          {"Tavona_GetBoxEntry",
           [&](auto, auto out, INT n) { Tavona_GetBoxEntry(box, index, out, n); }},
          {"Tavona_ReadBox",
           [&](auto, auto out, INT n) { Tavona_ReadBox(box, ';', index & 0xFF, out, n); }},
          {"Tavona_FindBoxEntry",
           [&](auto in, auto, INT n) { Tavona_FindBoxEntry(box, in, index, n == 1 ? 8 : 0); }},
          {"item data, selection and moves",
           [&](auto, auto, INT n) {
             if (n != 1) return;
             Tavona_SetItemData(box, index, Tavona_GetItemData(box, index));
             Tavona_SetBoxIndex(box, index);
             Tavona_MoveBoxEntry(box, index, 1);
             Tavona_MoveBoxEntry(box, index, 2);
           }},
      }, {nullptr, L"beta", longText.c_str()}, 4096);
      if (HasFailure()) break;
    }
  }
  DestroyWindow(parent);
}

// Translation, recent files and copy lists: texts in, texts out.
TEST_F(Hostile, TranslationAndLists) {
  ExpectHolds({
      {"LTS_TranslateString",
       [](auto in, auto out, INT n) {
         Seed(out, n, in);
         LTS_TranslateString(L"TAVONADLL", L"S", out, n);
         Seed(out, n, L"((ID_X))Text");
         LTS_TranslateString(in, in, out, n);
       }},
      {"Tavona_GetRecentListFile",
       [](auto in, auto out, INT n) {
         for (INT index : {INT_MIN, -1, 0, 9, INT_MAX}) Tavona_GetRecentListFile(in, index, out, n);
       }},
      {"Tavona_GetCopyListItem",
       [](auto in, auto out, INT n) {
         for (INT index : {INT_MIN, -1, 0, 3, INT_MAX}) Tavona_GetCopyListItem(in, index, out, n);
       }},
      {"Tavona_GetStandardCopyList", [](auto, auto out, INT n) { Tavona_GetStandardCopyList(out, n); }},
      {"Tavona_GetPaperSizeTypeName",
       [](auto, auto out, INT n) {
         for (INT code : {INT_MIN, -1, 0, 9, 256, INT_MAX}) Tavona_GetPaperSizeTypeName(code, out, n);
       }},
      // No buffer: once per input. Nothing here creates a file.
      {"catalog and recent list writers",
       [](auto in, auto, INT n) {
         if (n != 1) return;
         Tavona_LtsLoadCatalog(in);
         Tavona_PushRecentListFile(nullptr, in);
         Tavona_PushRecentListFile(in, nullptr);
         Tavona_GetTotalCount(in);
       }},
  });
}

// Directories that do not exist, too long or null: the scans answer at once.
TEST_F(Hostile, Directories) {
  const std::wstring longPath(300000, 'd');
  ExpectHolds({
      {"Tavona_ScanFilesToBuffer",
       [](auto in, auto out, INT n) {
         Tavona_ScanFilesToBuffer(in, L"*.*", nullptr, ';', out, n);
         Tavona_ScanFilesToBuffer(L"C:\\no such folder", in, in, '\n', out, n);
       }},
      {"directory tests",
       [](auto in, auto, INT n) {
         if (n != 1) return;
         DIRSTATISTIC stat = {};
         Tavona_DirectoriesStatistic(in, &stat, TRUE);
         Tavona_DirectoriesStatistic(in, nullptr, TRUE);
         Tavona_IsDirectoryEmpty(in);
       }},
  }, {nullptr, L"C:\\no such folder\\x", longPath.c_str()}, 4096);
}

// Printer queries by names no printer has, and the printing defaults.
TEST_F(Hostile, Printers) {
  ExpectHolds({
      {"Tavona_GetPrinterByName",
       [](auto in, auto out, INT n) {
         WCHAR other[64];
         Tavona_GetPrinterByName(in, out, n, other, 64);
         Tavona_GetPrinterByName(in, other, 64, out, n);
       }},
      {"Tavona_GetPrinterDriver",
       [](auto in, auto out, INT n) { Tavona_GetPrinterDriver(in, nullptr, out, n); }},
      {"Tavona_GetStandardPrinter",
       [](auto, auto out, INT n) {
         WCHAR a[64], b[64];
         Tavona_GetStandardPrinter(out, n, a, 64, b, 64);
         Tavona_GetStandardPrinter(a, 64, out, n, b, 64);
         Tavona_GetStandardPrinter(a, 64, b, 64, out, n);
       }},
      {"Tavona_IsPrinterAvailable",
       [](auto in, auto, INT n) {
         if (n == 1) Tavona_IsPrinterAvailable(in);
       }},
  }, {nullptr, L"", L"No Such Printer"}, 4096);
}

// A list view and a button bar with some content, one destroyed and null.
TEST_F(Hostile, ListViewsAndBars) {
  INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&icc);
  HWND parent = CreateWindowW(L"STATIC", L"hostile", WS_OVERLAPPEDWINDOW, 0, 0, 300, 300,
                              nullptr, nullptr, nullptr, nullptr);
  HWND list = CreateWindowW(WC_LISTVIEWW, L"", WS_CHILD | LVS_REPORT, 0, 0, 200, 200, parent,
                            nullptr, nullptr, nullptr);
  Tavona_ListView_CreateColumns(list, 0, L"A|50|B|50");
  Tavona_ListView_LoadFromBuffer(list, L"a\tb\r\nc\td\r\n", 0, 0);
  HWND gone = CreateWindowW(WC_LISTVIEWW, L"", WS_CHILD | LVS_REPORT, 0, 0, 10, 10, parent,
                            nullptr, nullptr, nullptr);
  DestroyWindow(gone);
  HWND bar = WButtWind_CreateWindow(parent, parent, WM_USER);
  HWBUTTON button = WButtWind_CreateNewButton(bar, 0, L"K", L"Open", 1, 20, 40, 0, nullptr);
  for (HWND lv : {list, gone, static_cast<HWND>(nullptr)}) {
    ExpectHolds({
        {"Tavona_ListView_GetItemText",
         [&](auto, auto out, INT n) {
           for (INT i : {INT_MIN, -1, 0, 1, 2, INT_MAX}) Tavona_ListView_GetItemText(lv, i, i & 1, out, n);
         }},
        {"Tavona_ListView_SaveToBuffer",
         [&](auto, auto out, INT n) {
           Tavona_ListView_SaveToBuffer(lv, out, n, 0, -1, 0, -1, 0);
           Tavona_ListView_SaveToBuffer(lv, out, n, INT_MAX, INT_MIN, INT_MIN, INT_MAX, ~0u);
         }},
        {"Tavona_ListView_GetColumnWidths",
         [&](auto, auto out, INT n) {
           Tavona_ListView_GetColumnWidths(lv, 0, -1, out, n);
           Tavona_ListView_GetColumnWidths(lv, INT_MIN, INT_MAX, out, n);
         }},
        {"WButton_GetStringProperty",
         [&](auto in, auto out, INT n) {
           HWBUTTON b = lv == list ? button : nullptr;
           WButton_SetStringProperty(b, 5, in);
           for (INT id : {INT_MIN, 0, 5, INT_MAX}) WButton_GetStringProperty(b, id, out, n);
         }},
        {"list view texts in",
         [&](auto in, auto, INT n) {
           if (n != 1 || (in && wcslen(in) > 1000)) return;
           Tavona_ListView_SetItemText(lv, 0, 1, in);
           Tavona_ListView_CreateColumns(lv, 3, in);
           Tavona_ListView_FindText(lv, 0, in, 0);
         }},
    }, AllInputs(), 4096);
  }
  WButtWind_DestroyWindow(bar);
  DestroyWindow(parent);
}

}  // namespace
