# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The Tavlo Composer authors
"""Who may lean on whom. Nothing points the other way."""

CORE = ["platform", "model", "motion", "codegen", "text", "desk", "checks", "link"]

# A folder of src/ and the folders whose headers its files may include besides its own.
ALLOWED = {
    "platform": set(),
    "model": {"platform"},
    "motion": {"model", "platform"},
    "codegen": {"motion", "model", "platform"},
    "text": {"motion", "model", "platform"},
    "desk": {"text", "motion", "model", "platform"},
    # What stands between a program and its download may look at all that is known of it.
    "checks": {"desk", "codegen", "text", "motion", "model", "platform"},
    "link": {"desk", "checks", "codegen", "text", "motion", "model", "platform"},
    "editors": set(CORE),
    "windows": set(CORE) | {"editors", "qt"},
    "qt": {"platform"},
    "composer": set(CORE) | {"editors", "windows", "qt"},
    "cli": set(CORE) | {"qt", "hubsim"},
    # The simulated hub has its own reading of the bytes, so that a program that runs on it proves something.
    "hubsim": set(),
}

# The rooms of the simulated hub from the bottom up, and the rooms whose headers the files of each may include
# besides its own. "hub" and "main" are the files that stand beside the rooms: the hub itself and main().
HUBSIM_ROOMS = {
    "program": set(),
    "wire": {"program"},
    "machine": {"program"},
    "terminal": {"machine", "wire", "program"},
    "running": {"terminal", "machine", "wire", "program"},
    "hub": {"running", "terminal", "machine", "wire", "program"},
    "mount": {"hub", "machine", "wire", "program"},
    "panel": {"mount", "hub", "terminal", "machine", "wire", "program"},
    "main": {"panel", "mount", "hub", "wire"},
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
