# SPDX-License-Identifier: GPL-3.0-or-later
"""The automation object on the session bus, called from a shell; and the small program that hands addresses over."""

import unittest

from harness import pages
from harness.case import BrowsingTest, Current, display
from harness.hand_over import INTERFACE, NAME, PATH, HandOver, call, gdbus, offered
from harness.waiting import stays_true, wait_until

MOST_WINDOWS = 20
QUIET_SECONDS = 0.7


class AutomationTest(BrowsingTest):
    def setUp(self):
        super().setUp()
        wait_until(offered, "the object is on the bus")

    def done(self, method, *arguments):
        said, content = call(method, *arguments)
        self.assertTrue(content, said)
        return said

    def refused(self, method, *arguments):
        said, content = call(method, *arguments)
        self.assertFalse(content, said)
        return said

    def visible(self, wanted=None):
        if wanted is None:
            return self.done("org.freedesktop.DBus.Properties.Get", INTERFACE, "Visible")
        return self.done("org.freedesktop.DBus.Properties.Set", INTERFACE, "Visible",
                         f"<{'true' if wanted else 'false'}>")


    def find_again(self):
        """Waits for the frame: to assistive tools it is another one after it was hidden."""
        Current.session.frame = self.desk.frame()
        self._take(Current.session)
        self.page = self.frame.page()


class FromAShell(AutomationTest):
    def test_it_tells_what_it_offers(self):
        said, content = gdbus("introspect", "--session", "--dest", NAME, "--object-path", PATH)
        self.assertTrue(content, said)
        for part in (f"interface {INTERFACE}", "readwrite b Visible = true", "Navigate(in  s Shortcut)", "NewWindow()"):
            self.assertIn(part, said)

    def test_a_clean_page_opens_in_the_window_in_front(self):
        name, url = self.clean()
        self.done(f"{INTERFACE}.Navigate", url)
        self.painted(name)
        wait_until(lambda: self.page.address == url, lambda: self.situation())
        self.assertEqual(1, len(self.frame.pages()))

    def test_a_forbidden_page_is_refused_by_its_text_and_by_its_address(self):
        for name, url in (self.forbidden(), self.forbidden_address()):
            with self.subTest(url):
                self.visit()
                self.done(f"{INTERFACE}.Navigate", url)
                self.wait_blocked()
                self.assert_never_painted(name)

    def test_other_kinds_of_addresses_are_no_way_round(self):
        file = self.home.path / "page.html"
        file.write_text(pages.forbidden("from-a-file"))
        for url in (file.as_uri(), "data:text/html,<body bgcolor=%23ff00c8>", "webkit://gpu",
                    "javascript:document.title='ran'", "about:blank", "x" * 60000):
            with self.subTest(url[:40]):
                self.visit()
                self.done(f"{INTERFACE}.Navigate", url)
                self.wait_blocked()
                stays_true(lambda: self.page.caption != "ran" and len(self.desk.windows()) <= 1
                           and not display().shows(pages.FORBIDDEN_COLOUR), "nothing runs and nothing is shown",
                           QUIET_SECONDS)

    def test_a_new_window_opens_with_the_home_page(self):
        self.done(f"{INTERFACE}.NewWindow")
        wait_until(lambda: len(self.frame.pages()) == 2, lambda: self.situation())
        name, url = self.clean()
        self.done(f"{INTERFACE}.Navigate", url)
        self.painted(name)
        wait_until(lambda: self.frame.page().address == url, lambda: self.situation())

    def test_a_flood_of_windows_ends_at_a_number_that_can_be_used(self):
        for _ in range(MOST_WINDOWS - 1):
            self.done(f"{INTERFACE}.NewWindow")
        for _ in range(3):
            self.assertIn("too many windows", self.refused(f"{INTERFACE}.NewWindow"))
        self.assertEqual(MOST_WINDOWS, len(self.frame.pages()))

    def test_wrong_calls_are_answered_and_change_nothing(self):
        url = self.visit()
        for words in ((f"{INTERFACE}.Navigate",), (f"{INTERFACE}.Navigate", "a", "b"), (f"{INTERFACE}.NewWindow", "a"),
                      (f"{INTERFACE}.Quit",), (f"{INTERFACE}.SetVisible", "false"),
                      ("org.freedesktop.DBus.Properties.Set", INTERFACE, "Visible", "<'false'>"),
                      ("org.freedesktop.DBus.Properties.Set", INTERFACE, "Filter", "<false>"),
                      ("org.freedesktop.DBus.Properties.Get", INTERFACE, "ParentPassword")):
            with self.subTest(words):
                self.assertIn("rror", self.refused(*words))
        self.assertEqual(url, self.page.address)
        self.assertEqual(1, len(self.frame.pages()))

    def test_the_frame_hides_and_comes_back_with_its_pages(self):
        url = self.visit()
        self.assertEqual("(<true>,)", self.visible())
        self.visible(False)
        wait_until(lambda: self.desk.windows() == [], "no window shows")
        self.assertEqual("(<false>,)", self.visible())
        self.visible(True)
        self.find_again()
        self.assertEqual(url, self.page.address)
        self.assertEqual("(<true>,)", self.visible())
        with self.subTest("and judges as before"):
            _, bad = self.forbidden()
            self.done(f"{INTERFACE}.Navigate", bad)
            self.wait_blocked()

    def test_no_window_is_open(self):
        self.page.close()
        self.assertIn("Number91", self.refused(f"{INTERFACE}.Navigate", "http://127.0.0.1:1/"))
        self.done(f"{INTERFACE}.NewWindow")
        wait_until(lambda: len(self.frame.pages()) == 1, lambda: self.situation())


class HandingOver(AutomationTest):
    """kivandra-open beside the running program."""

    def open(self, *words, seconds=20):
        opener = HandOver(self.home, words)
        self.addCleanup(opener.kill)
        self.assertEqual(0, opener.wait_end(seconds), opener.voice())
        return opener.voice()

    def test_an_address_opens_in_the_running_program(self):
        name, url = self.clean()
        self.assertEqual("", self.open(url))
        self.painted(name)

    def test_with_no_window_open_it_asks_for_one(self):
        self.page.close()
        name, url = self.clean()
        self.assertEqual("", self.open(url))
        self.painted(name)
        self.assertEqual(1, len(self.frame.pages()))

    def test_a_forbidden_page_is_refused_and_goes_to_no_other_browser(self):
        name, url = self.forbidden()
        self.assertEqual("", self.open(url))
        self.wait_blocked()
        self.assert_never_painted(name)

    def test_a_hidden_frame_shows_again(self):
        self.visible(False)
        wait_until(lambda: self.desk.windows() == [], "no window shows")
        name, url = self.clean()
        self.assertEqual("", self.open(url))
        self.painted(name)
        self.find_again()

    def test_a_file_is_handed_over_as_an_address_and_judged(self):
        file = self.home.path / "two words#1.html"
        file.write_text(pages.html("from-a-file"))
        self.visit()
        self.assertEqual("", self.open(str(file)))
        self.wait_blocked()

    def test_odd_words_open_nothing(self):
        url = self.visit()
        self.assertIn("Usage", self.open("--help"))
        for words in (("--version",), ("a", "b")):
            opener = HandOver(self.home, words)
            self.addCleanup(opener.kill)
            self.assertEqual(2, opener.wait_end())
            self.assertIn("Usage", opener.voice())
        self.assertEqual("", self.open())
        self.assertEqual(url, self.page.address)


if __name__ == "__main__":
    unittest.main()
