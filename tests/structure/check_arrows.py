#!/usr/bin/python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""The picture in docs/architecture.md and the link lists of CMake draw the arrows of layers.py, no more and no less.

check_arrows.py ROOT              checks the tree at ROOT
check_arrows.py ROOT --self-test  shows on made-up pictures and lists that each difference is found
"""

import pathlib
import re
import sys
import tempfile

from layers import LEANS_ON, layer_of

PICTURE = pathlib.PurePath("docs/architecture.md")
HEADING = "## Who may lean on whom"
BLOCK = re.compile(r"^```\n(.*?)^```$", re.MULTILINE | re.DOTALL)
ALONE = re.compile(r"^(\S+) leans on nothing here$")
COMMENT = re.compile(r"#.*")
COMMAND = re.compile(r"\b(\w+)\s*\(([^()]*)\)")
# What begins the next list of an argument.
KEYWORDS = {"LINKS", "SOURCES", "HEADERS", "PRIVATE", "PUBLIC", "INTERFACE"}

TABLE = {(lower, upper) for upper, lowers in LEANS_ON.items() for lower in lowers}


def drawn(text):
    """The arrows of the picture, (lower, upper), and the layers in it."""
    block = BLOCK.search(text[text.find(HEADING) :]) if HEADING in text else None
    arrows, layers = set(), set()
    for line in block.group(1).splitlines() if block else []:
        alone = ALONE.match(line)
        ranks = [[alone.group(1)]] if alone else [re.split(r",\s*", rank.strip()) for rank in line.split("<-")]
        layers.update(layer for rank in ranks for layer in rank)
        for lowers, uppers in zip(ranks, ranks[1:]):
            arrows |= {(lower, upper) for lower in lowers for upper in uppers}
    return arrows, layers


def list_of(arguments, keywords):
    taken, take = [], False
    for word in arguments:
        take = word in keywords if word in KEYWORDS else take
        if take and word not in KEYWORDS:
            taken.append(word)
    return taken


def linked(source_root):
    """The arrows of the link lists, and the layers that have a target."""
    homes, links = {}, []
    for path in sorted(source_root.rglob("CMakeLists.txt")):
        layer = layer_of(path.parent.relative_to(source_root).as_posix())
        for command, text in COMMAND.findall(COMMENT.sub("", path.read_text(encoding="utf-8"))):
            name, *arguments = text.split() or [""]
            if command == "tavlo_layer":
                homes[f"tavlo_{name}"] = layer
                links += [(used, layer) for used in list_of(arguments, {"LINKS"})]
            elif command == "add_executable":
                homes[name] = layer
            elif command == "target_link_libraries":
                links += [(used, layer) for used in list_of(arguments, {"PRIVATE", "PUBLIC", "INTERFACE"})]
    arrows = {(homes[used], layer) for used, layer in links if used in homes and homes[used] != layer}
    return arrows, set(homes.values())


def differences(where, arrows, layers):
    for lower, upper in sorted(TABLE - arrows):
        yield f"{where}: {upper} does not lean on {lower}, as it does in layers.py"
    for lower, upper in sorted(arrows - TABLE, key=str):
        yield f"{where}: {upper} leans on {lower}, as it does not in layers.py"
    for layer in sorted(LEANS_ON.keys() - layers):
        yield f"{where}: {layer} is missing"
    for layer in sorted(layers - LEANS_ON.keys(), key=str):
        yield f"{where}: {layer} is no layer of layers.py"


def check(root):
    errors = [*differences(PICTURE, *drawn((root / PICTURE).read_text(encoding="utf-8")))]
    return errors + [*differences("src/CMakeLists.txt and below", *linked(root / "src"))]


# Name, what to replace in which made-up file, by what, and a part of what must be said of it.
MODEL, MOTION = "src/model/CMakeLists.txt", "src/motion/CMakeLists.txt"
CASES = [
    ("as it is", PICTURE, "", "", None),
    ("a chain", PICTURE, "model <- motion\n", "platform <- model <- motion\n", None),
    ("an arrow too few", PICTURE, "model <- motion\n", "", "motion does not lean on model"),
    ("an arrow too many", PICTURE, "model <- motion\n", "model, text <- motion\n", "motion leans on text"),
    ("an arrow turned round", PICTURE, "model <- motion\n", "motion <- model\n", "model leans on motion"),
    ("a layer that nobody made", PICTURE, "model <- motion\n", "model <- motion <- extras\n", "extras is no layer"),
    ("a layer that nobody drew", PICTURE, "windows, qt <- composer\n", "", "composer is missing"),
    ("no picture", PICTURE, HEADING, "## Who leans", "platform is missing"),
    ("a link too few", MOTION, "tavlo_model", "", "motion does not lean on model"),
    ("a link too many", MOTION, "tavlo_model", "tavlo_model tavlo_text", "motion leans on text"),
    ("a link added later", MODEL, "\n", "\ntarget_link_libraries(tavlo_model PUBLIC tavlo_text)\n",
     "model leans on text"),
    ("a link of a program", MODEL, "\n", "\nadd_executable(a a.cpp)\ntarget_link_libraries(a PRIVATE tavlo_text)\n",
     "model leans on text"),
    ("a link in a comment", MODEL, "\n", "\n# target_link_libraries(tavlo_model PUBLIC tavlo_text)\n", None),
    ("a library that is not ours", MODEL, "tavlo_platform", "tavlo_platform Qt6::Core", None),
    ("a layer without a target", MOTION, "tavlo_layer", "no_layer", "motion is missing"),
]


def made_up_files():
    """A tree that is as the table has it."""
    picture = [f"{', '.join(lowers)} <- {upper}" for upper, lowers in LEANS_ON.items() if lowers]
    picture += [f"{layer} leans on nothing here" for layer, lowers in LEANS_ON.items() if not lowers]
    files = {str(PICTURE): "\n".join([HEADING, "", "```", *picture, "```", ""])}
    for layer, lowers in LEANS_ON.items():
        links = " ".join(f"tavlo_{lower.replace('/', '')}" for lower in lowers)
        text = f"tavlo_layer({layer.replace('/', '')} LINKS {links} HEADERS standard SOURCES a.cpp)\n"
        files[f"src/{layer}/CMakeLists.txt"] = text
    return files


def self_test():
    wrong = []
    for name, file, old, new, expected in CASES:
        with tempfile.TemporaryDirectory() as folder:
            for path, text in made_up_files().items():
                copy = pathlib.Path(folder) / path
                copy.parent.mkdir(parents=True, exist_ok=True)
                copy.write_text(text.replace(old, new, 1) if path == str(file) else text, encoding="utf-8")
            errors = check(pathlib.Path(folder))
            if expected is None and errors or expected and not any(expected in error for error in errors):
                wrong.append(f"{name}: {errors or 'passed'}")
    return wrong


def main():
    root = pathlib.Path(sys.argv[1]).resolve()
    if "--self-test" in sys.argv[2:]:
        errors, done = self_test(), f"{len(CASES)} made-up trees are told right"
    else:
        errors, done = check(root), f"{len(TABLE)} arrows are drawn and linked as the table has them"
    print("\n".join(errors) if errors else done)
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
