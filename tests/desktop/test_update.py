# SPDX-License-Identifier: GPL-3.0-or-later
"""The update check of the real program: a copy of its folder, and a product's site that has another version, none, or
is in trouble."""

import pathlib
import shutil
import tempfile
import threading
import unittest

from harness import answers, drop_downs, pages
from harness.case import CLOSING_SECONDS, LoudTest, seed
from harness.parent import dismiss
from harness.program import BINARY, ROOT
from harness.waiting import stays_true, wait_until
from harness.world import World

SITE = "http://kivandra.localhost:14505"
VERSION, PACKAGE, NOTICE = SITE + "/BrowserVer.dat", SITE + "/browser_update.exe", SITE + "/update/update1.html"
PRESENT = (ROOT / "site" / "BrowserVer.dat").read_text()

TOLD = "You have the most recent version of the Kivandra."
QUESTION = "A more recent version of Kivandra exists. Would you like to update it now?"
RESTART = ("Kivandra needs to be restarted.  Click OK.  When the update is complete, simply restart Kivandra!  "
           "Happy New Years 2002!")
FAILED = "Error when loading update file\r"
COMES_IN = "The update comes in"

UPDATER = """#!/bin/sh
cp "${0%/*}/browser_update.exe" "${0%/*}/witness.new" && echo "$#" >> "${0%/*}/witness.new"
mv "${0%/*}/witness.new" "${0%/*}/witness"
"""


def text(body):
    return answers.page(body, kind="text/plain")


