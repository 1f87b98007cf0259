#!/usr/bin/env python3
"""Plays histories through the service, with its own searches, and compares what the machine has come
to with what dozewell-replay counts when it walks the same history forward. Prints one line for each
history, and last how many passed and failed."""

import sys
from datetime import timedelta
from functools import partial

from machine.machine import DEFAULT_SETTINGS
from steps.comparisons import made_up_and_recorded, run
from steps.expect import expect
from steps.playback import Playback, read_history, write_history

DAYS = 60
SAMPLES = [("office", 1), ("shift", 3)]
STRENGTH = 2  # the default
SECOND = timedelta(seconds=1)


def compare(machine, replay, history):
    changes = read_history(history)
    machine.reset()
    machine.clock.set(changes[0][0])
    machine.provision(file=DEFAULT_SETTINGS)
    machine.install()
    timeout = int(machine.schemes.hibernate_after[0])
    sleeps = list(Playback(machine).sleeps(changes))
    machine.stop_service()

    walked = replay.walk(write_history(changes), timeout)[f"service, strength {STRENGTH}"]
    waits = sum(sleep.met_hibernation for sleep in sleeps)
    expect((sum((sleep.asleep for sleep in sleeps), timedelta()) // SECOND,
            sum((sleep.hibernated for sleep in sleeps), timedelta()) // SECOND,
            len(sleeps) - waits, waits),
           (walked["sleepSeconds"], walked["hibernateSeconds"], walked["resumesFromSleep"],
            walked["resumesFromHibernate"]),
           "seconds asleep and hibernated, resumes from sleep and hibernation")
    return f"{len(sleeps)} sleeps, {waits} waits"


def comparisons(replay, traces):
    for name, history in made_up_and_recorded(replay, traces, DAYS, SAMPLES):
        yield name, partial(compare, history=history)


if __name__ == "__main__":
    sys.exit(run(__doc__, comparisons))
