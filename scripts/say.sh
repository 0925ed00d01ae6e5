# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Sourced by ./run and ./check: a headline for the next step.
say() {
    printf '\n== %s\n' "$*"
}
