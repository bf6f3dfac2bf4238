# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""A simulated hub to command and the Composer beside it on a screen of their own, worked by keys as an operator
would."""
import contextlib
import json
import os
import subprocess
import sys
import tempfile
import time

sys.path.append(os.path.join(os.path.dirname(__file__), "../../support"))
from x_screen import Screen, until  # noqa: E402


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

    @staticmethod
    def device():
        """The line to the hub, for whoever has it for himself."""
        return os.path.join(os.environ["XDG_RUNTIME_DIR"], "tavlo-composer", "comm1")

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

    def name_file(self, dialog, path, what, done):
        """Types the name and presses Enter, once more where the list of names that might be meant has come up late and
        has taken the key."""
        self.screen.key(dialog, "alt+n")
        self.screen.type(path)
        self.screen.shot("file-dialog")
        self.screen.key(dialog, "Return")
        pressed = time.monotonic()

        def is_done():
            nonlocal pressed
            if done():
                return True
            if time.monotonic() - pressed > 4 and self.screen.window("^Open|^Load|^Save"):
                self.screen.key(dialog, "Return")
                pressed = time.monotonic()
            return False
        until(what, is_done)

    def load(self, path):
        self.press("alt+o")
        name = os.path.basename(path)
        self.name_file(self.screen.wait_window("^Open|^Load"), os.path.abspath(path), "the file's name in the title",
                       lambda: self.screen.window(name + "$"))

    def save(self, path):
        self.press("alt+s")
        name = os.path.basename(path)
        self.name_file(self.screen.wait_window("^Save"), path, "the file, and its name in the title",
                       lambda: os.path.exists(path) and self.screen.window(name + "$"))

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
        for variable in ("XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "HOME"):
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
