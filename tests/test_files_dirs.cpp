// Directory copy, statistics, chains, scans and delete on real trees, with
// the in-use question and the statistics dialog driven.
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "testutil.h"
#include "tvres.h"
#include "uidriver.h"

namespace {

namespace fs = std::filesystem;

bool Exists(const WStr &p) { return GetFileAttributesW(p.c_str()) != INVALID_FILE_ATTRIBUTES; }

// size bytes, last written in June of year (0: now).
void Write(const WStr &path, DWORD size, WORD year = 0) {
  std::ofstream(fs::path(path), std::ios::binary) << std::string(size, 'x');
  ASSERT_TRUE(Exists(path)) << Narrow(path);
  if (!year) return;
  SYSTEMTIME st = {year, 6, 0, 1, 12, 0, 0, 0};
  FILETIME ft;
  SystemTimeToFileTime(&st, &ft);
  HANDLE h = CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ, nullptr,
                         OPEN_EXISTING, 0, nullptr);
  SetFileTime(h, nullptr, nullptr, &ft);
  CloseHandle(h);
}

// Relative paths of every file below dir, dot-names and system folders included.
std::set<WStr> FilesBelow(const WStr &dir) {
  std::set<WStr> out;
  std::error_code ec;
  for (const auto &e : fs::recursive_directory_iterator(dir, ec))
    if (!e.is_directory()) out.insert(e.path().wstring().substr(dir.size() + 1));
  return out;
}

// The counters in field order, for comparing runs.
std::vector<INT> Counters(const COPYDIRCTL &c) {
  return {c.kilobytesCopied,      c.bytesCopied,          c.filesFound,
          c.filesCopied,          c.filesNotIncluded,     c.filesExcluded,
          c.filesSkippedExisting, c.filesSkippedNotOlder, c.filesSkippedBeforeDate,
          c.filesSkippedFromDate, c.directoriesProcessed, c.directoriesCreated,
          c.directoriesExisting};
}
std::vector<INT> Counters(const DELETEDIRCTL &c) {
  return {c.kilobytesDeleted,     c.bytesDeleted,           c.filesFound,
          c.filesDeleted,         c.filesNotIncluded,       c.filesExcluded,
          c.filesSkippedReadOnly, c.filesSkippedBeforeDate, c.filesSkippedFromDate,
          c.directoriesProcessed, c.directoriesRemoved};
}

struct Event { INT code; WStr source, destination; };
std::vector<Event> g_events;
INT g_abortAt = 0;  // abort at the n-th callback (1-based); 0: never
INT WINAPI Recorder(const WCHAR *s, const WCHAR *d, INT event, COPYDIRCTL *, INT_PTR value) {
  EXPECT_EQ(value, INT_PTR(-7));
  g_events.push_back({event, s ? s : L"(null)", d ? d : L"(null)"});
  return INT(g_events.size()) == g_abortAt ? 2 : 1;
}

// Exactly one report so far, and it contains fragment (null: no report).
::testing::AssertionResult ReportedWith(const wchar_t *fragment) {
  auto &r = g_capturedReports;
  if (!fragment ? r.empty() : r.size() == 1 && r[0].find(fragment) != WStr::npos)
    return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << r.size() << " reports (" << (r.empty() ? "" : Narrow(r[0]))
                                       << "), expected one with " << Narrow(fragment);
}

class Dirs : public ::testing::Test {
 protected:
  void SetUp() override {
    root_ = (fs::temp_directory_path() / L"tavona_dirs_").wstring() +
            std::to_wstring(GetCurrentProcessId());
    RemoveTree(root_);
    CreateDirectoryW(root_.c_str(), nullptr);
    src_ = root_ + L"\\src", dst_ = root_ + L"\\dst";
    g_capturedReports.clear(), g_reportAnswers.clear(), g_events.clear();
    g_abortAt = 0;
    Tavona_SetErrorHandlerCallback(CaptureReports);
  }
  void TearDown() override {
    Tavona_SetErrorHandlerCallback(nullptr);
    Tavona_SetErrorHandlingMode(0);
    RemoveTree(root_);
  }

