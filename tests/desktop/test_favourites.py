# SPDX-License-Identifier: GPL-3.0-or-later
"""The favourites of a child: the pane that leads to them, the dialogs that add and organise them, and folders that
others have spoilt."""

import os
import shutil
import unittest

from harness import drop_downs, parent, processes
from harness.case import BrowsingTest
from harness.waiting import stays_true, wait_until

ROOT_ROW = "YOUR FAVORITES"
TREE = "Your favorites"
QUIET_SECONDS = 0.3
MANY = 10000
SECONDS_TO_OPEN = 1.0  # of the program's own processor time, from the command to the pane
DEEP_NAME, DEEP_FOLDERS = "d" * 200, 21  # together longer than any path may be


def url_file(url):
    """A favourite as every program writes it."""
    return f"[InternetShortcut]\r\nURL={url}\r\n".encode()


class FavouritesTest(BrowsingTest):
    def setUp(self):
        super().setUp()
        self.folder = self.home.path / "data" / "kivandra" / "Favorites"
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir()

    def put(self, name, content):
        """Lays a file into the favourites; a text is the address of a good one."""
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(url_file(content) if isinstance(content, str) else content)
        return path

    def on_disk(self):
        """Every file and folder below the favourites, with what the files hold."""
        return {str(path.relative_to(self.folder)): path.read_bytes() if path.is_file() else None
                for path in self.folder.rglob("*")}

    def command(self, entry):
        self.hands.front(self.frame.number)
        drop_downs.choose(self.frame, "Favorites", entry)

    def open_pane(self):
        self.command("Open Favourites")
        return self.desk.window_with(TREE)

    @staticmethod
    def rows(window):
        return [row.name for row in window.node.find_all(role="tree item")]

    def click_row(self, window, name):
        row = wait_until(lambda: window.find(name, "tree item"), lambda: f"{name} among {self.rows(window)}")
        window.click(row)

    def wait_rows(self, window, *names):
        wait_until(lambda: self.rows(window) == [ROOT_ROW, *names], lambda: self.rows(window))

    def gone(self, window):
        wait_until(lambda: not window.open(), "the window closes")
        self.hands.focus(self.frame.number)

    def leave(self, window, button="Close"):
        # The title bar has a button of the same name.
        window.click(window.node.find_all(button, "button")[0])
        self.gone(window)


