# SPDX-License-Identifier: GPL-3.0-or-later
"""The message by which a window manager asks a window to close; without one running, the tests send it."""

import ctypes

CLIENT_MESSAGE = 33


class _ClientMessage(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                ("format", ctypes.c_int), ("data", ctypes.c_long * 5)]


class _Event(ctypes.Union):
    _fields_ = [("message", _ClientMessage), ("room", ctypes.c_long * 24)]


_x = ctypes.CDLL("libX11.so.6")
_x.XOpenDisplay.restype = ctypes.c_void_p
_x.XOpenDisplay.argtypes = [ctypes.c_char_p]
_x.XInternAtom.restype = ctypes.c_ulong
_x.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
_x.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long, ctypes.POINTER(_Event)]
_x.XCloseDisplay.argtypes = [ctypes.c_void_p]


def ask_to_close(display_name, window):
    """Sends WM_DELETE_WINDOW to a window of the display."""
    display = _x.XOpenDisplay(display_name.encode())
    if not display:
        raise RuntimeError(f"no display {display_name}")
    event = _Event()
    event.message.type = CLIENT_MESSAGE
    event.message.window = window
    event.message.message_type = _x.XInternAtom(display, b"WM_PROTOCOLS", False)
    event.message.format = 32
    event.message.data[0] = _x.XInternAtom(display, b"WM_DELETE_WINDOW", False)
    _x.XSendEvent(display, window, False, 0, ctypes.byref(event))
    _x.XCloseDisplay(display)  # sends what waits
