cmake_minimum_required(VERSION 3.25)
# Fails when a source includes through "../" or a public header includes
# anything but another public header. Run by the build before the layers
# compile: cmake -DROOT=<source dir> -P CheckIncludes.cmake
file(GLOB_RECURSE sources
  ${ROOT}/base/* ${ROOT}/frame/* ${ROOT}/text/* ${ROOT}/settings/*
  ${ROOT}/datetime/* ${ROOT}/files/* ${ROOT}/translation/* ${ROOT}/controls/*
  ${ROOT}/printing/* ${ROOT}/include/* ${ROOT}/resources/* ${ROOT}/tests/*
  ${ROOT}/bench/* ${ROOT}/fuzz/* ${ROOT}/demo/*)
list(FILTER sources INCLUDE REGEX "\\.(h|c|cpp|rc|inc)$")
set(faults "")
foreach(f IN LISTS sources)
  file(STRINGS ${f} lines REGEX "^[ \t]*#[ \t]*include[ \t]*\"")
  file(RELATIVE_PATH rel ${ROOT} ${f})
  if(rel MATCHES "^tests/checks/")  # the faults the tests of these checks need
    continue()
  endif()
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "^[^\"]*\"([^\"]*)\".*" "\\1" inc "${line}")
    if(inc MATCHES "(^|/)\\.\\./")
      string(APPEND faults "${rel}: includes \"${inc}\" through ../\n")
    elseif(rel MATCHES "^include/tavona/" AND NOT EXISTS ${ROOT}/include/tavona/${inc}
           AND NOT (inc MATCHES "^tavona/" AND EXISTS ${ROOT}/include/${inc}))
      string(APPEND faults "${rel}: public header includes \"${inc}\"\n")
    endif()
  endforeach()
endforeach()
if(faults)
  message(FATAL_ERROR "Include faults:\n${faults}")
endif()
