"""Calls of the system or the driver that are counted from 1, of which some are to fail."""

FOR_EVER = 0xFFFFFFFF


def numbers_of(made, call, times):
    """The numbers of the first and last of `times` calls that begin with the call-th from now."""
    first = made + call
    return first, min(first + times - 1, FOR_EVER)
