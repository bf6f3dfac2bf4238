#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""The real Composer on a real X server with the real simulated hub: the stop key after all that takes the focus
from the window of a run, and when that window is gone; boxes that come in the middle of typing; a transfer that no
stop may spoil, and a cable that is pulled.

usage: stop_under_x.py COMPOSER HUBSIM EXAMPLES_FOLDER [PICTURES_FOLDER]
With a folder it leaves pictures of each step there.
"""
import os
import subprocess
import sys
import time

from under_x import session
from x_screen import until

DRIVE_LOST = "f0020000"


def xdo(*arguments):
    return subprocess.run(["xdotool", *arguments], check=True, capture_output=True, text=True).stdout.strip()


def active():
    return xdo("getactivewindow", "getwindowname")


def gone(screen, title):
    until(f"the window {title} to go", lambda: not screen.window(title))


def run(screen, hub, program, title):
    program.press("alt+e")
    window = screen.wait_window(title)
    until("the run", lambda: hub.state()["state"] in ("running", "prompting") or hub.state()["line"] is not None)
    return window


def stopped(screen, hub, title):
    until("the S of Stop", lambda: hub.bytes("rx").endswith(b"S"))
    gone(screen, title)


def stop_from_the_main_window(screen, hub, program):
    run(screen, hub, program, "^Execute$")
    xdo("windowactivate", "--sync", program.window)
    screen.shot("main-window-active")
    xdo("key", "Escape")
    stopped(screen, hub, "^Execute$")


def stop_from_a_box(screen, hub, program):
    """The box keeps its message; it is not answered by the key that stopped the machine."""
    run(screen, hub, program, "^Execute$")
    assert hub.tell("say " + DRIVE_LOST) == "ok"
    screen.wait_window("^Drive not found$")
    until("the box to be active", lambda: active() == "Drive not found")
    xdo("key", "Escape")
    stopped(screen, hub, "^Execute$")
    screen.shot("box-after-stop")
    assert screen.window("^Drive not found$")
    time.sleep(1)
    xdo("key", "Escape")
    gone(screen, "^Drive not found$")


def come_back_after_a_box(screen, hub, program):
    run(screen, hub, program, "^Execute$")
    xdo("windowactivate", "--sync", program.window)
    assert hub.tell("say " + DRIVE_LOST) == "ok"
    box = screen.wait_window("^Drive not found$")
    until("the box to be active", lambda: active() == "Drive not found")
    time.sleep(1)
    screen.key(box, "Return")
    gone(screen, "^Drive not found$")
    until("the run window to be active again", lambda: active() == "Execute")
    xdo("key", "Escape")
    stopped(screen, hub, "^Execute$")


def type_into_a_halt(screen, hub, program):
    """None of the terminal's keys answers the question, nor one that is held."""
    run(screen, hub, program, "^MMI emulator$")
    before = hub.bytes("rx").count(b"R")
    assert hub.tell("stop") == "ok"
    screen.wait_window("^STOP$")
    for _ in range(10):
        xdo("key", "1", "y", "Return", "space")
    xdo("keydown", "Return")
    time.sleep(2)
    screen.shot("halt-while-typing")
    assert screen.window("^STOP$"), "the question stands"
    xdo("keyup", "Return")
    time.sleep(1)
    xdo("key", "y")
    time.sleep(0.3)
    assert screen.window("^STOP$"), "a letter alone answers nothing"
    xdo("key", "Return")
    gone(screen, "^STOP$")
    assert hub.bytes("rx").count(b"R") == before, "Enter has answered No"


def hold_enter(screen, hub, program):
    run(screen, hub, program, "^MMI emulator$")
    before = len(hub.bytes("rx"))
    xdo("keydown", "Return")
    time.sleep(2)
    xdo("keyup", "Return")
    xdo("key", "space")
    time.sleep(0.3)
    sent = hub.bytes("rx")[before:].replace(b"I", b"")
    assert sent == b"\r", sent
    assert screen.window("^MMI emulator$"), "a blank reaches no control"
    xdo("key", "Escape")
    stopped(screen, hub, "^MMI emulator$")


