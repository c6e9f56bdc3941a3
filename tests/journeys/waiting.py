"""Waiting for what the program does in its own time."""

import time

DEADLINE = 30.0  # seconds; generous, for a busy machine and for sanitizers
PAUSE = 0.02


def wait_for(what, condition, deadline=DEADLINE):
    """Asks `condition` until its answer is true, and returns that answer.

    `what` says what was waited for, in the failure after `deadline` seconds.
    """
    end = time.monotonic() + deadline
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise AssertionError(f"waited {deadline:g} seconds in vain: {what}")
        time.sleep(PAUSE)
