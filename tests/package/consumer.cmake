include(${CMAKE_CURRENT_LIST_DIR}/Run.cmake)
install_moved()
write_front_page_program()
run(${configure_consumer} -B ${WORK_DIR}/build)
build_consumer(${WORK_DIR}/build)
file(GLOB roots RELATIVE ${WORK_DIR}/prefix ${WORK_DIR}/prefix/include/* ${WORK_DIR}/prefix/share/*)
if(NOT roots STREQUAL "include/mechanism-0;share/mechanism")
  message(FATAL_ERROR "installed outside of folders of the package's own: ${roots}")
endif()
if(EXISTS ${WORK_DIR}/prefix/bin/mechanism-cell)
  # From a folder without examples, by the name that the help uses.
  foreach(example IN ITEMS arms/ur_ur10e.json cells/seam.json)
    run(${CMAKE_COMMAND} -E chdir ${WORK_DIR} ${WORK_DIR}/prefix/bin/mechanism-cell info examples/${example})
  endforeach()
endif()

# Without the built-in host's targets the package must say what is missing instead of half working.
file(REMOVE ${WORK_DIR}/prefix/lib/cmake/mechanism/mechanismHostTargets.cmake)
execute_process(COMMAND ${configure_consumer} -B ${WORK_DIR}/hostless
                RESULT_VARIABLE result OUTPUT_QUIET ERROR_VARIABLE output)
if(result EQUAL 0)
  message(FATAL_ERROR "configured without a host")
endif()
expect("has no built-in host")
