# The platform-free base: wide strings, the appender, the formatter and raw
# memory; the escape decoder and the keys of text translation. It includes
# nothing of the library above it.
tavona_sources(PORTABLE base/wstr.cpp base/format.cpp base/ltskey.cpp base/escape.cpp
               WIN32_SEAM base/sys_win32.cpp
               HOST_SEAM base/sys_host.cpp)
tavona_test(ltskey_tests HOST SOURCES tests/test_ltskey.cpp)
tavona_fuzz(fuzz_ltskey SOURCES fuzz/fuzz_ltskey.cpp)
