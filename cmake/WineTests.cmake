# Tests of the Windows build run under wine64: one private WINEPREFIX in the
# build tree, one Xvfb display and one persistent wineserver for the whole
# run (the wine_env fixture), one wine process per test executable.
enable_testing()

set(TAVONA_WINE_STATE ${CMAKE_BINARY_DIR}/wine)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_SOURCE_DIR}/scripts/wine-run ${TAVONA_WINE_STATE})
set(TAVONA_SCREENSHOTS ${CMAKE_BINARY_DIR}/screenshots)

set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(gtest_disable_pthreads ON CACHE BOOL "" FORCE)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)

add_test(NAME wine_env_start
         COMMAND ${CMAKE_SOURCE_DIR}/scripts/wine-env start ${TAVONA_WINE_STATE})
add_test(NAME wine_env_stop
         COMMAND ${CMAKE_SOURCE_DIR}/scripts/wine-env stop ${TAVONA_WINE_STATE})
set_tests_properties(wine_env_start PROPERTIES FIXTURES_SETUP wine_env)
set_tests_properties(wine_env_stop PROPERTIES FIXTURES_CLEANUP wine_env)

# A private CUPS scheduler with one PDF printer for the printing tests
# (scripts/cups-env; without cupsd the tests skip what needs a printer).
set(TAVONA_CUPS_STATE ${CMAKE_BINARY_DIR}/cups)
add_test(NAME cups_env_start
         COMMAND ${CMAKE_SOURCE_DIR}/scripts/cups-env start ${TAVONA_CUPS_STATE})
add_test(NAME cups_env_stop
         COMMAND ${CMAKE_SOURCE_DIR}/scripts/cups-env stop ${TAVONA_CUPS_STATE})
set_tests_properties(cups_env_start PROPERTIES FIXTURES_SETUP cups_env)
set_tests_properties(cups_env_stop PROPERTIES FIXTURES_CLEANUP cups_env)

if(EXISTS ${CMAKE_SOURCE_DIR}/tests/uidriver.cpp)
add_library(tavona_uidriver STATIC ${CMAKE_SOURCE_DIR}/tests/uidriver.cpp
            ${CMAKE_SOURCE_DIR}/tests/png.cpp)
target_include_directories(tavona_uidriver PUBLIC ${CMAKE_SOURCE_DIR}/tests
                           ${CMAKE_SOURCE_DIR}/include)
target_link_libraries(tavona_uidriver PUBLIC GTest::gtest user32 gdi32)
endif()

function(tavona_wine_test name)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    FIXTURES_REQUIRED wine_env
    ENVIRONMENT "TAVONA_SCREENSHOT_DIR=Z:${TAVONA_SCREENSHOTS};TAVONA_SOURCE_DIR=Z:${CMAKE_SOURCE_DIR}")
endfunction()

get_property(tests GLOBAL PROPERTY TAVONA_TESTS)
foreach(name IN LISTS tests)
  get_property(where GLOBAL PROPERTY TAVONA_TEST_${name}_WHERE)
  if(where STREQUAL "HOST")
    continue()
  endif()
  get_property(srcs GLOBAL PROPERTY TAVONA_TEST_${name}_SOURCES)
  get_property(ui GLOBAL PROPERTY TAVONA_TEST_${name}_UI)
  get_property(internal GLOBAL PROPERTY TAVONA_TEST_${name}_INTERNAL)
  get_property(dynamic GLOBAL PROPERTY TAVONA_TEST_${name}_DYNAMIC)
  get_property(printer GLOBAL PROPERTY TAVONA_TEST_${name}_PRINTER)
  add_executable(${name} ${srcs})
  if(internal)
    target_link_libraries(${name} PRIVATE tavona_static)
  elseif(dynamic)
    add_dependencies(${name} tavona32)
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/include)
  else()
    target_link_libraries(${name} PRIVATE tavona32)
  endif()
  target_link_libraries(${name} PRIVATE GTest::gtest_main)
  if(ui)
    target_link_libraries(${name} PRIVATE tavona_uidriver)
  endif()
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests
                             ${CMAKE_SOURCE_DIR}/resources)
  tavona_wine_test(${name})
  if(printer)
    set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED "wine_env;cups_env")
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
                 "CUPS_SERVER=${TAVONA_CUPS_STATE}/cups.sock"
                 "TAVONA_PRINT_OUT=Z:${TAVONA_CUPS_STATE}/out")
  endif()
endforeach()

# A C program built against the installed tree with find_package.
add_test(NAME install_consumer
         COMMAND ${CMAKE_COMMAND} -DBUILD=${CMAKE_BINARY_DIR}
                 -DSOURCE=${CMAKE_SOURCE_DIR}
                 -DTOOLCHAIN=${CMAKE_TOOLCHAIN_FILE}
                 -DWINE_RUN=${CMAKE_SOURCE_DIR}/scripts/wine-run
                 -DWINE_STATE=${TAVONA_WINE_STATE}
                 -P ${CMAKE_SOURCE_DIR}/tests/consumer/RunConsumer.cmake)
set_tests_properties(install_consumer PROPERTIES FIXTURES_REQUIRED wine_env)
