# SPDX-License-Identifier: GPL-3.0-or-later
"""Processes as the kernel lists them: whose child is whose, what is left behind, how much memory was taken."""

import ctypes
import os
import pathlib
import signal

PR_SET_CHILD_SUBREAPER = 36
PR_SET_PDEATHSIG = 1

_libc = ctypes.CDLL(None, use_errno=True)


def become_subreaper():
    """Orphans below this process become its own children, so that a process left behind can't hide."""
    if _libc.prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0) != 0:
        raise OSError(ctypes.get_errno(), "prctl")


def die_with_parent():
    """For preexec_fn: the child goes when the test run goes, however it ends."""
    _libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL, 0, 0, 0)


def _stat(pid):
    """Parent and state of a process, or None when it is gone."""
    try:
        text = pathlib.Path(f"/proc/{pid}/stat").read_text(errors="replace")
    except OSError:
        return None
    fields = text.rsplit(")", 1)[1].split()
    return int(fields[1]), fields[0]


def children_by_parent():
    table = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            stat = _stat(int(entry))
            if stat and stat[1] not in "ZX":
                table.setdefault(stat[0], []).append(int(entry))
    return table


def descendants(pid):
    """Every living process below `pid`."""
    table = children_by_parent()
    found, queue = [], list(table.get(pid, ()))
    while queue:
        child = queue.pop()
        found.append(child)
        queue.extend(table.get(child, ()))
    return found


def name_of(pid):
    """Name of a process's program file, empty when it is gone."""
    try:
        words = pathlib.Path(f"/proc/{pid}/cmdline").read_bytes().split(b"\0")
    except OSError:
        return ""
    return os.path.basename(words[0].decode(errors="replace"))


def words_of(pid):
    try:
        return pathlib.Path(f"/proc/{pid}/cmdline").read_bytes().decode(errors="replace").split("\0")
    except OSError:
        return []


def carries_mark(pid, mark):
    """Whether `mark` (NAME=value) stands in the process's environment."""
    try:
        return mark.encode() in pathlib.Path(f"/proc/{pid}/environ").read_bytes().split(b"\0")
    except OSError:
        return False


def marked(mark):
    """Every living process whose environment carries `mark`."""
    found = []
    for entry in os.listdir("/proc"):
        if entry.isdigit() and carries_mark(int(entry), mark):
            stat = _stat(int(entry))
            if stat and stat[1] not in "ZX":
                found.append(int(entry))
    return found


def _status_megabytes(pid, field):
    for line in pathlib.Path(f"/proc/{pid}/status").read_text().splitlines():
        if line.startswith(field + ":"):
            return int(line.split()[1]) / 1024
    return 0.0


def peak_megabytes(pid):
    """The most memory that the process ever had resident."""
    return _status_megabytes(pid, "VmHWM")


def forget_peak(pid):
    """Starts the measure of peak_megabytes anew."""
    pathlib.Path(f"/proc/{pid}/clear_refs").write_text("5")


def processor_seconds(pid):
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")
