// The text layer's seam: thread stacks for the regular expression matcher,
// whose recursion depth follows the text. stack_win32.cpp, stack_host.cpp.
#pragma once

#include <cstddef>

namespace tv::plat {

// The lowest address of the calling thread's stack; null when the platform
// cannot tell (then every search takes a thread of its own).
const char *StackBottom();

// Runs fn(arg) on a new thread with stack bytes of stack reserved and waits
// for it; false when the thread cannot start.
bool RunWithStack(size_t stack, void (*fn)(void *), void *arg);

}  // namespace tv::plat
