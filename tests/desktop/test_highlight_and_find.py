# SPDX-License-Identifier: GPL-3.0-or-later
"""Words on a page: the tool that paints them yellow, and the bar that finds them."""

import unittest
import urllib.parse

from harness import drop_downs, pages
from harness.case import BrowsingTest
from harness.waiting import stays_true, wait_until

YELLOW = (255, 255, 0)
FIND_FIELD = "Words to find on this page"
QUIET_SECONDS = 0.5

# A page tells the server which words it wears on a coloured ground, whenever that changes.
TELL = pages.script(
    "onload = () => new MutationObserver(() => fetch('/worn-%s?' + encodeURIComponent([...document.querySelectorAll('span[style]')]"
    ".map(each => each.style.backgroundColor + ' ' + each.textContent).join('|'))))"
    ".observe(document.documentElement, {childList: true, subtree: true})")

# What stands on the page, and what of it is painted for the word "panda".
PLACES = {
    "in plain text, in any letters": ("<p>a panda, a PANDA</p>", ["panda", "PANDA"]),
    "inside a longer word": ("<p>pandas and a redpanda</p>", ["panda", "panda"]),
    "across tags": ("<p>a pa<b>nd</b><i>a</i> and a panda</p>", ["pa", "nd", "a", "panda"]),
}


class Words(BrowsingTest):
    def setUp(self):
        super().setUp()
        drop_downs.close_all(self.frame)

    def highlight(self, word):
        """Writes a word into the search box and chooses the tool by the keyboard. A click on the header of the tools would
        lead elsewhere, since the box holds text then."""
        box = self.frame.field("Search")
        self.frame.click_field(box)
        box.write(word)
        wait_until(lambda: box.text == word, "the word is written")
        tools = self.frame.find("Tools", "button")

        def reached():
            if not tools.focused:
                self.hands.key("Tab")
            return tools.focused
        wait_until(reached, "the keyboard reaches the tools")
        self.hands.key("Down")
        row = drop_downs.below(self.frame, self.frame.node).row("Highlight")
        wait_until(lambda: row.focused, "the first row has the keyboard")
        self.hands.key("Return")

    def test_a_word_turns_yellow_wherever_it_stands(self):
        for place, (text, painted) in PLACES.items():
            with self.subTest(place):
                drop_downs.close_all(self.frame)
                name = self.name("worn")
                self.visit(f"<div style='font-size:40px'>{text}</div>" + TELL % name)
                self.highlight("panda")
                asked = self.server.wait_asked(f"/worn-{name}")[-1]
                self.assertEqual("|".join("yellow " + each for each in painted), urllib.parse.unquote(asked.query))
                drop_downs.close_all(self.frame)
                wait_until(lambda: self.desk.display.shows(YELLOW), "yellow is on the screen")
                self.assertEqual(1, len(self.frame.pages()), "no other window opens")

    def test_a_word_that_is_not_there_changes_nothing(self):
        name = self.name("worn")
        self.visit("<p>a panda</p>" + TELL % name)
        self.highlight("penguin")
        stays_true(lambda: not self.server.asked(f"/worn-{name}"), "the page stays as it is", QUIET_SECONDS)

    def test_the_find_bar_opens_by_key_tool_and_menu_and_counts(self):
        self.visit("<p>one fish, two fish, red FISH, blue bird</p>")
        ways = {
            "the key": lambda: self.hands.key("ctrl+f"),
            "the tool": lambda: self.frame.click(self.frame.find("Find", "button")),
            "the menu": lambda: drop_downs.choose(self.frame, "Edit", "Find on this page..."),
        }
        for way, open_bar in ways.items():
            with self.subTest(way):
                self.page.click_page()
                open_bar()
                field = wait_until(lambda: self.page.node.find(FIND_FIELD), "the bar opens")
                wait_until(lambda: field.focused, "one can type at once")
                self.hands.type("fish")
                wait_until(lambda: self.page.node.find("3 found"), lambda: self.page.node.outline())
                self.hands.type("es")
                wait_until(lambda: self.page.node.find("Not on this page"), lambda: self.page.node.outline())
                self.hands.key("Escape")
                wait_until(lambda: not self.page.node.find(FIND_FIELD), "Escape closes the bar")


if __name__ == "__main__":
    unittest.main()
