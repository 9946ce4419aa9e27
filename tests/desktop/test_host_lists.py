# SPDX-License-Identifier: GPL-3.0-or-later
"""The parent's two lists, by keyboard: when an entry counts, what is refused, and lists that others have spoilt."""

import unittest

from harness import answers, pages, parent
from harness.case import BrowsingTest
from harness.settings import ALLOWED, DISALLOWED, REG_BINARY, REG_DWORD, REG_EXPAND_SZ, REG_SZ
from harness.waiting import wait_until

ALREADY = "This entry is already in the list."
FULL = "This list has reached its maximum storage potential."
ALLOWABLE, DISALLOWABLE = parent.LISTS
LONG = "l" * 10000
SLOTS = 100


def spoil(home):
    """A gap in one list; in the other values of other types and one far too long."""
    write = home.settings.write
    for slot, entry in {"0": "first-allowed.example", "2": "behind-the-gap.example"}.items():
        write(slot, entry, ALLOWED)
    write("1", "", ALLOWED)
    for slot, (value, kind) in enumerate([(b"\xab\xcd\xef\x01\x23", REG_BINARY), (b"\x15\xcd\x5b\x07", REG_DWORD),
                                          ("%nobody-has-this%.example", REG_EXPAND_SZ),
                                          (b"several.example\0others.example\0", REG_SZ)]):
        write(str(slot), value, DISALLOWED, kind)
    write("4", LONG, DISALLOWED)
    write("5", "dragonword", DISALLOWED)


