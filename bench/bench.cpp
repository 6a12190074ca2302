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
  while (Batch(fn, reps) * reps < 0.02 && reps < (1L << 30)) reps *= 2;
  return reps;
}

}  // namespace

void Compare(const char *name, const std::function<void()> &library,
             const std::function<void()> &reference, double maxRatio, int rounds) {
  long libReps = Calibrate(library), refReps = Calibrate(reference);
  double lib = 1e300, ref = 1e300, ratio = 0;
  // Many short interleaved rounds, best of each: on a busy machine each side
  // still gets some undisturbed batches. A ratio above the limit is measured
  // up to three more times, keeping the best of all batches, so that a busy
  // stretch does not fail the run while a slow routine still does.
  for (int attempt = 0; attempt < 4; ++attempt) {
    for (int round = 0; round < 3 * rounds; ++round) {
      lib = std::min(lib, Batch(library, libReps));
      ref = std::min(ref, Batch(reference, refReps));
    }
    ratio = ref > 0 ? lib / ref : 0;
    if (maxRatio <= 0 || ratio <= maxRatio) break;
  }
  std::printf("%s: ratio %.2f (library / reference; %.3g s / %.3g s)\n", name, ratio, lib, ref);
  if (maxRatio > 0 && ratio > maxRatio) {
    std::printf("%s: above the limit of %.2f\n", name, maxRatio);
    ++failures;
  }
  std::fflush(stdout);
}

int ExitCode() { return failures ? 1 : 0; }

}  // namespace bench
