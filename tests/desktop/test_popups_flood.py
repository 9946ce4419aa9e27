# SPDX-License-Identifier: GPL-3.0-or-later
"""Pages that want many windows, or windows of a certain size."""

import unittest

from harness import pages
from harness.case import BrowsingTest
from harness.waiting import stays_true, wait_until

MANY = 1000
MOST_WINDOWS = 25  # a page opens at most some twenty by itself
QUIET_SECONDS = 0.7


def flood(url):
    return pages.script(f"onclick = () => {{ for (let i = 0; i < {MANY}; ++i) open('{url}?' + i); fetch('/done') }}")


class Allowed(BrowsingTest):
    settings = {"POP": "0"}

    def test_a_page_may_give_its_window_a_size(self):
        name, url = self.clean()
        self.visit(pages.script(f"onclick = () => {{ open('{url}', 'small', 'width=320,height=240') }}"))
        self.page.click_page()
        self.painted(name)
        window = wait_until(lambda: next((page for page in self.frame.pages() if page.caption == name), None),
                            lambda: self.situation())
        left, top, width, height = window.extents()
        self.assertTrue(300 <= width <= 380 and 220 <= height <= 340, f"{width} by {height}")

    def test_a_thousand_windows_leave_the_frame_alive(self):
        _, url = self.clean()
        self.visit(flood(url))
        self.page.click_page()
        self.server.wait_asked("/done", seconds=30)
        wait_until(lambda: len(self.frame.pages()) > 1, lambda: self.situation())
        stays_true(lambda: len(self.frame.pages()) <= MOST_WINDOWS, "no flood of windows", QUIET_SECONDS)
        self.assertEqual(1, len(self.desk.windows()))
        # A person can still work: the menu opens, and the frame closes when this session ends.
        self.frame.press("Refresh")
        count = len(self.frame.pages())
        self.frame.page().close()
        self.assertEqual(count - 1, len(self.frame.pages()))


class Refused(BrowsingTest):
    settings = {"POP": "1"}

    def test_a_thousand_windows_are_refused_in_silence(self):
        name, url = self.clean()
        self.visit(flood(url))
        asked = self.server.times_asked("/done")
        self.page.click_page()
        self.server.wait_asked("/done", asked + 1, seconds=30)
        stays_true(lambda: len(self.frame.pages()) == 1 and len(self.desk.windows()) == 1, "nothing opens",
                   QUIET_SECONDS)
        self.assertEqual([], self.server.asked(f"/{name}"))
        self.visit()


if __name__ == "__main__":
    unittest.main()
