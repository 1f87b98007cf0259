#!/usr/bin/env python3
"""Plays a history through the installed service, in weeks that take seconds: a line for each day and
each search, and at the end what was achieved, beside the predictor of rates and the timeout that the
user has set."""

import configparser
import os
import sys
import tempfile
from collections import defaultdict
from datetime import timedelta
from pathlib import Path

from machine.installation import Installation
from machine.machine import DATA_FILE, DEFAULT_SETTINGS, Machine
from machine.options import add_replay_option, machine_options
from machine.registry import CURRENT, predictor_key
from steps.playback import Playback, read_history, write_history
from steps.replay import Replay, ReplayFailed

HOUR = timedelta(hours=1)
BAR_WIDTH = 40
SECTION = "CyclicProbabilityPredictor"
PARAMETERS = ("FirstLastWeight", "SecondLastWeight", "AgregationWeight", "StrengthHigh",
              "StrengthLow", "DayGrouping")


class ProgressBar:
    """On a terminal only."""

    def __init__(self, total):
        self._total = total
        self._shown = sys.stderr.isatty()

    def show(self, done):
        if self._shown:
            filled = BAR_WIDTH * done // max(self._total, 1)
            print(f"\r[{'#' * filled}{'.' * (BAR_WIDTH - filled)}] {done} of {self._total} sleeps",
                  end="", file=sys.stderr, flush=True)

    def clear(self):
        if self._shown:
            print("\r\033[K", end="", file=sys.stderr, flush=True)


class Totals:
    def __init__(self):
        self.asleep = timedelta()
        self.hibernated = timedelta()
        self.from_sleep = 0
        self.from_hibernation = 0

    def add(self, asleep, hibernated, met_hibernation):
        self.asleep += asleep
        self.hibernated += hibernated
        self.from_sleep += not met_hibernation
        self.from_hibernation += met_hibernation

    def add_fixed(self, away, timeout):
        """Adds what a time away would be with a fixed timeout; without one it is all asleep."""
        asleep = min(away, timeout) if timeout else away
        self.add(asleep, away - asleep, bool(timeout) and away > timeout)


def counted(number, one, more):
    return f"{number} {one if number == 1 else more}"


def minutes(span):
    return round(span / timedelta(minutes=1))


def day_line(day, sleeps):
    from_hibernation = sum(sleep.met_hibernation for sleep in sleeps)
    timeouts = [str(minutes(timeout)) for sleep in sleeps for timeout in sleep.timeouts]
    parts = [
        f"{day:%a %Y-%m-%d}",
        f"{counted(len(sleeps), 'sleep', 'sleeps'):>9}",
        f"{counted(sum(sleep.timer_wakes for sleep in sleeps), 'timer wake', 'timer wakes'):>13}",
        f"met: {len(sleeps) - from_hibernation:2} asleep {from_hibernation:2} hibernated",
        f"HA set: {' '.join(timeouts) or '-'}",
    ]
    return "   ".join(parts)


def print_sleep(sleep, reasons):
    for moment in sleep.moments:
        print(f"    {moment.time:%H:%M} the machine {moment.what}")
        for event in moment.step.events:
            print(f"          {event.text.strip()}")
        if moment.what == "suspends":
            for line in reasons.splitlines():
                print(f"          | {line}".rstrip())


def print_totals(columns):
    print("\n" + " " * 26 + "".join(f"{name:>18}" for name in columns))
    for name, value in (
            ("hours asleep", lambda totals: f"{totals.asleep / HOUR:.1f}"),
            ("hours hibernated", lambda totals: f"{totals.hibernated / HOUR:.1f}"),
            ("resumes from sleep", lambda totals: totals.from_sleep),
            ("resumes from hibernation", lambda totals: totals.from_hibernation)):
        print(f"{name:26}" + "".join(f"{value(totals):>18}" for totals in columns.values()))