  // Six files copied (7610 bytes; a.txt of 2020, ro.txt read-only); .profile,
  // .cache\e.txt and sys\f.txt (a system directory) never are.
  void MakeTree() {
    for (const wchar_t *d : {L"", L"\\sub", L"\\sub\\deep", L"\\.cache", L"\\sys"})
      CreateDirectoryW((src_ + d).c_str(), nullptr);
    SetFileAttributesW((src_ + L"\\sys").c_str(), FILE_ATTRIBUTE_SYSTEM);
    struct { const wchar_t *name; DWORD size; } files[] = {
        {L"b.doc", 2000},    {L"readme", 10},        {L"ro.txt", 100},      {L"sub\\c.txt", 1500},
        {L".profile", 5},    {L".cache\\e.txt", 7},  {L"sys\\f.txt", 9},    {L"sub\\deep\\d.txt", 3000}};
    for (auto &f : files) Write(src_ + L"\\" + f.name, f.size, 2024);
    Write(src_ + L"\\a.txt", 1000, 2020);
    SetFileAttributesW((src_ + L"\\ro.txt").c_str(), FILE_ATTRIBUTE_READONLY);
  }

  INT Copy(COPYDIRCTL &c, UINT flags, const WCHAR *include = nullptr, const WCHAR *exclude = nullptr) {
    c.include = include, c.exclude = exclude, c.flags = flags;
    return Tavona_CopyDirectories(src_.c_str(), dst_.c_str(), &c, Recorder, -7);
  }

  WStr root_, src_, dst_;
};

TEST_F(Dirs, CopyTreeCountersEventsAndSkippedNames) {
  MakeTree();
  COPYDIRCTL c;
  std::fill_n(reinterpret_cast<char *>(&c), sizeof c, 0x55);  // every counter reset
  c.referenceDate = nullptr;
  const WCHAR kept = c.text[99];
  ASSERT_EQ(Copy(c, TAVONA_COPY_RECURSE), 1);
  EXPECT_EQ(FilesBelow(dst_), (std::set<WStr>{L"a.txt", L"b.doc", L"readme", L"ro.txt",
                                              L"sub\\c.txt", L"sub\\deep\\d.txt"}));
  EXPECT_EQ(Counters(c), (std::vector<INT>{7, 442, 6, 6, 0, 0, 0, 0, 0, 0, 3, 3, 0}));
  EXPECT_EQ(c.text[99], kept);
  EXPECT_TRUE(g_capturedReports.empty());

  // 5 first and 6 last.
  ASSERT_GE(g_events.size(), 2u);
  EXPECT_EQ(std::make_pair(g_events[0].code, g_events[0].source), std::make_pair(5, src_));
  EXPECT_EQ(std::make_pair(g_events.back().code, g_events.back().destination), std::make_pair(6, dst_));

  // An abort at any callback returns 2 at once: no later event, no 6.
  for (INT at = 1, total = INT(g_events.size()); at <= total; at += 3) {
    RemoveTree(dst_);
    g_events.clear();
    g_abortAt = at;
    EXPECT_EQ(Copy(c, TAVONA_COPY_RECURSE), 2) << "abort at " << at;
    EXPECT_EQ(g_events.size(), size_t(at)) << "abort at " << at;
  }
}

