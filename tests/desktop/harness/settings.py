# SPDX-License-Identifier: GPL-3.0-or-later
"""The program's settings tree, read and changed from outside while the program is not running or between its reads."""

import contextlib
import sqlite3

CLASSES = ("HKEY_LOCAL_MACHINE", "SOFTWARE", "Classes")
SETTINGS = (*CLASSES, "IXPR", "Drivers", "settings")
ALLOWED = (*CLASSES, "IXPR", "Drivers", "allowed")
DISALLOWED = (*CLASSES, "IXPR", "Drivers", "disallowed")
HOME_PAGE = ("HKEY_CURRENT_USER", "Software", "VB and VBA Program Settings", "Kivandra", "Home Page")
REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD = 1, 2, 3, 4


class Settings:
    """One settings file. Names are ASCII here, so that lower case is their folded form."""

    def __init__(self, path):
        self._path = path

    @contextlib.contextmanager
    def _open(self):
        connection = sqlite3.connect(self._path, timeout=10)
        try:
            with connection:
                yield connection
        finally:
            connection.close()

    @staticmethod
    def _key(connection, parts, make=False):
        parent = 0
        for part in parts:
            row = connection.execute("SELECT id FROM key WHERE parent = ? AND folded = ?",
                                     (parent, part.lower())).fetchone()
            if row is None:
                if not make:
                    return None
                parent = connection.execute("INSERT INTO key(parent, name, folded) VALUES (?, ?, ?)",
                                            (parent, part, part.lower())).lastrowid
            else:
                parent = row[0]
        return parent

    def read(self, name, section=SETTINGS):
        """Text of a value, or None if there is none."""
        if not self._path.exists():
            return None
        with self._open() as connection:
            try:
                row = connection.execute("SELECT data FROM value WHERE key = ? AND folded = ?",
                                         (self._key(connection, section), name.lower())).fetchone()
            except sqlite3.OperationalError:
                return None
        return None if row is None else bytes(row[0]).rstrip(b"\0").decode(errors="replace")

    def write(self, name, value, section=SETTINGS, kind=REG_SZ):
        """Stores a text, or bytes as they are."""
        data = value if isinstance(value, bytes) else value.encode() + b"\0"
        with self._open() as connection:
            connection.execute("INSERT OR REPLACE INTO value(key, folded, name, type, data) VALUES (?, ?, ?, ?, ?)",
                               (self._key(connection, section, make=True), name.lower(), name, kind,
                                data))
