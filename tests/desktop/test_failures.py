# SPDX-License-Identifier: GPL-3.0-or-later
"""Windows closed in the middle, engine processes killed: nothing unjudged is shown and the program lives."""

import os
import random
import signal
import threading
import unittest

from harness import answers, pages, processes
from harness.case import BrowsingTest
from harness.waiting import stays_true, wait_until

QUIET_SECONDS = 0.7


class WhileAPageIsJudged(BrowsingTest):
    def held(self):
        """A page whose judging takes until the event is set."""
        let_go = threading.Event()
        self.addCleanup(let_go.set)
        name = self.name("held")
        self.never_painted.append(name)
        return name, self.server.serve(f"/{name}", answers.held(let_go, answers.page(pages.html(name)))), let_go

    def assert_refused(self, name, let_go):
        let_go.set()
        stays_true(lambda: not self.server.asked(pages.mark(name)), "it is never shown", QUIET_SECONDS)
        self.assertEqual(1, self.server.times_asked(f"/{name}"), "the engine never asks for it")

    def test_a_closed_window_s_page_is_refused(self):
        other = self.frame.new_page()
        name, url, let_go = self.held()
        other.go(url)
        self.server.wait_asked(f"/{name}")
        other.close()
        self.assert_refused(name, let_go)
        self.visit()

    def test_a_page_that_is_stopped_is_refused(self):
        self.visit()
        name, url, let_go = self.held()
        self.page.go(url)
        self.server.wait_asked(f"/{name}")
        self.frame.press("Stop")
        self.assert_refused(name, let_go)
        self.visit()

    def test_a_page_that_a_newer_one_overtakes_is_dropped(self):
        self.visit()
        name, url, let_go = self.held()
        self.page.go(url)
        self.server.wait_asked(f"/{name}")
        self.visit()
        self.assert_refused(name, let_go)

    def test_the_last_page_window_may_close_while_it_is_judged(self):
        name, url, let_go = self.held()
        self.page.go(url)
        self.server.wait_asked(f"/{name}")
        self.page.close()
        self.assert_refused(name, let_go)
        self.assertEqual([], self.frame.pages())
        self.page = self.frame.new_page()
        self.visit()


class EngineProcesses(BrowsingTest):
    def test_a_killed_page_process_leaves_a_friendly_page_and_a_living_program(self):
        url = self.visit()
        victims = self.program.web_processes()
        self.assertTrue(victims)
        for pid in victims:
            os.kill(pid, signal.SIGKILL)
        wait_until(lambda: not set(victims) & set(self.program.web_processes()), "the killed processes are gone")
        self.assertTrue(self.program.runs())
        wait_until(lambda: self.page.caption and not url.endswith(self.page.caption), lambda: self.situation())
        self.visit()
        with self.subTest("and what follows is judged"):
            name, bad = self.forbidden()
            self.page.go(bad)
            self.wait_blocked()
            self.assert_never_painted(name)

    def test_a_page_process_killed_while_its_page_is_judged(self):
        self.visit()
        let_go = threading.Event()
        self.addCleanup(let_go.set)
        name = self.name("held")
        self.page.go(self.server.serve(f"/{name}", answers.held(let_go, answers.page(pages.html(name)))))
        self.server.wait_asked(f"/{name}")
        shown = self.page.caption
        for pid in self.program.web_processes():
            os.kill(pid, signal.SIGKILL)
        # The engine hears of it in its own time, and gives up what it was asked to load until then.
        wait_until(lambda: self.page.caption not in ("", shown), lambda: self.situation())
        let_go.set()
        self.painted(name)  # or it would take the address box from who types there
        self.visit()

    def test_a_killed_network_process_is_made_anew(self):
        self.visit()
        for pid in processes.descendants(self.program.pid):
            if "WebKitNetworkProcess" in processes.name_of(pid):
                os.kill(pid, signal.SIGKILL)
        wait_until(lambda: self.program.runs(), "the program lives")
        self.visit()


class ManyAtOnce(BrowsingTest):
    def test_verdicts_never_change_places_while_windows_open_and_close(self):
        """Navigations in several windows, clean and forbidden ones mixed, while windows close in the middle."""
        chance = random.Random(20261121)
        opened = [self.page] + [self.frame.new_page() for _ in range(4)]
        self.frame.tile()
        shown, refused = [], []
        for _ in range(60):
            page = chance.choice(opened)
            wait = chance.choice((0, 0, 0.05, 0.2))
            if chance.random() < 0.5:
                name, url = self.forbidden()
                self.server.serve(f"/{name}", answers.after(wait, answers.page(pages.forbidden(name))))
                refused.append(name)
            else:
                name, url = self.clean()
                self.server.serve(f"/{name}", answers.after(wait, answers.page(pages.html(name))))
                shown.append(name)
            page.go(url)
            if len(opened) < 6 and chance.random() < 0.1:
                opened.append(self.frame.new_page())
                self.frame.tile()
            elif len(opened) > 3 and chance.random() < 0.1:
                opened.pop(chance.randrange(1, len(opened))).close()
        name, url = self.clean()
        self.frame.page().go(url)
        self.painted(name)
        self.assertTrue(any(self.server.asked(pages.mark(each)) for each in shown))
        for each in refused:
            self.assert_never_painted(each)
            self.assertLessEqual(self.server.times_asked(f"/{each}"), 1)


if __name__ == "__main__":
    unittest.main()
