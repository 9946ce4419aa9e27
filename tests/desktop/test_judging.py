# SPDX-License-Identifier: GPL-3.0-or-later
"""What is asked of the network, and what a block looks like, on every road that leads to a page."""

import unittest

from harness import answers, pages
from harness.case import BrowsingTest
from harness.server import free_port
from harness.waiting import stays_true, wait_until
from harness.windows import BLOCKED, FRAME_ADDRESS, PRODUCT


class Typed(BrowsingTest):
    def test_a_clean_page_is_asked_for_twice_and_shown(self):
        name, url = self.clean()
        self.page.go(url)
        self.painted(name)
        self.assertEqual(["GET", "GET"], [each.method for each in self.server.asked(f"/{name}")])
        wait_until(lambda: self.page.caption == name, "the title stands on the page window")
        wait_until(lambda: self.page.address == url, "the address box shows the address")
        self.assertEqual(PRODUCT, self.frame.caption)
        self.assertFalse(self.frame.tool("Lock").usable)

    def test_a_forbidden_page_is_asked_for_once_and_refused(self):
        before = self.visit()
        name, url = self.forbidden()
        self.page.go(url)
        self.wait_blocked()
        self.assertEqual(1, self.server.times_asked(f"/{name}"))
        self.assertEqual(BLOCKED, self.frame.caption)
        self.assertTrue(self.frame.tool("Lock").usable)
        self.assert_never_painted(name)
        with self.subTest("the page before goes on being shown"):
            self.assertTrue(before.endswith(self.page.caption), (before, self.page.caption))

    def test_a_forbidden_address_is_never_asked_for(self):
        self.visit()
        name, url = self.forbidden_address()
        self.page.go(url)
        self.wait_blocked()
        self.assertEqual([], self.server.asked(f"/{name}"))
        self.assert_never_painted(name)

    def test_typing_by_keyboard_does_the_same(self):
        self.visit()
        name, url = self.forbidden()
        self.frame.click(self.page.box)
        self.hands.key("ctrl+a")
        self.hands.type(url)
        self.hands.key("Return")
        self.wait_blocked()
        self.assert_never_painted(name)

    def test_the_frame_s_own_address_box_does_the_same(self):
        self.visit()
        name, url = self.forbidden()
        box = self.frame.field(FRAME_ADDRESS)
        self.frame.click(box)
        box.write(url)
        self.hands.key("Return")
        self.wait_blocked()
        self.assert_never_painted(name)

    def test_the_next_page_takes_the_notice_away_and_shuts_the_lock(self):
        _, url = self.forbidden()
        self.page.go(url)
        self.wait_blocked()
        self.visit()
        self.assertEqual(PRODUCT, self.frame.caption)
        self.assertFalse(self.frame.tool("Lock").usable)

    def test_an_empty_page_and_a_dead_server_are_refused(self):
        rows = {
            "empty body": self.server.serve("/empty", answers.page("")),
            "204": self.server.serve("/204", answers.page("", status=204)),
            "304": self.server.serve("/304", answers.page("", status=304)),
            "connection closed without a byte": self.server.serve("/nothing", answers.nothing()),
            "no web server's answer": self.server.serve("/noise", answers.raw(b"\x16\x03\x01 no http here\r\n\r\n")),
            "nobody listens": f"http://127.0.0.1:{free_port()}/",
            "no such host": "http://nobody.invalid/",
            "port that browsers avoid": "http://127.0.0.1:9/",
        }
        for row, url in rows.items():
            with self.subTest(row):
                self.visit()
                self.page.go(url)
                self.wait_blocked()

    def test_the_body_of_an_error_page_is_judged_like_any_page(self):
        for status in (401, 403, 404, 410, 500, 503):
            with self.subTest(status, text="forbidden"):
                self.visit()
                name, url = self.forbidden(status=status)
                self.page.go(url)
                self.wait_blocked()
                self.assert_never_painted(name)
        name = self.name("sorry")
        url = self.server.serve(f"/{name}", answers.page(pages.html(name), status=404))
        self.page.go(url)
        self.painted(name)


