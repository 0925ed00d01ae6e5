#!/bin/bash
# SPDX-License-Identifier: MIT
# What bash would offer behind the lines of standard input: a line of words each. Argument: the completion script.
. /usr/share/bash-completion/bash_completion
. "$1"
while IFS= read -r COMP_LINE; do
    COMP_POINT=${#COMP_LINE}
    read -ra COMP_WORDS <<<"$COMP_LINE"
    [[ $COMP_LINE == *" " ]] && COMP_WORDS+=("")
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    COMPREPLY=()
    _haldenctl </dev/null
    printf '%s\n' "${COMPREPLY[*]}"
done
