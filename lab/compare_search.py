#!/usr/bin/env python3
"""Plays a history through the service until its search for better parameters is due, and compares
what it stores and adopts, and what it decides on the next suspend, with what dozewell-replay makes
of the same files. Prints one line for each history and strength, and last how many passed and
failed."""

import configparser
import sys
from datetime import timedelta
from functools import partial

from machine.machine import DEFAULT_SETTINGS, HISTORY_FILE, LONGEST_INTERVAL
from machine.registry import CURRENT, predictor_key
from steps.comparisons import made_up_and_recorded, run
from steps.decisions import expect_decided
from steps.expect import expect, expect_true
from steps.playback import Playback, read_history

DAYS = 60
SAMPLES = [("office", 1), ("home", 2), ("shift", 3)]
STRENGTHS = 3
INTERVAL_DAYS, DELAY = 7, timedelta(minutes=30)
NOTHING_DECIDED = {"hibernateAt": "no prediction", "sleepRestoredAt": "never",
                   "hibernateNextAt": "no prediction", "haMinutes": None, "timerMinutes": None,
                   "nextHAMinutes": None}
PARAMETERS = ["FirstLastWeight", "SecondLastWeight", "AgregationWeight", "StrengthHigh",
              "StrengthLow", "DayGrouping"]


def last_long_use(changes):
    """The place of the last resume that leaves time for the delay and the search before the next
    suspend."""
    return max(place for place in range(2, len(changes) - 2, 2)
               if changes[place + 1][0] - changes[place][0] > 2 * DELAY)


def search(machine):
    """Makes a search due, and has the service make it after its delay."""
    machine.registry.write("OptimizerInterval", INTERVAL_DAYS)
    machine.change_power_status()
    expect(machine.registry.read("Best0", predictor_key(CURRENT)), None, "set before the delay")
    machine.clock.pass_time(minutes=DELAY // timedelta(minutes=1))
    step = machine.take_step()
    expect_true(any(text.startswith("Optimizer runtime ") for text in step.of("information")),
                "there was no search")


def settings_with(adopted):
    """The default settings with the adopted parameters, as dozewell-replay reads them."""
    ini = configparser.ConfigParser()
    ini.optionxform = str
    ini.read(DEFAULT_SETTINGS, "utf-8")
    for name in PARAMETERS:
        if adopted[name] is not None:
            ini["CyclicProbabilityPredictor"][name] = adopted[name]
    return ini


def compare(machine, replay, history, strength):
    changes = read_history(history)
    place = last_long_use(changes)
    machine.reset()
    machine.clock.set(changes[0][0])
    machine.provision(file=DEFAULT_SETTINGS, OptimizerInterval=LONGEST_INTERVAL)
    machine.registry.write("Strength", str(strength), predictor_key(CURRENT))
    machine.install()
    playback = Playback(machine)
    for _ in playback.sleeps(changes[:place + 1]):
        # What the driver keeps of a timer that has expired would show in the next arming.
        machine.driver.words = 0, 0
    machine.record.clear()
    search(machine)

    timeout = int(machine.schemes.hibernate_after[0])
    found = replay.search(machine.data_file(HISTORY_FILE), timeout)
    stored = {name: machine.registry.read(name, predictor_key(CURRENT)) for name in found}
    expect(stored, found, "sets that were stored")
    chosen = found[f"Best{strength}"]
    adopted = replay.apply(strength, chosen)
    expect((machine.setting("DisablePrediction"), machine.setting("ServiceFeedback")),
           (adopted["disabled"], adopted["feedback"]), "what was adopted")
    expect({name: machine.registry.read(name, predictor_key(CURRENT)) for name in PARAMETERS},
           {name: adopted[name] for name in PARAMETERS}, "parameters that were adopted")

    sleep = next(playback.sleeps(changes[place:place + 3]))
    settings = settings_with(adopted)
    known = replay.learn(machine.data_file(HISTORY_FILE), settings)
    expect_decided(sleep, NOTHING_DECIDED if adopted["disabled"] else
                   replay.decision(known, sleep.start, settings))
    machine.stop_service()
    return f"adopted {chosen}"


def comparisons(replay, traces):
    histories = made_up_and_recorded(replay, traces, DAYS, SAMPLES)
    for number, (name, history) in enumerate(histories):
        strength = number % STRENGTHS
        yield f"{name}, strength {strength}", partial(compare, history=history, strength=strength)


if __name__ == "__main__":
    sys.exit(run(__doc__, comparisons))
