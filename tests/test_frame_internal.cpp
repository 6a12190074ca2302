// The frame's portable internals on the host: message composition, routing
// of reports and allocation failures (the key prefix of translated texts:
// test_lts).
#include "frame/alloc.h"
#include "frame/globals.h"
#include "frame/host/hostplat.h"
#include "frame/report.h"
#include "frame/reportcore.h"
#include "testutil.h"
#include "tvres.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

using tv::plat::host::SetResString;

namespace {

constexpr UINT kMsg = 4242;

struct ReportFixture : ::testing::Test {
  void SetUp() override {
    tv::InitPortableGlobals();
    tv::InitSecondGlobals();
    Tavona_SetErrorHandlerCallback(nullptr);
    Tavona_SetErrorHandlingMode(0);
    Tavona_SetErrorLogFile(u"");
  }
  void TearDown() override {
    SetResString(kMsg, nullptr);
    Tavona_SetErrorHandlerCallback(nullptr);
    Tavona_SetErrorHandlingMode(0);
    tv::plat::host::SetFailAllocations(false);
  }
};

std::u16string lastCallbackText;
int callbackCount = 0;
INT WINAPI RecordingCallback(const WCHAR *text) {
  lastCallbackText = text;
  ++callbackCount;
  return 77;
}

TEST_F(ReportFixture, StylePrefixChoosesIconAndButtons) {
  struct Case {
    const char16_t *tmpl;
    UINT style;
    const char16_t *text;
  } cases[] = {
      // (The shipped texts' prefixes are checked by test_messagebox.)
      {u"!RIA Cannot copy %s to %s", MB_ICONEXCLAMATION | MB_ABORTRETRYIGNORE, u"Cannot copy a.txt to b.txt"},
      {u"iOC Go on", MB_ICONINFORMATION | MB_OKCANCEL, u"Go on"},
      // icons combine bitwise: ! and ? give the exclamation bits again
      {u"!? Odd", 0x30, u"Odd"},
      // retry/cancel and partial sets fall back to OK
      {u"RC Retry", MB_OK, u"Retry"},        {u"YNCO Too many", MB_OK, u"Too many"},
      // no prefix when the text starts with a space; spaces are skipped
      {u"   Plain", 0, u"Plain"},            {u"!YN    Many spaces", MB_ICONEXCLAMATION | MB_YESNO, u"Many spaces"},
      {u"OC", MB_OKCANCEL, u""},             // a text without any space is all prefix
      {u"((KEY))?YN Keyed", MB_ICONQUESTION | MB_YESNO, u"Keyed"},
      {nullptr, 0, u""},  // no template: task-modal, empty text
  };
  for (const Case &c : cases) {
    SetResString(kMsg, c.tmpl);
    const WCHAR *args[5] = {u"a.txt", u"b.txt", nullptr, nullptr, nullptr};
    WCHAR out[200];
    UINT style = tv::ComposeMessageText(nullptr, u"TAVONADLL", kMsg, args, out, 200);
    EXPECT_EQ(style, MB_TASKMODAL | c.style) << "template " << Narrow(c.tmpl);
    EXPECT_EQ(std::u16string(out), c.text) << "template " << Narrow(c.tmpl);
  }
}

// A text longer than the limit is cut there.
TEST_F(ReportFixture, ComposeCutsAtTheLimit) {
  const WCHAR *args[5] = {};
  SetResString(kMsg, u"O 0123456789");
  GuardedBuffer<WCHAR> small(8);
  tv::ComposeMessageText(nullptr, u"M", kMsg, args, small.data(), 8);
  EXPECT_EQ(small.Text(), u"0123456");
  EXPECT_TRUE(small.Intact());
}

TEST_F(ReportFixture, TemplateFormatting) {
  struct Case {
    const char16_t *tmpl;
    const char16_t *out;
  } cases[] = {
      {u"%s+%s", u"A+B"},
      {u"[%5s][%-3s]", u"[    A][B  ]"},
      {u"%.1s%%", u"A%"},
      {u"%s %s %s %s %s %s %s", u"A B C    "},  // past the arguments: empty
      {u"%d%s", u"B"},                          // other conversions consume one
      {u"trailing %", u"trailing "},
      {u"%ls and %S", u"A and B"},
  };
  const WCHAR *args[5] = {u"A", u"B", u"C", nullptr, nullptr};
  for (const Case &c : cases) {
    WCHAR out[64];
    tv::FormatTemplate(out, 64, c.tmpl, args, 5);
    EXPECT_EQ(std::u16string(out), c.out) << "template " << Narrow(c.tmpl);
  }
}

// Modes other than 1 and 2 display, the caption's key prefix stripped (the
// display of the shipped texts and the callback coming first: test_messagebox).
TEST_F(ReportFixture, UnknownModesDisplay) {
  SetResString(kMsg, u"!O File %s is gone");
  SetResString(IDS_CAPTION_ERROR, u"((CAP))Caption");
  Tavona_SetErrorHandlingMode(7);
  int before = tv::plat::host::LastMessage().count;
  EXPECT_EQ(tv::ReportError(kMsg, u"x.txt"), IDOK);
  const auto &m = tv::plat::host::LastMessage();
  EXPECT_EQ(m.count, before + 1);
  EXPECT_EQ(m.caption, u"Caption");
  EXPECT_EQ(m.text, u"File x.txt is gone");
  EXPECT_EQ(m.style, UINT(MB_TASKMODAL | MB_ICONEXCLAMATION | MB_OK));
}

TEST_F(ReportFixture, LogModeAppendsUtf16Lines) {
  std::string path = ::testing::TempDir() + "tavona_errors.log";
  std::remove(path.c_str());
  std::u16string wpath(path.begin(), path.end());
  Tavona_SetErrorLogFile(wpath.c_str());
  Tavona_SetErrorHandlingMode(2);
  SetResString(kMsg, u"sO Lost %s");
  EXPECT_EQ(tv::ReportError(kMsg, u"a"), 1);
  EXPECT_EQ(tv::ReportError(kMsg, u"\u00e4"), 1);
  std::ifstream f(path, std::ios::binary);
  std::string bytes((std::istreambuf_iterator<char>(f)), {});
  std::u16string want = u"Lost a\r\nLost \u00e4\r\n";
  EXPECT_EQ(bytes, std::string(reinterpret_cast<const char *>(want.data()), want.size() * 2));

  // no log file: 2
  Tavona_SetErrorLogFile(u"");
  EXPECT_EQ(tv::ReportError(kMsg, u"a"), 2);
  std::remove(path.c_str());
}

TEST_F(ReportFixture, LogPathIsBounded) {
  std::u16string longPath(256, u'a');
  Tavona_SetErrorLogFile(longPath.c_str());
  EXPECT_EQ(tv::errorSettings.logPath[0], 0);
  longPath.resize(255);
  Tavona_SetErrorLogFile(longPath.c_str());
  EXPECT_EQ(std::u16string(tv::errorSettings.logPath), longPath);
}

TEST_F(ReportFixture, AllocationFailuresReport1300) {
  SetResString(IDS_ERR_OUT_OF_MEMORY, u"sO Out of memory");
  Tavona_SetErrorHandlerCallback(RecordingCallback);
  callbackCount = 0;
  tv::plat::host::SetFailAllocations(true);
  EXPECT_EQ(tv::AllocWideChars(10), nullptr);
  EXPECT_EQ(callbackCount, 1);
  EXPECT_EQ(lastCallbackText, u"Out of memory");
  tv::plat::host::SetFailAllocations(false);

  // byte sizes beyond 32 bits fail like an exhausted heap
  EXPECT_EQ(tv::AllocWideChars(0x80000000u), nullptr);
  EXPECT_EQ(callbackCount, 2);
}

}  // namespace
