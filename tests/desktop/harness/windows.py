# SPDX-License-Identifier: GPL-3.0-or-later
"""The program's windows in a person's words: the frame, the page windows in it, the boxes above it."""

import itertools

from .accessibility import Gone
from .waiting import PATIENCE, wait_until

BLOCKED = "Possible Adult Content Has Been Detected.  Page will not be displayed."
PRODUCT = "Kivandra"

# Names by which assistive tools, and so these tests, know the controls.
PAGE_ADDRESS = "Page address"
FRAME_ADDRESS = "Address"
PAGE_WINDOWS = "Page windows"
CLOSE_PAGE = "Close page window"
TILE = "Tile all open browser panes"
CASCADE = "Cascade all open browser panes"
LONGEST_FIELD = 65534  # characters that the toolkit keeps in a text field
RIM = 6  # pixels
CASCADE_STEP = (32, 36)
ROWS_ABOVE_PAGE = 80  # pixels
TEXT_FIELD = ("text box", "entry", "text", "search box", "editable combo box", "password text")


class Window:
    """A top window: its controls, and its place on the screen."""

    def __init__(self, hands, node, number):
        self.hands, self.node, self.number = hands, node, number

    @property
    def caption(self):
        return self.node.name

    def open(self):
        """Whether the window is still there."""
        try:
            return self.node.shown
        except Gone:
            return False

    def find(self, name=None, role=None):
        return self.node.find(name, role)

    def wait_for(self, name=None, role=None, seconds=PATIENCE):
        return wait_until(lambda: self.node.find(name, role), lambda: f"{name or role} in\n{self.node.outline()}",
                          seconds)

    def field(self, name):
        """The text field of this name, also when it stands inside a combo box of this name."""
        def look():
            for node in self.node.walk():
                # A field with a label beside it bears its name twice.
                if node.name not in (name, f"{name} {name}"):
                    continue
                if node.role in TEXT_FIELD:
                    return node
                inner = next((each for each in node.walk() if each.role in TEXT_FIELD), None)
                if inner:
                    return inner
            return None
        return wait_until(look, lambda: f"the field {name} in\n{self.node.outline()}")

    def middle(self, node):
        """Where a control's middle lies on the screen."""
        left, top, width, height = node.extents()
        x, y, _, _ = self.hands.place(self.number)
        return x + left + width // 2, y + top + height // 2

    def click(self, node, button=1, times=1):
        self.hands.click(*self.middle(node), button, times)

    def click_field(self, field):
        """Clicks into a text field until it has the keyboard: a page that arrives takes it away again."""
        def clicked():
            if not field.focused:
                self.click(field)
            return field.focused
        wait_until(clicked, lambda: f"the field has the keyboard in\n{self.node.outline()}")

    def press(self, name, seconds=PATIENCE):
        """Presses the button of this name as soon as it can be pressed."""
        button = self.wait_for(name, seconds=seconds)
        wait_until(lambda: button.usable, f"{name} can be pressed", seconds)
        self.click(button)

    def close(self):
        self.hands.close_box(self.number)


class Page:
    """A page window inside the frame."""

    def __init__(self, frame, node):
        self.frame, self.node = frame, node

    def __eq__(self, other):
        return isinstance(other, Page) and self.node == other.node

    def __hash__(self):
        return hash(self.node)

    @property
    def caption(self):
        return self.node.name

    def exists(self):
        return self in self.frame.pages()

    @property
    def box(self):
        """The address box."""
        return self._field(PAGE_ADDRESS)

    def _field(self, name):
        for node in self.node.find_all(name):
            for inner in node.walk():
                if inner.role in TEXT_FIELD:
                    return inner
        return None

    @property
    def address(self):
        box = self.box
        return box.text if box else None

    def go(self, address):
        """Types an address into the box and presses Enter. The window must not be covered by another."""
        box = wait_until(lambda: self.box, lambda: f"an address box in\n{self.node.outline()}")

        def written():
            # Again if a page that arrives has put its own address there and taken the keyboard.
            self.frame.click_field(box)
            box.write(address)
            return box.text == address[:LONGEST_FIELD] and box.focused
        wait_until(written, lambda: f"the address box holds the address, not {box.text[:200]!r}")
        self.frame.hands.key("Return")

    def page_middle(self):
        """The middle of the page itself on the screen, below title and address row."""
        left, top, width, height = self.node.extents()
        x, y, _, _ = self.frame.hands.place(self.frame.number)
        return x + left + width // 2, y + top + (height + ROWS_ABOVE_PAGE) // 2

    def click_page(self, button=1, key=None):
        """Clicks into the middle of the page."""
        if key:
            self.frame.hands.click_with(key, *self.page_middle(), button)
        else:
            self.frame.hands.click(*self.page_middle(), button)

    def button(self, name):
        return self.node.find(name)

    def extents(self):
        """Left, top, width and height of the visible box; the handles of its edges lie outside."""
        left, top, width, height = self.node.extents()
        return left + RIM, top + RIM, width - 2 * RIM, height - 2 * RIM

    def close(self):
        self.frame.click(self.node.find(CLOSE_PAGE))
        wait_until(lambda: not self.exists(), "the page window closes")


class Frame(Window):
    """The frame, with the page windows in it."""

    def pages(self):
        """Every page window, the one in front last."""
        try:
            area = self.node.find(PAGE_WINDOWS)
            return [Page(self, node) for node in area.children() if node.shown] if area else []
        except Gone:
            return []  # a window went while we looked

    def page(self):
        """The page window in front."""
        return wait_until(lambda: next(iter(reversed(self.pages())), None), lambda: f"a page in\n{self.node.outline()}")

    def tool(self, name):
        return wait_until(lambda: self.node.find(name), lambda: f"the tool {name} in\n{self.node.outline()}")

    def blocked(self):
        """Whether the frame says that a page was refused, and offers the lock."""
        return self.caption == BLOCKED and self.tool("Lock").usable

    def new_page(self):
        """Opens another page window: Enter in the frame's empty address box."""
        before = self.pages()
        box = self.field(FRAME_ADDRESS)
        self.click_field(box)
        box.write("")
        wait_until(lambda: box.text == "", "the frame's address box is empty")
        self.hands.key("Return")
        page = wait_until(lambda: next((page for page in self.pages() if page not in before), None),
                          "another page window opens")
        wait_until(lambda: page.address and page.caption and page.extents()[2] > 0 and self.page() == page,
                   "the new window is in front and has its first page")
        return page

    def tile(self):
        """Lays the page windows side by side."""
        self._arrange(TILE, lambda places: not any(_overlap(one, other) for one, other in pairs(places)))

    def cascade(self):
        """Lays the page windows one over the other, each a step further to the right and down."""
        self._arrange(CASCADE, lambda places: all(
            (lower[0] - upper[0], lower[1] - upper[1]) == CASCADE_STEP and lower[2:] == upper[2:]
            for upper, lower in zip(places, places[1:])))

    def _arrange(self, name, done):
        self.click(self.page().button(name))
        wait_until(lambda: done([page.extents() for page in self.pages()]),
                   lambda: f"{name}: {[page.extents() for page in self.pages()]}")


def pairs(things):
    return itertools.combinations(things, 2)


def _overlap(one, other):
    return (one[0] < other[0] + other[2] and other[0] < one[0] + one[2]
            and one[1] < other[1] + other[3] and other[1] < one[1] + one[3])
