# SPDX-License-Identifier: GPL-3.0-or-later
"""The first start: the parent makes a password, the splash stands, the home page comes."""

import time
import unittest

from harness.case import PASSWORD, LoudTest, display
from harness.program import Program
from harness.waiting import stays_true, wait_until

FIRST, SECOND = "Password", "Re-enter Password"
REFUSAL = "Invalid Password, try again!"
SPLASH_SECONDS = 2.5


class FirstRun(LoudTest):
    def setUp(self):
        self.home = self.new_home()
        self.desk = self.start(self.home)
        self.window = self.desk.window_with(SECOND)

    def enter(self, first, second):
        """Types both passwords as a parent would and presses Ok."""
        for name, text in ((FIRST, first), (SECOND, second)):
            field = self.window.field(name)
            self.window.click(field)
            wait_until(lambda field=field: field.focused, f"{name} has the keyboard")
            if text:
                self.desk.hands.type(text)
        self.window.press("Ok")

    def refusal_box(self):
        box = self.desk.window_with(REFUSAL)
        self.assertEqual("Login", box.caption)
        return box

    def assert_refused_and_cleared(self):
        box = self.refusal_box()
        self.assertIsNone(self.home.settings.read("T_PW") or None, "no password is stored")
        box.press("Ok")
        wait_until(lambda: not box.open(), "the box closes")
        self.desk.hands.focus(self.window.number)
        self.assertEqual("", self.window.field(FIRST).text)
        self.assertEqual("", self.window.field(SECOND).text)
        wait_until(lambda: self.window.field(FIRST).focused, "the first field has the keyboard")

    def test_refuses_bad_passwords_and_a_close_box_then_opens_the_frame_on_a_good_one(self):
        self.assertEqual("1", self.home.settings.read("F_C"), "the filter is on before anything else")
        with self.subTest("fields that differ"):
            self.enter("apple", "pear")
            self.assert_refused_and_cleared()
        with self.subTest("fields that differ in case only"):
            self.enter("Apple", "apple")
            self.assert_refused_and_cleared()
        with self.subTest("empty fields"):
            self.enter("", "")
            self.assert_refused_and_cleared()
        with self.subTest("Return moves between the fields and does not press the button"):
            self.desk.hands.key("Return")
            wait_until(lambda: self.window.field(SECOND).focused, "Return moves to the second field")
            self.desk.hands.key("Return")
            wait_until(lambda: self.window.field(FIRST).focused, "Return moves back to the first field")
        with self.subTest("the desktop's close command"):
            self.window.close()
            stays_true(self.window.open, "the window refuses to close", 1)
        with self.subTest("the close button of the title bar"):
            self.window.press("Close")
            stays_true(self.window.open, "the window refuses to close", 1)
            self.assertEqual([self.window.caption], [each.caption for each in self.desk.windows()])

        self.enter(PASSWORD, PASSWORD)
        wait_until(lambda: self.home.settings.read("T_PW") == PASSWORD, "the password is stored")
        splash = wait_until(lambda: next((each for each in self.desk.windows() if not self._is_frame(each)
                                          and self._open_alone(each)), None),
                            lambda: f"the splash shows:\n{self.desk.outline()}")
        shown = time.monotonic()
        wait_until(lambda: not splash.open(), "the splash goes")
        lasted = time.monotonic() - shown
        self.assertGreater(lasted, SPLASH_SECONDS - 0.5)
        self.assertLess(lasted, SPLASH_SECONDS + 4)  # the frame is loaded before anybody is answered again
        frame = self.desk.frame()
        self.assertEqual("You have the most recent version of the Kivandra.", frame.caption)
        page = frame.page()
        wait_until(lambda: page.address, "the first page has an address")
        self.assertIn("kivandra.localhost", page.address)
        wait_until(lambda: self.home.settings.read("FirstTime") == "1", "the first start is noted")
        for name in ("D_B", "D_EM", "B_B", "POP", "Sound", "Sidebar", "skin", "Installed"):
            self.assertEqual("", self.home.settings.read(name), name)

    def _is_frame(self, window):
        return window.find("Lock") is not None

    def _open_alone(self, window):
        """Whether `window` is the only one, and not that of the first run."""
        return window.node != self.window.node and [window.node] == [each.node for each in self.desk.windows()]


class TwoStarts(LoudTest):
    def test_a_second_start_before_the_password_is_made_ends_silently(self):
        home = self.new_home()
        desk = self.start(home)
        window = desk.window_with(SECOND)
        second = Program(display(), home)
        self.addCleanup(second.kill)
        self.assertEqual(0, second.wait_end())
        self.assertEqual("", second.voice())
        self.assertTrue(window.open())

    def test_a_program_killed_in_its_first_run_asks_again(self):
        home = self.new_home()
        desk = self.start(home)
        desk.window_with(SECOND)
        desk.program.kill()
        again = self.start(home)
        window = again.window_with(SECOND)
        self.assertTrue(window.open())


if __name__ == "__main__":
    unittest.main()
