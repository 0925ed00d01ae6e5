#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Makes the manual page haldend-dbus(7) from the interfaces' XML files and the comments in them, as docs/dbus-api.md is.

    interfaces_as_manual.py --check|--refresh PAGE XML...
"""

import re
import sys
import textwrap
import xml.etree.ElementTree as ElementTree

HEAD = r""".\" SPDX-License-Identifier: MIT
.\" Made from dbus/*.xml by dbus/interfaces_as_manual.py.
.Dd November 22, 2026
.Dt HALDEND-DBUS 7
.Os
.Sh NAME
.Nm haldend-dbus
.Nd bus interfaces of the video board's daemon
.Sh DESCRIPTION
.Xr haldend 8
owns the name
.Dq velmar.haldend
on the D\-Bus system bus.
It has one object for each interface; the last part of the interface's name is the object's path.
There are no properties.
.Pp
The types are those of D\-Bus: i, an integer of 32 bits; b, a truth value; s, a text; av, an array of variants.
Methods without an answer send no reply to a caller that asks for none.
They are carried out in the order in which they are sent.
A call with arguments of other types is refused with
.Dq org.freedesktop.DBus.Error.UnknownMethod .
"""

TAIL = r""".Sh FILES
.Bl -tag -width Ds
.It Pa /usr/share/dbus\-1/interfaces/velmar.haldend.*.xml
The interfaces, for programs.
.It Pa /usr/share/dbus\-1/system.d/velmar.haldend.conf
The bus policy: who may own the name, and who may call.
.El
.Sh EXAMPLES
.Bd -literal -offset indent
busctl call velmar.haldend /videodisplay \e
    velmar.haldend.videodisplay set_video_size ii 360 288
.Ed
.Sh SEE ALSO
.Xr busctl 1 ,
.Xr haldenctl 1 ,
.Xr haldend 8
"""


def roff(text):
    text = text.replace("\\", r"\e").replace("-", r"\-").replace("`", "")
    return re.sub(r"^([.'])", r"\\&\1", text, flags=re.M)


def sentences(text):
    """One sentence a line, as manual pages have it."""
    return re.sub(r"([a-z0-9)\]])([.:;?]) +(?=[A-Z(])", r"\1\2\n", roff(" ".join(text.split())))


def blocks(text):
    """The paragraphs of a comment: lists become lists."""
    out, in_list = "", False
    for paragraph in re.split(r"\n\s*\n", text):
        items = re.split(r"^\s*- ", paragraph, flags=re.M)
        if items[0].strip():
            out += f".Pp\n{sentences(items[0])}\n"
        if len(items) > 1:
            out += ".Bl -dash -compact\n" + "".join(f".It\n{sentences(item)}\n" for item in items[1:]) + ".El\n"
    return out


def parsed(comment):
    """Name, texts of the arguments, and the rest of a comment."""
    lines = textwrap.dedent(comment.strip("\n")).strip().split("\n")
    arguments, rest, name = {}, [], None
    for line in lines[1:]:
        start = re.match(r"@(\w+): *(.*)", line.strip())
        if start:
            name = start[1]
            arguments[name] = start[2]
        elif not line.strip():
            name = None
            rest.append("")
        elif name:
            arguments[name] += " " + line.strip()
        else:
            rest.append(line)
    return lines[0].strip().rstrip(":"), arguments, "\n".join(rest).strip()


def item(member, comment):
    out = f".It Fn {member.get('name')}\n"
    name, texts, rest = parsed(comment) if comment else (None, {}, "")
    answers = member.tag == "signal"
    listed = ""
    for argument in member.iter("arg"):
        arrow = "answer " if argument.get("direction") == "out" and not answers else ""
        text = texts.get(argument.get("name"))
        listed += f".It {arrow}{argument.get('type')} Ar {argument.get('name')}\n" + (f"{sentences(text)}\n" if text else "")
    if member.tag == "signal":
        out += "Signal.\n"
    if name == member.get("name") and rest:
        out += blocks(rest).removeprefix(".Pp\n")
    elif name != member.get("name") and not listed:
        out += "Accepted without effect.\n"
    return out + (f".Bl -tag -width Ds -compact\n{listed}.El\n" if listed else "")


def section(file):
    parser = ElementTree.XMLParser(target=ElementTree.TreeBuilder(insert_comments=True))
    root = ElementTree.parse(file, parser).getroot()
    comments = [child for child in root if child.tag is ElementTree.Comment]
    interface = root.find("interface")
    out = f".Sh {root.get('name').upper()}\nThe interface\n.Dq {interface.get('name')} .\n" + blocks(parsed(comments[-1].text)[2])
    open_list, comment = False, None
    for child in interface:
        if child.tag is ElementTree.Comment:
            comment = child.text
            continue
        title = parsed(comment)[0] if comment else None
        if comment and title != child.get("name"):
            out += (".El\n" if open_list else "") + f".Ss {title}\n" + blocks(parsed(comment)[2]).removeprefix(".Pp\n")
            open_list = False
        if not open_list:
            out += ".Bl -tag -width Ds\n"
            open_list = True
        out += item(child, comment)
        comment = None
    return out + (".El\n" if open_list else "")


def main():
    mode, page, *files = sys.argv[1:]
    wanted = HEAD + "".join(section(file) for file in files) + TAIL
    if mode == "--refresh":
        with open(page, "w", encoding="utf-8") as out:
            out.write(wanted)
        return 0
    with open(page, encoding="utf-8") as found:
        if found.read() == wanted:
            return 0
    print(f"{page}: not what the interface files say; bring it up to date with\n    "
          + " ".join([sys.argv[0], "--refresh", page, *files]), file=sys.stderr)
    return 1


if __name__ == "__main__":
    sys.exit(main())
