# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Sourced by the scripts that make sysroots: apt with folders of its own, so that the machine's settings and state stay
# as they are. Needs no rights. private_apt has to name the folder.

# private_apt_sources TYPE
# Turns the machine's package sources into sources of packages (deb) or of their sources (deb-src).
private_apt_sources() {
    local type=$1 file copy
    mkdir -p "${private_apt:?}"/{sources,state/lists/partial,cache/archives/partial} && : >"$private_apt/status" || return
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*; do
        [ -f "$file" ] || continue
        copy=$private_apt/sources/${file##*/}
        case "$file" in
        *.list) sed -nE "s/^[[:space:]]*deb([[:space:]])/$type\1/p" "$file" >"$copy" ;;
        *.sources) sed -E "s/^Types:.*/Types: $type/I" "$file" >"$copy" ;;
        esac || return
    done
}

# Not as root, apt drops its rights for the download; then it still has to reach the folder.
private_apt_get() {
    apt-get -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$private_apt/sources" \
        -o Dir::State="$private_apt/state" -o Dir::State::status="$private_apt/status" \
        -o Dir::Cache="$private_apt/cache" -o APT::Sandbox::User="$(id -un)" "$@"
}
