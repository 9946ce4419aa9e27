# SPDX-License-Identifier: GPL-3.0-or-later
"""What opens above a window: the drop-downs of tools and the menus."""

from .accessibility import Gone
from .waiting import wait_until

OPENED = ("gtkmm__GtkPopover", "GtkPopoverMenu")  # names of the boxes in which rows stand
ROW = ("menu item", "check menu item", "menu item check box", "menu item checkbox")


class DropDown:
    """One open drop-down or menu."""

    def __init__(self, window, popover):
        self.window, self.node = window, popover

    def _place(self):
        """Left and top on the screen: the display knows it as a window of its own."""
        def look():
            _, _, width, height = self.node.extents()
            for number in reversed(self.window.hands.window_numbers()):
                left, top, wide, high = self.window.hands.place(number)
                if (wide, high) == (width, height):
                    return left, top
            return None
        return wait_until(look, lambda: f"a window of the size of {self.node.extents()}")

    def extents(self):
        """Left, top, width and height on the screen."""
        return (*self._place(), *self.node.extents()[2:])

    def middle(self, node):
        left, top, _, _ = self.node.extents()
        x, y = self._place()
        across, down, width, height = node.extents()
        return x + across - left + width // 2, y + down - top + height // 2

    def rows(self):
        return self.node.find_all(role=ROW)

    def row(self, name):
        return wait_until(lambda: next((row for row in self.rows() if row.name == name), None),
                          lambda: f"the row {name} in\n{self.node.outline()}")

    def click(self, name):
        self.window.hands.click(*self.middle(self.row(name)))

    def point(self, name):
        """Rests the pointer on a row that opens another drop-down; gives that."""
        row = self.row(name)
        self.window.hands.move(*self.middle(row))
        return below(self.window, row)

    def gone(self):
        try:
            return not self.node.shown
        except Gone:
            return True


def opened(node):
    """The box that is open below a control, or None."""
    for inner in node.walk():
        try:
            if inner.name in OPENED and inner.shown:
                return inner
        except Gone:
            continue
    return None


def below(window, node):
    """The drop-down that opens below a control."""
    return DropDown(window, wait_until(lambda: opened(node), lambda: f"something opens below {node.outline()}"))


def open_tool(frame, name):
    """Clicks a tool that opens a drop-down."""
    button = wait_until(lambda: frame.find(name, "button"), f"the tool {name}")
    frame.click(button)
    return below(frame, frame.node)


def open_menu(frame, name):
    """Clicks a title of the menu bar."""
    bar = frame.find(role="menu bar")
    title = next(node for node in bar.children() if node.name == name)
    frame.click(title)
    return below(frame, title)


def choose(frame, menu, *path):
    """Clicks an entry of a menu; the pointer rests on those that lead to it."""
    shown = open_menu(frame, menu)
    for name in path[:-1]:
        shown = shown.point(name)
    shown.click(path[-1])


def close_all(frame):
    """Leaves whatever is open, as Escape does."""
    while opened(frame.node):
        frame.hands.key("Escape")
    wait_until(lambda: opened(frame.node) is None, "every drop-down is closed")