class Update(LoudTest):
    def setUp(self):
        self.web = World()
        self.addCleanup(self.web.close)
        self.home = self.new_home(like=seed())
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="program-"))
        self.addCleanup(shutil.rmtree, self.folder)
        shutil.copytree(BINARY.parent, self.folder, ignore=shutil.ignore_patterns("test_*"), dirs_exist_ok=True)

    def start_program(self):
        self.desk = self.start(self.home, environment=self.web.environment, binary=self.folder / BINARY.name)

    def site_has(self, version, package=None):
        """What the product's site answers from here on, if not what lies in the program's own folder."""
        self.web.serve_address(VERSION, version)
        if package:
            self.web.serve_address(PACKAGE, package)

    def check(self):
        """Asks for the check in the menu."""
        self.desk.hands.front(self.frame.number)
        drop_downs.choose(self.frame, "Help", "Update Kivandra")

    def answer(self, button, frame_shown=True):
        """Answers the question."""
        box = self.desk.window_with(QUESTION)
        if not frame_shown:
            self.assertEqual([box.node], [each.node for each in self.desk.windows()], "the frame waits")
        self.desk.hands.front(box.number)
        box.press(button)
        wait_until(lambda: not box.open(), "the question goes")

    def told(self):
        wait_until(lambda: self.frame.caption == TOLD, lambda: f"the title tells it, not {self.frame.caption!r}")

    def visit(self, name):
        page = self.frame.page()
        page.go(self.web.serve("/" + name, answers.page(pages.html(name))))
        self.web.wait_asked(pages.mark(name))

    def notice(self):
        return self.desk.window_with(COMES_IN)

    def test_a_person_who_says_no_goes_on_and_may_ask_again_whatever_the_site_answers(self):
        self.site_has(text(PRESENT + "\n"))
        self.start_program()
        self.answer("No", frame_shown=False)
        self.frame = self.desk.frame()
        self.assertEqual("Kivandra 1.45", self.frame.caption)
        self.assertTrue(self.frame.page())
        for what, answer in {"a page": answers.page(pages.html("no-version")), "nothing at all": text("")}.items():
            with self.subTest(what):
                self.site_has(answer)
                self.check()
                self.answer("No")
        for what, answer, words in (("no such file", answers.page("none", 404), "The server answers 404."),
                                    ("a broken connection", answers.nothing(), "Connection terminated unexpectedly")):
            with self.subTest(what):
                self.site_has(answer)
                self.check()
                dismiss(self.desk, FAILED + words)
        self.assertEqual("Kivandra 1.45", self.frame.caption)
        with self.subTest("a site that takes its time holds up nobody"):
            come = threading.Event()
            self.site_has(answers.held(come, text(PRESENT)))
            self.check()
            self.visit("meanwhile")
            self.assertNotEqual(TOLD, self.frame.caption)
            come.set()
            self.told()
        self.a_broken_package()
        self.a_missing_updater()
        self.closing_while_the_site_is_silent()

    def a_broken_package(self):
        self.site_has(text("1.4.6"), answers.reset(b"half a package"))
        self.check()
        self.answer("Yes")
        box = self.desk.window_with(next(iter(self.broken())))
        self.desk.hands.front(box.number)
        box.press("Ok")
        wait_until(lambda: not box.open(), "the box goes")
        self.assertEqual([], self.frame.pages(), "the page window is gone")
        notice = self.notice()
        self.assertTrue(self.frame.open())
        self.assertEqual([], [each.name for each in self.folder.glob("browser_update.exe*")])
        self.desk.hands.key("Escape")
        wait_until(lambda: not notice.open(), "the notice closes")
        self.desk.hands.front(self.frame.number)
        self.frame.new_page()
        self.visit("afterwards")

    def broken(self):
        """The words of the box that tells of a failure, as soon as it is there."""
        return wait_until(lambda: [node.name for window in self.desk.windows() for node in window.node.walk()
                                   if node.name.startswith(FAILED)], "the failure is told")

    def a_missing_updater(self):
        self.site_has(text("1.4.6"), answers.page(b"MZ", kind="application/octet-stream"))
        self.check()
        self.answer("Yes")
        dismiss(self.desk, RESTART)
        dismiss(self.desk, f"{FAILED}Cannot start {self.folder}/update.exe: No such file or directory")
        self.assertTrue(self.desk.program.runs())
        self.desk.hands.front(self.frame.number)
        self.frame.new_page()

    def closing_while_the_site_is_silent(self):
        before = len(self.web.addresses())
        self.site_has(answers.silence())
        self.check()
        self.web.wait_address(VERSION, before)
        self.frame.close()
        self.assertEqual(0, self.desk.program.wait_end(CLOSING_SECONDS + 5))
        self.desk.program.wait_nothing_left()

    def test_a_person_who_says_yes_gets_the_package_and_the_updater_and_starts_again(self):
        package = bytes(range(256)) * 4000
        come = threading.Event()
        self.site_has(text("1.4.6"), answers.held(come, answers.page(package, kind="application/octet-stream")))
        updater = self.folder / "update.exe"
        updater.write_text(UPDATER)
        updater.chmod(0o755)
        self.start_program()
        self.answer("Yes", frame_shown=False)
        notice = self.notice()
        self.web.wait_address(PACKAGE)
        self.web.wait_address(NOTICE)
        self.assertEqual([notice.node], [each.node for each in self.desk.windows()], "the frame waits")
        come.set()
        dismiss(self.desk, RESTART)
        self.assertEqual(0, self.desk.program.wait_end(CLOSING_SECONDS - 1), "it ends at once")
        self.desk.program.wait_nothing_left()
        self.assertEqual(package + b"0\n", (self.folder / "witness").read_bytes())

        with self.subTest("the next start takes the package away, and waits for the site before the frame shows"):
            come.clear()
            before = len(self.web.addresses())
            self.site_has(answers.held(come, text(PRESENT)))
            self.start_program()
            self.web.wait_address(VERSION, before, 20)
            self.assertFalse((self.folder / "browser_update.exe").exists())
            stays_true(lambda: not self.desk.windows(), "no window shows", 0.3)
            come.set()
            self.frame = self.desk.frame()
            self.told()


if __name__ == "__main__":
    unittest.main()
