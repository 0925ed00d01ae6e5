# SPDX-License-Identifier: MIT
"""The compilations of a build tree, for the scripts that look at its sources one by one."""
import json
import os
import re

TOGETHER = re.compile(r"/Unity/unity_[^/]+$")
INCLUDED = re.compile(r'^#include "(.*)"$', re.MULTILINE)


def entries_of(build):
    """The build tree's compilations, by source: those of sources that it compiles together, one for each of them."""
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as stream:
        commands = json.load(stream)
    entries = {}
    for entry in reversed(commands):
        sources = [entry["file"]]
        if TOGETHER.search(entry["file"]):
            with open(entry["file"], encoding="utf-8") as stream:
                sources = INCLUDED.findall(stream.read())
        for source in sources:
            entries[source] = {**entry, "file": source}
    return entries