class LiveParameters:
    """What the service predicts with, which a search may change."""

    def __init__(self, machine):
        self._machine = machine
        self._default = configparser.ConfigParser()
        self._default.optionxform = str
        self._default.read(DEFAULT_SETTINGS, "utf-8")
        self.strength = int(self._default[SECTION]["Strength"])

    def read(self):
        """The default settings with the parameters that were adopted since; None while predictions
        are off."""
        if self._machine.setting("DisablePrediction") == 1:
            return None
        live = configparser.ConfigParser()
        live.optionxform = str
        live.read_dict(self._default)
        for name in PARAMETERS:
            adopted = self._machine.registry.read(name, predictor_key(CURRENT))
            live[SECTION][name] = adopted or live[SECTION][name]
        return live

    @staticmethod
    def text(live):
        return ",".join(live[SECTION][name] for name in PARAMETERS) if live else "no prediction"


def why(replay, changes, sleep, live):
    if live is None:
        return "A search found no set that is better than the user's own timeout."
    known = [change for change in changes if change[0] < sleep.start]
    return replay.reasons(replay.learn(write_history(known), live), sleep.start, live)


def of_rates(replay, changes, user_timeout, strength):
    found = replay.walk(write_history(changes), minutes(user_timeout))[f"rates, strength {strength}"]
    totals = Totals()
    totals.asleep = timedelta(seconds=found["sleepSeconds"])
    totals.hibernated = timedelta(seconds=found["hibernateSeconds"])
    totals.from_sleep = found["resumesFromSleep"]
    totals.from_hibernation = found["resumesFromHibernate"]
    return totals


def play(machine, replay, history, explain):
    changes = read_history(history)
    if len(changes) < 3:
        sys.exit("The history has no sleep with a use before and after it.")
    user_timeout = timedelta(minutes=machine.schemes.hibernate_after[0])
    machine.clock.set(changes[0][0])
    machine.provision(file=DEFAULT_SETTINGS)
    machine.install()

    number_of_sleeps = (len(changes) - 1) // 2
    print(f"{counted(number_of_sleeps, 'sleep', 'sleeps')} from {changes[0][0]:%Y-%m-%d} to "
          f"{changes[-1][0]:%Y-%m-%d}. The user's own hibernate-after timeout (HA) is "
          f"{minutes(user_timeout)} minutes.\n", flush=True)
    bar = ProgressBar(number_of_sleeps)
    played, fixed = Totals(), Totals()
    by_day = defaultdict(list)
    day = None
    parameters = LiveParameters(machine)
    live = parameters.read()

    def print_day():
        if day is not None:
            bar.clear()
            print(day_line(day, [sleep for sleep, _ in by_day[day]]), flush=True)
            for sleep, settings in by_day[day] if explain else ():
                print_sleep(sleep, why(replay, changes, sleep, settings))

    for number, sleep in enumerate(Playback(machine).sleeps(changes)):
        if sleep.start.date() != day:
            print_day()
            day = sleep.start.date()
        # A search after this sleep still waits for its delay.
        before, live = live, parameters.read()
        if parameters.text(live) != parameters.text(before):
            bar.clear()
            print(f"A search adopted: {parameters.text(live)}", flush=True)
        by_day[day].append((sleep, live))
        played.add(sleep.asleep, sleep.hibernated, sleep.met_hibernation)
        fixed.add_fixed(sleep.end - sleep.start, user_timeout)
        bar.show(number + 1)
    print_day()
    machine.stop_service()
    print_totals({
        "predicted": played,
        "rates": of_rates(replay, changes, user_timeout, parameters.strength),
        f"fixed at {minutes(user_timeout)} min" if user_timeout else "never": fixed})


def main():
    parser = machine_options(__doc__, "play")
    add_replay_option(parser)
    parser.add_argument("history", type=Path, help="a zs7state.dat or a .csv")
    parser.add_argument("--explain", action="store_true",
                        help="add what the service logged, and why it decided so")
    parser.add_argument("--data", type=Path, help="where to put the service's data file at the end")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        replay = Replay(options.replay, folder)
        try:
            history = replay.history(options.history)
        except ReplayFailed as failure:
            print(failure, file=sys.stderr)
            return 2
        with Installation(options.folder, options.build, zone="UTC") as installation:
            machine = Machine(installation)
            machine.reset()
            play(machine, replay, history, options.explain)
            if options.data:
                options.data.write_bytes(machine.data_file(DATA_FILE))
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except BrokenPipeError:
        # The reader of the output has closed it.
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
        sys.exit(1)
    except KeyboardInterrupt:
        sys.exit(130)
