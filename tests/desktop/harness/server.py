# SPDX-License-Identifier: GPL-3.0-or-later
"""A web server on loopback that writes down who asked for what, and answers as each test wants."""

import dataclasses
import http.server
import socket
import threading
import time

from .waiting import PATIENCE, wait_until


@dataclasses.dataclass(frozen=True)
class Request:
    """One question that reached the server."""

    method: str
    host: str
    path: str  # without the query
    query: str
    headers: dict  # names in lower case
    body: bytes
    time: float


class _Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def _answer(self):
        path, _, query = self.path.partition("?")
        size = int(self.headers.get("Content-Length") or 0)
        request = Request(self.command, self.headers.get("Host", ""), path, query,
                          {name.lower(): value for name, value in self.headers.items()},
                          self.rfile.read(size), time.monotonic())
        answer = self.server.owner.take(request)
        try:
            answer(self, request)
        except (BrokenPipeError, ConnectionResetError):
            self.close_connection = True

    do_GET = do_POST = do_HEAD = do_PUT = _answer

    def log_message(self, *_):
        pass


class _Server(http.server.ThreadingHTTPServer):
    daemon_threads = True
    request_queue_size = 128

    def handle_error(self, request, client_address):
        pass


class Server:
    """Answers are functions of a handler and a Request; answers.py makes them."""

    def __init__(self):
        self._lock = threading.Lock()
        self._log = []
        self._answers = {}
        self.stopping = threading.Event()
        self._server = _Server(("127.0.0.1", 0), _Handler)
        self._server.owner = self
        self.port = self._server.server_address[1]
        threading.Thread(target=self._server.serve_forever, kwargs={"poll_interval": 0.1}, daemon=True).start()

    def take(self, request):
        with self._lock:
            self._log.append(request)
            return self._answers.get(request.path, _not_found)

    def serve(self, path, answer, host="127.0.0.1"):
        """From here on `path` is answered so; gives the full address."""
        with self._lock:
            self._answers[path] = answer
        return self.url(path, host)

    def serves(self, path):
        with self._lock:
            return path in self._answers

    def url(self, path, host="127.0.0.1"):
        return f"http://{host}:{self.port}{path}"

    def asked(self, path=None, method=None):
        """Every question so far for `path`, the oldest first."""
        with self._lock:
            return [request for request in self._log
                    if path in (None, request.path) and method in (None, request.method)]

    def times_asked(self, path, method=None):
        return len(self.asked(path, method))

    def wait_asked(self, path, times=1, seconds=PATIENCE):
        """Waits until `path` has been asked for at least so often; gives the questions."""
        return wait_until(lambda: (self.asked(path) if self.times_asked(path) >= times else None),
                          lambda: f"{path} is asked for {times} times (so far {self.times_asked(path)})", seconds)

    def close(self):
        self.stopping.set()
        self._server.shutdown()
        self._server.server_close()


def _not_found(handler, _request):
    handler.send_response(404)
    handler.send_header("Content-Length", "0")
    handler.end_headers()


def free_port():
    """A port of loopback on which nothing listens."""
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]
