# Makes the pair of packages, installs both into a scratch root and runs the program from there.
include(${CMAKE_CURRENT_LIST_DIR}/Run.cmake)
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR})
run(cpack -G DEB --config ${BUILD_DIR}/CPackConfig.cmake -B ${WORK_DIR}/packages)
file(GLOB runtime ${WORK_DIR}/packages/libmechanism0*.deb)
file(GLOB dev ${WORK_DIR}/packages/libmechanism-dev*.deb)

run(dpkg-deb --field ${runtime} Depends)
foreach(needed IN ITEMS libocct-modeling-algorithms libjsoncpp libspdlog libuuid1)
  expect("${needed}")
endforeach()
run(dpkg-deb --field ${dev} Depends)
expect("libmechanism[0-9.]+ \\(= [0-9.]+\\).*libocct-modeling-algorithms-dev.*libjsoncpp-dev")

set(root ${WORK_DIR}/root)
foreach(package IN ITEMS ${runtime} ${dev})
  run(dpkg-deb --extract ${package} ${root})
endforeach()
run(${root}/usr/bin/mechanism-cell info examples/cells/arc_welding.json)
expect("welder")
# The library comes from the package and not from the build beside it.
run(ldd ${root}/usr/bin/mechanism-cell)
expect("${root}/usr/[^ ]*libmechanism.so")
foreach(file IN ITEMS include/mechanism-0/mechanism/mechanism.h include/mechanism-0/host/view/ViewShape.h
        share/mechanism/docs/guide/README.md share/mechanism/docs/images/layout.svg
        lib/cmake/mechanism/mechanismConfig.cmake lib/pkgconfig/mechanism.pc)
  if(NOT EXISTS ${root}/usr/${file})
    message(FATAL_ERROR "the dev package has no ${file}")
  endif()
endforeach()
