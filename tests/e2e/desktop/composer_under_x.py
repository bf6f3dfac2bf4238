#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""The real Composer on a real X server with the real simulated hub does the main job: load an example,
download it, run it, see a line turn yellow, stop, quit.

usage: composer_under_x.py COMPOSER HUBSIM EXAMPLES_FOLDER [PICTURES_FOLDER]
With a folder it leaves pictures of each step there.
"""
import os
import sys

from under_x import session
from x_screen import until

EXECUTING = "#FFFF80"
ROW_PIXELS = 1500


def main():
    composer, hubsim, examples = sys.argv[1:4]
    with session(composer, hubsim, sys.argv[4] if len(sys.argv) > 4 else None) as (screen, hub, program):
        screen.shot("ready")
        program.load(os.path.join(examples, "cut-to-length.TVH"))
        screen.shot("loaded")
        program.download(hub)
        screen.shot("downloaded")

        program.press("alt+e")
        run_window = screen.wait_window("^Execute$")
        until("a yellow line", lambda: screen.pixels(EXECUTING) > ROW_PIXELS)
        screen.shot("running")
        screen.key(run_window, "alt+s")
        until("the run window to go", lambda: not screen.window("^Execute$"))
        until("the yellow to go", lambda: screen.pixels(EXECUTING) == 0)
        screen.shot("stopped")

        program.press("alt+q")
        assert program.process.wait(10) == 0
        sent = hub.bytes("rx")
        assert sent.endswith(b"S"), "the last byte to the hub is the S of Stop"
        assert b"X" in sent
    print("The main job was done under X.")


if __name__ == "__main__":
    main()
