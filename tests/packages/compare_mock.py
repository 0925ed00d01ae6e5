# SPDX-License-Identifier: MIT
"""compare_mock.py ADDRESS: makes the same calls to the daemon on the system bus and to the mock on another bus, and compares the
answers, and what both say of themselves."""

import sys
import xml.etree.ElementTree as ElementTree

import dbus
import dbus.bus

CALLS = [
    ("videodisplay", "set_video_size", 360, 288),
    ("videodisplay", "set_video_size", 0, 9),
    ("videodisplay", "get_displayed_video_width"),
    ("videodisplay", "get_displayed_video_height"),
    ("videooverlay", "destroy_all_texts"),
    ("videooverlay", "get_max_text_line_width"),
    ("videooverlay", "get_max_text_line_count"),
    ("videooverlay", "is_overlay_visible"),
    ("videooverlay", "show_overlay"),
    ("videooverlay", "is_overlay_visible"),
    ("videooverlay", "get_text_position", 1),
    ("videooverlay", "get_text_colors", 1),
    ("videooverlay", "get_text_length", 1),
    ("videooverlay", "get_text_string", 1),
    ("videooverlay", "set_text_string", 9, "nobody"),
    ("videooverlay", "get_text_string", 9),
    ("videooverlay", "draw_temp_text", "soon gone", 1, 5, 0, 0, 5),
    ("videooverlay", "change_logo_file", "/tmp/logo.png"),
    ("videooverlay", "is_videocounter_active"),
    ("videooverlay", "set_videocounter", 1, 0, 12, 300, 0),
    ("videooverlay", "get_videocounter"),
    ("videooverlay", "videocounter_start", 7),
    ("videooverlay", "is_videocounter_active"),
    ("videoprocessing", "is_video_recording_running"),
    ("videoprocessing", "pause_video_recording"),
    ("videoprocessing", "stop_video_playback"),
    ("videoprocessing", "clear_video_image"),
    ("videoprocessing", "query_video_recording_time"),
    ("videoprocessing", "get_video_recording_average_data_rate"),
    ("videoprocessing", "start_video_recording", "/var/lib/haldend/compared.ts"),
    ("videoprocessing", "start_video_recording", "/var/lib/haldend/compared.ts"),
    ("videoprocessing", "is_video_recording_running"),
    ("videoprocessing", "start_video_playback", "/var/lib/haldend/compared.ts"),
    ("videoprocessing", "pause_video_recording"),
    ("videoprocessing", "is_video_recording_paused"),
    ("videoprocessing", "resume_video_recording"),
    ("videoprocessing", "stop_video_recording"),
    ("videoprocessing", "start_video_playback", "/var/lib/haldend/compared.ts"),
    ("videoprocessing", "pause_video_playback"),
    ("videoprocessing", "is_video_playback_paused"),
    ("videoprocessing", "resume_video_playback"),
    ("videoprocessing", "is_video_playback_running"),
    ("videoprocessing", "stop_video_playback"),
    ("videoprocessing", "save_video_image", "/var/lib/haldend/compared.bmp"),
    ("videoprocessing", "is_video_input_available"),
    ("videoprocessing", "get_video_input_type"),
    ("debug", "fpga_enable_video_restore"),
    ("debug", "print_hardware_config", "fpga"),
]
# The handle comes from create_text.
TEXT_CALLS = [
    ("get_text_string",),
    ("set_text_string", "Manhole 17"),
    ("get_text_string",),
    ("set_text_position", 20, 300),
    ("get_text_position",),
    ("get_text_length",),
    ("get_text_format",),
    ("set_text_id", 102),
    ("get_text_format",),
    ("get_text_id",),
    ("get_text_colors",),
    ("set_text_colors", 12, 5),
    ("get_text_colors",),
    ("is_text_visible",),
    ("show_text",),
    ("is_text_visible",),
    ("hide_text",),
    ("is_text_visible",),
    ("destroy_text",),
    ("get_text_string",),
]


def call(bus, name, method, *args):
    proxy = bus.get_object("velmar.haldend", f"/{name}", introspect=True)
    return plain(dbus.Interface(proxy, f"velmar.haldend.{name}").get_dbus_method(method)(*args))


def plain(value):
    """A value with its type, an array with those of its items."""
    if isinstance(value, dbus.Array):
        return [plain(item) for item in value]
    return None if value is None else (type(value).__name__, str(value))


def answers(bus):
    given = [(words, call(bus, *words)) for words in CALLS]
    handle = dbus.Int32(call(bus, "videooverlay", "create_text")[1])
    for method, *args in TEXT_CALLS:
        given.append(((method, *args), call(bus, "videooverlay", method, handle, *args)))
    given.append((("get_text_handle_by_id",), call(bus, "videooverlay", "get_text_handle_by_id", 102)))
    return given


def methods(bus, name):
    text = bus.get_object("velmar.haldend", f"/{name}").Introspect(dbus_interface="org.freedesktop.DBus.Introspectable")
    interface = ElementTree.fromstring(text).find(f"interface[@name='velmar.haldend.{name}']")
    return {
        (method.get("name"), argument.get("direction"), argument.get("type"))
        for method in interface.iter("method")
        for argument in [*method.iter("arg"), ElementTree.Element("arg")]
    }


def main():
    daemon, mock = dbus.SystemBus(), dbus.bus.BusConnection(sys.argv[1])
    wrong = 0
    for name in ("videodisplay", "videooverlay", "videoprocessing", "debug"):
        if methods(daemon, name) != methods(mock, name):
            print(f"{name}: other methods: {methods(daemon, name) ^ methods(mock, name)}")
            wrong += 1
    for (words, ours), (_, mocked) in zip(answers(daemon), answers(mock), strict=True):
        if ours != mocked:
            print(f"{words}: the daemon answers {ours}, the mock {mocked}")
            wrong += 1
    return 1 if wrong else 0


sys.exit(main())
