tavona_sources(PORTABLE controls/dibcheck.cpp
  WINDOWS controls/boxes.cpp controls/progress.cpp controls/smallwnd.cpp controls/winhelpers.cpp
  controls/hooks.cpp controls/bitmaps.cpp controls/picconv.cpp EXPORTS controls/exports.def)

tavona_test(controls_boxes_tests WINDOWS UI SOURCES tests/test_controls_boxes.cpp)
tavona_test(controls_progress_tests WINDOWS UI INTERNAL SOURCES tests/test_controls_progress.cpp)
tavona_test(controls_windows_tests WINDOWS UI INTERNAL SOURCES tests/test_controls_windows.cpp
  tests/test_controls_windows.rc)
if(WIN32 AND TAVONA_RUN_TESTS)
  # Two stand-ins for the picture conversion library, with and without its
  # entry; the tests copy one of them beside the test program.
  foreach(variant full noentry)
    add_library(tvstub_kv32_${variant} SHARED tests/stub_kv32.cpp)
    set_target_properties(tvstub_kv32_${variant} PROPERTIES PREFIX "" OUTPUT_NAME kv32
      RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin/kv32_${variant}
      ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib/kv32_${variant})
    target_link_options(tvstub_kv32_${variant} PRIVATE -static -static-libgcc -static-libstdc++
      -Wl,--kill-at)
    if(variant STREQUAL "noentry")
      target_compile_definitions(tvstub_kv32_${variant} PRIVATE KV32_NO_ENTRY)
    endif()
  endforeach()
  cmake_language(DEFER CALL add_dependencies controls_windows_tests tvstub_kv32_full
                 tvstub_kv32_noentry)
endif()
tavona_fuzz(fuzz_dib SOURCES fuzz/fuzz_dib.cpp)