class HostLists(BrowsingTest):
    prepare = staticmethod(spoil)
    panel = None

    def setUp(self):
        self.hands.front(self.frame.number)
        super().setUp()
        if not (type(self).panel and self.panel.open()):
            type(self).panel = parent.open_panel(self.desk, self.frame)

    def entries(self, section):
        """The list up to its first free slot."""
        found = []
        for slot in range(SLOTS + 1):
            text = self.home.settings.read(str(slot), section)
            if not text:
                break
            found.append(text)
        return found

    def clear(self, section, *entries):
        """Another program rewrites a list: the panel reads it anew at every step."""
        for slot in range(SLOTS + 1):
            self.home.settings.write(str(slot), entries[slot] if slot < len(entries) else "", section)

    def go(self, url):
        self.hands.front(self.frame.number)
        self.page.go(url)

    def test_a_spoilt_list_is_read_as_far_as_it_goes(self):
        with self.subTest("what stands behind values of other types and a long one still counts"):
            name = "dragonword-1"
            self.go(self.server.serve(f"/{name}", answers.page(pages.html(name))))
            self.wait_blocked()
            self.assert_never_painted(name)
        with self.subTest("other pages are shown"):
            self.visit()
        with self.subTest("adding by hand fills the gap"):
            self.panel.open_list(ALLOWABLE)
            self.hands.type("into-the-gap.example")
            self.hands.key("Return")
            wait_until(lambda: self.entries(ALLOWED) == ["first-allowed.example", "into-the-gap.example",
                                                         "behind-the-gap.example"], lambda: self.entries(ALLOWED))
        with self.subTest("removing one of such a list keeps the others"):
            field = self.panel.open_list(DISALLOWABLE)
            self.panel.write(field, LONG)
            self.hands.key("Delete")
            wait_until(lambda: len(self.entries(DISALLOWED)) == 5, lambda: self.entries(DISALLOWED))
            self.assertEqual("dragonword", self.entries(DISALLOWED)[4])
            # As texts from now on; each start has cut two bytes off the first.
            self.assertEqual(["ABCDEF", "123456789"], self.entries(DISALLOWED)[:2])

    def test_adding_and_removing_by_keyboard(self):
        self.clear(DISALLOWED)
        field = self.panel.open_list(DISALLOWABLE)
        self.panel.write(field, "")

        def add(text):
            self.hands.key("ctrl+a")
            self.hands.type(text)
            self.hands.key("Return")
        for number, text in enumerate((" otters.example ", "weasels.example", "Weasels.example")):
            add(text)
            wait_until(lambda number=number: len(self.entries(DISALLOWED)) == number + 1, f"{text} is stored")
            wait_until(lambda: field.text == "", "the field is emptied")
            self.assertTrue(field.focused)
        self.assertEqual([" otters.example ", "weasels.example", "Weasels.example"], self.entries(DISALLOWED))
        with self.subTest("one that is there"):
            add("weasels.example")
            parent.dismiss(self.desk, ALREADY)
            self.panel.front()
            self.assertEqual("weasels.example", field.text, "the text stays in the box")
            self.assertEqual(3, len(self.entries(DISALLOWED)))
        with self.subTest("nothing"):
            self.panel.write(field, "")
            self.hands.key("Return")
            parent.dismiss(self.desk, ALREADY)
            self.panel.front()
        with self.subTest("Delete takes the whole entry"):
            self.panel.write(field, " otters.example ")
            self.hands.key("Delete")
            wait_until(lambda: self.entries(DISALLOWED) == ["weasels.example", "Weasels.example"],
                       lambda: self.entries(DISALLOWED))
        with self.subTest("Delete of what is not there changes nothing and says nothing"):
            self.panel.write(field, "nobody.example")
            self.hands.key("Delete")
            wait_until(lambda: field.text == "", "the field is emptied")
            self.assertEqual(["weasels.example", "Weasels.example"], self.entries(DISALLOWED))
            self.assertEqual(2, len(self.desk.windows()))
        with self.subTest("an entry of 10,000 characters"):
            self.panel.write(field, LONG)
            self.hands.key("Return")
            wait_until(lambda: self.entries(DISALLOWED)[2:] == [LONG], "it is stored whole")
        with self.subTest("a full list"):
            self.clear(DISALLOWED, *(f"entry-{slot}.example" for slot in range(SLOTS - 1)))
            add("the-last.example")
            wait_until(lambda: self.home.settings.read("99", DISALLOWED) == "the-last.example", "it fills the list")
            add("one-too-many.example")
            parent.dismiss(self.desk, FULL)
            self.panel.front()
            self.assertEqual("one-too-many.example", field.text)
            add("entry-50.example")
            parent.dismiss(self.desk, ALREADY)
            self.panel.front()
            self.assertEqual("", self.home.settings.read("100", DISALLOWED))
        self.clear(DISALLOWED)

    def test_the_arrow_is_reached_and_pressed_by_keyboard(self):
        type(self).panel.leave()
        type(self).panel = parent.open_panel(self.desk, self.frame)
        field = self.panel.field(ALLOWABLE)
        self.assertFalse(self.panel.list_usable(ALLOWABLE))
        arrow = self.panel.find(f"-> {ALLOWABLE}")
        self.panel.front()
        self.panel.walk_to(arrow)
        self.hands.key("space")
        wait_until(lambda: self.panel.list_usable(ALLOWABLE) and field.focused, "the list can be written in")
        self.assertFalse(self.panel.list_usable(DISALLOWABLE))

    def test_zz_a_disallowed_entry_counts_at_once_and_an_allowed_one_from_the_next_start(self):
        self.clear(ALLOWED)
        self.clear(DISALLOWED)
        with self.subTest("disallowed"):
            name = "gnomeword-1"
            url = self.server.serve(f"/{name}", answers.page(pages.html(name)))
            self.go(url)
            self.painted(name)
            self.panel.open_list(DISALLOWABLE)
            self.hands.type("gnomeword")
            self.hands.key("Return")
            wait_until(lambda: self.entries(DISALLOWED) == ["gnomeword"], "it is stored")
            times = self.server.times_asked(f"/{name}")
            self.go(url)
            self.wait_blocked()
            self.assertEqual(times, self.server.times_asked(f"/{name}"))
        name = "giantword-1"
        url = self.server.serve(f"/{name}", answers.page(pages.html(name, text=f"about {pages.WORD} here")))
        with self.subTest("allowed, in this run its own copy blocks it"):
            self.panel.open_list(ALLOWABLE)
            self.hands.type("giantword")
            self.hands.key("Return")
            wait_until(lambda: self.entries(ALLOWED) == ["giantword"], "it is stored")
            self.go(url)
            self.wait_blocked()
            self.assertEqual([], self.server.asked(f"/{name}"))
        with self.subTest("a removed entry goes on acting"):
            field = self.panel.open_list(DISALLOWABLE)
            self.panel.write(field, "gnomeword")
            self.hands.key("Delete")
            wait_until(lambda: self.entries(DISALLOWED) == [], "it is removed")
            self.go(self.server.url("/gnomeword-1"))
            self.wait_blocked()
        self.panel.leave()
        type(self).panel = None
        self.restart()
        with self.subTest("from the next start on"):
            self.page.go(url)
            self.painted(name)
            self.page.go(self.server.url("/gnomeword-1"))
            self.server.wait_asked(pages.mark("gnomeword-1"), 2)


if __name__ == "__main__":
    unittest.main()
