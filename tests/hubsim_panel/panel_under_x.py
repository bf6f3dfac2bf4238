#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""The real simulated hub with its window: worked by keys and mouse under a real X server while the real companion
downloads and runs a program, and ended in each way there is.

usage: panel_under_x.py HUBSIM TAVLO EXAMPLES_FOLDER [PICTURES_FOLDER]
With a folder it leaves pictures of each step there.
"""
import json
import os
import signal
import subprocess
import sys
import tempfile

sys.path.append(os.path.join(os.path.dirname(__file__), "../support"))
from x_screen import Screen, until  # noqa: E402

RUNNING_LINE = "#FFFF80"
LAMP_ON = "#00823C"


class HubProcess:
    def __init__(self, program, folder, *options, environment=None):
        self.link = os.path.join(folder, "hub")
        self.process = subprocess.Popen([program, "--link", self.link, *options], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True, bufsize=1, env=environment)
        self.greeting = self.process.stdout.readline()
        assert self.greeting.startswith("Hub ready: "), self.greeting

    def type(self, command):
        self.process.stdin.write(command + "\n")
        return self.process.stdout.readline().strip()

    def state(self):
        return json.loads(self.type("state"))

    def ends_in_order(self, how):
        code = self.process.wait(10)
        assert code == 0, f"{how}: exit code {code}"
        assert not os.path.lexists(self.link), f"{how}: the link is still there"
        assert not os.path.exists(self.link + ".lock"), f"{how}: the lock is still there"

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()


def play(screen, hub, tavlo, program):
    window = until("the window", lambda: screen.window("Simulated hub"))
    title = subprocess.run(["xdotool", "getwindowname", window], capture_output=True, text=True).stdout.strip()
    assert title == f"Simulated hub on {hub.link}", title
    screen.shot("panel-idle")

    subprocess.run([tavlo, "download", program, "--port", hub.link, "--yes"], check=True, capture_output=True,
                   timeout=60)
    assert screen.pixels(RUNNING_LINE) == 0
    run = subprocess.Popen([tavlo, "run", program, "--port", hub.link], stdin=subprocess.DEVNULL,
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        until("the running line in its colour", lambda: screen.pixels(RUNNING_LINE) > 1500)
        until("an axis that moves", lambda: any(axis["moving"] for axis in hub.state()["axes"]))
        screen.shot("panel-running")
        # The first stop of the tab order is the first input of axis 1.
        before = hub.state()["axes"][0]["inputs"]
        screen.key(window, "space")
        until("the input", lambda: hub.state()["axes"][0]["inputs"] == before ^ 1)
        until("the lamp", lambda: screen.pixels(LAMP_ON) > 50)
        screen.key(window, "alt+s")
        until("the halt", lambda: hub.state()["state"] == "halted")
        screen.shot("panel-halted")
    finally:
        run.terminate()
        run.wait()
    return window


def pull_the_cable(screen, hub, window):
    screen.key(window, "alt+u")
    until("the link gone", lambda: not os.path.lexists(hub.link))
    screen.key(window, "alt+r")
    until("the link back", lambda: os.path.lexists(hub.link))


def report_a_fault(screen, hub, window):
    screen.key(window, "Tab", "Tab", "space")
    dialog = until("the dialog", lambda: screen.window("Fault of axis 1"))
    screen.key(dialog, "space")
    screen.shot("panel-fault")
    screen.key(dialog, "Return")
    until("the dialog's end", lambda: screen.window("Fault of axis 1") is None)
    assert hub.state()["state"] == "halted"


def under_x(hubsim, tavlo, examples, scratch, pictures):
    screen = Screen(pictures, "1024x768")
    hub = None
    try:
        hub = HubProcess(hubsim, scratch, "--panel")
        window = play(screen, hub, tavlo, os.path.join(examples, "cut-to-length.TVH"))
        hub.type("greet")
        until("the idle hub", lambda: hub.state()["state"] == "idle")
        pull_the_cable(screen, hub, window)
        report_a_fault(screen, hub, window)
        screen.key(window, "alt+F4")
        hub.ends_in_order("closing the window")

        hub = HubProcess(hubsim, scratch, "--panel", "--model", "quad")
        until("the window", lambda: screen.window("Simulated hub"))
        screen.shot("panel-quad")
        hub.process.send_signal(signal.SIGTERM)
        hub.ends_in_order("SIGTERM")
    finally:
        if hub:
            hub.kill()
        screen.close()


def without_x(hubsim, scratch):
    environment = {name: value for name, value in os.environ.items()
                   if name not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}
    # Its window or not, a hub is served the same; without --panel it wants no screen.
    for options in ((), ("--panel",)):
        offscreen = dict(environment, QT_QPA_PLATFORM="offscreen") if options else environment
        for how, end in (("quit", lambda hub: hub.type("quit")),
                         ("SIGINT", lambda hub: hub.process.send_signal(signal.SIGINT)),
                         ("SIGTERM", lambda hub: hub.process.send_signal(signal.SIGTERM))):
            hub = HubProcess(hubsim, scratch, *options, environment=offscreen)
            try:
                assert hub.state()["state"] == "idle"
                end(hub)
                hub.ends_in_order(f"{how} {' '.join(options)}")
            finally:
                hub.kill()
    refused = subprocess.run([hubsim, "--link", os.path.join(scratch, "hub"), "--panel"], env=environment,
                             capture_output=True, text=True, timeout=30)
    assert refused.returncode == 1, refused.returncode
    assert refused.stderr == "tavlo-hubsim: there is no display to show the panel on.\n", refused.stderr


def main():
    hubsim, tavlo, examples = sys.argv[1:4]
    pictures = sys.argv[4] if len(sys.argv) > 4 else None
    with tempfile.TemporaryDirectory() as scratch:
        for variable in ("XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "HOME"):
            os.environ[variable] = scratch
        os.environ.pop("QT_QPA_PLATFORM", None)
        without_x(hubsim, scratch)
        under_x(hubsim, tavlo, examples, scratch, pictures)
    print("the hub's window was played with, and ended in order each time")


if __name__ == "__main__":
    main()
