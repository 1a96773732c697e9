# Builds the library on the second host and runs the contract suite there.
include(${CMAKE_CURRENT_LIST_DIR}/../../package/Run.cmake)
# What a compiler cache asks for to take precompiled headers.
set(ENV{CCACHE_SLOPPINESS} pch_defines,time_macros)
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${WORK_DIR} -G Ninja
    -DCMAKE_CXX_COMPILER=${CXX_COMPILER} -DCMAKE_CXX_COMPILER_LAUNCHER=${CXX_LAUNCHER}
    "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR} --parallel 2)
run(${CMAKE_CTEST_COMMAND} --test-dir ${WORK_DIR} --output-on-failure --no-tests=error)
expect("100% tests passed")
