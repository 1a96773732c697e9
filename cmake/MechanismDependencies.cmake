# Every third-party package, once. The installed package config includes this
# very file, so what builds the library is also what its users need.
include(CMakeFindDependencyMacro)

find_dependency(OpenCASCADE)
find_dependency(fmt)
find_dependency(spdlog)

# Open CASCADE 7.6 exports libraries without include directories. These wrappers
# carry them, as SYSTEM so that its headers stay out of our warnings.
function(mechanism_wrap_occt name)
  if(TARGET mechanism::${name})
    return()
  endif()
  add_library(mechanism::${name} INTERFACE IMPORTED)
  target_include_directories(mechanism::${name} SYSTEM INTERFACE ${OpenCASCADE_INCLUDE_DIR})
  target_link_libraries(mechanism::${name} INTERFACE ${ARGN})
endfunction()

mechanism_wrap_occt(occt_geometry TKernel TKMath TKG2d TKG3d TKGeomBase TKBRep)
mechanism_wrap_occt(occt_modeling mechanism::occt_geometry
                    TKGeomAlgo TKTopAlgo TKPrim TKBO TKBool TKFillet TKOffset TKMesh TKShHealing)
mechanism_wrap_occt(occt_view mechanism::occt_modeling TKService TKV3d)

list(APPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR})
find_dependency(MechanismJson MODULE)
list(POP_BACK CMAKE_MODULE_PATH)
