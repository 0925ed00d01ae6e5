# SPDX-License-Identifier: MIT
"""haldend for tests of its clients, as a template of python-dbusmock:

    python3 -m dbusmock --system --template haldend

Its objects, methods and signals are those of the interface files. It keeps texts, the video window, the video counter and
the state of recordings, playbacks and stills, and answers as the daemon does; it draws nothing, writes no file, and its
counter and its temporary texts stand still. Methods that it keeps nothing for are accepted; MockObject's log shows the
calls.

Parameter "interfaces_dir": another folder of the interface files. The rest of python-dbusmock works as ever: EmitSignal of
org.freedesktop.DBus.Mock sends video_recording_error, AddMethod replaces an answer.
"""

import pathlib
import xml.etree.ElementTree

import dbus
from dbusmock import get_object

BUS_NAME = "velmar.haldend"
MAIN_OBJ = "/"
MAIN_IFACE = "velmar.haldend.mock"
SYSTEM_BUS = True

INTERFACES_DIR = pathlib.Path(__file__).resolve().parent.parent.parent / "haldend" / "interfaces"

OK, NOT_NOW = 0, 2
WHITE, NAVY = 1, 5
COUNTER_ID = 102
NOTHING = {"i": dbus.Int32(0), "b": False, "s": "", "av": dbus.Array([], signature="v")}


def numbers(values, kind=dbus.Int32):
    """An array of variants."""
    return dbus.Array([kind(value) for value in values], signature="v")


class Text:
    """A text as create_text makes it."""

    def __init__(self):
        self.id = 0
        self.string = ""
        self.visible = False
        self.position = (0, 0)
        self.colors = (WHITE, NAVY)


class Display:
    """/videodisplay"""

    def __init__(self):
        self.size = (688, 573)

    def set_video_size(self, width, height):
        width, height = width & 0xFFFF, height & 0xFFFF
        if 1 <= width <= 4095 and 1 <= height <= 4095:
            self.size = (width, height)

    def get_displayed_video_width(self):
        return self.size[0]

    def get_displayed_video_height(self):
        return self.size[1]


