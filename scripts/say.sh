# shellcheck shell=bash
# Sourced by ./run and ./check: one line that says what comes next.
say() {
    printf '\n== %s\n' "$*"
}
