#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""The real Composer on a real X server: an operator sets up drives with the keys alone, each of the 50 models once,
and has the simulated hub scanned for those that are plugged in. What he entered is what the saved files say.

usage: hardware_under_x.py COMPOSER HUBSIM [PICTURES_FOLDER]
With a folder it leaves pictures of the dialog there.
"""
import os
import sys
import tempfile

from under_x import session
from x_screen import until

TITLE = "^Configure Drives$"
AXES = 8
MODELS = 50
LINES_BEFORE_AXES = 2 + 200 * 16

LIST_OF_ITS_OWN = (3,)
OLDER_SERVOS = (8, 9)
DIGITAL_SERVOS = (*range(10, 19), *range(20, 26), 48, 49, 50)
INTEGRATED = (44, 45, 46, 47)

#: What the hub has plugged in: on axis 4 a drive that no list knows, on axis 5 none.
PLUGGED = (12, 44, 3, 100, 0, 31, 26, 50)
#: And on axis 6 one of a model that has no identity to report.
WITHOUT_IDENTITY = 5


def entered(model):
    """The keys for the row of an axis behind its model, and what the file then holds: code of the resolution, current,
    continuous current."""
    resolution = {True: ["Home", "Down"], False: ["4321"]}[not (model in OLDER_SERVOS or model in DIGITAL_SERVOS)]
    code = 16 if len(resolution) == 1 else 1 if model in LIST_OF_ITS_OWN else 4
    return resolution, code


def name_of(model):
    """No digit twice in a row: typed that fast it would be taken for a held key."""
    return f"M{model // 10}-{model % 10}"


class Operator:
    def __init__(self, screen, program):
        self.screen = screen
        self.program = program
        self.dialog = None

    def open(self):
        self.program.press("alt+w")
        self.dialog = self.screen.wait_window(TITLE)

    def press(self, *keys):
        self.screen.key(self.dialog, *keys)

    def ok(self):
        self.press("alt+o")
        until("the dialog to go", lambda: not self.screen.window(TITLE))

    def set_up(self, model):
        """From the list of the axis's models to its unit. On its way through the list it does not meet "none", which
        axis 1 cannot have."""
        self.press("End", *["Up"] * (MODELS - model))
        self.press("Tab")
        self.screen.type(name_of(model))
        self.press("Tab")
        resolution, _ = entered(model)
        if len(resolution) == 1:
            self.screen.type(resolution[0])
        else:
            self.press(*resolution)
        self.press("Tab")
        if model in DIGITAL_SERVOS or model in INTEGRATED:
            self.press("space")
            self.screen.type("1.1")
            self.press("alt+t" if model in INTEGRATED else "alt+u")
        else:
            self.screen.type("1.1")
        self.press("Tab")

    def units(self, axis):
        self.screen.type("mm")
        self.press("Tab")
        self.screen.type(str(100 + axis))
        self.press("Tab")


def axes_of(path):
    """Of each axis of a program file: model, current, code of the resolution, steps per unit, unit, continuous
    current."""
    with open(path, encoding="latin-1", newline="") as file:
        rows = file.read().split("\r\n")[LINES_BEFORE_AXES:]
    found = []
    for axis in range(AXES):
        first = rows[2 * axis].split(",")
        second = rows[2 * axis + 1].split(",")
        found.append((int(first[0]), float(first[1]), int(first[3]), int(first[4]), first[5].strip('"'),
                      float(second[0])))
    return found, [row.strip('"') for row in rows[2 * AXES + 1 : 3 * AXES + 1]]


def set_up_all(operator, folder):
    models = list(range(1, MODELS + 1))
    for begin in range(0, MODELS, AXES):
        chosen = (models[begin : begin + AXES] + models)[:AXES]
        operator.open()
        for axis, model in enumerate(chosen):
            operator.set_up(model)
            if axis == 0:
                # The limit switches that all axes share.
                operator.press("Tab")
            operator.units(axis)
        operator.screen.shot(f"models-{begin + 1}")
        operator.ok()
        path = os.path.join(folder, f"models-{'abcdefg'[begin // AXES]}.TVH")
        operator.program.save(path)
        found, names = axes_of(path)
        for axis, model in enumerate(chosen):
            panel = model in DIGITAL_SERVOS
            _, code = entered(model)
            now = found[axis]
            assert now[0] == model and now[2:5] == (code, 100 + axis, "mm"), (axis, model, now)
            assert names[axis] == name_of(model), names
            if panel:
                assert abs(now[5] - 1.1) < 1e-6, (axis, model, now)
            elif model not in INTEGRATED:
                assert abs(now[1] - 1.1) < 1e-6, (axis, model, now)


def scan(operator, folder):
    operator.open()
    operator.press("alt+a")
    operator.screen.shot("scanned")
    operator.press("alt+y")
    operator.screen.shot("copied")
    operator.ok()
    path = os.path.join(folder, "scanned.TVH")
    operator.program.save(path)
    before = axes_of(os.path.join(folder, "models-g.TVH"))[0]
    found = axes_of(path)[0]
    for axis, model in enumerate(PLUGGED):
        wanted = before[axis][0] if model == 100 or axis == WITHOUT_IDENTITY else model
        assert found[axis][0] == wanted, (axis, found[axis], wanted)


def main():
    composer, hubsim = sys.argv[1:3]
    drives = ",".join(str(model) for model in PLUGGED)
    with tempfile.TemporaryDirectory() as folder, session(
            composer, hubsim, sys.argv[3] if len(sys.argv) > 3 else None, "--drives", drives) as (screen, _, program):
        operator = Operator(screen, program)
        set_up_all(operator, folder)
        scan(operator, folder)
        program.press("alt+q")
        assert program.process.wait(10) == 0
    print("Every drive was set up under X.")


if __name__ == "__main__":
    main()
