# Writes a file with one test for each suite of a GoogleTest program:
#   cmake -D PROGRAM=... -D EMULATOR=LIST -D OUT=... -D WITHOUT=FILTER -D PROPERTIES=LIST -P suites.cmake
# EMULATOR is the command that runs programs of another processor, if this is one.
# A process for each single test would take longer than the tests do.
execute_process(COMMAND ${EMULATOR} ${PROGRAM} --gtest_list_tests OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "(^|\n)[A-Za-z0-9_/]+\\." suites "${listing}") # their tests are indented
set(command "")
foreach(word ${EMULATOR} ${PROGRAM})
  string(APPEND command " [==[${word}]==]")
endforeach()
set(commands "")
foreach(suite ${suites})
  string(REGEX REPLACE "[\n.]" "" suite "${suite}")
  string(APPEND commands "add_test(${suite}${command} [==[--gtest_filter=${suite}.*-${WITHOUT}]==] --gtest_brief=1)\n"
         "set_tests_properties(${suite} PROPERTIES ${PROPERTIES})\n")
endforeach()
file(WRITE ${OUT} "${commands}")
