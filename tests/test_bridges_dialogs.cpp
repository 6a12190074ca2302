// The open, save, delete and folder dialogs driven for real, with the
// stand-in picture library; the German run repeats those with resource texts.
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

const wchar_t kKey[] = L"Software\\Tavona Software\\FileDialogTest";
const wchar_t kSub[] = L"C:\\tvbr\\sub";
const wchar_t kIni[] = L"C:\\tvbr\\remember.ini";
constexpr int kFileType = 1136;
constexpr int kLookIn = 1137;

std::wstring Resource(UINT id) {
  wchar_t text[500] = L"";
  LoadStringW(Tavona_GetResourceModule(), id, text, 500);
  return text;
}

std::wstring ProfileText(const wchar_t *key) {
  wchar_t buf[600];
  GetPrivateProfileStringW(L"Files", key, L"<missing>", buf, 600, kIni);
  return buf;
}

// Types into the name field and presses OK, as a user would.
void Choose(tvui::Session &s, HWND dlg, const std::wstring &text) {
  s.Send(tvui::FileNameField(s, dlg), WM_SETTEXT, 0, LPARAM(text.c_str()));
  s.Click(dlg, IDOK);
}

// Runs call; in its dialog checks the preset name (when given), then
// types text and presses OK, or cancels when text is null.
template <class F>
int Answer(F call, std::wstring caption, const wchar_t *text, const wchar_t *preset = nullptr,
           const wchar_t *shot = nullptr) {
  return tvui::RunModal(call, [&](tvui::Session &s) {
    HWND dlg = s.WaitDialog(caption);
    if (preset) {
      EXPECT_EQ(s.Text(tvui::FileNameField(s, dlg)), preset);
    }
    if (shot) s.Screenshot(dlg, shot);
    if (!text) return s.Click(dlg, IDCANCEL);
    Choose(s, dlg, text);
    s.WaitClosed(dlg);
  });
}

// The file type list of the dialog, cancelled after an optional screenshot.
std::vector<std::wstring> FileTypes(TavonaFileNameRequest &request, const wchar_t *name,
                                    const std::wstring &caption, int *selected,
                                    const std::wstring &shot = L"") {
  wchar_t buf[520];
  lstrcpyW(buf, name);
  std::vector<std::wstring> shown;
  tvui::RunModal([&] { return Tavona_ExtendedFileNameDialog(buf, 520, &request); },
                 [&](tvui::Session &s) {
                   HWND dlg = s.WaitDialog(caption);
                   shown = s.Items(dlg, kFileType);
                   *selected = s.Selection(dlg, kFileType);
                   if (!shot.empty() && !shown.empty()) s.Screenshot(dlg, shot);
                   s.Click(dlg, IDCANCEL);
                 });
  return shown;
}

class FileDialogs : public ::testing::Test {
 protected:
  void SetUp() override {
    RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
    CreateDirectoryW(L"C:\\tvbr", nullptr);
    CreateDirectoryW(kSub, nullptr);
    for (const wchar_t *name : {L"\\a.txt", L"\\b.txt", L"\\c.txt"})
      CloseHandle(CreateFileW((std::wstring(kSub) + name).c_str(), GENERIC_WRITE, 0, nullptr,
                              CREATE_ALWAYS, 0, nullptr));
    DeleteFileW(kIni);
    Tavona_SetErrorHandlerCallback(CaptureReports);
    g_capturedReports.clear();
  }
  void TearDown() override {
    Tavona_SetErrorHandlerCallback(nullptr);
    RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
  }
  TavonaFileNameRequest Request(const wchar_t *title, DWORD flags) {
    TavonaFileNameRequest r = {};
    r.filter = L"Text (*.txt)|*.txt|All (*.*)|*.*|", r.title = title, r.key = kKey;
    r.section = L"Files", r.value = L"Last", r.flags = flags;
    return r;
  }
};

// The visible separator becomes the list of pairs; the filter of the
// name's extension is preselected. Title and filter may come from string
// resources of a module.
TEST_F(FileDialogs, FiltersAndPreselection) {
  int selected = -1;
  TavonaFileNameRequest request = Request(L"Filters", TAVONA_FND_NOPRESET | TAVONA_FND_NOSTORE);
  request.filter = L"A;*.a;D;*.dat;";
  EXPECT_EQ(FileTypes(request, L"x.dat", L"Filters", &selected), (std::vector<std::wstring>{L"A", L"D"}));
  EXPECT_EQ(selected, 1);
  request = Request(nullptr, TAVONA_FND_NOPRESET);
  request.filter = L"";
  request.module = Tavona_GetResourceModule();
  request.filterId = IDS_FILTER_VIEWER;
  request.titleId = IDS_TITLE_VIEWER;
  EXPECT_EQ(FileTypes(request, L"x.EXE", Resource(IDS_TITLE_VIEWER), &selected,
                      Shot(L"bridges_open_resource_texts")).size(), 2u);
  EXPECT_EQ(selected, 0);
}

