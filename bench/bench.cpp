#include "bench.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace bench {
namespace {

int failures = 0;

// Seconds per call: repetitions double until one batch lasts long enough.
double Batch(const std::function<void()> &fn, long reps) {
  auto start = std::chrono::steady_clock::now();
  for (long i = 0; i < reps; ++i) fn();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / reps;
}

long Calibrate(const std::function<void()> &fn) {
  long reps = 1;
  while (Batch(fn, reps) * reps < 0.05 && reps < (1L << 30)) reps *= 2;
  return reps;
}

}  // namespace

void Compare(const char *name, const std::function<void()> &library,
             const std::function<void()> &reference, double maxRatio, int rounds) {
  long libReps = Calibrate(library), refReps = Calibrate(reference);
  double lib = 1e300, ref = 1e300;
  // Interleaved rounds, best of each, so that a busy moment hits both.
  for (int round = 0; round < rounds; ++round) {
    lib = std::min(lib, Batch(library, libReps));
    ref = std::min(ref, Batch(reference, refReps));
  }
  double ratio = ref > 0 ? lib / ref : 0;
  std::printf("%s: ratio %.2f (library / reference; %.3g s / %.3g s)\n", name, ratio, lib, ref);
  if (maxRatio > 0 && ratio > maxRatio) {
    std::printf("%s: above the limit of %.2f\n", name, maxRatio);
    ++failures;
  }
  std::fflush(stdout);
}

int ExitCode() { return failures ? 1 : 0; }

}  // namespace bench