class Roads(BrowsingTest):
    """From a clean page to a forbidden one, by everything that a page can do."""

    def leads_to_block(self, body="", head="", forbidden=None, click=False, asked=1):
        """Shows a page made by `body` and `head` (functions of the forbidden address or plain text); expects a block."""
        name, url = forbidden or self.forbidden()
        made = [part(url) if callable(part) else part for part in (body, head)]
        clean, start = self.clean(*made)
        self.page.go(start)
        if click:
            self.painted(clean)
            self.page.click_page()
        self.wait_blocked()
        self.assertEqual(2, self.server.times_asked(f"/{clean}"), "the page before is clean")
        path = url.split(str(self.server.port), 1)[1]
        self.assertEqual(asked, self.server.times_asked(path))
        self.assert_never_painted(name)

    def test_a_link(self):
        self.leads_to_block(pages.link, click=True)

    def test_a_link_to_a_forbidden_address(self):
        self.leads_to_block(pages.link, forbidden=self.forbidden_address(), click=True, asked=0)

    def test_scripts(self):
        rows = {
            "location =": "location = '%s'",
            "location.replace": "location.replace('%s')",
            "location.assign": "location.assign('%s')",
            "a timer": "setTimeout(() => location = '%s', 50)",
            "a link's click": "const a = document.createElement('a'); a.href = '%s'; a.click()",
            "a frame that moves the top": None,
        }
        for row, code in rows.items():
            with self.subTest(row):
                if code:
                    self.leads_to_block(lambda url: pages.script(f"onload = () => {{ {code % url} }}"))
                else:
                    name, url = self.forbidden()
                    inner, inside = self.clean(pages.script(f"onload = () => {{ top.location = '{url}' }}"))
                    self.leads_to_block(pages.frame(inside), forbidden=(name, url))

    def test_a_form_by_get(self):
        self.leads_to_block(lambda url: f'<form action="{url}"><input name="q" value="x"></form>' +
                            pages.script("onload = () => document.forms[0].submit()"))

    def test_a_form_by_post_is_judged_by_a_get(self):
        name, url = self.forbidden()
        self.leads_to_block(f'<form action="{url}" method="post"><input name="q" value="x"></form>' +
                            pages.script("onload = () => document.forms[0].submit()"), forbidden=(name, url))
        self.assertEqual(["GET"], [each.method for each in self.server.asked(f"/{name}")])

    def test_a_clean_form_by_post_arrives_once_with_its_fields(self):
        name = self.name("posted")
        url = self.server.serve(f"/{name}", answers.page(pages.html(name)))
        self.visit(f'<form action="{url}" method="post"><input name="q" value="seed"></form>' +
                   pages.script("onload = () => document.forms[0].submit()"))
        self.painted(name)
        self.assertEqual(["GET", "POST"], [each.method for each in self.server.asked(f"/{name}")])
        self.assertEqual(b"q=seed", self.server.asked(f"/{name}")[1].body)

    def test_meta_refresh(self):
        for delay in (0, 1):
            with self.subTest(delay=delay):
                self.leads_to_block("", lambda url: f'<meta http-equiv="refresh" content="{delay};url={url}">')

    def test_the_header_refresh(self):
        for delay in (0, 1):
            with self.subTest(delay=delay):
                name, url = self.forbidden()
                start = self.name("start")
                self.page.go(self.server.serve(f"/{start}", answers.page(
                    pages.html(start), headers=[("Refresh", f"{delay};url={url}")])))
                self.wait_blocked()
                self.assert_never_painted(name)

    def test_frames(self):
        inner, nested = self.forbidden()
        _, middle = self.clean(pages.frame(nested))
        rows = {
            "iframe": lambda url: pages.frame(url),
            "object": lambda url: f'<object data="{url}" type="text/html" width="200" height="200"></object>',
            "embed": lambda url: f'<embed src="{url}" type="text/html" width="200" height="200">',
            "made by a script": lambda url: pages.script(
                f"onload = () => {{ const f = document.createElement('iframe'); f.src = '{url}'; document.body.append(f) }}"),
        }
        for row, body in rows.items():
            with self.subTest(row):
                self.leads_to_block(body)
        with self.subTest("nested"):
            self.leads_to_block(pages.frame(middle), forbidden=(inner, nested))
        with self.subTest("frameset"):
            name, url = self.forbidden()
            start = self.server.serve("/frameset", answers.page(
                f'<!DOCTYPE html><title>set</title><link rel="icon" href="data:,">'
                f'<frameset cols="50%,*"><frame src="{url}"><frame src="{url}"></frameset>'))
            self.page.go(start)
            self.wait_blocked()
            self.assert_never_painted(name)
        with self.subTest("forbidden address"):
            self.leads_to_block(lambda url: pages.frame(url), forbidden=self.forbidden_address(), asked=0)
        with self.subTest("on another host"):
            self.leads_to_block(lambda url: pages.frame(url), forbidden=self.forbidden(host="site-b.localhost"))

    def test_clean_frames_are_shown(self):
        inner, inside = self.clean()
        middle, between = self.clean(pages.frame(inside))
        self.visit(pages.frame(between) + '<iframe src="about:blank"></iframe><iframe srcdoc="<p>hello"></iframe>')
        self.painted(middle)
        self.painted(inner)
        for name in (inner, middle):
            self.assertEqual(2, self.server.times_asked(f"/{name}"))

    def test_redirects(self):
        for status in (301, 302, 303, 307, 308):
            with self.subTest(status):
                self.visit()
                name, url = self.forbidden()
                self.page.go(self.server.serve(f"/go-{status}", answers.redirect(url, status)))
                self.wait_blocked()
                self.assert_never_painted(name)
        with self.subTest("to a clean page"):
            name, url = self.clean()
            self.page.go(self.server.serve("/go-clean", answers.redirect(url)))
            self.painted(name)
            wait_until(lambda: self.page.address == url, lambda: self.situation())

    def test_a_redirect_to_a_forbidden_address_never_reaches_it_by_the_engine(self):
        self.visit()
        name, url = self.forbidden_address()
        self.page.go(self.server.serve("/go-address", answers.redirect(url)))
        self.wait_blocked()
        self.assert_never_painted(name)
        self.assertLessEqual(self.server.times_asked(f"/{name}"), 1, "the side fetch alone may follow")

    def test_chains_of_redirects(self):
        def chain(length, last):
            stem = self.name("hop")
            url = last
            for hop in range(length):
                url = self.server.serve(f"/{stem}/{hop}", answers.redirect(url))
            return url
        with self.subTest("5 hops to a clean page"):
            name, url = self.clean()
            self.page.go(chain(5, url))
            self.painted(name)
        with self.subTest("5 hops to a forbidden page"):
            name, url = self.forbidden()
            self.page.go(chain(5, url))
            self.wait_blocked()
            self.assert_never_painted(name)
        with self.subTest("25 hops to a forbidden page"):
            self.visit()
            name, url = self.forbidden()
            self.page.go(chain(25, url))
            self.wait_blocked()
            self.assert_never_painted(name)
        with self.subTest("a loop of two"):
            self.visit()
            self.server.serve("/loop-a", answers.redirect("/loop-b"))
            self.server.serve("/loop-b", answers.redirect("/loop-a"))
            self.page.go(self.server.url("/loop-a"))
            self.wait_blocked()
        with self.subTest("a loop of one"):
            self.visit()
            self.server.serve("/loop-self", answers.redirect("/loop-self"))
            self.page.go(self.server.url("/loop-self"))
            self.wait_blocked()

    def test_redirects_to_what_is_no_page(self):
        rows = ["file:///etc/passwd", "data:text/html,hello", "javascript:alert(1)", "about:blank", "ftp://127.0.0.1/",
                "webkit://gpu", "http:///", "http://[bad/", "//", "mailto:a@example.org"]
        for number, target in enumerate(rows):
            with self.subTest(target):
                self.visit()
                self.page.go(self.server.serve(f"/odd-{number}", answers.redirect(target)))
                self.wait_blocked()

    def test_back_to_a_page_that_has_become_forbidden(self):
        name = self.name("turned")
        self.never_painted.append(name + "-bad")
        turned = []
        url = self.server.serve(f"/{name}", answers.chosen_by(lambda _: answers.page(
            pages.forbidden(name + "-bad") if turned else pages.html(name))))
        self.page.go(url)
        self.painted(name)
        self.visit(pages.script("onclick = () => history.back()"))
        turned.append(True)
        with self.subTest("by script"):
            self.page.click_page()
            self.wait_blocked()
            self.assert_never_painted(name + "-bad")
        with self.subTest("by the tool"):
            self.visit()
            self.frame.press("Back")
            stays_true(lambda: not self.server.asked(pages.mark(name + "-bad")), "nothing forbidden is painted", 0.5)

    def test_reload_is_judged_anew(self):
        name = self.name("reloaded")
        self.never_painted.append(name + "-bad")
        turned = []
        self.page.go(self.server.serve(f"/{name}", answers.chosen_by(lambda _: answers.page(
            pages.forbidden(name + "-bad") if turned else pages.html(name)))))
        self.painted(name)
        turned.append(True)
        self.frame.press("Refresh")
        self.wait_blocked()
        self.assert_never_painted(name + "-bad")

    def test_back_forward_and_refresh_show_clean_pages_again(self):
        first = self.visit()
        second = self.visit()
        for tool, url in (("Back", first), ("Forward", second), ("Refresh", second)):
            with self.subTest(tool):
                mark = pages.mark(url.rsplit("/", 1)[1])
                times = self.server.times_asked(mark)
                self.frame.press(tool)
                self.server.wait_asked(mark, times + 1)
                wait_until(lambda url=url: self.page.address == url, lambda: self.situation())


if __name__ == "__main__":
    unittest.main()
