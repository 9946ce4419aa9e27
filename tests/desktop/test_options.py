# SPDX-License-Identifier: GPL-3.0-or-later
"""The parent's panel: the road to it, every box seen in what the program does at once, home page, password, help."""

import unittest

from harness import answers, pages, parent
from harness.case import PASSWORD, display
from harness.settings import HOME_PAGE
from harness.waiting import stays_true, wait_until

BOXES = {"Filter Enabled": "F_C", "Do Not Filter on Back Button or Links Bar": "B_B", "Disable pop-ups": "POP",
         "Disable email web link": "D_EM", "Disable Sounds": "Sound",
         "Auto show Tip of Day at browser launch": "T_OD",
         "Prevent Internet Explorer from launching": "P_IE", "Prevent Netscape 6 from launching": "P_NS",
         "Record Navigation": "R_N"}
# What a person meets on the way through the panel by Tab, card by card from top to bottom.
READING_ORDER = [
    "Filter Enabled", "Do Not Filter on Back Button or Links Bar", "Disable pop-ups", "Disable email web link",
    "Disable Sounds", "Auto show Tip of Day at browser launch", "Prevent Internet Explorer from launching",
    "Prevent Netscape 6 from launching", "Set Kivandra as Default Browser", "Help",
    "Default HomePage", "Apply", "-> Allowable Domains", "-> Dis-allowed Domains", "Help", "Change Password",
    "Record Navigation", "Choose any date to view recorded navigation", "Help", "Online Help", "Close"]
RECORDED = "Password has been recorded.  Please write down your password and store it in a safe area."
REFUSAL = "Invalid Password, try again!"
NEW_PASSWORD, AGAIN = "New password", "Repeat the new password"
LINK_COLOUR = (0x0B, 0x72, 0x85)  # ground of the link that closes a help page
QUIET_SECONDS = 0.5


class OptionsTest(parent.PanelTest):
    def browse(self):
        """The frame in front again, the panel stays open behind it."""
        self.hands.front(self.frame.number)

    def setting(self, name, value, section=None):
        read = self.home.settings.read
        # A setting that was never touched is empty, and counts as 0.
        wait_until(lambda: ((read(name, section) if section else read(name)) or "0") == value,
                   lambda: f"{name} is {value}, not {read(name)}")


class Road(OptionsTest):
    def test_the_panel_opens_in_the_middle_of_the_top_and_fits_a_small_screen(self):
        left, top, width, height = self.hands.place(self.panel.number)
        self.assertEqual(0, top)
        self.assertLessEqual(abs(left - (display().width - width) / 2), 1)
        self.assertLessEqual(width, 1024)
        self.assertLessEqual(height, 700)
        self.assertEqual("Parental Options Menu", self.panel.caption)

    def test_a_second_request_brings_up_the_same_panel(self):
        window = parent.prompt(self.desk, self.frame)
        parent.give(window, PASSWORD)
        again = parent.the_panel(self.desk, window)
        self.assertEqual(self.panel.node, again.node)
        self.assertEqual(2, len(self.desk.windows()))

    def test_every_control_has_a_name_and_tab_visits_all_in_reading_order(self):
        for node in self.panel.node.walk():
            if node.role in parent.WORKED and node.shown:
                self.assertTrue(node.name, node.outline())
        self.panel.front()
        stops = self.panel.stops()
        visited = [self.panel.tab(stops)]
        while len(visited) < 60 and visited.count(visited[0]) == 1:
            visited.append(self.panel.tab(stops))
        names = [node.name for node in visited[:-1]]
        start = names.index("Filter Enabled")
        names = names[start:] + names[:start]
        self.assertEqual(READING_ORDER, [name for name in names if name in READING_ORDER][:len(READING_ORDER)], names)


