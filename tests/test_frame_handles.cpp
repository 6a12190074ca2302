// The owners of frame/handles.h that guard a state rather than a handle.
#include <gtest/gtest.h>

#include "frame/handles.h"

namespace {

TEST(Handles, ScopeExitRunsUnlessReleased) {
  int runs = 0;
  {
    tv::scope_exit bump([&] { ++runs; });
  }
  {
    tv::scope_exit kept([&] { ++runs; });
    kept.release();
  }
  EXPECT_EQ(runs, 1);
}

TEST(Handles, GlobalLockUnlocksAtTheEnd) {
  tv::unique_hglobal memory(GlobalAlloc(GMEM_MOVEABLE, 16));
  ASSERT_TRUE(memory);
  {
    tv::global_lock<BYTE> locked(memory.get());
    ASSERT_TRUE(locked);
    EXPECT_GE(locked.size(), 16u);
    locked.get()[15] = 7;
    EXPECT_EQ(GlobalFlags(memory.get()) & GMEM_LOCKCOUNT, 1u);
  }
  EXPECT_EQ(GlobalFlags(memory.get()) & GMEM_LOCKCOUNT, 0u);
  tv::global_lock<BYTE> none(nullptr);
  EXPECT_FALSE(none);
  EXPECT_EQ(none.size(), 0u);
}

TEST(Handles, SelectObjectRestoresThePrevious) {
  tv::unique_hdc dc(CreateCompatibleDC(nullptr));
  ASSERT_TRUE(dc);
  HGDIOBJ before = GetCurrentObject(dc.get(), OBJ_FONT);
  HGDIOBJ font = GetStockObject(ANSI_VAR_FONT);
  ASSERT_NE(before, font);
  {
    tv::select_object guard(dc.get(), font);
    EXPECT_EQ(GetCurrentObject(dc.get(), OBJ_FONT), font);
  }
  EXPECT_EQ(GetCurrentObject(dc.get(), OBJ_FONT), before);
}

TEST(Handles, ProcAddressIsTyped) {
  HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
  auto pid = tv::ProcAddress<DWORD(WINAPI *)()>(kernel, "GetCurrentProcessId");
  ASSERT_NE(pid, nullptr);
  EXPECT_EQ(pid(), GetCurrentProcessId());
  EXPECT_EQ(tv::ProcAddress<DWORD(WINAPI *)()>(kernel, "NoSuchEntry"), nullptr);
  EXPECT_EQ(tv::ProcAddress<DWORD(WINAPI *)()>(nullptr, "GetCurrentProcessId"), nullptr);
}

}  // namespace
