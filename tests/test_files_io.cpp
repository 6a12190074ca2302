// Whole-file sizes, loads and saves against real files, and the errors they
// report (the boxes they show: test_files_ui).
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "testutil.h"

namespace {

class FilesIo : public ::testing::Test {
 protected:
  void SetUp() override {
    CreateDirectoryW(dir_.c_str(), nullptr);
    g_capturedReports.clear();
    Tavona_SetErrorHandlerCallback(CaptureReports);
  }
  void TearDown() override {
    Tavona_SetErrorHandlerCallback(nullptr);
    RemoveTree(dir_);
  }
  std::wstring Path(const wchar_t *name) { return dir_ + L"\\" + name; }
  std::wstring Make(const wchar_t *name, const std::string &content) {
    std::ofstream(std::filesystem::path(Path(name)), std::ios::binary) << content;
    return Path(name);
  }
  static std::string Read(const std::wstring &p) {
    std::ifstream in(std::filesystem::path(p), std::ios::binary);
    return in ? std::string(std::istreambuf_iterator<char>(in), {}) : "<missing>";
  }
  // One report naming the file, or none.
  static void ExpectReports(const std::wstring &name, bool one, const std::string &row) {
    ASSERT_EQ(g_capturedReports.size(), one ? 1u : 0u) << row;
    EXPECT_TRUE(!one || g_capturedReports[0].find(name) != std::wstring::npos)
        << row << ": " << Narrow(g_capturedReports[0]);
    g_capturedReports.clear();
  }

  const std::wstring dir_ = (std::filesystem::temp_directory_path() / L"tavona_files_io").wstring();
};

TEST_F(FilesIo, Sizes) {
  EXPECT_EQ(Tavona_GetFileSize(Make(L"empty.bin", "").c_str()), 0u);
  EXPECT_EQ(Tavona_GetFileSize(Make(L"ten.bin", "0123456789").c_str()), 10u);
  EXPECT_EQ(Tavona_GetFileSize(Path(L"missing.bin").c_str()), 0u);
  EXPECT_TRUE(g_capturedReports.empty()) << "sizes report nothing";
  // 4 GiB + 10 bytes, sparse: the 32-bit size and the buffer load see only
  // the low half.
  std::wstring big = Path(L"big.bin");
  HANDLE h = CreateFileW(big.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  ASSERT_NE(h, INVALID_HANDLE_VALUE);
  LARGE_INTEGER end;
  end.QuadPart = (1LL << 32) + 10;
  bool sized = SetFilePointerEx(h, end, nullptr, FILE_BEGIN) && SetEndOfFile(h);
  CloseHandle(h);
  if (!sized) GTEST_SKIP() << "no room for a sparse 4 GiB file";
  EXPECT_EQ(Tavona_GetFileSize64(big.c_str()), (1ULL << 32) + 10);
  EXPECT_EQ(Tavona_GetFileSize(big.c_str()), 10u);
  char buf[20];
  EXPECT_EQ(Tavona_LoadFileToBuffer(big.c_str(), buf, 20, 0), 10);
  EXPECT_EQ(buf[10], 0);
}

TEST_F(FilesIo, LoadIntoBuffer) {
  std::wstring empty = Make(L"empty.bin", ""), ten = Make(L"ten.bin", "0123456789");
  std::wstring missing = Path(L"missing.bin");
  const std::string zero(1, '\0');
  struct Row {
    const char *what;
    const std::wstring *name;  // null: pass a null name
    int size;
    bool nullBuffer;
    UINT quiet;
    int rc;
    std::string expect;  // the whole buffer afterwards ('#' = untouched)
    bool reported;
  } rows[] = {
      {"empty file", &empty, 10, false, 0, 0, zero + "#########", false},
      {"fills exactly", &ten, 10, false, 0, 10, "0123456789", false},
      {"one byte more", &ten, 11, false, 0, 10, "0123456789" + zero, false},
      {"buffer shorter", &ten, 5, false, 0, 5, "01234", false},
      {"size 1", &ten, 1, false, 0, -1, "#", false},
      {"null buffer", &ten, 10, true, 0, -1, "##########", false},
      {"missing", &missing, 4, false, 0, -1, zero + "###", true},
      {"missing, quiet", &missing, 4, false, 1, -1, zero + "###", false},
      {"missing, other bits", &missing, 4, false, 2, -1, zero + "###", true},
  };
  for (const Row &r : rows) {
    std::vector<char> buf(r.size + 4, '#');
    int rc = Tavona_LoadFileToBuffer(r.name ? r.name->c_str() : nullptr,
                                     r.nullBuffer ? nullptr : buf.data(), r.size, r.quiet);
    EXPECT_EQ(rc, r.rc) << r.what;
    EXPECT_EQ(std::string(buf.begin(), buf.end()), r.expect + "####") << r.what;
    ExpectReports(r.name ? *r.name : L"", r.reported, r.what);
  }
}

TEST_F(FilesIo, LoadIntoMemoryAndSaveBack) {
  std::wstring five = Make(L"five.bin", "abcde"), back = Path(L"back.bin");
  HGLOBAL h = Tavona_LoadFileToMemory(five.c_str(), 0);
  ASSERT_NE(h, nullptr);
  ASSERT_GE(GlobalSize(h), 6u);
  EXPECT_EQ(std::string(static_cast<const char *>(GlobalLock(h)), 6), std::string("abcde") + '\0');
  GlobalUnlock(h);
  // Written back with the block's size: the terminator (and any rounding) too.
  EXPECT_EQ(Tavona_SaveMemoryToFile(h, back.c_str(), 0), 0);
  std::string written = Read(back);
  EXPECT_EQ(written.size(), GlobalSize(h));
  EXPECT_EQ(written.substr(0, 6), std::string("abcde") + '\0');
  EXPECT_EQ(GlobalFree(h), nullptr) << "the block stays the caller's";
  std::wstring missing = Path(L"missing.bin");
  for (UINT quiet : {0u, 1u}) {
    EXPECT_EQ(Tavona_LoadFileToMemory(missing.c_str(), quiet), nullptr);
    ExpectReports(missing, !quiet, "missing, quiet " + std::to_string(quiet));
  }
}

TEST_F(FilesIo, SaveBuffer) {
  std::wstring out = Path(L"out.bin");
  // Each save replaces the file, not overwrites it in place.
  for (const std::string text : {"hello world", "bye"}) {
    EXPECT_EQ(Tavona_SaveBufferToFile(out.c_str(), text.data(), INT(text.size()), 0), 0);
    EXPECT_EQ(Read(out), text);
  }
  std::wstring nowhere = dir_ + L"\\no such folder\\out.bin";
  for (UINT quiet : {0u, 1u}) {
    EXPECT_EQ(Tavona_SaveBufferToFile(nowhere.c_str(), "x", 1, quiet), -1);
    ExpectReports(nowhere, !quiet, "no folder, quiet " + std::to_string(quiet));
  }
}

}  // namespace
