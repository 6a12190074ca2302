tavona_sources(
  PORTABLE
    files/patterns.cpp
  WINDOWS
    files/dirwalk.cpp
    files/dirs.cpp
  EXPORTS
    files/exports_dirs.def)

tavona_test(files_patterns_tests HOST INTERNAL SOURCES tests/test_files_patterns.cpp)
tavona_test(files_dirs_tests WINDOWS UI SOURCES tests/test_files_dirs.cpp)
tavona_fuzz(fuzz_patterns SOURCES fuzz/fuzz_patterns.cpp)
tavona_bench(bench_dirs SOURCES bench/bench_dirs.cpp)
