# SPDX-License-Identifier: MIT
# What is installed belongs to one of four components: daemon, client, board (the virtual board and its tools) and dev (what
# clients are built with). debian/ makes a package of each.
include(GNUInstallDirs)

# Below the prefix. Packages of some distributions have them elsewhere.
set(HALDEND_UNIT_DIR "lib/systemd/system" CACHE STRING "Where systemd units are installed")
set(HALDEND_UDEV_RULES_DIR "lib/udev/rules.d" CACHE STRING "Where udev rules are installed")
set(HALDEND_SYSUSERS_DIR "lib/sysusers.d" CACHE STRING "Where systemd-sysusers looks for users")

# The daemon looks in the default folder; another one is for packages that lead there by a link.
set(HALDEND_REGISTER_FILES_DIR "/usr/etc/cnfs" CACHE PATH "Folder that the default register files are installed to")

# The virtual board's programs that other programs start, its preloaded library, and its data.
set(HALDEND_BOARD_PROGRAMS_DIR "${CMAKE_INSTALL_LIBEXECDIR}/haldend-board")
set(HALDEND_BOARD_LIBRARY_DIR "${CMAKE_INSTALL_LIBDIR}/haldend-board")
set(HALDEND_BOARD_DATA_DIR "${CMAKE_INSTALL_DATADIR}/haldend-board")

# All that is installed, for a build that makes nothing else.
add_custom_target(haldend_installed)

# haldend_install_program(TARGET COMPONENT DIRECTORY)
function(haldend_install_program target component directory)
    add_dependencies(haldend_installed ${target})
    install(TARGETS ${target}
        RUNTIME DESTINATION "${directory}" COMPONENT ${component}
        LIBRARY DESTINATION "${directory}" COMPONENT ${component})
endfunction()

# haldend_install_kept(FILE DIRECTORY NAME DEFAULTS)
# Installs a file that its owner may edit: into DIRECTORY, an absolute path, under NAME. DEFAULTS, below the prefix, gets a
# copy, and keeps it to tell the next installation whether the file was edited. An edited file stays as it is, and
# the new one lands beside it as NAME.new.
function(haldend_install_kept file directory name defaults)
    get_filename_component(file "${file}" ABSOLUTE)
    set(values "set(file \"${file}\")\nset(edited \"${directory}/${name}\")\nset(default \"${defaults}/${name}\")")
    install(CODE "${values}\ninclude(\"${CMAKE_SOURCE_DIR}/cmake/install_kept.cmake\")" COMPONENT daemon)
    install(FILES "${file}" DESTINATION "${defaults}" RENAME "${name}" COMPONENT daemon)
endfunction()
