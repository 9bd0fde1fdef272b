# The headers of the standard library, of GoogleTest and of Qt take longer to compile than most of our own code, so that
# targets share them precompiled: one set for each family of targets with the same compiler flags. Families:
#   standard, qt             modules, whose code is position-independent
#   tests, qt_tests          test programs and what they share, whose code is not
# orbel_use_precompiled_headers(<target> <family>)
set(ORBEL_STANDARD_HEADERS <algorithm> <cstdint> <functional> <map> <memory> <optional> <string> <string_view> <utility>
  <variant> <vector>)
set(ORBEL_QT_HEADERS <QtCore> <QApplication> <QDBusConnection> <QImage> <QPainter> <QPainterPath> <QWidget> <QWindow>)

# orbel_precompiled_headers(<family> [PROGRAMS] HEADERS <headers> [LIBRARIES <libraries>])
# PROGRAMS: for code that is not position-independent.
function(orbel_precompiled_headers family)
  cmake_parse_arguments(FAMILY "PROGRAMS" "" "HEADERS;LIBRARIES" ${ARGN})
  set(source ${PROJECT_BINARY_DIR}/precompiled/${family}.cpp)
  if(NOT EXISTS ${source})
    file(WRITE ${source} "")
  endif()
  add_library(orbel_precompiled_${family} OBJECT ${source})
  target_link_libraries(orbel_precompiled_${family} PRIVATE ${FAMILY_LIBRARIES} orbel_build_flags)
  if(NOT FAMILY_PROGRAMS)
    set_target_properties(orbel_precompiled_${family} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  endif()
  target_precompile_headers(orbel_precompiled_${family} PRIVATE ${FAMILY_HEADERS})
endfunction()

# Benchmarks use the tests' harness without their headers: then it is compiled without.
function(orbel_use_precompiled_headers target family)
  if(TARGET orbel_precompiled_${family})
    target_precompile_headers(${target} REUSE_FROM orbel_precompiled_${family})
  endif()
endfunction()

# Once GoogleTest has been found, and Qt where it is used.
function(orbel_precompile_headers_of_tests)
  orbel_precompiled_headers(tests PROGRAMS LIBRARIES GTest::gtest HEADERS <gtest/gtest.h> ${ORBEL_STANDARD_HEADERS})
  if(TARGET orbel_qt)
    orbel_precompiled_headers(qt_tests PROGRAMS LIBRARIES GTest::gtest orbel_qt
      HEADERS <gtest/gtest.h> ${ORBEL_STANDARD_HEADERS} ${ORBEL_QT_HEADERS})
  endif()
endfunction()

orbel_precompiled_headers(standard HEADERS ${ORBEL_STANDARD_HEADERS})
