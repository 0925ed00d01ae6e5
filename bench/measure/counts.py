# SPDX-License-Identifier: MIT
"""Counts of each kind of request, of the daemon and of the bare Qt service."""

import json
from concurrent.futures import ThreadPoolExecutor
from itertools import product

from measure.meters import METERS, Trace
from measure.requests import REQUESTS
from measure.stage import Service, Stage, member

DAEMON, BARE = "velmar.haldend", "velmar.bench."
ROLES = (None, "overlay", "processing", "poll")  # of the services: the daemon, and the bare ones
START = "start"
WARM_UP = 3
AT_ONCE = 6

# Of these each has to be what the table says; of the others the ratio to the bare service may grow by so much.
EXACT = ("device calls", "system calls, main", "system calls, bus", "messages", "wake-ups")
RATIOS = ("instructions", "allocations")
GROWTH = 1.03
SECONDS = ("a second, idle", "a second of the counter")  # under callgrind they are no even seconds
# The bus thread sends an answer, and may or may not have slept since it took the call; the main thread may look once more
# before it sleeps. The threads of a start meet in another order each time.
ANSWERED = {"system calls, main": 1, "system calls, bus": 2, "wake-ups": 1}
PLAY = {START: {"system calls, main": 10, "system calls, bus": 20}, "getter": ANSWERED, "create a text": ANSWERED,
        "reload": {**ANSWERED, "system calls, main": 2}, "still image": ANSWERED}
FIGURES = RATIOS + EXACT

# By how much the daemon's figure may differ from the bare service's at most.
GOALS = [
    ("getter", "system calls, main", -1),
    ("getter", "system calls, bus", -1),
    ("set_text_string, 20 cells", "device calls", 0),
    ("still image", "wake-ups", 0),
    ("a second, idle", "wake-ups", 0),
]


def requests_of(service_role):
    """Those that a service has: the daemon, whose role is None, all."""
    if service_role is None:
        return REQUESTS
    return [r for r in REQUESTS if r.reference == service_role or (service_role == "overlay" and r.reference == "")]


def count(meter, request):
    service = meter.service
    request.make(service)
    service.barrier()
    service.settle()
    times = request.instrumented if meter.instrumented else request.times
    warm_up = WARM_UP if request.times > WARM_UP else 0
    for number in range(warm_up):
        perform(service, request, number)
    meter.begin()
    for number in range(warm_up, warm_up + times):
        perform(service, request, number)
        meter.sample()
    figures = meter.end(times)
    request.undo(service)
    return figures


def perform(service, request, number):
    before = service.state()
    request.do(service, number)
    if request.signal:
        service.stage.monitor.take_until(
            lambda message: member(message) == request.signal and message[3] == service.unique)
    service.settle(before)


def count_service(stage, meter_type, role, counts):
    meter = meter_type(stage, role or "daemon")
    devices = stage.devices()
    if role is None:
        name = DAEMON
        command = [stage.build / "daemon/haldend", "-i", devices["i2c"], "-f", devices["fpga"], "-l", devices["lime"]]
    else:
        name = BARE + role
        device = {"poll": "i2c"}.get(role, "fpga")
        command = [stage.build / "bench/bare_qt_service", name, role, devices[device]]
    stage.sentinel()
    service = Service(stage, name, command, meter.instrument)
    service.settle()
    meter.attach(service)
    side = counts.setdefault("daemon" if role is None else "bare", {})
    started = meter.started()
    if role in (None, "overlay"):
        side.setdefault(START, {}).update(started)
    for request in requests_of(role):
        side.setdefault(request.name, {}).update(count(meter, request))
    service.end()


def count_by(source, build, meter_type, role):
    counts = {}
    with Stage(source, build) as stage:
        if meter_type is Trace:
            stage.trace("on")
        count_service(stage, meter_type, role, counts)
    return counts


def measure(source, build):
    """By all meters. Some work at the same time, because most of it is waiting."""
    counts = {}
    with ThreadPoolExecutor(AT_ONCE) as pool:
        for partial in pool.map(lambda task: count_by(source, build, *task), product(reversed(METERS), ROLES)):
            for side, kinds in partial.items():
                for kind, figures in kinds.items():
                    counts.setdefault(side, {}).setdefault(kind, {}).update(figures)
    return counts


def rounded(counts):
    return {side: {kind: {name: round(figures[name], 1) for name in FIGURES if name in figures}
                   for kind, figures in kinds.items()} for side, kinds in counts.items()}


def ratio(counts, kind, name):
    """Ours to the bare service's; of a kind that it doesn't have, to its getter's."""
    reference = counts["bare"].get(kind) or counts["bare"]["getter"]
    return counts["daemon"][kind][name] / reference[name]


def missed_goals(counts):
    missed = []
    for kind, name, difference in GOALS:
        ours, bare = counts["daemon"][kind][name], counts["bare"][kind][name]
        if ours > bare + difference:
            missed.append(f"{kind}: {name}: {ours}, bare Qt {bare}, goal {bare + difference}")
    return missed


def is_as_expected(kind, name, figure, expected):
    return figure is not None and abs(figure - expected) <= PLAY.get(kind, {}).get(name, 0)


def differences(counts, table):
    """What of the counts isn't as the table says."""
    found = []
    for kind, expected in table["daemon"].items():
        figures = counts["daemon"].get(kind, {})
        for name in EXACT:
            if name in expected and not is_as_expected(kind, name, figures.get(name), expected[name]):
                found.append(f"{kind}: {name}: {figures.get(name)}, in the table {expected[name]}")
        for name in RATIOS if kind not in SECONDS else ():
            now, before = ratio(counts, kind, name), ratio(table, kind, name)
            # The bare service may come out lower by chance; the daemon's own figure then hasn't grown.
            if now > before * GROWTH and figures[name] > expected[name] * GROWTH:
                found.append(f"{kind}: {name}: {now:.3f} of the bare service's, in the table {before:.3f}")
    return found


def number(value):
    return "" if value is None else f"{value:,.0f}" if value >= 100 or value == int(value) else f"{value:,.1f}"


def rows(counts):
    """The table's rows: the kind, and ours and the bare service's of each figure."""
    for kind, figures in counts["daemon"].items():
        bare = counts["bare"].get(kind, {})
        yield [kind] + [" / ".join(number(side.get(name)) or "–" for side in ((figures, bare) if bare else (figures,)))
                        for name in FIGURES]


def load(file):
    return json.loads(file.read_text(encoding="utf-8"))


def save(file, counts):
    file.write_text(json.dumps(counts, indent=1) + "\n", encoding="utf-8")
