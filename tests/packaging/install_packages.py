#!/usr/bin/python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""What install-packages asks of a package system that is played here.

install_packages.py SCRIPT
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

LIST = "# a comment\nninja-build\ng++  # a compiler\n\ncmake\n"
LOCKED = "E: Could not get lock /var/lib/apt/lists/lock. It is held by process 7 (apt)"
BROKEN = "E: Unable to locate package cmake"
# The programs that the script calls. `calls` gets what apt-get is asked, `refusals` holds what it answers first.
PLAYED = {
    "dpkg-query": 'cat "$PLAYED/status"; exit 1',
    "apt-get": """echo "$*" >>"$PLAYED/calls"
[ -s "$PLAYED/refusals" ] || exit 0
head -n 1 "$PLAYED/refusals" >&2
sed -i 1d "$PLAYED/refusals"
exit 100""",
    "sudo": 'exec "$@"',
    "sleep": 'echo "$*" >>"$PLAYED/pauses"',
}
ALL = ["installed cmake", "installed g++", "installed ninja-build"]
NO_CMAKE = ["installed g++", "installed ninja-build"]
UPDATE, INSTALL = "update", "install -y --no-install-recommends "

# Name, what dpkg knows, what apt-get refuses with, what it must be asked, pauses, exit code, words on standard error.
CASES = [
    ("nothing is missing", ALL, [], [], 0, 0, r"^$"),
    ("one is missing", NO_CMAKE, [], [UPDATE, INSTALL + "cmake"], 0, 0, r"^Installing: cmake$"),
    ("one was removed", NO_CMAKE + ["config-files cmake"], [], [UPDATE, INSTALL + "cmake"], 0, 0, "Installing: cmake"),
    ("all are missing", [], [], [UPDATE, INSTALL + "cmake g++ ninja-build"], 0, 0, "Installing: cmake g.. ninja-build"),
    ("a library of two architectures", ALL + ["installed cmake"], [], [], 0, 0, r"^$"),
    ("the lists are locked", NO_CMAKE, [LOCKED] * 2, [UPDATE] * 3 + [INSTALL + "cmake"], 2, 0,
     r"^Installing: cmake\nWaiting for another program that installs packages\.$"),
    ("locked for ever", NO_CMAKE, [LOCKED] * 500, [UPDATE] * 120, 120, 1, "held by process 7"),
    ("no such package", NO_CMAKE, [BROKEN], [UPDATE], 0, 1, "Unable to locate package cmake"),
]


def lines(path):
    return path.read_text(encoding="utf-8").splitlines() if path.exists() else []


def complaint(script, case):
    _, status, refusals, asked, pauses, code, words = case
    with tempfile.TemporaryDirectory() as folder:
        played = pathlib.Path(folder)
        for name, text in PLAYED.items():
            (played / name).write_text(f"#!/bin/bash\n{text}\n", encoding="utf-8")
            (played / name).chmod(0o755)
        (played / "status").write_text("".join(f"{line}\n" for line in status), encoding="utf-8")
        (played / "refusals").write_text("".join(f"{line}\n" for line in refusals), encoding="utf-8")
        (played / "apt-packages.txt").write_text(LIST, encoding="utf-8")
        (played / "install-packages").symlink_to(script)
        done = subprocess.run(
            [played / "install-packages"],
            env={**os.environ, "PLAYED": folder, "PATH": f"{folder}:/usr/bin:/bin"},
            capture_output=True,
            text=True,
            check=False,
        )
        calls = [re.sub(r"^-qq -o DPkg::Lock::Timeout=\d+ ", "", line) for line in lines(played / "calls")]
        if calls != asked:
            return f"apt-get was asked {calls}"
        if len(lines(played / "pauses")) != pauses:
            return f"{len(lines(played / 'pauses'))} pauses"
        if done.returncode != code or done.stdout or not re.search(words, done.stderr.strip()):
            return f"exit code {done.returncode}, {done.stdout}{done.stderr}"
    return None


def main():
    script = pathlib.Path(sys.argv[1]).resolve()
    errors = [f"{case[0]}: {told}" for case in CASES if (told := complaint(script, case))]
    print("\n".join(errors) if errors else f"{len(CASES)} states of a package system are met right")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
