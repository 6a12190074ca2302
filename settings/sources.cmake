tavona_sources(WINDOWS settings/registry.cpp EXPORTS settings/exports.def)

tavona_test(settings_tests WINDOWS UI SOURCES tests/test_settings.cpp)

tavona_bench(bench_registry SOURCES bench/bench_registry.cpp)
