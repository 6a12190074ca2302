// The Windows side of the thread stack seam.
#include "text/stack.h"

#include <windows.h>

#include "frame/handles.h"

namespace tv::plat {

namespace {

struct Call {
  void (*fn)(void *);
  void *arg;
};

DWORD WINAPI Trampoline(void *p) {
  auto *call = static_cast<Call *>(p);
  call->fn(call->arg);
  return 0;
}

}  // namespace

const char *StackBottom() {
  // Windows 8 and later.
  static const auto limits = ProcAddress<VOID(WINAPI *)(PULONG_PTR, PULONG_PTR)>(
      GetModuleHandleW(L"kernel32.dll"), "GetCurrentThreadStackLimits");
  if (!limits) return nullptr;
  ULONG_PTR low = 0, high = 0;
  limits(&low, &high);
  return reinterpret_cast<const char *>(low);
}

bool RunWithStack(size_t stack, void (*fn)(void *), void *arg) {
  Call call{fn, arg};
  unique_handle thread(CreateThread(nullptr, stack, Trampoline, &call,
                                    STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr));
  if (!thread) return false;
  WaitForSingleObject(thread.get(), INFINITE);
  return true;
}

}  // namespace tv::plat
