# SPDX-License-Identifier: GPL-3.0-or-later
"""The desktop entry's command, and the automation object that it speaks to."""

import os
import subprocess

from . import processes
from .case import Desk, display
from .program import BINARY, Program
from .waiting import wait_until

COMMAND = BINARY.with_name("kivandra-open")
NAME, PATH, INTERFACE = "org.kivandra.Kivandra", "/org/kivandra/Application", "org.kivandra.Application"
START_SECONDS = 20


def gdbus(*words):
    """Runs gdbus as a person would in a shell; gives what it says and whether it was content."""
    done = subprocess.run(["gdbus", *words], env=display().environment, capture_output=True, text=True, timeout=60,
                          check=False)
    return (done.stdout + done.stderr).strip(), done.returncode == 0


def call(method, *arguments):
    return gdbus("call", "--session", "--dest", NAME, "--object-path", PATH, "--method", method, *arguments)


def offered():
    """Whether the object is on the bus."""
    return "true" in gdbus("call", "--session", "--dest", "org.freedesktop.DBus", "--object-path",
                           "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.NameHasOwner", NAME)[0]


class HandOver(Program):
    """One run of the command, with whatever it starts."""

    def __init__(self, home, words=(), environment=()):
        super().__init__(display(), home, words, environment, COMMAND)

    def desk(self):
        """The desk of the program that it has started."""
        pid = wait_until(lambda: next((pid for pid in processes.descendants(self.pid)
                                       if processes.name_of(pid) == BINARY.name), None),
                         lambda: f"it starts the program; it says {self.voice()}", START_SECONDS)
        return Desk(Started(self, pid))


class Started:
    """The program that a run of the command has started: it outlives that run."""

    def __init__(self, opener, pid):
        self.pid, self.voice = pid, opener.voice

    def runs(self):
        return os.path.exists(f"/proc/{self.pid}")
