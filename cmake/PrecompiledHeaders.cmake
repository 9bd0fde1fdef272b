# The headers of the standard library and of Qt take longer to compile than our own code, so that modules share them
# precompiled, one set for each family of targets with the same compiler flags.
# orbel_use_precompiled_headers(<target> <standard|qt>)
set(ORBEL_STANDARD_HEADERS <algorithm> <cstdint> <functional> <map> <memory> <optional> <string> <string_view> <utility>
  <variant> <vector>)

function(orbel_precompiled_headers family)
  cmake_parse_arguments(FAMILY "" "" "HEADERS;LIBRARIES" ${ARGN})
  set(source ${PROJECT_BINARY_DIR}/precompiled/${family}.cpp)
  if(NOT EXISTS ${source})
    file(WRITE ${source} "")
  endif()
  add_library(orbel_precompiled_${family} OBJECT ${source})
  target_link_libraries(orbel_precompiled_${family} PRIVATE ${FAMILY_LIBRARIES} orbel_build_flags)
  set_target_properties(orbel_precompiled_${family} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  target_precompile_headers(orbel_precompiled_${family} PRIVATE ${FAMILY_HEADERS})
endfunction()

function(orbel_use_precompiled_headers target family)
  target_precompile_headers(${target} REUSE_FROM orbel_precompiled_${family})
endfunction()

orbel_precompiled_headers(standard HEADERS ${ORBEL_STANDARD_HEADERS})
