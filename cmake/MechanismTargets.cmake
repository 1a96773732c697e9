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
    $<INSTALL_INTERFACE:${MECHANISM_INSTALL_INCLUDEDIR}>)
  target_link_libraries(${target} PUBLIC ${ARG_LINK} PRIVATE $<BUILD_INTERFACE:mechanism_warnings>)
  set_property(GLOBAL APPEND PROPERTY MECHANISM_INSTALL_HOST_TARGETS ${target})
  set_property(GLOBAL APPEND PROPERTY MECHANISM_INSTALL_HEADER_DIRS ${CMAKE_CURRENT_SOURCE_DIR}/include/)
endfunction()

# Compiling tests takes longer than running them: little optimisation, and one precompiled header for all.
function(mechanism_compile_quickly name)
  if(NOT MSVC)
    target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O1>)
  endif()
  # At that level GCC 12 takes the buffers inside its own std::string for too small (GCC PR 105651).
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${name} PRIVATE -Wno-array-bounds -Wno-stringop-overflow)
  endif()
  # What compiler caches ask for to tell precompiled headers apart.
  target_compile_options(${name} PRIVATE
    $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>
    "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
endfunction()

# A test executable whose cases CTest sees one by one. OPTIMISED is for tests that compute much themselves.
function(mechanism_add_test name)
  cmake_parse_arguments(ARG "OPTIMISED" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINK} mechanism_warnings GTest::gmock_main)
  if(ARG_OPTIMISED)
    if(NOT MSVC)
      target_compile_options(${name} PRIVATE $<$<CONFIG:Debug>:-O2>)
    endif()
  else()
    mechanism_compile_quickly(${name})
    target_precompile_headers(${name} REUSE_FROM test_prelude)
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()
