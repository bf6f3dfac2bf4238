#!/usr/bin/python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""Every source file begins with the licence and is laid out by the checked-in .clang-format.

check_format.py ROOT              checks the sources under ROOT
check_format.py ROOT --self-test  shows on made-up files that each rule can fail
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile

# The version is part of the rule: another one lays the same file out differently.
FORMATTER = "clang-format-14"
FOLDERS = ["src", "tests", "bench", "fuzz", "examples", "help"]
LICENCE = ["SPDX-License-Identifier: MIT", "Copyright (c) 2026 The Tavlo Composer authors"]
COMMENT = {".cpp": "//", ".h": "//", ".py": "#", ".sh": "#"}


def sources(root):
    files = [p for p in root.iterdir() if p.suffix in COMMENT]
    for folder in FOLDERS:
        files += [p for p in (root / folder).rglob("*") if p.suffix in COMMENT and p.is_file()]
    return sorted(files)


def has_licence(path):
    lines = path.read_text(encoding="utf-8", errors="replace").splitlines()
    if lines and lines[0].startswith("#!"):
        lines = lines[1:]
    return lines[:2] == [f"{COMMENT[path.suffix]} {text}" for text in LICENCE]


def format_errors(root, files):
    if not files:
        return []
    if shutil.which(FORMATTER) is None:
        return [f"{FORMATTER} is not installed; see packaging/apt-packages.txt"]
    run = subprocess.run(
        [FORMATTER, "--style=file", "--dry-run", "-Werror", *map(str, files)],
        cwd=root,
        capture_output=True,
        text=True,
        check=False,
    )
    if run.returncode == 0:
        return []
    told = [line for line in run.stderr.splitlines() if "error:" in line]
    return told or [run.stderr.strip() or f"{FORMATTER} failed"]


def check(root):
    """The number of files looked at and a list of complaints."""
    files = sources(root)
    errors = [f"{p.relative_to(root)}: does not begin with the licence" for p in files if not has_licence(p)]
    errors += format_errors(root, [p for p in files if COMMENT[p.suffix] == "//"])
    return len(files), errors


def self_test(root):
    head = "".join(f"// {line}\n" for line in LICENCE)
    script = "".join(f"# {line}\n" for line in LICENCE)
    # Name, file, its text, and whether it must be refused.
    cases = [
        ("good", "src/a.cpp", head + "int main() {}\n", False),
        ("a script", "tests/a.py", "#!/usr/bin/python3\n" + script, False),
        ("no licence", "src/a.cpp", "int main() {}\n", True),
        ("half a licence", "tests/a.h", f"// {LICENCE[0]}\nint x;\n", True),
        ("a blank line before the licence", "bench/a.cpp", "\n" + head, True),
        ("a script without a licence", "tests/a.py", "#!/usr/bin/python3\nprint()\n", True),
        ("laid out badly", "src/a.cpp", head + "int  main( ) {\n}\n", True),
        ("laid out badly in a folder below", "tests/deep/a.h", head + "int*x;\n", True),
    ]
    wrong = []
    for name, file, text, refused in cases:
        with tempfile.TemporaryDirectory() as folder:
            made_up = pathlib.Path(folder)
            shutil.copy(root / ".clang-format", made_up)
            path = made_up / file
            path.parent.mkdir(parents=True)
            path.write_text(text)
            _, errors = check(made_up)
            if bool(errors) != refused:
                wrong.append(f"{name}: {'passed' if refused else errors}")
    return wrong, f"{len(cases)} made-up files are told right"


def main():
    root = pathlib.Path(sys.argv[1]).resolve()
    if "--self-test" in sys.argv[2:]:
        errors, done = self_test(root)
    else:
        count, errors = check(root)
        done = f"{count} files bear the licence and are laid out"
        if count == 0:
            errors.append(f"no sources under {root}")
    print("\n".join(errors) if errors else done)
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