// Change folder, choose, and find the name remembered; the next call
// presets it; flag 4 keeps the stored name.
TEST_F(FileDialogs, RememberedNameInRegistry) {
  auto stored = [] {
    wchar_t buf[600];
    Tavona_ReadStringFromHKCU(kKey, L"Files", L"Last", L"<missing>", buf, 600);
    return std::wstring(buf);
  };
  wchar_t name[520] = L"";
  TavonaFileNameRequest request = Request(L"Remember", 0);
  auto call = [&] { return Tavona_ExtendedFileNameDialog(name, 520, &request); };
  EXPECT_EQ(tvui::RunModal(call, [](tvui::Session &s) {
              HWND dlg = s.WaitDialog(L"Remember");
              // A folder typed and OK: the dialog stays and shows that folder.
              Choose(s, dlg, kSub);
              for (int i = 0; i < 50 && s.Text(dlg, kLookIn) != L"sub"; ++i) Sleep(100);
              EXPECT_EQ(s.Text(dlg, kLookIn), L"sub");
              s.Screenshot(dlg, L"bridges_open_dialog");
              Choose(s, dlg, L"b.txt");
            }), 1);
  EXPECT_STREQ(name, L"C:\\tvbr\\sub\\b.txt");
  EXPECT_EQ(stored(), name);
  lstrcpyW(name, L"C:\\elsewhere\\zzz.txt");
  request.flags = TAVONA_FND_NOSTORE;
  EXPECT_EQ(Answer(call, L"Remember", L"c.txt", L"b.txt"), 1);
  EXPECT_STREQ(name, L"C:\\tvbr\\sub\\c.txt");
  EXPECT_EQ(stored(), L"C:\\tvbr\\sub\\b.txt") << "flag 4 stores nothing";
}

// The chosen name comes back as size BYTES: a 100-character buffer takes
// names of up to 49 characters whole; longer ones (here 60) arrive cut at
// 50 with no terminator, the rest of the buffer as it was.
TEST_F(FileDialogs, HalvedCopies) {
  for (bool extended : {false, true}) {
    std::wstring chosen = std::wstring(kSub) + L"\\" + std::wstring(60 - lstrlenW(kSub) - 5, L'n') + L".txt";
    wchar_t name[100];
    std::fill_n(name, 100, L'#');
    name[0] = 0;
    TavonaFileNameRequest request = Request(L"Halved", TAVONA_FND_SAVE | TAVONA_FND_NOSTORE);
    int rc = Answer([&] {
          return extended ? Tavona_ExtendedFileNameDialog(name, 100, &request)
                          : Tavona_SaveFileNameDialog(name, 100, nullptr, 0, 0, kIni, L"Files",
                                                      L"Halved", L"Text|*.txt|", 0);
        }, extended ? L"Halved" : L"Save As", chosen.c_str());
    EXPECT_EQ(rc, 1);
    // The first 50 characters land; the extended dialog zeroes the last two.
    std::wstring expected = chosen.substr(0, 50) + std::wstring(50, L'#');
    if (extended) expected.replace(98, 2, 2, L'\0');
    EXPECT_EQ(std::wstring(name, 100), expected) << (extended ? "extended" : "save");
    // The profile gets what the buffer holds, up to its end at most.
    if (!extended) { EXPECT_EQ(ProfileText(L"Halved"), expected.substr(0, 99)); }
  }
}

// Several names: "dir\name" entries, each part copied with a byte count of
// its length in characters, so only its first half lands and the rest of the
// slot keeps what the buffer held.
TEST_F(FileDialogs, SeveralFiles) {
  wchar_t name[100];
  std::fill_n(name, 100, L'#');
  lstrcpyW(name, L"C:\\tvbr\\sub\\");
  TavonaFileNameRequest request =
      Request(L"Several", TAVONA_FND_MULTISELECT | TAVONA_FND_NOPRESET | TAVONA_FND_NOSTORE);
  auto call = [&] { return Tavona_ExtendedFileNameDialog(name, 100, &request); };
  EXPECT_EQ(Answer(call, L"Several", L"\"a.txt\" \"b.txt\""), 1);
  // Slot 1 lies over the initial "C:\tvbr\sub\" and its zero.
  std::wstring expected = std::wstring(L"C:\\tvbr\\sub\\a.t##") + L'\0' + L"C:\\tvb#####\\b.t##" +
                          L'\0' + L'\0' + L'#';
  EXPECT_EQ(std::wstring(name, expected.size()), expected) << Narrow(std::wstring(name, 40));
}

