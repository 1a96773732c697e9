# The library's surface, name by name: a new export, a lost one and a leaked helper all show here.
# Private members are hidden (MECHANISM_NO_EXPORT), apart from virtual ones and what inline members use.
# After a wanted change: cmake -DUPDATE=ON -DLIBRARY=... -P exports.cmake
include(${CMAKE_CURRENT_LIST_DIR}/Run.cmake)
run(nm --dynamic --demangle --defined-only --format=posix ${LIBRARY})
string(REGEX REPLACE "\n$" "" output "${output}")
string(REPLACE ";" "," output "${output}")
string(REPLACE "\n" ";" lines "${output}")
set(names)
foreach(line IN LISTS lines)
  string(REGEX REPLACE " [A-Za-z] [0-9a-f]+( [0-9a-f]+)?$" "" name "${line}") # kind, address, size
  string(REGEX REPLACE "\\(.*" "" name "${name}")                            # arguments differ in detail
  list(APPEND names "${name}")
endforeach()
list(REMOVE_DUPLICATES names)
list(SORT names)
set(listed ${CMAKE_CURRENT_LIST_DIR}/exports.txt)
list(JOIN names "\n" text)
if(UPDATE)
  file(WRITE ${listed} "${text}\n")
endif()
file(STRINGS ${listed} expected)
set(extra ${names})
list(REMOVE_ITEM extra ${expected})
list(REMOVE_ITEM expected ${names})
if(extra OR expected)
  message(FATAL_ERROR "exported but not listed: ${extra}\nlisted but not exported: ${expected}")
endif()
