# SPDX-License-Identifier: GPL-3.0-or-later
"""What the parent reads: the day's record in its window, good files and spoilt ones, and the pages behind its links."""

import datetime
import unittest

from harness import answers, pages, parent, processes
from harness.case import BrowsingTest, display
from harness.waiting import stays_true, wait_until

ANSWER_SECONDS = 2.0
QUIET_SECONDS = 0.5
FIRST_LINK = (230, 22)  # pixels from the record's left top into the first link behind a short title


class RecordTest(BrowsingTest):
    settings = {"R_N": "1"}
    panel = None

    def setUp(self):
        self.hands.front(self.frame.number)
        super().setUp()
        if not (type(self).panel and self.panel.open()):
            type(self).panel = parent.open_panel(self.desk, self.frame)
        self.today = datetime.date.today()

    def log(self):
        """Path of today's log."""
        day = self.today
        return self.home.path / "data" / "kivandra" / "21" / f"{day.day}{day.month}{day.year}.rtf"

    def visit(self, *arguments, **options):
        self.hands.front(self.frame.number)
        return super().visit(*arguments, **options)

    def open_day(self, day=None):
        """Clicks a day of the calendar's month; gives the viewer."""
        self.panel.pick_day(day or self.today.day)
        return self.viewer()

    def viewer(self):
        return self.desk.window_with(parent.RECORD)

    def record(self, viewer):
        return viewer.find(parent.RECORD)

    def leave(self, viewer):
        self.hands.front(viewer.number)
        viewer.press("OK")
        wait_until(lambda: not viewer.open(), "the viewer closes")

    def bare_window(self, known):
        """The window of a page without address row that opened besides the known ones."""
        return wait_until(lambda: next((each for each in self.desk.windows() if each.node not in known), None),
                          "a window for the page opens")


