# SPDX-License-Identifier: GPL-3.0-or-later
"""A network of its own for a process and its children, so that two programs can serve the same fixed port.

A display's server believes that its number is free if its name is free in its network, and then takes its file over:
so the folder of those files is the process's own too."""

import ctypes
import fcntl
import os
import pathlib
import socket
import struct

CLONE_NEWNS = 0x00020000  # sched.h
CLONE_NEWUSER = 0x10000000
CLONE_NEWNET = 0x40000000
SIOCGIFFLAGS, SIOCSIFFLAGS = 0x8913, 0x8914  # linux/sockios.h
IFF_UP = 1  # net/if.h
MS_REC, MS_PRIVATE = 0x4000, 1 << 18  # sys/mount.h
DISPLAYS = pathlib.Path("/tmp/.X11-unix")

_libc = ctypes.CDLL(None, use_errno=True)
_libc.mount.argtypes = (ctypes.c_char_p, ctypes.c_char_p, ctypes.c_char_p, ctypes.c_ulong, ctypes.c_char_p)


def enter():
    """Moves this process into a network that holds nothing but loopback; throws OSError where the kernel forbids it."""
    user, group = os.getuid(), os.getgid()
    if _libc.unshare(CLONE_NEWNET | CLONE_NEWNS) != 0:
        _check(_libc.unshare(CLONE_NEWUSER | CLONE_NEWNET | CLONE_NEWNS), "unshare")
        own = pathlib.Path("/proc/self")
        (own / "setgroups").write_text("deny")
        (own / "uid_map").write_text(f"{user} {user} 1")
        (own / "gid_map").write_text(f"{group} {group} 1")
    DISPLAYS.mkdir(mode=0o1777, exist_ok=True)
    _check(_libc.mount(None, b"/", None, MS_REC | MS_PRIVATE, None), "mount")
    _check(_libc.mount(b"displays", bytes(DISPLAYS), b"tmpfs", 0, b"mode=1777"), "mount")
    _raise_loopback()


def _check(answer, call):
    if answer != 0:
        raise OSError(ctypes.get_errno(), call)


def possible():
    """Whether enter() works here; tried in a child that ends at once."""
    child = os.fork()
    if child == 0:
        try:
            enter()
        except OSError:
            os._exit(1)
        os._exit(0)
    return os.waitpid(child, 0)[1] == 0


def _raise_loopback():
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as any_socket:
        request = bytearray(struct.pack("16sh14x", b"lo", 0))
        fcntl.ioctl(any_socket, SIOCGIFFLAGS, request)
        flags = struct.unpack_from("h", request, 16)[0] | IFF_UP
        fcntl.ioctl(any_socket, SIOCSIFFLAGS, struct.pack("16sh14x", b"lo", flags))
