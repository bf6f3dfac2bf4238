#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""The real Composer logs its runs: Ctrl+L shows them while a program runs, Escape in that window stops the machine, and a
Composer that is killed in a run leaves what had happened until then.

usage: run_log_under_x.py COMPOSER HUBSIM EXAMPLES_FOLDER [PICTURES_FOLDER]
"""
import csv
import os
import signal
import stat
import sys

from under_x import Composer, session
from x_screen import until

EXAMPLE = "cut-to-length.TVH"
COLUMNS = ["time_s", "event", "line", "axis", "what", "value"]


def folder():
    return os.path.join(os.environ["XDG_STATE_HOME"], "tavlo-composer", "runs")


def kept():
    """The files of the runs, oldest first."""
    names = os.listdir(folder()) if os.path.isdir(folder()) else []
    return [os.path.join(folder(), name) for name in sorted(names) if name.endswith(".csv")]


def rows(path):
    with open(path, encoding="utf-8", newline="") as file:
        table = list(csv.reader(file))
    assert table[0] == COLUMNS, table[0]
    assert all(len(row) == len(COLUMNS) for row in table)
    return table[1:]


def start(screen, program):
    program.press("alt+e")
    return screen.wait_window("^Execute$")


def looked_at_and_stopped(screen, hub, program):
    run = start(screen, program)
    until("the first lines", lambda: hub.bytes("rx").count(b"I") >= 3)
    screen.key(run, "ctrl+l")
    log = screen.wait_window("^Run log$")
    screen.shot("run-log")
    screen.key(log, "Escape")
    until("the stop", lambda: hub.bytes("rx").endswith(b"S"))
    until("the run window to go", lambda: not screen.window("^Execute$"))
    screen.key(log, "Escape")
    until("the log's window to go", lambda: not screen.window("^Run log$"))
    [path] = kept()
    assert stat.S_IMODE(os.stat(path).st_mode) == 0o600
    assert stat.S_IMODE(os.stat(folder()).st_mode) == 0o700
    # What was on its way at the stop may stand behind the end.
    until("the end of the log", lambda: [row[4] for row in rows(path) if row[1] == "end"] == ["stopped"])
    events = [row[1] for row in rows(path)]
    assert events[0] == "begin" and rows(path)[0][4].endswith(EXAMPLE)
    assert events.count("line started") + events.count("line goes on") >= 3


def killed_in_a_run(screen, program):
    start(screen, program)
    until("the second run's file", lambda: len(kept()) == 2)
    path = kept()[1]
    until("what happened in it", lambda: any(row[1] == "line started" for row in rows(path)))
    program.process.send_signal(signal.SIGKILL)
    program.process.wait()
    assert not any(row[1] == "end" for row in rows(path)), "nobody ended it"


def main():
    composer, hubsim, examples = sys.argv[1:4]
    with session(composer, hubsim, sys.argv[4] if len(sys.argv) > 4 else None) as (screen, hub, program):
        program.load(os.path.join(examples, EXAMPLE))
        program.download(hub)
        looked_at_and_stopped(screen, hub, program)
        killed_in_a_run(screen, program)
        again = Composer(composer, screen)
        told = screen.wait_window("^Restore$")
        screen.shot("killed-in-a-run")
        stops = hub.bytes("rx").count(b"S")
        screen.key(told, "Escape")
        until("the stop of what the killed one left running", lambda: hub.bytes("rx").count(b"S") > stops)
        screen.key(told, "Escape")
        until("the word of it to go", lambda: not screen.window("^Restore$"))
        again.press("ctrl+l")
        screen.key(screen.wait_window("^Run log$"), "Escape")
        until("the log's window to go", lambda: not screen.window("^Run log$"))
        again.press("alt+q")
        assert again.process.wait(10) == 0
        assert len(kept()) == 2
    print("What happened in runs was logged and kept.")


if __name__ == "__main__":
    main()
