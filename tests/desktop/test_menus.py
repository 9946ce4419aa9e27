# SPDX-License-Identifier: GPL-3.0-or-later
"""The entries of the menus and their keys, on the real page and in real dialogs."""

import itertools
import unittest
import urllib.parse

from harness import answers, drop_downs, pages
from harness.case import BrowsingTest
from harness.file_dialog import above
from harness.waiting import stays_true, wait_until

TEXT = "Twelve otters sleep"
FIELD = ('<textarea autofocus style="position:fixed;inset:0;width:100%%;height:100%%" '
         'oninput="fetch(\'/typed-%s?\' + encodeURIComponent(this.value))"></textarea>')
# Tells the server the size of the letters, at first and whenever it changes.
LETTERS = ('<div id="ten" style="width:10em">ten</div>' + pages.script(
    "new ResizeObserver(() => fetch('/letters-%s?' + parseFloat(getComputedStyle(ten).fontSize)))"
    ".observe(ten)"))

# Entry of the menu, its key if it has one, and the title of what opens.
DIALOGS = {
    ("File", "Open..."): "ctrl+o",
    ("File", "Save As..."): "ctrl+s",
    ("File", "Print..."): "ctrl+p",
    ("File", "Page Setup..."): None,
    ("File", "Page Properties"): None,
    ("File", "Skins"): None,
    ("View", "Content Advisor"): None,
}


class Menus(BrowsingTest):
    def setUp(self):
        super().setUp()
        drop_downs.close_all(self.frame)

    def test_entries_with_dots_open_real_dialogs_that_can_be_left(self):
        self.visit("<p>otters</p>")
        for path, key in DIALOGS.items():
            for way in ("menu", key):
                if way is None:
                    continue
                with self.subTest((path, way)):
                    self.page.click_page()
                    if way == "menu":
                        drop_downs.choose(self.frame, *path)
                    else:
                        self.hands.key(key)
                    dialog = above(self.desk, self.frame)
                    self.hands.key("Escape")
                    wait_until(lambda dialog=dialog: not dialog.open(), "Escape closes it")
                    stays_true(lambda: len(self.desk.windows()) == 1, "once is enough", 0.2)
                    self.hands.focus(self.frame.number)

    def test_print_preview_is_never_to_be_had(self):
        drop_downs.choose(self.frame, "File", "Print Preview")
        box = self.desk.window_with("The Print Preview Command is Currently Disabled or Not Available.")
        box.press("Ok")
        wait_until(lambda: not box.open(), "the box closes")

    def test_a_new_window_opens_on_the_home_page(self):
        drop_downs.choose(self.frame, "File", "New Browser Window...")
        wait_until(lambda: len(self.frame.pages()) == 2, lambda: self.situation())
        wait_until(lambda: self.frame.page().address == "http://kivandra.localhost:14505/", lambda: self.situation())

    def test_what_is_copied_from_a_page_is_pasted_into_a_field(self):
        self.visit_and_click(f"<p>{TEXT}</p>")
        self.hands.key("ctrl+a")
        self.hands.key("ctrl+c")
        name = self.name("field")
        self.visit_and_click(FIELD % name)
        self.hands.key("ctrl+v")
        typed = self.server.wait_asked(f"/typed-{name}")[-1]
        self.assertEqual(TEXT, urllib.parse.unquote(typed.query).strip())
        self.hands.key("ctrl+a")
        self.hands.key("ctrl+x")
        wait_until(lambda: self.server.asked(f"/typed-{name}")[-1].query == "", "the field is empty")

    def test_each_text_size_changes_the_letters_and_nothing_else(self):
        name = self.name("letters")
        self.visit(LETTERS % name)
        self.server.wait_asked(f"/letters-{name}")
        sizes = []
        for entry in ("Largest", "Larger", "Smaller", "Smallest", "Medium"):
            before = self.server.times_asked(f"/letters-{name}")
            drop_downs.choose(self.frame, "View", "Text Size", entry)
            sizes.append(float(self.server.wait_asked(f"/letters-{name}", before + 1)[-1].query))
        self.assertEqual([24, 20, 14, 12, 16], sizes)

    def test_text_size_by_the_tools(self):
        name = self.name("letters")
        self.visit(LETTERS % name)
        self.server.wait_asked(f"/letters-{name}")
        for entry, size in (("Largest", "24"), ("Medium", "16")):
            before = self.server.times_asked(f"/letters-{name}")
            drop_downs.open_tool(self.frame, "Tools").point("Text Size").click(entry)
            self.assertEqual(size, self.server.wait_asked(f"/letters-{name}", before + 1)[-1].query)

    def test_pictures_are_switched_off_and_on_and_the_page_comes_back_by_itself(self):
        name = self.name("gallery")
        picture = f"/picture-{name}"
        body = f'<img src="{picture}?%s" width="9" height="9" alt="">' + pages.script(f"fetch('/came-{name}')")
        numbers = itertools.count(1)
        url = self.server.serve(f"/{name}", answers.chosen_by(
            lambda request: answers.page(f"<!DOCTYPE html><title>{name}</title>{body % next(numbers)}")))
        self.page.go(url)
        self.server.wait_asked(f"/came-{name}")
        self.server.wait_asked(picture)
        for times, shown in ((2, False), (3, True)):
            with self.subTest(shown=shown):
                pictures = self.server.times_asked(picture)
                drop_downs.choose(self.frame, "View", "Enable / Disable Browser Images")
                self.server.wait_asked(f"/came-{name}", times)
                if shown:
                    self.server.wait_asked(picture, pictures + 1)
                else:
                    stays_true(lambda pictures=pictures: self.server.times_asked(picture) == pictures,
                               "no picture is asked for", 0.5)

    def test_the_side_bar_comes_and_goes_and_is_remembered(self):
        for shown in (True, False):
            drop_downs.choose(self.frame, "View", "Side Toolbar")
            wait_until(lambda shown=shown: bool(self.frame.find("Math", "button")) == shown, "the side bar changes")
            wait_until(lambda shown=shown: self.home.settings.read("Sidebar") == str(shown), "it is remembered")


if __name__ == "__main__":
    unittest.main()
