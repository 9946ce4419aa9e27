# SPDX-License-Identifier: GPL-3.0-or-later
"""The controls of a program as assistive tools see them, asked for directly on their bus: no cache in between, so an
answer is never older than the question."""

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

ACCESSIBLE = "org.a11y.atspi.Accessible"
COMPONENT = "org.a11y.atspi.Component"
TEXT = "org.a11y.atspi.Text"
EDITABLE_TEXT = "org.a11y.atspi.EditableText"
ACTION = "org.a11y.atspi.Action"

# Numbers of states, as the bus counts them.
STATE_ACTIVE, STATE_CHECKED, STATE_FOCUSED, STATE_SENSITIVE, STATE_VISIBLE = 1, 4, 12, 24, 30

CALL_MILLISECONDS = 20000


class Gone(Exception):
    """The control, its window or the whole program is not there any more."""


def _connect(address):
    flags = Gio.DBusConnectionFlags
    return Gio.DBusConnection.new_for_address_sync(
        address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)


class Accessibility:
    """The bus of the assistive tools that belongs to a session bus."""

    def __init__(self, session_address):
        session = _connect(session_address)
        reply = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None, 0,
                                  CALL_MILLISECONDS, None)
        session.close_sync(None)
        self._bus = _connect(reply.unpack()[0])

    def call(self, owner, path, interface, method, arguments=None):
        try:
            reply = self._bus.call_sync(owner, path, interface, method, arguments, None, 0, CALL_MILLISECONDS, None)
        except GLib.Error as error:
            raise Gone(f"{interface}.{method}: {error.message}") from None
        return reply.unpack()

    def application(self, pid):
        """The root of the program with this process number, or None while it has not made itself known."""
        registry = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
        for owner, path in self.call(*registry, ACCESSIBLE, "GetChildren")[0]:
            try:
                bus = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
                if self.call(*bus, "GetConnectionUnixProcessID", GLib.Variant("(s)", (owner,)))[0] == pid:
                    return Node(self, owner, path)
            except Gone:
                continue
        return None

    def close(self):
        self._bus.close_sync(None)


class Node:
    """One control. Every question goes to the program; Gone is raised when the control is."""

    def __init__(self, bus, owner, path):
        self._bus, self._owner, self._path = bus, owner, path

    def __eq__(self, other):
        return isinstance(other, Node) and (self._owner, self._path) == (other._owner, other._path)

    def __hash__(self):
        return hash((self._owner, self._path))

    def _call(self, interface, method, arguments=None):
        return self._bus.call(self._owner, self._path, interface, method, arguments)

    def _property(self, interface, name):
        return self._call("org.freedesktop.DBus.Properties", "Get", GLib.Variant("(ss)", (interface, name)))[0]

    @property
    def name(self):
        return self._property(ACCESSIBLE, "Name")

    @property
    def description(self):
        return self._property(ACCESSIBLE, "Description")

    @property
    def role(self):
        return self._call(ACCESSIBLE, "GetRoleName")[0]

    @property
    def interfaces(self):
        return self._call(ACCESSIBLE, "GetInterfaces")[0]

    def children(self):
        return [Node(self._bus, owner, path) for owner, path in self._call(ACCESSIBLE, "GetChildren")[0]
                if path != "/org/a11y/atspi/null"]

    def has_state(self, number):
        low, high = self._call(ACCESSIBLE, "GetState")[0]
        return bool((low | high << 32) >> number & 1)

    @property
    def shown(self):
        """Whether it is to be seen; the toolkit sets this state on every control, STATE_SHOWING on windows alone."""
        return self.has_state(STATE_VISIBLE)

    @property
    def usable(self):
        """Whether a person could press it or write in it."""
        return self.has_state(STATE_SENSITIVE)

    @property
    def focused(self):
        return self.has_state(STATE_FOCUSED)

    def extents(self):
        """Left, top, width and height in the control's window."""
        return self._call(COMPONENT, "GetExtents", GLib.Variant("(u)", (1,)))[0]

    @property
    def text(self):
        """Text of a text field."""
        count = self._property(TEXT, "CharacterCount")
        return self._call(TEXT, "GetText", GLib.Variant("(ii)", (0, count)))[0] if count else ""

    def first(self, count):
        """The first so many characters of its text."""
        return self._call(TEXT, "GetText", GLib.Variant("(ii)", (0, count)))[0]

    def write(self, text):
        """Puts a text into a text field at one stroke."""
        if not self._call(EDITABLE_TEXT, "SetTextContents", GLib.Variant("(s)", (text,)))[0]:
            raise Gone("the text field takes no text")

    def press(self):
        """Carries out the control's first action."""
        if not self._call(ACTION, "DoAction", GLib.Variant("(i)", (0,)))[0]:
            raise Gone("the control has no action")

    def walk(self):
        """This control and every control below it, the outer ones first."""
        yield self
        try:
            children = self.children()
        except Gone:
            return
        for child in children:
            yield from child.walk()

    def found(self, name=None, role=None, shown=True):
        """The controls below with this name and role, one after the other as the search meets them."""
        for node in self.walk():
            try:
                if name is not None and node.name != name:
                    continue
                if role is not None and node.role not in ((role,) if isinstance(role, str) else role):
                    continue
                if shown and not node.shown:
                    continue
            except Gone:
                continue
            yield node

    def find_all(self, name=None, role=None, shown=True):
        """Every such control."""
        return list(self.found(name, role, shown))

    def find(self, name=None, role=None, shown=True):
        """The first such control, or None."""
        return next(self.found(name, role, shown), None)

    def outline(self, indent=0):
        """The tree as text, for a person who looks for a name."""
        lines = []
        try:
            left, top, width, height = self.extents() if COMPONENT in self.interfaces else (0, 0, 0, 0)
            states = ("" if self.shown else " hidden") + ("" if self.usable else " off")
            text = f" text={self.text[:60]!r}" if TEXT in self.interfaces else ""
            lines.append(f"{'  ' * indent}{self.role} {self.name!r}{text} {width}x{height}+{left}+{top}{states}")
            for child in self.children():
                lines.extend(child.outline(indent + 1).splitlines())
        except Gone as gone:
            lines.append(f"{'  ' * indent}(gone: {gone})")
        return "\n".join(lines)
