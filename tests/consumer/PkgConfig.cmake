# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Compiles the consumer in WORK_DIR with the flags that pkg-config tells of what was installed to
# PREFIX, and runs it.
cmake_minimum_required(VERSION 3.20)
include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")

set(ENV{PKG_CONFIG_PATH} "${PREFIX}/${LIBDIR}/pkgconfig")
run(pkg-config --modversion norvel)
string(STRIP "${OUTPUT}" version)
if(NOT version STREQUAL VERSION)
    message(FATAL_ERROR "pkg-config tells version '${version}', not '${VERSION}'")
endif()
run(pkg-config --cflags --libs norvel)
separate_arguments(flags UNIX_COMMAND "${OUTPUT}")

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
# Debian's Qt wants its users position independent.
run("${CXX_COMPILER}" -std=c++17 -fPIC -o "${WORK_DIR}/norvel-consumer"
    "${CMAKE_CURRENT_LIST_DIR}/main.cpp" ${flags} "-Wl,-rpath,${PREFIX}/${LIBDIR}")
run("${WORK_DIR}/norvel-consumer")
expect_consumer_output()
