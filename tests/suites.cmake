# Writes a file with one test for each suite of a GoogleTest program:
#   cmake -D PROGRAM=... -D OUT=... -D WITHOUT=FILTER -D PROPERTIES=LIST -P suites.cmake
# A process for each single test would take longer than the tests do.
execute_process(COMMAND ${PROGRAM} --gtest_list_tests OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "(^|\n)[A-Za-z0-9_/]+\\." suites "${listing}") # their tests are indented
set(commands "")
foreach(suite ${suites})
  string(REGEX REPLACE "[\n.]" "" suite "${suite}")
  string(APPEND commands "add_test(${suite} [==[${PROGRAM}]==] [==[--gtest_filter=${suite}.*-${WITHOUT}]==] --gtest_brief=1)\n"
         "set_tests_properties(${suite} PROPERTIES ${PROPERTIES})\n")
endforeach()
file(WRITE ${OUT} "${commands}")
