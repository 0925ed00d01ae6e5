# SPDX-License-Identifier: MIT
# How every target of the project is made: one static library a folder, the same warnings and
# language level for all, one CTest entry a test program.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
# Without the times of the files, which differ from one source tree to the next.
set(CMAKE_AUTORCC_OPTIONS --format-version 1)

add_library(haldend_options INTERFACE)
target_include_directories(haldend_options INTERFACE "${CMAKE_SOURCE_DIR}")
target_compile_options(haldend_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual>)
# Recordings and images outgrow 31-bit offsets on the 32-bit target.
target_compile_definitions(haldend_options INTERFACE _FILE_OFFSET_BITS=64 _GNU_SOURCE)
# Nor do its 31-bit seconds outlast January 2038, and stat() refuses a file with a later time.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    target_compile_definitions(haldend_options INTERFACE _TIME_BITS=64)
endif()

# The sanitizers of some presets. Apart from haldend_options because the preloaded board library has to stay free of any
# run-time library.
add_library(haldend_sanitize INTERFACE)
if(HALDEND_SANITIZE)
    set(sanitizers address,undefined)
    if(HALDEND_SANITIZE STREQUAL "undefined")
        set(sanitizers undefined)
    endif()
    set(flags -fsanitize=${sanitizers} -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_compile_options(haldend_sanitize INTERFACE ${flags})
    target_link_options(haldend_sanitize INTERFACE ${flags})
endif()

# haldend_count(TARGET)
# Counts the runs of the target's lines and branches, if it is the daemon's. Not optimised: each line is its own.
option(HALDEND_COVERAGE "Count the runs of the daemon's lines and branches, by gcc" OFF)
set(HALDEND_DAEMON_FOLDERS regdb hw fpga platform overlay video dbus daemon)

function(haldend_count target)
    file(RELATIVE_PATH folder "${CMAKE_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
    if(HALDEND_COVERAGE AND folder IN_LIST HALDEND_DAEMON_FOLDERS)
        target_compile_options(${target} PRIVATE -O0 --coverage -fprofile-update=atomic)
        target_link_options(${target} PUBLIC --coverage)
        set_target_properties(${target} PROPERTIES UNITY_BUILD OFF)
    endif()
endfunction()

# Most of a source's compilation goes into the headers of Qt and the C++ library. Presets that build for the checks compile
# the sources of a folder together; the others, and so the packages, one by one, which shows a source that needs another's
# includes.
option(HALDEND_UNITY "Compile the sources of a library or program together" OFF)
set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)

# haldend_moc(SOURCE OUTPUT)
# Runs moc. It sees the project's own headers, some of which list slots in macros, and none of Qt. It looks in its working
# directory too, where it must not find the moc file of an earlier build, which the source includes.
function(haldend_moc source output)
    add_custom_command(
        OUTPUT "${output}"
        COMMAND Qt5::moc "-I${CMAKE_SOURCE_DIR}" --output-dep-file --dep-file-path "${output}.d"
            "${CMAKE_CURRENT_SOURCE_DIR}/${source}" -o "${output}"
        DEPENDS "${source}"
        DEPFILE "${output}.d"
        WORKING_DIRECTORY "${CMAKE_SOURCE_DIR}"
        VERBATIM)
endfunction()

# haldend_moc_headers(TARGET HEADER...)
# Makes the headers' moc files, as sources like others. CMake's own way (AUTOMOC) runs CMake, the compiler and moc for each
# target, and compiles a file of its own for it.
function(haldend_moc_headers target)
    foreach(header IN LISTS ARGN)
        get_filename_component(name "${header}" NAME_WE)
        set(moc "${CMAKE_CURRENT_BINARY_DIR}/moc_${name}.cpp")
        haldend_moc("${header}" "${moc}")
        target_sources(${target} PRIVATE "${moc}")
    endforeach()
    set_target_properties(${target} PROPERTIES AUTOMOC OFF)
endfunction()

# haldend_library(NAME SOURCES file... [MOC header...] [LINK target...])
# A folder's static library. MOC lists the headers with Q_OBJECT; without it AUTOMOC looks for them.
function(haldend_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;MOC;LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON UNITY_BUILD ${HALDEND_UNITY})
    if(ARG_MOC)
        haldend_moc_headers(${name} ${ARG_MOC})
    endif()
    target_link_libraries(${name} PUBLIC haldend_options haldend_sanitize ${ARG_LINK})
    haldend_count(${name})
endfunction()

# haldend_program(NAME SOURCES file... [MOC header...] [LINK target...])
function(haldend_program name)
    cmake_parse_arguments(ARG "" "" "SOURCES;MOC;LINK" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON UNITY_BUILD ${HALDEND_UNITY})
    if(ARG_MOC)
        haldend_moc_headers(${name} ${ARG_MOC})
    endif()
    target_link_libraries(${name} PRIVATE haldend_options haldend_sanitize ${ARG_LINK})
    haldend_startable(${name})
    haldend_count(${name})
endfunction()

# haldend_startable(PROGRAM)
# For programs that others start: in a cross build, a script of the same name that runs it in the emulator. The programs
# find it by haldend_starter, and shells by putting its folder on the path.
set(HALDEND_STARTERS "${CMAKE_BINARY_DIR}/emulated")

function(haldend_startable name)
    if(NOT CMAKE_CROSSCOMPILING)
        return()
    endif()
    list(JOIN CMAKE_CROSSCOMPILING_EMULATOR " " emulator)
    file(GENERATE OUTPUT "${HALDEND_STARTERS}/${name}"
        CONTENT "#!/bin/sh\nexec ${emulator} \"$<TARGET_FILE:${name}>\" \"$@\"\n"
        FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
endfunction()

# haldend_starter(VARIABLE PROGRAM)
# Sets VARIABLE to the file that starts the program.
function(haldend_starter variable name)
    set(${variable} "$<TARGET_FILE:${name}>" PARENT_SCOPE)
    if(CMAKE_CROSSCOMPILING)
        set(${variable} "${HALDEND_STARTERS}/${name}" PARENT_SCOPE)
    endif()
endfunction()

# haldend_versioned(PROGRAM)
# Gives a program around the daemon the version to print for --version, and tests that it does.
function(haldend_versioned name)
    target_compile_definitions(${name} PRIVATE HALDEND_VERSION="${PROJECT_VERSION}")
    if(BUILD_TESTING)
        string(REPLACE "." "\\." version "${PROJECT_VERSION}")
        add_test(NAME unit/${name}_version COMMAND ${name} --version)
        set_tests_properties(unit/${name}_version PROPERTIES
            LABELS unit
            ENVIRONMENT "${HALDEND_TEST_ENVIRONMENT}"
            PASS_REGULAR_EXPRESSION "^${name} ${version}\n$")
    endif()
endfunction()

# The environment of every test.
set(HALDEND_TEST_ENVIRONMENT
    "QT_QPA_PLATFORM=offscreen"
    "LC_ALL=C.UTF-8"
    "TZ=UTC"
    # The board library is preloaded before the sanitizers'.
    "ASAN_OPTIONS=verify_asan_link_order=0"
    "UBSAN_OPTIONS=print_stacktrace=1")

# haldend_precompile_test_headers()
# Makes haldend_test_headers: the headers that nearly every QtTest program includes, compiled once for all of them,
# which halves the compilation of a test. The sources still include what they use: clang-tidy runs without this.
set(HALDEND_TEST_MODULES Qt5::Core Qt5::DBus Qt5::Gui Qt5::Test)

function(haldend_precompile_test_headers)
    add_library(haldend_test_headers OBJECT "${CMAKE_SOURCE_DIR}/tests/test_headers.cpp")
    target_link_libraries(haldend_test_headers PRIVATE haldend_options haldend_sanitize ${HALDEND_TEST_MODULES})
    target_precompile_headers(haldend_test_headers PRIVATE <QtDBus> <QtTest> <QImage> <QProcess>)
endfunction()

# haldend_reuse_headers(TARGET HEADERS)
# Takes the precompiled headers of another target. The moc file that CMake adds to each target includes nothing, or what
# it needs: to load the headers would take longer than to compile it.
function(haldend_reuse_headers target headers)
    target_precompile_headers(${target} REUSE_FROM ${headers})
    set_source_files_properties("${CMAKE_CURRENT_BINARY_DIR}/${target}_autogen/mocs_compilation.cpp"
        PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
endfunction()

# haldend_use_test_headers(TARGET)
# The target needs all modules: their definitions have to be the same, and the sanitizers ask for their types.
function(haldend_use_test_headers target)
    target_link_libraries(${target} PRIVATE ${HALDEND_TEST_MODULES})
    haldend_reuse_headers(${target} haldend_test_headers)
endfunction()

# haldend_moc_source(TARGET SOURCE)
# Makes SOURCE's moc file, which it includes.
function(haldend_moc_source target source)
    get_filename_component(name "${source}" NAME_WE)
    set(moc "${CMAKE_CURRENT_BINARY_DIR}/${name}.moc")
    haldend_moc("${source}" "${moc}")
    set_target_properties(${target} PROPERTIES AUTOMOC OFF)
    target_sources(${target} PRIVATE "${moc}")
    target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}")
endfunction()

# haldend_test(NAME LABEL unit|system SOURCES file... [LINK target...])
# A QtTest program and its CTest entry. A skipped test counts as failed: a check that did not run has
# not passed.
function(haldend_test name)
    cmake_parse_arguments(ARG "" "LABEL" "SOURCES;LINK" ${ARGN})
    haldend_program(${name} SOURCES ${ARG_SOURCES} LINK Qt5::Test ${ARG_LINK})
    set_target_properties(${name} PROPERTIES UNITY_BUILD OFF)
    haldend_moc_source(${name} ${name}.cpp)
    haldend_use_test_headers(${name})
    haldend_add_test(${name} ${ARG_LABEL} "SKIP   :")
endfunction()

# haldend_hw_test(NAME SOURCES file... [LINK target...])
# A GoogleTest program of the hardware layer, free of Qt, and its CTest entry.
function(haldend_hw_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    haldend_program(${name} SOURCES ${ARG_SOURCES} LINK haldend_gtest ${ARG_LINK})
    set_target_properties(${name} PROPERTIES AUTOMOC OFF UNITY_BUILD OFF)
    haldend_add_test(${name} hw "SKIPPED")
endfunction()

function(haldend_add_test name label skipped)
    set(leaks "${CMAKE_SOURCE_DIR}/tests/lsan.supp")
    if(label STREQUAL "hw")
        set(leaks "${CMAKE_SOURCE_DIR}/tests/lsan_hw.supp")
    endif()
    if(NOT TARGET haldend_${label}_tests)
        add_custom_target(haldend_${label}_tests) # builds all of the label
    endif()
    add_dependencies(haldend_${label}_tests ${name})
    add_test(NAME ${label}/${name} COMMAND ${name})
    set_tests_properties(${label}/${name} PROPERTIES
        LABELS ${label}
        TIMEOUT 300
        FAIL_REGULAR_EXPRESSION "${skipped}"
        ENVIRONMENT "${HALDEND_TEST_ENVIRONMENT};LSAN_OPTIONS=print_suppressions=0:suppressions=${leaks}")
endfunction()
