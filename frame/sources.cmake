tavona_sources(
  PORTABLE
    frame/alloc.cpp
    frame/globals.cpp
    frame/report.cpp
    frame/lts.cpp
    frame/pairtables.cpp
    frame/misuse.cpp
  WINDOWS
    frame/dllmain.cpp
    frame/wndclasses.cpp
    frame/dialog.cpp
    frame/lts_windows.cpp
    frame/version.cpp
    frame/misuse_win32.cpp
  EXPORTS
    frame/exports.def)

tavona_test(frame_tests WINDOWS SOURCES tests/test_frame.cpp)
tavona_test(frame_internal_tests HOST INTERNAL SOURCES tests/test_frame_internal.cpp)
tavona_test(frame_handles_tests WINDOWS INTERNAL SOURCES tests/test_frame_handles.cpp)
tavona_test(frame_loading_tests WINDOWS UI DYNAMIC SOURCES tests/test_frame_loading.cpp)
tavona_sources(WINDOWS frame/optlib.cpp frame/report_win32.cpp
               WIN32_SEAM frame/platform_win32.cpp
               HOST_SEAM frame/platform_host.cpp)
tavona_test(messagebox_tests WINDOWS UI INTERNAL SOURCES tests/test_messagebox.cpp)
if(WIN32 AND TAVONA_RUN_TESTS)
  # The external error handler of the message box tests; the tests point
  # the registry at it.
  add_library(tvstub_handler SHARED tests/stub_handler.cpp)
  set_target_properties(tvstub_handler PROPERTIES PREFIX ""
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
  target_link_options(tvstub_handler PRIVATE -static -static-libgcc -static-libstdc++)
  cmake_language(DEFER CALL add_dependencies messagebox_tests tvstub_handler)
endif()
