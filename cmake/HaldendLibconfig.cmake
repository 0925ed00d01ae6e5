# SPDX-License-Identifier: MIT
# The configuration library as PkgConfig::LIBCONFIG. A cross-build looks for it by pkg-config in its sysroot
# (PKG_CONFIG_SYSROOT_DIR or PKG_CONFIG_LIBDIR, which cmake/powerpc-linux-gnu.cmake sets, or a pkg-config of the target's
# name).
if(CMAKE_CROSSCOMPILING)
    # This machine's own pkg-config would find this machine's own library.
    find_program(PKG_CONFIG_EXECUTABLE NAMES "${CMAKE_LIBRARY_ARCHITECTURE}-pkg-config")
    if(PKG_CONFIG_EXECUTABLE OR DEFINED ENV{PKG_CONFIG_SYSROOT_DIR} OR DEFINED ENV{PKG_CONFIG_LIBDIR})
        find_package(PkgConfig)
        pkg_check_modules(LIBCONFIG IMPORTED_TARGET libconfig)
    endif()
    if(NOT LIBCONFIG_FOUND)
        message(FATAL_ERROR "There is no configuration library for the target's processor. "
            "Point PKG_CONFIG_SYSROOT_DIR and PKG_CONFIG_LIBDIR to a sysroot that has libconfig, or run "
            "scripts/powerpc-sysroot hw")
    endif()
else()
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(LIBCONFIG REQUIRED IMPORTED_TARGET libconfig)
endif()