class Pane(FavouritesTest):
    def test_it_shows_what_the_folder_holds_and_leads_there_through_the_filter(self):
        home = self.visit()
        otters, otters_url = self.clean()
        rivers, rivers_url = self.clean()
        forbidden, forbidden_url = self.forbidden_address()
        refused, refused_url = self.forbidden()
        for name, url in {"zoo/Otters": otters_url, "Birds/Penguins": otters_url, "beta": forbidden_url,
                          "alpha": refused_url, "Rivers": rivers_url}.items():
            self.put(name + ".url", url)
        (self.folder / "Music").mkdir()
        self.put("Nothing/empty.url", b"[InternetShortcut]\r\nurl=http://127.0.0.1/\r\n")
        self.put("notes.txt", "http://127.0.0.1/notes")
        pane = self.open_pane()
        with self.subTest("folders and favourites are mixed and sorted without regard to case"):
            self.wait_rows(pane, "alpha", "beta", "Birds", "Music", "Nothing", "Rivers", "zoo")
        with self.subTest("a folder opens and closes; an empty one has nothing to open"):
            self.click_row(pane, "zoo")
            self.wait_rows(pane, "alpha", "beta", "Birds", "Music", "Nothing", "Rivers", "zoo", "Otters")
            self.hands.key("Left")
            self.click_row(pane, "Music")
            self.wait_rows(pane, "alpha", "beta", "Birds", "Music", "Nothing", "Rivers", "zoo")
        with self.subTest("a favourite without an address closes nothing"):
            self.click_row(pane, "Nothing")
            self.click_row(pane, "empty")
            stays_true(pane.open, "the pane stays", QUIET_SECONDS)
        with self.subTest("Close, Escape and the title's button lead nowhere"):
            asked = len(self.server.asked())
            self.leave(pane)
            for way in (lambda: self.hands.key("Escape"), lambda: pane.close()):
                pane = self.open_pane()
                way()
                self.gone(pane)
            self.assertEqual(home, self.page.address)
            self.assertEqual(asked, len(self.server.asked()))
        with self.subTest("a click"):
            pane = self.open_pane()
            self.click_row(pane, "Rivers")
            self.gone(pane)
            self.painted(rivers)
        with self.subTest("the keyboard alone"):
            pane = self.open_pane()
            self.hands.key("End", "Right", "Down")
            wait_until(lambda: pane.find("Otters", "tree item").focused, lambda: pane.node.outline())
            self.hands.key("Return")
            self.gone(pane)
            self.painted(otters)
        for name, page in {"beta": forbidden, "alpha": refused}.items():
            with self.subTest("the filter judges", favourite=name):
                pane = self.open_pane()
                self.click_row(pane, name)
                self.gone(pane)
                self.wait_blocked()
                self.assert_never_painted(page)
                self.visit()

    def test_odd_files_and_folders(self):
        pages = {}
        for what in ("capitals", "goes-on", "big", "latin", "beside"):
            pages[what] = self.clean(path=f"/caf%C3%A9-{what}")
        self.put("Capitals.URL", pages["capitals"][1])
        self.put("Goes on.url.bak", pages["goes-on"][1])
        self.put("big.url", b"\0\xff" * 5_000_000 + b"\r\nURL=" + pages["big"][1].encode() + b"\r\n")
        self.put("latin.url", url_file(pages["latin"][1]).replace(b"%C3%A9", b"\xe9"))
        self.put("wide/wide.url", url_file("http://127.0.0.1/").decode().encode("utf-16"))
        self.put("beside.url", pages["beside"][1])
        (self.folder / os.fsdecode(b"caf\xe9.url")).write_bytes(url_file("http://127.0.0.1/"))
        (self.folder / "ring").symlink_to(self.folder, target_is_directory=True)
        (self.folder / "nowhere.url").symlink_to(self.folder / "nothing")
        os.mkfifo(self.folder / "pipe.url")
        self.too_deep_to_read()
        pane = self.open_pane()
        with self.subTest("each is shown once, by its name"):
            self.wait_rows(pane, "beside", "big", "caf\ufffd", "Capitals", DEEP_NAME, "Goes on", "latin", "ring",
                           "wide")
        with self.subTest("a text of two bytes a character has no address"):
            self.click_row(pane, "wide")
            wait_until(lambda: len([name for name in self.rows(pane) if name == "wide"]) == 2, "the folder opens")
            pane.click(pane.node.find_all("wide", "tree item")[1])
            stays_true(pane.open, "the pane stays", QUIET_SECONDS)
        with self.subTest("a ring of links is not walked"):
            self.click_row(pane, "ring")
            stays_true(lambda: len(self.rows(pane)) == 11, "nothing opens", QUIET_SECONDS)
        self.leave(pane)
        for what, row in {"capitals": "Capitals", "goes-on": "Goes on", "big": "big", "latin": "latin",
                          "beside": "beside"}.items():
            with self.subTest("leads to its page", file=row):
                pane = self.open_pane()
                self.click_row(pane, row)
                self.gone(pane)
                self.painted(pages[what][0])
        with self.subTest("no folder at all"):
            shutil.rmtree(self.folder)
            pane = self.open_pane()
            self.wait_rows(pane)
            self.leave(pane)
            self.assertFalse(self.folder.exists())

    def too_deep_to_read(self):
        """Folders in folders, until nobody can name the last of them."""
        at = os.open(self.folder, os.O_RDONLY)
        for _ in range(DEEP_FOLDERS):
            os.mkdir(DEEP_NAME, dir_fd=at)
            inner = os.open(DEEP_NAME, os.O_RDONLY, dir_fd=at)
            os.close(at)
            at = inner
        os.close(at)

    def test_ten_thousand_favourites_open_at_once(self):
        name, url = self.clean()
        for number in range(MANY):
            self.put(f"page {number:05}.url", url)
        last = f"page {MANY - 1:05}"
        windows = len(self.hands.windows(self.program.pid))
        # What else the machine does counts for nothing.
        before = processes.processor_seconds(self.program.pid)
        self.command("Open Favourites")
        wait_until(lambda: len(self.hands.windows(self.program.pid)) > windows, "the pane opens")
        self.assertLess(processes.processor_seconds(self.program.pid) - before, SECONDS_TO_OPEN)
        pane = self.desk.window_with(TREE)
        wait_until(lambda: pane.find("page 00000", "tree item"), lambda: pane.node.outline()[:2000])
        self.hands.key("End")
        wait_until(lambda: pane.find(last, "tree item"), lambda: pane.node.outline()[-2000:])
        wait_until(lambda: pane.find(last, "tree item").focused, "the last has the keyboard")
        self.hands.key("Return")
        self.gone(pane)
        self.painted(name)


