tavona_sources(
  PORTABLE
    text/descriptors.cpp
    text/crypt.cpp
    text/hash.cpp
    text/regexp.cpp
  WINDOWS
    text/crypt_win32.cpp
    text/cryptdia.cpp
    text/hash_win32.cpp
  WIN32_SEAM
    text/stack_win32.cpp
  HOST_SEAM
    text/stack_host.cpp
  EXPORTS
    text/exports_data.def)

tavona_test(data_tests SOURCES tests/test_data.cpp)
tavona_test(data_internal_tests INTERNAL SOURCES tests/test_data_internal.cpp)
tavona_test(data_win_tests WINDOWS UI INTERNAL SOURCES tests/test_data_win.cpp)

tavona_fuzz(fuzz_descriptors SOURCES fuzz/fuzz_descriptors.cpp)
tavona_bench(bench_data SOURCES bench/bench_data.cpp)
# Not a ratio: run by hand (not named bench_*, so scripts/bench skips it).
tavona_bench(limits_regex SOURCES bench/limits_regex.cpp)
tavona_fuzz(fuzz_crypt SOURCES fuzz/fuzz_crypt.cpp)
