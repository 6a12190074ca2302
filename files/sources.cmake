tavona_sources(
  PORTABLE
    files/paths.cpp
    files/trace.cpp
    files/exif.cpp
  WINDOWS
    files/fileio.cpp
    files/exif_gdiplus.cpp
  WIN32_SEAM
    files/filesys_win32.cpp
  HOST_SEAM
    files/filesys_host.cpp
  EXPORTS
    files/exports.def)

tavona_test(files_paths_tests SOURCES tests/test_files_paths.cpp)
tavona_test(files_trace_tests HOST INTERNAL SOURCES tests/test_files_trace.cpp)
tavona_test(files_io_tests WINDOWS SOURCES tests/test_files_io.cpp)
tavona_test(files_exif_tests INTERNAL SOURCES tests/test_files_exif.cpp)

tavona_fuzz(fuzz_paths SOURCES fuzz/fuzz_paths.cpp)
tavona_fuzz(fuzz_exif SOURCES fuzz/fuzz_exif.cpp)

tavona_bench(bench_files SOURCES bench/bench_files.cpp)

# GDI+ is a system DLL like the others.
if(WIN32)
  cmake_language(DEFER CALL target_link_libraries tavona_static PUBLIC gdiplus)
endif()

# The EXIF tests read pictures that exiftool writes into the build tree
# before they run.
function(tavona_files_pictures)
  if(NOT TEST files_exif_tests)
    return()
  endif()
  set(dir ${CMAKE_BINARY_DIR}/pictures)
  add_test(NAME files_pictures COMMAND sh ${CMAKE_SOURCE_DIR}/tests/files_pictures.sh ${dir})
  set_tests_properties(files_pictures PROPERTIES FIXTURES_SETUP files_pictures)
  set_property(TEST files_exif_tests APPEND PROPERTY FIXTURES_REQUIRED files_pictures)
  if(WIN32)
    set(dir "Z:${dir}")
  endif()
  set_property(TEST files_exif_tests APPEND PROPERTY ENVIRONMENT "TAVONA_PICTURES=${dir}")
endfunction()
cmake_language(DEFER CALL tavona_files_pictures)

tavona_test(files_ui_tests WINDOWS UI SOURCES tests/test_files_ui.cpp)
