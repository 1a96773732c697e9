# The installed contract suite on the installed host, as docs/guide/host.md says.
include(${CMAKE_CURRENT_LIST_DIR}/Run.cmake)
install_moved()
run(${CMAKE_COMMAND} -S ${WORK_DIR}/prefix/share/mechanism/contract -B ${WORK_DIR}/build -G Ninja
    -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
    -DCMAKE_CXX_COMPILER_LAUNCHER=${CXX_LAUNCHER} "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build --parallel 2)
run(${CMAKE_CTEST_COMMAND} --test-dir ${WORK_DIR}/build --output-on-failure --no-tests=error)
expect("100% tests passed")
