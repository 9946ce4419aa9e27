# SPDX-License-Identifier: GPL-3.0-or-later
"""What every desktop test starts from: the program past its first run, with the filter on."""

import atexit
import contextlib
import itertools
import os
import pathlib
import time
import unittest

from . import answers, pages, processes
from .accessibility import Accessibility, Gone
from .display import Display
from .hands import Hands
from .program import BINARY, Home, Program
from .server import Server
from .waiting import PATIENCE, wait_until
from .windows import BLOCKED, FRAME_ADDRESS, Frame, Window
from .world import World

PASSWORD = "Seed 4 you"
UNFILTERED_SECONDS = 5.0  # after the frame's load the program itself lets everything pass for so long
CLOSING_SECONDS = 3.0     # the frame stays for its closing sound
START_SECONDS = 60.0

processes.become_subreaper()
_display = None


def display():
    """The display of this test file, made at its first use."""
    global _display
    if _display is None:
        _display = Display()
        atexit.register(_display.close)
    return _display


class Desk:
    """A display with its bus, and the windows of one program on it."""

    def __init__(self, program):
        self.program = program
        self.display = display()
        self.hands = Hands(self.display, self._answered)
        self._bus = Accessibility(self.display.bus_address)
        self._root = None

    def _answered(self):
        """Waits until the program answers a question: it has seen what came before, then."""
        try:
            self._root = self._root or self._bus.application(self.program.pid)
            if self._root:
                self._root.children()
        except Gone:
            pass  # a program that ends sees nothing more

    def windows(self):
        """Every top window that is shown, the oldest first."""
        try:
            root = self._bus.application(self.program.pid)
            nodes = [node for node in root.children() if node.shown] if root else []
            named = [(node, node.name) for node in nodes]
        except Gone:
            return []
        numbers = self.hands.windows(self.program.pid)
        found = []
        for node, name in named:
            match = next((entry for entry in numbers if entry[1] == name), None)
            if match:
                numbers.remove(match)
                found.append(Window(self.hands, node, match[0]))
        return found

    def window_with(self, name, role=None, seconds=START_SECONDS):
        """The top window that has a control of this name, as soon as there is one; it gets the keyboard."""
        def look():
            for window in self.windows():
                if window.find(name, role):
                    return window
            return None
        window = wait_until(look, lambda: f"a window with {name}; the program says:\n{self.program.voice()[-2000:]}"
                                          f"\nand shows:\n{self.outline()}", seconds)
        self.hands.focus(window.number)
        return window

    def frame(self, seconds=START_SECONDS):
        window = self.window_with(FRAME_ADDRESS, seconds=seconds)
        return Frame(window.hands, window.node, window.number)

    def outline(self):
        return "\n".join(window.node.outline() for window in self.windows())

    def close(self):
        self._bus.close()


def first_run(desk, password=PASSWORD):
    """Takes a program through its first run."""
    window = desk.window_with("Password")
    window.field("Password").write(password)
    window.field("Re-enter Password").write(password)
    window.press("Ok")


def seed():
    """Folder of a home whose first run is over; made once a test run and copied by every test."""
    given = os.environ.get("KIVANDRA_DESKTOP_SEED")
    if given:
        return pathlib.Path(given)
    home = Home()
    program = Program(display(), home)
    desk = Desk(program)
    try:
        first_run(desk)
        desk.frame()
        wait_until(lambda: home.settings.read("FirstTime") == "1", "the first start is noted")
    finally:
        desk.close()
        program.kill()
    os.environ["KIVANDRA_DESKTOP_SEED"] = str(home.path)
    atexit.register(home.remove)
    return home.path


class LoudTest(unittest.TestCase):
    """A test of a program that may not complain: a warning of the toolkit fails the test that caused it."""

    def start(self, home=None, arguments=(), environment=(), binary=BINARY):
        """Starts a program that ends with this test; gives its desk."""
        home = home or self.new_home()
        program = Program(display(), home, arguments, environment, binary)
        desk = Desk(program)
        self.addCleanup(self._end, program, desk)
        return desk

    def new_home(self, like=None):
        home = Home(like)
        self.addCleanup(home.remove)
        return home

    def _end(self, program, desk):
        complaints = [] if program.killed else program.complaints()
        desk.close()
        program.kill()
        self.assertEqual([], complaints, "the program complains")


class Session:
    """One program past its first run and past its first unfiltered seconds, with a server for its pages."""

    def __init__(self, settings, environment, prepare, world):
        self.numbers = itertools.count(1)
        self.never_painted = []
        self._ends, self._run = contextlib.ExitStack(), contextlib.ExitStack()
        unittest.addModuleCleanup(self.end)
        self.server = World() if world else Server()
        self._environment = {**(self.server.environment if world else {}), **environment}
        self._ends.callback(self.server.close)
        self.home = Home(like=seed())
        self._ends.callback(self.home.remove)
        for name, value in settings.items():
            self.home.settings.write(name, value)
        if prepare:
            prepare(self.home)
        self._ends.callback(lambda: self._run.close())
        self._open()

    def _open(self):
        """Starts the program and waits until the filter judges."""
        self._run = contextlib.ExitStack()
        self.program = Program(display(), self.home, environment=self._environment)
        self._run.callback(self.program.kill)
        self.desk = Desk(self.program)
        self._run.callback(self.desk.close)
        self.hands = self.desk.hands
        self.frame = self.desk.frame()
        filtered_from = time.monotonic() + UNFILTERED_SECONDS
        wait_until(lambda: time.monotonic() > filtered_from, "the unfiltered seconds are over", START_SECONDS)
        self._run.callback(self._close)

    def restart(self):
        """Closes the program as a person does and starts it again in the same home."""
        self._run.close()
        self._open()

    def end(self):
        """Ends the program and the server, once."""
        self._ends.close()

    def _close(self):
        """Closes the program as a person does and looks at what is left."""
        self.hands.focus(self.frame.number)
        self.frame.close()
        code = self.program.wait_end(CLOSING_SECONDS + 10)
        self.program.wait_nothing_left()
        late = [name for name in self.never_painted if self.server.asked(pages.mark(name))]
        if late:
            raise AssertionError(f"painted after all: {late}")
        if code != 0:
            raise AssertionError(f"the program ended with {code}:\n{self.program.voice()[-2000:]}")


