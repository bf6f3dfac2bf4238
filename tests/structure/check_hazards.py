#!/usr/bin/python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""Every hazard of docs/hazards.md has a control and a test, and each test that it names exists.

check_hazards.py ROOT              checks the document under ROOT
check_hazards.py ROOT --self-test  shows on made-up documents that each fault is found
"""

import pathlib
import re
import sys
import tempfile

DOCUMENT = "docs/hazards.md"
TEST = re.compile(r"^TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\s*\)", re.MULTILINE)
NAMED = re.compile(r"`([^`]+)`")


def tests_under(root):
    """The names of all tests: those of the test programs, and the scripts as ctest calls them."""
    names = set()
    for file in (root / "tests").rglob("*.cpp"):
        names |= {f"{suite}.{name}" for suite, name in TEST.findall(file.read_text(encoding="utf-8"))}
    names |= {f"Desktop.{file.stem}" for file in (root / "tests" / "e2e" / "desktop").glob("*_under_x.py")}
    return names


def rows_of(text):
    """The rows of all tables, heads and rules aside, with their line numbers."""
    for number, line in enumerate(text.splitlines(), 1):
        if not line.startswith("|") or set(line) <= set("|- ") or line.startswith("| Hazard |"):
            continue
        yield number, [cell.strip() for cell in line.strip().strip("|").split("|")]


def check(root):
    """The number of hazards and a list of complaints."""
    tests = tests_under(root)
    count, errors = 0, []
    for number, cells in rows_of((root / DOCUMENT).read_text(encoding="utf-8")):
        count += 1
        where = f"{DOCUMENT}:{number}"
        if len(cells) != 3 or not all(cells):
            errors.append(f"{where}: a hazard needs what prevents it or tells of it, and a test")
            continue
        named = NAMED.findall(cells[2])
        if not named:
            errors.append(f"{where}: names no test")
        errors += [f"{where}: there is no test {name}" for name in named if name not in tests]
    if count == 0:
        errors.append(f"{DOCUMENT}: has no hazards")
    return count, errors


def self_test():
    head = "| Hazard | What prevents it or tells of it | Proof |\n|---|---|---|\n"
    cases = [
        (head + "| a | b | `Stop.Works` |\n", 0),
        (head + "| a | b | `Desktop.stop_under_x` `Stop.Works` |\n", 0),
        (head + "| a | b | `Stop.IsGone` |\n", 1),
        (head + "| a | b | |\n", 1),
        (head + "| a | | `Stop.Works` |\n", 1),
        (head + "| a | b | somebody tried it |\n", 1),
        ("nothing\n", 1),
    ]
    failures = []
    for text, wanted in cases:
        with tempfile.TemporaryDirectory() as scratch:
            root = pathlib.Path(scratch)
            for path, content in ((DOCUMENT, text), ("tests/link/stop_test.cpp", "TEST(Stop, Works) {}\n"),
                                  ("tests/e2e/desktop/stop_under_x.py", "")):
                (root / path).parent.mkdir(parents=True, exist_ok=True)
                (root / path).write_text(content, encoding="utf-8")
            found = check(root)[1]
            if len(found) != wanted:
                failures.append(f"{text!r}: {found}")
    return failures


def main():
    root = pathlib.Path(sys.argv[1])
    if "--self-test" in sys.argv:
        errors = self_test()
        print("\n".join(errors) or "each fault is found")
    else:
        count, errors = check(root)
        print("\n".join(errors) or f"{count} hazards are controlled, and tests prove it")
    sys.exit(1 if errors else 0)


if __name__ == "__main__":
    main()
