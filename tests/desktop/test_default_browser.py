# SPDX-License-Identifier: GPL-3.0-or-later
"""The panel's button and boxes that reach beyond the program: the default browser, and other browsers' files."""

import os
import subprocess
import unittest

from harness import parent
from harness.accessibility import STATE_CHECKED
from harness.case import display
from harness.program import BINARY
from harness.settings import CLASSES
from harness.waiting import wait_until

BUTTON = "Set Kivandra as Default Browser"
CLOSING = "Please restart the computer to make all changes effective."
ENTRY = "org.kivandra.Kivandra.desktop"
MACHINE = ("HKEY_LOCAL_MACHINE",)
EXPLORER, NETSCAPE = "Prevent Internet Explorer from launching", "Prevent Netscape 6 from launching"
EXPLORER_KEY = (*CLASSES, "Applications", "iexplore.exe", "shell", "open", "command")
NETSCAPE_KEY = (*MACHINE, "Software", "Microsoft", "Windows", "CurrentVersion", "App Paths", "Netscp6.exe")


class PanelInFrontTest(parent.PanelTest):
    def setUp(self):
        super().setUp()
        self.panel.front()


class DefaultBrowser(PanelInFrontTest):
    def asked(self, *words):
        """What another program of this desktop says."""
        done = subprocess.run(words, env={**display().environment, **self.home.environment()}, capture_output=True,
                              text=True, timeout=60, check=False)
        return (done.stdout + done.stderr).strip()

    def press(self):
        self.panel.front()
        self.panel.press(BUTTON)
        self.assertEqual("Kivandra", parent.dismiss(self.desk, CLOSING))

    def in_tree(self, section):
        return self.home.settings.read("", section)

    def values(self):
        opened = f"{BINARY.parent.resolve()}/{BINARY.stem}.exe"
        return {
            (*CLASSES, ".htm"): "KVD", (*CLASSES, ".html"): "KVD", (*CLASSES, "KVD.HTM"): "KVD",
            (*CLASSES, "KVD.HTML", "shell", "open", "command"): f'"{opened}" "%1"',
            (*CLASSES, "KVD", "shell", "open", "ddeexec"): "WWW_OpenUrl",
            (*MACHINE, "KVD", "shell", "open", "ddeexec", "topic"): "WWW_OpenURL",
            (*MACHINE, "http", "shell", "open", "command"): f"{opened} %1",
            (*CLASSES, "http", "shell", "open"): f"{opened} %1",
            (*CLASSES, "https", "DefaultIcon"): f"{opened} %1",
            (*CLASSES, "gopher", "shell", "open", "ddeexec", "Application"): "KVD",
        }

    def test_the_button_writes_the_tree_and_the_desktop_opens_pages_here(self):
        self.press()
        for section, value in self.values().items():
            with self.subTest(section):
                self.assertEqual(value, self.in_tree(section))
        entry = self.home.path / "data" / "applications" / ENTRY
        self.assertIn(f"Exec={BINARY.resolve().with_name('kivandra-open')} %u", entry.read_text())
        with self.subTest("the desktop's tools find a good entry"):
            self.assertEqual("", self.asked("desktop-file-validate", str(entry)))
            self.assertEqual(ENTRY, self.asked("xdg-settings", "get", "default-web-browser"))
            for kind in ("x-scheme-handler/http", "x-scheme-handler/https", "text/html", "application/xhtml+xml"):
                self.assertIn(ENTRY, self.asked("gio", "mime", kind))
        with self.subTest("a link that another program opens is shown and judged here"):
            name, url = self.clean()
            self.asked("gio", "open", url)
            self.painted(name)
            bad, url = self.forbidden()
            self.asked("xdg-open", url)
            self.wait_blocked()
            self.assert_never_painted(bad)
        with self.subTest("pressed again"):
            before = entry.read_text()
            self.press()
            self.assertEqual(before, entry.read_text())
            self.assertEqual(self.values(), {section: self.in_tree(section) for section in self.values()})


class OtherBrowsers(PanelInFrontTest):
    def install(self, key, name, line="%s"):
        """Puts a browser's program file into a folder of the test and names it in the tree."""
        folder = self.home.path / self.name("programs")
        folder.mkdir()
        (folder / "bystander.exe").write_text("not named")
        path = folder / name
        path.write_text("a browser")
        self.home.settings.write("", line % path, key)
        return path

    def there(self, path):
        return sorted(os.listdir(path.parent))

    def tick(self, box, wanted):
        self.panel.tick(box, wanted)
        setting = "P_IE" if box == EXPLORER else "P_NS"
        wait_until(lambda: self.home.settings.read(setting) == ("1" if wanted else "0"), f"{setting} is stored")

    def wait_there(self, path, *names):
        wanted = sorted(("bystander.exe", *names))
        wait_until(lambda: self.there(path) == wanted, lambda: f"{wanted}, not {self.there(path)}")

    def test_each_box_hides_its_file_and_brings_it_back_and_pages_go_on(self):
        for box, key, name, line in ((EXPLORER, EXPLORER_KEY, "iexplore.exe", '"%s" %%1'),
                                     (NETSCAPE, NETSCAPE_KEY, "netscp6.exe", "%s"),
                                     (NETSCAPE, NETSCAPE_KEY, "NETSCP6.EXE", "%s")):
            with self.subTest(name):
                path = self.install(key, name, line)
                for wanted in (True, False, True):
                    self.tick(box, wanted)
                    self.wait_there(path, name + "X" if wanted else name)
                self.hands.front(self.frame.number)
                self.visit()
                self.tick(box, False)
                self.wait_there(path, name)
                self.assertEqual("a browser", path.read_text())

    def test_where_nothing_can_be_renamed_the_box_is_stored_and_nothing_is_said(self):
        with self.subTest("no browser is named"):
            self.home.settings.write("", "", NETSCAPE_KEY)
            self.tick(NETSCAPE, True)
            self.tick(NETSCAPE, False)
        with self.subTest("the line has another tail"):
            path = self.install(EXPLORER_KEY, "iexplore.exe", '"%s" -nohome')
            self.tick(EXPLORER, True)
            self.assertEqual(["bystander.exe", "iexplore.exe"], self.there(path))
            self.tick(EXPLORER, False)
        with self.subTest("the hidden name is taken"):
            path = self.install(EXPLORER_KEY, "iexplore.exe", '"%s" %%1')
            (path.parent / "iexplore.exeX").mkdir()
            self.tick(EXPLORER, True)
            self.assertEqual(["bystander.exe", "iexplore.exe", "iexplore.exeX"], self.there(path))
            self.assertEqual("a browser", path.read_text())
            self.tick(EXPLORER, False)
        self.assertEqual(2, len(self.desk.windows()), "frame and panel, no message")
        self.assertFalse(self.panel.find(EXPLORER, "checkbox").has_state(STATE_CHECKED))


if __name__ == "__main__":
    unittest.main()
