tavona_sources(
  PORTABLE
    frame/alloc.cpp
    frame/globals.cpp
    frame/report.cpp
    translation/lts_core.cpp
  WINDOWS
    frame/dllmain.cpp
    frame/wndclasses.cpp
    frame/dialog.cpp
    frame/version.cpp
    controls/wndproc_stubs.cpp
  EXPORTS
    frame/exports.def)

tavona_test(frame_tests WINDOWS SOURCES tests/test_frame.cpp)
tavona_test(frame_internal_tests HOST INTERNAL SOURCES tests/test_frame_internal.cpp)
tavona_test(frame_loading_tests WINDOWS UI DYNAMIC SOURCES tests/test_frame_loading.cpp)
