# SPDX-License-Identifier: GPL-3.0-or-later
"""Every tool and every entry of the menus by keyboard alone, each with a name that can be read out."""

import unittest

from harness import drop_downs
from harness.case import BrowsingTest
from harness.waiting import NeverCameTrue, wait_until

TEXT_SIZES = ["Largest", "Larger", "Medium", "Smaller", "Smallest"]

# The key of each menu, and its entries; a pair is an entry that opens further ones.
MENUS = {
    "alt+f": ["New Browser Window...", "Open...", "Save As...", "Print...", "Print Preview", "Page Setup...",
              "Page Properties", "Skins", "Exit"],
    "alt+e": ["Cut", "Copy", "Paste", "Select All", "Find on this page..."],
    "alt+v": ["Side Toolbar", "Content Advisor", ("Text Size", TEXT_SIZES), "Enable / Disable Browser Images"],
    "alt+g": ["Go Back", "Go Forward"],
    "alt+a": ["Open Favourites", "Add to Favorites", "Organize Favorites"],
    "alt+t": ["Notepad", "Wordpad", ("Translation Services", ["World Lingo", "Systran"]), "Calculator",
              "System Sound Volume", "Parental Options Menu"],
    "alt+s": ["Have your site listed here....", "Disney", "Yahooligans", "Berits Best", "Sesame Street", "Barney!",
              "Childrens Television Workshop", "4Kids", "Family Internet"],
    "alt+h": ["Tip of the Day", "How to use the Kivandra...", "Update Kivandra", "On-Line Customer Support"],
}

HELP = "How to Use?"
SEARCHES = [(name, [name, HELP]) for name in
            ("Search The Web", "Search This Site", "Search by Images", "Dictionary")]

# The place from which Down or Enter opens a drop-down, and its rows.
DROP_DOWNS = {
    "Search": [*SEARCHES, ("Stock  Quotes", ["Yahoo! Quotes", "MSN Quotes"])],
    "Search choices": [*SEARCHES, ("Stock  Quotes", ["Yahoo! Quotes", "MSN Quotes"])],
    "Tools": [("Highlight", [HELP]), "Notepad", "Wordpad", "Calculator", "Volume", ("Text Size", TEXT_SIZES),
              ("Translation", ["World Lingo", "Systran"])],
    "Help": ["How to Use", "On-Line Support", "Advertise", "Banner Free Browser"],
}

# The two bars by Tab, the banner's page between them left out; Back, Forward and Lock rest at first.
FIRST_BAR = ["Refresh", "Stop", "Home", "Print"]
SECOND_BAR = ["Search", "Search choices", "Tools", "Find", "Address", "Show list", "Go", "Site Of The Month", "Help"]
SUBJECTS = ["Math", "Language", "Science", "Social Studies"]

AWAY = (1360, 760)  # beside the frame, in pixels

WORKED = ("button", "menu item", "menu item checkbox", "text box", "combo box", "check box", "tool bar")


