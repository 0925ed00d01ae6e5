# SPDX-License-Identifier: MIT
# Part of an installation: puts ${file} in place as ${edited}, an absolute path, unless the owner has edited it. ${default},
# below the prefix, is what an earlier installation put there.
set(place "$ENV{DESTDIR}${edited}")
if(IS_ABSOLUTE "${default}")
    set(earlier "$ENV{DESTDIR}${default}")
else()
    set(earlier "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/${default}")
endif()

set(new "${place}")
if(EXISTS "${place}")
    file(SHA256 "${place}" found)
    file(SHA256 "${file}" wanted)
    set(known "${wanted}")
    if(EXISTS "${earlier}")
        file(SHA256 "${earlier}" known)
    endif()
    if(NOT found STREQUAL wanted AND NOT found STREQUAL known)
        set(new "${place}.new")
        message("-- Kept, because it was edited: ${place}")
    endif()
endif()
get_filename_component(folder "${edited}" DIRECTORY)
get_filename_component(name "${new}" NAME)
# This looks at DESTDIR by itself, and also fills install_manifest.txt.
file(INSTALL DESTINATION "${folder}" TYPE FILE RENAME "${name}" FILES "${file}")
