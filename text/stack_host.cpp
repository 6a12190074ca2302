// The host side of the thread stack seam (POSIX threads).
#include "text/stack.h"

#include <pthread.h>

namespace tv::plat {

namespace {

struct Call {
  void (*fn)(void *);
  void *arg;
};

void *Trampoline(void *p) {
  auto *call = static_cast<Call *>(p);
  call->fn(call->arg);
  return nullptr;
}

}  // namespace

const char *StackBottom() {
  pthread_attr_t attr;
  if (pthread_getattr_np(pthread_self(), &attr) != 0) return nullptr;
  void *addr = nullptr;
  size_t size = 0;
  int rc = pthread_attr_getstack(&attr, &addr, &size);
  pthread_attr_destroy(&attr);
  return rc == 0 ? static_cast<const char *>(addr) : nullptr;
}

bool RunWithStack(size_t stack, void (*fn)(void *), void *arg) {
  Call call{fn, arg};
  pthread_attr_t attr;
  if (pthread_attr_init(&attr) != 0) return false;
  pthread_t thread;
  bool started = pthread_attr_setstacksize(&attr, stack) == 0 &&
                 pthread_create(&thread, &attr, Trampoline, &call) == 0;
  pthread_attr_destroy(&attr);
  if (started) pthread_join(thread, nullptr);
  return started;
}

}  // namespace tv::plat
