# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Interface target with the warning flags that every target of the project is built with.
add_library(norvel_warnings INTERFACE)
if(MSVC)
    target_compile_options(norvel_warnings INTERFACE /W4 /WX /utf-8)
else()
    target_compile_options(norvel_warnings INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
        -Werror)
endif()
