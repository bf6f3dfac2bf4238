#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""The real Composer on a real X server: an operator writes an example from nothing, with keys and mouse alone. The
file that is saved is that of examples/, byte for byte, and what goes to the simulated hub is what `tavlo compile`
makes of it.

usage: compose_under_x.py COMPOSER HUBSIM TAVLO EXAMPLES_FOLDER [PICTURES_FOLDER]
With a folder it leaves pictures of each dialog there.
"""
import os
import select
import subprocess
import sys
import tempfile
import tty

from under_x import session
from x_screen import until

EXAMPLE = "nested-repeats.TVH"

LINES = 200
ROWS_OF_LINE = 16
ROWS_BEFORE_LINES = 2
EMPTY = 11
MEMORY = 8192

#: What the kinds are called in the picker, and the titles of the dialogs of those that have one.
KINDS = {"FL": "Feed to Length", "FP": "Feed to Position", "WT": "Wait Time", "IM": "If Moving", "CM": "Comment",
         "GT": "Go To", "CL": "Call", "RP": "Repeat", "ER": "End Repeat", "RT": "Return"}
WITHOUT_DIALOG = ("ER", "RT")
#: How a line is brought into its dialog: picked by Enter or by a click on its icon, or else it is a copy of the line
#: of that number, made by a drag.
BY_KEYS = 0
BY_MOUSE = -1

#: Around the text of the row to which the keys go, and more than that row is high.
FRAME = "#308CC6"
HIGHEST_ROW = 60


class Typed(str):
    """A text that is typed, where the others are keys."""


def axis(number):
    """The axes stand in a list, the first of them chosen."""
    return ["alt+x", *["Down"] * (number - 1)]


def move(distance, speed, *keys):
    return ["alt+d", Typed(distance), "alt+s", Typed(speed), *keys]


#: On an axis of other units the numbers stay and their meaning moves, so all of them are typed anew.
ACCELERATIONS = ["alt+a", Typed("1000"), "alt+e", Typed("1000")]
#: From the deceleration past its slider and the directions to the box of the second speed, and into its frame.
CHANGE_SPEED = ["Tab", "Tab", "Tab", "space", "Tab"]

#: The line as the operator counts, what is picked for it, what is done in its dialog before OK, and how it gets there.
PROGRAM = [
    (1, "CM", [Typed("3 rows of 4 holes")]),
    (2, "RP", ["alt+n", Typed("3")]),
    (3, "RP", ["alt+n", Typed("4")]),
    (4, "CL", ["alt+l", Typed("21")]),
    (5, "FL", move("10", "80"), BY_MOUSE),
    (6, "ER", []),
    (7, "CM", [Typed("Back and one row on")]),
    (8, "FL", move("40", "160", "alt+c", "alt+p"), 5),
    (9, "FL", [*axis(2), *move("15", "80")]),
    (10, "ER", []),
    (11, "CM", [Typed("Wait, then home")]),
    (12, "IM", ["alt+l", Typed("12")]),
    (13, "FP", [*axis(2), "alt+i", Typed("0"), "alt+s", Typed("120")]),
    (14, "GT", ["alt+l", Typed("200")]),
    (21, "CM", [Typed("One hole")]),
    (22, "FL", [*axis(3), *move("8", "40"), *ACCELERATIONS, *CHANGE_SPEED, Typed("5"), "Tab", "Tab", Typed("10")]),
    (23, "WT", ["alt+t", Typed("0.1")]),
    # A move at one speed keeps a second one for the day when it is wanted.
    (24, "FL", [*axis(3), *move("8", "100"), *ACCELERATIONS, *CHANGE_SPEED, Typed("5"), "Tab", "Tab", Typed("5"),
                "alt+r", "alt+c"]),
    (25, "RT", []),
    (200, "CM", [Typed("End")]),
]


def without_lines(text):
    """The settings of a program file with no line in use: what the operator cannot enter in any dialog of lines."""
    rows = text.splitlines(keepends=True)
    records = [rows[at : at + ROWS_OF_LINE]
               for at in range(ROWS_BEFORE_LINES, ROWS_BEFORE_LINES + LINES * ROWS_OF_LINE, ROWS_OF_LINE)]
    empty = next(record for record in records if record[0].strip().endswith(f",{EMPTY}"))
    lines = [row for line in range(LINES) for row in [f"{line},{EMPTY}\r\n", *empty[1:]]]
    return "".join(rows[:ROWS_BEFORE_LINES] + lines + rows[ROWS_BEFORE_LINES + LINES * ROWS_OF_LINE :])


class Operator:
    def __init__(self, screen, program):
        self.screen = screen
        self.program = program

    def go_to(self, line):
        self.program.press("Home", *["Down"] * (line - 1))

    def icon(self, line):
        """Where the icon of a line is seen: left of its text, whose frame shows that the keys go to this line."""
        before = self.screen.place(FRAME)
        self.go_to(line)
        left, top, _, height = until(f"the frame of line {line}", lambda: self.frame_after(before))
        return left - height // 2 - 4, top + height // 2

    def frame_after(self, before):
        now = self.screen.place(FRAME)
        return now if now and now[3] < HIGHEST_ROW and now != before else None

    def pick(self, kind):
        picker = self.screen.wait_window("^Program Line [0-9]+$")
        self.screen.shot("picker")
        # Its letters go to a kind.
        self.screen.key(picker, *KINDS[kind].lower().replace(" ", ""), "space")
        self.gone("^Program Line [0-9]+$")

    def gone(self, title):
        until(f"the window {title} to go", lambda: not self.screen.window(title))

    def fill(self, dialog, acts):
        for act in acts:
            if isinstance(act, Typed):
                self.screen.type(act)
            else:
                self.screen.key(dialog, act)

    def open(self, line, kind, way):
        if way == BY_MOUSE:
            self.screen.click(self.icon(line))
            self.pick(kind)
        elif way == BY_KEYS:
            self.go_to(line)
            self.program.press("Return")
            self.pick(kind)
        else:
            self.screen.drag(self.icon(way), self.icon(line))
            self.program.press("shift+Return")

    def write(self, line, kind, acts, way=BY_KEYS):
        self.open(line, kind, way)
        if kind in WITHOUT_DIALOG:
            return
        title = f"^{KINDS[kind]}$"
        dialog = self.screen.wait_window(title)
        self.fill(dialog, acts)
        self.screen.shot(f"line-{line}-{kind}")
        self.screen.key(dialog, "alt+o")
        self.gone(title)


def differences(written, wanted):
    """The rows of a file that are not those of the other, by the line whose items they are."""
    pairs = zip(written.splitlines(), wanted.splitlines())
    found = [f"line {1 + (row - ROWS_BEFORE_LINES) // ROWS_OF_LINE}: {ours} for {theirs}"
             for row, (ours, theirs) in enumerate(pairs) if ours != theirs]
    return "\n".join(found) or "the files are not equally long"


def read(path):
    with open(path, encoding="latin-1", newline="") as file:
        return file.read()


def compiled(tavlo, path):
    image = path + ".image"
    subprocess.run([tavlo, "compile", path, "-o", image, "--quiet"], check=True)
    with open(image, "rb") as file:
        return file.read()


def memory_of(hub):
    """What the hub answers when it is asked for its memory. Its line is free."""
    line = os.open(hub.device(), os.O_RDWR | os.O_NOCTTY)
    tty.setraw(line)
    os.write(line, b"U")
    memory = b""
    while len(memory) < MEMORY and select.select([line], [], [], 5)[0]:
        memory += os.read(line, MEMORY)
    os.close(line)
    return memory[:MEMORY]


def main():
    composer, hubsim, tavlo, examples = sys.argv[1:5]
    example = read(os.path.join(examples, EXAMPLE))
    with tempfile.TemporaryDirectory() as folder, session(
            composer, hubsim, sys.argv[5] if len(sys.argv) > 5 else None) as (screen, hub, program):
        settings = os.path.join(folder, "settings.TVH")
        with open(settings, "w", encoding="latin-1", newline="") as file:
            file.write(without_lines(example))
        program.load(settings)
        operator = Operator(screen, program)
        for row in PROGRAM:
            operator.write(*row)
        screen.shot("composed")
        written = os.path.join(folder, EXAMPLE)
        program.save(written)
        assert read(written) == example, differences(read(written), example)
        program.download(hub)
        program.press("alt+q")
        assert program.process.wait(10) == 0
        assert memory_of(hub) == compiled(tavlo, written)
    print("An example was written under X from nothing.")


if __name__ == "__main__":
    main()
