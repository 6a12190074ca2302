// Whole-file sizes, loads and saves against real files, the errors they
// report, and the trace records of their opens.
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "testutil.h"

namespace {

std::vector<std::wstring> reports;

INT WINAPI Collect(const WCHAR *message) {
  reports.push_back(message ? message : L"");
  return IDOK;
}

std::string Bytes(const std::vector<char> &v) { return std::string(v.begin(), v.end()); }

class FilesIo : public ::testing::Test {
 protected:
  void SetUp() override {
    wchar_t tmp[MAX_PATH];
    GetTempPathW(MAX_PATH, tmp);
    dir_ = std::wstring(tmp) + L"tavona_files_io";
    CreateDirectoryW(dir_.c_str(), nullptr);
    reports.clear();
    Tavona_SetErrorHandlerCallback(Collect);
    SetEnvironmentVariableW(L"TAVONA_TRACE", nullptr);
    SetEnvironmentVariableW(L"TAVONA_TRACE_FILE", nullptr);
  }
  void TearDown() override {
    Tavona_SetErrorHandlerCallback(nullptr);
    SetEnvironmentVariableW(L"TAVONA_TRACE", nullptr);
    SetEnvironmentVariableW(L"TAVONA_TRACE_FILE", nullptr);
    for (const std::wstring &f : made_) DeleteFileW(f.c_str());
    RemoveDirectoryW(dir_.c_str());
  }

