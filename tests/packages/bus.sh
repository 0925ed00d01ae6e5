#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The installed daemon in a scratch root: started by the unit's command line, as the unit's user, on the virtual board, with a
# system bus under the installed policy, and called by real users.
#
#   bus.sh SOURCE-TREE PACKAGE...
set -euo pipefail
# shellcheck source=tests/packages/say.sh
. "$(dirname "$0")/say.sh"

tree=$1
shift
quietly() {
    DEBIAN_FRONTEND=noninteractive "$@" >/tmp/quiet.log 2>&1 </dev/null || { cat /tmp/quiet.log >&2; return 1; }
}
# as USER [OPTION...] COMMAND...: options are those of setpriv.
as() {
    local user=$1
    shift
    setpriv --reuid="$user" --regid="$(id -g "$user")" --init-groups "$@"
}
own() {
    as "$1" dbus-send --system --print-reply --dest=org.freedesktop.DBus / org.freedesktop.DBus.RequestName \
        string:velmar.haldend uint32:4
}
# call USER OBJECT MEMBER [ARGUMENT...]
call() {
    local user=$1 object=$2 member=$3
    shift 3
    as "$user" dbus-send --system --print-reply=literal --dest=velmar.haldend "/$object" "velmar.haldend.$object.$member" "$@"
}
wait_for_name() {
    /usr/bin/python3 "$tree/tests/packages/wait_for_name.py" "$1"
}

fact "all packages install" quietly dpkg --force-confold --force-unsafe-io --install "$@"

verifies() {
    local said status=0
    said=$(systemd-analyze verify --man=no "$1" 2>&1) || status=$?
    printf '%s' "$said"
    [ $status -eq 0 ] && [ -z "$said" ]
}
fact "systemd-analyze verify says nothing about the unit" verifies /lib/systemd/system/haldend.service

useradd --system --no-create-home member
useradd --system --no-create-home outsider
useradd --system --no-create-home codec
usermod -a -G haldend member
usermod -a -G haldend codec

# What an integrator's codec service brings.
cat >/etc/dbus-1/system.d/velmar.mobilygen.conf <<'POLICY'
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
                           "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><policy user="codec"><allow own="velmar.mobilygen"/></policy></busconfig>
POLICY
mkdir -p /run/dbus
dbus-daemon --system --fork --nopidfile
unset DBUS_SYSTEM_BUS_ADDRESS

# The unit, its words with the variables put in.
of_unit() {
    sed -n "s/^$1=//p" /lib/systemd/system/haldend.service
}
user=$(of_unit User)
install -d -o "$user" -g "$user" -m "$(of_unit StateDirectoryMode)" "/var/lib/$(of_unit StateDirectory)"
export HALDEN_BOARD=/var/lib/haldend/board
as "$user" halden-board create $HALDEN_BOARD
chmod -R g+rwX $HALDEN_BOARD
printf 'HALDEND_I2C=%s\nHALDEND_FPGA=%s\nHALDEND_LIME=%s\n' $HALDEN_BOARD/{i2c-1,fpgamem,fb0} >/etc/default/haldend
# shellcheck source=packaging/haldend.default
. /etc/default/haldend
read -r -a command <<<"$(of_unit ExecStart)"
for i in "${!command[@]}"; do
    # shellcheck disable=SC2016
    case "${command[$i]}" in '${'*'}')
        name=${command[$i]:2:-1}
        command[i]=${!name}
        ;;
    esac
done

as codec halden-codec &
wait_for_name velmar.mobilygen
install -o "$user" -m 644 /dev/null /tmp/system-calls
(cd / && as "$user" --inh-caps=-all --no-new-privs strace -f -qq -o /tmp/system-calls \
    -E LD_PRELOAD="$(dpkg -L haldend-board | grep /libhaldenboard.so)" "${command[@]}" >/tmp/haldend.log 2>&1 </dev/null) &
wait_for_name velmar.haldend

pid_user() {
    ps -o user= -C haldend | tr -d ' '
}
fact "the unit's command line starts the daemon" call root videodisplay get_displayed_video_width
fact "... as the user haldend" [ "$(pid_user)" = haldend ]
fact "... on the virtual board" grep -q 'Starting haldend' /tmp/haldend.log

