# Runs one step and stops the test with its output when it fails.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect pattern)
  if(NOT output MATCHES "${pattern}")
    message(FATAL_ERROR "expected: ${pattern}\nfound: ${output}")
  endif()
endfunction()

# Into a folder that is moved afterwards: the tree must work wherever it ends up.
function(install_moved)
  file(REMOVE_RECURSE ${WORK_DIR})
  run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/first)
  file(RENAME ${WORK_DIR}/first ${WORK_DIR}/prefix)
endfunction()

# The front page's program is the consumer: what a newcomer copies must build and run.
function(write_front_page_program)
  file(READ ${README} text)
  string(REPLACE ";" "\\;" text "${text}")
  string(REGEX MATCH "```cpp\n([^`]*)```" found "${text}")
  string(REPLACE "\\;" ";" program "${CMAKE_MATCH_1}")
  file(WRITE ${WORK_DIR}/main.cpp "${program}")
endfunction()

# Configures the consumer; -B and the packages that it finds itself follow.
set(configure_consumer ${CMAKE_COMMAND} -S ${CONSUMER_DIR} -G Ninja
    -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix -DCMAKE_BUILD_TYPE=Debug
    -DCMAKE_CXX_COMPILER=${CXX_COMPILER} -DCMAKE_CXX_COMPILER_LAUNCHER=${CXX_LAUNCHER}
    "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}" -DPROGRAM=${WORK_DIR}/main.cpp)

function(build_consumer folder)
  run(${CMAKE_COMMAND} --build ${folder})
  run(${folder}/consumer)
  expect("0.5 rad, 1500 mm\n$")
endfunction()
