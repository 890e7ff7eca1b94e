# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

set(NORVEL_SANITIZE "" CACHE STRING
    "Sanitizers to build with: empty, address;undefined or thread (GCC and Clang)")

if(NORVEL_SANITIZE)
    string(REPLACE ";" "," norvel_sanitizers "${NORVEL_SANITIZE}")
    add_compile_options(-fsanitize=${norvel_sanitizers} -fno-omit-frame-pointer
        -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${norvel_sanitizers})
endif()
