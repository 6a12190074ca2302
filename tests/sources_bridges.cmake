# File dialogs, the statement dump, mail and the external editors.
tavona_test(bridges_dialogs_tests WINDOWS UI SOURCES tests/test_bridges_dialogs.cpp)
tavona_test(bridges_dump_tests WINDOWS UI SOURCES tests/test_bridges_dump.cpp)
tavona_test(bridges_mail_tests WINDOWS UI SOURCES tests/test_bridges_mail.cpp)
tavona_test(bridges_internal_tests WINDOWS INTERNAL SOURCES tests/test_bridges_internal.cpp)
if(WIN32 AND TAVONA_RUN_TESTS)
  # Stand-ins for the optional libraries, with and without their entries, in
  # bin/bridges_full and bin/bridges_noentry; the tests add one folder to
  # the search path. MAPI32.DLL and hhctrl.ocx must win over wine's own: the
  # mail tests run with the native ones preferred.
  set(stubs)
  foreach(variant full noentry)
    foreach(lib MAPI32 xeddll TAVONAEX)
      set(t tvstub_${lib}_${variant})
      if(lib STREQUAL "MAPI32")
        if(variant STREQUAL "noentry")
          add_library(${t} SHARED tests/stub_editors.cpp)
          target_compile_definitions(${t} PRIVATE STUB_NO_ENTRY)
        else()
          add_library(${t} SHARED tests/stub_mapi.cpp)
        endif()
      else()
        add_library(${t} SHARED tests/stub_editors.cpp)
        if(variant STREQUAL "noentry")
          target_compile_definitions(${t} PRIVATE STUB_NO_ENTRY)
        elseif(lib STREQUAL "xeddll")
          target_compile_definitions(${t} PRIVATE STUB_XED)
        endif()
      endif()
      set_target_properties(${t} PROPERTIES PREFIX "" OUTPUT_NAME ${lib} SUFFIX ".dll"
        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin/bridges_${variant}
        ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib/bridges_${variant})
      target_link_options(${t} PRIVATE -static -static-libgcc -static-libstdc++ -Wl,--kill-at)
      list(APPEND stubs ${t})
    endforeach()
  endforeach()
  add_library(tvstub_hhctrl SHARED tests/stub_hhctrl.cpp)
  set_target_properties(tvstub_hhctrl PROPERTIES PREFIX "" OUTPUT_NAME hhctrl SUFFIX ".ocx"
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin/bridges_full
    ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib/bridges_help)
  target_link_options(tvstub_hhctrl PRIVATE -static -static-libgcc -static-libstdc++ -Wl,--kill-at)
  list(APPEND stubs tvstub_hhctrl)
  add_executable(tvstub_viewer tests/stub_viewer.cpp)
  set_target_properties(tvstub_viewer PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
  cmake_language(DEFER CALL add_dependencies bridges_mail_tests ${stubs})
  cmake_language(DEFER CALL add_dependencies bridges_dump_tests tvstub_viewer)
  cmake_language(DEFER CALL add_dependencies bridges_dialogs_tests tvstub_kv32_full
                 tvstub_kv32_noentry)
  cmake_language(DEFER CALL set_tests_properties bridges_mail_tests PROPERTIES
                 ENVIRONMENT_MODIFICATION "WINEDLLOVERRIDES=set:mapi32,hhctrl.ocx=n")
endif()
