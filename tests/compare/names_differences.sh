#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The comparison of processors names what differs.
#
#   tests/compare/names_differences.sh COMPARE-RECORDS
set -euo pipefail
compare=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

# expect STATUS TEXT: of the comparison, with the text in its output.
expect() {
    local status=0 output
    output=$("$compare" one other 2>&1) || status=$?
    if [ $status -ne "$1" ] || [[ $output != *"$2"* ]]; then
        printf 'expected %s and "%s", got %s and:\n%s\n' "$1" "$2" $status "$output" >&2
        exit 1
    fi
}

fresh() {
    rm -rf one other
    mkdir -p one/fpga one/trace
    printf 'fpga write 0x300000 2\nlime write 0x01fd0000\n' >one/trace/start
    printf '\0\1\2\3\4\5\6\7' >one/fpga/start
    cp -r one other
}

fresh
expect 0 "equal: fpga               1 files,           8 bytes"
expect 0 "equal: trace              1 files"

printf '\0\1\2\3\4\7\6\7' >other/fpga/start
expect 1 "The first difference is in fpga/start"
expect 1 "at 0x00000005:  05 06 07 and  07 06 07"

fresh
sed -i 's/lime write/lime read/' other/trace/start
expect 1 "The first difference is in trace/start"
expect 1 "< lime write 0x01fd0000"

# One ends before the other.
fresh
printf '\0\1\2\3\4\5' >other/fpga/start
expect 1 "at 0x00000006:  06 07 and"

fresh
rm other/fpga/start
expect 1 "Only one of one and other has fpga/start"

rm -rf one other
mkdir one other
expect 1 "Nothing in one and other"
