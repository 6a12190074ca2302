tavona_sources(PORTABLE datetime/estimate.cpp EXPORTS datetime/exports.def)

tavona_test(estimate_tests SOURCES tests/test_dates_estimate.cpp)
