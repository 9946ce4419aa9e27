# SPDX-License-Identifier: GPL-3.0-or-later
"""The pages that ship with the program, as the program itself serves and shows them."""

import unittest
import urllib.error
import urllib.request

from harness.case import BrowsingTest
from harness.waiting import wait_until

PORT = 14505


class NoRedirect(urllib.request.HTTPRedirectHandler):
    def redirect_request(self, *_):
        return None


def ask(host, path):
    """The status and the headers that the program answers for a host."""
    request = urllib.request.Request(f"http://127.0.0.1:{PORT}{path}", headers={"Host": f"{host}:{PORT}"})
    opener = urllib.request.build_opener(urllib.request.ProxyHandler({}), NoRedirect)
    try:
        with opener.open(request, timeout=10) as answer:
            return answer.status, answer.headers
    except urllib.error.HTTPError as answer:
        with answer:
            return answer.code, answer.headers


class ShippedSite(BrowsingTest):
    def shows(self, title, address):
        wait_until(lambda: self.page.caption == title, lambda: f"{title} is shown; {self.situation()}")
        wait_until(lambda: self.page.address == address, lambda: f"its address is shown; {self.situation()}")

    def test_every_subject_has_a_host_of_its_own(self):
        for label, title in (("math", "Math"), ("language", "Language"), ("science", "Science"),
                             ("social", "Social Studies")):
            with self.subTest(label):
                url = f"http://{label}.kivandra.localhost:{PORT}/"
                self.page.go(url)
                self.shows(title, url)

    def test_a_subject_s_pages_are_found_at_its_host_and_at_the_site(self):
        for host in ("math.kivandra.localhost", "kivandra.localhost"):
            with self.subTest(host):
                url = f"http://{host}:{PORT}/math/clock.html"
                self.page.go(url)
                self.shows("The clock", url)

    def test_an_unknown_subject_is_a_missing_page(self):
        self.assertEqual(404, ask("chess.kivandra.localhost", "/")[0])
        self.assertEqual(421, ask("chess.example", "/")[0])

    def test_questions_are_led_to_an_encyclopedia_in_their_language(self):
        path = "/main/askjeeves.asp?ask=donde%20viven&origin=0&site_name=Jeeves&metasearch=yes"
        for label, service in (("english", "https://simple.wikipedia.org/"), ("spanish", "https://es.vikidia.org/")):
            with self.subTest(label):
                status, headers = ask(f"{label}.answers.localhost", path)
                self.assertEqual(302, status)
                self.assertTrue(headers["Location"].startswith(service), headers["Location"])

    def test_where_a_question_leads_is_judged(self):
        # No real service can be reached from here, so the page behind the forwarder can't be read.
        self.visit()
        self.page.go("why is the sky blue")
        self.wait_blocked()


if __name__ == "__main__":
    unittest.main()
