# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""A screen of our own for tests that work the real programs by keys and mouse. Needs Xvfb, openbox, xdotool and
ImageMagick."""
import os
import re
import subprocess
import time


def until(what, condition, seconds=15):
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        result = condition()
        if result:
            return result
        time.sleep(0.05)
    raise AssertionError(f"{what} did not come within {seconds} s")


class Screen:
    """An X server with a window manager, and what an operator does there. Pictures are left in a folder, if one is
    given."""

    def __init__(self, pictures, size="1280x900"):
        self.pictures = pictures
        read, write = os.pipe()
        # Without -noreset the server starts anew when its last client goes, the window manager not being up yet.
        self.server = subprocess.Popen(
            ["Xvfb", "-noreset", "-displayfd", str(write), "-screen", "0", size + "x24"],
            pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as numbers:
            os.environ["DISPLAY"] = ":" + numbers.readline().strip()
        self.manager = subprocess.Popen(["openbox"], stderr=subprocess.DEVNULL)
        # A window that comes while the manager comes up may be lost between the two.
        until("the window manager", lambda: subprocess.run(
            ["xdotool", "get_num_desktops"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0)

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

    def click(self, at):
        subprocess.run(["xdotool", "mousemove", "--sync", *map(str, at), "click", "1"], check=True)

    def drag(self, start, end):
        subprocess.run(["xdotool", "mousemove", "--sync", *map(str, start), "mousedown", "1",
                        "mousemove_relative", "--sync", "0", "15", "mousemove", "--sync", *map(str, end), "mouseup", "1"],
                       check=True)

    def shot(self, name):
        if self.pictures:
            subprocess.run(["import", "-window", "root", os.path.join(self.pictures, name + ".png")], check=True)

    def pixels(self, colour):
        """How many of the screen's pixels have this colour."""
        text = subprocess.run(
            ["convert", "x:root", "-fill", "black", "+opaque", colour, "-fill", "white", "-opaque", colour,
             "-format", "%[fx:mean*w*h]", "info:"], capture_output=True, text=True).stdout
        return float(text or 0)

    def place(self, colour):
        """Left, top, width and height of what has this colour; nothing where no pixel has it."""
        box = subprocess.run(["convert", "x:root", "-fill", "black", "+opaque", colour, "-format", "%@", "info:"],
                             capture_output=True, text=True).stdout
        numbers = re.fullmatch(r"(\d+)x(\d+)\+(\d+)\+(\d+)", box)
        if not numbers:
            return None
        width, height, left, top = map(int, numbers.groups())
        return left, top, width, height
