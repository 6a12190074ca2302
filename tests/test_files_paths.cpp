// File names taken apart and put together, on the host and through the DLL.
#include <gtest/gtest.h>
#include <tavona/files.h>


#include "testutil.h"
#ifdef TAVONA_HOST_TEST
#include "files/filesys_host.h"
#endif

namespace {

using Buf = GuardedBuffer<WCHAR>;

std::string N(const WCHAR *s) { return s ? "'" + Narrow(s) + "'" : "null"; }
std::string N(const WStr &s) { return N(s.c_str()); }
WStr Repeat(char c, int n) { return WStr(n, static_cast<WCHAR>(c)); }
int Offset(const WCHAR *p, const WCHAR *base) { return p ? static_cast<int>(p - base) : -1; }

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
  const WStr p250 = Repeat('p', 250), old = TEXT("old");
  struct Row { const WCHAR *path, *name, *ext; int size, rc; WStr expect; } rows[] = {
      {TEXT("C:\\dir\\"), TEXT("file"), TEXT(".txt"), 100, 0, TEXT("C:\\dir\\file.txt")},
      {nullptr, TEXT("file"), nullptr, 100, 0, TEXT("file")},
      {TEXT("x"), TEXT("name"), TEXT(""), 100, 0, TEXT("x\\name.")},
      // 3 characters must remain after every part; a part beyond that
      // leaves the buffer as it was.
      {p257.c_str(), TEXT(""), TEXT(""), 300, 0, p257 + TEXT("\\.")},
      {p258.c_str(), TEXT(""), nullptr, 300, -1, old},
      {p250.c_str(), TEXT("1234567"), nullptr, 300, 0, p250 + TEXT("\\1234567")},
      {p250.c_str(), TEXT("12345678"), nullptr, 300, -1, old},
      // A destination too small is emptied, never cut.
      {TEXT("C:\\dir"), TEXT("file"), TEXT("txt"), 15, 0, TEXT("")},
      {TEXT("C:\\dir"), TEXT("file"), TEXT("txt"), 16, 0, TEXT("C:\\dir\\file.txt")},
  };
  for (const Row &r : rows) {
    Buf b(r.size, old.c_str());
    std::string row = N(r.path) + " + " + N(r.name) + " + " + N(r.ext) + " in " + std::to_string(r.size);
    EXPECT_EQ(Tavona_Assemble_FileName(b.data(), r.path, r.name, r.ext, r.size), r.rc) << row;
    EXPECT_EQ(b.Text(), r.expect) << row << ": got " << N(b.Text()) << ", expected " << N(r.expect);
  }
  // The name may lie in the destination itself.
  Buf b(50, TEXT("report"));
  EXPECT_EQ(Tavona_Assemble_FileName(b.data(), TEXT("D:\\out"), b.data(), TEXT("csv"), 50), 0);
  EXPECT_EQ(b.Text(), WStr(TEXT("D:\\out\\report.csv"))) << N(b.Text());
}

TEST(FilePaths, AddPath) {
  WStr module = ModuleName(), moduleDir = module.substr(0, module.find_last_of(TEXT("\\/")));
  const WStr longBase = Repeat('d', 258), old = TEXT("C:\\old\\a.txt");
  // rc 99: any value but 0 and -1.
  struct Row { const WCHAR *name; int size; const WCHAR *base; UINT flags; int rc; WStr expect; };
  const Row rows[] = {
      {TEXT("a.txt"), 100, TEXT("D:\\new"), 0, 0, TEXT("D:\\new\\a.txt")},
      {old.c_str(), 100, TEXT("D:\\new"), 0, 0, TEXT("D:\\new\\a.txt")},
      {old.c_str(), 100, TEXT("D:\\new"), 1, 99, old},
      {TEXT("a.txt"), 100, TEXT("[modulepath]"), 0, 0, moduleDir + TEXT("\\a.txt")},
      {TEXT("a.txt"), 100, longBase.c_str(), 0, -1, TEXT("a.txt")},
  };
  for (const Row &r : rows) {
    Buf b(r.size, r.name);
    int rc = Tavona_AddPath(b.data(), r.size, r.base, r.flags, nullptr);
    std::string row = N(r.name) + " on " + N(r.base) + " flags " + std::to_string(r.flags);
    EXPECT_TRUE(r.rc == 99 ? rc != 0 && rc != -1 : rc == r.rc) << row << ": rc " << rc;
    EXPECT_EQ(b.Text(), r.expect) << row << ": got " << N(b.Text()) << ", expected " << N(r.expect);
  }
}

