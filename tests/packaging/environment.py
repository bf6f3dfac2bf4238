#!/usr/bin/python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""A test that ctest starts sees no screen, no settings and no comm links of the user's.

environment.py BUILD_FOLDER
"""

import os
import pathlib
import stat
import sys


def complaints(build):
    if os.environ.get("QT_QPA_PLATFORM") != "offscreen":
        yield "QT_QPA_PLATFORM is not offscreen: windows would come up on the user's screen"
    for variable in ("XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_STATE_HOME"):
        folder = pathlib.Path(os.environ.get(variable, "/"))
        if build not in folder.parents or not folder.is_dir():
            yield f"{variable} is {folder}, which is no folder below {build}"
        elif stat.S_IMODE(folder.stat().st_mode) != 0o700:
            yield f"{variable} is {folder}, which others can look into"
    options = dict(option.split("=", 1) for option in os.environ.get("LSAN_OPTIONS", "").split(":") if option)
    if not pathlib.Path(options.get("suppressions", "none")).is_file():
        yield "LSAN_OPTIONS names no list of the leaks of others"


def main():
    errors = list(complaints(pathlib.Path(sys.argv[1])))
    print("\n".join(errors) if errors else "The tests have surroundings of their own")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
