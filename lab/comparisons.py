"""Programs that hold the service against dozewell-replay: their options and their count."""

import argparse
import tempfile
from pathlib import Path

from expect import NotAsExpected
from installation import Installation
from machine import Machine
from replay import Replay

LAB = Path(__file__).resolve().parent


def run(description, comparisons):
    """Makes each of comparisons(replay, traces): a name and a function that takes machine and replay
    and tells what was compared, or is not met. A line for each, and last how many passed and failed.
    Returns the exit code."""
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("--traces", type=Path, help="a folder with histories, as .csv")
    parser.add_argument("--replay", default=LAB.parent / "build" / "native" / "dozewell-replay")
    parser.add_argument("--build", type=Path, default=LAB.parent / "build" / "windows")
    parser.add_argument("--folder", type=Path, default=LAB.parent / "build" / "play")
    options = parser.parse_args()
    passed = failed = 0
    with tempfile.TemporaryDirectory() as folder, \
            Installation(options.folder, options.build, zone="UTC") as installation:
        machine = Machine(installation)
        replay = Replay(options.replay, folder)
        for name, compare in comparisons(replay, options.traces):
            try:
                print(f"ok     {name}: {compare(machine, replay)}", flush=True)
                passed += 1
            except NotAsExpected as difference:
                print(f"FAILED {name}: {difference}", flush=True)
                failed += 1
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


def recorded(replay, traces):
    """Names and contents of the histories in a folder, if one is given."""
    for path in sorted(traces.glob("*.csv")) if traces else ():
        yield path.name, replay.history(path)
