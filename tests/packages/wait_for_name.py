# SPDX-License-Identifier: MIT
"""wait_for_name.py NAME: waits until the name is on the system bus, for 30 seconds at most."""

import sys

from gi.repository import Gio, GLib

loop = GLib.MainLoop()
found = []


def appeared(_connection, _name, owner):
    found.append(owner)
    loop.quit()


Gio.bus_watch_name(Gio.BusType.SYSTEM, sys.argv[1], Gio.BusNameWatcherFlags.NONE, appeared, None)
GLib.timeout_add_seconds(30, loop.quit)
loop.run()
sys.exit(0 if found else f"{sys.argv[1]} didn't come to the bus")
