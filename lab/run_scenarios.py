#!/usr/bin/env python3
"""Runs the scenarios, or those whose names contain one of the given words, on a machine in the lab.
A line for each, then what was found in those that failed, and last how many passed and failed."""

import argparse
import contextlib
import importlib
import inspect
import signal
import sys
import time
import traceback
from pathlib import Path

LAB = Path(__file__).resolve().parent
sys.path.insert(0, str(LAB))
sys.dont_write_bytecode = True

# pylint: disable=wrong-import-position
from expect import NotAsExpected
from installation import Installation
from machine import Machine

SECONDS_PER_SCENARIO = 60
ENTRIES_SHOWN = 40


class TimeIsUp(Exception):
    pass


def scenarios():
    """Name and function of each, in the order in which they are written."""
    for path in sorted((LAB / "scenarios").glob("*.py")):
        module = importlib.import_module(f"scenarios.{path.stem}")
        for name, function in vars(module).items():
            if (inspect.isfunction(function) and function.__module__ == module.__name__ and
                    not name.startswith("_")):
                yield f"{path.stem}: {name.replace('_', ' ')}", function


@contextlib.contextmanager
def time_limit(seconds):
    def end(*_):
        raise TimeIsUp(f"Not done after {seconds} s")
    signal.signal(signal.SIGALRM, end)
    signal.alarm(seconds)
    try:
        yield
    finally:
        signal.alarm(0)


def play(scenario, machine):
    """None when it passed, else what is to be shown."""
    try:
        with time_limit(SECONDS_PER_SCENARIO):
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
    """What was found in each of those that failed."""
    failed = []
    left = list(chosen)
    while left:
        # After a scenario that leaves the machine in a state that cannot be reset, it boots anew.
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
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("words", nargs="*", help="parts of names; all scenarios without any")
    parser.add_argument("--build", type=Path, default=LAB.parent / "build" / "windows")
    parser.add_argument("--folder", type=Path, default=LAB.parent / "build" / "lab",
                        help="where the machine is kept")
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
