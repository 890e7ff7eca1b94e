# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Debian's cross compiler for 64-bit Windows. NORVEL_WINDOWS_PREFIXES is the list of folders that
# hold what was built for Windows: Qt, FFmpeg, GoogleTest.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

# The compiler with threads of its own standard library, which std::mutex and its like take.
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Programs are those of this machine, all else is Windows'.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES NORVEL_WINDOWS_PREFIXES)
set(CMAKE_FIND_ROOT_PATH ${NORVEL_WINDOWS_PREFIXES} /usr/x86_64-w64-mingw32)
set(CMAKE_PREFIX_PATH ${NORVEL_WINDOWS_PREFIXES})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# pkg-config sees what was built for Windows, and nothing of this machine.
list(TRANSFORM NORVEL_WINDOWS_PREFIXES APPEND "/lib/pkgconfig" OUTPUT_VARIABLE norvel_pc_folders)
list(JOIN norvel_pc_folders ":" norvel_pc_folders)
set(ENV{PKG_CONFIG_LIBDIR} "${norvel_pc_folders}")
unset(ENV{PKG_CONFIG_PATH})
unset(ENV{PKG_CONFIG_SYSROOT_DIR})
