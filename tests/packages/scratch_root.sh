# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# A scratch root: this machine's own files, with all changes in memory. A script runs in it as root, with processes, /run and
# /tmp of its own, and everything ends with it.

# in_scratch_root SCRIPT [ARGUMENT...]
# Needs root, or sudo. The script finds this source tree under its usual path.
in_scratch_root() {
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    "${as_root[@]}" unshare --mount --pid --ipc --net --fork --kill-child --propagation private \
        bash "${BASH_SOURCE[0]}" "$@"
}

# Sets root.
mount_scratch_root() {
    local scratch
    scratch=$(mktemp -d)
    mount -t tmpfs scratch "$scratch"
    mkdir "$scratch"/{up,work,root}
    root=$scratch/root
    mount -t overlay overlay -o "lowerdir=/,upperdir=$scratch/up,workdir=$scratch/work" "$root"
}

if [ "${BASH_SOURCE[0]}" = "$0" ]; then
    set -euo pipefail
    mount_scratch_root
    mount -t proc proc "$root/proc"
    mount --rbind /dev "$root/dev"
    mount -t tmpfs -o mode=1777 tmpfs "$root/dev/shm"
    mount -t tmpfs -o mode=755 tmpfs "$root/run"
    mount -t tmpfs -o mode=1777 tmpfs "$root/tmp"
    # No service of this machine is started or stopped.
    printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
    chmod 755 "$root/usr/sbin/policy-rc.d"
    exec env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 HOME=/root chroot "$root" bash "$@"
fi
