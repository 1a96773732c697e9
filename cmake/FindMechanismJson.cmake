# jsoncpp by its header and library, as mechanism::json. Its own CMake package creates targets without looking
# whether they exist, so a project that uses jsoncpp itself could not find both packages.
find_path(MechanismJson_INCLUDE_DIR json/json.h PATH_SUFFIXES jsoncpp)
find_library(MechanismJson_LIBRARY jsoncpp)
mark_as_advanced(MechanismJson_INCLUDE_DIR MechanismJson_LIBRARY)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(MechanismJson
  REQUIRED_VARS MechanismJson_LIBRARY MechanismJson_INCLUDE_DIR
  REASON_FAILURE_MESSAGE "install the development files of jsoncpp")
if(MechanismJson_FOUND AND NOT TARGET mechanism::json)
  add_library(mechanism::json UNKNOWN IMPORTED)
  set_target_properties(mechanism::json PROPERTIES
    IMPORTED_LOCATION "${MechanismJson_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${MechanismJson_INCLUDE_DIR}")
endif()
