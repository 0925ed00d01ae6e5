# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Sourced by the checks of the packages: facts that have to hold, one line each.

# fact TEXT COMMAND...
fact() {
    local text=$1 out
    shift
    if out=$("$@" 2>&1); then
        printf '  ok     %s\n' "$text"
    else
        printf '  WRONG  %s\n         %s\n%s\n' "$text" "$*" "$out" >&2
        exit 1
    fi
}

# refused TEXT COMMAND...: the bus has to deny it.
refused() {
    local text=$1 out
    shift
    if out=$("$@" 2>&1) || ! grep -q 'org.freedesktop.DBus.Error.AccessDenied' <<<"$out"; then
        printf '  WRONG  %s\n         %s\n%s\n' "$text" "$*" "$out" >&2
        exit 1
    fi
    printf '  ok     %s\n' "$text"
}

# Whether a file has a text.
contains() { grep -qF -- "$2" "$1"; }
lacks() { ! grep -qF -- "$2" "$1"; }
