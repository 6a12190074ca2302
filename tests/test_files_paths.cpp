// File names taken apart and put together, on the host and through the DLL.
#include <gtest/gtest.h>
#include <tavona/files.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <string>
#include <vector>

#include "testutil.h"
#ifdef TAVONA_HOST_TEST
#include "files/filesys_host.h"
#endif

namespace {

constexpr WCHAR kFill = '#';

std::string N(const WCHAR *s) { return s ? "'" + Narrow(s) + "'" : "null"; }
std::string N(const WStr &s) { return N(s.c_str()); }

using Buf = GuardedBuffer<WCHAR>;

WStr Repeat(char c, int n) { return WStr(n, static_cast<WCHAR>(c)); }

// The program's own file name: set on the host, asked on Windows.
WStr ModuleName() {
#ifdef TAVONA_HOST_TEST
  tv::plat::host::SetModuleFileName(TEXT("C:\\Apps\\Sales.exe"));
  return TEXT("C:\\Apps\\Sales.exe");
#else
  wchar_t name[MAX_PATH];
  GetModuleFileNameW(nullptr, name, MAX_PATH);
  return name;
#endif
}

TEST(FilePaths, Assemble) {
  const WStr p257 = TEXT("C:\\") + Repeat('p', 254), p258 = p257 + TEXT("q");
  const WStr p250 = Repeat('p', 250), huge = Repeat('n', 5000);
  struct Row {
    const WCHAR *path, *name, *ext;
    int size, rc;
    WStr expect;  // "<untouched>" when the buffer must keep its old text
  } rows[] = {
      {TEXT("C:\\dir"), TEXT("file"), TEXT("txt"), 100, 0, TEXT("C:\\dir\\file.txt")},
      {TEXT("C:\\dir\\"), TEXT("file"), TEXT(".txt"), 100, 0, TEXT("C:\\dir\\file.txt")},
      {TEXT("C:/dir/"), TEXT("file"), nullptr, 100, 0, TEXT("C:/dir/file")},
      {TEXT(""), TEXT("file"), nullptr, 100, 0, TEXT("\\file")},
      {nullptr, TEXT("file"), nullptr, 100, 0, TEXT("file")},
      {TEXT("x"), TEXT("name."), TEXT("txt"), 100, 0, TEXT("x\\name.txt")},
      {TEXT("x"), TEXT("name"), TEXT(""), 100, 0, TEXT("x\\name.")},
      {nullptr, nullptr, TEXT("txt"), 100, 0, TEXT(".txt")},
      {nullptr, nullptr, nullptr, 100, 0, TEXT("")},
      // The budget: 3 characters must remain after every part.
      {p257.c_str(), nullptr, nullptr, 300, 0, p257 + TEXT("\\")},
      {p257.c_str(), TEXT(""), TEXT(""), 300, 0, p257 + TEXT("\\.")},
      {p258.c_str(), TEXT(""), nullptr, 300, -1, TEXT("<untouched>")},
      {p250.c_str(), TEXT("1234567"), nullptr, 300, 0, p250 + TEXT("\\1234567")},
      {p250.c_str(), TEXT("12345678"), nullptr, 300, -1, TEXT("<untouched>")},
      {p250.c_str(), TEXT("1234"), TEXT(".ab"), 300, 0, p250 + TEXT("\\1234.ab")},
      {p250.c_str(), TEXT("12345"), TEXT(".ab"), 300, -1, TEXT("<untouched>")},
      {nullptr, huge.c_str(), nullptr, 300, -1, TEXT("<untouched>")},
      // A destination too small is emptied, never cut.
      {TEXT("C:\\dir"), TEXT("file"), TEXT("txt"), 15, 0, TEXT("")},
      {TEXT("C:\\dir"), TEXT("file"), TEXT("txt"), 16, 0, TEXT("C:\\dir\\file.txt")},
  };
  for (const Row &r : rows) {
    Buf b(r.size, TEXT("old"));
    int rc = Tavona_Assemble_FileName(b.data(), r.path, r.name, r.ext, r.size);
    WStr expect = r.expect == TEXT("<untouched>") ? WStr(TEXT("old")) : r.expect;
    std::string row = N(r.path) + " + " + N(r.name) + " + " + N(r.ext) + " size " +
                      std::to_string(r.size);
    EXPECT_EQ(rc, r.rc) << row;
    EXPECT_EQ(b.Text(), expect) << row << ": got " << N(b.Text()) << ", expected " << N(expect);
    EXPECT_TRUE(b.Intact()) << row;
  }
}

TEST(FilePaths, AssembleIntoTheNamesOwnBuffer) {
  Buf b(50, TEXT("report"));
  EXPECT_EQ(Tavona_Assemble_FileName(b.data(), TEXT("D:\\out"), b.data(), TEXT("csv"), 50), 0);
  EXPECT_EQ(b.Text(), WStr(TEXT("D:\\out\\report.csv"))) << N(b.Text());
}

TEST(FilePaths, AddPath) {
  WStr module = ModuleName();
  WStr moduleDir = module.substr(0, module.find_last_of(TEXT("\\/")));
  const WStr longBase = Repeat('d', 258);
  struct Row {
    const WCHAR *name;
    int size;
    const WCHAR *base;
    UINT flags;
    int rc;  // 99: any value but 0 and -1
    WStr expect;
  } rows[] = {
      {TEXT("a.txt"), 100, TEXT("D:\\new"), 0, 0, TEXT("D:\\new\\a.txt")},
      {TEXT("sub\\a.txt"), 100, TEXT("D:\\new\\"), 0, 0, TEXT("D:\\new\\sub\\a.txt")},
      {TEXT("C:\\old\\a.txt"), 100, TEXT("D:\\new"), 0, 0, TEXT("D:\\new\\a.txt")},
      {TEXT("C:\\old\\a.txt"), 100, TEXT("D:\\new"), 1, 99, TEXT("C:\\old\\a.txt")},
      {TEXT("/a.txt"), 100, TEXT("D:\\new"), 0, 0, TEXT("D:\\new\\a.txt")},
      {TEXT("C:a.txt"), 100, TEXT("D:\\new"), 0, 0, TEXT("D:\\new\\a.txt")},
      {TEXT("a.txt"), 100, TEXT("[MODULEPATH]"), 0, 0, moduleDir + TEXT("\\a.txt")},
      {TEXT("a.txt"), 100, TEXT("[modulepath]"), 0, 0, moduleDir + TEXT("\\a.txt")},
      {TEXT("a.txt"), 100, TEXT(""), 0, 0, TEXT("\\a.txt")},
      {TEXT("a.txt"), 100, longBase.c_str(), 0, -1, TEXT("a.txt")},
      {TEXT("a.txt"), 100, nullptr, 0, -1, TEXT("a.txt")},
      // Sizes below 1 leave the name as it is, absolute or not.
      {TEXT("C:\\old\\a.txt"), -1, TEXT("D:\\new"), 0, -1, TEXT("C:\\old\\a.txt")},
      {TEXT("C:\\old\\a.txt"), INT_MIN, TEXT("D:\\new"), 0, -1, TEXT("C:\\old\\a.txt")},
      {TEXT("a.txt"), 0, TEXT("D:\\new"), 0, -1, TEXT("a.txt")},
  };
  for (const Row &r : rows) {
    Buf b(r.size > 0 ? r.size : 100, r.name);
    int rc = Tavona_AddPath(b.data(), r.size, r.base, r.flags, nullptr);
    std::string row = N(r.name) + " on " + N(r.base) + " flags " + std::to_string(r.flags);
    if (r.rc == 99)
      EXPECT_TRUE(rc != 0 && rc != -1) << row << ": rc " << rc;
    else
      EXPECT_EQ(rc, r.rc) << row;
    EXPECT_EQ(b.Text(), r.expect) << row << ": got " << N(b.Text()) << ", expected " << N(r.expect);
    EXPECT_TRUE(b.Intact()) << row;
  }
}

TEST(FilePaths, Extensions) {
  const WStr longExt = TEXT("a.") + Repeat('x', 100);
  struct Row {
    const WCHAR *name;
    int size;
    WStr expect;
  } rows[] = {
      {TEXT(".profile"), 20, TEXT("profile")},
      {TEXT("archive.tar.gz"), 20, TEXT("gz")},
      {TEXT("readme"), 20, TEXT("")},
      {TEXT("name."), 20, TEXT("")},
      {TEXT("C:\\data.old\\readme"), 20, TEXT("old\\readme")},
      {nullptr, 20, TEXT("")},
      {TEXT("a.1234"), 5, TEXT("1234")},
      {TEXT("a.12345"), 5, TEXT("")},  // does not fit: emptied
  };
  for (const Row &r : rows) {
    Buf b(r.size, TEXT("old"));
    Tavona_GetExtension(r.name, b.data(), r.size);
    EXPECT_EQ(b.Text(), r.expect) << N(r.name) << " size " << r.size << ": got " << N(b.Text());
    EXPECT_TRUE(b.Intact()) << N(r.name);
  }
  Tavona_GetExtension(TEXT("a.b"), nullptr, 10);  // nothing to write to

  struct Check {
    const WCHAR *name, *ext;
    int expect;
  } checks[] = {
      {TEXT("a.TXT"), TEXT("txt"), 1}, {TEXT("a.txt"), TEXT(".txt"), 0},
      {TEXT("a.txt"), TEXT("tx"), 0},  {TEXT("a"), TEXT(""), 1},
      {TEXT("a.txt"), nullptr, 0},     {nullptr, TEXT("txt"), 0},
      {longExt.c_str(), TEXT(""), 1},  // too long for 100: empty
  };
  for (const Check &c : checks)
    EXPECT_EQ(Tavona_CheckExtension(c.name, c.ext), c.expect) << N(c.name) << " vs " << N(c.ext);
}

TEST(FilePaths, InPlaceStrips) {
  enum Op { kExt, kFile, kPath, kSlashes };
  struct Row {
    Op op;
    const WCHAR *in, *expect;
    int result;  // kExt: offset of the returned pointer (-1 null)
  } rows[] = {
      {kExt, TEXT("C:\\dir\\file.txt"), TEXT("C:\\dir\\file"), 11},
      {kExt, TEXT("C:\\d.x\\file"), TEXT("C:\\d"), 4},
      {kExt, TEXT("file"), TEXT("file"), -1},
      {kFile, TEXT("C:\\dir\\file.txt"), TEXT("C:\\dir"), 0},
      {kFile, TEXT("dir\\"), TEXT("dir"), 0},
      {kFile, TEXT("C:file"), TEXT("C:"), 0},
      {kFile, TEXT("C:\\file"), TEXT("C:\\"), 0},
      {kFile, TEXT("C:\\"), TEXT("C:\\"), 0},
      {kFile, TEXT("\\file"), TEXT("\\"), 0},
      {kFile, TEXT("\\\\server\\share"), TEXT("\\\\server"), 0},
      {kFile, TEXT("a/b/c"), TEXT("a/b"), 0},
      {kFile, TEXT("name"), TEXT(""), 0},
      {kFile, TEXT(""), TEXT(""), 0},
      {kPath, TEXT("C:\\dir\\file.txt"), TEXT("file.txt"), 0},
      {kPath, TEXT("C:file"), TEXT("file"), 0},
      {kPath, TEXT("dir\\"), TEXT(""), 0},
      {kPath, TEXT("a/b"), TEXT("b"), 0},
      {kPath, TEXT("plain"), TEXT("plain"), 0},
      {kSlashes, TEXT("C:\\dir\\\\//"), TEXT("C:\\dir"), 0},
      {kSlashes, TEXT("   "), TEXT("   "), 0},
      {kSlashes, TEXT("\\"), TEXT(""), 0},
      {kSlashes, TEXT("C:\\"), TEXT("C:"), 0},
      {kSlashes, TEXT(" \\"), TEXT(" "), 0},
  };
  const char *names[] = {"StripExtension", "StripFileName", "StripPath", "StripTrailingSlashes"};
  for (const Row &r : rows) {
    Buf b(40, r.in);
    int result = 0;
    switch (r.op) {
      case kExt: {
        WCHAR *p = Tavona_StripExtension(b.data());
        result = p ? static_cast<int>(p - b.data()) : -1;
        break;
      }
      case kFile: Tavona_StripFileName(b.data()); break;
      case kPath: EXPECT_EQ(Tavona_StripPath(b.data()), b.data()); break;
      case kSlashes: Tavona_StripTrailingSlashes(b.data()); break;
    }
    EXPECT_EQ(b.Text(), WStr(r.expect))
        << names[r.op] << " " << N(r.in) << ": got " << N(b.Text()) << ", expected " << N(r.expect);
    EXPECT_EQ(result, r.result) << names[r.op] << " " << N(r.in);
  }
  Tavona_StripTrailingSlashes(nullptr);
  EXPECT_EQ(Tavona_StripExtension(nullptr), nullptr);
}

TEST(FilePaths, Wildcard) {
  const WStr long255 = Repeat('d', 249) + TEXT("\\a.txt"), long256 = TEXT("d") + long255;
  struct Row {
    const WCHAR *name;
    int size, rc;
    WStr expect;
  } rows[] = {
      {TEXT("C:/data/report.txt"), 50, 0, TEXT("C:/data\\*.txt")},
      {TEXT("C:/data/report"), 50, 0, TEXT("C:/data\\*.")},
      {TEXT("report.txt"), 50, 0, TEXT("\\*.txt")},
      {TEXT("C:\\report.txt"), 50, 0, TEXT("C:\\*.txt")},
      {TEXT("a.txt"), 5, 0, TEXT("")},  // "\*.txt" does not fit: emptied
      {long255.c_str(), 300, 0, Repeat('d', 249) + TEXT("\\*.txt")},
      {long256.c_str(), 300, -1, long256},
  };
  for (const Row &r : rows) {
    Buf b(r.size, r.name);
    EXPECT_EQ(Tavona_ConvertFilenameToWildcard(b.data(), r.size), r.rc) << N(r.name);
    EXPECT_EQ(b.Text(), r.expect) << N(r.name) << ": got " << N(b.Text());
  }
  EXPECT_EQ(Tavona_ConvertFilenameToWildcard(nullptr, 10), -1);
}

TEST(FilePaths, ProfileName) {
  WStr module = ModuleName();
  WStr bare = module.substr(module.find_last_of(TEXT("\\/")) + 1);
  bare = bare.substr(0, bare.find_last_of('.'));
  Buf b(100, TEXT(""));
  EXPECT_EQ(Tavona_GetProfileName(nullptr, b.data(), 100), 0);
  EXPECT_EQ(b.Text(), bare + TEXT(".ini")) << N(b.Text());
  EXPECT_EQ(Tavona_GetProfileName(nullptr, nullptr, 10), -1);
}

#ifdef TAVONA_HOST_TEST
// The folder is dropped before the size of the destination counts.
TEST(FilePaths, ProfileNameMargins) {
  struct Row {
    const WCHAR *module;
    int size, rc;
    WStr expect;
  } rows[] = {
      {TEXT("Sales.exe"), 11, 0, TEXT("Sales.ini")},
      {TEXT("Sales.exe"), 10, 10, TEXT("Sales")},  // one character more than needed
      {TEXT("C:\\Apps\\Sales.exe"), 100, 0, TEXT("Sales.ini")},
      {TEXT("C:\\Apps\\Sales.exe"), 11, 0, TEXT("Sales.ini")},
      {TEXT("C:\\Apps\\Sales.exe"), 10, 10, TEXT("Sales")},
      {TEXT("C:\\Apps\\Sales.exe"), 5, 10, TEXT("")},
      {TEXT("C:\\Apps.v2\\Sales"), 100, 0, TEXT("Sales.ini")},
      {TEXT("Sales.tar.exe"), 100, 0, TEXT("Sales.tar.ini")},
  };
  for (const Row &r : rows) {
    tv::plat::host::SetModuleFileName(r.module);
    Buf b(r.size, TEXT(""));
    EXPECT_EQ(Tavona_GetProfileName(nullptr, b.data(), r.size), r.rc) << N(r.module) << " " << r.size;
    EXPECT_EQ(b.Text(), r.expect) << N(r.module) << " " << r.size << ": got " << N(b.Text());
    EXPECT_TRUE(b.Intact());
  }
  tv::plat::host::SetModuleFileName(nullptr);
}
#endif

TEST(FilePaths, DisplayAndForms) {
  Buf b(8, TEXT("old"));
  Tavona_GetFileNameDisplay(b.data(), 8, TEXT("a\\b.txt"), 3, 0);
  EXPECT_EQ(b.Text(), WStr(TEXT("a\\b.txt")));
  Tavona_GetFileNameDisplay(b.data(), 8, TEXT("a\\bc.txt"), 3, 0);
  EXPECT_EQ(b.Text(), WStr(TEXT(""))) << "too long: emptied, not cut";
  Tavona_GetFileNameDisplay(b.data(), 8, nullptr, 0, 0);
  EXPECT_EQ(b.Text(), WStr(TEXT("")));
  EXPECT_TRUE(b.Intact());
  Tavona_GetFileNameDisplay(nullptr, 8, TEXT("x"), 0, 0);

  struct Row {
    const WCHAR *name;
    int pure, absolute;
  } rows[] = {
      {TEXT(""), 1, 0},       {TEXT("abc.txt"), 1, 0}, {TEXT("a:b"), 0, 1},
      {TEXT("a/b"), 0, 0},    {TEXT("a\\b"), 0, 0},    {TEXT("\\x"), 0, 1},
      {TEXT("/x"), 0, 1},     {TEXT("x:"), 0, 1},      {nullptr, 1, 0},
  };
  for (const Row &r : rows) {
    EXPECT_EQ(Tavona_IsFileNamePure(r.name), r.pure) << N(r.name);
    EXPECT_EQ(Tavona_IsFilePathAbsolute(r.name), r.absolute) << N(r.name);
  }
}

TEST(FilePaths, Existence) {
#ifdef TAVONA_HOST_TEST
  const char *file = "files_paths_exists.tmp";
  std::FILE *f = std::fopen(file, "wb");
  ASSERT_TRUE(f);
  std::fclose(f);
  EXPECT_EQ(Tavona_DoesFileExist(TEXT("files_paths_exists.tmp")), 1);
  std::remove(file);
  EXPECT_EQ(Tavona_DoesFileExist(TEXT("files_paths_exists.tmp")), 0);
  EXPECT_EQ(Tavona_DoesFileExist(TEXT(".")), 1) << "directories count";
#else
  EXPECT_EQ(Tavona_DoesFileExist(ModuleName().c_str()), 1);
  EXPECT_EQ(Tavona_DoesFileExist(L"C:\\windows"), 1) << "directories count";
  EXPECT_EQ(Tavona_DoesFileExist(L"C:\\no such folder\\x.txt"), 0);
#endif
  EXPECT_EQ(Tavona_DoesFileExist(TEXT("")), 0);
  EXPECT_EQ(Tavona_DoesFileExist(nullptr), 0);
}

}  // namespace
