# orbel_add_test(<name> <program> [FILTER <pattern of cases>] [SHARDS <number>] [LABEL <label>] [TIMEOUT <seconds>]
#                [ENVIRONMENT <variables>])
#
# One ctest test is one run of a program, not one case: a case costs nothing but itself, and the display that the first one
# starts serves the others. What fails is printed by name. SHARDS spreads the cases over so many runs, which ctest can
# then run side by side.
#
# The cases that tests/retried-tests.txt names run apart from the others, each as a test of its own with the label
# "retried". A line there holds <name>, the case and the reason, separated by tabs.
set(ORBEL_RETRIED_LIST ${PROJECT_SOURCE_DIR}/tests/retried-tests.txt)
set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${ORBEL_RETRIED_LIST})

function(orbel_add_test name program)
  cmake_parse_arguments(TEST "" "FILTER;SHARDS;LABEL;TIMEOUT" "ENVIRONMENT" ${ARGN})
  if(NOT TEST_TIMEOUT)
    set(TEST_TIMEOUT 600) # of a whole program, on a slow machine and under a sanitizer
  endif()
  if(NOT TEST_SHARDS)
    set(TEST_SHARDS 1)
  endif()
  if(NOT TEST_FILTER)
    set(TEST_FILTER "*")
  endif()

  set_property(GLOBAL APPEND PROPERTY ORBEL_TEST_PROGRAMS ${name}=$<TARGET_FILE:${program}>)
  file(STRINGS ${ORBEL_RETRIED_LIST} lines REGEX "^${name}\t")
  foreach(line IN LISTS lines)
    string(REPLACE "\t" ";" fields "${line}")
    list(GET fields 1 case)
    if(TEST_FILTER MATCHES "-")
      string(APPEND TEST_FILTER ":${case}")
    else()
      string(APPEND TEST_FILTER "-${case}")
    endif()
    add_test(NAME "${name}/${case}" COMMAND ${program} --gtest_filter=${case})
    set_tests_properties("${name}/${case}" PROPERTIES TIMEOUT ${TEST_TIMEOUT} LABELS "retried"
      ENVIRONMENT "${TEST_ENVIRONMENT}")
  endforeach()

  math(EXPR last "${TEST_SHARDS} - 1")
  foreach(index RANGE ${last})
    set(test_name ${name})
    set(environment ${TEST_ENVIRONMENT})
    if(last GREATER 0)
      math(EXPR number "${index} + 1")
      set(test_name ${name}.${number})
      list(APPEND environment GTEST_TOTAL_SHARDS=${TEST_SHARDS} GTEST_SHARD_INDEX=${index})
    endif()
    add_test(NAME ${test_name} COMMAND ${program} --gtest_filter=${TEST_FILTER})
    set_tests_properties(${test_name} PROPERTIES TIMEOUT ${TEST_TIMEOUT} LABELS "${TEST_LABEL}"
      ENVIRONMENT "${environment}")
  endforeach()
endfunction()
