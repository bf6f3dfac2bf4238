#!/usr/bin/python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""The project explains itself: no file sends its reader to a document that does not come with it.

check_words.py ROOT              checks the project's own files under ROOT
check_words.py ROOT --self-test  shows on made-up files that each word is found
"""

import pathlib
import re
import sys
import tempfile

PLACES = [
    "src", "tests", "docs", "examples", "packaging", "bench", "fuzz", "help", "cmake", "resources", ".ci",
    "README.md", "CONTRIBUTING.md", "CMakeLists.txt", "CMakePresets.json", "run", "test",
]
# Written in pieces so that this file does not find itself.
OUTSIDE = [
    ("a numbered chapter", re.compile(r"\bpart" + r"s?\s+\d+\.\d+", re.IGNORECASE)),
    ("another document", re.compile("specifi" + "cation", re.IGNORECASE)),
]
MADE_BY_TOOLS = {"__pycache__", "build"}


def files_under(root):
    for place in PLACES:
        path = root / place
        found = sorted(path.rglob("*")) if path.is_dir() else [path]
        for file in found:
            if file.is_file() and not MADE_BY_TOOLS & set(file.relative_to(root).parts):
                yield file


def errors_in(path, name):
    data = path.read_bytes()
    if b"\0" in data:
        return
    text = data.decode("utf-8", errors="replace")
    for what, pattern in OUTSIDE:
        for match in pattern.finditer(text):
            line = text.count("\n", 0, match.start()) + 1
            yield f"{name}:{line}: names {what}: {match.group(0)!r}"


def check(root):
    """The number of files looked at and a list of complaints."""
    count, errors = 0, []
    for path in files_under(root):
        count += 1
        errors += errors_in(path, path.relative_to(root))
        # A name is read too.
        if OUTSIDE[1][1].search(path.name):
            errors.append(f"{path.relative_to(root)}: its name points at another document")
    return count, errors


def self_test():
    chapter, document = "Part" + " 3.2", "Specifi" + "cation"
    # Name, file, its text, and whether it must be refused.
    cases = [
        ("a chapter in a comment", "src/a/a.cpp", f"// as {chapter} has it\n", True),
        ("a chapter in small letters", "docs/a.md", chapter.lower(), True),
        ("a chapter across a line end", "docs/a.md", chapter.replace(" ", "\n"), True),
        ("several chapters", "tests/a.cpp", chapter.replace("Part", "Parts"), True),
        ("the document", "README.md", f"See the {document.lower()}.", True),
        ("the document in capitals", "packaging/a", document.upper(), True),
        ("the document in a name", f"examples/{document}.TVH", "", True),
        ("a part that is no chapter", "src/a.cpp", "// part 3 of 4, whole part 0\n", False),
        ("a specific word", "docs/a.md", "This is specific; specify it.", False),
        ("what the build made", "src/__pycache__/a.py", document, False),
    ]
    wrong = []
    for name, file, text, refused in cases:
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / file
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
            _, errors = check(pathlib.Path(folder))
            if bool(errors) != refused:
                wrong.append(f"{name}: {'passed' if refused else errors}")
    return wrong, f"{len(cases)} made-up files are told right"


def main():
    root = pathlib.Path(sys.argv[1]).resolve()
    if "--self-test" in sys.argv[2:]:
        errors, done = self_test()
    else:
        count, errors = check(root)
        done = f"{count} files explain themselves"
        if count == 0:
            errors.append(f"no files under {root}")
    print("\n".join(errors) if errors else done)
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
