#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""What the daemon costs on the target's processor, beside the bare Qt service: instructions from the start to the bus
name and of a call, as the emulator counts them, and memory. Times would be the emulator's.

Usage: bench/target/costs.py BUILD NATIVE [ROUNDS]

BUILD is a release build for the target's processor, NATIVE a build for this machine, which has the tool that makes a
board. A round is 100 calls of each kind; the figure is the median of the rounds.
"""

import collections
import os
import pathlib
import re
import statistics
import struct
import subprocess
import sys
import tempfile

import dbus
import dbus.bus

CALLS = 100
GUEST_BASE = 0x20000000000  # where the emulator lays the program's 4 GiB
DAEMON = "velmar.haldend"
BARE = "bare.qt"
SOURCES = pathlib.Path(__file__).resolve().parent.parent.parent

# Name, object, method, arguments; and the role of the bare service that has it.
CALL_KINDS = [
    ("getter", "videodisplay", "get_displayed_video_width", (), []),
    ("setter with a store", "videodisplay", "set_video_position", (dbus.Int32(10), dbus.Int32(20)), []),
    ("string of 20 cells", "videooverlay", "set_text_string", (dbus.Int32(1), "Crack at 3 o'clock.."), ["overlay"]),
]


class Stage:
    """A bus and a board in a folder that goes with it."""

    def __init__(self, build, native):
        self.build = build
        self.folder = tempfile.TemporaryDirectory(dir="/dev/shm")
        self.path = pathlib.Path(self.folder.name)
        self.board = self.path / "board"
        plugin = self.path / "count.so"
        subprocess.run(["cc", "-O2", "-fPIC", "-shared", "-o", plugin,
                        SOURCES / "bench/target/count_instructions.c"], check=True)
        self.plugin = plugin
        subprocess.run([find(native, "halden-board"), "create", self.board], check=True, stdout=subprocess.DEVNULL)
        self.bus = subprocess.Popen(["dbus-daemon", "--nofork", "--print-address",
                                     f"--config-file={SOURCES}/board/private-bus.conf",
                                     f"--address=unix:path={self.path}/bus"], stdout=subprocess.PIPE, text=True)
        self.address = self.bus.stdout.readline().strip()

    def end(self):
        self.bus.terminate()
        self.bus.wait()

    def device(self, name):
        return str(self.board / name)


class Service:
    """An emulated program that serves the bus."""

    def __init__(self, stage, program, arguments, name):
        self.name = name
        self.count = stage.path / f"instructions-{name}"
        environment = dict(os.environ, DBUS_SYSTEM_BUS_ADDRESS=stage.address, HALDEN_BOARD=str(stage.board),
                           INSTRUCTIONS=str(self.count), QEMU_PLUGIN=str(stage.plugin),
                           QEMU_GUEST_BASE=hex(GUEST_BASE), LC_ALL="C.UTF-8", TZ="UTC",
                           QEMU_SET_ENV=f"LD_PRELOAD={find(stage.build, 'libhaldenboard.so')}")
        self.connection = dbus.bus.BusConnection(stage.address)
        broker = self.connection.get_object("org.freedesktop.DBus", "/org/freedesktop/DBus")
        self.count.unlink(missing_ok=True)
        self.process = subprocess.Popen([stage.build / "emulated" / program, *arguments], env=environment,
                                        stderr=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
        while not broker.NameHasOwner(name):
            if self.process.poll() is not None:
                raise SystemExit(f"{program} ended with {self.process.returncode}")
        self.start = self.instructions()

    def instructions(self):
        return struct.unpack("=Q", self.count.read_bytes())[0]

    def method(self, path, name):
        return self.connection.get_object(self.name, "/" + path, introspect=False).get_dbus_method(
            name, f"velmar.haldend.{path}")

    def cost(self, path, name, arguments):
        """Instructions of a call."""
        method = self.method(path, name)
        method(*arguments)
        before = self.instructions()
        for _ in range(CALLS):
            method(*arguments)
        return (self.instructions() - before) / CALLS

    def memory(self):
        """Resident kilobytes of the program itself, without its emulator: all, and those that no file has."""
        everything = own = 0
        inside = board = False
        for line in pathlib.Path(f"/proc/{self.process.pid}/smaps").read_text().splitlines():
            mapping = re.match(r"([0-9a-f]+)-[0-9a-f]+ ", line)
            if mapping:
                inside = GUEST_BASE <= int(mapping[1], 16) < GUEST_BASE + 2**32
                board = "/board/" in line
            elif inside and not board and line.startswith("Rss:"):
                everything += int(line.split()[1])
            elif inside and not board and line.startswith("Anonymous:"):
                own += int(line.split()[1])
        return everything, own

    def files(self):
        """Resident kilobytes of each file that is mapped into the program."""
        resident = collections.Counter()
        path = None
        for line in pathlib.Path(f"/proc/{self.process.pid}/smaps").read_text().splitlines():
            mapping = re.match(r"([0-9a-f]+)-[0-9a-f]+ \S+ \S+ \S+ \d+\s+(/.*)?", line)
            if mapping:
                inside = GUEST_BASE <= int(mapping[1], 16) < GUEST_BASE + 2**32
                path = mapping[2] if inside and mapping[2] and "/board/" not in mapping[2] else None
            elif path and line.startswith("Rss:"):
                resident[path] += int(line.split()[1])
        return resident

    def end(self):
        self.connection.close()
        self.process.terminate()
        self.process.wait()


def find(build, name):
    return next(path for path in sorted(pathlib.Path(build).rglob(name)) if "emulated" not in path.parts)


def daemon(stage):
    return Service(stage, "haldend", ["-i", stage.device("i2c-1"), "-f", stage.device("fpgamem"),
                                      "-l", stage.device("fb0")], DAEMON)


def bare(stage, role):
    return Service(stage, "bare_qt_service", [BARE, *role, *([stage.device("fpgamem")] if role else [])], BARE)


def line(what, ours, reference):
    print(f"{what:34} {ours:12,.0f} {reference:12,.0f} {ours / reference:7.2f}")


def measure(stage, rounds):
    print(f"{'':34} {'daemon':>12} {'bare Qt':>12} {'ratio':>7}")
    ours, reference = daemon(stage), bare(stage, [])
    line("start to the bus name, instructions", ours.start, reference.start)
    for at, what in enumerate(("memory, resident, kB", "memory, its own, kB")):
        line(what, ours.memory()[at], reference.memory()[at])
    reference.end()
    ours.method("videooverlay", "create_text")()
    ours.method("videooverlay", "show_text")(dbus.Int32(1))
    for what, path, name, arguments, role in CALL_KINDS:
        reference = bare(stage, role)
        costs = [(ours.cost(path, name, arguments), reference.cost(path, name, arguments)) for _ in range(rounds)]
        line(f"{what}, instructions", *(statistics.median(each) for each in zip(*costs)))
        reference.end()
    print(f"\n{'file of the daemon':34} {'resident, kB':>12} {'on disk, kB':>12}")
    for path, kilobytes in ours.files().most_common(8):
        print(f"{pathlib.Path(path).name:34} {kilobytes:12,} {os.stat(path).st_size / 1024:12,.0f}")
    ours.end()


def main():
    if len(sys.argv) not in (3, 4):
        raise SystemExit(__doc__)
    stage = Stage(pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve())
    try:
        measure(stage, int(sys.argv[3]) if len(sys.argv) > 3 else 9)
    finally:
        stage.end()


if __name__ == "__main__":
    main()
