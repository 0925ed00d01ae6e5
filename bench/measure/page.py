# SPDX-License-Identifier: MIT
"""The generated parts of docs/performance.md, between markers."""

import datetime
import os
import platform
import re

from measure import counts, growth, times


def markdown(heads, lines):
    return "\n".join("| " + " | ".join(cells) + " |" for cells in (heads, ["---"] * len(heads), *lines))


def made_by(command):
    """When, where and how, and how busy the machine was."""
    load = "{:.1f}".format(os.getloadavg()[0])
    return (f"Made on {datetime.date.today()} by `bench/performance {command}`, {os.cpu_count()} cores, "
            f"{platform.machine()}, load {load} at the end.")


def of_counts(counted):
    heads = ["ours / bare Qt", *counts.FIGURES]
    goals = counts.missed_goals(counted)
    verdict = "All goals are met." if not goals else "Missed: " + "; ".join(goals) + "."
    return "\n\n".join([made_by("counts"), markdown(heads, counts.rows(counted)), verdict])


def of_times(table):
    return "\n\n".join([made_by("times"), markdown(["what", "ours", "bare Qt", "ratio", "goal", "result"],
                                                   times.rows(table))])


def of_growth(grown):
    lines = [[axis, group, name, " ".join(f"{cost:.0f}" for cost in costs), f"{value:.2f}"]
             for axis, group, name, costs, value in growth.slopes(grown)]
    points = [f"{axis}: " + ", ".join(f"{count:,}" for count in counts) for axis, counts in growth.AXES.items()]
    charts = [f"![Processor time of a call by {axis}](performance-{axis}.svg)" for axis in growth.AXES]
    return "\n\n".join([made_by("growth"), "Points: " + "; ".join(points) + ".",
                        markdown(["grows", "others are", "call", "µs a call", "slope"], lines), *charts])


def refresh(page, part, text):
    begin, end = f"<!-- begin: {part} -->", f"<!-- end: {part} -->"
    old = page.read_text(encoding="utf-8")
    new, found = re.subn(re.escape(begin) + ".*?" + re.escape(end), lambda _: f"{begin}\n{text}\n{end}", old, flags=re.S)
    if found != 1:
        raise ValueError(f"{page}: no place for {part}")
    page.write_text(new, encoding="utf-8")
