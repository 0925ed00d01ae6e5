# SPDX-License-Identifier: MIT
# Code that is made from the interfaces' XML files.
find_program(QDBUSXML2CPP_EXECUTABLE qdbusxml2cpp HINTS /usr/lib/qt5/bin REQUIRED)

# haldend_dbus_interface(TARGET NAME CLASS)
# Makes the adaptor CLASS from dbus/NAME.xml and adds it to TARGET; the header is CLASS.h.
#
# Never with a parent class (-l, and so not by qt5_add_dbus_adaptor): only without one does the
# generator forward the calls by name, which two methods need that no service object has a slot for.
function(haldend_dbus_interface target name class)
    set(xml "${CMAKE_CURRENT_SOURCE_DIR}/${name}.xml")
    set(base "${CMAKE_CURRENT_BINARY_DIR}/${class}")
    add_custom_command(
        OUTPUT "${base}.h" "${base}.cpp"
        COMMAND "${QDBUSXML2CPP_EXECUTABLE}" -m -c ${class} -a ${class} "${xml}"
        WORKING_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}"
        DEPENDS "${xml}"
        COMMENT "Generating ${class} from ${name}.xml"
        VERBATIM)
    add_custom_command(
        OUTPUT "${base}.moc"
        COMMAND Qt5::moc "${base}.h" -o "${base}.moc"
        DEPENDS "${base}.h"
        VERBATIM)
    set_source_files_properties("${base}.h" "${base}.cpp" PROPERTIES SKIP_AUTOMOC ON)
    target_sources(${target} PRIVATE "${base}.cpp" "${base}.h" "${base}.moc")
    target_include_directories(${target} SYSTEM PUBLIC "${CMAKE_CURRENT_BINARY_DIR}")
endfunction()

# haldend_dbus_proxy(TARGET NAME CLASS)
# The other end: makes the proxy CLASS from dbus/NAME.xml and adds it to TARGET; the header is CLASS.h, to be installed.
# From a copy of the file beside it, because the header names the file as the command line does.
function(haldend_dbus_proxy target name class)
    set(base "${CMAKE_CURRENT_BINARY_DIR}/${class}")
    configure_file("${CMAKE_SOURCE_DIR}/dbus/${name}.xml" "${name}.xml" COPYONLY)
    add_custom_command(
        OUTPUT "${base}.h" "${base}.cpp"
        COMMAND "${QDBUSXML2CPP_EXECUTABLE}" -c ${class} -p ${class} ${name}.xml ${name}
        WORKING_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}"
        DEPENDS "${CMAKE_CURRENT_BINARY_DIR}/${name}.xml"
        COMMENT "Generating ${class} from ${name}.xml"
        VERBATIM)
    add_custom_command(
        OUTPUT "${class}_moc.cpp"
        COMMAND Qt5::moc ${class}.h -o ${class}_moc.cpp
        WORKING_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}"
        DEPENDS "${base}.h"
        VERBATIM)
    target_sources(${target} PRIVATE "${base}.cpp" "${base}.h" "${CMAKE_CURRENT_BINARY_DIR}/${class}_moc.cpp")
endfunction()
