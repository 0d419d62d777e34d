# cv_test(<name> SOURCES <file>... [USES <room>...] [LIBRARIES <target>...])
# One GoogleTest program, each of its tests known to CTest. Tests stand outside the floors: they may use any room.

find_package(GTest REQUIRED)
include(GoogleTest)

function(cv_test name)
  cmake_parse_arguments(PARSE_ARGV 1 TEST "" "" "SOURCES;USES;LIBRARIES")
  add_executable(${name} ${TEST_SOURCES})
  list(TRANSFORM TEST_USES PREPEND CV::)
  target_link_libraries(${name} PRIVATE ${TEST_USES} ${TEST_LIBRARIES} GTest::gmock GTest::gtest_main)
  target_compile_definitions(${name} PRIVATE
    CV_SOURCE_DIR="${PROJECT_SOURCE_DIR}" CV_BINARY_DIR="${PROJECT_BINARY_DIR}")
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  gtest_discover_tests(${name} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT 300)
endfunction()
