tavona_sources(PORTABLE translation/catalog.cpp
  WINDOWS translation/assist.cpp translation/catalog_win32.cpp
  EXPORTS translation/exports.def)

tavona_test(catalog_tests HOST SOURCES tests/test_lts_catalog.cpp)
tavona_test(lts_tests WINDOWS UI SOURCES tests/test_lts.cpp tests/test_lts.rc)
tavona_fuzz(fuzz_po SOURCES fuzz/fuzz_po.cpp)
tavona_bench(bench_lts SOURCES bench/bench_lts.cpp)
