# SPDX-License-Identifier: GPL-3.0-or-later
"""The banner, the tip of the day at the start and from the menu, and the way out by the menu."""

import time
import unittest

from harness import drop_downs, pages
from harness.case import CLOSING_SECONDS, BrowsingTest, LoudTest, seed
from harness.waiting import stays_true, wait_until

SITE = "http://kivandra.localhost:14505"
TIP_SECONDS = 1.5
OK = "Ok"


def tip_of(desk):
    return wait_until(lambda: next((each for each in desk.windows() if each.find(OK, "button")), None),
                      "the tip window opens")


class Banner(BrowsingTest):
    world = True

    def setUp(self):
        super().setUp()
        drop_downs.close_all(self.frame)

    def banner(self):
        return wait_until(lambda: self.frame.find("Banner"), "the banner is shown")

    def click_banner(self, part):
        """Clicks into the banner, `part` of its width from the left."""
        left, top, width, height = self.banner().extents()
        self.hands.click(left + int(width * part), top + height // 2)

    def test_the_banner_s_own_pages_stay_in_it(self):
        url = self.visit()
        before = len(self.server.addresses())
        self.click_banner(0.965)  # the arrow to the next one
        wait_until(lambda: any("/banners/banner" in each for each in self.server.addresses()[before:]),
                   "the next banner is asked for")
        stays_true(lambda: self.page.address == url, "the page stays", 0.5)

    def test_a_click_on_the_banner_leads_the_page_in_front_there(self):
        self.visit()
        before = len(self.server.addresses())
        self.click_banner(0.4)
        wait_until(lambda: (self.page.address or "").startswith(SITE), lambda: self.situation())
        self.assertEqual(1, len(self.frame.pages()), "no other window")
        self.assertNotIn("/banners", self.page.address)
        self.assertIn(self.page.address, self.server.addresses()[before:])

    def test_the_tip_comes_from_the_menu_once_and_goes_by_ok(self):
        drop_downs.choose(self.frame, "Help", "Tip of the Day")
        tip = tip_of(self.desk)
        self.hands.focus(self.frame.number)  # by the keyboard, since the tip may lie above the menu
        self.hands.key("alt+h")
        wait_until(lambda: drop_downs.opened(self.frame.node), "the menu opens")
        self.hands.key("Return")
        self.server.wait_address(SITE + "/tips/default.htm")
        self.assertEqual(2, len(self.desk.windows()))
        tip.press(OK)
        wait_until(lambda: not tip.open(), "the tip window closes")
        self.hands.focus(self.frame.number)

    def test_help_key_leads_to_the_help_once_and_the_page_hears_it_too(self):
        name = self.name("keys")
        self.visit_and_click(pages.script(f"onkeydown = event => fetch('/key-{name}?' + event.key)"))
        before = len(self.server.addresses())
        self.hands.key("F1")
        self.server.wait_address(SITE + "/help/", before)
        wait_until(lambda: self.page.address == SITE + "/help/", lambda: self.situation())
        stays_true(lambda: self.server.addresses()[before:].count(SITE + "/help/") <= 2, "it is asked for once", 0.5)
        self.assertLessEqual(self.server.times_asked(f"/key-{name}"), 1)

    def test_search_key_looks_up_the_marked_words_once(self):
        self.visit_and_click("<p>otter</p>")
        self.hands.key("ctrl+a")
        before = len(self.server.addresses())
        address = "http://search.yahoo.com/bin/search?p=otter"
        self.hands.key("F12")
        wait_until(lambda: any(each.startswith(address) for each in self.server.addresses()[before:]),
                   lambda: f"{self.server.addresses()[before:]}")
        self.server.wait_asked("http://search.yahoo.com/painted/elsewhere")
        stays_true(lambda: self.server.times_asked("http://search.yahoo.com/painted/elsewhere") == 1, "shown once", 0.5)


class Start(LoudTest):
    def test_the_tip_comes_at_the_start_and_the_menu_ends_the_program_after_its_farewell(self):
        home = self.new_home(like=seed())
        home.settings.write("T_OD", "1")
        desk = self.start(home)
        frame = desk.frame()
        tip = tip_of(desk)
        tip.press(OK)
        wait_until(lambda: not tip.open(), "the tip window closes")
        desk.hands.focus(frame.number)
        drop_downs.choose(frame, "File", "Exit")
        began = time.monotonic()
        self.assertEqual(0, desk.program.wait_end(CLOSING_SECONDS + 10))
        self.assertGreater(time.monotonic() - began, CLOSING_SECONDS - 1)
        desk.program.wait_nothing_left()


if __name__ == "__main__":
    unittest.main()
