# Installation: headers, libraries, package config, pkg-config. Rooms and the library register themselves.
# Two components: "runtime" (libraries, program) and "dev" (what compiling against them needs).
include(CMakePackageConfigHelpers)

get_property(host_targets GLOBAL PROPERTY MECHANISM_INSTALL_HOST_TARGETS)
get_property(header_dirs GLOBAL PROPERTY MECHANISM_INSTALL_HEADER_DIRS)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/mechanism)

# Installed libraries find each other beside themselves, wherever the tree is moved.
foreach(target IN LISTS host_targets ITEMS mechanism mechanism_planning mechanism_cell)
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
endforeach()

set(to_runtime_and_dev
  RUNTIME COMPONENT runtime
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT dev
  ARCHIVE COMPONENT dev)
# The host's targets are a set of their own: without the built-in host they come from outside.
if(host_targets)
  install(TARGETS ${host_targets} EXPORT mechanismHostTargets ${to_runtime_and_dev})
  install(EXPORT mechanismHostTargets NAMESPACE mechanism:: DESTINATION ${package_dir} COMPONENT dev)
endif()
install(TARGETS mechanism mechanism_planning mechanism_cell EXPORT mechanismTargets ${to_runtime_and_dev})
install(EXPORT mechanismTargets NAMESPACE mechanism:: DESTINATION ${package_dir} COMPONENT dev)
install(DIRECTORY ${header_dirs} DESTINATION ${MECHANISM_INSTALL_INCLUDEDIR} COMPONENT dev FILES_MATCHING PATTERN "*.h")

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/mechanismConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/mechanismConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/mechanismConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/mechanismConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/mechanismConfigVersion.cmake
  ${CMAKE_CURRENT_LIST_DIR}/MechanismDependencies.cmake
  ${CMAKE_CURRENT_LIST_DIR}/FindMechanismJson.cmake
  DESTINATION ${package_dir} COMPONENT dev)

# pkg-config finds the tree from the file's own place, so it may be moved as well.
file(RELATIVE_PATH pc_to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
set(pc_host_libs)
foreach(target IN LISTS host_targets)
  string(APPEND pc_host_libs " -l${target}")
endforeach()
configure_file(${CMAKE_CURRENT_LIST_DIR}/mechanism.pc.in ${CMAKE_CURRENT_BINARY_DIR}/mechanism.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/mechanism.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)

# What the program reads, and what people read; links between these folders hold.
foreach(folder IN ITEMS examples/arms examples/cells examples/parts)
  get_filename_component(parent ${folder} DIRECTORY)
  install(DIRECTORY ${folder} DESTINATION ${MECHANISM_INSTALL_DATADIR}/${parent} COMPONENT runtime)
endforeach()
foreach(folder IN ITEMS docs/guide docs/images docs/design docs/formats)
  if(IS_DIRECTORY ${PROJECT_SOURCE_DIR}/${folder})
    install(DIRECTORY ${folder} DESTINATION ${MECHANISM_INSTALL_DATADIR}/docs COMPONENT dev PATTERN "*.py" EXCLUDE)
  endif()
endforeach()
install(DIRECTORY examples DESTINATION ${MECHANISM_INSTALL_DATADIR} COMPONENT dev
  FILES_MATCHING PATTERN "*.cpp" PATTERN "*.h" PATTERN expected EXCLUDE PATTERN cells EXCLUDE PATTERN arms EXCLUDE
  PATTERN parts EXCLUDE)

if(TARGET mechanism-cell)
  set_target_properties(mechanism-cell PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  install(TARGETS mechanism-cell RUNTIME COMPONENT runtime)
endif()