TEST_F(Dirs, FiltersAndOverwriteRulesAgainstTheirCounters) {
  MakeTree();
  DateTimeStruct ref = {1, 1, 2022, 0, 0, 0};
  // again: run into the destination of a first full copy.
  struct Row { const char *what; UINT flags; const WCHAR *include, *exclude; bool again;
               std::vector<INT> counters; size_t filesThere; } rows[] = {
      {"include *.TXT", 1, L"*.TXT", nullptr, false, {5, 480, 6, 4, 2, 0, 0, 0, 0, 0, 3, 3, 0}, 4},
      {"exclude", 1, L"*.*", L"ro.*\t*.doc", false, {5, 390, 6, 4, 0, 2, 0, 0, 0, 0, 3, 3, 0}, 4},
      {"no recursion", 0, nullptr, nullptr, false, {3, 38, 4, 4, 0, 0, 0, 0, 0, 0, 1, 1, 0}, 4},
      {"from date", 0x101, nullptr, nullptr, false, {6, 466, 6, 5, 0, 0, 0, 0, 1, 0, 3, 3, 0}, 5},
      {"before date", 0x201, nullptr, nullptr, false, {0, 1000, 6, 1, 0, 0, 0, 0, 0, 5, 3, 3, 0}, 1},
      {"no overwrite", 5, nullptr, nullptr, true, {0, 0, 6, 0, 0, 0, 6, 0, 0, 0, 3, 0, 3}, 6},
      {"newer only", 3, nullptr, nullptr, true, {0, 0, 6, 0, 0, 0, 0, 6, 0, 0, 3, 0, 3}, 6},
  };
  for (const Row &r : rows) {
    RemoveTree(dst_);
    COPYDIRCTL c = {};
    ASSERT_TRUE(!r.again || Copy(c, TAVONA_COPY_RECURSE) == 1) << r.what;
    c.referenceDate = &ref;
    // The dry run counts what the real run then does, counter by counter.
    ASSERT_EQ(Copy(c, r.flags | TAVONA_COPY_DRY_RUN, r.include, r.exclude), 1) << r.what;
    EXPECT_EQ(Counters(c), r.counters) << r.what << " (dry run)";
    EXPECT_EQ(Exists(dst_), r.again) << r.what << ": the dry run created the destination";
    ASSERT_EQ(Copy(c, r.flags, r.include, r.exclude), 1) << r.what;
    EXPECT_EQ(Counters(c), r.counters) << r.what;
    EXPECT_EQ(FilesBelow(dst_).size(), r.filesThere) << r.what;
    EXPECT_TRUE(ReportedWith(nullptr)) << r.what;
  }
  // A source written after the copy is copied again under NEWER_ONLY.
  Write(src_ + L"\\b.doc", 2000, 2030);
  COPYDIRCTL c = {};
  ASSERT_EQ(Copy(c, TAVONA_COPY_RECURSE | TAVONA_COPY_NEWER_ONLY), 1);
  EXPECT_EQ(std::make_pair(c.filesCopied, c.filesSkippedNotOlder), std::make_pair(1, 5));
}

TEST_F(Dirs, FailuresAreReportedAndStopTheCopy) {
  MakeTree();
  COPYDIRCTL c = {};
  // A directory where a file should go (1328; below a file, 1329: DirectoryChains).
  CreateDirectoryW(dst_.c_str(), nullptr);
  CreateDirectoryW((dst_ + L"\\readme").c_str(), nullptr);
  EXPECT_EQ(Copy(c, 0), 2);
  EXPECT_TRUE(ReportedWith(L"a folder of that name exists"));
  // A source that does not exist copies nothing and succeeds.
  g_capturedReports.clear();
  RemoveTree(dst_);
  EXPECT_EQ(Tavona_CopyDirectories((root_ + L"\\none").c_str(), dst_.c_str(), &c, nullptr, 0), 1);
  EXPECT_EQ(c.filesFound, 0);
  EXPECT_TRUE(g_capturedReports.empty());
}

