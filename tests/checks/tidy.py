#!/usr/bin/env python3
"""Runs clang-tidy on a build's sources: tidy.py --build FOLDER [--sources REGEX] [-- OPTION...]

Most of the time goes into the headers that sources share, so many sources are read as one. The
options after -- are added to the compiler's."""

import argparse
import functools
import json
import re
import shlex
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
CONFIGURATION = ROOT / ".clang-tidy"
# Enough that the headers count for little, and that there is a unit for each processor to the end.
MOST_BYTES_AT_ONCE = 250_000
DOES_NOT_COMPILE = "clang-diagnostic-error"
# The build's compiler knows warnings that clang does not know or takes in another sense.
FOR_CLANG = ["-Wno-unknown-warning-option", "-Wno-sign-conversion"]
NOT_FOR_CLANG = {"-fno-ipa-ra"}

# A declaration that is not indented: `class X {`, `using X =`, `void X(`, `constexpr int x =`. Macros
# and members of classes may repeat.
DECLARATION = re.compile(r"^(?!namespace )[A-Za-z][^(={;\n]*?(?<!::)\b(\w*[a-z]\w*)(?:\[\w*\])?"
                         r"(?= ?[(={;]| final| : ).*", re.MULTILINE)

# The same in a header, of constants and types: what a source declares as well is another thing
# there, whereas functions are those that sources define.
IN_HEADER = re.compile(r"^(?:(?:inline |extern )?(?:constexpr|const) [^(={;]*?\b(k[A-Z]\w*)"
                       r"(?=[\[ ={;])"
                       r"|using (\w+) =|(?:struct|class|enum(?: class)?) (\w+)[^;]*?\{)",
                       re.MULTILINE)
INCLUDE = re.compile(r'^#include "([^"]+)"', re.MULTILINE)
HEADER_FOLDERS = [ROOT / folder for folder in ("src", "tools", "tests", "bench", "lab/native")]

# Words that stand where a name does.
NO_NAMES = {"decltype"}

# Each program has one, so in a unit each gets a name of its own.
ENTRY = "wmain"

# Headers of the system that can be read only once, as they are; in a unit they are read once.
READ_ONCE = ["powrprof.h"]


def sources_in(file):
    """The sources that the build itself reads as one, or the one that the file is."""
    if file.suffix == ".cxx":
        return [Path(name) for name in re.findall(r'#include "(.*)"', file.read_text("utf-8"))]
    return [file]


def sources_and_options(build, pattern):
    """All sources of a build, and the options that they are compiled with. All get the folders of
    headers, the macros and the warnings of all others: these do not contradict each other."""
    sources, options = set(), {}
    for entry in json.loads((build / "compile_commands.json").read_text("utf-8")):
        found = [source for source in sources_in(Path(entry["directory"], entry["file"]))
                 if not source.is_relative_to(build) and re.search(pattern, source.name)]
        if found:
            sources.update(found)
            options.update(dict.fromkeys(options_in(entry["command"])))
    return sorted(sources), list(options)


def options_in(command):
    """Those that matter to somebody who only reads; an option and its separate value as one."""
    words = iter(shlex.split(command)[1:])
    for word in words:
        if word == "-isystem":
            yield word + next(words)
        elif word.startswith(("-I", "-D", "-std=", "-W", "-f")) and word not in NOT_FOR_CLANG:
            yield word


def declarations(source):
    """What a source declares outside of classes and functions, and what the headers do that it
    reads: lines by their names."""
    own = {found[1]: found[0] for found in DECLARATION.finditer(source.read_text("utf-8"))
           if found[1] not in NO_NAMES and found[1] != ENTRY}
    return {**declarations_in_headers(source), **own}


@functools.cache
def declarations_in_headers(file):
    """Of all that a file includes, in turn; the same thing has the same line."""
    found = {}
    for name in INCLUDE.findall(file.read_text("utf-8")):
        paths = (folder / name for folder in HEADER_FOLDERS)
        header = next((path for path in paths if path.is_file()), None)
        if header:
            found.update({next(filter(None, names)): f"using {header}"
                          for names in IN_HEADER.findall(header.read_text("utf-8"))})
            found.update(declarations_in_headers(header))
    return found


def go_together(some, others):
    """Whether sources with these declarations can be read as one."""
    return all(some[name] == others[name] and some[name].startswith("using ")
               for name in some.keys() & others.keys())


def units(sources):
    """Lists of sources that can be read as one."""
    packed = []  # sources, their declarations, their bytes
    for source in sources:
        own, size = declarations(source), source.stat().st_size
        for unit in packed:
            if unit[2] + size <= MOST_BYTES_AT_ONCE and go_together(own, unit[1]):
                break
        else:
            unit = [[], {}, 0]
            packed.append(unit)
        unit[0].append(source)
        unit[1].update(own)
        unit[2] += size
    return [unit[0] for unit in packed]


def unit_of(sources):
    """A source that reads all of these."""
    return "".join(f'#define {ENTRY} {ENTRY}_{number}\n'
                   f'#include "{source}"  // NOLINT\n'
                   f'#undef {ENTRY}\n' for number, source in enumerate(sources))


def tidy(sources, options):
    with tempfile.TemporaryDirectory() as folder:
        unit = Path(folder, "unit.cpp")
        unit.write_text(unit_of(sources), "utf-8")
        for header in READ_ONCE:
            Path(folder, header).write_text(f"#pragma once\n#include_next <{header}>\n", "utf-8")
        run = subprocess.run(["clang-tidy", "--quiet", unit, f"--config-file={CONFIGURATION}",
                              "--", f"-isystem{folder}", *options], capture_output=True, text=True,
                             check=False)
    if DOES_NOT_COMPILE in run.stdout and len(sources) > 1:
        # They do not go together after all, or one of them is wrong.
        half = len(sources) // 2
        runs = [tidy(part, options) for part in (sources[:half], sources[half:])]
        return all(good for good, _ in runs), "".join(output for _, output in runs)
    return run.returncode == 0, run.stdout


def main():
    parser = argparse.ArgumentParser(description="Runs clang-tidy on a build's sources.")
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--sources", default=r"\.cpp$", help="what their names match")
    parser.add_argument("--at-once", type=int, default=2, metavar="N",
                        help="how many runs of clang-tidy there are at a time")
    parser.add_argument("more", nargs="*", help="more options for the compiler")
    arguments = parser.parse_args()
    sources, options = sources_and_options(arguments.build.resolve(), arguments.sources)
    options += [*FOR_CLANG, *arguments.more]
    good = bool(sources)
    with ThreadPoolExecutor(arguments.at_once) as pool:
        for passed, output in pool.map(lambda unit: tidy(unit, options), units(sources)):
            good = good and passed
            print(output if not passed else "", end="")
    print(f"{len(sources)} sources checked")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
