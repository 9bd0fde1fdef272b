# Headers of the tests and benchmarks are included by their path from the repository's root, "tests/doubles/FakeDrag.h",
# so that none can be mistaken for a header of src. Below this include root stands nothing else.
set(ORBEL_TEST_INCLUDE_ROOT ${PROJECT_BINARY_DIR}/include-roots/repository)
file(MAKE_DIRECTORY ${ORBEL_TEST_INCLUDE_ROOT})
foreach(folder tests bench)
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${ORBEL_TEST_INCLUDE_ROOT}/${folder} SYMBOLIC)
endforeach()
