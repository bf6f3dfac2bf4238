#!/usr/bin/python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""What the build has made installs to where it belongs, and runs there.

install.py BUILD_FOLDER VERSION SOURCE_FOLDER
"""

import configparser
import pathlib
import re
import subprocess
import sys
import tempfile

# Besides these there are documents and examples, each a file of the source tree.
PLACES = {
    "bin/OskelHelp",
    "bin/tavlo",
    "bin/tavlo-composer",
    "bin/tavlo-hubsim",
    "lib/tavlo-composer/tavlo-paper.so",
    "share/applications/tavlo-composer.desktop",
    "share/icons/hicolor/scalable/apps/tavlo-composer.svg",
    "share/man/man1/tavlo-composer.1",
    "share/man/man1/tavlo.1",
}
HELP = "bin/Help/"
DOCUMENTS = "share/doc/tavlo-composer/"
SOME_DOCUMENTS = {"LICENSE", "CHANGELOG.md", "docs/command-line.md", "examples/README.md", "examples/cut-to-length.TVH",
                  "examples/menu.inputs"}


def place_errors(installed, source):
    documents = {name.removeprefix(DOCUMENTS) for name in installed if name.startswith(DOCUMENTS)}
    help_documents = {name.removeprefix(HELP) for name in installed if name.startswith(HELP)}
    wanted = {f"{path.stem}.pdf" for path in (source / "help").glob("*.md")}
    yield from (f"{HELP}{name} is not installed" for name in sorted(wanted - help_documents))
    yield from (f"{HELP}{name} has no source" for name in sorted(help_documents - wanted))
    others = {name for name in installed if not name.startswith((DOCUMENTS, HELP))}
    yield from (f"{name} is not installed" for name in sorted(PLACES - others))
    yield from (f"{name} does not belong there" for name in sorted(others - PLACES))
    yield from (f"{DOCUMENTS}{name} is not installed" for name in sorted(SOME_DOCUMENTS - documents))


def link_errors(prefix):
    """Documents that point at what was left at home."""
    for document in sorted((prefix / DOCUMENTS).rglob("*.md")):
        for target in re.findall(r"\]\(([^)#:]+)[^):]*\)", document.read_text(encoding="utf-8")):
            if not (document.parent / target).exists():
                yield f"{document.relative_to(prefix)}: its link to {target} leads nowhere"


def version_errors(prefix, version):
    for program in sorted(path for path in (prefix / "bin").iterdir() if path.is_file()):
        done = subprocess.run([program, "--version"], capture_output=True, text=True, check=False)
        if done.returncode != 0 or version not in done.stdout:
            yield f"{program.name} --version: {done.returncode}, {done.stdout}{done.stderr}"
    for page in sorted((prefix / "share/man/man1").iterdir()):
        if f'"Tavlo Composer {version}"' not in page.read_text(encoding="utf-8"):
            yield f"{page.name} is not of version {version}"


def desktop_errors(prefix):
    entry = configparser.ConfigParser(interpolation=None)
    entry.read(prefix / "share/applications/tavlo-composer.desktop", encoding="utf-8")
    program, icon = (entry["Desktop Entry"][key].split()[0] for key in ("Exec", "Icon"))
    if not (prefix / "bin" / program).is_file():
        yield f"the desktop entry starts {program}, which is not installed"
    if not (prefix / "share/icons/hicolor/scalable/apps" / f"{icon}.svg").is_file():
        yield f"the desktop entry shows {icon}, which is not installed"


def main():
    build, version, source = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        prefix = pathlib.Path(folder)
        done = subprocess.run(["cmake", "--install", build, "--prefix", folder],
                              capture_output=True, text=True, check=False)
        if done.returncode != 0:
            sys.exit(done.stdout + done.stderr)
        installed = {path.relative_to(prefix).as_posix() for path in prefix.rglob("*") if path.is_file()}
        errors = [*place_errors(installed, pathlib.Path(source))]
        errors = errors or [*link_errors(prefix), *version_errors(prefix, version), *desktop_errors(prefix)]
    print("\n".join(errors) if errors else f"{len(installed)} files are where they belong")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
