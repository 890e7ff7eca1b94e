# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Builds the library in WORK_DIR against the framework that was installed to PREFIX, as a product does
# it against the maker's SDK, and runs the examples with it. The tests see the same sources elsewhere.
cmake_minimum_required(VERSION 3.20)
include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")

run("${CMAKE_COMMAND}" -S "${SOURCE_DIR}" -B "${WORK_DIR}" -G "${GENERATOR}"
    -DNORVEL_FRAMEWORK=sdk "-DCMAKE_PREFIX_PATH=${PREFIX}" -DCMAKE_BUILD_TYPE=Debug
    -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DNORVEL_BUILD_TESTS=OFF -DNORVEL_BUILD_EXAMPLES=ON
    -DNORVEL_BUILD_BENCHMARKS=OFF)
run("${CMAKE_COMMAND}" --build "${WORK_DIR}")

# The library of this build must not drag the other one in.
file(GLOB_RECURSE framework "${WORK_DIR}/lib/librvkpcore*" "${WORK_DIR}/lib/libkparextension*")
if(framework)
    message(FATAL_ERROR "a framework was built: ${framework}")
endif()

set(picture "${WORK_DIR}/picture.ppm")
file(WRITE "${picture}" "P3\n2 1\n255\n255 0 0  0 0 255\n")
run("${WORK_DIR}/bin/norvel-embedding" "${picture}")
if(NOT OUTPUT STREQUAL "after undo: alpha 1.00\nafter redo: alpha 0.25\n")
    message(FATAL_ERROR "the smallest host prints:\n${OUTPUT}")
endif()

# Every kind of edit, undone and redone: the program ends well only if all steps agree.
run("${WORK_DIR}/bin/norvel-tour")
