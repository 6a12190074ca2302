tavona_sources(PORTABLE controls/listtext.cpp
  WINDOWS controls/listview.cpp controls/regedit.cpp controls/recent.cpp
  EXPORTS controls/exports_lists.def)

tavona_test(controls_listtext_tests HOST SOURCES tests/test_controls_listtext.cpp)
tavona_test(controls_listview_tests WINDOWS UI SOURCES tests/test_controls_listview.cpp)
tavona_test(controls_regedit_tests WINDOWS UI SOURCES tests/test_controls_regedit.cpp)

tavona_fuzz(fuzz_listfile SOURCES fuzz/fuzz_listfile.cpp)
tavona_bench(bench_lists SOURCES bench/bench_lists.cpp)
