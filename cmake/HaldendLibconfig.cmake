# SPDX-License-Identifier: MIT
# The configuration library as PkgConfig::LIBCONFIG. A cross-build looks for it by pkg-config in its sysroot
# (PKG_CONFIG_SYSROOT_DIR and PKG_CONFIG_LIBDIR, or a pkg-config of the target's name); where there is none, it takes
# the one that scripts/libconfig-powerpc made.
set(libconfig "${CMAKE_SOURCE_DIR}/build/powerpc-libconfig")

if(CMAKE_CROSSCOMPILING)
    # This machine's own pkg-config would find this machine's own library.
    find_program(PKG_CONFIG_EXECUTABLE NAMES "${CMAKE_LIBRARY_ARCHITECTURE}-pkg-config")
    if(PKG_CONFIG_EXECUTABLE OR DEFINED ENV{PKG_CONFIG_SYSROOT_DIR})
        find_package(PkgConfig)
        pkg_check_modules(LIBCONFIG IMPORTED_TARGET libconfig)
    endif()
    if(NOT LIBCONFIG_FOUND)
        if(NOT EXISTS "${libconfig}/lib/libconfig.a")
            message(FATAL_ERROR "There is no configuration library for the target's processor. "
                "Point PKG_CONFIG_SYSROOT_DIR and PKG_CONFIG_LIBDIR to a sysroot that has libconfig, or run "
                "scripts/libconfig-powerpc")
        endif()
        add_library(PkgConfig::LIBCONFIG STATIC IMPORTED)
        set_target_properties(PkgConfig::LIBCONFIG PROPERTIES
            IMPORTED_LOCATION "${libconfig}/lib/libconfig.a"
            INTERFACE_INCLUDE_DIRECTORIES "${libconfig}/include")
    endif()
else()
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(LIBCONFIG REQUIRED IMPORTED_TARGET libconfig)
endif()
