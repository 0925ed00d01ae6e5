# SPDX-License-Identifier: MIT
"""How the cost of a call grows with the number of texts, of clients and of characters: processor time of the service."""

import math
import statistics

import dbus.bus

from measure.requests import DISPLAY, OVERLAY
from measure.stage import Service, Stage

TEXTS = (0, 100, 10000, 65535)
CLIENTS = (1, 10, 100, 500)
CHARACTERS = (10, 100, 1000, 10000, 100000, 1000000, 10000000)

COLUMNS, ROWS = 53, 26
PLACES_A_ROW = 256  # positions are bytes
OWN_ROW = ROWS - 1  # the measured text is alone there, unless it is in the others' row
OTHER_ROW = 3
AT_ONCE = 500  # calls sent before the service has to have caught up

BATCHES, BATCH = 5, 200
FEW_BATCH = 3  # of calls with millions of characters
FLAT = 0.1  # a slope below it is no growth: the search in a tree takes a few steps more


def apart(number):
    place = number % (COLUMNS * OWN_ROW)
    return place % COLUMNS, place // COLUMNS


def below(number):
    return number % PLACES_A_ROW, ROWS + number // PLACES_A_ROW % (PLACES_A_ROW - ROWS)


# Where the other texts are; without a place they are hidden.
POPULATIONS = {
    "hidden": None,
    "visible, apart": apart,
    "overlapping in another row": lambda number: (number % 10, OTHER_ROW),
    "below the last row": below,
}


def bulk(service, calls):
    for number, call in enumerate(calls, 1):
        service.tell(*call)
        if number % AT_ONCE == 0:
            service.barrier()
    service.barrier()


def text_calls(handle, place):
    yield OVERLAY, "create_text"
    if place:
        yield OVERLAY, "set_text_string", "is", handle, "x"
        yield OVERLAY, "set_text_position", "iii", handle, *place
        yield OVERLAY, "show_text", "i", handle


def populate(service, first, last, place_of):
    """Texts with the handles from first to last: each gets the next handle."""
    bulk(service, (call for handle in range(first, last + 1)
                   for call in text_calls(handle, place_of and place_of(handle))))


def processor_time(service):
    """Microseconds so far, of all threads."""
    return sum(int((task / "schedstat").read_text().split()[0]) for task in service.tasks()) / 1000


def cost(service, calls, batch=BATCH):
    """Microseconds a call: the median of some batches. The last call is one that waits, and taken for one of them."""
    costs = []
    for _ in range(BATCHES):
        service.barrier()
        before = processor_time(service)
        for number in range(batch):
            service.tell(*calls(number))
        service.barrier()
        costs.append((processor_time(service) - before) / (batch + 1))
    return statistics.median(costs)


CALLS = {
    "getter": lambda number: (DISPLAY, "get_displayed_video_width"),
    "string of 20 cells": lambda number: (OVERLAY, "set_text_string", "is", 1, "xy"[number % 2] * 20),
    "move by one cell": lambda number: (OVERLAY, "set_text_position", "iii", 1, number % 2, OWN_ROW),
    "hide or show": lambda number: (OVERLAY, ("hide_text", "show_text")[number % 2], "i", 1),
    "id": lambda number: (OVERLAY, "set_text_id", "ii", 1, number),
}


def daemon(stage):
    devices = stage.devices()
    return Service(stage, "velmar.haldend", [stage.build / "daemon/haldend", "-i", devices["i2c"], "-f", devices["fpga"],
                                             "-l", devices["lime"]])


def create_and_destroy(last):
    """The number of texts stays: each that is made has the handle behind the last."""
    return lambda number: (OVERLAY, "destroy_text", "i", last + 1) if number % 2 else (OVERLAY, "create_text")


