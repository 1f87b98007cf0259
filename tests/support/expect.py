"""What tests expect: each function throws when it does not hold."""

import re


def equal(got, expected, what=""):
    if got != expected:
        raise AssertionError(f"{what}\ngot      {got!r}\nexpected {expected!r}")


def contains(text, part):
    if part not in text:
        raise AssertionError(f"{text!r} lacks {part!r}")


def matches(text, pattern):
    if not re.fullmatch(pattern, text):
        raise AssertionError(f"{text!r} is not {pattern!r}")
