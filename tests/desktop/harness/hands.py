# SPDX-License-Identifier: GPL-3.0-or-later
"""Keyboard and mouse of the virtual display, and its windows as the display server knows them."""

import subprocess

from .close_message import ask_to_close


class Hands:
    def __init__(self, display, seen=lambda: None):
        """`seen` waits until the program has seen what was done so far."""
        self._display, self._seen = display, seen
        self._environment = display.environment

    def _xdotool(self, *words, check=True):
        result = subprocess.run(["xdotool", *map(str, words)], env=self._environment, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        if check and result.returncode != 0:
            raise AssertionError(f"xdotool {' '.join(map(str, words))[:200]} failed")
        return result.stdout

    def windows(self, pid):
        """Every window of the process that the screen shows: number and title, the oldest first."""
        numbers = self._xdotool("search", "--onlyvisible", "--pid", pid, check=False).split()
        return [(int(number), self.title(int(number))) for number in numbers]

    def window_numbers(self):
        """Every window that the screen shows, drop-downs too, the oldest first."""
        return [int(number) for number in self._xdotool("search", "--onlyvisible", "--name", ".*", check=False).split()]

    def title(self, window):
        return self._xdotool("getwindowname", window, check=False).rstrip("\n")

    def place(self, window):
        """Left, top, width and height of a window on the screen."""
        lines = self._xdotool("getwindowgeometry", "--shell", window).split()
        fields = dict(line.split("=") for line in lines)
        return int(fields["X"]), int(fields["Y"]), int(fields["WIDTH"]), int(fields["HEIGHT"])

    def focus(self, window):
        """Gives the keyboard to a window: there is no window manager to do it."""
        self._xdotool("windowfocus", "--sync", window)

    def front(self, window):
        """Lays a window over the others and gives it the keyboard, as a click on it would."""
        self._xdotool("windowraise", window)
        self.focus(window)

    def close_box(self, window):
        """Asks a window to close as a desktop's close command does."""
        ask_to_close(self._environment["DISPLAY"], window)

    # Like a person, never move and press in the same instant: the toolkit would still look at the old place. For a
    # program that is busy it is the same instant until it has seen the one. And a pointer comes over a thing before it
    # rests on it: what closed or opened beneath it meanwhile is noticed by then.

    def move(self, x, y):
        self._xdotool("mousemove", max(0, x - 2), y)
        self._seen()
        self._xdotool("mousemove", x, y)
        self._seen()

    def click(self, x, y, button=1, times=1):
        self.move(x, y)
        self._xdotool("click", "--repeat", times, "--delay", 40, button)

    def click_with(self, key, x, y, button=1):
        """Clicks while a key is held."""
        self.move(x, y)
        self._xdotool("keydown", key, "click", button, "keyup", key)

    def key(self, *names):
        self._xdotool("key", "--clearmodifiers", *names)

    def type(self, text):
        self._xdotool("type", "--clearmodifiers", "--delay", 3, text)
