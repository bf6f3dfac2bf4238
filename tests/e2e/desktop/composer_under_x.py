#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""The real Composer on a real X server with the real simulated hub, worked by keys and mouse as an operator
would: load an example, download it, run it, see a line turn yellow, stop, quit.

usage: composer_under_x.py COMPOSER HUBSIM EXAMPLES_FOLDER [PICTURES_FOLDER]
Needs Xvfb, openbox, xdotool and ImageMagick's import. With a folder it leaves pictures of each step there.
"""
import json
import os
import subprocess
import sys
import tempfile
import time

EXECUTING = "#FFFF80"
WENT_ON = "#FFC0C0"


def until(what, condition, seconds=15):
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        result = condition()
        if result:
            return result
        time.sleep(0.05)
    raise AssertionError(f"{what} did not come within {seconds} s")


class Screen:
    """An X server of our own with a window manager, and what an operator does there."""

    def __init__(self, pictures):
        self.pictures = pictures
        read, write = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x900x24"],
                                       pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as numbers:
            os.environ["DISPLAY"] = ":" + numbers.readline().strip()
        self.manager = subprocess.Popen(["openbox"], stderr=subprocess.DEVNULL)

    def close(self):
        for process in (self.manager, self.server):
            process.terminate()
            process.wait()

    def window(self, title):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", title],
                               capture_output=True, text=True).stdout.split()
        return found[0] if found else None

    def wait_window(self, title):
        return until(f"the window {title}", lambda: self.window(title))

    def key(self, window, *keys):
        subprocess.run(["xdotool", "windowactivate", "--sync", window, "key", *keys], check=True,
                       stderr=subprocess.DEVNULL)

    def type(self, text):
        subprocess.run(["xdotool", "type", "--delay", "5", text], check=True)

    def shot(self, name):
        if self.pictures:
            subprocess.run(["import", "-window", "root", os.path.join(self.pictures, name + ".png")], check=True)

    def shows(self, colour):
        """Pixels of one colour on the screen, as a share of a row's size."""
        text = subprocess.run(
            ["convert", "x:root", "-fill", "black", "+opaque", colour, "-fill", "white", "-opaque", colour,
             "-format", "%[fx:mean*w*h]", "info:"], capture_output=True, text=True).stdout
        return float(text or 0) > 1500


def main():
    composer, hubsim, examples = sys.argv[1:4]
    pictures = sys.argv[4] if len(sys.argv) > 4 else None
    with tempfile.TemporaryDirectory() as scratch:
        for variable in ("XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "HOME"):
            os.environ[variable] = os.path.join(scratch, variable)
            os.mkdir(os.environ[variable], 0o700)
        os.environ.pop("QT_QPA_PLATFORM", None)
        journal = os.path.join(scratch, "journal")
        screen = Screen(pictures)
        hub = subprocess.Popen([hubsim, "--comm", "1", "--journal", journal], stdin=subprocess.DEVNULL,
                               stdout=subprocess.PIPE, text=True)
        assert hub.stdout.readline().startswith("Hub ready")
        program = subprocess.Popen([composer])
        try:
            main_window = screen.wait_window("^Tavlo Composer  V")
            screen.shot("ready")

            screen.key(main_window, "alt+o")
            dialog = screen.wait_window("^Open|^Load")
            screen.key(dialog, "alt+n")
            screen.type(os.path.join(examples, "cut-to-length.TVH"))
            screen.shot("open-dialog")
            screen.key(dialog, "Return")
            until("the file's name in the title", lambda: screen.window("cut-to-length.TVH$"))
            screen.shot("loaded")

            screen.key(main_window, "alt+d")
            until("the proof of the download", lambda: b'"4b"' in open(journal, "rb").read())
            time.sleep(0.5)
            screen.shot("downloaded")

            screen.key(main_window, "alt+e")
            run_window = screen.wait_window("^Execute$")
            until("a yellow line", lambda: screen.shows(EXECUTING))
            screen.shot("running")
            screen.key(run_window, "alt+s")
            until("the run window to go", lambda: not screen.window("^Execute$"))
            until("the yellow to go", lambda: not screen.shows(EXECUTING))
            screen.shot("stopped")

            screen.key(main_window, "alt+q")
            assert program.wait(10) == 0
            events = [json.loads(line) for line in open(journal, encoding="utf-8")]
            sent = "".join(event["bytes"] for event in events if event["dir"] == "rx")
            assert sent.endswith("53"), "the last byte to the hub is the S of Stop"
            assert sent.count("58") >= 1
        finally:
            for process in (program, hub):
                process.terminate()
                process.wait()
            screen.close()
    print("The main job was done under X.")


if __name__ == "__main__":
    main()
