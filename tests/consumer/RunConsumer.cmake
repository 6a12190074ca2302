# Installs the build tree into a staging prefix, builds the C consumer with
# find_package(tavona32) and runs it under wine.
set(stage ${BUILD}/consumer/stage)
set(cbuild ${BUILD}/consumer/build)
file(REMOVE_RECURSE ${BUILD}/consumer)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGN}\n${out}\n${err}")
  endif()
  set(last_output "${out}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${stage})
foreach(f bin/tavona32.dll bin/en/tavona32Res.dll bin/de/tavona32Res.dll
          include/tavona/tavona32.h lib/libtavona32.dll.a lib/tavona32.lib
          lib/cmake/tavona32/tavona32Config.cmake)
  if(NOT EXISTS ${stage}/${f})
    message(FATAL_ERROR "installed tree lacks ${f}")
  endif()
endforeach()

run(${CMAKE_COMMAND} -S ${SOURCE}/tests/consumer -B ${cbuild} -G Ninja
    -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} -DCMAKE_PREFIX_PATH=${stage})
run(${CMAKE_COMMAND} --build ${cbuild})
# The program runs beside the installed library, as an application would.
file(COPY ${cbuild}/consumer.exe DESTINATION ${stage}/bin)
run(${WINE_RUN} ${WINE_STATE} ${stage}/bin/consumer.exe)
if(NOT last_output MATCHES "OK")
  message(FATAL_ERROR "consumer said: ${last_output}")
endif()
message(STATUS "consumer: ${last_output}")
