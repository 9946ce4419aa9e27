# SPDX-License-Identifier: GPL-3.0-or-later
"""The page windows in the frame: cascaded, tiled, closed one after the other."""

import unittest

from harness import answers, pages
from harness.case import PASSWORD, BrowsingTest
from harness.waiting import wait_until


class Arranging(BrowsingTest):
    def setUp(self):
        super().setUp()
        for _ in range(2):
            self.frame.new_page()
        self.frame.tile()

    def test_tiled_windows_lie_side_by_side_and_fill_the_area(self):
        area = self.frame.find("Page windows").extents()
        covered = sum(page.extents()[2] * page.extents()[3] for page in self.frame.pages())
        self.assertGreater(covered, 0.9 * area[2] * area[3])

    def test_cascaded_windows_go_down_in_steps_and_keep_inside_the_area(self):
        self.frame.cascade()
        left, top, width, height = self.frame.find("Page windows").extents()
        for page in self.frame.pages():
            x, y, wide, high = page.extents()
            self.assertTrue(left <= x and top <= y and x + wide <= left + width and y + high <= top + height)

    def test_each_window_shows_its_own_page_and_comes_to_the_front_by_a_click(self):
        urls = []
        for page in self.frame.pages():
            name, url = self.clean()
            page.go(url)
            self.painted(name)
            urls.append(url)
        for page in list(self.frame.pages()):
            x, y = page.page_middle()
            self.hands.click(x, y)
            wait_until(lambda page=page: self.frame.page() == page, "the window is in front")
        self.assertEqual(sorted(urls), sorted(page.address for page in self.frame.pages()))

    def test_windows_close_one_by_one_and_the_frame_stays(self):
        for left in (2, 1, 0):
            self.frame.page().close()
            self.assertEqual(left, len(self.frame.pages()))
        self.assertTrue(self.frame.open())
        for tool in ("Refresh", "Stop", "Print"):
            self.frame.press(tool)
        self.assertTrue(self.program.runs())
        page = self.frame.new_page()
        wait_until(lambda: "kivandra.localhost" in page.address, "a new window opens on the home page")


class Lock(BrowsingTest):
    """The parent lets a refused page through for this session."""

    def test_the_password_opens_one_page_and_nothing_else(self):
        name = self.name("granted")
        url = self.server.serve(f"/{name}", answers.page(pages.html(name, text=pages.WORD)))
        self.page.go(url)
        self.wait_blocked()
        with self.subTest("No leaves it shut"):
            self.frame.press("Lock")
            box = self.desk.window_with(f"Allow {url} for this session?")
            self.assertEqual("Session Lock", box.caption)
            box.press("No")
            wait_until(lambda: not box.open(), "the box closes")
            self.assertTrue(self.frame.blocked())
            self.assert_never_painted(name)
        self.hands.focus(self.frame.number)
        self.frame.press("Lock")
        self.desk.window_with(f"Allow {url} for this session?").press("Yes")
        prompt = self.desk.window_with("Cancel")
        with self.subTest("a wrong password is refused"):
            prompt.field("Password").write(PASSWORD.lower())
            prompt.press("Ok")
            box = self.desk.window_with("Invalid Password, try again!")
            box.press("Ok")
            wait_until(lambda: not box.open(), "the box closes")
            self.assert_never_painted(name)
        self.hands.focus(prompt.number)
        prompt.field("Password").write(PASSWORD)
        prompt.press("Ok")
        self.painted(name)
        self.assertFalse(self.frame.tool("Lock").usable)
        with self.subTest("another page stays refused"):
            other, bad = self.forbidden()
            self.hands.focus(self.frame.number)
            self.page.go(bad)
            self.wait_blocked()
            self.assert_never_painted(other)
        self.visit()


if __name__ == "__main__":
    unittest.main()
