#!/usr/bin/env python3
"""Runs the scenarios, or those whose names contain one of the given words, on a machine in the lab.
Prints a line for each, then what was found in those that failed, and last how many passed and
failed."""

import importlib
import inspect
import sys
import time
import traceback
from pathlib import Path

from machine.installation import Installation
from machine.machine import Machine
from machine.options import machine_options
from steps.expect import NotAsExpected

SCENARIOS = Path(__file__).resolve().parent / "scenarios"
ENTRIES_SHOWN = 40


def scenarios():
    """Name and function of each, in the order in which they are written."""
    for path in sorted(SCENARIOS.glob("*.py")):
        module = importlib.import_module(f"scenarios.{path.stem}")
        for name, function in vars(module).items():
            if (inspect.isfunction(function) and function.__module__ == module.__name__ and
                    not name.startswith("_")):
                yield f"{path.stem}: {name.replace('_', ' ')}", function


def play(scenario, machine):
    """None when it passed, else what to show."""
    try:
        machine.reset()
        scenario(machine)
    except NotAsExpected as difference:
        place = traceback.extract_tb(difference.__traceback__)
        line = next(frame for frame in reversed(place) if "/scenarios/" in frame.filename)
        return f"{Path(line.filename).name}:{line.lineno}: {difference}"
    except Exception:  # pylint: disable=broad-except
        return traceback.format_exc()
    return None


def description(name, failure, machine):
    lines = [f"FAILED {name}"]
    lines += ["    " + line for line in failure.splitlines()]
    lines += [f"  The last of what the service did, at {machine.clock.now}:"]
    lines += [f"    {entry.kind:12} {entry.text!r}"
              for entry in machine.record.all()[-ENTRIES_SHOWN:]]
    return "\n".join(lines)


def run(chosen, folder, build):
    """What to show of each one that failed."""
    failed = []
    left = list(chosen)
    while left:
        # A scenario that failed may leave a machine that cannot be reset, so it boots anew.
        with Installation(folder, build) as installation:
            machine = Machine(installation)
            while left:
                name, scenario = left.pop(0)
                start = time.monotonic()
                failure = play(scenario, machine)
                milliseconds = round(1000 * (time.monotonic() - start))
                print(f"{'FAILED' if failure else 'ok':6} {name} ({milliseconds} ms)", flush=True)
                if failure:
                    failed.append(description(name, failure, machine))
                    break
    return failed


def main():
    parser = machine_options(__doc__, "lab")
    parser.add_argument("words", nargs="*", help="parts of names; all scenarios without any")
    options = parser.parse_args()
    chosen = [(name, scenario) for name, scenario in scenarios()
              if not options.words or any(word in name for word in options.words)]
    start = time.monotonic()
    failed = run(chosen, options.folder, options.build)
    print(f"{len(chosen)} scenarios in {time.monotonic() - start:.1f} s")
    print(*failed, sep="\n", end="\n" if failed else "")
    print(f"{len(chosen) - len(failed)} passed, {len(failed)} failed")
    return 1 if failed or not chosen else 0


if __name__ == "__main__":
    sys.exit(main())
