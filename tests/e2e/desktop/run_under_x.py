#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""The real Composer on a real X server with the real simulated hub: all that can happen while a program runs
and behind it. Prompts answered on the keypad, pause, single steps, resume, stop; a limit switch, a fault, a
hub that restarts; a program that comes back; the drive terminal.

usage: run_under_x.py COMPOSER HUBSIM EXAMPLES_FOLDER [PICTURES_FOLDER]
With a folder it leaves pictures of each step there.
"""
import os
import sys
import time

from under_x import session
from x_screen import until

STEP_DONE = b"\xfd"
PROGRAM_BYTES = 8192
LINES = 200
SETTINGS_BYTES = 256
# What comes by itself takes no key in its first 0.7 s.
UNTIL_IT_HEARS = 1


def start(screen, program, title):
    program.press("alt+e")
    return screen.wait_window(title)


def gone(screen, title):
    until(f"the window {title} to go", lambda: not screen.window(title))


def display(hub):
    return " ".join(" ".join(hub.state()["display"]).split())


def shows(hub, text):
    until(f"the prompt {text}", lambda: text in display(hub))


def answer_prompts(screen, hub, program):
    """Through the menu to a run of its moves; each act is one key of the operator."""
    window = start(screen, program, "^MMI emulator$")
    shows(hub, "1 Length")
    screen.shot("menu")
    for choice, prompt, digits in (("1", "Length in mm:", "25"), ("2", "Pieces:", "40"), ("3", "mm/s:", "50")):
        screen.key(window, choice)
        shows(hub, prompt)
        screen.key(window, *digits, "Return")
        shows(hub, "1 Length")
    screen.key(window, "4")
    shows(hub, "Clamp closed")
    screen.shot("yes-or-no")
    screen.key(window, "y")
    until("the moves", lambda: hub.state()["state"] == "running" and hub.state()["line"] in (44, 45, 46))

    screen.key(window, "alt+a")
    until("the pause", lambda: hub.state()["state"] == "paused" and hub.state()["line"] is None)
    screen.shot("paused")
    for step in range(1, 6):
        before = hub.bytes("tx").count(STEP_DONE)
        screen.key(window, "alt+i")
        until(f"the end of step {step}", lambda: hub.bytes("tx").count(STEP_DONE) > before)
        time.sleep(0.1)
    screen.key(window, "alt+p")
    until("the program to go on", lambda: hub.state()["state"] == "running")
    screen.key(window, "Escape")
    gone(screen, "^MMI emulator$")
    sent = hub.bytes("rx")
    run = sent[sent.rindex(b"M") :].replace(b"I", b"")
    assert run == b"M125\r240\r350\r4+PTTTTTrS", run
    # Not one byte more goes out by itself.
    time.sleep(1)
    assert hub.bytes("rx") == sent


def hit_a_limit(screen, hub, program, answer):
    start(screen, program, "^Execute$")
    until("a line", lambda: hub.state()["line"] is not None)
    before = hub.bytes("rx").count(b"R")
    assert hub.tell("limit 1") == "ok"
    box = screen.wait_window("^LIMIT$")
    assert not screen.window("^Execute$"), "the question stands alone"
    screen.shot("limit-" + answer)
    time.sleep(UNTIL_IT_HEARS)
    screen.key(box, "alt+" + answer)
    gone(screen, "^LIMIT$")
    if answer == "y":
        until("ten resets", lambda: hub.bytes("rx").count(b"R") == before + 10)
        until("the hub to be ready", lambda: hub.state()["state"] == "idle")
    else:
        time.sleep(0.5)
        assert hub.bytes("rx").count(b"R") == before
        assert hub.state()["state"] == "halted"


def fault(screen, hub, program):
    start(screen, program, "^Execute$")
    until("a line", lambda: hub.state()["line"] is not None)
    assert hub.tell("fault 1 33") == "ok"
    panel = screen.wait_window("^Drive Error$")
    assert not screen.window("^Execute$")
    screen.shot("fault")
    time.sleep(UNTIL_IT_HEARS)
    screen.key(panel, "alt+c")
    gone(screen, "^Drive Error$")


def restart(screen, hub, program):
    start(screen, program, "^Execute$")
    until("a line", lambda: hub.state()["line"] is not None)
    assert hub.tell("greet") == "ok"
    gone(screen, "^Execute$")
    until("the answer to the greeting", lambda: hub.bytes("rx").endswith(b"*0"))


def read_back(screen, hub, program):
    """What comes back from the hub goes down again as the same bytes."""
    before = len(hub.bytes("tx"))
    program.press("alt+u")
    until("the whole memory", lambda: len(hub.bytes("tx")) >= before + PROGRAM_BYTES)
    time.sleep(2)
    screen.shot("uploaded")
    program.download(hub)
    downloads = hub.downloads()
    assert downloads[-1] == downloads[-2]
    assert len(downloads[-1]) > LINES + SETTINGS_BYTES


def talk_to_a_drive(screen, hub, program):
    program.press("ctrl+t")
    terminal = screen.wait_window("^VOX Router Terminal$")
    until("the passthrough", lambda: hub.state()["state"] == "passthrough")
    before = len(hub.bytes("tx"))
    screen.type("1RV")
    screen.key(terminal, "Return")
    until("the drive's answer", lambda: len(hub.bytes("tx")) > before)
    time.sleep(0.3)
    screen.shot("terminal")
    screen.key(terminal, "alt+c")
    gone(screen, "^VOX Router Terminal$")
    until("the end of the passthrough", lambda: hub.state()["state"] == "idle")
    talk = hub.bytes("rx")
    assert talk[talk.rindex(b"H1") :] == b"H1RV\r\n0HM\r"


def main():
    composer, hubsim, examples = sys.argv[1:4]
    with session(composer, hubsim, sys.argv[4] if len(sys.argv) > 4 else None) as (screen, hub, program):
        program.load(os.path.join(examples, "menu.TVH"))
        program.download(hub)
        answer_prompts(screen, hub, program)
        program.load(os.path.join(examples, "cut-to-length.TVH"))
        program.download(hub)
        hit_a_limit(screen, hub, program, "y")
        hit_a_limit(screen, hub, program, "n")
        fault(screen, hub, program)
        restart(screen, hub, program)
        program.load(os.path.join(examples, "nested-repeats.TVH"))
        program.download(hub)
        read_back(screen, hub, program)
        talk_to_a_drive(screen, hub, program)
        program.press("alt+q")
        assert program.process.wait(10) == 0
    print("Runs and what lies behind them were played under X.")


if __name__ == "__main__":
    main()
