# The button bar and the wizard.
tavona_sources(PORTABLE controls/barcore.cpp
  WINDOWS controls/buttonbar.cpp controls/wizard.cpp
  EXPORTS controls/exports_windows.def)

tavona_test(buttonbar_core_tests HOST INTERNAL SOURCES tests/test_buttonbar_core.cpp)
tavona_test(buttonbar_tests WINDOWS UI INTERNAL SOURCES tests/test_buttonbar.cpp)
tavona_test(wizard_tests WINDOWS UI INTERNAL SOURCES tests/test_wizard.cpp tests/test_wizard.rc)
tavona_bench(bench_buttonbar SOURCES bench/bench_buttonbar.cpp)
