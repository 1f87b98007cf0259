#!/usr/bin/env python3
"""Checks that a table in docs/developing.md lists every leaf source of the programs with the system
calls that it makes, and no others: surface.py NM BUILD, after a build for Windows."""

import json
import re
import shlex
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
PAGE = ROOT / "docs" / "developing.md"
HEADING = "## Everything that the system is asked\n"
LEAF = "_windows.cpp"

ROW = re.compile(r"^\| `((?:src|tools)(?:/\w+)+)` \|[^|]*\|([^|]*)\|$", re.MULTILINE)
CALL = re.compile(r"`(\w+)`")
# What an object needs from elsewhere: imported functions, with a prefix where the header says that
# they are. Our own functions are mangled, and those of C begin with a small letter.
SYMBOL = re.compile(r"^ +U (?:__imp_(\w+)|([A-Z]\w+))$", re.MULTILINE)
# C's standard streams, what the generated stubs define, and the name of a folder.
NO_CALL = re.compile(r"__acrt_iob_func|Serve_\w+|Call_\w+|DozewellBinding|FOLDERID_\w+")
# Listed beside the leaf sources that need the stubs.
CALLED_BY_STUBS = {"NdrServerCall2", "NdrClientCall2"}


def calls_on_page():
    section = PAGE.read_text("utf-8").partition(HEADING)[2].partition("\n## ")[0]
    return {leaf: set(CALL.findall(calls)) - CALLED_BY_STUBS for leaf, calls in ROW.findall(section)}


def calls_of(built, nm):
    symbols = subprocess.run([nm, built], capture_output=True, text=True, check=True).stdout
    names = {imported or plain for imported, plain in SYMBOL.findall(symbols)}
    return {name for name in names if not NO_CALL.fullmatch(name)}


def calls_in_build(nm, build):
    calls = {}
    for unit in json.loads((build / "compile_commands.json").read_text("utf-8")):
        source = Path(unit["file"]).relative_to(ROOT).as_posix()
        if source.startswith(("src/", "tools/")) and source.endswith(LEAF):
            command = shlex.split(unit["command"])
            built = Path(unit["directory"], command[command.index("-o") + 1])
            # Some are compiled for several programs, not all of which need be built.
            if built.exists():
                calls[source.removesuffix(LEAF)] = calls_of(built, nm)
    return calls


def main():
    nm, build = sys.argv[1], Path(sys.argv[2]).resolve()
    listed, made = calls_on_page(), calls_in_build(nm, build)
    errors = [f"{leaf}: is not built, or is no leaf source" for leaf in sorted(listed.keys() - made.keys())]
    for leaf, calls in sorted(made.items()):
        if leaf not in listed:
            errors.append(f"{PAGE.name} does not list {leaf}")
            continue
        errors += [f"{leaf}: does not call {name}" for name in sorted(listed[leaf] - calls)]
        errors += [f"{PAGE.name} does not list that {leaf} calls {name}"
                   for name in sorted(calls - listed[leaf])]
    for error in errors:
        print(error)
    print(f"{len(made)} leaf sources checked, {len(errors)} errors")
    return 1 if errors or not made else 0


if __name__ == "__main__":
    sys.exit(main())
