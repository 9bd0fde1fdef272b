# orbel_add_test(<name> <program> [FILTER <pattern of cases>] [SHARDS <number>] [LABEL <label>] [TIMEOUT <seconds>]
#                [ENVIRONMENT <variables>])
#
# One ctest test is one run of a program, not one case: a case costs nothing but itself, and the display that the first one
# starts serves the others. What fails is printed by name. SHARDS spreads the cases over so many runs, which ctest can
# then run side by side.
function(orbel_add_test name program)
  cmake_parse_arguments(TEST "" "FILTER;SHARDS;LABEL;TIMEOUT" "ENVIRONMENT" ${ARGN})
  if(NOT TEST_TIMEOUT)
    set(TEST_TIMEOUT 120)
  endif()
  if(NOT TEST_SHARDS)
    set(TEST_SHARDS 1)
  endif()
  if(NOT TEST_FILTER)
    set(TEST_FILTER "*")
  endif()

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
