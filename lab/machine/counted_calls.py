"""Calls that are counted from 1 and that fail from one number to another, the system's and the
driver's alike."""

FOR_EVER = 0xFFFFFFFF


def numbers_of(made, call, times):
    """The first and last number of `times` calls, from the call-th on after those that were made."""
    first = made + call
    return first, min(first + times - 1, FOR_EVER)
