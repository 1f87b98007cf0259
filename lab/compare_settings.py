#!/usr/bin/env python3
"""Plays histories through services whose settings lie in all of their keys, and compares what each
logs and sets on a suspend with what dozewell-replay decides with the settings that dozewellctl
exports from that machine. Prints one line for each history, made-up ones and those in a folder, and
last how many passed and failed."""

import sys
from functools import partial

from machine.machine import LONGEST_INTERVAL
from machine.registry import BRANDING, CURRENT, REG_BINARY, REG_DWORD, predictor_key
from steps.comparisons import recorded, run
from steps.decisions import expect_decided
from steps.expect import expect, expect_true
from steps.playback import Playback, read_history, write_history

DAYS = 60
# Histories, and what each machine has in other keys than a freshly installed one, as key, name,
# value and kind. Together they have more than 200 suspends.
MACHINES = [
    ("office", 11, []),
    ("home", 12, [(BRANDING, "TimeResolution", 30, REG_DWORD),
                  (predictor_key(CURRENT), "StrengthHigh", 40, REG_DWORD),
                  (predictor_key(BRANDING), "StrengthLow", " 35\n7", None),
                  (predictor_key(BRANDING), "DayGrouping", "255", None)]),
    ("shift", 13, [(CURRENT, "TimeResolution", 15, REG_DWORD),
                   (BRANDING, "TimeResolution", 30, REG_DWORD),
                   # Neither text nor number: empty, and no other key counts.
                   (predictor_key(CURRENT), "DayGrouping", b"\x0c", REG_BINARY),
                   (predictor_key(CURRENT), "FirstLastWeight", "60 of 100", None)]),
    ("erratic", 14, [(predictor_key(CURRENT), "StrengthHigh", "10", None),
                     (predictor_key(CURRENT), "StrengthLow", "10", None),
                     # Longer than a number, so it counts as absent.
                     (CURRENT, "TimeResolution", bytes(8), REG_BINARY)]),
]


def compare(machine, replay, history, values):
    changes = read_history(history)
    machine.reset()
    machine.clock.set(changes[0][0])
    machine.provision(OptimizerInterval=LONGEST_INTERVAL)
    for key, name, value, kind in values:
        machine.registry.write(name, value, key, kind)
    machine.install()
    settings = exported(machine)
    number = 0
    for sleep in Playback(machine).sleeps(changes):
        known = [change for change in changes if change[0] < sleep.start]
        data = replay.learn(write_history(known), settings)
        expect_decided(sleep, replay.decision(data, sleep.start, settings))
        machine.record.clear()
        # What the driver keeps of a timer that has expired would show in the next arming.
        machine.driver.words = 0, 0
        number += 1
    machine.stop_service()
    return f"{number} suspends"


def exported(machine):
    """The file that dozewellctl exports."""
    file = machine.current_folder / "exported.ini"
    file.unlink(missing_ok=True)
    answer = machine.client.run("settings export C:\\exported.ini")
    expect((answer.exit_code, answer.error), (0, ""), "exit code and error of settings export")
    expect_true(file.exists(), "nothing was exported")
    return file


def comparisons(replay, traces):
    for kind, seed, values in MACHINES:
        yield (f"{DAYS} days, {kind}",
               partial(compare, history=replay.sample(kind, DAYS, seed), values=values))
    for name, history in recorded(replay, traces):
        yield name, partial(compare, history=history, values=MACHINES[0][2])


if __name__ == "__main__":
    sys.exit(run(__doc__, comparisons))
