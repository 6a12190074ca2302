// A tiny benchmark harness: times the library's routine against a plain
// reference doing the same work and prints the ratio, so results compare
// across machines and under wine.
#pragma once

#include <functional>

namespace bench {

// Prints "name: ratio X.XX (library / reference; seconds per call of
// each)". A ratio above maxRatio (0: none) is reported and makes ExitCode()
// non-zero. Each side is calibrated to batches of about 20 ms, then runs
// 3 * rounds batches (interleaved, best of each); slow work such as copying
// trees takes fewer rounds.
void Compare(const char *name, const std::function<void()> &library,
             const std::function<void()> &reference, double maxRatio = 0, int rounds = 5);

int ExitCode();

}  // namespace bench
