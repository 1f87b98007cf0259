#!/usr/bin/env python3
"""Runs clang-tidy on a build's sources: tidy.py --build FOLDER [--sources REGEX] [-- OPTION...]

Sources of one room with the same options are read as one, since most of the time goes into the
headers that they share. The options after -- are added to the compiler's."""

import argparse
import json
import re
import shlex
import subprocess
import sys
import tempfile
from collections import defaultdict
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

CONFIGURATION = Path(__file__).resolve().parents[2] / ".clang-tidy"
MOST_AT_ONCE = 16
DOES_NOT_COMPILE = "clang-diagnostic-error"
# What the build's compiler knows and clang does not, or means otherwise.
FOR_CLANG = ["-Wno-unknown-warning-option", "-Wno-sign-conversion"]


def options_of(command):
    words = iter(shlex.split(command)[1:])
    options = []
    for word in words:
        if word in ("-o", "-c"):
            next(words)
        else:
            options.append(word)
    return tuple(options)


def sources_in(file):
    """The sources that the build itself reads as one, or the one that the file is."""
    if file.suffix == ".cxx":
        return [Path(name) for name in re.findall(r'#include "(.*)"', file.read_text("utf-8"))]
    return [file]


def rooms(build, pattern):
    """Sources by their folder and the options that they are compiled with."""
    found = defaultdict(set)
    for entry in json.loads((build / "compile_commands.json").read_text("utf-8")):
        for source in sources_in(Path(entry["directory"], entry["file"])):
            if not source.is_relative_to(build) and re.search(pattern, source.name):
                found[source.parent, options_of(entry["command"])].add(source)
    return found


def units(build, pattern):
    """Some sources of a room, with their options; each source comes once."""
    seen = set()
    for (_, options), sources in rooms(build, pattern).items():
        new = sorted(sources - seen)
        seen.update(new)
        for start in range(0, len(new), MOST_AT_ONCE):
            yield new[start:start + MOST_AT_ONCE], options


def tidy(sources, options):
    with tempfile.NamedTemporaryFile("w", suffix=".cpp", encoding="utf-8") as unit:
        unit.write("".join(f'#include "{source}"  // NOLINT\n' for source in sources))
        unit.flush()
        run = subprocess.run(["clang-tidy", "--quiet", unit.name, f"--config-file={CONFIGURATION}",
                              "--", *options], capture_output=True, text=True, check=False)
    if DOES_NOT_COMPILE in run.stdout and len(sources) > 1:
        # Some of the system's headers do not bear being read twice.
        runs = [tidy([source], options) for source in sources]
        return all(good for good, _ in runs), "".join(output for _, output in runs)
    return run.returncode == 0, run.stdout


def main():
    parser = argparse.ArgumentParser(description="Runs clang-tidy on a build's sources.")
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--sources", default=r"\.cpp$", help="what their names match")
    parser.add_argument("--at-once", type=int, default=2, metavar="N",
                        help="how many runs of clang-tidy there are at a time")
    parser.add_argument("more", nargs="*", help="more options for the compiler")
    options = parser.parse_args()
    good = True
    with ThreadPoolExecutor(options.at_once) as pool:
        runs = [pool.submit(tidy, sources, (*compiler_options, *FOR_CLANG, *options.more))
                for sources, compiler_options in units(options.build.resolve(), options.sources)]
        for run in runs:
            passed, output = run.result()
            good = good and passed
            print(output if not passed else "", end="")
    return 0 if good and runs else 1


if __name__ == "__main__":
    sys.exit(main())