refused "an outsider can't own the name" own outsider
refused "a member of the group can't own the name" own member
refused "an outsider can't call" call outsider videodisplay get_displayed_video_width
fact "a member of the group can call" call member videodisplay get_displayed_video_width
fact "root can call" call root videooverlay create_text
refused "a member of the group can't reach /debug" call member debug fpga_enable_frame_generator
refused "... nor by a call without an interface" as member dbus-send --system --print-reply --dest=velmar.haldend /debug \
    org.freedesktop.DBus.Introspectable.Introspect
refused "an outsider can't reach /debug" call outsider debug fpga_enable_frame_generator
fact "root can reach /debug" call root debug fpga_enable_frame_generator

codec_call() {
    as "$1" dbus-send --system --print-reply --dest=velmar.mobilygen /Record org.freedesktop.DBus.Peer.Ping
}
refused "an outsider can't call the codec service" codec_call outsider
fact "the user haldend can" codec_call haldend
answers() {
    local wanted=$1
    shift
    [ "$(call "$@" | tr -s ' ')" = " int32 $wanted" ]
}
fact "a recording starts through the codec service" answers 0 member videoprocessing start_video_recording string:/var/lib/haldend/film.ts
fact "... and ends" answers 0 member videoprocessing stop_video_recording
fact "a member saves a still" as member haldenctl image save /var/lib/haldend/still.bmp --wait
fact "... whole" [ "$(stat -c %s:%U /var/lib/haldend/still.bmp)" = 1658934:haldend ]
fact "haldenctl shows the status to a member" as member haldenctl status

# Clients, built with what haldend-dev installed.
fact "find_package(haldend) configures a client" quietly cmake -S "$tree/tests/packages/client" -B /tmp/client
fact "... and builds it" quietly cmake --build /tmp/client
fact "... and it calls the daemon" as member /tmp/client/client
flags=$(pkg-config --cflags --libs haldend)
# shellcheck disable=SC2086
fact "pkg-config builds it too" quietly g++ -fPIC "$tree/tests/packages/client/client.cpp" -o /tmp/client/by-pkg-config $flags
fact "... and it calls the daemon" as member /tmp/client/by-pkg-config
fact "interfaces_dir has the interfaces" [ -f "$(pkg-config --variable=interfaces_dir haldend)/velmar.haldend.videodisplay.xml" ]

# The mock on a bus of its own: the client again, and the same answers as the daemon's.
template=$(dpkg -L haldend-dev | grep 'templates/haldend.py$')
mkdir /tmp/mock-bus
mock_address=$(dbus-daemon --config-file=/usr/share/haldend-board/private-bus.conf --address=unix:path=/tmp/mock-bus/bus \
    --fork --print-address)
DBUS_SYSTEM_BUS_ADDRESS=$mock_address /usr/bin/python3 -m dbusmock --system --template "$template" >/tmp/mock.log 2>&1 &
DBUS_SYSTEM_BUS_ADDRESS=$mock_address wait_for_name velmar.haldend
fact "the mock template answers as the daemon does" /usr/bin/python3 "$tree/tests/packages/compare_mock.py" "$mock_address"
fact "the mock serves the client" env DBUS_SYSTEM_BUS_ADDRESS="$mock_address" /tmp/client/client

# What unprivileged users do with the virtual board.
fact "halden-board demo goes through its tour, as nobody" quietly env DBUS_SYSTEM_BUS_ADDRESS= setpriv --reuid=nobody --regid=nogroup \
    --clear-groups halden-board demo --once /tmp/pictures
# The tests hold the pixels against the golden pictures; here each of these has to be there.
has_pictures() {
    local golden
    for golden in "$tree"/tests/golden/tour_*.png; do
        golden=${golden##*/tour_}
        compgen -G "/tmp/pictures/[0-9]*-$golden" >/dev/null || { echo "no $golden"; return 1; }
    done
}
fact "... and leaves all pictures of it" has_pictures

ends() {
    local pid
    pid=$(pgrep -x haldend) && kill "$pid" && timeout 20 tail --pid="$pid" -f /dev/null
}
fact "the daemon ends in good order" ends
fact "... and says so" grep -q 'Terminating haldend' /tmp/haldend.log
fact "the unit's filter lets all its system calls through" /usr/bin/python3 "$tree/tests/packages/system_calls.py" \
    /lib/systemd/system/haldend.service /tmp/system-calls
