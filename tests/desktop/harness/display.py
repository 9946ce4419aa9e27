# SPDX-License-Identifier: GPL-3.0-or-later
"""A virtual display and a session bus of their own, and what can be seen on that display."""

import mmap
import os
import pathlib
import shutil
import struct
import subprocess
import tempfile

from . import processes
from .waiting import wait_until

WIDTH, HEIGHT = 1366, 768


class Display:
    """Xvfb on a free display, with a session bus beside it on which accessibility starts by itself."""

    def __init__(self, width=WIDTH, height=HEIGHT):
        self.width, self.height = width, height
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="display-"))
        runtime = self.folder / "runtime"
        runtime.mkdir(mode=0o700)
        read_end, write_end = os.pipe()
        self._server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", f"{width}x{height}x24", "-fbdir",
             str(self.folder), "-nolisten", "tcp", "-noreset"],
            pass_fds=[write_end], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL, preexec_fn=processes.die_with_parent)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise RuntimeError("the virtual display did not start")
        self.environment = {
            "PATH": os.environ["PATH"],
            "HOME": str(self.folder),
            "LANG": "C.UTF-8",
            "XDG_RUNTIME_DIR": str(runtime),
            "DISPLAY": ":" + number,
        }
        self._bus = subprocess.Popen(
            ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1"],
            env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
            text=True, preexec_fn=processes.die_with_parent)
        self.bus_address = self._bus.stdout.readline().strip()
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus_address
        # GTK asks for the accessibility bus once, at its start: have it there.
        subprocess.run(["dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
                        "org.a11y.Bus.GetAddress"],
                       env=self.environment, check=True, stdout=subprocess.DEVNULL)
        self._screen = self._map_screen()

    def _map_screen(self):
        path = self.folder / "Xvfb_screen0"
        wait_until(path.exists, "the display shows its memory")
        with open(path, "rb") as file:
            memory = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        fields = struct.unpack(">25I", memory[:100])
        self._first = fields[0] + fields[19] * 12
        self._line = fields[12]
        return memory

    def shows(self, colour, run=8):
        """Whether `run` pixels of `colour` (red, green, blue) stand side by side anywhere on the screen."""
        red, green, blue = colour
        pixel = bytes((blue, green, red))
        for last in (b"\0", b"\xff"):
            needle = (pixel + last) * run
            at = self._screen.find(needle, self._first)
            while at != -1 and (at - self._first) % 4:
                at = self._screen.find(needle, at + 1)
            if at != -1:
                return True
        return False

    def pixel(self, x, y):
        """Red, green and blue of one pixel."""
        at = self._first + y * self._line + x * 4
        blue, green, red = self._screen[at:at + 3]
        return red, green, blue

    def picture(self, path):
        """Saves what the screen shows."""
        pathlib.Path(path).parent.mkdir(parents=True, exist_ok=True)
        subprocess.run(["import", "-window", "root", str(path)], env=self.environment, check=True)

    def close(self):
        self._screen.close()
        for process in (self._bus, self._server):
            process.terminate()
            process.wait(10)
        self._bus.stdout.close()
        shutil.rmtree(self.folder, ignore_errors=True)
