# Windows build: tavona32.dll, its resource libraries, the import libraries,
# installation, the tests under wine, the benchmarks and the demo.
enable_language(RC)
set(CMAKE_RC_FLAGS "${CMAKE_RC_FLAGS} -c 65001")

set(TAVONA_BIN ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${TAVONA_BIN})
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

add_compile_definitions(UNICODE _UNICODE _WIN32_WINNT=0x0601 WINVER=0x0601
                        NOMINMAX STRICT)
# Everything is linked statically except Windows system DLLs (msvcrt included).
add_link_options(-static -static-libgcc -static-libstdc++)

set(TAVONA_SYSTEM_LIBS user32 gdi32 comdlg32 comctl32 shell32 advapi32 version
    ole32 oleaut32 uuid shlwapi winspool)

tavona_library(tavona_static ${TAVONA_PORTABLE} ${TAVONA_WINDOWS})
target_link_libraries(tavona_static PUBLIC ${TAVONA_SYSTEM_LIBS})

# Module definition file from the subsystems' fragments.
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86")
  set(TAVONA_DLLTOOL_MACHINE i386)
else()
  set(TAVONA_DLLTOOL_MACHINE i386:x86-64)
endif()
find_program(TAVONA_NM ${TAVONA_TRIPLET}-nm REQUIRED)
find_program(TAVONA_DLLTOOL ${TAVONA_TRIPLET}-dlltool REQUIRED)
string(REPLACE ";" "|" fragments "${TAVONA_EXPORTS}")
set(TAVONA_DEF ${CMAKE_BINARY_DIR}/tavona32.def)
add_custom_command(
  OUTPUT ${TAVONA_DEF}
  COMMAND ${CMAKE_COMMAND} -DNM=${TAVONA_NM} -DARCHIVE=$<TARGET_FILE:tavona_static>
          -DOUTPUT=${TAVONA_DEF} "-DFRAGMENTS=${fragments}"
          -P ${CMAKE_SOURCE_DIR}/cmake/MakeDef.cmake
  DEPENDS tavona_static ${TAVONA_EXPORTS} ${CMAKE_SOURCE_DIR}/cmake/MakeDef.cmake
  COMMENT "Writing tavona32.def"
  VERBATIM)

configure_file(frame/version.h.in ${CMAKE_BINARY_DIR}/generated/tavona_version.h @ONLY)
add_library(tavona32 SHARED ${CMAKE_SOURCE_DIR}/frame/version.rc ${TAVONA_DEF})
set_source_files_properties(${CMAKE_SOURCE_DIR}/frame/version.rc PROPERTIES
  INCLUDE_DIRECTORIES ${CMAKE_BINARY_DIR}/generated)
target_link_libraries(tavona32 PRIVATE $<LINK_LIBRARY:WHOLE_ARCHIVE,tavona_static>)
target_link_libraries(tavona32 PUBLIC ${TAVONA_SYSTEM_LIBS})
target_link_options(tavona32 PRIVATE -Wl,--kill-at)
set_target_properties(tavona32 PROPERTIES PREFIX "" OUTPUT_NAME tavona32
  LINKER_LANGUAGE CXX LINK_DEPENDS ${TAVONA_DEF})
target_include_directories(tavona32 INTERFACE
  $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}/include>
  $<INSTALL_INTERFACE:include>)

# The linker's own import library would name the undecorated symbols; on
# 32-bit x86 callers' compilers emit the decorated ones, so dlltool writes it
# from the decorated definitions instead (on both architectures alike).
add_custom_command(TARGET tavona32 POST_BUILD
  COMMAND ${TAVONA_DLLTOOL} -m ${TAVONA_DLLTOOL_MACHINE} -k -d ${TAVONA_DEF}
          -D tavona32.dll -l $<TARGET_LINKER_FILE:tavona32>
  VERBATIM)

# The import library for MSVC callers, from the same definitions.
set(TAVONA_MSVC_LIB ${CMAKE_BINARY_DIR}/lib/tavona32.lib)
add_custom_command(
  OUTPUT ${TAVONA_MSVC_LIB}
  COMMAND ${TAVONA_DLLTOOL} -m ${TAVONA_DLLTOOL_MACHINE} -k -d ${TAVONA_DEF}
          -D tavona32.dll -l ${TAVONA_MSVC_LIB}
  DEPENDS ${TAVONA_DEF} tavona32
  VERBATIM)
