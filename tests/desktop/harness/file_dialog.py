# SPDX-License-Identifier: GPL-3.0-or-later
"""The dialog in which a file is chosen."""

from . import drop_downs
from .waiting import wait_until


def above(desk, frame):
    """The window above the frame, as soon as it is there; it gets the keyboard."""
    dialog = wait_until(lambda: next((each for each in desk.windows() if each.node != frame.node), None),
                        lambda: f"a dialog opens above the frame, not only\n{desk.outline()}")
    desk.hands.focus(dialog.number)
    return dialog


def choose_skin(desk, frame, path):
    """Chooses a skin by its path, as one who types does."""
    drop_downs.choose(frame, "File", "Skins")
    dialog = above(desk, frame)
    desk.hands.type(str(path))
    desk.hands.key("Return")
    wait_until(lambda: not dialog.open(), lambda: f"the dialog closes:\n{dialog.node.outline()}")
    desk.hands.focus(frame.number)