class Overlay:
    """/videooverlay"""

    def __init__(self):
        self.texts = {}
        self.visible = False
        self.sender = 0
        self.time = (0, 0, 0, 0)
        self.counting = False

    def get_max_text_line_width(self):
        return 53

    def get_max_text_line_count(self):
        return 26

    def is_overlay_visible(self):
        return self.visible

    def show_overlay(self):
        self.visible = True

    def hide_overlay(self):
        self.visible = False

    def create_text(self):
        handle = next(number for number in range(1, 65536) if number not in self.texts)
        self.texts[handle] = Text()
        return handle

    def destroy_text(self, handle):
        self.texts.pop(handle, None)

    def destroy_all_texts(self):
        self.texts.clear()

    def get_text_handle_by_id(self, number):
        return min((handle for handle, text in self.texts.items() if text.id == number), default=0)

    def get_text_id(self, handle):
        return self.texts.get(handle, Text()).id

    def set_text_id(self, handle, number):
        if handle in self.texts:
            self.texts[handle].id = number

    def get_text_string(self, handle):
        return self.texts.get(handle, Text()).string

    def set_text_string(self, handle, string):
        if handle in self.texts:
            self.texts[handle].string = string

    def is_text_visible(self, handle):
        return self.texts.get(handle, Text()).visible

    def show_text(self, handle):
        if handle in self.texts:
            self.texts[handle].visible = True

    def hide_text(self, handle):
        if handle in self.texts:
            self.texts[handle].visible = False

    def show_all_texts(self):
        for text in self.texts.values():
            text.visible = True

    def hide_all_texts(self):
        for text in self.texts.values():
            text.visible = False

    def set_text_position(self, handle, column, row):
        if handle in self.texts:
            self.texts[handle].position = (column & 0xFF, row & 0xFF)

    def end_of(self, handle):
        text = self.texts[handle]
        return (text.position[0] + len(text.string.encode("utf-16-le")) // 2) & 0xFF

    def get_text_position(self, handle):
        if handle not in self.texts:
            return numbers((255, 255, 255))
        return numbers((*self.texts[handle].position, self.end_of(handle)))

    def get_text_length(self, handle):
        return self.end_of(handle) if handle in self.texts else 255

    def get_text_format(self, handle):
        return 1 if self.get_text_id(handle) == COUNTER_ID else 255

    def set_text_colors(self, handle, foreground, background):
        if handle in self.texts:
            self.texts[handle].colors = (foreground, background)

    def get_text_colors(self, handle):
        return numbers(self.texts[handle].colors if handle in self.texts else (0, 0))

    def is_videocounter_active(self):
        return self.counting

    def may_count(self, sender):
        return sender == self.sender if self.counting else True

    def videocounter_start(self, sender):
        if not self.counting and sender in (0, 1):
            self.sender, self.counting = sender, True

    def videocounter_stop(self, sender):
        if self.may_count(sender):
            self.counting = False

    def set_videocounter(self, sender, hours, minutes, seconds, frames):
        if self.may_count(sender):
            self.sender = sender
            self.time = (min(hours, 100), min(minutes, 60), min(seconds, 60), min(frames, 100))

    def get_videocounter(self):
        return numbers((self.sender, *self.time))


class Processing:
    """/videoprocessing"""

    def __init__(self, emit):
        self.emit = emit
        self.state = "idle"

    def go(self, before, after):
        if self.state not in before:
            return NOT_NOW
        self.state = after
        return OK

    def start_video_recording(self, _name):
        return self.go(["idle"], "recording")

    def pause_video_recording(self):
        return self.go(["recording"], "recording paused")

    def resume_video_recording(self):
        return self.go(["recording paused"], "recording")

    def stop_video_recording(self):
        return self.go(["recording", "recording paused"], "idle")

    def is_video_recording_running(self):
        return self.state == "recording"

    def is_video_recording_paused(self):
        return self.state == "recording paused"

    def query_video_recording_time(self):
        return numbers((0, 0, 0), dbus.UInt32)

    def get_video_recording_average_data_rate(self):
        return 22

    def start_video_playback(self, _name):
        return self.go(["idle"], "playback")

    def pause_video_playback(self):
        return self.go(["playback"], "playback paused")

    def resume_video_playback(self):
        return self.go(["playback paused"], "playback")

    def stop_video_playback(self):
        return self.go(["playback", "playback paused"], "idle")

    def is_video_playback_running(self):
        return self.state == "playback"

    def is_video_playback_paused(self):
        return self.state == "playback paused"

    def save_video_image(self, _name):
        if self.state not in ("idle", "recording", "recording paused"):
            return NOT_NOW
        self.emit("video_image_saved", "i", [dbus.Int32(OK)])
        return OK

    def display_video_image(self, _name):
        if self.state == "recording paused":
            return self.go(["recording paused"], "image over recording")
        return self.go(["idle"], "image")

    def clear_video_image(self):
        if self.state == "image over recording":
            self.state = "recording paused"
        elif self.state == "image":
            self.state = "idle"
        return NOT_NOW


def answer(mock, method, out_signature, args):
    """What the code of each method calls."""
    function = getattr(mock.haldend, method, None)
    value = function(*args) if function else None
    return NOTHING.get(out_signature) if value is None else value


def add_object(mock, path, tree, model):
    methods = []
    interface = tree.find("interface")
    for method in interface.iter("method"):
        signature = {"in": "", "out": ""}
        for argument in method.iter("arg"):
            signature[argument.get("direction")] += argument.get("type")
        call = f"self.haldend_answer(self, {method.get('name')!r}, {signature['out']!r}, args)"
        methods.append(
            (method.get("name"), signature["in"], signature["out"], f"ret = {call}" if signature["out"] else call)
        )
    name = interface.get("name")
    mock.AddObject(path, name, {}, methods)
    served = get_object(path)
    served.haldend = model(lambda signal, types, args: served.EmitSignal(name, signal, types, args))
    served.haldend_answer = answer


def load(mock, parameters):
    models = {
        "/videodisplay": lambda _emit: Display(),
        "/videooverlay": lambda _emit: Overlay(),
        "/videoprocessing": Processing,
    }
    files = sorted(pathlib.Path(parameters.get("interfaces_dir", INTERFACES_DIR)).glob("velmar.haldend.*.xml"))
    if not files:
        raise ValueError("no interface files in the folder of the parameter interfaces_dir")
    for file in files:
        tree = xml.etree.ElementTree.parse(file).getroot()
        add_object(mock, tree.get("name"), tree, models.get(tree.get("name"), lambda _emit: None))
