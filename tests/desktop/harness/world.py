# SPDX-License-Identifier: GPL-3.0-or-later
"""The whole web, played by one server: a program whose way out leads here shows what it asks of any host."""

import http.client
import urllib.parse

from . import answers, pages
from .server import Server
from .waiting import PATIENCE, wait_until

PRODUCT_DOMAIN = "kivandra.localhost"
HOP_HEADERS = {"connection", "keep-alive", "transfer-encoding", "proxy-connection", "content-length"}


class World(Server):
    """A proxy on loopback that answers for every host itself; only the program's own pages come from the program. Its log
    holds the questions with their host: `path` is the whole address up to the query."""

    @property
    def environment(self):
        """What a program needs so that its questions come here; those to this machine's number go where they always go."""
        here = f"http://127.0.0.1:{self.port}"
        return {"http_proxy": here, "https_proxy": here, "no_proxy": "127.0.0.1"}

    def take(self, request):
        own = super().take(request)
        host = urllib.parse.urlsplit(request.path).hostname
        if host is None or self.serves(request.path):
            return own
        if host == PRODUCT_DOMAIN or host.endswith("." + PRODUCT_DOMAIN):
            return _pass_on
        return answers.page(pages.html("elsewhere"))

    def serve_address(self, address, answer):
        """From here on this address of any host is answered so."""
        self.serve(address, answer)
        return address

    def addresses(self, method="GET"):
        """Every address asked for so far, the oldest first; marks of the test pages left out."""
        return [request.path + ("?" + request.query if request.query else "") for request in self.asked(method=method)
                if request.path.startswith("http") and "/painted/" not in request.path]

    def wait_address(self, address, after=0, seconds=PATIENCE):
        """Waits until `address`, spelled as the engine sends it, stands in the log behind its first `after` questions."""
        return wait_until(lambda: address in self.addresses()[after:],
                          lambda: f"{address} is asked for, not {self.addresses()[after:]}", seconds)


def _pass_on(handler, request):
    """Gets the answer from the program that serves the address on this machine."""
    parts = urllib.parse.urlsplit(request.path)
    connection = http.client.HTTPConnection("127.0.0.1", parts.port, timeout=10)
    headers = {name: value for name, value in request.headers.items() if name not in HOP_HEADERS}
    connection.request(request.method, (parts.path or "/") + ("?" + request.query if request.query else ""),
                       request.body or None, headers)
    answer = connection.getresponse()
    body = answer.read()
    connection.close()
    kept = [(name, value) for name, value in answer.getheaders()
            if name.lower() not in HOP_HEADERS | {"content-type", "cache-control", "date", "server"}]
    answers.page(body, answer.status, answer.getheader("Content-Type"), kept)(handler, request)
