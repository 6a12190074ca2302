tavona_sources(PORTABLE text/strings.cpp
               EXPORTS text/exports.def)

tavona_test(text_tests SOURCES tests/test_text_strings.cpp)
tavona_test(text_internal_tests INTERNAL SOURCES tests/test_text_format.cpp)

tavona_fuzz(fuzz_scanstring SOURCES fuzz/fuzz_scanstring.cpp)
tavona_fuzz(fuzz_replace SOURCES fuzz/fuzz_replace.cpp)
tavona_fuzz(fuzz_digits SOURCES fuzz/fuzz_digits.cpp)
tavona_fuzz(fuzz_hex SOURCES fuzz/fuzz_hex.cpp)
tavona_fuzz(fuzz_format SOURCES fuzz/fuzz_format.cpp)

tavona_bench(bench_strings SOURCES bench/bench_strings.cpp)

tavona_sources(PORTABLE text/escapes.cpp text/lists.cpp)
tavona_test(escape_tests SOURCES tests/test_text_escapes.cpp)
tavona_test(pair_tests SOURCES tests/test_pairtables.cpp)
tavona_fuzz(fuzz_escape_roundtrip SOURCES fuzz/fuzz_escape_roundtrip.cpp)
tavona_fuzz(fuzz_decode_lists SOURCES fuzz/fuzz_decode_lists.cpp)
