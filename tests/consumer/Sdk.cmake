# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Builds the library in WORK_DIR against the framework that was installed to PREFIX, as a product does
# it against the maker's SDK, and runs the tests that know the framework by its public headers.
cmake_minimum_required(VERSION 3.20)
include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")

run("${CMAKE_COMMAND}" -S "${SOURCE_DIR}" -B "${WORK_DIR}" -G "${GENERATOR}"
    -DNORVEL_FRAMEWORK=sdk "-DCMAKE_PREFIX_PATH=${PREFIX}" -DCMAKE_BUILD_TYPE=Debug
    -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DNORVEL_BUILD_TESTS=ON -DNORVEL_BUILD_EXAMPLES=ON
    -DNORVEL_BUILD_BENCHMARKS=OFF)
run("${CMAKE_COMMAND}" --build "${WORK_DIR}")

# The library of this build must not drag the other one in.
file(GLOB_RECURSE framework "${WORK_DIR}/lib/librvkpcore*" "${WORK_DIR}/lib/libkparextension*")
if(framework)
    message(FATAL_ERROR "a framework was built: ${framework}")
endif()
execute_process(
    COMMAND "${CMAKE_CTEST_COMMAND}" --test-dir "${WORK_DIR}" --verbose --no-tests=error
    RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "tests failed")
endif()
