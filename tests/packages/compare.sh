# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Sourced by the checks of the packages: whether those for another architecture have what this machine's have. CONTENTS is
# a folder with all packages unpacked, TRIPLET the name of the architecture in paths.

# neutral TRIPLET: standard input, with the name of the architecture taken out.
neutral() {
    LC_ALL=C sed "s/$1/TRIPLET/g"
}

# Path, kind, mode, and a link's target.
list_files() {
    (cd "$1" && find . -printf '%P %y %m %l\n') | neutral "$2" | LC_ALL=C sort
}

# same_files CONTENTS TRIPLET CONTENTS TRIPLET
same_files() {
    diff <(list_files "$1" "$2") <(list_files "$3" "$4")
}

is_code() {
    cmp -s -n 4 "$1" <(printf '\177ELF') || [[ $1 == *.a ]]
}

# same_bytes CONTENTS TRIPLET CONTENTS TRIPLET
# Of all files but code. One has the size of a pointer in it.
same_bytes() {
    local path other checked=0
    while IFS= read -r -d '' path; do
        case "$path" in */haldendConfigVersion.cmake) continue ;; esac
        ! is_code "$1/$path" || continue
        other=$3/${path//$2/$4}
        cmp <(neutral "$2" <"$1/$path") <(neutral "$4" <"$other") || { echo "$path differs"; return 1; }
        checked=$((checked + 1))
    done < <(cd "$1" && find . -type f -print0)
    [ "$checked" -ge 30 ]
}

# same_control PACKAGE PACKAGE: what installs them, and which files are their owner's.
same_control() {
    local member
    for member in conffiles preinst postinst prerm postrm; do
        cmp <(dpkg-deb --ctrl-tarfile "$1" | tar -xO "./$member" 2>&1) \
            <(dpkg-deb --ctrl-tarfile "$2" | tar -xO "./$member" 2>&1) || { echo "$member differs"; return 1; }
    done
}

# The names in a package's dependencies.
dependencies() {
    dpkg-deb -f "$1" Depends | tr ',|' '\n\n' | sed -E 's/^ *([^ :]+).*/\1/' | LC_ALL=C sort -u
}

# depends_on_no_more PACKAGE PACKAGE: of the second, on nothing that the first doesn't depend on.
depends_on_no_more() {
    local more
    more=$(LC_ALL=C comm -13 <(dependencies "$1") <(dependencies "$2"))
    [ -z "$more" ] || { echo "$more"; return 1; }
}

# Class, byte order and processor, in the file's own bytes.
machine_of() {
    od -An -tx1 -j 4 -N 2 "$1" && od -An -tx1 -j 18 -N 2 "$1"
}

# same_machine FILE FILE
same_machine() {
    [ "$(machine_of "$1")" = "$(machine_of "$2")" ]
}
