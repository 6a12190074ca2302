// The lock owner of frame/handles.h: a lock left behind breaks every later use.
#include <gtest/gtest.h>

#include "frame/handles.h"

namespace {

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
}

}  // namespace
