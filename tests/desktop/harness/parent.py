# SPDX-License-Identifier: GPL-3.0-or-later
"""The parent's side in a person's words: the prompt for the password, the panel behind it, its boxes and lists."""

from .accessibility import STATE_CHECKED
from .case import PASSWORD, BrowsingTest
from .waiting import wait_until
from .windows import Window

PANEL = "Parental Options Menu"
CHANGE_PASSWORD = "Change Password"
HELP_PAGE = "Page"
CALENDAR = "Choose any date to view recorded navigation"
RECORD = "Recorded navigation"
WORKED = ("button", "toggle button", "checkbox", "combo box", "text box")
LISTS = ("Allowable Domains", "Dis-allowed Domains")


class PanelTest(BrowsingTest):
    """A test of what the panel holds, with the panel open."""

    panel = None  # one for all classes: they share the program

    def setUp(self):
        self.hands.front(self.frame.number)
        super().setUp()
        if not (PanelTest.panel and PanelTest.panel.open()):
            PanelTest.panel = open_panel(self.desk, self.frame)


def prompt(desk, frame):
    """Asks for the panel by the keyboard; gives the window that wants the password."""
    desk.hands.front(frame.number)
    desk.hands.key("alt+t")
    wait_until(lambda: frame.find(PANEL), lambda: f"the menu opens in\n{frame.node.outline()}")
    desk.hands.key("p")
    return prompted(desk)


def prompted(desk):
    """The window that wants the password."""
    return desk.window_with("Password", "label")


def give(window, password):
    """Types a password by hand and presses Enter."""
    field = window.field("Password")
    window.hands.front(window.number)
    wait_until(lambda: field.focused, "the prompt has the keyboard")
    window.hands.key("ctrl+a")
    window.hands.type(password)
    window.hands.key("Return")


def open_panel(desk, frame, password=PASSWORD):
    """The road through the menu and the password to the panel."""
    window = prompt(desk, frame)
    give(window, password)
    return the_panel(desk, window)


def the_panel(desk, window):
    """The panel that opens when the prompt `window` is content."""
    wait_until(lambda: not window.open(), "the prompt closes")
    found = desk.window_with(CHANGE_PASSWORD)
    return Panel(found.hands, found.node, found.number)


def dismiss(desk, text, button="Ok"):
    """Waits for the message box with this text and closes it; gives its caption."""
    box = desk.window_with(text)
    caption = box.caption
    desk.hands.front(box.number)
    box.press(button)
    wait_until(lambda: not box.open(), "the box closes")
    return caption


class Panel(Window):
    """The parent's panel."""

    def front(self):
        self.hands.front(self.number)

    def ticked(self, name):
        return self.find(name, "checkbox").has_state(STATE_CHECKED)

    def tick(self, name, wanted=True):
        """Clicks a box until it is ticked, or clear."""
        self.front()
        if self.ticked(name) != wanted:
            self.click(self.find(name, "checkbox"))
        wait_until(lambda: self.ticked(name) == wanted, f"{name} is {'ticked' if wanted else 'clear'}")

    def open_list(self, name):
        """Presses the arrow beside a list; gives its text field, which has the keyboard."""
        self.front()
        self.press(f"-> {name}")
        field = self.field(name)
        wait_until(lambda: self.list_usable(name) and field.focused, f"{name} can be written in")
        return field

    def stops(self):
        """Every control at which Tab may stop."""
        return [node for node in self.node.walk() if node.role in WORKED or node.name == CALENDAR]

    def tab(self, stops):
        """Presses Tab and waits until the keyboard is elsewhere; gives the control that has it."""
        def focused():
            return next((node for node in stops if node.focused), None)
        before = focused()
        self.hands.key("Tab")
        return wait_until(lambda: next((node for node in [focused()] if node and node != before), None),
                          "Tab leads on")

    def walk_to(self, wanted):
        """Presses Tab until a control has the keyboard."""
        stops = self.stops()
        while not wanted.focused:
            self.tab(stops)

    def list_usable(self, name):
        """Whether the list is open for editing: the toolkit tells it of the list, not of the field in it."""
        return self.find(name, "combo box").usable

    def write(self, field, text):
        """Puts a text into a field in the place of what it holds."""
        field.write(text)
        wait_until(lambda: field.text == text, "the field holds the text")

    def pick_day(self, day):
        """Clicks a day of the month that the calendar shows."""
        self.front()
        numbers = [node for node in self.find(CALENDAR, "widget").walk()
                   if node.role == "label" and node.name == str(day)]
        self.click(numbers[0] if day < 15 else numbers[-1])  # neighbouring months stand before and behind

    def help_shown(self):
        return self.find(HELP_PAGE) is not None

    def leave(self):
        self.front()
        self.press("Close")
        wait_until(lambda: not self.open(), "the panel closes")
