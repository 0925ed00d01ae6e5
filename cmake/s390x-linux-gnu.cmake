# SPDX-License-Identifier: MIT
# A 64-bit big-endian processor, which Debian has all libraries for: the second opinion on the order of bytes. Programs
# run under qemu's user mode. The libraries are those of scripts/s390x-sysroot.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR s390x)
set(CMAKE_C_COMPILER s390x-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER s390x-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE s390x-linux-gnu)

file(REAL_PATH "${CMAKE_CURRENT_LIST_DIR}/../build/sysroot-s390x" sysroot)
set(CMAKE_CROSSCOMPILING_EMULATOR "qemu-s390x;-L;${sysroot}")
set(CMAKE_FIND_ROOT_PATH "${sysroot}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-Wl,-rpath-link,${sysroot}/usr/lib/s390x-linux-gnu")
set(ENV{PKG_CONFIG_LIBDIR} "${sysroot}/usr/lib/s390x-linux-gnu/pkgconfig:${sysroot}/usr/share/pkgconfig")
set(ENV{PKG_CONFIG_SYSROOT_DIR} "${sysroot}")
