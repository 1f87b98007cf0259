#!/usr/bin/env python3
"""Plays a history through the installed service, in weeks that take seconds: a line for each day,
and at the end what was achieved compared with the timeout that the user has set."""

import os
import sys
import tempfile
from collections import defaultdict
from datetime import timedelta
from pathlib import Path

from machine.installation import Installation
from machine.machine import DATA_FILE, DEFAULT_SETTINGS, LONGEST_INTERVAL, Machine
from machine.options import add_replay_option, machine_options
from steps.playback import Playback, read_history, write_history
from steps.replay import Replay, ReplayFailed

HOUR = timedelta(hours=1)
BAR_WIDTH = 40


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


def print_totals(played, fixed, timeout):
    fixed_name = f"fixed at {minutes(timeout)} min" if timeout else "never"
    print(f"\n{'':26}{'predicted':>12}{fixed_name:>18}")
    for name, value in (
            ("hours asleep", lambda totals: f"{totals.asleep / HOUR:.1f}"),
            ("hours hibernated", lambda totals: f"{totals.hibernated / HOUR:.1f}"),
            ("resumes from sleep", lambda totals: totals.from_sleep),
            ("resumes from hibernation", lambda totals: totals.from_hibernation)):
        print(f"{name:26}{value(played):>12}{value(fixed):>18}")


def play(machine, replay, history, explain):
    changes = read_history(history)
    if len(changes) < 3:
        sys.exit("The history has no sleep with a use before and after it.")
    user_timeout = timedelta(minutes=machine.schemes.hibernate_after[0])
    machine.clock.set(changes[0][0])
    # No search changes the parameters, so that reasons and totals are about the same ones.
    machine.provision(file=DEFAULT_SETTINGS, OptimizerInterval=LONGEST_INTERVAL)
    machine.install()

    number_of_sleeps = (len(changes) - 1) // 2
    print(f"{counted(number_of_sleeps, 'sleep', 'sleeps')} from {changes[0][0]:%Y-%m-%d} to "
          f"{changes[-1][0]:%Y-%m-%d}. The user's own hibernate-after timeout (HA) is "
          f"{minutes(user_timeout)} minutes.\n", flush=True)
    bar = ProgressBar(number_of_sleeps)
    played, fixed = Totals(), Totals()
    by_day = defaultdict(list)
    day = None

    def print_day():
        if day is not None:
            bar.clear()
            print(day_line(day, by_day[day]), flush=True)
            for sleep in by_day[day] if explain else ():
                known = [change for change in changes if change[0] < sleep.start]
                data = replay.learn(write_history(known))
                print_sleep(sleep, replay.reasons(data, sleep.start))

    for number, sleep in enumerate(Playback(machine).sleeps(changes)):
        if sleep.start.date() != day:
            print_day()
            day = sleep.start.date()
        by_day[day].append(sleep)
        played.add(sleep.asleep, sleep.hibernated, sleep.met_hibernation)
        fixed.add_fixed(sleep.end - sleep.start, user_timeout)
        bar.show(number + 1)
    print_day()
    machine.stop_service()
    print_totals(played, fixed, user_timeout)


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
