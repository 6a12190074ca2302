// The tracer: channels chosen by TAVONA_TRACE, records to the debugger
// output and as UTF-8 lines to TAVONA_TRACE_FILE.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>

#include "files/tracer.h"
#include "testutil.h"

namespace {

const char kLog[] = "files_trace_test.log";
const char16_t kPrint[] = u"Vel.Framework.Print";

std::string ReadLog() {
  std::stringstream s;
  s << std::ifstream(kLog, std::ios::binary).rdbuf();
  return s.str();
}

class Trace : public ::testing::Test {
 protected:
  void SetUp() override {
    std::remove(kLog);
    unsetenv("TAVONA_TRACE");
    unsetenv("TAVONA_TRACE_FILE");
  }
  void TearDown() override { SetUp(); }
};

TEST_F(Trace, ChannelsNamedInTheEnvironment) {
  struct Row { const char *env; const char16_t *channel; bool enabled; };  // env null: not set
  const Row rows[] = {
      {nullptr, kPrint, false}, {"*", nullptr, false}, {",,*", kPrint, true},
      {"Other, Vel.Framework.Print ,More", kPrint, true},
      {"Vel.Framework", kPrint, false}, {"Vel.Framework.Print.X", kPrint, false},  // whole names
  };
  for (const Row &r : rows) {
    if (r.env) setenv("TAVONA_TRACE", r.env, 1);
    if (!r.env) unsetenv("TAVONA_TRACE");
    EXPECT_EQ(vel::Tracer::Enabled(r.channel), r.enabled)
        << "TAVONA_TRACE=" << (r.env ? r.env : "(unset)") << " channel " << Narrow(r.channel);
  }
}

TEST_F(Trace, RecordGoesToDebuggerAndFile) {
  setenv("TAVONA_TRACE", "Vel.Framework.Print", 1);
  int lines = DebugLines();
  setenv("TAVONA_TRACE_FILE", kLog, 1);
  vel::Tracer::Trace(kPrint, 3, 1021, "file", 42, u"Open File: C:\\\u00c4rger\\\u20ac.txt");
  vel::Tracer::Trace(kPrint, 3, 1021, "file", 43, u"Open File: \U0001F600\xD800x");
  EXPECT_EQ(DebugLines(), lines + 2);
  const std::string written =
      "Vel.Framework.Print [3/1021] file(42): Open File: C:\\\xC3\x84rger\\\xE2\x82\xAC.txt\r\n"
      "Vel.Framework.Print [3/1021] file(43): Open File: \xF0\x9F\x98\x80\xEF\xBF\xBDx\r\n";
  EXPECT_EQ(ReadLog(), written);
}

// Cut to the line buffer, never inside a character.
TEST_F(Trace, LongMessagesAreCutWhole) {
  setenv("TAVONA_TRACE", "*", 1);
  setenv("TAVONA_TRACE_FILE", kLog, 1);
  vel::Tracer::Trace(u"C", 1, 2, "f", 3, std::u16string(5000, u'\u20ac').c_str());
  std::string log = ReadLog(), head = "C [1/2] f(3): ";
  ASSERT_GE(log.size(), head.size() + 2);
  EXPECT_EQ(log.substr(log.size() - 2), "\r\n");
  EXPECT_EQ(log.substr(0, head.size()), head);
  EXPECT_EQ(log.size() - 2 - head.size(), 3u * (tv::kTraceLineSize - 1 - head.size()));
}

}  // namespace
