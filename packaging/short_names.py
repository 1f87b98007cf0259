"""Names of files for systems, and for parts of Windows, that know no more than eight characters, a
dot and three more."""

import itertools
import os
import re

_CHARACTERS = r"[^\\?|><:/*\"+,;=\[\]\s.]"
_SHORT = re.compile(rf"{_CHARACTERS}{{1,8}}(\.{_CHARACTERS}{{1,3}})?")


def with_short_names(names):
    """What the package calls the files of one folder, by their names: a name that is short itself,
    or a short one for it, which no other file there has, a bar and the name."""
    taken = {name.upper() for name in names if _SHORT.fullmatch(name)}
    called = {}
    for name in sorted(names):
        called[name] = name
        if not _SHORT.fullmatch(name):
            short = _first_free(name, taken)
            taken.add(short)
            called[name] = f"{short}|{name}"
    return called


def _first_free(name, taken):
    stem, extension = (re.sub(rf"(?!{_CHARACTERS}).", "", part)
                       for part in os.path.splitext(name.upper()))
    for number in itertools.count(1):
        tail = f"~{number}"
        short = f"{stem[:8 - len(tail)]}{tail}" + (f".{extension[:3]}" if extension else "")
        if short not in taken:
            return short
