#!/usr/bin/env python3
"""Plays histories through the service and holds what it logs and sets on each suspend against what
dozewell-replay decides from the same data at the same time; and at the end the service's files
against what dozewell-replay makes of the history. One line for each history, made-up ones and those
in a folder, and last how many passed and failed."""

import sys
from functools import partial
from pathlib import Path

LAB = Path(__file__).resolve().parent
sys.path.insert(0, str(LAB))

# pylint: disable=wrong-import-position
from comparisons import recorded, run
from driver import DURATION, ENABLED
from expect import expect, expect_true
from machine import DATA_FILE, DEFAULT_SETTINGS, HISTORY_FILE, LONGEST_INTERVAL
from playback import Playback, read_history, write_history
from record import information

DAYS = 40
SAMPLES = [("office", 1), ("home", 2), ("shift", 3), ("erratic", 4)]


def expected_events(decision):
    return [
        information("Predicted Hibernate at: " + ending_as_logged(decision["hibernateAt"])),
        information("Predicted Sleep restored at: " + ending_as_logged(decision["sleepRestoredAt"])),
        information("Predicted Hibernate next at: " +
                    ending_as_logged(decision["hibernateNextAt"])),
    ]


def ending_as_logged(text):
    """A time is logged with the line feed that ends it, words are not."""
    return text if text in ("no prediction", "never") else text + "\n"


def timeout_writes(minutes):
    """How a hibernate-after timeout shows that the service sets for both sources; 0 is never."""
    if minutes is None:
        return []
    seconds = 60 * max(minutes, 1)
    return [f"write 0 hibernate AC {seconds}", f"write 0 hibernate DC {seconds}"]


def timer_writes(minutes):
    if minutes is None or minutes <= 0:
        return []
    return [f"write timer 0x0 0x{ENABLED | DURATION | minutes:x}"]


def writes(step, kind, what):
    return [text for text in step.of(kind) if text.startswith("write") and what in text]


def check_sleep(sleep, decision):
    suspend = sleep.moments[0].step
    expect(suspend.events[1:-1], expected_events(decision), f"what is logged at {sleep.start}")
    expect(writes(suspend, "scheme", "hibernate"), timeout_writes(decision["haMinutes"]),
           f"timeouts set at {sleep.start}")
    expect(writes(suspend, "driver", "timer"), timer_writes(decision["timerMinutes"]),
           f"timer armed at {sleep.start}")
    for moment in sleep.moments:
        if moment.what == "is woken by its timer":
            expect(writes(moment.step, "scheme", "hibernate"),
                   timeout_writes(decision["nextHAMinutes"]), f"timeouts set at {moment.time}")


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
        check_sleep(sleep, replay.decision(replay.learn(write_history(known)), sleep.start))
        machine.record.clear()
        # What the driver keeps of a timer that has expired would show in the next arming.
        machine.driver.words = 0, 0
        number += 1
    seen = changes[:2 * number + 1]
    machine.stop_service()
    # The stop comes in the same second as the last use, and one second keeps one record.
    expect_true(machine.data_file(HISTORY_FILE) == write_history(seen), "the history differs")
    expect_true(machine.data_file(DATA_FILE) == replay.learn(write_history(seen)).read_bytes(),
                "the data file differs")
    return f"{number} suspends"


def comparisons(replay, traces):
    made_up = [(f"{DAYS} days, {kind}", replay.sample(kind, DAYS, seed)) for kind, seed in SAMPLES]
    for name, history in [*made_up, *recorded(replay, traces)]:
        yield name, partial(compare, history=history)


if __name__ == "__main__":
    sys.exit(run(__doc__, comparisons))
