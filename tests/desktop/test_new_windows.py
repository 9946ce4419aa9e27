# SPDX-License-Identifier: GPL-3.0-or-later
"""Pages that ask for windows of their own."""

import unittest

from harness import pages
from harness.case import BrowsingTest
from harness.waiting import stays_true, wait_until

QUIET_SECONDS = 0.7

# How a page asks for a window on the address %s, once it is clicked.
ASKING = {
    "a link with a target": None,
    "window.open": "open('%s')",
    "window.open without an opener": "open('%s', '_blank', 'noopener')",
    "window.open, then location": "const w = open(''); if (w) w.location = '%s'",
    "a timer": "setTimeout(() => open('%s'), 50)",
    "a form with a target": "const f = document.createElement('form'); f.action = '%s'; f.target = '_blank';"
                            " document.body.append(f); f.submit()",
}


def asking_page(how, url):
    if how is None:
        return pages.link(url, 'target="_blank"')
    return pages.script(f"onclick = () => {{ {how % url} }}")


class Refused(BrowsingTest):
    """The parent has refused pop-ups."""

    settings = {"POP": "1"}

    def test_no_way_of_asking_opens_a_window(self):
        for row, how in ASKING.items():
            with self.subTest(row):
                name, url = self.clean()
                start = self.visit(asking_page(how, url))
                self.page.click_page()
                stays_true(lambda: len(self.frame.pages()) == 1 and len(self.desk.windows()) == 1,
                           "one page window, no other", QUIET_SECONDS)
                self.assertEqual([], self.server.asked(f"/{name}"))
                self.assertEqual(start, self.page.address)

    def test_nothing_opens_while_a_page_is_left(self):
        name, url = self.clean()
        self.visit(pages.script(f"onunload = () => open('{url}'); onpagehide = () => open('{url}')"))
        self.page.click_page()
        self.visit()
        self.assertEqual(1, len(self.frame.pages()))
        self.assertEqual([], self.server.asked(f"/{name}"))

    def test_other_buttons_and_keys_are_judged_as_a_link(self):
        for row, button, key in (("middle click", 2, None), ("shift", 1, "shift"), ("control", 1, "ctrl")):
            with self.subTest(row):
                name, url = self.forbidden()
                self.visit(pages.link(url))
                self.page.click_page(button, key)
                stays_true(lambda name=name: not self.server.asked(pages.mark(name)), "nothing is painted",
                           QUIET_SECONDS)
                self.assertEqual(1, len(self.frame.pages()))


class Allowed(BrowsingTest):
    """The parent lets pop-ups through."""

    settings = {"POP": "0"}

    def test_every_way_of_asking_opens_a_page_window_in_the_frame(self):
        for row, how in ASKING.items():
            if row == "a timer":
                continue  # opens only while the engine still counts the click
            with self.subTest(row):
                self._close_other_pages()
                name, url = self.clean()
                self.visit(asking_page(how, url))
                self.page.click_page()
                self.painted(name)
                wait_until(lambda: len(self.frame.pages()) == 2, lambda: self.situation())
                self.assertEqual(1, len(self.desk.windows()), "the window lies inside the frame")
                wait_until(lambda name=name: any(page.caption == name for page in self.frame.pages()),
                           lambda: self.situation())

    def test_the_new_window_s_page_is_judged(self):
        for row, how in ASKING.items():
            with self.subTest(row):
                self._close_other_pages()
                name, url = self.forbidden()
                self.visit(asking_page(how, url))
                self.page.click_page()
                wait_until(lambda: self.frame.blocked(), lambda: self.situation())
                self.assertEqual(1, self.server.times_asked(f"/{name}"))
                self.assert_never_painted(name)

    def test_a_window_without_an_address_shows_only_what_its_opener_wrote(self):
        name, url = self.forbidden()
        self.visit(pages.script(
            f"onclick = () => {{ const w = open(''); w.document.write('<iframe src=\"{url}\"></iframe>');"
            " w.document.close() }"))
        self.page.click_page()
        # The new window takes its opener's address: that is judged too, and the last one judged has the caption.
        self.server.wait_asked(f"/{name}")
        stays_true(lambda: not self.server.asked(pages.mark(name)), "nothing is painted", QUIET_SECONDS)
        self.assert_never_painted(name)

    def test_many_windows_at_once_are_all_judged(self):
        names = [self.forbidden() for _ in range(3)]
        opens = "".join(f"open('{url}', 'w{number}');" for number, (_, url) in enumerate(names))
        self.visit(pages.script(f"onclick = () => {{ {opens} }}"))
        self.page.click_page()
        wait_until(lambda: self.frame.blocked(), lambda: self.situation())
        stays_true(lambda: not any(self.server.asked(pages.mark(name)) for name, _ in names), "nothing is painted",
                   QUIET_SECONDS)


if __name__ == "__main__":
    unittest.main()