// Extensions, wildcards and display names that do not fit are emptied.
TEST(FilePaths, ExtensionsWildcardsAndDisplay) {
  const WStr long255 = Repeat('d', 249) + TEXT("\\a.txt"), long256 = TEXT("d") + long255;
  enum Op { kExt, kWild, kShow };
  struct Row { Op op; const WCHAR *name; int size, rc; WStr expect; } rows[] = {
      {kExt, TEXT(".profile"), 20, 0, TEXT("profile")},
      {kExt, TEXT("archive.tar.gz"), 20, 0, TEXT("gz")}, {kExt, TEXT("name."), 20, 0, TEXT("")},
      {kExt, TEXT("C:\\data.old\\readme"), 20, 0, TEXT("old\\readme")},
      {kExt, TEXT("a.1234"), 5, 0, TEXT("1234")}, {kExt, TEXT("a.12345"), 5, 0, TEXT("")},
      {kWild, TEXT("C:/data/report.txt"), 50, 0, TEXT("C:/data\\*.txt")},
      {kWild, TEXT("report.txt"), 50, 0, TEXT("\\*.txt")}, {kWild, TEXT("a.txt"), 5, 0, TEXT("")},
      {kWild, long255.c_str(), 300, 0, Repeat('d', 249) + TEXT("\\*.txt")},
      {kWild, long256.c_str(), 300, -1, long256}, {kShow, TEXT("a\\b.txt"), 8, 0, TEXT("a\\b.txt")},
      {kShow, TEXT("a\\bc.txt"), 8, 0, TEXT("")},
  };
  for (const Row &r : rows) {
    Buf b(r.size, r.op == kWild ? r.name : TEXT("old"));
    int rc = 0;
    if (r.op == kExt) Tavona_GetExtension(r.name, b.data(), r.size);
    if (r.op == kWild) rc = Tavona_ConvertFilenameToWildcard(b.data(), r.size);
    if (r.op == kShow) Tavona_GetFileNameDisplay(b.data(), r.size, r.name, 3, 0);
    std::string row = "op " + std::to_string(r.op) + " " + N(r.name) + " size " + std::to_string(r.size);
    EXPECT_EQ(rc, r.rc) << row;
    EXPECT_EQ(b.Text(), r.expect) << row << ": got " << N(b.Text()) << ", expected " << N(r.expect);
  }
  const WStr longExt = TEXT("a.") + Repeat('x', 100);  // too long for 100: empty
  struct Check { const WCHAR *name, *ext; int expect; } checks[] = {
      {TEXT("a.TXT"), TEXT("txt"), 1}, {TEXT("a.txt"), TEXT(".txt"), 0}, {TEXT("a.txt"), TEXT("tx"), 0},
      {TEXT("a"), TEXT(""), 1},        {longExt.c_str(), TEXT(""), 1}};
  for (const Check &c : checks)
    EXPECT_EQ(Tavona_CheckExtension(c.name, c.ext), c.expect) << N(c.name) << " vs " << N(c.ext);
}

TEST(FilePaths, InPlaceStrips) {
  enum Op { kExt, kFile, kPath, kSlashes };
  // result: the offset of the pointer returned (-1 null).
  struct Row { Op op; const WCHAR *in, *expect; int result; } rows[] = {
      {kExt, TEXT("C:\\dir\\f.txt"), TEXT("C:\\dir\\f"), 8},
      {kExt, TEXT("C:\\d.x\\file"), TEXT("C:\\d"), 4}, {kExt, TEXT("file"), TEXT("file"), -1},
      {kFile, TEXT("C:\\dir\\f.txt"), TEXT("C:\\dir"), 0},
      {kFile, TEXT("C:\\file"), TEXT("C:\\"), 0},     {kFile, TEXT("C:\\"), TEXT("C:\\"), 0},
      {kFile, TEXT("\\\\server\\share"), TEXT("\\\\server"), 0},
      {kFile, TEXT("name"), TEXT(""), 0},
      {kPath, TEXT("C:\\dir\\f.txt"), TEXT("f.txt"), 0}, {kPath, TEXT("C:file"), TEXT("file"), 0},
      {kPath, TEXT("dir\\"), TEXT(""), 0},            {kPath, TEXT("a/b"), TEXT("b"), 0},
      {kSlashes, TEXT("C:\\dir\\\\//"), TEXT("C:\\dir"), 0}, {kSlashes, TEXT("\\"), TEXT(""), 0},
      {kSlashes, TEXT("C:\\"), TEXT("C:"), 0},        {kSlashes, TEXT(" \\"), TEXT(" "), 0},
  };
  for (const Row &r : rows) {
    Buf b(40, r.in);
    int result = 0;
    if (r.op == kExt) result = Offset(Tavona_StripExtension(b.data()), b.data());
    if (r.op == kFile) Tavona_StripFileName(b.data());
    if (r.op == kPath) result = Offset(Tavona_StripPath(b.data()), b.data());  // in place
    if (r.op == kSlashes) Tavona_StripTrailingSlashes(b.data());
    std::string row = "op " + std::to_string(r.op) + " " + N(r.in);
    EXPECT_EQ(b.Text(), WStr(r.expect)) << row << ": got " << N(b.Text());
    EXPECT_EQ(result, r.result) << row;
  }
}

// The profile name is the module's, its folder dropped before the size of
// the destination counts.
TEST(FilePaths, ProfileName) {
  WStr module = ModuleName(), bare = module.substr(module.find_last_of(TEXT("\\/")) + 1);
  Buf b(100, TEXT(""));
  EXPECT_EQ(Tavona_GetProfileName(nullptr, b.data(), 100), 0);
  EXPECT_EQ(b.Text(), bare.substr(0, bare.find_last_of('.')) + TEXT(".ini")) << N(b.Text());
#ifdef TAVONA_HOST_TEST
  struct Row { const WCHAR *module; int size, rc; WStr expect; } rows[] = {
      {TEXT("C:\\Apps\\Sales.exe"), 11, 0, TEXT("Sales.ini")},
      {TEXT("C:\\Apps\\Sales.exe"), 10, 10, TEXT("Sales")},  // one character more than needed
      {TEXT("C:\\Apps\\Sales.exe"), 5, 10, TEXT("")},
      {TEXT("Sales.tar.exe"), 100, 0, TEXT("Sales.tar.ini")},
  };
  for (const Row &r : rows) {
    tv::plat::host::SetModuleFileName(r.module);
    Buf b(r.size, TEXT(""));
    EXPECT_EQ(Tavona_GetProfileName(nullptr, b.data(), r.size), r.rc) << N(r.module) << " " << r.size;
    EXPECT_EQ(b.Text(), r.expect) << N(r.module) << " " << r.size << ": got " << N(b.Text());
  }
  tv::plat::host::SetModuleFileName(nullptr);
#endif
}

}  // namespace
