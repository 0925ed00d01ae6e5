# SPDX-License-Identifier: MIT
# Checks that no folder includes from one above it: cmake -DROOT=... -P include_order.cmake
#
# The order is a list, so there is no circle either. Tests may include everything; only their harness, in
# tests/support, is included by others.

cmake_minimum_required(VERSION 3.25)

# Bottom up.
set(order
    hw
    regdb
    fpga
    platform
    overlay
    video
    dbus
    daemon
    ctl
    board/layout
    board/camera
    board/state
    board/film
    board/judge
    board/devices
    board/preload
    board/follow
    board/registers
    board/picture
    board/create
    board/trace
    board/codec
    board/feed
    board/serve
    board/tool
    board/demo
    tests/support
    board/tour
    bench
    bench/target)

# The two headers that stand below everything, wherever they lie: the register records and the event logger.
set(everybodys regdb/reg_types.h daemon/CEventLogger.h)

set(failed FALSE)
set(includes 0)
file(GLOB_RECURSE files RELATIVE "${ROOT}" "${ROOT}/*.c" "${ROOT}/*.cpp" "${ROOT}/*.h")
foreach(file IN LISTS files)
    if(file MATCHES "^(build[^/]*|tests|\\.[^/]*)/")
        continue()
    endif()
    get_filename_component(folder "${file}" DIRECTORY)
    list(FIND order "${folder}" place)
    if(place EQUAL -1)
        message("${file}: ${folder}/ has no place in the order; cmake/include_order.cmake lists it.")
        set(failed TRUE)
        continue()
    endif()
    file(STRINGS "${ROOT}/${file}" lines REGEX "^#include \"[^\"]*/")
    foreach(line IN LISTS lines)
        string(REGEX REPLACE "^#include \"([^\"]*)\".*" "\\1" included "${line}")
        get_filename_component(other "${included}" DIRECTORY)
        list(FIND order "${other}" below)
        math(EXPR includes "${includes} + 1")
        if(NOT included IN_LIST everybodys AND (below EQUAL -1 OR below GREATER place))
            message("${file} includes ${included}, which stands above it.")
            set(failed TRUE)
        endif()
    endforeach()
endforeach()
if(includes EQUAL 0)
    message(FATAL_ERROR "No includes found: is ${ROOT} the source tree?")
endif()
if(failed)
    message(FATAL_ERROR "Includes run upward.")
endif()
message("${includes} includes, none runs upward")
