# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# Installs the build BUILD_DIR, moves what was installed to PREFIX, and looks at it: the packages must
# not know where they were built or installed first, nor anything of the inside of the libraries.
cmake_minimum_required(VERSION 3.20)
include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")

file(REMOVE_RECURSE "${PREFIX}" "${PREFIX}-first")
run("${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${PREFIX}-first")
file(RENAME "${PREFIX}-first" "${PREFIX}")

foreach(package norvel rvkpcore kparextension)
    foreach(file "cmake/${package}/${package}Config.cmake" "pkgconfig/${package}.pc"
            "lib${package}.so" "lib${package}.so.${VERSION_MAJOR}" "lib${package}.so.${VERSION}")
        if(NOT EXISTS "${PREFIX}/${LIBDIR}/${file}")
            message(SEND_ERROR "${LIBDIR}/${file} was not installed")
        endif()
    endforeach()
endforeach()

file(GLOB_RECURSE texts "${PREFIX}/*.cmake" "${PREFIX}/*.pc" "${PREFIX}/*.h")
list(LENGTH texts count)
if(count LESS 50)
    message(SEND_ERROR "only ${count} headers and package files were installed")
endif()
foreach(file IN LISTS texts)
    file(READ "${file}" text)
    foreach(secret "${SOURCE_DIR}" "${BUILD_DIR}" "${PREFIX}" norvel_engine norvel_warnings
            NORVEL_ENGINE norvel_internals avcodec sanitize "/private/")
        string(FIND "${text}" "${secret}" place)
        if(NOT place EQUAL -1)
            message(SEND_ERROR "${file} knows of '${secret}'")
        endif()
    endforeach()
endforeach()

# Installed programs find the installed libraries where they are now.
file(GLOB programs "${PREFIX}/${BINDIR}/*")
if(NOT programs)
    message(SEND_ERROR "no program was installed")
endif()
foreach(program IN LISTS programs)
    run("${program}" --version)
    file(GET_RUNTIME_DEPENDENCIES EXECUTABLES "${program}" RESOLVED_DEPENDENCIES_VAR found
        UNRESOLVED_DEPENDENCIES_VAR missing)
    if(missing)
        message(SEND_ERROR "${program} does not find ${missing}")
    endif()
    foreach(library IN LISTS found)
        if(library MATCHES "/lib(norvel|rvkpcore|kparextension)\\.so")
            get_filename_component(folder "${library}" DIRECTORY)
            get_filename_component(folder "${folder}" ABSOLUTE)
            if(NOT folder STREQUAL "${PREFIX}/${LIBDIR}")
                message(SEND_ERROR "${program} uses ${library} and not that of its own prefix")
            endif()
        endif()
    endforeach()
endforeach()
