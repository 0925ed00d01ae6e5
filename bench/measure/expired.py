# SPDX-License-Identifier: MIT
"""What temporary texts cost that have gone by themselves: their timers fire again after each duration."""

import time
from pathlib import Path

from measure.growth import COLUMNS, ROWS, daemon, processor_time
from measure.requests import OVERLAY
from measure.stage import Stage

TEXTS = (0, 1000, 10000)
DURATION = 1  # seconds of each text
GONE = 3 * DURATION
PAUSE = DURATION / 1000  # so that they don't go, and fire again, all at once
SECONDS = 10


def text(number):
    return OVERLAY, "draw_temp_text", "siiiii", "x", 1, 5, number % COLUMNS, number // COLUMNS % ROWS, DURATION


def show(service, numbers):
    for number in numbers:
        service.tell(*text(number))
        time.sleep(PAUSE)
    service.barrier()


def memory(service):
    """The process's own, in kB."""
    status = Path(f"/proc/{service.pid}/status").read_text(encoding="utf-8")
    return next(int(line.split()[1]) for line in status.splitlines() if line.startswith("RssAnon:"))


def measure(source, build):
    """Of each number of texts: it, processor time of a second, of it for each timer, and memory."""
    with Stage(source, build, monitored=False) as stage:
        service = daemon(stage)
        made, idle = 0, None
        for texts in TEXTS:
            show(service, range(made, texts))
            made = texts
            time.sleep(GONE)
            before = processor_time(service)
            time.sleep(SECONDS)
            used = (processor_time(service) - before) / SECONDS
            idle = idle or used
            yield [str(texts), f"{used:.0f}", f"{(used - idle) * DURATION / texts:.2f}" if texts else "", str(memory(service))]
