# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Compiles through ccache where it is installed, unless the caller chose a launcher of its own.
if(NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(NORVEL_CCACHE ccache)
    mark_as_advanced(NORVEL_CCACHE)
    if(NORVEL_CCACHE)
        set(CMAKE_CXX_COMPILER_LAUNCHER "${NORVEL_CCACHE}")
    endif()
endif()
