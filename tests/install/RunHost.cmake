# Builds and runs the host program of host/ against the library.
# -DROUTE=find_package: installs the built library into WORK_DIR/prefix and
#   lets the host find it with find_package(VKTCalc).
# -DROUTE=add_subdirectory: the host adds the source tree itself.
# Needs: ROUTE, BUILD_DIR (the library's build), SOURCE_DIR, WORK_DIR.
file(REMOVE_RECURSE ${WORK_DIR})
set(host_source ${SOURCE_DIR}/tests/install/host)
set(host_build ${WORK_DIR}/build)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed (${rc}): ${ARGN}")
  endif()
endfunction()

if(ROUTE STREQUAL "find_package")
  run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix)
  run(${CMAKE_COMMAND} -S ${host_source} -B ${host_build} -G Ninja
      -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix)
elseif(ROUTE STREQUAL "add_subdirectory")
  run(${CMAKE_COMMAND} -S ${host_source} -B ${host_build} -G Ninja
      -DVKTCALC_SOURCE_DIR=${SOURCE_DIR})
else()
  message(FATAL_ERROR "unknown ROUTE '${ROUTE}'")
endif()
run(${CMAKE_COMMAND} --build ${host_build})
run(${host_build}/host)