add_custom_target(tavona32_msvc_lib ALL DEPENDS ${TAVONA_MSVC_LIB})

# Resource libraries, one per language, in <bin>/<lang>/tavona32Res.dll.
set(TAVONA_LANGUAGES en de)
file(GLOB_RECURSE TAVONA_RC_DEPS CONFIGURE_DEPENDS
     ${CMAKE_SOURCE_DIR}/resources/*.rc ${CMAKE_SOURCE_DIR}/resources/*.h
     ${CMAKE_SOURCE_DIR}/resources/*.bmp ${CMAKE_SOURCE_DIR}/resources/*.cur)
# Every text macro of the shared layouts is defined in every language.
string(REPLACE ";" "|" languages "${TAVONA_LANGUAGES}")
add_custom_command(
  OUTPUT ${CMAKE_BINARY_DIR}/texts_checked.stamp
  COMMAND ${CMAKE_COMMAND} -DRESOURCES=${CMAKE_SOURCE_DIR}/resources "-DLANGUAGES=${languages}"
          -DSTAMP=${CMAKE_BINARY_DIR}/texts_checked.stamp
          -P ${CMAKE_SOURCE_DIR}/cmake/CheckTexts.cmake
  DEPENDS ${TAVONA_RC_DEPS} ${CMAKE_SOURCE_DIR}/cmake/CheckTexts.cmake
  COMMENT "Checking the dialog texts of every language"
  VERBATIM)
add_custom_target(tavona_texts_check DEPENDS ${CMAKE_BINARY_DIR}/texts_checked.stamp)
foreach(lang IN LISTS TAVONA_LANGUAGES)
  set(t tavona32Res_${lang})
  add_library(${t} SHARED ${CMAKE_SOURCE_DIR}/resources/${lang}/tavona32Res.rc)
  set_source_files_properties(${CMAKE_SOURCE_DIR}/resources/${lang}/tavona32Res.rc
    PROPERTIES OBJECT_DEPENDS "${TAVONA_RC_DEPS}"
    INCLUDE_DIRECTORIES "${CMAKE_SOURCE_DIR}/resources;${CMAKE_SOURCE_DIR}/resources/${lang}")
  set_target_properties(${t} PROPERTIES PREFIX "" OUTPUT_NAME tavona32Res
    LINKER_LANGUAGE C RUNTIME_OUTPUT_DIRECTORY ${TAVONA_BIN}/${lang}
    ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib/${lang})
  # Resource only: no code, no C runtime, no entry point.
  target_link_options(${t} PRIVATE -nostdlib -Wl,-e,0)
  set_property(TARGET ${t} PROPERTY LINK_LIBRARIES "")
  add_dependencies(${t} tavona_texts_check)
  add_dependencies(tavona32 ${t})
endforeach()

include(cmake/Install.cmake)

# A C99 caller linked through the import library on every architecture
# (checks the decorated names on 32-bit x86, where no test runs).
add_executable(c_caller ${CMAKE_SOURCE_DIR}/tests/consumer/main.c)
target_link_libraries(c_caller PRIVATE tavona32)
set_target_properties(c_caller PROPERTIES C_STANDARD 99 C_EXTENSIONS OFF)

if(TAVONA_RUN_TESTS)
  include(cmake/WineTests.cmake)
endif()

# Benchmarks: optimised, linked with the static core.
get_property(benches GLOBAL PROPERTY TAVONA_BENCHES)
foreach(name IN LISTS benches)
  get_property(srcs GLOBAL PROPERTY TAVONA_BENCH_${name}_SOURCES)
  add_executable(${name} ${srcs} ${CMAKE_SOURCE_DIR}/bench/bench.cpp)
  target_link_libraries(${name} PRIVATE tavona_static)
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/bench)
  target_compile_options(${name} PRIVATE -O2)
endforeach()

if(EXISTS ${CMAKE_SOURCE_DIR}/demo/CMakeLists.txt)
  add_subdirectory(demo)
endif()
