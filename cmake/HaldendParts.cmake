# SPDX-License-Identifier: MIT
# What can be built here. A part whose package is missing is left out, and said so in a warning; HALDEND_COMPLETE, which
# the presets of ./check set, makes an error of it.

option(HALDEND_COMPLETE "Fail where a part would be left out for a missing package" OFF)

# haldend_leave_out(PART PACKAGE)
function(haldend_leave_out part package)
    if(HALDEND_COMPLETE)
        message(FATAL_ERROR "${part} can't be built without ${package}.")
    endif()
    message(WARNING "Left out: ${part}. To build it, install ${package}.")
endfunction()

set(HALDEND_LEAVE_OUT "" CACHE STRING "Parts to leave out, such as HALDEND_BOARD, though they could be built")

# haldend_part(VARIABLE PART PACKAGE CONDITION...)
# Sets VARIABLE to whether the part is built: it isn't among those to leave out, and all conditions hold.
function(haldend_part variable part package)
    if(variable IN_LIST HALDEND_LEAVE_OUT)
        message(STATUS "Left out, as asked for: ${part}")
        set(${variable} OFF PARENT_SCOPE)
        return()
    endif()
    set(${variable} ON PARENT_SCOPE)
    foreach(condition IN LISTS ARGN)
        if(NOT ${condition})
            haldend_leave_out("${part}" "${package}")
            set(${variable} OFF PARENT_SCOPE)
            return()
        endif()
    endforeach()
endfunction()

# haldend_find_test_programs(VARIABLE PART PROGRAM...)
# Sets VARIABLE to whether the programs that a test runs are there; each is in Debian's package of the same name, but
# for those in the list.
set(HALDEND_PACKAGE_busctl systemd)
set(HALDEND_PACKAGE_chromedriver chromium-driver)
set(HALDEND_PACKAGE_dbus-daemon dbus)
set(HALDEND_PACKAGE_dbus-monitor dbus)
set(HALDEND_PACKAGE_ffprobe ffmpeg)

function(haldend_find_test_programs variable part)
    set(${variable} ON PARENT_SCOPE)
    foreach(program IN LISTS ARGN)
        find_program(HALDEND_PROGRAM_${program} ${program})
        mark_as_advanced(HALDEND_PROGRAM_${program})
        if(NOT HALDEND_PROGRAM_${program})
            set(package ${program})
            if(DEFINED HALDEND_PACKAGE_${program})
                set(package ${HALDEND_PACKAGE_${program}})
            endif()
            haldend_leave_out("${part}" "${program} (Debian: ${package})")
            set(${variable} OFF PARENT_SCOPE)
        endif()
    endforeach()
endfunction()
