# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Builds the consumer project in WORK_DIR against what was installed to PREFIX, and runs it.
cmake_minimum_required(VERSION 3.20)
include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")

file(REMOVE_RECURSE "${WORK_DIR}")
run("${CMAKE_COMMAND}" -S "${CMAKE_CURRENT_LIST_DIR}" -B "${WORK_DIR}" -G "${GENERATOR}"
    "-DCMAKE_PREFIX_PATH=${PREFIX}")
run("${CMAKE_COMMAND}" --build "${WORK_DIR}")
run("${WORK_DIR}/framework-consumer")
run("${WORK_DIR}/norvel-consumer")
expect_consumer_output()