class Boxes(OptionsTest):
    """Each box and what it changes at once."""

    def refusable(self):
        name = self.name("named")
        return name, self.server.serve(f"/{name}", answers.page(pages.html(name, text=f"about {pages.WORD} here")))

    def tick(self, box, wanted=True):
        self.panel.tick(box, wanted)
        self.setting(BOXES[box], "1" if wanted else "0")
        self.browse()

    def test_each_box_shows_and_stores_its_setting(self):
        for box, setting in BOXES.items():
            with self.subTest(box):
                before = self.panel.ticked(box)
                self.assertEqual(before, (self.home.settings.read(setting) or "0") not in ("", "0"))
                self.tick(box, not before)
                self.tick(box, before)

    def test_filter(self):
        name, url = self.refusable()
        self.tick("Filter Enabled", False)
        self.page.go(url)
        self.painted(name)
        self.tick("Filter Enabled")
        self.page.go(self.refusable()[1])
        self.wait_blocked()

    def test_record_navigation(self):
        log = self.home.path / "data" / "kivandra" / "21"
        def recorded(name):
            return any(name in path.read_text() for path in log.glob("*.rtf"))
        self.tick("Record Navigation")
        name = self.visit().rsplit("/", 1)[1]
        wait_until(lambda: recorded(name), "the visit is recorded")
        self.tick("Record Navigation", False)
        other = self.visit().rsplit("/", 1)[1]
        third = self.visit().rsplit("/", 1)[1]
        self.assertFalse(recorded(other) or recorded(third))

    def test_back_button(self):
        for wanted in (False, True):
            with self.subTest(wanted=wanted):
                self.tick("Do Not Filter on Back Button or Links Bar", wanted)
                name, turned = self.name("turned"), []
                bodies = pages.html(name), pages.html(name + "-later", text=f"now about {pages.WORD}")
                url = self.server.serve(f"/{name}", answers.chosen_by(
                    lambda _, turned=turned, bodies=bodies: answers.page(bodies[len(turned)])))
                self.page.go(url)
                self.painted(name)
                self.visit()
                turned.append(True)
                self.frame.press("Back")
                if wanted:
                    self.painted(name + "-later")
                else:
                    self.wait_blocked()
                    self.assert_never_painted(name + "-later")
        self.tick("Do Not Filter on Back Button or Links Bar", False)

    def test_pop_ups(self):
        self.server.serve("/told", answers.page(""))
        for refused in (True, False):
            with self.subTest(refused=refused):
                self.tick("Disable pop-ups", refused)
                name, url = self.clean()
                number = self.name("telling")
                self.visit(pages.script(f"onclick = () => {{ const w = open('{url}');"
                                        f" fetch('/told?{number}-' + (w === null)) }}"))
                before = len(self.frame.pages())
                self.page.click_page()
                told = wait_until(lambda number=number: next((each.query for each in self.server.asked("/told")
                                                              if number in each.query), None), "the page has tried")
                self.assertEqual(refused, told.endswith("true"), told)
                if refused:
                    self.assertEqual(before, len(self.frame.pages()))
                    self.assert_never_painted(name)
                else:
                    self.painted(name)
                    self.assertEqual(before + 1, len(self.frame.pages()))

    def test_mail(self):
        self.tick("Disable email web link")
        self.visit(pages.link("mailto:kiv@example.org"))
        self.page.click_page()
        parent.dismiss(self.desk, "Sorry, Mail has been dis-abled")
        self.assertFalse(self.frame.blocked())
        self.tick("Disable email web link", False)
        self.visit(pages.link("mailto:kiv@example.org"))
        self.page.click_page()
        self.wait_blocked()  # such an address gives no page to read

    def test_zz_the_tip_of_the_day_shows_at_the_next_start_alone(self):
        def tip():
            return next((each for each in self.desk.windows() if each.find("Ok", "button")), None)
        self.tick("Auto show Tip of Day at browser launch")
        self.assertEqual(2, len(self.desk.windows()), "frame and panel")
        self.panel.leave()
        self.restart()
        shown = wait_until(tip, lambda: f"the tip shows:\n{self.desk.outline()[:500]}")
        self.hands.front(shown.number)
        shown.press("Ok")
        wait_until(lambda: not shown.open(), "the tip closes")


class HomePage(OptionsTest):
    def test_counts_from_apply_on_and_is_dropped_without(self):
        _, url = self.clean()
        name, other = self.clean()
        field = self.panel.field("Default HomePage")
        self.panel.write(field, url)
        self.panel.leave()
        self.assertNotEqual(url, self.home.settings.read("URL", HOME_PAGE))
        parent.PanelTest.panel = parent.open_panel(self.desk, self.frame)
        field = self.panel.field("Default HomePage")
        self.assertNotEqual(url, field.text)
        self.panel.click_field(field)
        self.hands.key("ctrl+a")
        self.hands.type(other)
        self.panel.press("Apply")
        self.setting("URL", other, HOME_PAGE)
        self.browse()
        self.frame.press("Home")
        self.painted(name)


