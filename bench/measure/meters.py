# SPDX-License-Identifier: MIT
"""What is counted of a request, each by another instrument, because instruments disturb each other."""

import glob
import os
import shutil
import subprocess
import time

from measure.stage import Failure

MAIN, BUS_THREAD = "main", "bus"
ALLOCATORS = {"malloc", "calloc", "realloc", "memalign", "posix_memalign", "aligned_alloc"}


class Meter:
    """One service under one instrument. begin() and end() enclose the requests of a kind, sample() follows each."""

    instrument = ()
    instrumented = False  # can't tell one request from the next, so that many are taken

    def __init__(self, stage, name):
        self.stage, self.label = stage, name

    def attach(self, service):
        self.service = service

    def begin(self):
        self.samples = []

    def sample(self):
        pass

    def end(self, times):
        """Figures of one request by name."""
        raise NotImplementedError

    def started(self):
        """Figures of the start, from exec to rest."""
        raise NotImplementedError


def least(samples):
    """What a request needs: on a busy machine a thread may have slept between two steps that it else takes at once."""
    return min(samples)


class Plain(Meter):
    """Wake-ups and messages."""

    def begin(self):
        super().begin()
        self.stage.sentinel()
        self.last = self.service.wake_ups()

    def sample(self):
        now = self.service.wake_ups()
        self.samples.append((now - self.last, len(self.service.own(self.stage.sentinel()))))
        self.last = self.service.wake_ups()

    def end(self, times):
        wake_ups, messages = zip(*self.samples)
        return {"wake-ups": least(wake_ups), "messages": least(messages)}

    def started(self):
        return {"messages": len(self.service.own(self.stage.sentinel()))}


class Trace(Meter):
    """Device calls, from the board's trace."""

    def lines(self):
        with open(f"{self.stage.board}/trace", "rb") as trace:
            return sum(1 for _ in trace)

    def begin(self):
        super().begin()
        self.last = self.lines()

    def sample(self):
        now = self.lines()
        self.samples.append(now - self.last)
        self.last = now

    def end(self, times):
        return {"device calls": least(self.samples)}

    def started(self):
        return {"device calls": self.lines()}


class Strace(Meter):
    """System calls of each thread but those of locks, which tell how the threads met. A call counts for the request in
    which it begins: the wait for the next request begins in this one."""

    def __init__(self, stage, name):
        super().__init__(stage, name)
        self.file = stage.path(f"strace.{name}")
        self.instrument = ("strace", "-D", "-f", "-qq", "-ttt", "-e", "signal=none", "-e", "trace=!futex",
                           "-o", self.file)

    def begin(self):
        super().begin()
        self.samples.append(time.time())

    def sample(self):
        self.samples.append(time.time())

    def calls(self, begin, end):
        counts = {MAIN: 0, BUS_THREAD: 0}
        with open(self.file, encoding="utf-8", errors="replace") as lines:
            for line in lines:
                words = line.split(None, 2)
                if len(words) == 3 and begin <= float(words[1]) < end and not words[2].startswith(("<...", "+++")):
                    counts[MAIN if int(words[0]) == self.service.pid else BUS_THREAD] += 1
        return counts

    def end(self, times):
        # The last lines are written before a line of a later call is.
        self.service.barrier()
        spans = [self.calls(*span) for span in zip(self.samples, self.samples[1:])]
        return {f"system calls, {thread}": least([span[thread] for span in spans]) for thread in (MAIN, BUS_THREAD)}

    def started(self):
        now = time.time()
        self.service.barrier()
        return {f"system calls, {thread}": count for thread, count in self.calls(0, now).items()}


class Callgrind(Meter):
    """Instructions and allocations."""

    instrumented = True

    def __init__(self, stage, name):
        super().__init__(stage, name)
        self.file = stage.path(f"callgrind.{name}")
        self.instrument = ("valgrind", "--tool=callgrind", "--dump-line=no", "--compress-strings=no", "--quiet",
                           f"--callgrind-out-file={self.file}")
        self.profiles = os.environ.get("HALDEND_PROFILES")

    def command(self, word):
        subprocess.run(["vgdb", f"--pid={self.service.pid}", word], check=True, capture_output=True)

    def dump(self):
        """The file with what was done since the last one, or since the command zero."""
        before = set(glob.glob(self.file + ".*"))
        self.command("dump")
        new = set(glob.glob(self.file + ".*")) - before
        if len(new) != 1:
            raise Failure("no profile was written")
        return new.pop()

    def figures(self, file, times):
        instructions = allocations = 0
        caller = callee = ""
        with open(file, encoding="utf-8", errors="replace") as lines:
            for line in lines:
                if line.startswith("fn="):
                    caller = line[3:].rstrip()
                elif line.startswith("cfn="):
                    callee = line[4:].rstrip()
                elif line.startswith("calls=") and callee in ALLOCATORS and caller not in ALLOCATORS:
                    allocations += int(line[6:].split()[0])
                elif line.startswith("totals:"):
                    instructions = int(line.split()[1])
        if not instructions:
            raise Failure("a profile without instructions")
        return {"instructions": instructions / times, "allocations": allocations / times}

    def begin(self):
        super().begin()
        self.command("zero")

    def end(self, times):
        file = self.dump()
        figures = self.figures(file, times)
        if self.profiles:
            shutil.copy(file, self.profiles)
        return figures

    def started(self):
        return self.end(1)


METERS = [Plain, Trace, Strace, Callgrind]
