"""Waiting for asynchronous actions of the program."""

import time

from gi.repository import GLib

DEADLINE = 30.0  # seconds; generous, for a busy machine and for sanitizers
PAUSE = 0.02


def wait_for(what, condition, deadline=DEADLINE):
    """Calls `condition` until its answer is true, and returns that answer.

    Raises an AssertionError with the text `what` after `deadline` seconds. A GLib.Error counts
    as a false answer, because a widget can disappear while it is examined.
    """
    end = time.monotonic() + deadline
    gone = None
    while True:
        try:
            answer = condition()
            if answer:
                return answer
        except GLib.Error as error:  # what the accessibility bus raises
            gone = error
        if time.monotonic() > end:
            raise AssertionError(f"waited {deadline:g} seconds in vain: {what}") from gone
        time.sleep(PAUSE)
