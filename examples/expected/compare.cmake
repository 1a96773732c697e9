# Runs an example and compares what it prints with what it should print.
execute_process(COMMAND ${COMMAND} RESULT_VARIABLE result OUTPUT_VARIABLE output)
file(READ ${EXPECTED} expected)
# The sign of a zero is the rounding of the day.
foreach(text IN ITEMS output expected)
  string(REGEX REPLACE " *-(0\\.0+[^0-9])" " \\1" ${text} "${${text}}")
  string(REGEX REPLACE " +" " " ${text} "${${text}}")
endforeach()
if(NOT result EQUAL 0 OR NOT output STREQUAL expected)
  message(FATAL_ERROR "exit code ${result}, printed:\n${output}\nexpected:\n${expected}")
endif()
