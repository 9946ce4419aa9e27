# SPDX-License-Identifier: GPL-3.0-or-later
"""The search tools: which address each asks for, as the network sees it."""

import unittest

from harness import drop_downs
from harness.case import BrowsingTest
from harness.waiting import stays_true, wait_until

SEARCH_BOX = "Search"
SITE = "http://www.example.com/animals/list.html"
WEB = "http://www.google.com/search?q="
FORWARDERS = "http://answers.localhost:14505"
QUIET_SECONDS = 0.3

# The way through the drop-downs, and the address for the text "red panda".
METHODS = {
    ("Search The Web", "Search The Web"): WEB + "red%20panda",
    ("Search This Site", "Search This Site"): WEB + "site:http://www.example.com+red%20panda",
    ("Search by Images", "Search by Images"):
        "http://www.google.com/images?hl=en&safe=off&q=red%20panda&site=images",
    ("Dictionary", "Dictionary"): FORWARDERS + "/cgi-bin/dict.pl?term=red%20panda&db=*",
    ("Stock  Quotes", "Yahoo! Quotes"): FORWARDERS + "/q?s=red%20panda&d=v1",
    ("Stock  Quotes", "MSN Quotes"): FORWARDERS + "/scripts/webquote.dll?ipage=qd&symbol=red%20panda",
}

# What a child may type, and how it stands in the address that goes out.
TEXTS = {
    "c&d": "c&d",
    "100% 'sure' + 1": "100%%20%27sure%27%20+%201",
    "\"red\" <b>": "%22red%22%20%3Cb%3E",
    "ñandú": "%C3%B1and%C3%BA",
    "пингвин 企鹅": "%D0%BF%D0%B8%D0%BD%D0%B3%D0%B2%D0%B8%D0%BD%20%E4%BC%81%E9%B9%85",
    "a#b": "a#b",
    "o" * 10000: "o" * 10000,
}


class Searching(BrowsingTest):
    world = True

    def setUp(self):
        super().setUp()
        drop_downs.close_all(self.frame)
        self.box = self.frame.field(SEARCH_BOX)

    def type(self, text):
        """Goes into the search box and leaves a text there."""
        self.frame.click_field(self.box)
        self.box.write(text)
        wait_until(lambda: self.box.text == text, lambda: f"the box holds {text[:80]!r}, not {self.box.text[:80]!r}")

    def methods(self, text):
        """Enter in the box opens the ways to search."""
        def opened():
            # Again if a page that arrives has taken the keyboard.
            self.type(text)
            self.hands.key("Return")
            return self.opens_soon()
        return drop_downs.DropDown(self.frame, wait_until(opened, "the ways to search are shown"))

    def opens_soon(self):
        try:
            return wait_until(lambda: drop_downs.opened(self.frame.node), "a drop-down", 1)
        except AssertionError:
            return None

    def search(self, text, *way):
        """Searches in a given way; gives the number of addresses that were asked for before."""
        before = len(self.server.addresses())
        shown = self.methods(text)
        for row in way[:-1]:
            shown = shown.point(row)
        shown.click(way[-1])
        return before

    def test_each_way_asks_for_its_address_in_one_more_window(self):
        self.page.go(SITE)
        self.server.wait_address(SITE)
        wait_until(lambda: self.page.address == SITE, lambda: self.situation())
        for count, (way, address) in enumerate(METHODS.items(), 2):
            with self.subTest(way):
                if way[0] == "Search This Site":
                    # The window in front says which site is meant.
                    front = self.frame.page()
                    front.go(SITE)
                    wait_until(lambda front=front: front.address == SITE, lambda: self.situation())
                before = self.search("red panda", *way)
                self.server.wait_address(address, before)
                wait_until(lambda count=count: len(self.frame.pages()) == count, lambda: self.situation())
                wait_until(lambda address=address: self.frame.page().address == address, lambda: self.situation())
        self.assertEqual(SITE, self.frame.pages()[0].address, "the window that was read stays as it was")

    def test_a_text_goes_out_as_it_was_typed(self):
        for text, sent in TEXTS.items():
            with self.subTest(text[:20]):
                self._close_other_pages()
                before = self.search(text, "Search The Web", "Search The Web")
                self.server.wait_address(WEB + sent.partition("#")[0], before)

    def test_an_empty_box_searches_nothing_and_says_nothing(self):
        before = len(self.server.addresses())
        for way in METHODS:
            with self.subTest(way):
                self.search("", *way)
                stays_true(lambda: len(self.frame.pages()) == 1 and len(self.desk.windows()) == 1,
                           "no window, no box", QUIET_SECONDS)
        self.assertFalse([each for each in self.server.addresses()[before:] if "google" in each or "answers" in each])

    def test_a_click_on_a_header_with_text_in_the_box_opens_the_sponsor_page(self):
        for header in ("Tools", "Help", "Search choices"):
            with self.subTest(header):
                self._close_other_pages()
                self.type("panda")
                drop_downs.open_tool(self.frame, header)
                wait_until(lambda: len(self.frame.pages()) == 2, lambda: self.situation())
                wait_until(lambda: (self.frame.page().address or "").endswith("/sponsor.asp"),
                           lambda: self.situation())
                drop_downs.close_all(self.frame)

    def test_going_into_the_box_empties_it(self):
        self.type("penguin")
        self.page.go(SITE)
        wait_until(lambda: self.page.address == SITE, lambda: self.situation())
        self.assertEqual("penguin", self.box.text)
        self.frame.click_field(self.box)
        wait_until(lambda: self.box.text == "", "the box is empty")


if __name__ == "__main__":
    unittest.main()
