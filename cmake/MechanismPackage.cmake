# The pair of Debian packages: `cpack -G DEB` in a build folder.
set(CPACK_PACKAGE_NAME mechanism)
set(CPACK_PACKAGE_VENDOR "the mechanism developers")
set(CPACK_PACKAGE_CONTACT "the mechanism developers <mechanism@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL runtime dev)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libmechanism${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "${PROJECT_DESCRIPTION}: library and program")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# What the libraries link, read off the files themselves.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
get_property(host_targets GLOBAL PROPERTY MECHANISM_INSTALL_HOST_TARGETS)
foreach(target IN LISTS host_targets)
  get_target_property(dir ${target} BINARY_DIR)
  list(APPEND private_dirs ${dir})
endforeach()
foreach(target IN ITEMS mechanism mechanism_planning mechanism_cell)
  get_target_property(dir ${target} BINARY_DIR)
  list(APPEND private_dirs ${dir})
endforeach()
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${private_dirs})

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libmechanism-dev)
set(CPACK_DEBIAN_DEV_DESCRIPTION "${PROJECT_DESCRIPTION}: headers and package files")
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
# What the public headers include, and what Open CASCADE's CMake package asks for without bringing it.
string(JOIN ", " CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
  "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION})"
  libocct-foundation-dev libocct-modeling-data-dev libocct-modeling-algorithms-dev
  libocct-visualization-dev libocct-data-exchange-dev libocct-ocaf-dev
  libtbb-dev libfontconfig-dev libfreetype-dev libfreeimage-dev libgl-dev libx11-dev
  libjsoncpp-dev libspdlog-dev libfmt-dev)
include(CPack)
