# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""Who may lean on whom. Nothing points the other way.

The one table: check_layers.py holds the includes to it, check_arrows.py the picture in docs/architecture.md and the
link lists of CMake, and packaging/tidy takes from it which folders are the core.
"""

# On the standard library alone.
CORE = ["platform", "model", "motion", "codegen", "text", "session", "checks", "link", "commands", "forms"]

# A folder of src/ and those that it leans on directly; on what these lean it may lean too. What is deeper down in src/
# belongs to the nearest folder that has a row.
LEANS_ON = {
    "platform": [],
    "model": ["platform"],
    "motion": ["model"],
    "codegen": ["motion"],
    "text": ["motion"],
    "session": ["text"],
    "checks": ["session"],
    "link": ["checks", "codegen"],
    "commands": ["session"],
    "forms": ["text"],
    "qt": ["platform"],
    "qt/paper": ["platform"],
    "qt/gui": ["qt/paper"],
    "widgets": ["session", "qt/gui"],
    "editors": ["forms", "widgets"],
    "windows": ["link", "commands", "editors"],
    "composer": ["windows", "qt"],
    "viewer": ["widgets"],
    "cli": ["link", "commands", "forms", "qt", "hubsim"],
    # The simulated hub has its own reading of the bytes, so that a program that runs on it proves something.
    "hubsim": [],
}


def layer_of(path):
    """The layer of a path below src/, a file or a folder; None for one that nobody drew."""
    parts = path.split("/")
    while parts and "/".join(parts) not in LEANS_ON:
        parts.pop()
    return "/".join(parts) or None


def all_below(layer):
    """What a layer may include besides its own."""
    below = set()
    for other in LEANS_ON[layer]:
        below |= {other} | all_below(other)
    return below


ALLOWED = {layer: all_below(layer) for layer in LEANS_ON}

# Folders that have rooms: the rooms from the bottom up, and those whose headers the files of each may include besides
# its own. A file that stands beside the rooms is a room of its own, called as it is.
ROOMS = {
    "cli": {
        "console": set(),
        "desk": {"console"},
        "run": {"desk", "console"},
        "simulate": {"run", "desk", "console"},
        "commands": {"simulate", "run", "desk", "console"},
        "tavlo": {"commands", "desk", "console"},
        "main": {"tavlo", "desk", "console"},
    },
    "hubsim": {
        "program": set(),
        "wire": {"program"},
        "machine": {"program"},
        "options": {"machine", "wire"},
        "terminal": {"machine", "wire", "program"},
        "running": {"terminal", "machine", "wire", "program"},
        "hub": {"running", "terminal", "machine", "wire", "program", "options"},
        "option_text": {"hub", "machine", "program"},
        "mount": {"option_text", "hub", "machine", "wire", "program"},
        "panel": {"mount", "hub", "terminal", "machine", "wire", "program", "options"},
        "main": {"panel", "mount", "option_text", "hub", "wire"},
    },
}

# Headers of the language's own library that the core may use: nothing of a system, nothing of a toolkit.
STANDARD = set(
    """algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes
    climits clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp csignal cstdarg
    cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem
    forward_list fstream functional future initializer_list iomanip ios iosfwd iostream istream iterator latch
    limits list locale map memory memory_resource mutex new numbers numeric optional ostream queue random ranges
    ratio regex scoped_allocator semaphore set shared_mutex source_location span sstream stack stdexcept
    stop_token streambuf string string_view strstream syncstream system_error thread tuple type_traits typeindex
    typeinfo unordered_map unordered_set utility valarray variant vector version""".split()
)

# What the simulated hub needs of the system to be a device, and its two libraries.
POSIX = set(
    """arpa/inet.h dirent.h errno.h fcntl.h grp.h netinet/in.h poll.h pthread.h pty.h pwd.h signal.h stdlib.h
    string.h sys/epoll.h sys/eventfd.h sys/file.h sys/inotify.h sys/ioctl.h sys/mman.h sys/prctl.h
    sys/resource.h sys/select.h sys/signalfd.h sys/socket.h sys/stat.h sys/time.h sys/timerfd.h sys/types.h
    sys/un.h sys/wait.h termios.h time.h unistd.h""".split()
)
HUBSIM_LIBRARIES = ("CLI/", "nlohmann/")
