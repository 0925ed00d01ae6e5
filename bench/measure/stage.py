# SPDX-License-Identifier: MIT
"""A bus, a board, the codec service's stand-in, and a service under measurement among them."""

import os
import queue
import shutil
import subprocess
import tempfile
import threading
import time
from pathlib import Path

import dbus
import dbus.bus
import dbus.lowlevel

PATIENCE = 60  # seconds, for a service under an instrument
BUS = "org.freedesktop.DBus"
MEMORY = "/dev/shm"


class Failure(Exception):
    """A measurement that didn't come about."""


class Monitor:
    """Every message on the bus, as dbus-monitor tells it: one line each."""

    def __init__(self, address):
        self.process = subprocess.Popen(["stdbuf", "-oL", "dbus-monitor", "--profile", "--address", address], text=True,
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.lines = queue.Queue()
        self.passed = []  # taken, and not told by a sentinel yet
        threading.Thread(target=self.read, daemon=True).start()
        # A monitor loses its name when it begins.
        self.take_until(lambda message: member(message) == "NameLost")

    def read(self):
        for line in self.process.stdout:
            self.lines.put(line.rstrip("\n").split("\t"))

    def take_until(self, matches):
        """Waits for the first message that matches."""
        while True:
            try:
                message = self.lines.get(timeout=PATIENCE)
            except queue.Empty:
                raise Failure("a message didn't come by") from None
            self.passed.append(message)
            if matches(message):
                return

    def end(self):
        self.process.terminate()
        self.process.wait()


def member(message):
    return message[7] if len(message) > 7 else ""


class Stage:
    """Everything around a service. Use it in a with statement."""

    def __init__(self, source, build, connections=256, monitored=True):
        self.source, self.build, self.connections, self.monitored = source, build, connections, monitored
        self.folder = tempfile.mkdtemp(prefix="haldend-performance.", dir=MEMORY)
        self.programs = []
        self.monitor = self.client = None

    def __enter__(self):
        try:
            return self.set_up()
        except BaseException:
            self.__exit__()
            raise

    def set_up(self):
        self.board = self.path("board")
        subprocess.run([self.build / "board/halden-board", "create", self.board], check=True)
        self.address = "unix:path=" + self.path("bus")
        bus = self.run(["dbus-daemon", f"--config-file={self.configuration()}", "--nofork",
                        f"--address={self.address}", "--print-address"], stdout=subprocess.PIPE)
        bus.stdout.readline()
        self.client = dbus.bus.BusConnection(self.address)
        self.monitor = Monitor(self.address) if self.monitored else None
        return self

    def __exit__(self, *_):
        if self.monitor:
            self.monitor.end()
        if self.client:
            self.client.close()
        for program in reversed(self.programs):
            program.kill()
            program.wait()
        shutil.rmtree(self.folder)

    def configuration(self):
        """The private bus of ./run, for as many clients as are needed."""
        text = (self.source / "board/private-bus.conf").read_text(encoding="utf-8")
        limit = f'  <limit name="max_connections_per_user">{self.connections}</limit>\n</busconfig>'
        with open(self.path("bus.conf"), "w", encoding="utf-8") as file:
            file.write(text.replace("</busconfig>", limit))
        return file.name

    def path(self, name):
        return os.path.join(self.folder, name)

    def environment(self, preloaded=True):
        """Nothing inherited but PATH."""
        variables = {"PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8", "TZ": "UTC", "HALDEN_BOARD": self.board,
                     "DBUS_SYSTEM_BUS_ADDRESS": self.address}
        if preloaded:
            variables["LD_PRELOAD"] = str(self.build / "board/libhaldenboard.so")
        return variables

    def run(self, command, **options):
        program = subprocess.Popen(command, stdin=subprocess.DEVNULL, stderr=open(self.path("log"), "a"), **options)
        self.programs.append(program)
        return program

    def devices(self):
        return {"i2c": f"{self.board}/i2c-1", "fpga": f"{self.board}/fpgamem", "lime": f"{self.board}/fb0"}

    def start_bare(self, name, *role):
        return Service(self, name, [self.build / "bench/bare_qt_service", name, *role])

    def trace(self, command):
        return subprocess.run([self.build / "board/halden-board", "trace", command], env=self.environment(False),
                              check=True, capture_output=True, text=True).stdout.splitlines()

    def sentinel(self):
        """The messages since the last one. It comes by when all those before have."""
        serial = self.client.send_message(dbus.lowlevel.MethodCallMessage(BUS, "/", BUS, "GetId"))
        name = self.client.get_unique_name()
        self.monitor.take_until(lambda message: member(message) == "GetId" and message[2:4] == [str(serial), name])
        passed, self.monitor.passed = self.monitor.passed[:-1], []
        return passed


class Service:
    """A service at work, under an instrument if there is one."""

    def __init__(self, stage, name, command, instrument=()):
        self.stage, self.name = stage, name
        strace = bool(instrument) and instrument[0] == "strace"
        environment = stage.environment(not strace)
        library = stage.environment()["LD_PRELOAD"]
        self.started = time.time()
        self.process = stage.run([*instrument, *(["-E", f"LD_PRELOAD={library}"] if strace else []), *command],
                                 env=environment, stdout=subprocess.DEVNULL)
        self.wait_for_name()
        self.unique = str(stage.client.get_name_owner(name))
        self.pid = self.process.pid

    def has_ended(self):
        if self.process.poll() is not None:
            with open(self.stage.path("log"), encoding="utf-8") as log:
                raise Failure(f"{self.name} has ended\n{log.read()}")
        return False

    def wait_for_name(self):
        end = time.time() + PATIENCE
        while not self.stage.client.name_has_owner(self.name):
            self.has_ended()
            if time.time() > end:
                raise Failure(f"{self.name} doesn't come onto the bus")
            time.sleep(0.01)

    def tasks(self):
        """The main thread first. Numbers begin again at their largest: a later thread's may be lower."""
        threads = Path(f"/proc/{self.pid}/task")
        return sorted(threads.iterdir(), key=lambda task: (task.name != str(self.pid), int(task.name)))

    def state(self):
        """Of each thread: whether it sleeps, and how often it went to sleep so far."""
        threads = []
        for task in self.tasks():
            fields = dict(line.split(":", 1) for line in (task / "status").read_text().splitlines())
            threads.append((fields["State"].split()[0] == "S", int(fields["voluntary_ctxt_switches"])))
        return threads

    def wake_ups(self):
        return sum(count for _, count in self.state())

    def settle(self, before=None):
        """Waits until all threads sleep and have done so for a while; with a state of before, until the main thread has
        been awake in between."""
        calm, last, end = 0, None, time.time() + PATIENCE
        while calm < 3:
            now = self.state()
            awake = before is None or now[0][1] > before[0][1]
            calm = calm + 1 if awake and now == last and all(sleeps for sleeps, _ in now) else 0
            last = now
            if time.time() > end:
                raise Failure(f"{self.name} doesn't come to rest")
            time.sleep(0.001)

    def message(self, interface, method, signature="", *arguments):
        message = dbus.lowlevel.MethodCallMessage(self.name, f"/{interface}", f"velmar.haldend.{interface}", method)
        message.append(*arguments, signature=signature)
        return message

    def ask(self, *call):
        """Calls and waits for the answer."""
        answer = self.stage.client.send_message_with_reply_and_block(self.message(*call), PATIENCE).get_args_list()
        return answer[0] if answer else None

    def tell(self, *call):
        """Sends a call that wants no answer."""
        message = self.message(*call)
        message.set_no_reply(True)
        self.stage.client.send_message(message)

    def barrier(self):
        """Waits for all that was sent: a getter queues up behind it."""
        self.ask("videodisplay", "get_displayed_video_width")

    def own(self, messages):
        """Those of the messages that it sent or got."""
        return [m for m in messages if len(m) > 4 and (m[3] == self.unique or m[4] in (self.unique, self.name))]

    def end(self):
        self.process.terminate()
        self.process.wait(PATIENCE)
