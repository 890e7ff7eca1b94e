# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

set(NORVEL_SANITIZE "" CACHE STRING
    "Sanitizers to build with: empty, address;undefined or thread (GCC and Clang)")

if(NORVEL_SANITIZE)
    string(REPLACE ";" "," norvel_sanitizers "${NORVEL_SANITIZE}")
    add_compile_options(-fsanitize=${norvel_sanitizers} -fno-omit-frame-pointer
        -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${norvel_sanitizers})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # What GCC adds for its sanitizers makes it take values for uninitialised that are not,
        # those of std::regex among them.
        add_compile_options(-Wno-maybe-uninitialized)
    endif()
endif()
