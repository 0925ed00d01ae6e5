# SPDX-License-Identifier: MIT
"""Times beside the bare Qt service, by the benches, with the goals of each."""

import operator
import re
import subprocess
from contextlib import nullcontext

from measure import machine
from measure.stage import Failure

AT_MOST, AT_LEAST = ("≤", operator.le), ("≥", operator.ge)

HALDEND = ("haldend_bench", "--rounds", "200")
TEXT = ("text_bench", "--strings", "200")
STARTUP = ("startup_bench", "--rounds", "200")
PROCESSING = ("processing_bench", "--rounds", "40")

# A row of a bench, whether there is a log service, and the goal of its ratio.
ROWS = [
    (HALDEND, "getter, round trip", True, AT_MOST, 1.00),
    (HALDEND, "getter, processor time", True, AT_MOST, 0.92),
    (HALDEND, "one-way setter with a store", True, AT_LEAST, 1.05),
    (TEXT, "strings of 20 cells, one way", True, AT_LEAST, 0.95),
    (STARTUP, "start, until the bus name", True, AT_MOST, 1.35),
    (STARTUP, "start, until the bus name", False, AT_MOST, 1.50),
    (STARTUP, "memory, idle", True, AT_MOST, 1.05),
    (PROCESSING, "save a still image", True, AT_MOST, 1.10),
    (PROCESSING, "idle, wake-ups", True, AT_MOST, 1.00),
]


def run(build, command, with_log):
    """The rows of a bench by their names: ours, reference and ratio."""
    with nullcontext() if with_log else machine.without_log():
        done = subprocess.run([build / "bench" / command[0], *command[1:]], capture_output=True, text=True)
    if done.returncode != 0:
        raise Failure(f"{command[0]}: {done.stderr}")
    lines = [re.split(r"\s{2,}", line.strip()) for line in done.stdout.splitlines()]
    return {cells[0]: cells[1:4] for cells in lines if len(cells) == 6}


def name_of(row):
    return row[1] + ("" if row[2] else ", no log service")


def measure(build, runs):
    """A list of runs, each with ours, reference and ratio by the row's name."""
    table = []
    for _ in range(runs):
        benches = {}
        for command, _, with_log, _, _ in ROWS:
            if (command, with_log) not in benches:
                benches[command, with_log] = run(build, command, with_log)
        table.append({name_of(row): benches[row[0], row[2]][row[1]] for row in ROWS})
    return table


def is_met(row, ratio):
    return row[3][1](float(ratio), row[4])


def rows(table):
    """What, ours and the reference's of the last run, the ratios of all, the goal, and whether all meet it."""
    for row in ROWS:
        results = [run[name_of(row)] for run in table]
        met = all(is_met(row, ratio) for *_, ratio in results)
        yield [name_of(row), *results[-1][:2], ", ".join(ratio for *_, ratio in results), f"{row[3][0]} {row[4]:.2f}",
               "met" if met else "MISSED"]


def missed_goals(table):
    return [f"{name}: {ratio}, goal {goal}" for name, _, _, ratio, goal, result in rows(table) if result != "met"]
