#!/usr/bin/python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""Each message that the help quotes stands in the sources, letter by letter.

quotes.py ROOT              checks the documents in ROOT/help
quotes.py ROOT --self-test  shows on made-up documents that each mistake is found

A message is a quotation, with the box's title in bold before it. What stands for a value is in italics.
"""

import pathlib
import re
import sys
import tempfile

LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
QUOTE = re.compile(r"(?:^>.*\n?)+", re.MULTILINE)
TITLE = re.compile(r"\*\*(.+?):\*\*\s*")
VALUE = re.compile(r"\*[^*]+\*")
# Fewer letters could come from anywhere.
SHORTEST = 4


def plain(text):
    return re.sub(r"\s+", " ", text)


def literals(source_root):
    """All text literals of the sources, as they are shown."""
    found = []
    for path in sorted(source_root.rglob("*")):
        if path.suffix not in (".cpp", ".h"):
            continue
        text = path.read_text(encoding="utf-8")
        text = re.sub(r"//[^\n]*", "", text)
        text = re.sub(r'"\s*\n\s*"', "", text)
        found += [plain(literal.replace('\\"', '"')) for literal in LITERAL.findall(text)]
    return found


def quotations(text):
    """Line, title and text of each message."""
    for match in QUOTE.finditer(text):
        line = text.count("\n", 0, match.start()) + 1
        message = plain(re.sub(r"^> ?", "", match.group(0), flags=re.MULTILINE)).strip()
        title = TITLE.match(message)
        yield line, title.group(1) if title else None, message[title.end():] if title else message


def is_joined(piece, known, first=True):
    """Whether a program could join these words from the end of a text, whole texts and the beginning of one."""
    for end in range(SHORTEST, len(piece) - SHORTEST + 1):
        head, rest = piece[:end], piece[end:]
        if not any(literal.endswith(head) if first else literal == head for literal in known):
            continue
        if any(literal.startswith(rest) for literal in known) or is_joined(rest, known, False):
            return True
    return False


def errors_in(name, text, known):
    whole = set(known)
    for line, title, message in quotations(text):
        if title is not None and title not in whole:
            yield f"{name}:{line}: no box has the title {title!r}"
        for piece in VALUE.split(message):
            words = piece.strip()
            if not any(words in literal for literal in known) and not is_joined(words, known):
                yield f"{name}:{line}: no message says {piece.strip()!r}"


def check(root):
    known = literals(root / "src")
    documents = sorted((root / "help").glob("*.md"))
    count, errors = 0, []
    for document in documents:
        text = document.read_text(encoding="utf-8")
        count += sum(1 for _ in quotations(text))
        errors += errors_in(document.name, text, known)
    return count, errors


SOURCE = 'Kind("brake"); Box({.text = Kind() + " holds the motor"}); Box({.text = "The drive " + n +\n    " is  \\"none\\" and "\n    "stays so.", .title = "No drive"});'
# Name, a document, and whether it must be refused.
CASES = [
    ("to the letter", '> **No drive:** The drive *n* is "none" and stays so.\n', False),
    ("without its title", '> The drive *n* is "none" and stays so.\n', False),
    ("over two lines", '> **No drive:** The drive *n* is "none" and\n> stays so.\n', False),
    ("another word", '> **No drive:** The drive *n* is "none" and stays there.\n', True),
    ("a word too few", '> **No drive:** The drive *n* is "none" stays so.\n', True),
    ("another title", '> **Drive:** The drive *n* is "none" and stays so.\n', True),
    ("a value that is none", '> **No drive:** The drive 3 is "none" and stays so.\n', True),
    ("joined from part of a text", "> brak holds the motor\n", True),
    ("joined from whole texts", "> brake holds the motor\n", False),
    ("no quotation", "The drive is what it is.\n", False),
]


def self_test():
    wrong = []
    for name, document, refused in CASES:
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for path, text in (("src/a.cpp", SOURCE), ("help/a.md", document)):
                (root / path).parent.mkdir()
                (root / path).write_text(text, encoding="utf-8")
            _, errors = check(root)
            if bool(errors) != refused:
                wrong.append(f"{name}: {errors or 'passed'}")
    return wrong


def main():
    root = pathlib.Path(sys.argv[1])
    if "--self-test" in sys.argv[2:]:
        errors, done = self_test(), f"{len(CASES)} made-up documents are told right"
    else:
        count, errors = check(root)
        done = f"{count} messages are quoted as they are"
        if count == 0:
            errors.append(f"no message is quoted under {root}")
    print("\n".join(errors) if errors else done)
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