// Deleting asks for each chosen file (whole names) and deletes on yes.
TEST_F(FileDialogs, DeleteFiles) {
  g_reportAnswers = {IDYES, IDNO};
  EXPECT_EQ(Answer([&] { return Tavona_DeleteFilesDialog(kSub, L"Text|*.txt|"); },
                   Resource(IDS_TITLE_DELETE_FILES), L"\"a.txt\" \"b.txt\"", nullptr,
                   Shot(L"bridges_delete_files").c_str()), 1);
  ASSERT_EQ(g_capturedReports.size(), 2u);
  EXPECT_NE(g_capturedReports[0].find(L"C:\\tvbr\\sub\\a.txt"), std::wstring::npos)
      << Narrow(g_capturedReports[0]);
  EXPECT_NE(g_capturedReports[1].find(L"C:\\tvbr\\sub\\b.txt"), std::wstring::npos);
  EXPECT_EQ(GetFileAttributesW(L"C:\\tvbr\\sub\\a.txt"), INVALID_FILE_ATTRIBUTES);
  EXPECT_NE(GetFileAttributesW(L"C:\\tvbr\\sub\\b.txt"), INVALID_FILE_ATTRIBUTES);
}

// Picture filters: the library missing (reported once), then both list kinds.
TEST_F(FileDialogs, PictureFilters) {
  int selected = -1;
  auto types = [&](DWORD flags, const wchar_t *file) {
    auto request = Request(L"Pictures", flags | TAVONA_FND_PICTURES | TAVONA_FND_NOPRESET);
    return FileTypes(request, file, L"Pictures", &selected, Shot(L"bridges_picture_filter"));
  };
  EXPECT_TRUE(types(0, L"x.png").empty());
  ASSERT_EQ(g_capturedReports.size(), 1u);
  EXPECT_NE(g_capturedReports[0].find(L"kv32.dll"), std::wstring::npos);
  DLL_DIRECTORY_COOKIE cookie = AddDllDirectory((BinDir() + L"kv32_full").c_str());
  auto d = [](UINT id, const wchar_t *ext) { return Resource(id) + L"  (*." + ext + L")"; };
  EXPECT_EQ(types(TAVONA_FND_PICTURE_KIND1, L"C:\\x.PNG"),
            (std::vector<std::wstring>{d(1809, L"bmp"), d(1812, L"png"), d(1813, L"jpg"),
                                       d(1810, L"wmf"), d(1811, L"emf")}));
  EXPECT_EQ(selected, 1);
  EXPECT_EQ(types(0, L""), (std::vector<std::wstring>{d(1813, L"gif"), d(1813, L"tif")}));
  EXPECT_EQ(selected, 0);
  RemoveDllDirectory(cookie);
  EXPECT_EQ(g_capturedReports.size(), 1u);
}

// The initial folder is selected and, with flag 2, shown in the edit box.
TEST_F(FileDialogs, FolderBrowser) {
  wchar_t path[MAX_PATH];
  lstrcpyW(path, kSub);
  auto call = [&] { return Tavona_DirectoryDialog(path, MAX_PATH, L"Pick", TAVONA_DIR_NEWSTYLE | TAVONA_DIR_EDITBOX); };
  EXPECT_EQ(tvui::RunModal(call, [&](tvui::Session &s) {
              HWND dlg = s.WaitAnyDialog();
              std::wstring edit = L"<no edit box>";
              for (HWND c : s.Children(dlg)) {
                wchar_t cls[8];
                GetClassNameW(c, cls, 8);
                if (lstrcmpiW(cls, L"Edit") == 0) edit = s.Text(c);
              }
              EXPECT_EQ(edit, L"sub");
              s.Screenshot(dlg, L"bridges_folder_dialog");
              s.Click(dlg, IDOK);
            }), 1);
  EXPECT_STREQ(path, kSub);
}

TEST(FileDialogsGerman, ResourceTextsInGerman) {
  if (GermanRun()) GTEST_SKIP() << "already the German run";
  EXPECT_EQ(RunInGerman(L"FileDialogs.DeleteFiles:FileDialogs.PictureFilters:"
                        L"FileDialogs.FiltersAndPreselection"), 0u);
}

}  // namespace
