# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""A screen of our own, a simulated hub to command and the Composer beside it, worked by keys as an operator
would. Needs Xvfb, openbox, xdotool and ImageMagick."""
import contextlib
import json
import os
import subprocess
import tempfile
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
    """An X server of our own with a window manager, and what an operator does there."""

    def __init__(self, pictures):
        self.pictures = pictures
        read, write = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x900x24", "-noreset"],
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


class Hub:
    """The simulated hub on Comm 1: what is typed into it, and every byte that passes it."""

    def __init__(self, program, scratch, *options):
        self.journal = os.path.join(scratch, "journal")
        self.process = subprocess.Popen([program, "--comm", "1", "--journal", self.journal, *options],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        assert self.process.stdout.readline().startswith("Hub ready")

    def tell(self, command):
        """Gives the hub a line of its console and takes the answer."""
        self.process.stdin.write(command + "\n")
        self.process.stdin.flush()
        return self.process.stdout.readline().strip()

    def state(self):
        return json.loads(self.tell("state"))

    def events(self, direction):
        """All that passed so far, as it came: "rx" is what the Composer sent, "tx" what the hub did."""
        with open(self.journal, encoding="utf-8") as lines:
            events = [json.loads(line) for line in lines if line.endswith("\n")]
        return [bytes.fromhex(event["bytes"]) for event in events if event["dir"] == direction]

    def bytes(self, direction):
        return b"".join(self.events(direction))

    def downloads(self):
        """The bytes of each download that was proven, from its F on."""
        found = []
        current = None
        for event in self.events("rx"):
            if event == b"F":
                current = b""
            elif event == b"K" and current is not None:
                found.append(current)
                current = None
            if current is not None:
                current += event
        return found

    def close(self):
        self.process.terminate()
        self.process.wait()


class Composer:
    """The Composer on that screen."""

    def __init__(self, program, screen):
        self.screen = screen
        self.process = subprocess.Popen([program])
        self.window = screen.wait_window("^Tavlo Composer  V")

    def press(self, *keys):
        self.screen.key(self.window, *keys)

    def load(self, path):
        self.press("alt+o")
        dialog = self.screen.wait_window("^Open|^Load")
        self.screen.key(dialog, "alt+n")
        self.screen.type(os.path.abspath(path))
        self.screen.shot("open-dialog")
        self.screen.key(dialog, "Return")
        name = os.path.basename(path)
        until("the file's name in the title", lambda: self.screen.window(name + "$"))

    def download(self, hub):
        before = len(hub.downloads())
        self.press("alt+d")
        until("the proof of the download", lambda: len(hub.downloads()) > before)
        time.sleep(0.5)

    def close(self):
        self.process.terminate()
        self.process.wait()


@contextlib.contextmanager
def session(composer, hubsim, pictures, *hub_options):
    """Screen, hub and Composer, whose settings and links stay out of the user's own."""
    with tempfile.TemporaryDirectory() as scratch, contextlib.ExitStack() as stack:
        for variable in ("XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "HOME"):
            os.environ[variable] = os.path.join(scratch, variable)
            os.mkdir(os.environ[variable], 0o700)
        os.environ.pop("QT_QPA_PLATFORM", None)
        screen = Screen(pictures)
        stack.callback(screen.close)
        hub = Hub(hubsim, scratch, *hub_options)
        stack.callback(hub.close)
        program = Composer(composer, screen)
        stack.callback(program.close)
        try:
            yield screen, hub, program
        except BaseException:
            screen.shot("failed")
            raise