def commands(hub):
    """What the hub was sent, without the acknowledgements of its lines."""
    return hub.bytes("rx").replace(b"I", b"")


def leave_running(screen, hub, program):
    """The frame of the emulator takes it away and says nothing to the hub, which goes on."""
    run(screen, hub, program, "^MMI emulator$")
    until("the emulator to be active", lambda: active() == "MMI emulator")
    xdo("key", "alt+F4")
    gone(screen, "^MMI emulator$")
    assert commands(hub).endswith(b"M") and hub.state()["state"] != "idle"


def stop_what_was_left(screen, hub, program):
    """From the main window, and from a dialog, which the next press leaves."""
    leave_running(screen, hub, program)
    screen.shot("left-running")
    xdo("windowactivate", "--sync", program.window)
    xdo("key", "Escape")
    until("the hub to stop", lambda: hub.state()["state"] == "idle")
    assert commands(hub).endswith(b"MS")
    leave_running(screen, hub, program)
    program.press("Return")
    screen.wait_window("^Program Line ")
    until("the picker to be active", lambda: active().startswith("Program Line "))
    xdo("key", "Escape")
    until("the hub to stop", lambda: hub.state()["state"] == "idle")
    assert screen.window("^Program Line "), "the picker stands"
    xdo("key", "Escape")
    gone(screen, "^Program Line ")
    assert commands(hub).endswith(b"MS")


def stop_from_the_terminal(screen, hub, program):
    """The drives give the line back for the stop and have it again, so that what is typed next is still theirs."""
    leave_running(screen, hub, program)
    program.press("ctrl+t")
    screen.wait_window("^VOX Router Terminal$")
    until("the passthrough", lambda: hub.state()["state"] == "passthrough")
    xdo("key", "Escape")
    until("the stop", lambda: commands(hub).endswith(b"MH0HM\rSH"))
    assert hub.state()["state"] == "passthrough"
    assert screen.window("^VOX Router Terminal$")
    xdo("key", "Escape")
    gone(screen, "^VOX Router Terminal$")
    until("the end of the passthrough", lambda: hub.state()["state"] == "idle")


def press_under_a_transfer(screen, hub, program):
    before = len(hub.downloads())
    program.press("alt+d")
    until("the transfer", lambda: hub.bytes("rx")[hub.bytes("rx").rindex(b"C") :].startswith(b"CF"))
    for _ in range(5):
        program.press("Escape", "alt+t")
    screen.shot("transfer")
    until("the proof of the download", lambda: len(hub.downloads()) > before)
    downloads = hub.downloads()
    assert downloads[-1] == downloads[-2], "not a byte more went out"
    time.sleep(0.5)


def pull_the_cable(screen, hub, program):
    leave_running(screen, hub, program)
    hub.close()
    screen.wait_window("^Communication Error$")
    screen.shot("cable-pulled")
    time.sleep(1)
    xdo("key", "Escape")
    gone(screen, "^Communication Error$")


def main():
    composer, hubsim, examples = sys.argv[1:4]
    with session(composer, hubsim, sys.argv[4] if len(sys.argv) > 4 else None) as (screen, hub, program):
        program.load(os.path.join(examples, "cut-to-length.TVH"))
        program.download(hub)
        stop_from_the_main_window(screen, hub, program)
        stop_from_a_box(screen, hub, program)
        come_back_after_a_box(screen, hub, program)
        program.load(os.path.join(examples, "menu.TVH"))
        program.download(hub)
        hold_enter(screen, hub, program)
        type_into_a_halt(screen, hub, program)
        press_under_a_transfer(screen, hub, program)
        stop_what_was_left(screen, hub, program)
        stop_from_the_terminal(screen, hub, program)
        pull_the_cable(screen, hub, program)
        program.press("alt+q")
        assert program.process.wait(10) == 0
    print("Runs were stopped from everywhere under X.")


if __name__ == "__main__":
    main()
