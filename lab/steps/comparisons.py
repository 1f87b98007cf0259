"""What the programs share that compare the service with dozewell-replay."""

import tempfile
from pathlib import Path

from machine.installation import Installation
from machine.machine import Machine
from machine.options import add_replay_option, machine_options
from steps.expect import NotAsExpected
from steps.replay import Replay


def run(description, comparisons):
    """Makes each of comparisons(replay, traces): a name and a function that takes machine and
    replay, and tells what was compared or throws NotAsExpected. Prints a line for each, and last
    how many passed and failed. Returns the exit code."""
    parser = machine_options(description, "play")
    add_replay_option(parser)
    parser.add_argument("--traces", type=Path, help="a folder with histories, as .csv")
    parser.add_argument("words", nargs="*", help="parts of names; all histories without any")
    options = parser.parse_args()
    passed = failed = 0
    with tempfile.TemporaryDirectory() as folder, \
            Installation(options.folder, options.build, zone="UTC") as installation:
        machine = Machine(installation)
        replay = Replay(options.replay, folder)
        for name, compare in comparisons(replay, options.traces):
            if options.words and not any(word in name for word in options.words):
                continue
            try:
                print(f"ok     {name}: {compare(machine, replay)}", flush=True)
                passed += 1
            except NotAsExpected as difference:
                print(f"FAILED {name}: {difference}", flush=True)
                failed += 1
    print(f"{passed} passed, {failed} failed")
    return 1 if failed or not passed else 0


def recorded(replay, traces):
    """Names and contents of the histories in a folder, if one is given."""
    for path in sorted(traces.glob("*.csv")) if traces else ():
        yield path.name, replay.history(path)


def made_up_and_recorded(replay, traces, days, samples):
    """Names and contents of made-up histories, each a kind and a seed, and of recorded ones."""
    for kind, seed in samples:
        yield f"{days} days, {kind}", replay.sample(kind, days, seed)
    yield from recorded(replay, traces)
