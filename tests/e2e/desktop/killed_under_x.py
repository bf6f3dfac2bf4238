#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""The real Composer is killed with an edit that no file holds: the next one offers it once, by its file's name, and
undo takes it back.

usage: killed_under_x.py COMPOSER HUBSIM EXAMPLES_FOLDER [PICTURES_FOLDER]
"""
import os
import signal
import sys

from under_x import Composer, session
from x_screen import until

EXAMPLE = "cut-to-length.TVH"


def insert_line(program):
    program.press("Return")
    picker = program.screen.wait_window("^Program Line 1$")
    program.screen.key(picker, "alt+i")
    until("the mark of what is not saved", lambda: program.screen.window(EXAMPLE + r"\*$"))


def kept():
    folder = os.path.join(os.environ["XDG_STATE_HOME"], "tavlo-composer", "sessions")
    return [name for name in os.listdir(folder) if name.endswith(".kept")]


def main():
    composer, hubsim, examples = sys.argv[1:4]
    with session(composer, hubsim, sys.argv[4] if len(sys.argv) > 4 else None) as (screen, _hub, killed):
        killed.load(os.path.join(examples, EXAMPLE))
        insert_line(killed)
        screen.shot("unsaved")
        assert len(kept()) == 1
        killed.process.send_signal(signal.SIGKILL)
        killed.process.wait()

        program = Composer(composer, screen)
        question = screen.wait_window("^Restore$")
        screen.shot("restore")
        screen.key(question, "Return")
        until("the edit to come back", lambda: screen.window(EXAMPLE + r"\*$"))
        assert len(kept()) == 1, "it is kept for this session now"
        screen.shot("restored")
        program.press("ctrl+z")
        until("the new program to come back", lambda: screen.window("untitled$"))
        program.press("ctrl+shift+z")
        until("the edit once more", lambda: screen.window(EXAMPLE + r"\*$"))
        program.press("alt+q")
        screen.key(screen.wait_window("^Quit$"), "Left", "space")
        assert program.process.wait(10) == 0
        assert not kept()

        again = Composer(composer, screen)
        again.press("alt+q")
        assert again.process.wait(10) == 0, "nothing is offered, nothing is asked"
    print("What was edited outlasted a kill.")


if __name__ == "__main__":
    main()