class Dialogs(FavouritesTest):
    def add(self):
        self.command("Add to Favorites")
        dialog = self.desk.window_with("Folder", "combo box")
        wait_until(lambda: dialog.field("Name").focused, "the name has the keyboard")
        return dialog

    def organize(self):
        self.command("Organize Favorites")
        return self.desk.window_with(TREE)

    def answer(self, question, button):
        parent.dismiss(self.desk, question, button)

    def test_adding_a_favourite(self):
        url = self.visit()
        painted = self.server.asked()[-1].path
        with self.subTest("cancelled: no file"):
            for way in (lambda dialog: self.leave(dialog, "Cancel"), lambda dialog: self.hands.key("Escape")):
                dialog = self.add()
                self.assertEqual(url, dialog.field("Name").text)
                way(dialog)
                self.gone(dialog)
            self.assertEqual({}, self.on_disk())
        with self.subTest("Enter in the name adds it; the file holds its section and its address alone"):
            dialog = self.add()
            self.hands.type("Otters")
            self.hands.key("Return")
            self.gone(dialog)
            wait_until(lambda: self.on_disk() == {"Otters.url": url_file(url)}, self.on_disk)
        with self.subTest("into a new folder, under a name that no system would take"):
            dialog = self.add()
            dialog.field("Name").write("../What? A/B")
            dialog.field("Folder").write("Animals\\Wet")
            self.leave(dialog, "Ok")
            wait_until(lambda: self.on_disk().get("Animals/Wet/_What_ A_B.url") == url_file(url), self.on_disk)
        with self.subTest("a folder of the list"):
            dialog = self.add()
            self.hands.type("Seals")
            self.hands.key("Tab")
            dialog.field("Folder").write("Favorites\\Animals")
            self.hands.key("Return")
            self.gone(dialog)
            wait_until(lambda: "Animals/Seals.url" in self.on_disk(), self.on_disk)
        with self.subTest("one of that name is there: kept unless the person says so"):
            self.put("Otters.url", b"old")
            question = 'There is already a favorite "Otters" in this folder. Replace it?'
            dialog = self.add()
            dialog.field("Name").write("Otters")
            self.hands.key("Return")
            self.answer(question, "No")
            self.assertEqual(b"old", self.on_disk()["Otters.url"])
            self.hands.front(dialog.number)
            self.leave(dialog, "Cancel")
        with self.subTest("the pane leads to it"):
            pane = self.open_pane()
            self.wait_rows(pane, "Animals", "Otters")
            self.click_row(pane, "Animals")
            before = len(self.server.asked(painted))
            self.click_row(pane, "Seals")
            self.gone(pane)
            wait_until(lambda: len(self.server.asked(painted)) > before, "the page is painted again")

    def test_organizing_favourites(self):
        moon, otters = url_file("http://127.0.0.1/moon"), url_file("http://127.0.0.1/otters")
        self.put("Moon.url", moon)
        self.put("Animals/Otters.url", otters)
        (self.folder / "Space").mkdir()
        dialog = self.organize()
        self.wait_rows(dialog, "Animals", "Moon", "Space")
        with self.subTest("the favourites folder itself can't be changed"):
            for button in ("Rename", "Move to this folder", "Delete"):
                self.assertFalse(dialog.find(button, "button").usable, button)
        with self.subTest("rename"):
            self.click_row(dialog, "Moon")
            name = dialog.field("Name")
            wait_until(lambda: name.text == "Moon", "the name stands in the field")
            name.write("Full moon")
            dialog.press("Rename")
            self.wait_rows(dialog, "Animals", "Full moon", "Space")
            self.assertEqual({"Full moon.url": moon, "Animals": None, "Animals/Otters.url": otters, "Space": None},
                             self.on_disk())
        with self.subTest("move, by Enter in the field"):
            dialog.click(dialog.field("Folder"))
            dialog.field("Folder").write("Favorites\\Space")
            self.hands.key("Return")
            self.wait_rows(dialog, "Animals", "Space", "Full moon")
            self.assertEqual(moon, self.on_disk()["Space/Full moon.url"])
        with self.subTest("a new folder, named by the keyboard"):
            self.click_row(dialog, ROOT_ROW)
            dialog.press("New folder")
            wait_until(lambda: name.text == "New Folder" and name.focused, "the new name can be typed")
            self.hands.key("ctrl+a")
            self.hands.type("Birds")
            self.hands.key("Return")
            wait_until(lambda: "Birds" in self.on_disk(), self.on_disk)
            self.assertNotIn("New Folder", self.on_disk())
        with self.subTest("delete after a question only"):
            question = 'Delete the folder "Space" and everything in it?'
            for button, there in (("No", True), ("Yes", False)):
                self.click_row(dialog, "Space")
                dialog.press("Delete")
                self.answer(question, button)
                self.hands.front(dialog.number)
                wait_until(lambda there=there: ("Space/Full moon.url" in self.on_disk()) == there, self.on_disk)
            wait_until(lambda: dialog.find(ROOT_ROW, "tree item").focused, "the keyboard is in the tree")
        with self.subTest("a name that is taken"):
            self.click_row(dialog, "Birds")
            wait_until(lambda: name.text == "Birds", "the name stands in the field")
            name.write("Animals")
            dialog.press("Rename")
            self.answer('This could not be done. Perhaps there is already an entry "Animals" in that folder.', "Ok")
            self.hands.front(dialog.number)
            wait_until(lambda: name.focused and name.text == "Animals", "what was typed can be typed on")
        self.assertEqual({"Animals": None, "Animals/Otters.url": otters, "Birds": None}, self.on_disk())
        self.hands.key("Escape")
        self.gone(dialog)


if __name__ == "__main__":
    unittest.main()