class Current:
    """The one session of this file that runs; two would lie over each other on the display."""

    session = None
    wanted = None

    @classmethod
    def get(cls, settings, environment, prepare, world):
        wanted = (settings, environment, prepare, world)
        if cls.session is None or cls.wanted != wanted or not cls.session.program.runs():
            ended, cls.session = cls.session, None
            if ended:
                ended.end()
            cls.session, cls.wanted = Session(*wanted), wanted
        return cls.session


class BrowsingTest(LoudTest):
    """Tests of a running program. Neighbouring classes that want the same settings and environment share one start; a
    program that has died is started anew, so that one failure does not hide the rest."""

    settings = {}
    environment = {}
    prepare = None  # staticmethod: what else is done to the home before the first start
    world = False  # whether the server plays every host of the web, not this machine's alone

    @classmethod
    def setUpClass(cls):
        cls._take(Current.get(cls.settings, cls.environment, cls.prepare, cls.world))

    @classmethod
    def _take(cls, session):
        cls.numbers, cls.never_painted = session.numbers, session.never_painted
        cls.server, cls.home = session.server, session.home
        cls.program, cls.desk, cls.hands, cls.frame = session.program, session.desk, session.hands, session.frame

    def restart(self):
        """Closes the program and starts it again in the same home."""
        self._no_complaints()
        Current.session.restart()
        self._take(Current.session)
        self._heard = 0
        self.page = self.frame.page()

    def setUp(self):
        self._heard = len(self.program.voice())
        self.addCleanup(self._no_complaints)
        self.assertTrue(self.program.runs(), "the program lives")
        self.hands.focus(self.frame.number)
        self._close_other_pages()

    def _no_complaints(self):
        self.assertTrue(self.program.runs(), f"the program lives; it said:\n{self.program.voice()[-2000:]}")
        self.assertFalse(display().shows(pages.FORBIDDEN_COLOUR), "no forbidden page is on the screen")
        self.assertEqual([], self.program.complaints(self._heard), "the program complains")

    def _close_other_pages(self):
        for page in reversed(self.frame.pages()[1:]):  # the one in front first
            page.close()
        if not self.frame.pages():
            self.frame.new_page()
        self.page = self.frame.page()

    # Pages.

    def name(self, what="page"):
        """A name that no other page of this session has."""
        return f"{what}-{next(self.numbers)}"

    def clean(self, body="", head="", path=None, host="127.0.0.1"):
        """Serves a clean page; gives its name and its address."""
        name = self.name("clean")
        return name, self.server.serve(path or f"/{name}", answers.page(pages.html(name, body, head)), host)

    def forbidden(self, host="127.0.0.1", **answer):
        """Serves a page that must be refused for its text; gives its name and its address."""
        name = self.name("refused")
        self.never_painted.append(name)
        return name, self.server.serve(f"/{name}", answers.page(pages.forbidden(name), **answer), host)

    def forbidden_address(self, host="127.0.0.1"):
        """Serves a page whose address alone must be refused. The word stands inside a longer one there: a clean page
        may name the address, since a page's text is searched for whole words."""
        name = f"x{pages.WORD}x-{next(self.numbers)}"
        self.never_painted.append(name)
        return name, self.server.serve(f"/{name}", answers.page(pages.html(
            name, colour=pages.FORBIDDEN_COLOUR)), host)

    def visit(self, body="", head="", host="127.0.0.1"):
        """Goes to a new clean page and waits until it is painted."""
        name, url = self.clean(body, head, host=host)
        self.page.go(url)
        self.painted(name)
        self.assertNotEqual(BLOCKED, self.frame.caption)
        return url

    def visit_and_click(self, body=""):
        """Visits a page and clicks into it; the page has heard of the click before this ends."""
        heard = f"/heard-{next(self.numbers)}"
        url = self.visit(body + pages.script(f"addEventListener('click', () => fetch('{heard}'))"))
        self.page.click_page()
        self.server.wait_asked(heard)
        return url

    def painted(self, name, seconds=PATIENCE):
        try:
            return self.server.wait_asked(pages.mark(name), seconds=seconds)
        except AssertionError as error:
            raise AssertionError(f"{name} is painted: {error}; {self.situation()}") from None

    def wait_blocked(self, page=None, seconds=PATIENCE):
        """Waits until the frame says that a page was refused."""
        wait_until(lambda: self.frame.blocked(), lambda: f"the page is refused; {self.situation()}", seconds)
        page = page or self.page
        wait_until(lambda: page.address == "", lambda: f"the address box is emptied; {self.situation()}")

    def situation(self):
        return (f"caption {self.frame.caption!r}, pages {[(page.caption, page.address) for page in self.frame.pages()]},"
                f" asked {[(each.method, each.path[:80]) for each in self.server.asked()[-8:]]}")

    def assert_never_painted(self, name):
        self.assertEqual([], self.server.asked(pages.mark(name)), f"{name} is never painted")