// A source held open without sharing asks with 1354 through a real message
// box; retry copies it once it is free. With no person to answer (silent
// mode) a bounded number of retries, then the copy fails instead of looping.
TEST_F(Dirs, FileInUseAnsweredThroughTheBox) {
  MakeTree();
  Tavona_SetErrorHandlerCallback(nullptr);
  const WStr held = src_ + L"\\b.doc";
  HANDLE h = CreateFileW(held.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(h, INVALID_HANDLE_VALUE);
  COPYDIRCTL c = {};
  Tavona_SetErrorHandlingMode(1);
  EXPECT_EQ(Copy(c, TAVONA_COPY_RECURSE), 2);
  Tavona_SetErrorHandlingMode(0);
  RemoveTree(dst_);
  INT rc = tvui::RunModal([&] { return Copy(c, TAVONA_COPY_RECURSE); }, [&](tvui::Session &s) {
    tvui::Box box = s.WaitMessageBox();
    EXPECT_NE(box.text.find(held), WStr::npos) << Narrow(box.text);
    s.Screenshot(box.hwnd, L"dirs_in_use");
    CloseHandle(h);
    s.Answer(box, IDRETRY);
  });
  EXPECT_EQ(rc, 1);
  EXPECT_EQ(c.filesCopied, 6);
  EXPECT_TRUE(Exists(dst_ + L"\\b.doc"));
}

TEST_F(Dirs, DirectoryChains) {
  Write(root_ + L"\\file", 1);
  // reported: fragment of the message, null: none.
  struct Row { WStr path; INT result; const wchar_t *reported; WStr mustExist; } rows[] = {
      {root_ + L"\\a\\b\\c", 0, nullptr, root_ + L"\\a\\b\\c"},
      {root_ + L"\\x\\\\y\\", 0, nullptr, root_ + L"\\x\\y"}, {L"  ", 0, nullptr, L""},
      {root_ + L"\\file\\sub", -1, L"is not a folder", L""},
      {root_ + L"\\" + WStr(1100, L'n'), -1, L"The folder", L""},  // the long name cuts the message
  };
  for (const Row &r : rows) {
    g_capturedReports.clear();
    EXPECT_EQ(Tavona_CreateDirectoryChain(r.path.c_str()), r.result) << Narrow(r.path);
    EXPECT_TRUE(ReportedWith(r.reported)) << Narrow(r.path);
    EXPECT_TRUE(r.mustExist.empty() || Exists(r.mustExist)) << Narrow(r.mustExist);
  }
}

TEST_F(Dirs, StatisticsEmptinessAndScans) {
  MakeTree();
  DIRSTATISTIC s = {1, 1, 1, 1};
  // The statistics walk system directories too (sys\f.txt, 9 bytes).
  EXPECT_EQ(Tavona_DirectoriesStatistic(src_.c_str(), &s, TRUE), 1);
  EXPECT_EQ(std::vector<INT>({s.kilobytes, s.bytes, s.files, s.reserved}),
            std::vector<INT>({7, 451, 7, 0}));
  CreateDirectoryW((root_ + L"\\only").c_str(), nullptr);
  CreateDirectoryW((root_ + L"\\only\\sub").c_str(), nullptr);
  Write(root_ + L"\\only\\.profile", 1);
  Write(root_ + L"\\only\\sub\\x", 1);
  EXPECT_TRUE(Tavona_IsDirectoryEmpty((root_ + L"\\only").c_str()));
  EXPECT_FALSE(Tavona_IsDirectoryEmpty((root_ + L"\\only\n" + src_).c_str()));

  // Two names of six characters: three of each arrive, the rest of their
  // places keep the fill, one separator between them.
  WStr two = root_ + L"\\two";
  CreateDirectoryW(two.c_str(), nullptr);
  for (const wchar_t *name : {L"\\ab.txt", L"\\cd.txt", L"\\seven"}) Write(two + name, 1);
  wchar_t buf[20];
  std::fill_n(buf, 20, L'#');
  EXPECT_EQ(Tavona_ScanFilesToBuffer(two.c_str(), L"*.txt", nullptr, L';', buf, 18), 2);
  WStr got(buf, 14);
  EXPECT_TRUE(got == WStr(L"ab.###;cd.###") + L'\0' || got == WStr(L"cd.###;ab.###") + L'\0')
      << Narrow(got);
  EXPECT_EQ(WStr(buf + 14, 6), L"######");
  // An odd length copies half a character: the low byte of the third.
  std::fill_n(buf, 20, wchar_t(0x2323));
  EXPECT_EQ(Tavona_ScanFilesToBuffer(two.c_str(), L"seven", nullptr, L';', buf, 20), 1);
  EXPECT_EQ(WStr(buf, 6), (WStr{L's', L'e', wchar_t(0x2376), 0x2323, 0x2323, 0}));
  // Counted though they do not fit.
  EXPECT_EQ(Tavona_ScanFilesToBuffer(two.c_str(), nullptr, nullptr, L';', buf, 8), 3);
  EXPECT_EQ(Tavona_ScanFilesToBuffer(two.c_str(), nullptr, nullptr, 0, buf, 20), 0);
  EXPECT_EQ(buf[0], 0);
}

TEST_F(Dirs, DeleteMirrorsTheCopy) {
  MakeTree();
  DateTimeStruct ref = {1, 1, 2022, 0, 0, 0};
  // Everything but *.doc, read-only files kept, empty directories removed.
  DELETEDIRCTL c = {};
  c.exclude = L"*.doc";
  c.referenceDate = &ref;
  c.flags = TAVONA_COPY_RECURSE | TAVONA_DELETE_KEEP_READONLY | TAVONA_DELETE_EMPTY_DIRS;
  ASSERT_EQ(Tavona_ScanDirectory(src_.c_str(), &c, nullptr, 0), 1);
  EXPECT_EQ(Counters(c), (std::vector<INT>{5, 390, 6, 4, 0, 1, 1, 0, 0, 3, 0}));
  ASSERT_EQ(Tavona_DeleteFiles(src_.c_str(), &c, nullptr, 0), 1);
  EXPECT_EQ(Counters(c), (std::vector<INT>{5, 390, 6, 4, 0, 1, 1, 0, 0, 3, 2}));
  EXPECT_EQ(FilesBelow(src_),
            (std::set<WStr>{L"b.doc", L"ro.txt", L".profile", L".cache\\e.txt", L"sys\\f.txt"}));
  EXPECT_FALSE(Exists(src_ + L"\\sub"));

  // A read-only file goes without the keep flag.
  DELETEDIRCTL d = {};
  EXPECT_EQ(Tavona_DeleteFiles(src_.c_str(), &d, nullptr, 0), 1);
  EXPECT_EQ(d.filesDeleted, 2);  // b.doc, ro.txt
  EXPECT_FALSE(Exists(src_ + L"\\ro.txt"));
}

// Kilobytes rounded up, counters shown as they are.
TEST_F(Dirs, StatisticDialog) {
  Tavona_SetErrorHandlerCallback(nullptr);
  COPYDIRCTL c = {};
  c.kilobytesCopied = 7, c.bytesCopied = 442, c.filesCopied = 6, c.filesSkippedFromDate = -8;
  const std::pair<int, const wchar_t *> rows[] = {
      {IDC_STAT_KILOBYTES, L"8"}, {IDC_STAT_FILES_COPIED, L"6"}, {IDC_STAT_FROM_DATE, L"-8"}};
  auto show = [&] { return Tavona_DisplayCopyStatistic(&c, nullptr); };
  EXPECT_EQ(tvui::RunModal(show, [&](tvui::Session &s) {
              HWND d = s.WaitDialog(Pick(L"Copy Statistics", L"Kopierstatistik"));
              for (auto &r : rows) EXPECT_EQ(s.Text(d, r.first), r.second) << r.first;
              s.Screenshot(d, Shot(L"dirs_statistic"));
              s.Click(d, IDOK);
            }), 1);
}

TEST(DirsGerman, StatisticDialogInGerman) {
  if (GermanRun()) GTEST_SKIP() << "already the German run";
  EXPECT_EQ(RunInGerman(L"Dirs.StatisticDialog"), 0u);
}

// The progress copy of 400 files, cancelled by the user once some have
// arrived: the copy stops, what arrived stays, the indicator goes.
TEST_F(Dirs, ProgressCopyCancelledHalfWay) {
  Tavona_SetErrorHandlerCallback(nullptr);
  for (int d = 0; d < 4; ++d) {
    WStr dir = src_ + L"\\d" + std::to_wstring(d);
    fs::create_directories(fs::path(dir));
    for (int f = 0; f < 100; ++f) Write(dir + L"\\f" + std::to_wstring(f) + L".bin", 4096);
  }
  HWND owner = CreateWindowW(L"STATIC", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                             nullptr, nullptr, nullptr, nullptr);
  SetActiveWindow(owner);
  COPYDIRCTL c = {};
  c.flags = TAVONA_COPY_RECURSE;
  HWND indicator = nullptr;
  auto copy = [&] {
    return Tavona_CopyDirectoriesWithProgInd(src_.c_str(), dst_.c_str(), &c, L"Backup", RGB(0, 128, 0));
  };
  INT rc = tvui::RunModal(copy, [&](tvui::Session &s) {
    indicator = s.WaitAnyDialog();  // created under the template's caption, then given the title
    for (int i = 0; i < 200 && s.Text(indicator) != L"Backup"; ++i) Sleep(10);
    EXPECT_EQ(s.Text(indicator), L"Backup");
    for (int i = 0; i < 1000 && FilesBelow(dst_).size() < 20; ++i) Sleep(5);
    s.Click(indicator, IDCANCEL);
    tvui::Box box = s.WaitMessageBox();
    // Paused in the question, the indicator still shows its first line.
    WStr text = s.Text(indicator, IDC_PROGRESS_TEXT);
    EXPECT_EQ(text.rfind(Pick(L"Copying folders", L"Ordner werden kopiert"), 0), 0u) << Narrow(text);
    s.Screenshot(indicator, L"dirs_progress");
    s.Answer(box, IDYES);
  }, tvui::Ms(20000));
  EXPECT_EQ(rc, 2);
  EXPECT_TRUE(c.filesCopied > 0 && c.filesCopied < 400) << c.filesCopied;
  EXPECT_EQ(FilesBelow(dst_).size(), size_t(c.filesCopied));
  EXPECT_FALSE(IsWindow(indicator));
  EXPECT_TRUE(IsWindowEnabled(owner));
  DestroyWindow(owner);
}

}  // namespace
