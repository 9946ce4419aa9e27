# SPDX-License-Identifier: GPL-3.0-or-later
"""Ways round a filter, each of which must end in a block or in nothing at all."""

import unittest

from harness import answers, pages, processes
from harness.case import BrowsingTest, display
from harness.pages import WORD
from harness.waiting import stays_true

QUIET_SECONDS = 0.7


class Schemes(BrowsingTest):
    """Addresses that no web server answers."""

    def setUp(self):
        super().setUp()
        self.programs = set(processes.descendants(self.program.pid))

    def assert_no_other_program(self):
        started = {processes.name_of(pid) for pid in processes.descendants(self.program.pid)
                   if pid not in self.programs}
        self.assertLessEqual(started, {"", "bwrap", "xdg-dbus-proxy", "WebKitWebProcess", "WebKitNetworkProcess"})

    def test_typed_addresses_of_other_schemes_are_refused(self):
        secret = self.home.path / "secret.html"
        secret.write_text(pages.html("secret", colour=pages.FORBIDDEN_COLOUR))
        # "http://" in the text makes the address box take it for an address as it stands.
        rows = ["data:text/html,<body bgcolor=%23ff00c8>http://</body>",
                f"file://{secret}?http://", f"file://{secret}#http://", "webkit://gpu?http://", "about:blank?http://",
                "view-source:http://127.0.0.1/", "ftp://127.0.0.1/http://", "blob:http://127.0.0.1/x",
                "feed:http://127.0.0.1/", "resource:///org/http://", "inspector://http://", "tel:1http://",
                "vnd.unknown:http://", "http-://x.http://"]
        for row in rows:
            with self.subTest(row):
                self.visit()
                self.page.go(row)
                self.wait_blocked()
                self.assertFalse(display().shows(pages.FORBIDDEN_COLOUR))
        self.assert_no_other_program()

    def test_a_typed_script_does_not_run(self):
        for row in ("javascript:fetch('%s')//http://", "javascript:location='%s'", " javascript:fetch('%s')",
                    "JavaScript:fetch('%s')"):
            with self.subTest(row):
                path = "/" + self.name("ran")
                self.visit()
                self.page.go(row % self.server.url(path))
                stays_true(lambda path=path: not self.server.asked(path), "the script does not run", QUIET_SECONDS)

    def test_a_page_s_own_links_to_other_schemes_lead_nowhere(self):
        secret = self.home.path / "secret.html"
        secret.write_text(pages.html("secret", colour=pages.FORBIDDEN_COLOUR))
        pink = "<body bgcolor=%23ff00c8>hello"
        rows = {"data": f"data:text/html,{pink}", "file": f"file://{secret}", "webkit": "webkit://gpu",
                "ftp": "ftp://127.0.0.1/", "unknown": "vnd.unknown:x", "tel": "tel:123", "view-source":
                "view-source:" + self.server.url("/x")}
        for row, target in rows.items():
            for way in ("link", "script", "frame"):
                with self.subTest(row, way=way):
                    body = {"link": pages.link(target),
                            "script": pages.script(f"onclick = () => {{ location = '{target}' }}"),
                            "frame": pages.script(
                                "onclick = () => { const f = document.createElement('iframe'); f.width = 600;"
                                f" f.height = 400; f.src = '{target}'; document.body.append(f) }}")}[way]
                    self.visit(body)
                    self.page.click_page()
                    stays_true(lambda: not display().shows(pages.FORBIDDEN_COLOUR), "nothing of it is painted",
                               QUIET_SECONDS)
        self.assert_no_other_program()

    def test_a_blob_made_by_a_page_is_refused_at_the_top_and_in_a_frame(self):
        make = ("const u = URL.createObjectURL(new Blob(['<html style=\"background:#ff00c8\">x'],"
                " {type: 'text/html'}));")
        rows = {"top": "location = u",
                "frame": "const f = document.createElement('iframe'); f.width = 600; f.height = 400; f.src = u;"
                         " document.body.append(f)"}
        for row, code in rows.items():
            with self.subTest(row):
                self.visit(pages.script(f"onclick = () => {{ {make} {code} }}"))
                self.page.click_page()
                self.wait_blocked()
                self.assertFalse(display().shows(pages.FORBIDDEN_COLOUR))


class MailByTheFilter(BrowsingTest):
    def test_without_the_mail_rule_a_mail_link_is_a_page_that_cannot_be_fetched(self):
        self.visit(pages.link("mailto:kiv@example.org"))
        self.page.click_page()
        self.wait_blocked()


