# SPDX-License-Identifier: MIT
# The target's processor, 32-bit big-endian, by Debian's cross compiler; programs run under qemu's user mode. The
# libraries are those of scripts/powerpc-sysroot.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ppc)
set(CMAKE_C_COMPILER powerpc-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER powerpc-linux-gnu-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR "qemu-ppc;-L;/usr/powerpc-linux-gnu")

# Their folders in the cache, which their own files name too, and not the links to them.
foreach(part qt libconfig faketime)
    file(REAL_PATH "${CMAKE_CURRENT_LIST_DIR}/../build/sysroot-powerpc/${part}" folder)
    list(APPEND CMAKE_FIND_ROOT_PATH "${folder}")
    list(APPEND pkgconfig "${folder}/lib/pkgconfig")
    list(APPEND HALDEND_LIBRARY_PATH "${folder}/lib")
    string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT " -Wl,-rpath-link,${folder}/lib")
endforeach()
list(JOIN HALDEND_LIBRARY_PATH ":" HALDEND_LIBRARY_PATH)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
list(JOIN pkgconfig ":" pkgconfig)
set(ENV{PKG_CONFIG_LIBDIR} "${pkgconfig}")
