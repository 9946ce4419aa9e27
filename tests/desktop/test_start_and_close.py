# SPDX-License-Identifier: GPL-3.0-or-later
"""A second start beside the first, and the three seconds of closing."""

import time
import unittest

from harness import answers, pages
from harness.case import CLOSING_SECONDS, BrowsingTest, LoudTest, display, seed
from harness.program import BINARY, Program
from harness.server import Server
from harness.waiting import wait_until


class SecondStart(BrowsingTest):
    def second(self, *arguments):
        program = Program(display(), self.home, arguments)
        self.addCleanup(program.kill)
        return program

    def shown(self):
        return [(each.caption, each.number) for each in self.desk.windows()]

    def test_ends_silently_and_leaves_the_first_as_it_was(self):
        url = self.visit()
        name, other = self.clean()
        for arguments in ((), (other,), ("-h",), ("--version",)):
            with self.subTest(arguments=arguments):
                before = wait_until(self.shown, "the first program's windows")
                program = self.second(*arguments)
                self.assertEqual(0, program.wait_end())
                self.assertEqual("", program.voice())
                wait_until(lambda: before == self.shown(), lambda: f"{before} and not {self.shown()}")
                self.assertEqual(url, self.page.address)
        self.assert_never_painted(name)
        self.assertEqual([], self.server.asked(f"/{name}"))

    def test_shows_no_window_of_its_own(self):
        program = self.second()
        wait_until(lambda: self.hands.windows(program.pid) == [] and not program.runs(), "the second start ends")

    def test_takes_a_stale_update_file_away(self):
        stale = BINARY.parent / "browser_update.exe"
        stale.write_bytes(b"left by an update")
        self.addCleanup(stale.unlink, missing_ok=True)
        self.second().wait_end()
        self.assertFalse(stale.exists())


class Closing(LoudTest):
    def setUp(self):
        self.home = self.new_home(like=seed())
        self.desk = self.start(self.home)
        self.frame = self.desk.frame()

    def test_stays_three_seconds_works_on_meanwhile_and_leaves_nothing_behind(self):
        server = Server()
        self.addCleanup(server.close)
        server.serve("/tick", answers.page(""))
        body = pages.script("setInterval(() => fetch('/tick', {cache: 'no-store'}), 100)")
        page = self.frame.page()
        page.go(server.serve("/page", answers.page(pages.html("page", body))))
        server.wait_asked("/tick", 2)

        self.frame.close()
        began = time.monotonic()
        ticks = server.times_asked("/tick")
        server.wait_asked("/tick", ticks + 3, seconds=1)
        self.assertTrue(self.frame.open())
        with self.subTest("a second close request changes nothing"):
            self.frame.close()
        with self.subTest("another start during the closing ends"):
            second = Program(display(), self.home)
            self.addCleanup(second.kill)
            self.assertEqual(0, second.wait_end(2))
        self.assertTrue(self.desk.program.runs())
        code = self.desk.program.wait_end(CLOSING_SECONDS + 5)
        lasted = time.monotonic() - began
        self.assertEqual(0, code, self.desk.program.voice()[-2000:])
        self.assertGreater(lasted, CLOSING_SECONDS - 0.3)
        self.assertLess(lasted, CLOSING_SECONDS + 3)
        self.desk.program.wait_nothing_left()

    def test_a_start_right_after_the_end_works(self):
        self.frame.close()
        self.assertEqual(0, self.desk.program.wait_end(CLOSING_SECONDS + 5))
        again = self.start(self.home)
        self.assertTrue(again.frame().page())

    def test_a_killed_program_leaves_no_process_and_starts_again(self):
        self.desk.program.crash()
        self.desk.program.wait_nothing_left()
        again = self.start(self.home)
        self.assertTrue(again.frame().page())


if __name__ == "__main__":
    unittest.main()
