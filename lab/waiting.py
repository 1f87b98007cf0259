"""Waiting for what nothing tells the end of."""

import time


class WaitedInVain(Exception):
    pass


def wait_until(condition, what, seconds=10):
    """Waits until the condition holds, and gives its value; `what` says what did not happen."""
    end = time.monotonic() + seconds
    while not (value := condition()):
        if time.monotonic() > end:
            raise WaitedInVain(f"In {seconds} s: {what}")
        time.sleep(0.001)
    return value
