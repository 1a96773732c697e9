# Warnings for our own code only; dependencies come in as SYSTEM includes.
add_library(mechanism_warnings INTERFACE)
if(MSVC)
  target_compile_options(mechanism_warnings INTERFACE /W4 /utf-8 $<$<BOOL:${MECHANISM_WARNINGS_AS_ERRORS}>:/WX>)
else()
  target_compile_options(mechanism_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wcast-align -Wformat=2
    $<$<BOOL:${MECHANISM_WARNINGS_AS_ERRORS}>:-Werror>)
endif()
# GCC 12 reports overlapping copies inside its own std::string for "text" + std::to_string(n) (GCC PR 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(mechanism_warnings INTERFACE -Wno-restrict)
endif()
