# SPDX-License-Identifier: GPL-3.0-or-later
"""The whole web, played by one server: a program whose way out leads here shows what it asks of any host."""

from . import answers, pages
from .server import Server
from .waiting import wait_until


class World(Server):
    """A proxy on loopback that answers for every host itself. Its log holds the questions with their host: `path` is the
    whole address up to the query."""

    @property
    def environment(self):
        """What a program needs so that its questions come here; those to loopback go where they always go."""
        here = f"http://127.0.0.1:{self.port}"
        return {"http_proxy": here, "https_proxy": here, "no_proxy": "localhost,.localhost,127.0.0.1"}

    def take(self, request):
        super().take(request)
        return answers.page(pages.html("elsewhere"))

    def addresses(self, method="GET"):
        """Every address asked for so far, the oldest first; marks of the test pages left out."""
        return [request.path + ("?" + request.query if request.query else "") for request in self.asked(method=method)
                if request.path.startswith("http") and "/painted/" not in request.path]

    def wait_address(self, address, after=0, seconds=10.0):
        """Waits until `address`, spelled as the engine sends it, stands in the log behind its first `after` questions."""
        return wait_until(lambda: address in self.addresses()[after:],
                          lambda: f"{address} is asked for, not {self.addresses()[after:]}", seconds)
