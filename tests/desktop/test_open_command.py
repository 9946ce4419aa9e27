# SPDX-License-Identifier: GPL-3.0-or-later
"""The desktop entry's command where no program runs yet."""

import socket
import subprocess
import tempfile
import unittest

from harness import answers, pages
from harness.case import LoudTest, display, first_run, seed
from harness.hand_over import HandOver, offered
from harness.server import Server
from harness.settings import HOME_PAGE
from harness.waiting import stays_true, wait_until

QUIET_SECONDS = 0.7


class Starting(LoudTest):
    """kivandra-open where no program runs."""

    def setUp(self):
        wait_until(lambda: not offered(), "no other program is on the bus")
        self.server = Server()
        self.addCleanup(self.server.close)

    def serve(self):
        return self.server.serve("/page", answers.page(pages.html("page")))

    def opens(self, home):
        """Hands a page over where no program runs; gives the command's run and the desk of the program."""
        opener = HandOver(home, [self.serve()])
        self.addCleanup(opener.kill)
        desk = opener.desk()
        self.addCleanup(desk.close)
        return opener, desk

    def test_a_first_run_waits_for_the_parent_and_then_shows_the_page(self):
        opener, desk = self.opens(self.new_home())
        desk.window_with("Password")
        stays_true(opener.runs, "it waits", QUIET_SECONDS)
        other = HandOver(opener.home, [self.server.serve("/other", answers.page(pages.html("other")))])
        self.addCleanup(other.kill)
        first_run(desk)
        # Both go to the one window, so the later one takes the place of the earlier.
        self.assertEqual([0, 0], [opener.wait_end(30), other.wait_end()])
        self.assertEqual("", other.voice())
        wait_until(lambda: self.server.asked(pages.mark("page")) or self.server.asked(pages.mark("other")),
                   "an address is shown")
        self.assertTrue(desk.program.runs(), "the program outlives the one that started it")

    def test_a_forbidden_page_handed_to_a_program_that_just_starts_is_refused(self):
        home = self.new_home(like=seed())
        home.settings.write("URL", self.serve(), HOME_PAGE)
        opener = HandOver(home, [self.server.serve("/bad", answers.page(pages.forbidden("bad")))])
        self.addCleanup(opener.kill)
        desk = opener.desk()
        self.addCleanup(desk.close)
        frame = desk.frame()
        self.assertEqual(0, opener.wait_end(30), opener.voice())
        self.server.wait_asked("/bad")
        wait_until(frame.blocked, lambda: f"the page is refused; caption {frame.caption!r}")
        stays_true(lambda: not self.server.asked(pages.mark("bad")) and not display().shows(pages.FORBIDDEN_COLOUR),
                   "nothing of it is painted", QUIET_SECONDS)

    def test_a_program_that_is_closed_before_ends_the_waiting(self):
        # The address is taken five seconds after the frame's load: a machine that is too busy to close it by then
        # has to close another.
        for _ in range(3):
            wait_until(lambda: not offered(), "no other program is on the bus")
            asked = self.server.times_asked("/page")
            opener, desk = self.opens(self.new_home(like=seed()))
            desk.frame().close()
            self.assertEqual(0, opener.wait_end(20))
            if self.server.times_asked("/page") == asked:
                break
        self.assertIn("closed before", opener.voice())
        self.assertEqual(asked, self.server.times_asked("/page"))

    def test_without_a_bus_the_program_browses_and_says_nothing(self):
        home = self.new_home(like=seed())
        url = self.serve()
        home.settings.write("URL", url, HOME_PAGE)
        for address in ("unix:path=/nowhere/bus", f"unix:path={self.silent_bus()}"):
            with self.subTest(address):
                asked = len(self.server.asked(pages.mark("page")))
                desk = self.start(home, environment={"DBUS_SESSION_BUS_ADDRESS": address})
                self.server.wait_asked(pages.mark("page"), asked + 1, seconds=20)
                self.assertEqual([], desk.program.complaints())
                opener = HandOver(home, [url], {"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nowhere/bus"})
                self.addCleanup(opener.kill)
                self.assertEqual(0, opener.wait_end())
                self.assertIn("no session bus", opener.voice())
                self.assertTrue(desk.program.runs())
                desk.program.kill()

    def test_a_bus_that_is_lost_takes_nothing_from_the_program(self):
        home = self.new_home(like=seed())
        # Several sites: the engine has a process in store, begun while there was a bus.
        other = None
        for host in ("three.localhost", "two.localhost", "one.localhost"):
            name = host.split(".", 1)[0]
            leads = f'<meta http-equiv="refresh" content="0; url={other}">' if other else ""
            other = self.server.serve(f"/{name}", answers.page(pages.html(name, head=leads)), host)
        url = self.server.serve("/before", answers.page(pages.html("before", head=pages.script(
            f"const look = setInterval(async () => {{ if ((await fetch('/lost')).ok) {{"
            f" clearInterval(look); location = '{other}' }} }}, 200)"))))
        self.server.serve("/lost", answers.page("", 404))
        home.settings.write("URL", url, HOME_PAGE)
        socket_path = home.path / "bus"
        bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1",
                                f"--address=unix:path={socket_path}"],
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.addCleanup(bus.stdout.close)
        self.addCleanup(bus.kill)
        desk = self.start(home, environment={"DBUS_SESSION_BUS_ADDRESS": bus.stdout.readline().strip()})
        self.server.wait_asked(pages.mark("before"), seconds=20)
        before = desk.program.web_processes()
        bus.kill()
        bus.wait()
        socket_path.unlink(missing_ok=True)
        self.server.serve("/lost", answers.page(""))
        self.server.wait_asked(pages.mark("three"))
        self.assertTrue(set(desk.program.web_processes()) - set(before), "another site has a process of its own")
        self.assertTrue(desk.program.runs())
        self.assertEqual([], desk.program.complaints())

    def silent_bus(self):
        """Path of a bus that takes every connection and never says a word."""
        path = tempfile.mkdtemp() + "/bus"
        listener = socket.socket(socket.AF_UNIX)
        self.addCleanup(listener.close)
        listener.bind(path)
        listener.listen(8)
        return path


if __name__ == "__main__":
    unittest.main()
