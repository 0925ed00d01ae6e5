# The configuration library as PkgConfig::LIBCONFIG: this machine's package, or what scripts/libconfig-powerpc made
# for the target's processor.
if(CMAKE_CROSSCOMPILING)
    set(libconfig "${CMAKE_SOURCE_DIR}/build/powerpc-libconfig")
    if(NOT EXISTS "${libconfig}/lib/libconfig.a")
        message(FATAL_ERROR "There is no configuration library for the target's processor. "
            "To build it: scripts/libconfig-powerpc")
    endif()
    add_library(PkgConfig::LIBCONFIG STATIC IMPORTED)
    set_target_properties(PkgConfig::LIBCONFIG PROPERTIES
        IMPORTED_LOCATION "${libconfig}/lib/libconfig.a"
        INTERFACE_INCLUDE_DIRECTORIES "${libconfig}/include")
else()
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(LIBCONFIG REQUIRED IMPORTED_TARGET libconfig)
endif()
