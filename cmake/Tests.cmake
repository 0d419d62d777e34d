# cv_test(<name> SOURCES <file>... [USES <room>...] [LIBRARIES <target>...])
# One GoogleTest program, each of its tests known to CTest. Tests stand outside the floors: they may use any room.

find_package(GTest REQUIRED)
include(GoogleTest)

# What takes most of a test's compilation, read once: tests are many, and their own speed matters little.
add_executable(cv_test_headers ${CMAKE_CURRENT_LIST_DIR}/test_headers.cpp)
set(CV_TEST_OPTIONS -O0 -g1)
target_link_libraries(cv_test_headers PRIVATE GTest::gmock GTest::gtest_main)
target_compile_options(cv_test_headers PRIVATE ${CV_TEST_OPTIONS})
target_precompile_headers(cv_test_headers PRIVATE <gmock/gmock.h> <gtest/gtest.h>
  <filesystem> <fstream> <functional> <memory> <optional> <sstream> <string> <vector>)
set_target_properties(cv_test_headers PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)

function(cv_test name)
  cmake_parse_arguments(PARSE_ARGV 1 TEST "" "" "SOURCES;USES;LIBRARIES")
  add_executable(${name} ${TEST_SOURCES})
  list(TRANSFORM TEST_USES PREPEND CV::)
  target_link_libraries(${name} PRIVATE ${TEST_USES} ${TEST_LIBRARIES} GTest::gmock GTest::gtest_main)
  target_compile_options(${name} PRIVATE ${CV_TEST_OPTIONS})
  target_precompile_headers(${name} REUSE_FROM cv_test_headers)
  target_compile_definitions(${name} PRIVATE
    CV_SOURCE_DIR="${PROJECT_SOURCE_DIR}" CV_BINARY_DIR="${PROJECT_BINARY_DIR}")
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  gtest_discover_tests(${name} WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT 300)
endfunction()
