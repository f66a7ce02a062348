"""Waiting on a condition with a deadline, the only way in which anything here waits."""

import time

_PAUSE = 0.02  # seconds between two looks


class NotSeen(Exception):
    """What was waited for did not come in time."""


def wait_for(what, probe, seconds):
    """Returns the first true answer of probe(); raises NotSeen, naming `what`, after `seconds`."""
    deadline = time.monotonic() + seconds
    while True:
        answer = probe()
        if answer:
            return answer
        if time.monotonic() >= deadline:
            raise NotSeen(f"{what}: not seen within {seconds:g} s")
        time.sleep(_PAUSE)
