#!/usr/bin/env python3
"""Plays histories through the service, and compares what it logs and sets on each suspend with what
dozewell-replay decides from the same data at the same time; at the end it compares the service's
files with what dozewell-replay makes of the history. Prints one line for each history, made-up ones
and those in a folder, and last how many passed and failed."""

import sys
from functools import partial

from machine.machine import DATA_FILE, DEFAULT_SETTINGS, HISTORY_FILE, LONGEST_INTERVAL
from steps.comparisons import made_up_and_recorded, run
from steps.decisions import expect_decided
from steps.expect import expect_true
from steps.playback import Playback, read_history, write_history

DAYS = 40
SAMPLES = [("office", 1), ("home", 2), ("shift", 3), ("erratic", 4)]


def compare(machine, replay, history):
    changes = read_history(history)
    machine.reset()
    machine.clock.set(changes[0][0])
    # With the parameters that dozewell-replay takes, and no others.
    machine.provision(file=DEFAULT_SETTINGS, OptimizerInterval=LONGEST_INTERVAL)
    machine.install()
    number = 0
    for sleep in Playback(machine).sleeps(changes):
        known = [change for change in changes if change[0] < sleep.start]
        expect_decided(sleep, replay.decision(replay.learn(write_history(known)), sleep.start))
        machine.record.clear()
        # What the driver keeps of a timer that has expired would show in the next arming.
        machine.driver.words = 0, 0
        number += 1
    seen = changes[:2 * number + 1]
    machine.stop_service()
    # The stop comes in the same second as the last use, and one second keeps one entry.
    expect_true(machine.data_file(HISTORY_FILE) == write_history(seen), "the history differs")
    expect_true(machine.data_file(DATA_FILE) == replay.learn(write_history(seen)).read_bytes(),
                "the data file differs")
    return f"{number} suspends"


def comparisons(replay, traces):
    for name, history in made_up_and_recorded(replay, traces, DAYS, SAMPLES):
        yield name, partial(compare, history=history)


if __name__ == "__main__":
    sys.exit(run(__doc__, comparisons))
