#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The life of the packages in a scratch root: installed over files of `cmake --install`, edited, upgraded, removed, installed
# again, purged. Without a terminal, as the documentation says.
#
#   life.sh PACKAGE-OF-THE-DAEMON [OPTION-OF-DPKG...]
set -euo pipefail
# shellcheck source=tests/packages/say.sh
. "$(dirname "$0")/say.sh"

package=$1
options=("${@:2}")
version=$(dpkg-deb -f "$package" Version)
cnfs=/etc/haldend/cnfs
quietly() {
    DEBIAN_FRONTEND=noninteractive "$@" >/tmp/dpkg.log 2>&1 </dev/null || { cat /tmp/dpkg.log >&2; return 1; }
}
install_package() {
    quietly dpkg "${options[@]}" --force-confold --force-unsafe-io --install "$1"
}
is_owned() {
    [ "$(stat -c %U:%G:%a "$1")" = haldend:haldend:644 ]
}
is_link() {
    [ "$(readlink /usr/etc/cnfs)" = ../../etc/haldend/cnfs ] || [ "$(readlink -f /usr/etc/cnfs)" = $cnfs ]
}

# The same package as an upgrade: a later version, with two changed defaults.
make_upgrade() {
    dpkg-deb --raw-extract "$package" /tmp/later
    sed -i "s/^Version: .*/Version: $version+later/" /tmp/later/DEBIAN/control
    for file in fpga lime saa7113; do echo "# later" >>/tmp/later$cnfs/$file.cnf; done
    (cd /tmp/later && find . -path ./DEBIAN -prune -o -type f -printf '%P\0' | xargs -0 md5sum >DEBIAN/md5sums)
    dpkg-deb --root-owner-group -Znone --build /tmp/later /tmp/later.deb >/dev/null
}

fact "no user and no folder of the daemon before" bash -c '! getent passwd haldend && [ ! -e /etc/haldend ]'

# Left by an installation from source: a real folder, with an edited file and one of the integrator's own.
mkdir -p /usr/etc/cnfs
dpkg-deb --fsys-tarfile "$package" | tar -xO ./etc/haldend/cnfs/saa7129.cnf >/usr/etc/cnfs/saa7129.cnf
echo '# edited before' >>/usr/etc/cnfs/saa7129.cnf
echo '# mine' >/usr/etc/cnfs/colours.cnf

fact "installs over a real folder" install_package "$package"
fact "/usr/etc/cnfs is a link then" is_link
fact "what was edited in the folder is kept" contains $cnfs/saa7129.cnf '# edited before'
fact "the integrator's own file is kept" contains $cnfs/colours.cnf '# mine'
fact "the user is there" getent passwd haldend
for file in fpga lime saa7113 saa7129; do fact "the daemon may save $file.cnf" is_owned $cnfs/$file.cnf; done

echo '# edited' >>$cnfs/lime.cnf
fact "the daemon's user saves through the link" \
    setpriv --reuid=haldend --regid=haldend --clear-groups sh -c 'echo "# saved" >/usr/etc/cnfs/fpga.cnf'
make_upgrade
fact "upgrades" install_package /tmp/later.deb
fact "an edited file survives" contains $cnfs/lime.cnf '# edited'
fact "... without the new lines" lacks $cnfs/lime.cnf '# later'
fact "a saved file survives" [ "$(cat $cnfs/fpga.cnf)" = '# saved' ]
fact "a file as it came is the new one" contains $cnfs/saa7113.cnf '# later'
for file in fpga lime saa7113; do fact "the daemon may still save $file.cnf" is_owned $cnfs/$file.cnf; done
fact "the new defaults are beside them" [ -f $cnfs/lime.cnf.dpkg-dist ]

mkdir -p /var/lib/haldend
echo film >/var/lib/haldend/film.ts
fact "is removed" quietly dpkg --remove haldend
fact "the files stay" contains $cnfs/lime.cnf '# edited'
fact "the link goes" [ ! -L /usr/etc/cnfs ]
fact "is installed again" install_package /tmp/later.deb
fact "... with the edited file" contains $cnfs/lime.cnf '# edited'
fact "... and the saved one" [ "$(cat $cnfs/fpga.cnf)" = '# saved' ]
fact "... and the link" is_link
fact "is installed over itself" install_package /tmp/later.deb
fact "... with the edited file" contains $cnfs/lime.cnf '# edited'
fact "... and the saved one" [ "$(cat $cnfs/fpga.cnf)" = '# saved' ]

fact "is purged" quietly dpkg --purge haldend
fact "the files are gone" [ ! -e /etc/haldend ]
fact "the link is gone" bash -c '[ ! -L /usr/etc/cnfs ] && [ ! -e /usr/etc/cnfs ]'
fact "the settings are gone" [ ! -e /etc/default/haldend ]
fact "films are not the package's" contains /var/lib/haldend/film.ts film
