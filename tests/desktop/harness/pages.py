# SPDX-License-Identifier: GPL-3.0-or-later
"""The pages that the tests show. Each asks the server for a mark of its own when it is painted, so the server's log
tells which pages a child could have seen; a forbidden page is besides painted in a colour that nothing else wears."""

CLEAN_COLOUR = (0, 200, 120)
FORBIDDEN_COLOUR = (255, 0, 200)

# A row of the word table, harmless to read: blocks an address as it stands, a page in any case.
WORD = "netnanny"


def _css(colour):
    return "#%02x%02x%02x" % colour


def html(name, body="", head="", colour=CLEAN_COLOUR, text=""):
    """A page titled `name` that asks for /painted/`name` once it is laid out."""
    return (f'<!DOCTYPE html><html><head><meta charset="utf-8"><title>{name}</title><link rel="icon" href="data:,">'
            f'{head}<style>html{{background:{_css(colour)};height:100%}}a.all{{position:fixed;inset:0}}</style></head>'
            f'<body>{text}{body}<img src="/painted/{name}" width="1" height="1" alt=""></body></html>')


def forbidden(name, text=f"here stands {WORD} in the text", head=""):
    """A page that the filter must refuse for its text."""
    return html(name, head=head, colour=FORBIDDEN_COLOUR, text=text)


def mark(name):
    """Path that the page asks for when it is painted."""
    return "/painted/" + name


def script(code):
    return f"<script>{code}</script>"


def link(target, attributes=""):
    """A link that fills the whole page, so that a click anywhere follows it."""
    return f'<a class="all" href="{target}" {attributes}>go</a>'


def frame(target, size=200):
    return f'<iframe src="{target}" width="{size}" height="{size}"></iframe>'
