"""Expectations that show, when they are not met, what was expected and what was found."""

import difflib


class NotAsExpected(Exception):
    pass


def _lines(value):
    if isinstance(value, (list, tuple)) and not hasattr(value, "_fields"):
        return [repr(item) if isinstance(item, str) else _line(item) for item in value]
    return [_line(value)]


def _line(item):
    return f"{item.kind} {item.text!r}" if hasattr(item, "kind") else repr(item)


def expect(found, expected, what="value"):
    if found == expected:
        return
    lines = difflib.unified_diff(_lines(expected), _lines(found), "expected", "found", n=1000,
                                 lineterm="")
    raise NotAsExpected("\n".join([f"{what}:", *list(lines)[3:]])
                        if isinstance(found, (list, tuple))
                        else f"{what}: expected {expected!r}, found {found!r}")


def expect_true(condition, what):
    if not condition:
        raise NotAsExpected(what)
