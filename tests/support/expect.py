"""What tests expect: each function throws when it does not hold."""

import re
import time

# Limits only end what hangs. A machine that is busy with other work may be slow, so this is some
# hundred times as long as anything takes.
HANG_SECONDS = 300


def equal(got, expected, what=""):
    if got != expected:
        raise AssertionError(f"{what}\ngot      {got!r}\nexpected {expected!r}")


def contains(text, part):
    if part not in text:
        raise AssertionError(f"{text!r} lacks {part!r}")


def matches(text, pattern):
    if not re.fullmatch(pattern, text):
        raise AssertionError(f"{text!r} is not {pattern!r}")


def wait_until(condition, what):
    """Waits for what nothing tells the end of; `what` says what did not happen."""
    end = time.monotonic() + HANG_SECONDS
    while not condition():
        if time.monotonic() > end:
            raise AssertionError(f"waited for {HANG_SECONDS} seconds in vain: {what}")
        time.sleep(0.02)
