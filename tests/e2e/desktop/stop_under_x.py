#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""The real Composer on a real X server with the real simulated hub: the stop key after all that takes the focus
from the window of a run, and boxes that come in the middle of typing.

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
        program.press("alt+q")
        assert program.process.wait(10) == 0
    print("Runs were stopped from everywhere under X.")


if __name__ == "__main__":
    main()
