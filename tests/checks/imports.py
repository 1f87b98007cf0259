#!/usr/bin/env python3
"""Checks that Windows programs import only libraries that every Windows has, and no timers, because
they do nothing periodically: imports.py OBJDUMP PROGRAM..."""

import re
import subprocess
import sys

WINDOWS = {"advapi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll", "powrprof.dll", "rpcrt4.dll",
           "setupapi.dll", "shell32.dll", "user32.dll", "wevtapi.dll"}
TIMERS = re.compile(r"\b(SetTimer|\w*WaitableTimer\w*|\w*TimerQueue\w*|\w*ThreadpoolTimer\w*|"
                    r"timeSetEvent)\b")


def main():
    objdump, *programs = sys.argv[1:]
    errors = 0
    for program in programs:
        headers = subprocess.run([objdump, "-p", program], check=True, capture_output=True,
                                 text=True).stdout
        imported = {name.lower() for name in re.findall(r"DLL Name: (\S+)", headers)}
        if not imported:
            print(f"{program}: has no imports, so they cannot have been read")
            errors += 1
        for name in sorted(imported - WINDOWS):
            print(f"{program}: imports {name}, which Windows does not have")
            errors += 1
        for name in sorted(set(TIMERS.findall(headers))):
            print(f"{program}: imports {name}, a timer")
            errors += 1
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
