# Helpers that keep a room's CMakeLists.txt to a list of its sources.

# A room of the host: shared, because its singletons (configuration, logger) must
# exist once in a process that links both the library and the program.
function(mechanism_add_host_room room)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  set(target mechanism_host_${room})
  add_library(${target} SHARED ${ARG_SOURCES})
  add_library(mechanism::host_${room} ALIAS ${target})
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME host_${room}
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
    WINDOWS_EXPORT_ALL_SYMBOLS ON)
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/include>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_libraries(${target} PUBLIC ${ARG_LINK} PRIVATE $<BUILD_INTERFACE:mechanism_warnings>)
  set_property(GLOBAL APPEND PROPERTY MECHANISM_INSTALL_HOST_TARGETS ${target})
  set_property(GLOBAL APPEND PROPERTY MECHANISM_INSTALL_HEADER_DIRS ${CMAKE_CURRENT_SOURCE_DIR}/include/)
endfunction()

# A test executable whose cases CTest sees one by one.
function(mechanism_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINK} mechanism_warnings GTest::gmock_main)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()