def texts(source, build):
    """Costs by population and call, each a list in the order of TEXTS. The measured text is one of them."""
    table = {}
    for population, place_of in POPULATIONS.items():
        with Stage(source, build, monitored=False) as stage:
            service = daemon(stage)
            populate(service, 1, 1, lambda _: (0, OWN_ROW))
            service.tell(OVERLAY, "set_text_string", "is", 1, "x" * 20)
            made = 1
            for count in TEXTS:
                # One place is left for the text that is made and destroyed.
                last = max(1, min(count, TEXTS[-1] - 1))
                populate(service, made + 1, last, place_of)
                made = last
                for name, calls in {**CALLS, "create, destroy": create_and_destroy(last)}.items():
                    table.setdefault(population, {}).setdefault(name, []).append(cost(service, calls))
    return table


def clients(source, build):
    table = {"daemon": [], "bare Qt": []}
    with Stage(source, build, CLIENTS[-1] + 50, monitored=False) as stage:
        services = {"daemon": daemon(stage), "bare Qt": stage.start_bare("velmar.bench.qt")}
        connected = [stage.client]
        for count in CLIENTS:
            connected += [dbus.bus.BusConnection(stage.address) for _ in range(count - len(connected))]
            for name, service in services.items():
                for client in connected:
                    client.call_blocking(service.name, f"/{DISPLAY}", f"velmar.haldend.{DISPLAY}",
                                         "get_displayed_video_width", "", ())
                table[name].append(cost(service, CALLS["getter"]))
        for client in connected[1:]:
            client.close()
    return {"getter": table}


def characters(source, build):
    table = {"daemon, visible": [], "daemon, hidden": [], "bare Qt": []}
    with Stage(source, build, monitored=False) as stage:
        ours = daemon(stage)
        bare = stage.start_bare("velmar.bench.overlay", "overlay", stage.devices()["fpga"])
        populate(ours, 1, 1, lambda _: (0, OWN_ROW))
        bulk(ours, [(OVERLAY, "create_text")])
        for count in CHARACTERS:
            strings = ("x" * count, "y" * count)
            for name, service, handle in (("daemon, visible", ours, 1), ("daemon, hidden", ours, 2), ("bare Qt", bare, 1)):
                table[name].append(cost(
                    service, lambda number, handle=handle: (OVERLAY, "set_text_string", "is", handle, strings[number % 2]),
                    BATCH if count <= 10000 else FEW_BATCH))
    return {"set_text_string": table}


def slope(counts, costs):
    """Of the line through the points in the logarithmic chart, beyond the first point."""
    points = [(math.log(count), math.log(value)) for count, value in list(zip(counts, costs))[1:]]
    x, y = (statistics.fmean(axis) for axis in zip(*points))
    return sum((a - x) * (b - y) for a, b in points) / sum((a - x) ** 2 for a, _ in points)


def limits(source, build):
    """What the bus and Qt cost, and the device calls that a text needs: the bare Qt service's."""
    with Stage(source, build, monitored=False) as stage:
        bare = stage.start_bare("velmar.bench.overlay", "overlay", stage.devices()["fpga"])
        return {"getter": cost(bare, CALLS["getter"]), "20 cells": cost(bare, CALLS["string of 20 cells"])}


def measure(source, build):
    return {"texts": texts(source, build), "clients": clients(source, build), "characters": characters(source, build),
            "limits": limits(source, build)}


AXES = {"texts": TEXTS, "clients": CLIENTS, "characters": CHARACTERS}


def slopes(grown):
    """Rows of what, which call, the costs and the slope."""
    for axis, counts in AXES.items():
        for group, lines in grown[axis].items():
            for name, costs in lines.items():
                yield axis, group, name, costs, slope(counts, costs)


def missed_goals(grown):
    """Calls that grow with texts elsewhere or with clients. Strings have to be read."""
    return [f"{group}, {name}: slope {value:.2f} by {axis}, goal {FLAT}"
            for axis, group, name, _, value in slopes(grown) if axis != "characters" and value > FLAT]
