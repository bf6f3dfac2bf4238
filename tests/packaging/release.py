#!/usr/bin/python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""The core and the simulated hub build and install as Release without the presets and without the tests' libraries.

release.py SOURCE SCRATCH COMPILER

The rest builds in the same way but takes minutes. SCRATCH lies in the source tree, so that the compiler's cache knows
the files from the run before.
"""

import json
import os
import pathlib
import shutil
import subprocess
import sys


def run(*command):
    done = subprocess.run(list(map(str, command)), capture_output=True, text=True, check=False)
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout[-6000:]}\n{done.stderr[-6000:]}")
    return done.stdout


def main():
    source, scratch, compiler = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]
    build, prefix = scratch / "release", scratch / "prefix"
    for folder in (build, prefix):
        shutil.rmtree(folder, ignore_errors=True)
    # Who waits for an answer goes first.
    os.nice(10)
    generator = [] if shutil.which("make") else ["-G", "Ninja"]
    run("cmake", "-S", source, "-B", build, *generator, "-DCMAKE_BUILD_TYPE=Release", f"-DCMAKE_CXX_COMPILER={compiler}",
        "-DBUILD_TESTING=OFF", "-DTAVLO_CORE_ONLY=ON", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
        "-DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON", "-DCMAKE_DISABLE_FIND_PACKAGE_benchmark=ON")
    commands = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    strict = [entry["file"] for entry in commands if "-Werror" in entry["command"]]
    if not commands or strict:
        sys.exit(f"a warning would stop the build of {strict or 'nothing'}")
    run("cmake", "--build", build, "--parallel", "2")
    run("cmake", "--install", build, "--prefix", prefix)
    print(run(prefix / "bin" / "tavlo-hubsim", "--version").strip())
    for folder in (build, prefix):
        shutil.rmtree(folder)


if __name__ == "__main__":
    main()
