# SPDX-License-Identifier: MIT
# Checks the board library's symbols: cmake -DLIBRARY=... -DNM=... -DREADELF=... -DMAP=... -P symbols_check.cmake
#
# It exports what preload.map lists; it calls nothing that it takes over, which would lead back into itself;
# and it needs the C library alone, because it is loaded into programs that it knows nothing about.

cmake_minimum_required(VERSION 3.25)

function(symbols result option)
    execute_process(COMMAND "${NM}" -D --format=posix ${option} "${LIBRARY}"
        OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "[^\n]+" lines "${output}")
    set(names)
    foreach(line IN LISTS lines)
        string(REGEX REPLACE "[@ ].*" "" name "${line}")
        list(APPEND names "${name}")
    endforeach()
    set(${result} "${names}" PARENT_SCOPE)
endfunction()

file(READ "${MAP}" text)
string(REGEX REPLACE ".*global:(.*)local:.*" "\\1" text "${text}")
string(REGEX MATCHALL "[A-Za-z_0-9]+" listed "${text}")
symbols(exported --defined-only)
symbols(imported --undefined-only)
execute_process(COMMAND "${READELF}" -d "${LIBRARY}" OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\\(NEEDED\\)[^\n]*\\[[^]]+\\]" needed "${dynamic}")

set(failed FALSE)
macro(complain text)
    message("${text}")
    set(failed TRUE)
endmacro()

if(NOT listed OR NOT exported OR NOT imported OR NOT needed)
    message(FATAL_ERROR "No symbols found: is ${LIBRARY} a shared library, and ${MAP} a version script?")
endif()
foreach(name IN LISTS exported)
    if(NOT name IN_LIST listed)
        complain("${name} is exported but not listed: make it static or hidden, or list it in preload.map.")
    endif()
endforeach()
foreach(name IN LISTS listed)
    if(NOT name IN_LIST exported)
        complain("${name} is listed but not exported: define it with WRAPS, or take it out of preload.map.")
    endif()
    if(name IN_LIST imported)
        complain("${name} is taken over and called: reach the hidden one with NEXT(${name}, ...).")
    endif()
endforeach()
foreach(entry IN LISTS needed)
    if(NOT entry MATCHES "\\[(libc\\.so|ld-|ld64)")
        complain("${entry}: only the C library may be needed. Which of its functions crept in, and from where?")
    endif()
endforeach()
if(failed)
    message(FATAL_ERROR "${LIBRARY} is not fit to be preloaded.")
endif()
