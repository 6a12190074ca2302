# cmake --install: bin/tavona32.dll, bin/<lang>/tavona32Res.dll,
# include/tavona/*.h, lib/libtavona32.dll.a, lib/tavona32.lib and the
# find_package(tavona32) configuration.
include(CMakePackageConfigHelpers)

install(TARGETS tavona32 RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
foreach(lang IN LISTS TAVONA_LANGUAGES)
  install(FILES $<TARGET_FILE:tavona32Res_${lang}> DESTINATION bin/${lang})
endforeach()
install(DIRECTORY ${CMAKE_SOURCE_DIR}/include/tavona DESTINATION include
        FILES_MATCHING PATTERN "*.h")
install(FILES ${TAVONA_MSVC_LIB} DESTINATION lib)

configure_package_config_file(${CMAKE_SOURCE_DIR}/cmake/tavona32Config.cmake.in
  ${CMAKE_BINARY_DIR}/tavona32Config.cmake
  INSTALL_DESTINATION lib/cmake/tavona32)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/tavona32ConfigVersion.cmake
  VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/tavona32Config.cmake
              ${CMAKE_BINARY_DIR}/tavona32ConfigVersion.cmake
        DESTINATION lib/cmake/tavona32)
