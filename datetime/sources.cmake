tavona_sources(
  PORTABLE
    datetime/estimate.cpp
    datetime/calendar.cpp
    datetime/formats.cpp
    datetime/formatparts.cpp
  WIN32_SEAM
    datetime/clock_win32.cpp
  HOST_SEAM
    datetime/clock_host.cpp
  EXPORTS
    datetime/exports.def)

tavona_test(estimate_tests SOURCES tests/test_dates_estimate.cpp)
tavona_test(dates_tests SOURCES tests/test_dates_calendar.cpp tests/test_dates_formats.cpp)
tavona_test(dates_internal_tests HOST INTERNAL SOURCES tests/test_dates_internal.cpp)
tavona_test(date_format_parts_tests HOST INTERNAL SOURCES tests/test_dates_formatparts.cpp)

tavona_fuzz(fuzz_dates_format SOURCES fuzz/fuzz_dates_format.cpp)
tavona_fuzz(fuzz_dates_parse SOURCES fuzz/fuzz_dates_parse.cpp)

tavona_bench(bench_dates SOURCES bench/bench_dates.cpp)
