# SPDX-License-Identifier: GPL-3.0-or-later
"""Waiting for something to become true, never for a fixed time."""

import time

POLL_SECONDS = 0.02
PATIENCE = 30.0  # seconds; a machine that is busy with other things may take long, and no wait is longer than it must be


class NeverCameTrue(AssertionError):
    """What was waited for did not happen in time."""


def wait_until(condition, what, seconds=PATIENCE):
    """Asks `condition` again and again until its answer counts as true, and gives that answer."""
    deadline = time.monotonic() + seconds
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > deadline:
            said = what() if callable(what) else what
            raise NeverCameTrue(f"within {seconds:g} s: {said}")
        time.sleep(POLL_SECONDS)


def stays_true(condition, what, seconds):
    """Watches `condition` for a while; the first false answer fails. For things that must not happen."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        if not condition():
            raise AssertionError(f"did not last {seconds:g} s: {what}")
        time.sleep(POLL_SECONDS)
