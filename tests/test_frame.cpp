// The frame of tavona32.dll as an application sees it: accessors, version,
// resource library and the global window classes.
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include <string>

#include "testutil.h"

namespace {

std::wstring ModulePath(HMODULE m) {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(m, path, MAX_PATH);
  return path;
}

TEST(Frame, InstanceAndResourceLibrary) {
  HMODULE self = GetModuleHandleW(L"tavona32.dll");
  ASSERT_NE(self, nullptr);
  EXPECT_EQ(Tavona_GetInstance(), self);

  // The test programs run beside the library and its en\ and de\ folders.
  HMODULE res = Tavona_GetResourceModule();
  ASSERT_NE(res, nullptr);
  std::wstring dir = ModulePath(self);
  dir.resize(dir.rfind(L'\\') + 1);
  std::wstring path = ModulePath(res);
  EXPECT_TRUE(path == dir + L"en\\tavona32Res.dll" || path == dir + L"de\\tavona32Res.dll")
      << Narrow(path);
  wchar_t caption[100];
  EXPECT_GT(LoadStringW(res, 1500, caption, 100), 0);
  EXPECT_GT(LoadStringW(res, 1300, caption, 100), 0);
}

TEST(Frame, VersionFromResource) {
  wchar_t buf[32];
  Tavona_GetVersion(buf, 32);
  int a = -1, b = -1, c = -1, d = -1;
  ASSERT_EQ(swscanf(buf, L"%d.%d.%d.%d", &a, &b, &c, &d), 4) << buf;
  EXPECT_GE(a, 1);

  // A buffer one character too small stays empty, an exact one is filled.
  int len = lstrlenW(buf);
  GuardedBuffer<wchar_t> exact(len + 1), tooSmall(len);
  Tavona_GetVersion(exact.data(), len + 1);
  Tavona_GetVersion(tooSmall.data(), len);
  EXPECT_EQ(exact.Text(), buf);
  EXPECT_EQ(tooSmall.Text(), L"");
  EXPECT_TRUE(exact.Intact() && tooSmall.Intact());

  // A custom format and a module without a version resource.
  wchar_t custom[32];
  Tavona_GetResourceFileVersion(Tavona_GetInstance(), 0, custom, 32, L"v%d-%d");
  EXPECT_EQ(std::wstring(custom), L"v" + std::to_wstring(a) + L"-" + std::to_wstring(b));
  custom[0] = L'x';
  Tavona_GetResourceFileVersion(Tavona_GetResourceModule(), 0, custom, 32, nullptr);
  EXPECT_EQ(custom[0], 0);
}

// A caller's format may only ask for the four numbers the routine gives:
// anything that would read another argument yields the empty text.
TEST(Frame, VersionFormatsReadOnlyTheFourNumbers) {
  struct Row {
    const wchar_t *format;
    bool accepted;
  } rows[] = {
      {L"%u-%x-%X-%o", true}, {L"%05d%%%-3i|%.2d", true}, {L"%ld %hd %c", true},
      {L"%s", false},         {L"%hs", false},            {L"%S", false},
      {L"%d.%d.%d.%d.%d", false}, {L"%*d", false},        {L"%.*d", false},
      {L"%n", false},         {L"%p", false},             {L"%f", false},
      {L"%lld", false},       {L"%I64d", false},          {L"%q", false},
      {L"%", false},
  };
  for (const Row &r : rows) {
    wchar_t out[64] = L"junk";
    Tavona_GetResourceFileVersion(Tavona_GetInstance(), 0, out, 64, r.format);
    EXPECT_EQ(out[0] != 0, r.accepted) << Narrow(r.format) << ": " << Narrow(out);
  }
}

TEST(Frame, GlobalWindowClasses) {
  struct Case {
    const wchar_t *name;
    UINT style;
  } cases[] = {{L"TAVONA_BUTTONS_32", CS_GLOBALCLASS | CS_DBLCLKS},
               {L"TAVONA_STATUS_32", CS_GLOBALCLASS | CS_DBLCLKS},
               {L"TAVONATEMPWIND32", CS_GLOBALCLASS},
               {L"TAVONA_POPUP_32", CS_GLOBALCLASS | CS_DBLCLKS}};
  for (const Case &c : cases) {
    WNDCLASSEXW wc = {};
    wc.cbSize = sizeof wc;
    // Global classes are found with any instance, the program's included.
    ASSERT_TRUE(GetClassInfoExW(GetModuleHandleW(nullptr), c.name, &wc)) << c.name;
    ASSERT_TRUE(GetClassInfoExW(Tavona_GetInstance(), c.name, &wc)) << c.name;
    EXPECT_EQ(wc.style, c.style) << c.name;
    EXPECT_EQ(wc.cbWndExtra, int(sizeof(LONG_PTR))) << c.name;  // a whole pointer
  }
}

}  // namespace
