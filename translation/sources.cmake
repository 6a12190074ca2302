tavona_sources(PORTABLE translation/catalog.cpp
  WINDOWS translation/assist.cpp translation/catalog_win32.cpp
  EXPORTS translation/exports.def)

tavona_test(catalog_tests HOST SOURCES tests/test_lts_catalog.cpp)
tavona_test(lts_tests WINDOWS UI SOURCES tests/test_lts.cpp tests/test_lts.rc)
tavona_fuzz(fuzz_po SOURCES fuzz/fuzz_po.cpp)
tavona_bench(bench_lts SOURCES bench/bench_lts.cpp)
if(WIN32 AND TAVONA_RUN_TESTS)
  # gettext's own check of the templates and the German catalog that
  # lts_tests writes.
  find_program(TAVONA_MSGFMT msgfmt)
  if(TAVONA_MSGFMT)
    add_test(NAME lts_msgfmt COMMAND sh -c
      "for f in lts_library.pot lts_example.pot lts_example_de.po; do ${TAVONA_MSGFMT} --check -o /dev/null $f || exit 1; done"
      WORKING_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
    set_tests_properties(lts_msgfmt PROPERTIES DEPENDS lts_tests)
  endif()
endif()
