# SPDX-License-Identifier: GPL-3.0-or-later
"""Drives the real program from outside: a display, a server on loopback, and hands and eyes for the windows."""
