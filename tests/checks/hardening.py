#!/usr/bin/env python3
"""Checks how Windows programs were built: guarded stack, addresses drawn by chance, no data that
runs; and which of them have a console: hardening.py OBJDUMP PROGRAM..."""

import re
import subprocess
import sys
from pathlib import Path

FLAGS = {"HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT"}
# What a program with guards prints when one of them was overwritten.
GUARD = b"*** stack smashing detected ***"
# The installer runs it as the system, and a console would have a window on a user's desktop.
WINDOWLESS = {"dozewell-setup.exe"}


def errors_of(program, objdump):
    headers = subprocess.run([objdump, "-p", program], check=True, capture_output=True,
                             text=True).stdout
    for flag in sorted(FLAGS - set(re.findall(r"^\s+([A-Z_]+)$", headers, re.MULTILINE))):
        yield f"lacks {flag}"
    if GUARD not in Path(program).read_bytes():
        yield "has no guards on its stack"
    expected = "GUI" if Path(program).name in WINDOWLESS else "CUI"
    subsystem = re.search(r"^Subsystem\s.*\(Windows (\w+)\)", headers, re.MULTILINE).group(1)
    if subsystem != expected:
        yield f"is built for {subsystem}, not for {expected}"


def main():
    objdump, *programs = sys.argv[1:]
    errors = [f"{program}: {error}" for program in programs
              for error in errors_of(program, objdump)]
    for error in errors:
        print(error)
    print(f"{len(programs)} programs checked, {len(errors)} errors")
    return 1 if errors or not programs else 0


if __name__ == "__main__":
    sys.exit(main())
