# SPDX-FileCopyrightText: 2026 The norvel developers
# SPDX-License-Identifier: MIT

# The tests of what is installed, label `packages`: included by the tests of this source tree.

set(packages_dir "${CMAKE_BINARY_DIR}/packages")

# norvel_add_package_test(<name> <script>): a test that runs a script of this folder.
function(norvel_add_package_test name script)
    add_test(NAME ${name} COMMAND "${CMAKE_COMMAND}"
        "-DSOURCE_DIR=${PROJECT_SOURCE_DIR}" "-DBUILD_DIR=${CMAKE_BINARY_DIR}"
        "-DPREFIX=${packages_dir}/prefix" "-DWORK_DIR=${packages_dir}/${name}"
        "-DBINDIR=${CMAKE_INSTALL_BINDIR}" "-DLIBDIR=${CMAKE_INSTALL_LIBDIR}"
        "-DVERSION=${PROJECT_VERSION}" "-DVERSION_MAJOR=${PROJECT_VERSION_MAJOR}"
        "-DGENERATOR=${CMAKE_GENERATOR}" "-DCXX_COMPILER=${CMAKE_CXX_COMPILER}"
        -P "${PROJECT_SOURCE_DIR}/tests/consumer/${script}")
    set_tests_properties(${name} PROPERTIES LABELS packages TIMEOUT ${norvel_test_timeout})
endfunction()

norvel_add_package_test(packages_install Install.cmake)
set_tests_properties(packages_install PROPERTIES FIXTURES_SETUP installed_packages)
norvel_add_package_test(packages_find_package FindPackage.cmake)
norvel_add_package_test(packages_pkg_config PkgConfig.cmake)
norvel_add_package_test(packages_sdk Sdk.cmake)
set_tests_properties(packages_find_package packages_pkg_config packages_sdk PROPERTIES
    FIXTURES_REQUIRED installed_packages)
