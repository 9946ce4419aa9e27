# SPDX-License-Identifier: GPL-3.0-or-later
"""A page is refused; a parent lets it through with the password, for this run of the program alone."""

import unittest

from harness import answers, pages, parent
from harness.case import PASSWORD, BrowsingTest
from harness.waiting import wait_until
from harness.windows import PRODUCT

REFUSAL = "Invalid Password, try again!"


class SessionLock(BrowsingTest):
    def refusable(self):
        """A page that is refused for its text, in a harmless colour since it will be shown; its name and address."""
        name = self.name("let-through")
        return name, self.server.serve(f"/{name}", answers.page(pages.html(name, text=f"about {pages.WORD} here")))

    def lock(self, url):
        """Presses Lock; gives the question."""
        self.hands.front(self.frame.number)
        self.frame.press("Lock")
        box = self.desk.window_with(f"Allow {url} for this session?")
        self.assertEqual("Session Lock", box.caption)
        return box

    def test_the_road_from_the_block_to_the_page_and_back_to_the_block(self):
        other = self.frame.new_page()
        self.page = self.frame.pages()[0]
        self.frame.tile()
        name, url = self.refusable()
        self.page.go(url)
        self.wait_blocked()

        with self.subTest("No is the answer of one who just presses Enter, and changes nothing"):
            box = self.lock(url)
            wait_until(lambda: box.find("No").focused, "No has the keyboard")
            self.hands.key("Return")
            wait_until(lambda: not box.open(), "the question closes")
            self.assertTrue(self.frame.blocked())
        with self.subTest("so does Cancel in the prompt"):
            self.lock(url).press("Yes")
            window = parent.prompted(self.desk)
            window.press("Cancel")
            wait_until(lambda: not window.open(), "the prompt closes")
            self.assertTrue(self.frame.blocked())
        with self.subTest("a wrong password"):
            self.lock(url).press("Yes")
            window = parent.prompted(self.desk)
            for wrong in (PASSWORD.lower(), PASSWORD + " ", ""):
                parent.give(window, wrong)
                self.assertEqual("Password Error", parent.dismiss(self.desk, REFUSAL))
                self.assertTrue(window.open())
                wait_until(lambda: window.field("Password").text == "", "the field is emptied")
            self.assertEqual([], self.server.asked(pages.mark(name)))
            self.assertTrue(self.frame.blocked())
        with self.subTest("the right password"):
            parent.give(window, PASSWORD)
            self.painted(name)
            wait_until(lambda: not window.open(), "the prompt closes")
            self.assertEqual(1, len(self.desk.windows()), "the panel stays shut")
            self.assertEqual(PRODUCT, self.frame.caption)
            self.assertFalse(self.frame.tool("Lock").usable)
            self.assertEqual(2, self.server.times_asked(f"/{name}"), "judged once, then shown without judging")
            wait_until(lambda: self.page.address == url, lambda: self.situation())
        with self.subTest("the window fills the frame"):
            area = self.frame.find("Page windows")
            wait_until(lambda: self.page.node.extents()[2:] >= tuple(each - 16 for each in area.extents()[2:]),
                       lambda: f"{self.page.node.extents()} fills {area.extents()}")

        with self.subTest("another window shows it, and what begins with its address"):
            self.hands.front(self.frame.number)
            self.frame.cascade()
            self.page = self.frame.page()
            for address in (url, url + "?more"):
                times = self.server.times_asked(pages.mark(name))
                self.page.go(address)
                self.server.wait_asked(pages.mark(name), times + 1)
            self.assertTrue(other.exists())
        with self.subTest("another page of the same site stays refused"):
            _, forbidden = self.forbidden()
            self.page.go(forbidden)
            self.wait_blocked()

        self.restart()
        with self.subTest("the next run of the program knows nothing of it"):
            times = self.server.times_asked(pages.mark(name))
            self.page.go(url)
            self.wait_blocked()
            self.assertEqual(times, self.server.times_asked(pages.mark(name)))
        with self.subTest("a grant shows the panel to nobody"):
            self.assertEqual(1, len(self.desk.windows()))


if __name__ == "__main__":
    unittest.main()
