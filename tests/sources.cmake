tavona_test(uidriver_tests WINDOWS UI SOURCES tests/test_uidriver.cpp)

# The build's own checks, each fed a fault it must name.
function(tavona_check_tests)
  if(WIN32 OR NOT TAVONA_RUN_TESTS OR TAVONA_FUZZ)
    return()
  endif()
  set(checks ${CMAKE_SOURCE_DIR}/tests/checks)
  add_test(NAME check_texts COMMAND ${CMAKE_COMMAND} -DRESOURCES=${checks}/texts
           "-DLANGUAGES=en|de" -DSTAMP=${CMAKE_BINARY_DIR}/check_texts.stamp
           -P ${CMAKE_SOURCE_DIR}/cmake/CheckTexts.cmake)
  # Names the language and the macro, and takes no identifier for a text.
  set_tests_properties(check_texts PROPERTIES
    PASS_REGULAR_EXPRESSION "language de does not define T_DEMO_LABEL \\(used in dialogs/demo.rc\\)"
    FAIL_REGULAR_EXPRESSION "T_TEST|T_TEXT|language en")
  add_test(NAME check_includes COMMAND ${CMAKE_COMMAND} -DROOT=${checks}/includes
           -P ${CMAKE_SOURCE_DIR}/cmake/CheckIncludes.cmake)
  set_tests_properties(check_includes PROPERTIES
    PASS_REGULAR_EXPRESSION "public.h: public header includes \"frame/alloc.h\".*text/sideways.cpp: includes \"../frame/alloc.h\" through ../"
    FAIL_REGULAR_EXPRESSION "\"tvbase.h\"|\"tavona/text.h\"|\"base/wstr.h\"")
  add_test(NAME check_upward_include COMMAND ${CMAKE_CXX_COMPILER} -std=c++20 -fsyntax-only
           -I${CMAKE_BINARY_DIR}/layers/frame -I${CMAKE_SOURCE_DIR}/include
           ${checks}/upward.cpp)
  set_tests_properties(check_upward_include PROPERTIES
    PASS_REGULAR_EXPRESSION "text/stack.h: No such file" FAIL_REGULAR_EXPRESSION "base/wstr.h")
endfunction()
cmake_language(DEFER CALL tavona_check_tests)
tavona_test(hostile_tests WINDOWS UI SOURCES tests/test_hostile.cpp)