class Words(BrowsingTest):
    def shown(self, text):
        name = self.name("word")
        self.page.go(self.server.serve(f"/{name}", answers.page(pages.html(name, text=text))))
        self.painted(name)

    def refused(self, text, **answer):
        name = self.name("word")
        self.never_painted.append(name)
        self.visit()
        data = pages.html(name, text=text, colour=pages.FORBIDDEN_COLOUR)
        encoding = answer.pop("encoding", "utf-8")
        self.page.go(self.server.serve(f"/{name}", answers.page(
            answer.pop("before", b"") + data.encode(encoding), **answer)))
        self.wait_blocked()
        self.assert_never_painted(name)

    def test_a_forbidden_word_is_found_in_any_case_and_only_as_a_whole_word(self):
        for text in (WORD, WORD.upper(), WORD.title(), f"({WORD})", f"a {WORD}, b", f"<b>{WORD}</b>", f"x_{WORD}_x",
                     f"&nbsp;{WORD}&", f"<!-- {WORD} -->", f"<p title='{WORD}'>"):
            with self.subTest(text):
                self.refused(text)
        for text in (f"x{WORD}", f"{WORD}x", f"{WORD}7", f"é{WORD}", f"{WORD}ñ", WORD[:-1], f"{WORD[:3]}<b>{WORD[3:]}</b>"):
            with self.subTest(text):
                self.shown(text)

    def test_a_forbidden_word_is_found_in_every_encoding(self):
        kind = "text/html"
        rows = {
            "UTF-8 with a mark": dict(encoding="utf-8-sig", kind=kind),
            "UTF-16 little end, by its mark": dict(encoding="utf-16-le", before=b"\xff\xfe", kind=kind),
            "UTF-16 big end, by its mark": dict(encoding="utf-16-be", before=b"\xfe\xff", kind=kind),
            "UTF-16 little end, by the header": dict(encoding="utf-16-le", kind=kind + "; charset=utf-16le"),
            "UTF-16 big end, by the header": dict(encoding="utf-16-be", kind=kind + "; charset=utf-16be"),
            "Latin, by the header": dict(encoding="latin-1", kind=kind + "; charset=iso-8859-1"),
            "Windows, by the header": dict(encoding="cp1252", kind=kind + "; charset=windows-1252"),
            "Japanese, by the header": dict(encoding="iso2022_jp", kind=kind + "; charset=iso-2022-jp"),
            "said wrongly": dict(encoding="utf-8", kind=kind + "; charset=shift_jis"),
            "unknown": dict(encoding="utf-8", kind=kind + "; charset=no-such"),
            "not said": dict(encoding="utf-8", kind=kind),
            "no type at all": dict(encoding="utf-8", kind=None),
            "plain text": dict(encoding="utf-8", kind="text/plain"),
            "XHTML": dict(encoding="utf-8", kind="application/xhtml+xml"),
        }
        for row, how in rows.items():
            with self.subTest(row):
                self.refused(f"here {WORD} stands", **how)

    def test_a_forbidden_word_is_found_in_packed_pages(self):
        for how in ("gzip", "deflate"):
            with self.subTest(how):
                self.visit()
                name = self.name("packed")
                self.never_painted.append(name)
                self.page.go(self.server.serve(f"/{name}", answers.packed(pages.forbidden(name), how)))
                self.wait_blocked()
                self.assert_never_painted(name)
        with self.subTest("a clean one"):
            name = self.name("packed")
            self.page.go(self.server.serve(f"/{name}", answers.packed(pages.html(name))))
            self.painted(name)