class Links(RecordTest):
    def turning(self):
        """A clean page that is forbidden from `turn` on; its name, address and `turn`."""
        name, turned = self.name("turns"), []
        url = self.server.serve(f"/{name}", answers.chosen_by(lambda _: answers.page(
            pages.html(name + "-later", pages.link("/elsewhere", 'target="_blank" onclick="fetch(\'/clicked\')"'),
                       text=f"about {pages.WORD}") if turned else pages.html(name))))
        return name, url, lambda: turned.append(True)

    def test_a_link_of_the_day_opens_unfiltered_in_a_bare_window(self):
        self.server.serve("/clicked", answers.page(""))
        name, url, turn = self.turning()
        self.hands.front(self.frame.number)
        self.page.go(url)
        self.painted(name)
        wait_until(lambda: self.log().exists() and url in self.log().read_text(), "the visit is recorded")
        turn()
        viewer = self.open_day()
        day = self.today
        self.assertEqual(f"Navigation captured on {day.day}/{day.month}/{day.year}", viewer.caption)
        record = self.record(viewer)
        wait_until(lambda: f" ->{name} URL {url}  " in record.text, lambda: record.text[:300])
        known = [each.node for each in self.desk.windows()]
        self.hands.front(viewer.number)
        left, top, _, _ = record.extents()
        x, y, _, _ = self.hands.place(viewer.number)
        place = (x + left + FIRST_LINK[0], y + top + FIRST_LINK[1])
        with self.subTest("a right click does nothing"):
            self.hands.click(*place, button=3)
            stays_true(lambda: len(self.desk.windows()) == len(known), "no window opens", QUIET_SECONDS)
        self.hands.click(*place)
        self.painted(name + "-later")
        bare = self.bare_window(known)
        wait_until(lambda: bare.caption == name + "-later", lambda: bare.caption)
        left, top, width, height = self.hands.place(bare.number)
        middle = (left + width // 2, top + height // 2)
        wait_until(lambda: display().pixel(*middle) == pages.CLEAN_COLOUR, "the page is painted in that window")
        with self.subTest("not judged, not recorded"):
            self.assertEqual(1, len([each for each in self.server.asked(f"/{name}")][2:]))
            self.assertNotIn(name + "-later", self.log().read_text())
            self.assertFalse(self.frame.blocked())
        with self.subTest("a link that wants a new window does nothing"):
            self.hands.front(bare.number)
            before = len(self.desk.windows())
            self.hands.click(*middle)
            self.server.wait_asked("/clicked")
            stays_true(lambda: len(self.desk.windows()) == before and not self.server.asked("/elsewhere"),
                       "nothing opens", QUIET_SECONDS)
        with self.subTest("its status stands in the frame until it is left"):
            status = lambda: [node for node in self.frame.node.walk() if node.role == "label"
                              and node.name and "/elsewhere" in node.name]
            self.hands.move(middle[0] + 9, middle[1] + 9)
            wait_until(status, "the frame shows the link's address")
            self.hands.front(self.frame.number)
            wait_until(lambda: not status(), "the text goes")
        with self.subTest("the second link goes to the same window, by keyboard"):
            self.hands.front(viewer.number)
            wait_until(lambda: self._focus(record), "the record has the keyboard")
            times = self.server.times_asked(pages.mark(name + "-later"))
            self.hands.key("ctrl+Home")
            self.hands.key("Tab")
            self.hands.key("Return")
            self.server.wait_asked(pages.mark(name + "-later"), times + 1)
            self.assertEqual(before, len(self.desk.windows()))
        with self.subTest("another day is not picked while the viewer is open"):
            self.panel.front()
            other = 16 if self.today.day == 15 else 15
            caption = viewer.caption
            self.open_day(other)
            self.assertEqual(caption, viewer.caption)
        bare.close()
        wait_until(lambda: not bare.open(), "the page's window closes")
        self.leave(viewer)
        with self.subTest("a day without a record is an empty window"):
            viewer = self.open_day(other)
            self.assertEqual(f"Navigation captured on {other}/{day.month}/{day.year}", viewer.caption)
            self.assertEqual("", self.record(viewer).text)
            self.leave(viewer)

    def _focus(self, node):
        if not node.focused:
            self.hands.key("Tab")
        return node.focused


class SpoiltRecords(RecordTest):
    def watch(self, look):
        """Asks the program until `look` has an answer. Gives it, and how much of the processor the program has had in
        the slowest round of questions: what else the machine does counts for nothing."""
        slowest = 0.0

        def once():
            nonlocal slowest
            before = processes.processor_seconds(self.program.pid)
            self.assertTrue(self.frame.caption)
            answer = look()
            slowest = max(slowest, processes.processor_seconds(self.program.pid) - before)
            return answer
        answer = wait_until(once, lambda: f"the record shows; slowest round {slowest:.1f} s:\n{self.desk.outline()}")
        return answer, slowest

    def open_watched(self):
        """Picks today and waits for its record; gives the viewer, its record and the slowest round."""
        self.panel.pick_day(self.today.day)

        def look():
            found = next((each for each in self.desk.windows() if each.caption.startswith("Navigation captured")), None)
            return found and found.find(parent.RECORD) and found
        viewer, slowest = self.watch(look)
        return viewer, self.record(viewer), slowest

    def test_the_window_lives_and_shows_what_it_can(self):
        self.panel.tick("Record Navigation", False)
        path = self.log()
        path.parent.mkdir(exist_ok=True)
        entry = " ->A page URL http://example.org/one  "
        good = "{\\rtf1\\ansi " + entry + "LogURL}"
        # The file's bytes, and how its record begins; none: nothing is shown.
        rows = {
            "empty": (b"", ""),
            "cut off": (good[:-20].encode(), " ->A page URL http://exam"),
            "binary": (bytes(range(256)) * 512, ""),
            "no rich text": (b"->plain text URL http://example.org/", ""),
            "braces without end": (b"{\\rtf1 " + b"{" * 500000, ""),
            "50 MB": (b"{\\rtf1\\ansi " + entry.encode() * ((50 << 20) // len(entry)) + b"LogURL}", entry * 3),
        }
        for row, (data, start) in rows.items():
            with self.subTest(row):
                path.write_bytes(data)
                viewer, record, opening = self.open_watched()
                try:
                    _, reading = self.watch(lambda record=record, start=start: record.first(100) == start[:100])
                    self.assertLess(max(opening, reading), ANSWER_SECONDS)
                finally:
                    self.leave(viewer)  # while it is open no other record can be
                    path.unlink()
        with self.subTest("a folder in its place"):
            path.mkdir()
            viewer, record, opening = self.open_watched()
            self.assertEqual("", record.text)
            self.assertLess(opening, ANSWER_SECONDS)
            self.leave(viewer)
            path.rmdir()


if __name__ == "__main__":
    unittest.main()
