# SPDX-License-Identifier: GPL-3.0-or-later
"""The log of visits: what stands in the day's file, which other programs can read, and a disk that is full."""

import json
import os
import pathlib
import resource
import subprocess
import unittest

from harness import answers, pages
from harness.case import BrowsingTest
from harness.waiting import stays_true, wait_until

QUIET_SECONDS = 0.5
ROOM = 2 << 20  # bytes, more than any other file of the program has


def other_reader(path):
    """What another program makes of a document, its own heading left out; it makes one blank of two."""
    read = subprocess.run(["unrtf", "--quiet", "--text", str(path)], stdout=subprocess.PIPE, check=True,
                          env={**os.environ, "LANG": "C.UTF-8"})
    return read.stdout.decode(errors="replace").split("-----------------\n", 1)[1]


class Log(BrowsingTest):
    settings = {"R_N": "1"}

    @property
    def folder(self):
        return self.home.path / "data" / "kivandra" / "21"

    def file(self):
        """Today's log."""
        found = wait_until(lambda: list(self.folder.glob("*.rtf")), "there is a log")
        self.assertEqual(1, len(found), found)
        return found[0]

    def entries(self):
        return other_reader(self.file()).rstrip("\n")

    def titled(self, title):
        """Visits a page with this title; gives its address."""
        name = self.name("titled")
        url = self.server.serve(f"/{name}", answers.page(
            pages.html(name, pages.script(f"document.title = {json.dumps(title)}"))))
        self.page.go(url)
        self.painted(name)
        return url

    def test_visits_stand_in_the_file_newest_first(self):
        first, second = self.visit(), self.visit()
        one, two = (url.rsplit("/", 1)[1] for url in (first, second))
        wait_until(lambda: f" ->{two} URL {second} " in self.entries(), lambda: self.entries())
        text = self.entries()
        self.assertIn(f" ->{one} URL {first} ", text)
        self.assertIn(f" ->{one} URL {first}  ", self.file().read_text())
        self.assertLess(text.index(two), text.index(one))
        self.assertTrue(text.endswith("LogURL"), text[-100:])
        self.assertEqual(0o600, self.file().stat().st_mode & 0o777)
        with self.subTest("a refused page does not"):
            name, url = self.forbidden()
            self.page.go(url)
            self.wait_blocked()
            self.assertNotIn(name, self.entries())
        with self.subTest("a visit of the same page again does, in front"):
            times = self.entries().count(f" URL {second} ")
            self.page.go(second)
            wait_until(lambda: self.entries().count(f" URL {second} ") > times, "there is one more entry")

    def test_titles_in_other_scripts_and_with_control_words_are_read_by_others(self):
        rows = ["{\\rtf1 \\b fat} \\par \\'e9 \\u955? }", "a\\\\b}{", "%s%n & < >"]
        for title in rows:
            with self.subTest(title):
                url = self.titled(title)
                wait_until(lambda url=url, title=title: f" ->{title} URL {url} " in self.entries(),
                           lambda: self.entries()[:500])
        for title in ("Löwe é ß", "Привет", "שלום", "漢字 の 本", "\U0001f989 owls"):
            with self.subTest(title):
                url = self.titled(title)
                wait_until(lambda url=url: f" URL {url} " in self.entries(), lambda: self.entries()[:500])
                units = title.encode("utf-16-le")
                words = [int.from_bytes(units[at:at + 2], "little", signed=True) for at in range(0, len(units), 2)]
                written = self.file().read_text()
                self.assertEqual([], [each for each in words if not 0 <= each < 128 and f"\\u{each}" not in written])

    def test_without_its_folder_nothing_is_kept_and_nothing_is_said(self):
        self.visit()
        self.file()
        aside = pathlib.Path(str(self.folder) + "-aside")
        self.folder.rename(aside)
        lost = self.visit()
        self.visit()
        self.assertFalse(self.folder.exists())
        aside.rename(self.folder)
        url = self.visit()
        wait_until(lambda: f" URL {url} " in self.entries(), "the next visit is recorded")
        self.assertEqual(1, len(self.desk.windows()))
        self.assertTrue(lost)

    def test_zz_on_a_full_disk_the_day_so_far_is_kept_and_the_child_sees_nothing(self):
        self.visit()
        # A day longer than any other file that the program writes, so that the limit meets the log alone.
        self.home.settings.write("R_N", "0")
        url = "http://example.org/" + "a" * ROOM

        def laid():
            self.file().write_text("{\\rtf1\\ansi  ->long URL " + url + "  LogURL}")
            return self.file().stat().st_size > ROOM
        wait_until(laid, "the long day lies there")
        self.home.settings.write("R_N", "1")
        recorded = self.visit()
        wait_until(lambda: recorded in self.file().read_text(), "the visit is recorded")
        self.assertGreater(self.file().stat().st_size, ROOM)
        before = self.file().read_text()
        limits = resource.prlimit(self.program.pid, resource.RLIMIT_FSIZE)
        resource.prlimit(self.program.pid, resource.RLIMIT_FSIZE, (ROOM, limits[1]))
        try:
            lost = self.visit()
            stays_true(self.program.runs, "the program lives", QUIET_SECONDS)
            self.assertEqual(1, len(self.desk.windows()))
            kept = self.file().read_text()
            self.assertIn(url, kept)
            self.assertGreaterEqual(len(kept), len(before))
            self.assertNotIn(lost, kept)
            self.assertEqual([self.file().name], sorted(each.name for each in self.folder.iterdir()))
        finally:
            resource.prlimit(self.program.pid, resource.RLIMIT_FSIZE, limits)
        again = self.visit()
        wait_until(lambda: again in self.file().read_text(), "the next visit is recorded")
        self.assertIn(url, self.file().read_text())


if __name__ == "__main__":
    unittest.main()
