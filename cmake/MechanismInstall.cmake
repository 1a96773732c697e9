# Installation: headers, libraries, package config. Rooms and the library register themselves.
include(CMakePackageConfigHelpers)

get_property(targets GLOBAL PROPERTY MECHANISM_INSTALL_TARGETS)
get_property(header_dirs GLOBAL PROPERTY MECHANISM_INSTALL_HEADER_DIRS)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/mechanism)

# Installed libraries find each other beside themselves, wherever the tree is moved.
set_target_properties(mechanism PROPERTIES INSTALL_RPATH "$ORIGIN")
foreach(target IN LISTS targets)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "SHARED_LIBRARY")
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
  endif()
endforeach()

install(TARGETS ${targets} EXPORT mechanismTargets)
install(EXPORT mechanismTargets NAMESPACE mechanism:: DESTINATION ${package_dir})
install(DIRECTORY ${header_dirs} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/mechanismConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/mechanismConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/mechanismConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/mechanismConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/mechanismConfigVersion.cmake
  ${CMAKE_CURRENT_LIST_DIR}/MechanismDependencies.cmake
  DESTINATION ${package_dir})

if(TARGET mechanism-cell)
  set_target_properties(mechanism-cell PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  install(TARGETS mechanism-cell)
endif()
