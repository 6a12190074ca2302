// The version texts of tavona32.dll (the resource library: test_frame_loading;
// the global window classes are used by every control test).
#include <tavona/tavona32.h>

#include <gtest/gtest.h>

#include <string>

#include "testutil.h"

namespace {

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
  struct Row { const wchar_t *format; bool accepted; } rows[] = {
      {L"%u-%x-%X-%o", true},     {L"%05d%%%-3i|%.2d", true}, {L"%ld %hd %c", true},
      {L"%s", false},             {L"%d.%d.%d.%d.%d", false}, {L"%.*d", false},
      {L"%n", false},             {L"%lld", false},           {L"%", false},
  };
  for (const Row &r : rows) {
    wchar_t out[64] = L"junk";
    Tavona_GetResourceFileVersion(Tavona_GetInstance(), 0, out, 64, r.format);
    EXPECT_EQ(out[0] != 0, r.accepted) << Narrow(r.format) << ": " << Narrow(out);
  }
}

}  // namespace
