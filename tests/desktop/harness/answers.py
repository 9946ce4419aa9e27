# SPDX-License-Identifier: GPL-3.0-or-later
"""Answers of the test server: good ones, slow ones, broken ones and hostile ones."""

import gzip
import socket
import struct
import time
import zlib

BUSY = (ConnectionError, OSError)


def page(body, status=200, kind="text/html; charset=utf-8", headers=(), method_bodies=None):
    """A whole answer. `body` is text or bytes; `method_bodies` gives other bodies by method."""
    def answer(handler, request):
        chosen = (method_bodies or {}).get(request.method, body)
        data = chosen.encode() if isinstance(chosen, str) else chosen
        handler.send_response(status)
        if kind:
            handler.send_header("Content-Type", kind)
        if status not in (204, 304):
            handler.send_header("Content-Length", str(len(data)))
        handler.send_header("Cache-Control", "no-store")
        for name, value in headers:
            handler.send_header(name, value)
        handler.end_headers()
        if request.method != "HEAD" and status not in (204, 304):
            handler.wfile.write(data)
    return answer


def redirect(target, status=302, headers=()):
    return page("", status, headers=[("Location", target), *headers])


def chosen_by(choose):
    """An answer that `choose(request)` picks anew each time."""
    return lambda handler, request: choose(request)(handler, request)


def after(seconds, answer):
    """`answer`, `seconds` late."""
    def late(handler, request):
        handler.server.owner.stopping.wait(seconds)
        answer(handler, request)
    return late


def held(event, answer):
    """`answer` as soon as `event` is set."""
    def late(handler, request):
        while not event.wait(0.05):
            if handler.server.owner.stopping.is_set():
                return
        answer(handler, request)
    return late


def silence():
    """Takes the question and never says a word."""
    def answer(handler, _request):
        handler.server.owner.stopping.wait(120)
        handler.close_connection = True
    return answer


def _begin(handler, kind="text/html; charset=utf-8", headers=()):
    handler.send_response(200)
    handler.send_header("Content-Type", kind)
    handler.send_header("Connection", "close")
    for name, value in headers:
        handler.send_header(name, value)
    handler.end_headers()
    handler.close_connection = True


def drip(pause=1.0):
    """A page that comes a byte every `pause` seconds and never ends."""
    def answer(handler, _request):
        _begin(handler)
        handler.wfile.write(b"<!DOCTYPE html><title>Drip</title>")
        stopping = handler.server.owner.stopping
        while not stopping.wait(pause):
            handler.wfile.write(b".")
    return answer


def reset(after_bytes=b"<!DOCTYPE html><title>Half</title><p>half a p"):
    """Begins a page that promises more, then resets the connection."""
    def answer(handler, _request):
        _begin(handler, headers=[("Content-Length", "100000")])
        handler.wfile.write(after_bytes)
        handler.wfile.flush()
        time.sleep(0.05)  # lets the first bytes leave before the reset overtakes them
        handler.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        handler.connection.close()
    return answer


def much(megabytes, sent):
    """A page of `megabytes`; counts in the list `sent` how many bytes went out."""
    def answer(handler, _request):
        _begin(handler, headers=[("Content-Length", str(megabytes << 20))])
        block = b"<p>much of the same</p>" * 2850
        block = block[:1 << 16]
        try:
            for _ in range(megabytes << 4):
                handler.wfile.write(block)
                sent.append(len(block))
        except BUSY:
            pass
    return answer


def packed(body, how="gzip"):
    """A page whose bytes travel packed."""
    data = body.encode()
    if how == "gzip":
        data = gzip.compress(data)
    elif how == "deflate":
        data = zlib.compress(data)
    return page(data, headers=[("Content-Encoding", how)])


def bomb(megabytes):
    """A small answer that unpacks to `megabytes` of blanks: one packed block, said again and again."""
    packer = zlib.compressobj(9, zlib.DEFLATED, -15)
    head = packer.compress(b"<!DOCTYPE html><title>Bomb</title>") + packer.flush(zlib.Z_FULL_FLUSH)
    block = packer.compress(b" " * (1 << 20)) + packer.flush(zlib.Z_FULL_FLUSH)
    gzip_head = b"\x1f\x8b\x08\x00\x00\x00\x00\x00\x00\xff"
    return page(gzip_head + head + block * megabytes, headers=[("Content-Encoding", "gzip")])


def parts(bodies, pause=0.3):
    """multipart/x-mixed-replace: each part takes the place of the one before."""
    def answer(handler, _request):
        _begin(handler, "multipart/x-mixed-replace; boundary=part")
        for body in bodies:
            handler.wfile.write(b"--part\r\nContent-Type: text/html\r\n\r\n" + body.encode() + b"\r\n")
            handler.wfile.flush()
            if handler.server.owner.stopping.wait(pause):
                return
        handler.wfile.write(b"--part--\r\n")
    return answer


def raw(data):
    """Exactly these bytes instead of an answer."""
    def answer(handler, _request):
        handler.wfile.write(data)
        handler.close_connection = True
    return answer


def nothing():
    """Closes the connection without a byte."""
    return raw(b"")
