# Registration helpers used by each subsystem's sources.cmake. Subsystems only
# declare what they have; the top-level CMakeLists.txt builds it for the
# current target (Windows DLL or host core).

# tavona_sources(PORTABLE <files>... WINDOWS <files>... EXPORTS <def fragment>...
#                WIN32_SEAM <files>... HOST_SEAM <files>...)
#   PORTABLE:   builds everywhere (the DLL and the host core)
#   WINDOWS:    needs windows, registry or resources; DLL only
#   EXPORTS:    .def fragments listing the exported names, one per line
#   WIN32_SEAM: the Windows side of a subsystem's platform seam (DLL only)
#   HOST_SEAM:  the host build's side of the same seam (host core only)
function(tavona_sources)
  cmake_parse_arguments(A "" "" "PORTABLE;WINDOWS;EXPORTS;WIN32_SEAM;HOST_SEAM" ${ARGN})
  list(APPEND A_WINDOWS ${A_WIN32_SEAM})
  set(A_HOST ${A_HOST_SEAM})
  foreach(kind PORTABLE WINDOWS EXPORTS HOST)
    foreach(f IN LISTS A_${kind})
      set_property(GLOBAL APPEND PROPERTY TAVONA_${kind} ${CMAKE_SOURCE_DIR}/${f})
    endforeach()
  endforeach()
endfunction()

# tavona_test(<name> [HOST] [WINDOWS] [UI] [INTERNAL] SOURCES <files>...)
#   HOST / WINDOWS: where the executable is built (both when neither is given).
#   UI: drives windows through the UI driver (needs the display fixture).
#   INTERNAL: links the static core to reach routines that are not exported
#             (host: always; Windows: instead of the DLL).
#   DYNAMIC:  Windows only; links no part of the library but loads copies of
#             tavona32.dll at run time.
#   PRINTER:  Windows only; runs with the private CUPS printer (cups_env).
function(tavona_test name)
  cmake_parse_arguments(A "HOST;WINDOWS;UI;INTERNAL;DYNAMIC;PRINTER" "" "SOURCES" ${ARGN})
  set_property(GLOBAL APPEND PROPERTY TAVONA_TESTS ${name})
  set(where BOTH)
  if(A_HOST AND NOT A_WINDOWS)
    set(where HOST)
  elseif(A_WINDOWS AND NOT A_HOST)
    set(where WINDOWS)
  endif()
  list(TRANSFORM A_SOURCES PREPEND ${CMAKE_SOURCE_DIR}/)
  set_property(GLOBAL PROPERTY TAVONA_TEST_${name}_WHERE ${where})
  set_property(GLOBAL PROPERTY TAVONA_TEST_${name}_UI ${A_UI})
  set_property(GLOBAL PROPERTY TAVONA_TEST_${name}_INTERNAL ${A_INTERNAL})
  set_property(GLOBAL PROPERTY TAVONA_TEST_${name}_DYNAMIC ${A_DYNAMIC})
  set_property(GLOBAL PROPERTY TAVONA_TEST_${name}_PRINTER ${A_PRINTER})
  set_property(GLOBAL PROPERTY TAVONA_TEST_${name}_SOURCES ${A_SOURCES})
endfunction()

# tavona_fuzz(<name> SOURCES <files>...): a libFuzzer target of the fuzz preset.
function(tavona_fuzz name)
  cmake_parse_arguments(A "" "" "SOURCES" ${ARGN})
  list(TRANSFORM A_SOURCES PREPEND ${CMAKE_SOURCE_DIR}/)
  set_property(GLOBAL APPEND PROPERTY TAVONA_FUZZERS ${name})
  set_property(GLOBAL PROPERTY TAVONA_FUZZ_${name}_SOURCES ${A_SOURCES})
endfunction()

# tavona_bench(<name> SOURCES <files>...): a benchmark that prints ratios
# against a reference implementation. Built optimised in the win64 preset
# (linked with the static core) and run under wine by scripts/test.
function(tavona_bench name)
  cmake_parse_arguments(A "" "" "SOURCES" ${ARGN})
  list(TRANSFORM A_SOURCES PREPEND ${CMAKE_SOURCE_DIR}/)
  set_property(GLOBAL APPEND PROPERTY TAVONA_BENCHES ${name})
  set_property(GLOBAL PROPERTY TAVONA_BENCH_${name}_SOURCES ${A_SOURCES})
endfunction()

# The layers from the bottom up. A layer's files include only their own layer
# and the ones below it (plus include/ and resources/): each layer compiles as
# an OBJECT library whose include root under the build folder holds links to
# the allowed folders alone, so an upward include does not compile.
set(TAVONA_LAYERS base frame text settings datetime files translation controls printing)

# tavona_library(<name> <sources>...): the static core from the registered
# sources, one OBJECT library tavona_<layer> per folder that has code.
# Tests, benchmarks, fuzzers and the demo link <name>, which sees the tree.
function(tavona_library name)
  set(rest ${ARGN})
  set(allowed "")
  set(objects "")
  foreach(layer IN LISTS TAVONA_LAYERS)
    if(IS_DIRECTORY ${CMAKE_SOURCE_DIR}/${layer})
      list(APPEND allowed ${layer})
    endif()
    set(mine ${rest})
    list(FILTER mine INCLUDE REGEX "^${CMAKE_SOURCE_DIR}/${layer}/")
    list(FILTER rest EXCLUDE REGEX "^${CMAKE_SOURCE_DIR}/${layer}/")
    if(NOT mine)
      continue()
    endif()
    set(root ${CMAKE_BINARY_DIR}/layers/${layer})
    file(REMOVE_RECURSE ${root})
    file(MAKE_DIRECTORY ${root})
    foreach(below IN LISTS allowed)
      file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${below} ${root}/${below} SYMBOLIC)
    endforeach()
    add_library(tavona_${layer} OBJECT ${mine})
    target_include_directories(tavona_${layer} PRIVATE
      ${root} ${CMAKE_SOURCE_DIR}/include ${CMAKE_SOURCE_DIR}/resources)
    add_dependencies(tavona_${layer} tavona_include_check)
    list(APPEND objects $<TARGET_OBJECTS:tavona_${layer}>)
  endforeach()
  if(rest)
    message(FATAL_ERROR "Not in a layer folder (${TAVONA_LAYERS}): ${rest}")
  endif()
  # No "../" includes anywhere, public headers include public headers only.
  add_custom_target(tavona_include_check
    COMMAND ${CMAKE_COMMAND} -DROOT=${CMAKE_SOURCE_DIR}
            -P ${CMAKE_SOURCE_DIR}/cmake/CheckIncludes.cmake
    VERBATIM)
  add_library(${name} STATIC ${objects})
  target_include_directories(${name} PUBLIC
    ${CMAKE_SOURCE_DIR}/include ${CMAKE_SOURCE_DIR}/resources ${CMAKE_SOURCE_DIR})
endfunction()
