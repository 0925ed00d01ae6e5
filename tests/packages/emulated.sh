#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Packages for another architecture in a scratch root: their programs under the emulator, and clients built with them. What this
# machine's own programs print has to come out.
#
#   emulated.sh SOURCE-TREE ARCHITECTURE THIS-MACHINE'S-CONTENTS PACKAGE...
set -euo pipefail
# shellcheck source=tests/packages/say.sh
. "$(dirname "$0")/say.sh"

tree=$1
architecture=$2
native=$3
shift 3
triplet=$(dpkg-architecture -a "$architecture" -q DEB_HOST_MULTIARCH 2>/dev/null)
toolchain=$tree/cmake/$triplet.cmake
sysroot=$tree/build/sysroot-$architecture
export QT_QPA_PLATFORM=offscreen

# Where its libraries are, how its programs are run, and how pkg-config finds what they are built with. A sysroot that is
# a root gets the package for clients too.
case "$architecture" in
powerpc)
    libraries=$(realpath "$sysroot"/*/lib | paste -s -d :)
    emulator=(qemu-ppc -L "/usr/$triplet" -E "LD_LIBRARY_PATH=$libraries")
    of_sysroot=(env "PKG_CONFIG_LIBDIR=/usr/lib/$triplet/pkgconfig:${libraries//:/\/pkgconfig:}/pkgconfig")
    ;;
s390x)
    libraries=$(realpath "$sysroot/usr/lib/$triplet")
    emulator=(qemu-s390x -L "$sysroot")
    of_sysroot=(env "PKG_CONFIG_SYSROOT_DIR=$(realpath "$sysroot")" "PKG_CONFIG_LIBDIR=$libraries/pkgconfig")
    for package in "$@"; do
        case "${package##*/}" in haldend-dev_*) dpkg-deb --extract "$package" "$(realpath "$sysroot")" ;; esac
    done
    ;;
esac

quietly() {
    DEBIAN_FRONTEND=noninteractive "$@" >/tmp/quiet.log 2>&1 </dev/null || { cat /tmp/quiet.log >&2; return 1; }
}
fact "all packages install" quietly dpkg --force-architecture --force-depends --force-confold --force-unsafe-io --install "$@"

# Both from their folders: some print their own path.
said() {
    local status=0
    "$@" 2>&1 </dev/null || status=$?
    printf 'status %d\n' "$status"
}
# says_the_same PROGRAM ARGUMENT...
says_the_same() {
    diff <(cd "$native" && said ".$1" "${@:2}") <(cd / && said "${emulator[@]}" ".$1" "${@:2}")
}
demo=/usr/libexec/haldend-board
fact "haldend -h" says_the_same /usr/sbin/haldend -h
fact "haldenctl --help" says_the_same /usr/bin/haldenctl --help
fact "halden-board --help" says_the_same /usr/bin/halden-board --help
for program in /usr/bin/{haldenctl,halden-board,halden-codec} $demo/{halden-camera,halden-demo,halden-tour}; do
    fact "${program##*/} --version" says_the_same "$program" --version
done

# Files as they are delivered, and one with a mistake.
fact "the register files are right by its reader" says_the_same /usr/bin/haldenctl check-registers /etc/haldend/cnfs
fact "... and printed as here" says_the_same /usr/bin/haldenctl check-registers --diff /etc/haldend/cnfs "$native/usr/share/haldend/cnfs"
mkdir /tmp/wrong
sed 's/=/:=:/' /etc/haldend/cnfs/saa7113.cnf >/tmp/wrong/saa7113.cnf
finds_mistake() {
    ! "${emulator[@]}" /usr/bin/haldenctl check-registers /tmp/wrong && says_the_same /usr/bin/haldenctl check-registers /tmp/wrong
}
fact "... which finds a mistake" finds_mistake

# Without a bus the daemon ends when the chips are programmed: that is its last step but the clients.
board=/tmp/board
fact "makes a virtual board" "${emulator[@]}" /usr/bin/halden-board create $board
starts_up_to_the_bus() {
    HALDEN_BOARD=$board "${emulator[@]}" -E "LD_PRELOAD=/usr/lib/$triplet/haldend-board/libhaldenboard.so" \
        -E DBUS_SYSTEM_BUS_ADDRESS=unix:path=/nowhere /usr/sbin/haldend -i $board/i2c-1 -f $board/fpgamem -l $board/fb0 \
        >/tmp/haldend.log 2>&1 </dev/null && return 1
    grep -qF 'cMultimediaDaemon.setupDBusConnections()' /tmp/haldend.log || { cat /tmp/haldend.log; return 1; }
}
fact "the daemon programs its chips, and looks for a bus" starts_up_to_the_bus

# Clients.
is_linked() {
    cmp <(od -An -tx1 -j 18 -N 2 "$1") <(od -An -tx1 -j 18 -N 2 /usr/sbin/haldend)
}
fact "find_package(haldend) configures a client" quietly cmake -S "$tree/tests/packages/client" -B /tmp/client \
    -DCMAKE_TOOLCHAIN_FILE="$toolchain" -Dhaldend_DIR="/usr/lib/$triplet/cmake/haldend"
fact "... and builds it" quietly cmake --build /tmp/client
fact "... for $architecture" is_linked /tmp/client/client
flags=$("${of_sysroot[@]}" pkg-config --cflags --libs haldend)
# shellcheck disable=SC2086
fact "pkg-config builds it too" quietly "$triplet-g++" -fPIC "$tree/tests/packages/client/client.cpp" -o /tmp/client/by-pkg-config \
    -Wl,-rpath-link,"$libraries" $flags
fact "... for $architecture" is_linked /tmp/client/by-pkg-config
fact "interfaces_dir has the interfaces" \
    [ -f "$("${of_sysroot[@]}" pkg-config --variable=interfaces_dir haldend)/velmar.haldend.videodisplay.xml" ]
fact "the mock template is one for Python" /usr/bin/python3 -c 'import sys; from importlib.machinery import SourceFileLoader as loader
assert loader("template", sys.argv[1]).load_module().BUS_NAME == "velmar.haldend"' "$(dpkg -L haldend-dev | grep 'templates/haldend.py$')"
