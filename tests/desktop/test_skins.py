# SPDX-License-Identifier: GPL-3.0-or-later
"""Skins: chosen in the dialog, worn at once and at the next start; a file that is no skin leaves the frame dressed."""

import unittest

from harness.case import LoudTest, display, seed
from harness.file_dialog import choose_skin
from harness.program import ROOT
from harness.waiting import stays_true, wait_until

MEADOW = ROOT / "assets" / "skins" / "meadow.skn"
TITLE = (400, 18)  # a place on the frame's title bar where no word stands
QUIET_SECONDS = 0.5
LARGE = 5 << 20


def is_green(colour):
    red, green, blue = colour
    return green > red + 20 and green > blue + 20


def is_teal(colour):
    red, green, blue = colour
    return red < 40 and green > 70 and blue > 90


class Skins(LoudTest):
    def started(self, home):
        desk = self.start(home)
        return desk, desk.frame()

    def wears(self, look, what):
        wait_until(lambda: look(display().pixel(*TITLE)), lambda: f"{what}, not {display().pixel(*TITLE)}")

    def end(self, desk, frame):
        frame.close()
        desk.program.wait_end(20)

    def test_a_skin_is_worn_at_once_and_after_a_restart_and_a_file_that_is_none_changes_nothing(self):
        home = self.new_home(like=seed())
        desk, frame = self.started(home)
        self.wears(is_teal, "the usual skin")
        choose_skin(desk, frame, MEADOW)
        self.wears(is_green, "the meadow")
        wait_until(lambda: home.settings.read("skin") == str(MEADOW), "it is remembered")
        self.end(desk, frame)

        broken = home.path / "broken.skn"
        broken.write_bytes(b"\xff\0 no skin {")
        large = home.path / "large.skn"
        large.write_bytes(MEADOW.read_bytes() + b"/*" + b"x" * LARGE + b"*/")
        desk, frame = self.started(home)
        self.wears(is_green, "the meadow")
        for path in (broken, large):
            with self.subTest(path.name):
                choose_skin(desk, frame, path)
                wait_until(lambda path=path: home.settings.read("skin") == str(path), "it is remembered all the same")
                stays_true(lambda: is_green(display().pixel(*TITLE)), "the meadow stays", QUIET_SECONDS)
        self.end(desk, frame)

        large.unlink()
        desk, frame = self.started(home)
        with self.subTest("the file is gone at the start"):
            self.wears(is_teal, "the usual skin")
            self.assertTrue(frame.find("Home", "button").shown)


if __name__ == "__main__":
    unittest.main()
