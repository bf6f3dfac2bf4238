#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""The real Composer on a real X server: F1 brings up the viewer with the document of the window that is active, always
the same viewer, in front; without the viewer or its documents a box says so.

usage: help_under_x.py COMPOSER HUBSIM EXAMPLES_FOLDER [PICTURES_FOLDER]
With a folder it leaves pictures of each step there.
"""
import os
import shutil
import subprocess
import sys
import tempfile

from under_x import Composer, session
from x_screen import until

VIEWER = "OskelHelp"


def viewers(program):
    """The processes of this viewer."""
    found = []
    for process in filter(str.isdigit, os.listdir("/proc")):
        try:
            if os.path.samefile(os.path.join("/proc", process, "exe"), program):
                found.append(int(process))
        except OSError:
            pass
    return found


def active_title():
    return subprocess.run(["xdotool", "getactivewindow", "getwindowname"], capture_output=True, text=True).stdout.strip()


def read_help(screen, program, viewer):
    """From the main window and from a dialog."""
    program.press("F1")
    until("the manual in front", lambda: active_title() == "Hub Composer - Help")
    screen.shot("manual")
    first = viewers(viewer)
    assert len(first) == 1, first
    # Wait Time on line 5.
    program.press("Home", "Down", "Down", "Down", "Down", "shift+Return")
    dialog = screen.wait_window("^Wait Time$")
    screen.key(dialog, "F1")
    until("the dialog's document in front", lambda: active_title() == "Wait Time - Help")
    screen.shot("dialog")
    until("the second viewer to end", lambda: viewers(viewer) == first)
    assert not screen.window("Hub Composer - Help"), "there is one window"
    help_window = screen.window("Wait Time - Help")
    screen.key(help_window, "Escape")
    until("the viewer to end", lambda: not viewers(viewer))
    screen.key(dialog, "Escape")
    until("the dialog to go", lambda: not screen.window("^Wait Time$"))


def miss_help(screen, composer, viewer):
    """A Composer whose help was not installed, or not wholly."""
    with tempfile.TemporaryDirectory() as folder:
        copy = shutil.copy(composer, folder)
        program = Composer(copy, screen)
        try:
            program.press("F1")
            box = screen.wait_window("^Cannot launch help$")
            screen.shot("no-viewer")
            screen.key(box, "Return")
            until("the box to go", lambda: not screen.window("^Cannot launch help$"))
            shutil.copy(viewer, folder)
            program.press("F1")
            box = screen.wait_window("^Tavlo Composer$")
            screen.shot("no-document")
            screen.key(box, "Return")
            until("the box to go", lambda: not screen.window("^Tavlo Composer$"))
            program.press("alt+q")
            assert program.process.wait(10) == 0
        finally:
            program.close()


def main():
    composer, hubsim, examples = sys.argv[1:4]
    viewer = os.path.join(os.path.dirname(composer), VIEWER)
    with session(composer, hubsim, sys.argv[4] if len(sys.argv) > 4 else None) as (screen, _, program):
        program.load(os.path.join(examples, "every-line.TVH"))
        read_help(screen, program, viewer)
        program.press("alt+q")
        assert program.process.wait(10) == 0
        miss_help(screen, composer, viewer)
    print("Help came where it was asked for, and was missed where it was missing.")


if __name__ == "__main__":
    main()
