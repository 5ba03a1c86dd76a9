# Helpers for tests that run programs and checks. Both need Python; without it they are left out.
find_package(Python3 QUIET COMPONENTS Interpreter)
if(NOT Python3_FOUND)
  message(STATUS "htcore: checks and output tests are left out: Python 3 not found")
endif()

# A test that runs a script of tests/checks/.
function(ht_add_check name script)
  if(Python3_FOUND)
    add_test(NAME ${name} COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/tests/checks/${script} ${ARGN}
             WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  endif()
endfunction()

# A test that runs a program in the current folder. It must succeed, and print what the file `expected` holds
# where there is such a file.
function(ht_add_output_test name expected)
  if(Python3_FOUND)
    add_test(NAME ${name} COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/tests/checks/expect.py
             ${expected} ${ARGN} WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
  endif()
endfunction()
