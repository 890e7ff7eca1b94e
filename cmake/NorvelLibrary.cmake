# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# What is installed finds the libraries in its own prefix, so that a prefix can be moved. A build
# against a framework of its own prefix keeps the way there as well.
if(APPLE)
    set(norvel_origin "@loader_path")
else()
    set(norvel_origin "$ORIGIN")
endif()
file(RELATIVE_PATH norvel_bin_to_lib "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
set(CMAKE_INSTALL_RPATH "${norvel_origin}" "${norvel_origin}/${norvel_bin_to_lib}")
if(NORVEL_FRAMEWORK STREQUAL "sdk")
    set(CMAKE_INSTALL_RPATH_USE_LINK_PATH ON)
endif()

# norvel_setup_library(<name> INCLUDE_ROOT <dir> HEADERS <header>...)
#
# What the shared libraries of the project have in common: the warnings, version and SOVERSION, a
# generated export header <name>/<name>_export.h (macro <NAME>_EXPORT), the alias norvel::<name>,
# headers included as <name/Header.h> in the tree and installed, a CMake package <name> and a
# pkg-config file. HEADERS are paths relative to the folder of the calling CMakeLists.txt.
# PACKAGE_DEPENDS lists the CMake packages that the package file finds first, PKGCONFIG_REQUIRES the
# pkg-config modules of the public interface.
function(norvel_setup_library name)
    cmake_parse_arguments(ARG "" "INCLUDE_ROOT" "HEADERS;PACKAGE_DEPENDS;PKGCONFIG_REQUIRES" ${ARGN})

    set(generated "${CMAKE_BINARY_DIR}/include")
    set(export_header "${generated}/${name}/${name}_export.h")
    generate_export_header(${name} EXPORT_FILE_NAME "${export_header}")

    add_library(norvel::${name} ALIAS ${name})
    set_target_properties(${name} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        EXPORT_NAME ${name})
    if(WIN32)
        set_target_properties(${name} PROPERTIES PREFIX "") # norvel.dll, with every compiler
    endif()
    target_include_directories(${name} PUBLIC
        "$<BUILD_INTERFACE:${ARG_INCLUDE_ROOT}>"
        "$<BUILD_INTERFACE:${generated}>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
    target_compile_features(${name} PUBLIC cxx_std_17)
    # For a build against the installed framework the flags stay here: they are no part of the package.
    target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:norvel_warnings>)

    foreach(header IN LISTS ARG_HEADERS)
        get_filename_component(folder "${header}" DIRECTORY)
        install(FILES "${header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${name}/${folder}")
    endforeach()
    install(FILES "${export_header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${name}")
    install(TARGETS ${name} EXPORT ${name}Targets
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")
    set_property(GLOBAL APPEND PROPERTY NORVEL_PUBLIC_HEADERS_${name} ${ARG_HEADERS})

    set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/${name}")
    install(EXPORT ${name}Targets NAMESPACE norvel:: DESTINATION "${package_dir}")

    set(NORVEL_PACKAGE_FIND "include(CMakeFindDependencyMacro)\n")
    foreach(dependency IN LISTS ARG_PACKAGE_DEPENDS)
        string(APPEND NORVEL_PACKAGE_FIND "find_dependency(${dependency})\n")
    endforeach()
    set(NORVEL_PACKAGE_NAME ${name})
    configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/PackageConfig.cmake.in"
        "${CMAKE_BINARY_DIR}/${name}Config.cmake" INSTALL_DESTINATION "${package_dir}")
    write_basic_package_version_file("${CMAKE_BINARY_DIR}/${name}ConfigVersion.cmake"
        COMPATIBILITY SameMajorVersion)
    install(FILES "${CMAKE_BINARY_DIR}/${name}Config.cmake" "${CMAKE_BINARY_DIR}/${name}ConfigVersion.cmake"
        DESTINATION "${package_dir}")

    # The prefix seen from the .pc file, so that an installed tree can be moved.
    file(RELATIVE_PATH NORVEL_PKGCONFIG_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
    list(JOIN ARG_PKGCONFIG_REQUIRES " " NORVEL_PKGCONFIG_REQUIRES)
    configure_file("${PROJECT_SOURCE_DIR}/cmake/package.pc.in" "${CMAKE_BINARY_DIR}/${name}.pc" @ONLY)
    install(FILES "${CMAKE_BINARY_DIR}/${name}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endfunction()
