# SPDX-License-Identifier: GPL-3.0-or-later
"""The tools that lead somewhere or tell something: which address each asks for, and the words of each box."""

import unittest

from harness import drop_downs
from harness.case import BrowsingTest
from harness.waiting import wait_until

SITE = "http://kivandra.localhost:14505"

SUBJECTS = {
    "Math": "http://math.kivandra.localhost:14505/",
    "Language": "http://language.kivandra.localhost:14505/",
    "Science": "http://science.kivandra.localhost:14505/",
    "Social Studies": "http://social.kivandra.localhost:14505/",
}

# The way through a tool's drop-downs, and where it leads the page in front.
LINKS = {
    ("Help", "How to Use"): SITE + "/help",
    ("Help", "Advertise"): SITE + "/sponsor.asp",
    ("Tools", "Translation", "World Lingo"): "http://www.worldlingo.com/",
    ("Tools", "Translation", "Systran"): "http://answers.localhost:14505/systran/cgi",
}

# Entries of the menus, and where they lead the page in front.
MENU_LINKS = {
    ("Help", "How to use the Kivandra..."): SITE + "/help",
    ("Help", "On-Line Customer Support"): SITE + "/support.asp",
    ("Tools", "Translation Services", "World Lingo"): "http://www.worldlingo.com/",
    ("Tools", "Translation Services", "Systran"): "http://answers.localhost:14505/systran/cgi",
    ("Safe Sites", "Have your site listed here...."): SITE + "/getlisted",
    ("Safe Sites", "Disney"): "http://www.disney.com/",
    ("Safe Sites", "Yahooligans"): "http://children.answers.localhost:14505/",
    ("Safe Sites", "Berits Best"): "http://www.kidzsearch.com/",
    ("Safe Sites", "Sesame Street"): "http://www.sesamestreet.org/",
    ("Safe Sites", "Barney!"): "http://www.barney.com/",
    ("Safe Sites", "Childrens Television Workshop"): "http://www.sesameworkshop.org/",
    ("Safe Sites", "4Kids"): "http://www.ducksters.com/",
    ("Safe Sites", "Family Internet"): "http://www.commonsensemedia.org/",
}

# Windows of their own: the words behind "Kivandra" in the title, and the page.
WINDOWS = {
    "Banner Free Browser": ("Banner Free", SITE + "/bannerfree/"),
    "On-Line Support": ("Support", SITE + "/support.asp"),
}

HELP = "How to Use?"
WAY_OF_ALL = "This option will search the entire Internet for"
IN_THE_BOX = "the search criteria entered in the Toolbar search box"
BOXES = {
    ("Search choices", "Search The Web", HELP): f"{WAY_OF_ALL} {IN_THE_BOX}",
    ("Search choices", "Search This Site", HELP):
        f"This option will search the CURRENT SITE for {IN_THE_BOX}.  Great way to easily find what you are looking for"
        " on a site without clicking through all of the pages!",
    ("Search choices", "Search by Images", HELP): f"{WAY_OF_ALL} images based on {IN_THE_BOX}",
    ("Search choices", "Dictionary", HELP):
        "This option will render a dictionary definition of the word entered in the Toolbar search box.  This feature"
        " works more effectively with the parental filter OFF",
    ("Tools", "Highlight", HELP):
        "Enter a search criteria in the SEARCH box first then use this feature to highlight all occurances of that item"
        " in the current web page",
}


class Tools(BrowsingTest):
    world = True

    def setUp(self):
        super().setUp()
        drop_downs.close_all(self.frame)

    def choose(self, tool, *path):
        shown = drop_downs.open_tool(self.frame, tool)
        for row in path[:-1]:
            shown = shown.point(row)
        shown.click(path[-1])

    def leads(self, address, before):
        self.server.wait_address(address, before)
        wait_until(lambda: (self.page.address or "").rstrip("/") == address.rstrip("/"), lambda: self.situation())
        self.assertEqual(1, len(self.frame.pages()), "no other window")

    def asked(self):
        return len(self.server.addresses())

    def test_each_subject_of_the_side_bar_leads_to_its_site(self):
        drop_downs.choose(self.frame, "View", "Side Toolbar")
        for name, address in SUBJECTS.items():
            with self.subTest(name):
                before = self.asked()
                self.frame.click(wait_until(lambda name=name: self.frame.find(name, "button"), "the tile is shown"))
                self.leads(address, before)
        drop_downs.choose(self.frame, "View", "Side Toolbar")
        wait_until(lambda: not self.frame.find("Math", "button"), "the side bar is gone")

    def test_each_link_of_the_tools_leads_the_page_in_front(self):
        for path, address in LINKS.items():
            with self.subTest(path):
                before = self.asked()
                self.choose(*path)
                self.leads(address, before)

    def test_the_site_of_the_month_is_one_click_away(self):
        before = self.asked()
        self.frame.press("Site Of The Month")
        self.leads("http://www.kidzsearch.com/", before)

    def test_each_link_of_the_menus_leads_the_page_in_front(self):
        for path, address in MENU_LINKS.items():
            with self.subTest(path):
                before = self.asked()
                drop_downs.choose(self.frame, *path)
                self.leads(address, before)

    def test_support_and_the_banner_free_page_come_in_windows_of_their_own(self):
        for row, (ending, address) in WINDOWS.items():
            with self.subTest(row):
                before = self.asked()
                self.choose("Help", row)
                window = wait_until(lambda ending=ending: next(
                    (each for each in self.desk.windows() if each.caption.endswith(ending)), None), "the window opens")
                self.server.wait_address(address, before)
                window.close()
                wait_until(lambda window=window: not window.open(), "the window closes")
                self.hands.focus(self.frame.number)

    def test_each_help_picture_tells_how_to_use_its_tool(self):
        for path, text in BOXES.items():
            with self.subTest(path):
                self.choose(*path)
                box = self.desk.window_with(text)
                box.press("Ok")
                wait_until(lambda box=box: not box.open(), "the box closes")
                self.hands.focus(self.frame.number)


if __name__ == "__main__":
    unittest.main()
