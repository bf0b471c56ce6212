set(ZELTRANS_TEST_PREFIX "" CACHE STRING "Prefix of the names of the tests, which distinguishes several builds in one run")

# GoogleTest is built from Debian's sources (package googletest), so that it has the width and the sanitizers of the build.
include(GoogleTest)
find_path(ZELTRANS_GTEST_SOURCES googletest/CMakeLists.txt HINTS /usr/src/googletest NO_CMAKE_FIND_ROOT_PATH)
if(NOT ZELTRANS_GTEST_SOURCES)
  message(FATAL_ERROR "GoogleTest's sources are missing: install the package googletest, or set ZELTRANS_DEVELOPER=OFF")
endif()
set(INSTALL_GTEST OFF CACHE INTERNAL "")
add_subdirectory(${ZELTRANS_GTEST_SOURCES} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)

# Tests are compiled quickly rather than for speed: most of their time goes into GoogleTest's headers, which are compiled once.
add_executable(zel_test_headers ${CMAKE_CURRENT_LIST_DIR}/test_headers.cpp)
target_link_libraries(zel_test_headers PRIVATE zel_build GTest::gmock GTest::gtest_main)
target_precompile_headers(zel_test_headers PRIVATE <gmock/gmock.h> <gtest/gtest.h> <string> <vector> <filesystem>)
target_compile_options(zel_test_headers PRIVATE -O0)

# zeltrans_test(<folder> SOURCES <file>... [LIBS <target>...]): the tests of one folder, as one program and one CTest label.
function(zeltrans_test folder)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBS" ${ARGN})
  set(target ${folder}_tests)
  add_executable(${target} ${arg_SOURCES})
  target_link_libraries(${target} PRIVATE zel_build ${arg_LIBS} GTest::gmock GTest::gtest_main)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_compile_options(${target} PRIVATE -O0)
  target_precompile_headers(${target} REUSE_FROM zel_test_headers)
  set(properties LABELS ${folder} TIMEOUT 300)
  if(ZELTRANS_SANITIZE_THREADS)
    list(APPEND properties ENVIRONMENT "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/cmake/thread_sanitizer.supp")
  endif()
  gtest_discover_tests(${target} TEST_PREFIX ${ZELTRANS_TEST_PREFIX}${folder}. NO_PRETTY_VALUES
    PROPERTIES ${properties} DISCOVERY_TIMEOUT 60)
endfunction()

# zeltrans_checks_json(<target>): lets tests hold JSON against docs/schemas (tests/support/json_forms.h). The module may
# belong to another python than the first in the path. Without it those tests are skipped.
function(zeltrans_checks_json target)
  find_package(Python3 COMPONENTS Interpreter)
  foreach(candidate /usr/bin/python3 ${Python3_EXECUTABLE})
    execute_process(COMMAND ${candidate} -I -c "from jsonschema import Draft202012Validator" RESULT_VARIABLE result
                    OUTPUT_QUIET ERROR_QUIET)
    if(result EQUAL 0)
      target_compile_definitions(${target} PRIVATE ZELTRANS_JSON_CHECKER="${candidate}")
      break()
    endif()
  endforeach()
  target_compile_definitions(${target} PRIVATE
    ZELTRANS_SCHEMAS="${PROJECT_SOURCE_DIR}/docs/schemas" ZELTRANS_JSON_TESTS="${PROJECT_SOURCE_DIR}/tests/support")
endfunction()
