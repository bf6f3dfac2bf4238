#!/usr/bin/python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""Walks the includes of src/ and fails on an edge that is not drawn in layers.py.

check_layers.py ROOT              checks ROOT/src
check_layers.py ROOT --self-test  shows on made-up trees that each rule can fail
"""

import pathlib
import re
import sys
import tempfile

from layers import ALLOWED, CORE, HUBSIM_LIBRARIES, POSIX, ROOMS, STANDARD, layer_of

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)', re.MULTILINE)
# Made by the build beside the file that includes it.
GENERATED = re.compile(r"^(ui_\w+\.h|(\w+/)*(moc_)?\w+\.(moc|cpp))$")


# Free of the toolkit, so that the simulated hub is built without it too.
PANEL_DOOR = "hubsim/panel/panel.h"
# What makes the simulated hub a device of this machine.
HUBSIM_DEVICE = ("hubsim/mount/", "hubsim/panel/")


def is_qt(header):
    return header.startswith("Q")


def is_panel(path):
    """The simulated hub's window, the one part of it that a person looks at."""
    return path.as_posix().startswith("hubsim/panel/")


def room_of(path, layer):
    """The room of a file, named from src/, in a layer that has rooms."""
    inside = path.relative_to(layer)
    return inside.parts[0] if len(inside.parts) > 1 else inside.stem


def room_error(layer, header, relative):
    rooms = ROOMS[layer]
    room, target = room_of(relative, layer), room_of(pathlib.PurePosixPath(header), layer)
    if room in rooms and target != room and target not in rooms[room]:
        return f'{layer}/{room} may not lean on {layer}/{target}: "{header}"'
    return None


def rooms_errors(layer, rooms):
    """A table that does not go from the bottom up would let rooms lean on each other."""
    below, errors = set(), []
    for room, leans_on in rooms.items():
        errors += [
            f"layers.py: {layer}/{room} leans on {other}, which does not stand below it" for other in leans_on - below
        ]
        below.add(room)
    return errors


def quoted_error(layer, header, source_root, path):
    if GENERATED.match(header) and layer not in CORE:
        return None
    target = layer_of(header.rpartition("/")[0])
    if target is None:
        return f'"{header}" is not named from src/'
    if not (source_root / header).is_file():
        return f'"{header}" does not exist'
    if target != layer and target not in ALLOWED[layer]:
        return f'{layer} may not lean on {target}: "{header}"'
    if header.startswith("hubsim/panel/") and header != PANEL_DOOR and not is_panel(path.relative_to(source_root)):
        return f'the window of the simulated hub is reached through "{PANEL_DOOR}" alone: "{header}"'
    if layer != "hubsim" and header.startswith(HUBSIM_DEVICE):
        return f'the simulated hub is used in memory, not as a device: "{header}"'
    return room_error(layer, header, path.relative_to(source_root)) if layer == target and layer in ROOMS else None


def system_error(layer, header, path):
    if layer in CORE:
        if header not in STANDARD:
            return f"the core uses the standard library alone: <{header}>"
    elif layer == "hubsim":
        known = header in STANDARD or header in POSIX or header.startswith(HUBSIM_LIBRARIES)
        if not known and not (is_qt(header) and is_panel(path) and path.as_posix() != PANEL_DOOR):
            return f"the simulated hub may not use <{header}>"
    return None


def check(root):
    """The number of files looked at and a list of complaints."""
    source_root = root / "src"
    files = sorted(p for p in source_root.rglob("*") if p.suffix in (".cpp", ".h"))
    errors = [error for layer, rooms in ROOMS.items() for error in rooms_errors(layer, rooms)]
    for path in files:
        relative = path.relative_to(source_root)
        layer = layer_of(relative.parent.as_posix())
        if layer is None:
            errors.append(f"src/{relative}: belongs to no layer")
            continue
        if layer in ROOMS and room_of(relative, layer) not in ROOMS[layer]:
            errors.append(f"src/{relative}: belongs to no room of {layer}")
        for match in INCLUDE.finditer(path.read_text(encoding="utf-8", errors="replace")):
            quoted, system = match.groups()
            error = (
                quoted_error(layer, quoted, source_root, path) if quoted else system_error(layer, system, relative)
            )
            if error:
                errors.append(f"src/{relative}: {error}")
    return len(files), errors