class Password(OptionsTest):
    def test_a_new_password_by_keyboard_and_the_old_one_opens_nothing(self):
        first, second = self.panel.field(NEW_PASSWORD), self.panel.field(AGAIN)
        self.panel.front()
        self.assertFalse(first.usable or second.usable or self.panel.find("Ok").usable)
        button = self.panel.find("Change Password")
        self.panel.walk_to(button)
        self.hands.key("space")
        wait_until(lambda: first.usable and second.usable and first.focused, "the first field has the keyboard")
        with self.subTest("Enter in an empty field stays"):
            self.hands.key("Return")
            stays_true(lambda: first.focused, "the keyboard stays", QUIET_SECONDS)
        with self.subTest("Enter goes to the other field and back, and records nothing"):
            self.hands.type("One")
            self.hands.key("Return")
            wait_until(lambda: second.focused, "the second field has the keyboard")
            self.hands.type("Two")
            self.hands.key("Return")
            wait_until(lambda: first.focused, "the first field has the keyboard again")
        with self.subTest("two that differ"):
            self._ok()
            self.assertEqual("Password Error", parent.dismiss(self.desk, REFUSAL))
            self.panel.front()
            self.assertEqual(("", ""), (first.text, second.text))
            wait_until(lambda: first.focused, "the first field has the keyboard")
        with self.subTest("two empty ones"):
            self._ok()
            parent.dismiss(self.desk, REFUSAL)
            self.assertEqual(PASSWORD, self.home.settings.read("T_PW"))
        with self.subTest("two alike"):
            self.panel.front()
            wait_until(lambda: first.focused, "the first field has the keyboard")
            for field in (first, second):
                wait_until(lambda field=field: field.focused, "Enter moves on")
                self.hands.type("Lion 7")
                self.hands.key("Return")
            self._ok()
            parent.dismiss(self.desk, RECORDED)
            self.setting("T_PW", "Lion 7")
            self.assertFalse(first.usable or second.usable)
            self.assertEqual(("", ""), (first.text, second.text))
        self.panel.leave()
        with self.subTest("the old one is refused, the new one opens"):
            window = parent.prompt(self.desk, self.frame)
            parent.give(window, PASSWORD)
            parent.dismiss(self.desk, REFUSAL)
            self.assertTrue(window.open())
            window.field("Password").write("Lion 7")
            window.press("Ok")
            parent.PanelTest.panel = parent.the_panel(self.desk, window)
        self.home.settings.write("T_PW", PASSWORD)

    def _ok(self):
        self.panel.front()
        self.panel.walk_to(self.panel.find("Ok"))
        self.hands.key("space")


class HelpPages(OptionsTest):
    def buttons(self):
        return self.panel.node.find_all("Help", "button")

    def test_each_help_button_shows_a_page_and_its_link_closes_it(self):
        self.panel.front()
        self.assertFalse(self.panel.help_shown())
        buttons = self.buttons()
        self.assertEqual(3, len(buttons))
        for number, button in enumerate(buttons):
            with self.subTest(number):
                self.panel.click(button)
                page = wait_until(lambda: self.panel.find(parent.HELP_PAGE), "the help page shows")
                left, top, _, _ = page.extents()
                x, y, _, _ = self.hands.place(self.panel.number)
                # The link stands at the page's left top.
                wait_until(lambda: display().pixel(x + left + 28, y + top + 34) == LINK_COLOUR, "the page is painted")
                self.hands.click(x + left + 80, y + top + 34)
                wait_until(lambda: not self.panel.help_shown(), "the link closes the help")

    def test_online_help_opens_at_the_second_press(self):
        def caption(name):
            return self.panel.wait_for(name, "button")
        self.panel.front()
        self.panel.click(caption("Online Help"))
        stays_true(lambda: not self.panel.help_shown(), "the first press shows nothing", QUIET_SECONDS)
        self.panel.click(caption("Online Help"))
        self.panel.wait_for(parent.HELP_PAGE)
        self.panel.click(caption("Close Help"))
        wait_until(lambda: not self.panel.help_shown(), "the help is hidden")
        caption("Online Help")


if __name__ == "__main__":
    unittest.main()
