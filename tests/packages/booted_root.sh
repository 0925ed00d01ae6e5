# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# A scratch root that systemd has booted as its first process. A script runs in it as root, as a service of its own, and the
# system ends with it.

# in_booted_root SCRIPT [ARGUMENT...]
# Needs root, or sudo. The script finds this source tree under its usual path. There is no udev in such a system.
in_booted_root() {
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    "${as_root[@]}" bash "${BASH_SOURCE[0]}" "$@"
}

# Outside: in a control group of its own, so that systemd finds nothing else in its tree.
own_group() {
    local tree group status=0
    tree=$(findmnt -n -t cgroup2 -o TARGET | head -n 1)
    group=$tree$(sed -n 's/^0:://p' /proc/self/cgroup)/haldend-$$
    mkdir "$group"
    (
        echo "$BASHPID" >"$group/cgroup.procs"
        exec unshare --mount --pid --ipc --net --uts --cgroup --fork --kill-child --propagation private \
            bash "${BASH_SOURCE[0]}" inside "$@"
    ) || status=$?
    find "$group" -depth -type d -exec rmdir {} \;
    return $status
}

# The group is the whole tree, and what nspawn leaves in /run goes with us.
mount_group() {
    mount -t proc proc /proc
    umount -R /sys/fs/cgroup
    mount -t cgroup2 cgroup2 /sys/fs/cgroup
    mount -t tmpfs -o mode=755 tmpfs /run
}

boot() {
    local root=$1 status=0
    shift
    # Where this machine is a container itself, its image may forbid packages to start and stop services.
    rm -f "$root/usr/sbin/policy-rc.d"
    cat >"$root/etc/systemd/system/haldend-check.service" <<UNIT
[Unit]
Requires=dbus.service
After=dbus.service
SuccessAction=exit
FailureAction=exit
FailureActionExitStatus=1
[Service]
Type=oneshot
Environment=PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 HOME=/root
ExecStart=/bin/bash ${*@Q}
StandardOutput=file:/said
StandardError=inherit
TimeoutStartSec=300
UNIT
    systemd-nspawn --quiet --directory="$root" --boot --register=no --keep-unit --private-network --link-journal=no \
        --resolv-conf=off --timezone=off --console=pipe -- --unit=haldend-check.service >"$root/boot.log" 2>&1 </dev/null || status=$?
    [ ! -e "$root/said" ] || cat "$root/said"
    [ $status -eq 0 ] || tail -n 20 "$root/boot.log" >&2
    return $status
}

if [ "${BASH_SOURCE[0]}" = "$0" ]; then
    set -euo pipefail
    if [ "$1" != inside ]; then
        own_group "$@"
        exit
    fi
    # shellcheck source=tests/packages/scratch_root.sh
    . "$(dirname "$0")/scratch_root.sh"
    mount_group
    mount_scratch_root
    boot "$root" "${@:2}"
fi
