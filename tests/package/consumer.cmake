include(${CMAKE_CURRENT_LIST_DIR}/Run.cmake)
install_moved()
write_front_page_program()
set(configure ${CMAKE_COMMAND} -S ${CONSUMER_DIR} -G Ninja
    -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix -DCMAKE_BUILD_TYPE=Debug
    -DCMAKE_CXX_COMPILER=${CXX_COMPILER} -DCMAKE_CXX_COMPILER_LAUNCHER=${CXX_LAUNCHER}
    "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}" -DPROGRAM=${WORK_DIR}/main.cpp)
run(${configure} -B ${WORK_DIR}/build)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${WORK_DIR}/build/consumer)
expect("0.5 rad, 1500 mm\n$")
if(EXISTS ${WORK_DIR}/prefix/bin/mechanism-cell)
  run(${WORK_DIR}/prefix/bin/mechanism-cell --help)
endif()

# Without the built-in host's targets the package must say what is missing instead of half working.
file(REMOVE ${WORK_DIR}/prefix/lib/cmake/mechanism/mechanismHostTargets.cmake)
execute_process(COMMAND ${configure} -B ${WORK_DIR}/hostless RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE output)
if(result EQUAL 0)
  message(FATAL_ERROR "configured without a host")
endif()
expect("has no built-in host")
