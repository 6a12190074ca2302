// The automation helper's two creation failures and their text.
#include <gtest/gtest.h>

#include "settings/automation.h"
#include "testutil.h"

namespace {

TEST(Automation, CreationFailuresAreWritten) {
  ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
  {
    tv::Automation none = tv::Automation::Create(L"No.Such.Program.4711");
    EXPECT_FALSE(none);
    EXPECT_STREQ(tv::AutomationError(), L"CLSIDFromProgID failed with 0x800401F3");
    // Registered, but only in process: no local server to start.
    tv::Automation inproc = tv::Automation::Create(L"Scripting.Dictionary", true);
    EXPECT_FALSE(inproc);
    std::wstring text = tv::AutomationError();
    EXPECT_EQ(text.rfind(L"CoCreateInstance failed with 0x8", 0), 0u) << Narrow(text);
    EXPECT_EQ(text.size(), 39u) << Narrow(text);
    // An empty helper refuses every call.
    EXPECT_EQ(inproc.Call(L"Quit"), E_INVALIDARG);
    inproc.Quit();
  }
  CoUninitialize();
}

}  // namespace