class Keyboard(BrowsingTest):
    def setUp(self):
        super().setUp()
        drop_downs.close_all(self.frame)
        self.hands.move(*AWAY)  # a row under the pointer would get the keyboard

    def focused(self):
        return next((node for node in self.frame.node.walk() if node.focused), None)

    def focused_name(self):
        node = self.focused()
        return node.name if node else None

    def reach(self, name, key="Tab", most=30):
        """Presses a key until the control of this name has the keyboard."""
        for _ in range(most):
            if self.focused_name() == name:
                return
            self.press(key)
        raise AssertionError(f"{name} is not reached by {key}")

    def press(self, key):
        """Presses a key and waits for the keyboard to move; some keys move it nowhere."""
        before = self.focused()
        self.hands.key(key)
        try:
            wait_until(lambda: self.focused() != before, "the keyboard moves", 1)
        except NeverCameTrue:
            pass

    def walked(self, expected):
        """The rows that Down walks through, from the first to the last."""
        names = [self.focused_name()]
        for _ in expected[1:]:
            self.press("Down")
            names.append(self.focused_name())
        return names

    def walk(self, rows, back):
        """Walks through what has just opened, and through what opens beside it, from where `back` leads back."""
        names = [row if isinstance(row, str) else row[0] for row in rows]
        wait_until(lambda: self.focused_name() == names[0], lambda: f"{names[0]} has the keyboard, not "
                   f"{self.focused_name()}")
        self.assertEqual(names, self.walked(names))
        self.press("Down")
        self.assertEqual(names[0], self.focused_name(), "round and round")
        for row in rows:
            if isinstance(row, str):
                continue
            self.reach(row[0], "Down")
            self.press("Right")
            wait_until(lambda row=row: self.focused_name() == row[1][0], lambda: f"not {self.focused_name()}")
            self.assertEqual(row[1], self.walked(row[1]))
            back()
            self.reach(row[0], "Down")

    def test_every_menu_by_its_letter_and_every_entry_by_the_arrows(self):
        for key, rows in MENUS.items():
            with self.subTest(key):
                def opened(key=key):
                    drop_downs.close_all(self.frame)
                    self.press(key)
                opened()
                self.walk(rows, opened)
                drop_downs.close_all(self.frame)

    def test_f10_goes_into_the_menus_and_right_goes_on(self):
        self.hands.key("F10")
        firsts = [rows[0] for rows in MENUS.values()]
        for first in firsts:
            wait_until(lambda first=first: self.focused_name() == first, lambda first=first:
                       f"{first} has the keyboard, not {self.focused_name()}")
            self.press("Right")

    def test_every_drop_down_by_down_and_escape_gives_the_keyboard_back(self):
        for opener, rows in DROP_DOWNS.items():
            with self.subTest(opener):
                self.frame.click_field(self.frame.field("Search"))
                self.reach(opener)
                self.press("Down")
                self.walk(rows, lambda: self.press("Left"))
                self.press("Escape")
                # Who came from the search box goes on writing there.
                back = "Search" if opener.startswith("Search") else opener
                wait_until(lambda back=back: self.focused_name() == back, lambda: f"not {self.focused_name()}")
                self.assertIsNone(drop_downs.opened(self.frame.node))

    def test_every_tool_of_the_second_bar_by_tab(self):
        self.frame.click_field(self.frame.field("Search"))
        names = [self.focused_name()]
        for _ in SECOND_BAR[1:]:
            self.press("Tab")
            names.append(self.focused_name())
        self.assertEqual(SECOND_BAR, names)

    def test_every_tool_of_the_first_bar_by_tab(self):
        self.visit("<a href='#'>one</a>")
        self.page.click_page()
        self.press("ctrl+Tab")  # leads from the page to the window's own controls
        for name in FIRST_BAR:
            self.reach(name)

    def test_the_side_bar_s_tiles_by_tab(self):
        drop_downs.choose(self.frame, "View", "Side Toolbar")
        wait_until(lambda: self.frame.find("Math", "button"), "the side bar is shown")
        self.frame.click_field(self.frame.field("Search"))
        for name in SUBJECTS:
            self.reach(name)
        drop_downs.choose(self.frame, "View", "Side Toolbar")

    def test_enter_in_the_frame_s_address_leads_the_page_in_front(self):
        name, url = self.clean()
        field = self.frame.field("Address")
        self.frame.click_field(field)
        field.write(url)
        self.hands.key("Return")
        self.painted(name)
        wait_until(lambda: self.page.address == url, lambda: self.situation())

    def test_everything_that_can_be_worked_has_a_name(self):
        drop_downs.choose(self.frame, "View", "Side Toolbar")
        wait_until(lambda: self.frame.find("Math", "button"), "the side bar is shown")
        nameless = [(node.role, node.name, node.extents()) for node in self.frame.node.walk()
                    if node.role in WORKED and (not node.name.strip() or "Gtk" in node.name)]
        self.assertEqual([], nameless)
        drop_downs.choose(self.frame, "View", "Side Toolbar")


if __name__ == "__main__":
    unittest.main()
