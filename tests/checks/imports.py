#!/usr/bin/env python3
"""Checks that Windows programs import no library that somebody could put beside them, no timers but
the service's wake timer, because they do nothing periodically, and nothing that changes rights of all that is in a folder:
imports.py OBJDUMP PROGRAM..."""

import re
import subprocess
import sys
from pathlib import Path

# Of the libraries that the system has in memory from its start (KnownDLLs) and that programs so get
# from nowhere else, those that these need.
KNOWN = {"advapi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll", "rpcrt4.dll", "setupapi.dll",
         "shell32.dll", "user32.dll"}
# What programs may import besides: only administrators can write to the folders of these two.
PROTECTED = {"DozewellService.exe": {"powrprof.dll"}, "dozewell-setup.exe": {"powrprof.dll"}}
# A timer that wakes the machine, once: the service may have it, if the settings say so.
WAKE_TIMER = {"DozewellService.exe": {"CreateWaitableTimerW", "SetWaitableTimerEx",
                                      "CancelWaitableTimer"}}
TIMERS = re.compile(r"\b(SetTimer|\w*WaitableTimer\w*|\w*TimerQueue\w*|\w*ThreadpoolTimer\w*|"
                    r"timeSetEvent)\b")
# They go through all that is in a folder, and change that too.
SPREADING = re.compile(r"\b((?:Tree)?SetNamedSecurityInfo\w*|TreeResetNamedSecurityInfo\w*|"
                       r"SetSecurityInfo)\b")


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
        for name in sorted(imported - KNOWN - PROTECTED.get(Path(program).name, set())):
            print(f"{program}: imports {name}, which Windows may take from the program's folder")
            errors += 1
        for name in sorted(set(TIMERS.findall(headers)) -
                           WAKE_TIMER.get(Path(program).name, set())):
            print(f"{program}: imports {name}, a timer")
            errors += 1
        for name in sorted(set(SPREADING.findall(headers))):
            print(f"{program}: imports {name}, which changes rights of all that is in a folder")
            errors += 1
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
