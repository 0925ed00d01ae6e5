# SPDX-License-Identifier: MIT
"""system_calls.py UNIT LOG: whether the unit's SystemCallFilter= lets through each system call in the log of `strace -f`."""

import re
import subprocess
import sys


def sets():
    """The members of each set, by its name; a set can be a member."""
    found, name = {}, None
    for line in subprocess.run(["systemd-analyze", "syscall-filter"], check=True, capture_output=True, text=True).stdout.splitlines():
        if line.startswith("@"):
            name = line.strip()
            found[name] = []
        elif name and line.startswith(" ") and not line.strip().startswith("#"):
            found[name].append(line.strip())
    return found


def expanded(word, known):
    if not word.startswith("@"):
        return {word}
    return set().union(*(expanded(member, known) for member in known[word]))


def main():
    unit, log = sys.argv[1:]
    known = sets()
    allowed = expanded("@default", known)
    with open(unit, encoding="utf-8") as lines:
        for words in re.findall(r"^SystemCallFilter=(.*)$", lines.read(), re.M):
            calls = set().union(*(expanded(word, known) for word in words.lstrip("~").split()))
            allowed = allowed - calls if words.startswith("~") else allowed | calls
    with open(log, encoding="utf-8", errors="replace") as lines:
        made = set(re.findall(r"^\d+ +([a-z_0-9]+)\(", lines.read(), re.M))
    # Unknown sets would let everything through, and a log without calls proves nothing.
    if len(allowed) < 100 or len(made) < 30:
        sys.exit(f"{len(allowed)} calls allowed, {len(made)} made: that can't be")
    if made - allowed:
        sys.exit(f"the unit refuses {', '.join(sorted(made - allowed))}")
    return 0


sys.exit(main())
