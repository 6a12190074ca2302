tavona_sources(PORTABLE text/numbers.cpp
               WINDOWS text/numdialogs.cpp
               EXPORTS text/exports_numbers.def)

tavona_test(number_tests SOURCES tests/test_numbers.cpp)
tavona_test(number_internal_tests INTERNAL SOURCES tests/test_numbers_internal.cpp)
tavona_test(number_dialog_tests WINDOWS UI SOURCES tests/test_numbers_dialogs.cpp)

tavona_fuzz(fuzz_numbers SOURCES fuzz/fuzz_numbers.cpp)

tavona_bench(bench_numbers SOURCES bench/bench_numbers.cpp)
