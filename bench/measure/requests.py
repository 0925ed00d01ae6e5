# SPDX-License-Identifier: MIT
"""The kinds of request that are counted, each for the daemon and, where it has the same, for the bare Qt service."""

import time

from measure.stage import member

OVERLAY, DISPLAY, PROCESSING = "videooverlay", "videodisplay", "videoprocessing"
ROW, COLUMN = 3, 5
COUNTER_ID = 102
LONG = 9999  # seconds that a temporary text stays


class Request:
    """A kind of request. make() prepares the service; do() carries one out, and returns when it is answered or sent."""

    reference = ""  # the role of the bare Qt service that has the same call; None: it has none
    signal = None  # the request is done when this signal comes by
    times = 11
    instrumented = 20  # times under callgrind, which can't tell one from the next

    def __init__(self, name):
        self.name = name

    def make(self, service):
        pass

    def do(self, service, number):
        raise NotImplementedError

    def undo(self, service):
        pass


class Getter(Request):
    def do(self, service, number):
        service.ask(DISPLAY, "get_displayed_video_width")


class Setter(Request):
    def do(self, service, number):
        service.tell(DISPLAY, "set_video_position", "ii", number % 2, number % 2)


class Overlay(Request):
    """On texts. The bare service has no more than it needs, and one text, which is on the screen."""

    reference = None

    def text(self, service, cells=20, column=COLUMN, row=ROW):
        handle = service.ask(OVERLAY, "create_text")
        service.tell(OVERLAY, "set_text_position", "iii", handle, column, row)
        service.tell(OVERLAY, "set_text_string", "is", handle, "x" * cells)
        service.tell(OVERLAY, "show_text", "i", handle)
        return handle

    def make(self, service):
        self.handle = self.text(service)

    def undo(self, service):
        service.tell(OVERLAY, "destroy_all_texts")
        service.barrier()


class TextString(Overlay):
    reference = "overlay"

    def __init__(self, cells):
        super().__init__(f"set_text_string, {cells} cells")
        self.cells = cells

    def make(self, service):
        self.handle = 1
        if service.name == "velmar.haldend":
            self.handle = self.text(service, self.cells, 0)

    def do(self, service, number):
        service.tell(OVERLAY, "set_text_string", "is", self.handle, "xy"[number % 2] * self.cells)

    def undo(self, service):
        if service.name == "velmar.haldend":
            super().undo(service)


class CreateText(TextString):
    def __init__(self, name):
        Request.__init__(self, name)

    def make(self, service):
        pass

    def do(self, service, number):
        service.ask(OVERLAY, "create_text")


class ShowHide(Overlay):
    def do(self, service, number):
        service.tell(OVERLAY, "show_text" if number % 2 else "hide_text", "i", self.handle)


class Move(Overlay):
    """A text of 20 cells goes one cell to the right or left; its neighbours have two cells each, all on its place."""

    def __init__(self, neighbours):
        super().__init__(f"move over {neighbours} neighbours")
        self.neighbours = neighbours

    def make(self, service):
        for i in range(self.neighbours):
            self.text(service, 2, COLUMN + 2 * i)
        super().make(service)

    def do(self, service, number):
        service.tell(OVERLAY, "set_text_position", "iii", self.handle, COLUMN + (number + 1) % 2, ROW)


class TemporaryText(Overlay):
    def make(self, service):
        pass

    def do(self, service, number):
        service.tell(OVERLAY, "draw_temp_text", "siiiii", "x" * 20, 1, 5, COLUMN, ROW, LONG)

    def undo(self, service):
        service.tell(OVERLAY, "clear_temp_texts")
        service.barrier()


class Second(Overlay):
    """A second without calls. The input signal is looked at once."""

    reference = "poll"
    times = 3
    instrumented = 2

    def make(self, service):
        """Lies between two looks at the input signal, so that each second has one."""
        service.settle()
        service.settle(service.state())
        time.sleep(0.4)

    def do(self, service, number):
        time.sleep(1)

    def undo(self, service):
        pass


class CounterSecond(Second):
    """The same with the counter running, from one of its signals to the next."""

    reference = None
    signal = "videocounter_changed"

    def make(self, service):
        self.handle = self.text(service)
        service.tell(OVERLAY, "set_text_id", "ii", self.handle, COUNTER_ID)
        service.barrier()
        super().make(service)
        service.tell(OVERLAY, "videocounter_start", "i", 1)
        service.stage.monitor.take_until(lambda message: member(message) == self.signal)

    def do(self, service, number):
        pass

    def undo(self, service):
        service.tell(OVERLAY, "videocounter_stop", "i", 1)
        Overlay.undo(self, service)


class Reload(Request):
    reference = None
    times = 5
    instrumented = 5

    def do(self, service, number):
        service.ask("debug", "reload_hardware_config")


class StillImage(Request):
    reference = "processing"
    signal = "video_image_saved"
    times = 3
    instrumented = 1

    def do(self, service, number):
        service.ask(PROCESSING, "save_video_image", "s", service.stage.path(f"still{number}.bmp"))


REQUESTS = [
    Getter("getter"),
    Setter("setter with a store"),
    TextString(1),
    TextString(20),
    TextString(53),
    CreateText("create a text"),
    ShowHide("show or hide, 20 cells"),
    Move(0),
    Move(1),
    Move(10),
    TemporaryText("temporary text, 20 cells"),
    Reload("reload"),
    StillImage("still image"),
    Second("a second, idle"),
    CounterSecond("a second of the counter"),
]