  std::wstring Path(const wchar_t *name) {
    std::wstring p = dir_ + L"\\" + name;
    made_.push_back(p);
    return p;
  }
  std::wstring Make(const wchar_t *name, const std::string &content) {
    std::wstring p = Path(name);
    HANDLE h = CreateFileW(p.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    EXPECT_NE(h, INVALID_HANDLE_VALUE);
    DWORD w;
    WriteFile(h, content.data(), static_cast<DWORD>(content.size()), &w, nullptr);
    CloseHandle(h);
    return p;
  }
  static std::string Read(const std::wstring &p) {
    std::string out;
    HANDLE h = CreateFileW(p.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0,
                           nullptr);
    if (h == INVALID_HANDLE_VALUE) return "<missing>";
    char buf[4096];
    DWORD got;
    while (ReadFile(h, buf, sizeof buf, &got, nullptr) && got) out.append(buf, got);
    CloseHandle(h);
    return out;
  }
  static bool Exists(const std::wstring &p) {
    return GetFileAttributesW(p.c_str()) != INVALID_FILE_ATTRIBUTES;
  }
  // One report naming the file, or none.
  static void ExpectReports(const std::wstring &name, bool one, const std::string &row) {
    ASSERT_EQ(reports.size(), one ? 1u : 0u) << row;
    if (one) {
      EXPECT_NE(reports[0].find(name), std::wstring::npos) << row << ": " << Narrow(reports[0]);
    }
    reports.clear();
  }

  std::wstring dir_;
  std::vector<std::wstring> made_;
};

TEST_F(FilesIo, Sizes) {
  std::wstring empty = Make(L"empty.bin", ""), ten = Make(L"ten.bin", "0123456789");
  EXPECT_EQ(Tavona_GetFileSize(empty.c_str()), 0u);
  EXPECT_EQ(Tavona_GetFileSize(ten.c_str()), 10u);
  EXPECT_EQ(Tavona_GetFileSize(Path(L"missing.bin").c_str()), 0u);
  EXPECT_EQ(Tavona_GetFileSize64(nullptr), 0u);
  EXPECT_TRUE(reports.empty()) << "sizes report nothing";
}

// 4 GiB + 10 bytes, sparse: the 32-bit size and the buffer load see only
// the low half.
TEST_F(FilesIo, SizesBeyondFourGiB) {
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
  struct Row {
    const wchar_t *what;
    const std::wstring *name;  // null: pass a null name
    int size;
    bool nullBuffer;
    UINT quiet;
    int rc;
    std::string expect;  // the whole buffer afterwards ('#' = untouched)
    bool reported;
  } rows[] = {
      {L"empty file", &empty, 10, false, 0, 0, std::string(1, '\0') + "#########", false},
      {L"fills exactly", &ten, 10, false, 0, 10, "0123456789", false},
      {L"one byte more", &ten, 11, false, 0, 10, std::string("0123456789") + '\0', false},
      {L"buffer shorter", &ten, 5, false, 0, 5, "01234", false},
      {L"size 1", &ten, 1, false, 0, -1, "#", false},
      {L"null buffer", &ten, 10, true, 0, -1, "##########", false},
      {L"null name", nullptr, 10, false, 0, -1, "##########", false},
      {L"missing", &missing, 4, false, 0, -1, std::string(1, '\0') + "###", true},
      {L"missing, quiet", &missing, 4, false, 1, -1, std::string(1, '\0') + "###", false},
      {L"missing, other bits", &missing, 4, false, 2, -1, std::string(1, '\0') + "###", true},
  };
  for (const Row &r : rows) {
    std::vector<char> buf(r.size + 4, '#');
    int rc = Tavona_LoadFileToBuffer(r.name ? r.name->c_str() : nullptr,
                                     r.nullBuffer ? nullptr : buf.data(), r.size, r.quiet);
    std::string row = Narrow(r.what);
    EXPECT_EQ(rc, r.rc) << row;
    EXPECT_EQ(Bytes(buf), r.expect + "####") << row;
    ExpectReports(r.name ? *r.name : L"", r.reported, row);
  }
  char buf[4] = "##";
  EXPECT_EQ(Tavona_LoadFileToBuffer(L"  \t", buf, 4, 0), -1) << "blank name";
  EXPECT_EQ(buf[0], '#');
  EXPECT_TRUE(reports.empty());
}

// A name too long for the message keeps the message's head and its stop
// icon; the text is cut where the buffer ends.
TEST_F(FilesIo, LongMissingNameIsReportedCut) {
  std::wstring name = Path(L"") + std::wstring(1111 - Path(L"").size(), 'm');
  char buf[4];
  EXPECT_EQ(Tavona_LoadFileToBuffer(name.c_str(), buf, 4, 0), -1);
  ASSERT_EQ(reports.size(), 1u);
  EXPECT_EQ(reports[0].rfind(L"The file \"" + Path(L""), 0), 0u) << Narrow(reports[0].substr(0, 40));
  EXPECT_EQ(reports[0].size(), 1020u);  // 1023 less the prefix and its space
}

TEST_F(FilesIo, LoadIntoMemoryAndSaveBack) {
  std::wstring five = Make(L"five.bin", "abcde"), back = Path(L"back.bin");
  HGLOBAL h = Tavona_LoadFileToMemory(five.c_str(), 0);
  ASSERT_NE(h, nullptr);
  ASSERT_GE(GlobalSize(h), 6u);
  const char *p = static_cast<const char *>(GlobalLock(h));
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(std::string(p, 6), std::string("abcde") + '\0');
  GlobalUnlock(h);
  // Written back with the block's size: the terminator (and any rounding) too.
  EXPECT_EQ(Tavona_SaveMemoryToFile(h, back.c_str(), 0), 0);
  std::string written = Read(back);
  EXPECT_EQ(written.size(), GlobalSize(h));
  EXPECT_EQ(written.substr(0, 6), std::string("abcde") + '\0');
  EXPECT_EQ(GlobalFree(h), nullptr) << "the block stays the caller's";

  std::wstring empty = Make(L"empty.bin", "");
  h = Tavona_LoadFileToMemory(empty.c_str(), 0);
  ASSERT_NE(h, nullptr);
  EXPECT_GE(GlobalSize(h), 1u);
  GlobalFree(h);

  std::wstring missing = Path(L"missing.bin");
  EXPECT_EQ(Tavona_LoadFileToMemory(missing.c_str(), 0), nullptr);
  ExpectReports(missing, true, "missing");
  EXPECT_EQ(Tavona_LoadFileToMemory(missing.c_str(), 1), nullptr);
  ExpectReports(missing, false, "missing, quiet");
  EXPECT_EQ(Tavona_LoadFileToMemory(L" ", 0), nullptr);
  ExpectReports(L"", false, "blank");
}

TEST_F(FilesIo, SaveBuffer) {
  std::wstring out = Path(L"out.bin");
  EXPECT_EQ(Tavona_SaveBufferToFile(out.c_str(), nullptr, 5, 0), 0);
  EXPECT_FALSE(Exists(out)) << "a null buffer creates no file";
  EXPECT_EQ(Tavona_SaveBufferToFile(L"", "x", 1, 0), 0);
  EXPECT_EQ(Tavona_SaveMemoryToFile(nullptr, out.c_str(), 0), 0);
  EXPECT_FALSE(Exists(out));

  EXPECT_EQ(Tavona_SaveBufferToFile(out.c_str(), "hello world", 11, 0), 0);
  EXPECT_EQ(Read(out), "hello world");
  EXPECT_EQ(Tavona_SaveBufferToFile(out.c_str(), "bye", 3, 0), 0);
  EXPECT_EQ(Read(out), "bye") << "replaced, not overwritten in place";
  EXPECT_EQ(Tavona_SaveBufferToFile(out.c_str(), "", 0, 0), 0);
  EXPECT_EQ(Read(out), "");

  std::wstring nowhere = dir_ + L"\\no such folder\\out.bin";
  EXPECT_EQ(Tavona_SaveBufferToFile(nowhere.c_str(), "x", 1, 0), -1);
  ExpectReports(nowhere, true, "no folder");
  EXPECT_EQ(Tavona_SaveBufferToFile(nowhere.c_str(), "x", 1, 1), -1);
  ExpectReports(nowhere, false, "no folder, quiet");
}

// Saving opens without sharing: a reader that holds the file makes it fail.
TEST_F(FilesIo, SaveFailsWhileAReaderHoldsTheFile) {
  std::wstring held = Make(L"held.bin", "original");
  HANDLE reader = CreateFileW(held.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                              nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(reader, INVALID_HANDLE_VALUE);
  EXPECT_EQ(Tavona_SaveBufferToFile(held.c_str(), "new", 3, 0), -1);
  ExpectReports(held, true, "buffer");
  HGLOBAL h = GlobalAlloc(GMEM_MOVEABLE, 3);
  EXPECT_EQ(Tavona_SaveMemoryToFile(h, held.c_str(), 0), -1);
  ExpectReports(held, true, "memory");
  EXPECT_EQ(Tavona_SaveMemoryToFile(h, held.c_str(), 1), -1);
  ExpectReports(held, false, "memory, quiet");
  // Loading shares reading, so it still works.
  char buf[20];
  EXPECT_EQ(Tavona_LoadFileToBuffer(held.c_str(), buf, 20, 0), 8);
  CloseHandle(reader);
  EXPECT_EQ(Read(held), "original");
  EXPECT_EQ(Tavona_SaveMemoryToFile(h, held.c_str(), 0), 0);
  EXPECT_EQ(Read(held).size(), GlobalSize(h));
  GlobalFree(h);
}

std::string Utf8(const std::wstring &w) {
  char buf[1024];
  int n = WideCharToMultiByte(CP_UTF8, 0, w.c_str(), static_cast<int>(w.size()), buf, sizeof buf,
                              nullptr, nullptr);
  return std::string(buf, n);
}

// Every open is announced on "Vel.Framework.Print" when TAVONA_TRACE names
// it; the existence test and the EXIF reader open nothing that is traced.
TEST_F(FilesIo, OpensAreTraced) {
  std::wstring data = Make(L"\u00c4rger \u20ac.txt", "12345"), log = Path(L"trace.log");
  std::wstring other = Path(L"other.bin");
  SetEnvironmentVariableW(L"TAVONA_TRACE_FILE", log.c_str());
  Tavona_GetFileSize(data.c_str());
  EXPECT_FALSE(Exists(log)) << "channel off: nothing written";

  SetEnvironmentVariableW(L"TAVONA_TRACE", L"Other, vel.framework.print");
  char buf[10];
  Tavona_GetFileSize(data.c_str());
  Tavona_GetFileSize64(data.c_str());
  Tavona_LoadFileToBuffer(data.c_str(), buf, 10, 0);
  GlobalFree(Tavona_LoadFileToMemory(data.c_str(), 0));
  Tavona_SaveBufferToFile(other.c_str(), "x", 1, 0);
  Tavona_DoesFileExist(data.c_str());
  DateTimeStruct when;
  Tavona_GetExifExposureDateTimeFromJpegFile(data.c_str(), &when);
  std::string text = Read(log);
  std::string open = "Open File: " + Utf8(data) + "\r\n";
  size_t lines = 0;
  for (size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos; at += 2) ++lines;
  EXPECT_EQ(lines, 5u) << text;
  EXPECT_EQ(text.find("Vel.Framework.Print [3/1021] file("), 0u) << text;
  EXPECT_NE(text.find(open), std::string::npos) << text;
  EXPECT_NE(text.find("Open File: " + Utf8(other) + "\r\n"), std::string::npos) << text;
}

}  // namespace
