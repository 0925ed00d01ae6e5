#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The installed daemon in a system that systemd has booted: installed while it runs, started by a call over the bus, held within
# the unit's walls, started again, removed.
#
#   boot.sh PACKAGE...
set -euo pipefail
# shellcheck source=tests/packages/say.sh
. "$(dirname "$0")/say.sh"

quietly() {
    DEBIAN_FRONTEND=noninteractive "$@" >/tmp/quiet.log 2>&1 </dev/null || { cat /tmp/quiet.log >&2; return 1; }
}
state() {
    systemctl show --value -p "$1" haldend
}
# call USER OBJECT MEMBER [ARGUMENT...]
call() {
    local user=$1 object=$2 member=$3
    shift 3
    setpriv --reuid="$user" --regid="$(id -g "$user")" --init-groups dbus-send --system --print-reply=literal \
        --dest=velmar.haldend "/$object" "velmar.haldend.$object.$member" "$@"
}
# in_state PROPERTY VALUE: waits for the unit to come there.
in_state() {
    local tries
    for tries in {1..300}; do
        [ "$(state "$1")" != "$2" ] || return 0
        sleep 0.1
    done
    echo "$1 is $(state "$1") after $tries looks"
    return 1
}

fact "systemd is the first process" [ "$(cat /proc/1/comm)" = systemd ]
fact "all packages install on the running system" quietly dpkg --force-confold --force-unsafe-io --install "$@"
fact "the unit is enabled" systemctl --quiet is-enabled haldend
without_fpga() {
    systemctl start haldend
    [ "$(state ActiveState),$(state ConditionResult)" = inactive,no ]
}
fact "without the FPGA it doesn't start, and doesn't fail" without_fpga

# The virtual board in place of the devices; a node for the unit's condition. The rest is the unit as it came.
useradd --system --no-create-home member
useradd --system --no-create-home outsider
usermod -a -G haldend member
mknod /dev/fpgamem c 1 3
export HALDEN_BOARD=/var/lib/haldend/board
install -d -o haldend -g haldend -m 2775 /var/lib/haldend
setpriv --reuid=haldend --regid=haldend --clear-groups halden-board create $HALDEN_BOARD
# The register files are those of the machine, and not the board's own.
rm -r $HALDEN_BOARD/cnfs
ln -s /usr/etc/cnfs $HALDEN_BOARD/cnfs
printf 'HALDEND_I2C=%s\nHALDEND_FPGA=%s\nHALDEND_LIME=%s\n' $HALDEN_BOARD/{i2c-1,fpgamem,fb0} >/etc/default/haldend
mkdir -p /etc/systemd/system/haldend.service.d
printf '[Service]\nEnvironment=HALDEN_BOARD=%s LD_PRELOAD=%s\n' $HALDEN_BOARD "$(dpkg -L haldend-board | grep /libhaldenboard.so)" \
    >/etc/systemd/system/haldend.service.d/board.conf
systemctl daemon-reload

refused "an outsider's call doesn't start it" call outsider videodisplay get_displayed_video_width
fact "... it is still inactive" [ "$(state ActiveState)" = inactive ]
fact "a member's call starts it" call member videodisplay get_displayed_video_width
fact "... as a service of systemd's" [ "$(state ActiveState),$(state SubState)" = active,running ]
process=/proc/$(state MainPID)
of_process() { sed -nE "s/^$1:[[:space:]]*([^[:space:]]+).*/\1/p" "$process/status"; }
fact "... as the user haldend" [ "$(of_process Uid)" = "$(id -u haldend)" ]
fact "... without capabilities" [ "$(of_process CapEff),$(of_process CapPrm),$(of_process CapBnd)" = 0000000000000000,0000000000000000,0000000000000000 ]
fact "... under a system call filter" [ "$(of_process Seccomp),$(of_process NoNewPrivs)" = 2,1 ]
fact "... on the virtual board" halden-board registers

# Its log is in the journal once, though it goes to standard error too.
logs() { journalctl --quiet --no-pager --output=cat _SYSTEMD_UNIT=haldend.service | grep -cF "$1"; }
fact "its log is there once" [ "$(logs 'Starting haldend')" = 1 ]

# The walls: where files can be written.
answers() {
    local wanted=$1
    shift
    [ "$(call "$@" | tr -s ' ')" = " int32 $wanted" ]
}
saves() { setpriv --reuid=member --regid="$(id -g member)" --init-groups haldenctl image save "$1" --wait; }
fact "a still lands in /var/lib/haldend" saves /var/lib/haldend/still.bmp
fact "... whole" [ "$(stat -c %s:%U /var/lib/haldend/still.bmp)" = 1658934:haldend ]
install -d -m 777 /srv/open
refuses_still() { ! saves "$1/still.bmp" && [ ! -e "$1/still.bmp" ]; }
for folder in /srv/open /tmp /etc/haldend; do fact "... but not in $folder" refuses_still $folder; done
# The save isn't answered; the call after it is, when the save is done.
saves_registers() {
    local file=/etc/haldend/cnfs/fpga.cnf
    touch -d @0 $file
    haldenctl debug save && call root videodisplay get_displayed_video_width && [ "$(stat -c %Y $file)" -gt 0 ]
}
# A saved file has to be mended by hand before the next start.
cp -a /etc/haldend/cnfs /tmp/cnfs
fact "it saves its register files" saves_registers
cp -a /tmp/cnfs/. /etc/haldend/cnfs

fact "killed, it is started again" kill -KILL "$(state MainPID)"
fact "... once" in_state NRestarts 1
fact "... and runs" in_state SubState running
fact "ended with status 0, too" kill -TERM "$(state MainPID)"
fact "... a second time" in_state NRestarts 2
fact "... and runs" in_state SubState running
fact "is stopped" systemctl stop haldend
fact "... in good order" [ "$(state Result),$(state ExecMainStatus)" = success,0 ]
fact "... and says so" [ "$(logs 'Terminating haldend')" -ge 2 ]

# The starts so far count too, unless systemd has forgotten the unit that doesn't run.
systemctl reset-failed haldend 2>/dev/null || true
echo HALDEND_FPGA= >>/etc/default/haldend
systemctl --quiet start haldend 2>/dev/null || true
fact "what can't start is left in the end" in_state SubState failed
fact "... with status 255" [ "$(state ExecMainStatus)" = 255 ]
fact "... after ten starts" [ "$(logs 'Error starting haldend')" = 10 ]
systemctl reset-failed haldend
sed -i '$d' /etc/default/haldend
fact "... until it is mended" systemctl start haldend

fact "is removed while it runs" quietly dpkg --remove haldend haldend-board
fact "... and ended" bash -c '! pgrep -x haldend'
