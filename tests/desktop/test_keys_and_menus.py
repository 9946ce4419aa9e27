# SPDX-License-Identifier: GPL-3.0-or-later
"""Keys, menus, mail links and environment variables that might open a door."""

import socket
import unittest

from harness import pages, processes
from harness.case import BrowsingTest
from harness.server import free_port
from harness.waiting import stays_true, wait_until

QUIET_SECONDS = 0.7

# Each would open the engine or the toolkit to a debugger, or take the engine out of its cage.
DOORS = {"WEBKIT_INSPECTOR_SERVER": f"127.0.0.1:{free_port()}",
         "WEBKIT_INSPECTOR_HTTP_SERVER": f"127.0.0.1:{free_port()}",
         "WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS": "1",
         "GTK_DEBUG": "interactive",
         "GTK_MODULES": "nothing"}


class KeysAndMenus(BrowsingTest):
    settings = {"D_EM": "1"}
    environment = DOORS

    def test_no_key_opens_an_inspector_or_another_window(self):
        self.visit()
        self.page.click_page()
        for key in ("ctrl+shift+i", "ctrl+shift+d", "ctrl+shift+c", "F12", "ctrl+u", "ctrl+n", "ctrl+t", "F11",
                    "alt+Left", "alt+Right", "shift+F10", "Menu"):
            with self.subTest(key):
                self.hands.key(key)
                stays_true(lambda: len(self.desk.windows()) == 1, "no other window opens", 0.3)
                self.hands.key("Escape")

    def test_a_right_click_offers_no_way_out(self):
        _, url = self.clean()
        self.visit(pages.link(url))
        self.page.click_page(button=3)
        stays_true(lambda: not self._menu_words() & {"Open Link", "Open Link in New Window", "Inspect Element", "Reload",
                                                     "Back", "Download Linked File", "Copy Link Location"},
                   "no such menu", QUIET_SECONDS)
        self.hands.key("Escape")

    def _menu_words(self):
        return {node.name for node in self.frame.node.walk() if "menu" in node.role}

    def test_the_engine_s_inspector_listens_nowhere_and_the_sandbox_stays_on(self):
        for name in ("WEBKIT_INSPECTOR_SERVER", "WEBKIT_INSPECTOR_HTTP_SERVER"):
            host, port = self.environment[name].split(":")
            with self.subTest(name), socket.socket() as probe:
                self.assertNotEqual(0, probe.connect_ex((host, int(port))), "nobody listens")
        self.assertTrue(self.program.web_processes())
        self.assertIn("bwrap", {processes.name_of(pid) for pid in processes.descendants(self.program.pid)})


class Mail(BrowsingTest):
    settings = {"D_EM": "1"}
    environment = DOORS

    def test_a_mail_link_is_refused_with_words(self):
        url = self.visit(pages.link("mailto:kiv@example.org"))
        self.page.click_page()
        box = self.desk.window_with("Sorry, Mail has been dis-abled")
        box.press("Ok")
        wait_until(lambda: not box.open(), "the box closes")
        self.assertNotIn("Possible", self.frame.caption)
        self.assertEqual(url, self.page.address)


if __name__ == "__main__":
    unittest.main()
