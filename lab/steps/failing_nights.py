"""Nights in which a function of the system fails, in each of its calls in turn."""

import re
from datetime import date, timedelta
from typing import NamedTuple

from machine.machine import DATA_FILE, LONGEST_INTERVAL
from machine.machine_state import POWER_SOURCES
from machine.registry import DEFAULT, predictor_key
from machine.service_record import of_kinds
from steps.data_files import without_last_event
from steps.expect import expect
from steps.nights import (cached_timeouts, come_back_at, events, hibernate_at, suspend_at,
                          wake_by_timer_at)

ACCESS_DENIED = 5
USERS_OWN = 180, 60

_FIRST_DAY = date(2026, 6, 1)  # long before daylight saving ends
_DAYS_OF_LEARNING = 28


class Outcome(NamedTuple):
    """What all failures of one function led to."""

    reported: list  # errors, and what else is not information
    lost: list      # step and power source of each timeout of the user's that was lost for good
    late: int       # failures after which only the second night was as usual
    forgotten: int  # failures by which the predictor lost what it had learnt


class _Step(NamedTuple):
    name: str
    step: object
    lost: set  # power sources whose timeout neither the scheme nor the service has


def machine_of_every_day(machine):
    """A machine that was in use from half past eight to six on each of 28 days, and is in use now.
    Each day counts for every other and no search for better parameters is ever due, so all nights
    are alike."""
    machine.provision(OptimizerInterval=LONGEST_INTERVAL)
    machine.registry.write("DayGrouping", 255, predictor_key(DEFAULT))
    machine.schemes.hibernate_after = USERS_OWN
    machine.clock.set(f"{_FIRST_DAY} 08:30")
    machine.start_service()
    for day in range(_DAYS_OF_LEARNING):
        suspend_at(machine, f"{_FIRST_DAY + timedelta(days=day)} 18:00")
        come_back_at(machine, f"{_FIRST_DAY + timedelta(days=day + 1)} 08:30")
    _idle_at(machine, f"{_FIRST_DAY + timedelta(days=_DAYS_OF_LEARNING)} 17:00")


def fail_each(machine, function, error=ACCESS_DENIED):
    """Makes each call of a function in a night fail in turn, and expects that the first or second
    night after that is as if nothing had failed. Where the predictor forgot what it had learnt,
    that is expected after a restart with the data file of before."""
    data = without_last_event(machine.data_file(DATA_FILE))
    before = machine.calls.made(function)
    usual = _shape(_night(machine))
    expect(usual[0][-1], "information Suspended", "end of a usual evening")
    outcome = Outcome([], [], 0, 0)
    for number in range(1, machine.calls.made(function) - before + 1):
        machine.calls.fail(function, error, number, times=1)
        night = _night(machine)
        where, = (step.name for step in night if step.step.of("failed"))
        outcome.reported.extend(_reported(night))
        outcome.lost.extend((step.name, source) for last, step in zip([None, *night], night)
                            for source in sorted(step.lost - (last.lost if last else set())))
        # A user whose timeout was lost notices that and sets it again.
        machine.schemes.hibernate_after = USERS_OWN
        after = _shape(_night(machine))
        if after != usual and where == "idle":
            outcome = outcome._replace(forgotten=outcome.forgotten + 1)
            machine.stop_service()
            machine.write_data_file(DATA_FILE, data)
            machine.start_service()
            after = _shape(_night(machine))
        elif after != usual:
            outcome = outcome._replace(late=outcome.late + 1)
            after = _shape(_night(machine))
        what = f"after call {number} of {function} had failed in {where}"
        for found, expected in zip(after, usual):
            expect(found, expected, f"events of the night {what}")
        expect(machine.schemes.hibernate_after, USERS_OWN, f"timeouts {what}")
    return outcome


def _night(machine):
    """From one evening to the next."""
    evening = machine.clock.now.date()
    morning = evening + timedelta(days=1)
    steps = [
        ("suspend", suspend_at, f"{evening} 18:00"),
        ("hibernate", hibernate_at, f"{evening} 18:10"),
        ("hibernated", suspend_at, f"{evening} 18:11"),
        ("timer", wake_by_timer_at, f"{morning} 08:00"),
        ("asleep", suspend_at, f"{morning} 08:01"),
        ("come back", _come_back_for_good_at, f"{morning} 08:30"),
        ("idle", _idle_at, f"{morning} 17:00"),
    ]
    return [_Step(name, take(machine, time), _lost(machine)) for name, take, time in steps]


def _come_back_for_good_at(machine, time):
    """If the machine goes back to sleep, its user wakes it once more."""
    step = come_back_at(machine, time)
    if not step.of("suspend"):
        return step
    machine.suspend()
    again = come_back_at(machine, machine.clock.now + timedelta(minutes=1))
    return step._replace(entries=step.entries + again.entries)


def _idle_at(machine, time):
    machine.clock.pass_until(time)
    # A second later every day, since a save is due when more than a day has passed.
    machine.clock.pass_time(seconds=(machine.clock.now.date() - _FIRST_DAY).days)
    return machine.notify_idle()


def _lost(machine):
    timeouts = zip(POWER_SOURCES, USERS_OWN, machine.schemes.hibernate_after,
                   cached_timeouts(machine))
    return {source for source, own, *known in timeouts if own not in known}


def _reported(night):
    return [_undated(entry.text) for step in night
            for entry in of_kinds(step.step.entries, "error", "success")]


def _shape(night):
    """The events of each step of a night, without their dates and without the time of the step."""
    return [[f"{event.kind} {_undated(event.text)}" for event in events(step.step)]
            for step in night]


def _undated(text):
    return re.sub(r"\d+/\d+/\d{4} \S+ - |\w{3} \w{3} [ \d]\d | \d{4}\n", "", text)