# Name, file, its include, and whether it must be refused.
CASES = [
    ("a layer above", "model/a.cpp", '"link/b.h"', True),
    ("a layer beside", "codegen/a.cpp", '"text/b.h"', True),
    ("a blank inside the directive", "model/a.cpp", '  "session/b.h"', True),
    ("the toolkit in the core", "session/a.h", "<QString>", True),
    ("the toolkit in the core by its folder", "link/a.h", "<QtCore/QString>", True),
    ("a system header in the core", "platform/a.cpp", "<unistd.h>", True),
    ("a library in the core", "model/a.cpp", "<nlohmann/json.hpp>", True),
    ("the simulated hub on the compilers", "hubsim/hub.cpp", '"codegen/b.h"', True),
    ("the simulated hub on the toolkit", "hubsim/hub.cpp", "<QTimer>", True),
    ("the companion on a window", "cli/tavlo.cpp", '"windows/b.h"', True),
    ("the desktop on the simulated hub", "composer/a.cpp", '"hubsim/hub.h"', True),
    ("the devices on the model", "qt/a.cpp", '"model/b.h"', True),
    ("the devices on what has a window", "qt/a.cpp", '"qt/gui/b.h"', True),
    ("what has a window on the devices", "qt/gui/a.cpp", '"qt/b.h"', True),
    ("a window on the devices", "windows/a.cpp", '"qt/b.h"', True),
    ("the desktop on the devices", "composer/a.cpp", '"qt/b.h"', False),
    ("a header beside the file", "model/a.cpp", '"b.h"', True),
    ("a way round by the parent", "model/a.cpp", '"../link/b.h"', True),
    ("a header that there is not", "model/a.cpp", '"model/none.h"', True),
    ("a folder that nobody drew", "extras/a.cpp", "<string>", True),
    ("a file outside every folder", "a.cpp", "<string>", True),
    ("a layer below", "link/a.cpp", '"model/b.h"', False),
    ("its own layer", "link/a.cpp", '"link/b.h"', False),
    ("the standard library", "link/a.cpp", "<string>", False),
    ("the simulated hub's own window", "hubsim/panel/window.cpp", "<QTimer>", False),
    ("the simulated hub's own window in its door", "hubsim/panel/panel.h", "<QTimer>", True),
    ("a file that is only called a panel", "hubsim/mount/panel.cpp", "<QTimer>", True),
    ("the simulated hub on the inside of its window", "hubsim/main.cpp", '"hubsim/panel/b.h"', True),
    ("the simulated hub's main() on its window's door", "hubsim/main.cpp", '"hubsim/panel/panel.h"', False),
    ("the hub itself on its window's door", "hubsim/hub.cpp", '"hubsim/panel/panel.h"', True),
    ("the simulated hub's reading of a line on its machine", "hubsim/program/a.h", '"hubsim/machine/b.h"', True),
    ("the simulated hub's machine on its wire", "hubsim/machine/a.cpp", '"hubsim/wire/b.h"', True),
    ("a line that waits for the operator on what runs it", "hubsim/terminal/a.h", '"hubsim/running/b.h"', True),
    ("what runs a program on the whole hub", "hubsim/running/a.cpp", '"hubsim/hub.h"', True),
    ("the hub itself on its mount", "hubsim/hub.h", '"hubsim/mount/b.h"', True),
    ("a room of the simulated hub that nobody drew", "hubsim/extras/a.cpp", "<string>", True),
    ("a room of the simulated hub on one below", "hubsim/machine/a.cpp", '"hubsim/program/b.h"', False),
    ("a room of the simulated hub on itself", "hubsim/machine/a.cpp", '"hubsim/machine/b.h"', False),
    ("the hub itself on a room", "hubsim/hub.h", '"hubsim/running/b.h"', False),
    ("the simulated hub's mount on the hub itself", "hubsim/mount/a.cpp", '"hubsim/hub.h"', False),
    ("the simulated hub on the system", "hubsim/hub.cpp", "<sys/ioctl.h>", False),
    ("the companion's console on its desk", "cli/console/a.cpp", '"cli/desk/b.h"', True),
    ("the companion's run on its commands", "cli/run/a.cpp", '"cli/commands/b.h"', True),
    ("the companion's commands on its run", "cli/commands/a.cpp", '"cli/run/b.h"', False),
    ("a file of the companion outside its rooms", "cli/extra.cpp", "<string>", True),
    ("the desktop on the toolkit", "windows/a.cpp", "<QWidget>", False),
    ("the companion on the simulated hub", "cli/simulate/a.cpp", '"hubsim/hub.h"', False),
    ("the companion on the simulated hub's device", "cli/simulate/a.cpp", '"hubsim/mount/b.h"', True),
    ("the companion on the simulated hub's window", "cli/simulate/a.cpp", '"hubsim/panel/panel.h"', True),
    ("the desktop's windows on the simulated hub", "windows/a.cpp", '"hubsim/hub.h"', True),
]


def self_test():
    wrong = []
    for name, file, include, refused in CASES:
        with tempfile.TemporaryDirectory() as folder:
            source_root = pathlib.Path(folder) / "src"
            for layer in ALLOWED:
                (source_root / layer).mkdir(parents=True, exist_ok=True)
                if layer not in ROOMS:
                    (source_root / layer / "b.h").write_text("#pragma once\n")
            for layer, rooms in ROOMS.items():
                for room in rooms:
                    (source_root / layer / room).mkdir()
                    (source_root / layer / room / "b.h").write_text("#pragma once\n")
                    (source_root / layer / f"{room}.h").write_text("#pragma once\n")
            (source_root / PANEL_DOOR).write_text("#pragma once\n")
            path = source_root / file
            path.parent.mkdir(exist_ok=True)
            path.write_text(f"// made up\n#include {include}\n")
            _, errors = check(pathlib.Path(folder))
            if bool(errors) != refused:
                wrong.append(f"{name}: {'passed' if refused else errors}")
    if not rooms_errors("made-up", {"lower": {"upper"}, "upper": set()}):
        wrong.append("a table of rooms that is upside down: passed")
    return wrong


def main():
    root = pathlib.Path(sys.argv[1])
    if "--self-test" in sys.argv[2:]:
        errors, done = self_test(), f"{len(CASES)} made-up edges are told right"
    else:
        count, errors = check(root)
        done = f"{count} files lean only on what they may"
        if count == 0:
            errors.append(f"no sources in {root / 'src'}")
    print("\n".join(errors) if errors else done)
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