class TwoFaces(BrowsingTest):
    """Servers that would like to show the filter one page and the child another."""

    def test_both_questions_are_alike(self):
        name, url = self.clean()
        self.page.go(url)
        self.painted(name)
        first, second = self.server.asked(f"/{name}")
        for header in ("user-agent", "accept", "accept-language", "cookie", "referer", "host"):
            with self.subTest(header):
                self.assertEqual(first.headers.get(header), second.headers.get(header))

    def test_the_filter_sends_the_cookies_of_the_engine(self):
        name = self.name("member")
        self.never_painted.append(name)
        self.visit()
        set_cookie = self.name("cookie")
        self.page.go(self.server.serve(f"/{set_cookie}", answers.page(
            pages.html(set_cookie), headers=[("Set-Cookie", "member=yes; HttpOnly; Path=/")])))
        self.painted(set_cookie)
        url = self.server.serve(f"/{name}", answers.chosen_by(lambda request: answers.page(
            pages.forbidden(name) if "member=yes" in request.headers.get("cookie", "") else pages.html(name))))
        self.page.go(url)
        self.wait_blocked()
        self.assert_never_painted(name)

    def test_cookies_of_one_host_never_reach_another(self):
        set_cookie = self.name("cookie")
        self.page.go(self.server.serve(f"/{set_cookie}", answers.page(
            pages.html(set_cookie), headers=[("Set-Cookie", "secret=kept; Path=/")]), "site-a.localhost"))
        self.painted(set_cookie)
        name, url = self.clean(host="site-b.localhost")
        self.page.go(self.server.serve("/away", answers.redirect(url), "site-a.localhost"))
        self.painted(name)
        self.assertTrue(all("secret=kept" in each.headers.get("cookie", "") for each in self.server.asked("/away")))
        self.assertEqual([""] * len(self.server.asked(f"/{name}")),
                         [each.headers.get("cookie", "") for each in self.server.asked(f"/{name}")])

    def test_a_service_worker_never_registers(self):
        worker = ("self.addEventListener('fetch', e => e.respondWith(new Response('<html style=\"background:#ff00c8\">',"
                  " {headers: {'Content-Type': 'text/html'}})))")
        self.server.serve("/worker.js", answers.page(worker, kind="text/javascript"))
        self.server.serve("/told", answers.page(""))
        body = pages.script("""
            const tell = (what) => fetch('/told?' + what);
            if (!('serviceWorker' in navigator)) tell('none');
            else navigator.serviceWorker.register('/worker.js').then(() => tell('registered'), () => tell('refused'));
        """)
        self.visit(body, host="site-a.localhost")
        told = self.server.wait_asked("/told")[0].query
        self.assertNotEqual("registered", told)
        name, url = self.clean(host="site-a.localhost")
        self.page.go(url)
        self.painted(name)
        self.assertFalse(display().shows(pages.FORBIDDEN_COLOUR))

    def test_a_later_part_of_a_page_in_parts_is_never_shown(self):
        name = self.name("part")
        self.never_painted.append(name)
        self.visit()
        self.page.go(self.server.serve("/parts", answers.parts([pages.html("part-clean"), pages.forbidden(name)])))
        self.server.wait_asked("/parts")
        stays_true(lambda: not self.server.asked(pages.mark(name)), "the second part is not painted", 2)

    def test_a_page_that_changes_between_the_two_questions_is_the_known_limit_and_kills_nothing(self):
        name = self.name("turncoat")
        asked = []
        def choose(_):
            asked.append(1)
            return answers.page(pages.html(name) if len(asked) == 1 else pages.html(name + "-b"))
        self.page.go(self.server.serve(f"/{name}", answers.chosen_by(choose)))
        self.painted(name + "-b")


class Downloads(BrowsingTest):
    def test_nothing_lands_on_the_disk_unasked(self):
        blob = b"\x7fELF some bytes that no page shows"
        rows = {
            "attachment": answers.page(blob, kind="application/octet-stream",
                                       headers=[("Content-Disposition", "attachment; filename=game.bin")]),
            "attachment with a page's type": answers.page(pages.html("attached"), headers=[
                ("Content-Disposition", "attachment; filename=page.html")]),
            "unknown type": answers.page(blob, kind="application/x-unheard-of"),
            "zip": answers.page(b"PK\x03\x04 zip", kind="application/zip"),
            "executable": answers.page(blob, kind="application/x-executable"),
        }
        self.visit()
        before = self.home.files()
        programs = set(processes.descendants(self.program.pid))
        for row, answer in rows.items():
            for way in ("typed", "link", "download attribute"):
                with self.subTest(row, way=way):
                    path = "/" + self.name("file")
                    url = self.server.serve(path, answer)
                    if way == "typed":
                        self.page.go(url)
                    else:
                        self.visit(pages.link(url, "download" if way == "download attribute" else ""))
                        self.page.click_page()
                    self.server.wait_asked(path)
                    self.assertEqual(1, len(self.desk.windows()))
        self.visit()
        landed = {path for path in self.home.files() - before if not path.startswith(("cache/", "data/", "runtime/"))}
        self.assertEqual(set(), landed)
        self.assertFalse([path for path in self.home.files() if "game.bin" in path or "page.html" in path])
        names = {processes.name_of(pid) for pid in processes.descendants(self.program.pid) if pid not in programs}
        self.assertLessEqual(names, {"", "bwrap", "xdg-dbus-proxy", "WebKitWebProcess"})


if __name__ == "__main__":
    unittest.main()
