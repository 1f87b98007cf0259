"""Both options at once: the predictor of rates, and the system's timer in the driver's place."""

import random
from datetime import datetime, timedelta, timezone

from machine.clock import local
from machine.machine import DEFAULT_SETTINGS, LONGEST_INTERVAL
from machine.registry import DEFAULT, predictor_key
from machine.service_record import information
from steps.client import DONE
from steps.expect import expect, expect_true
from steps.living import A_MONDAY, office_days
from steps.nights import (cached_timeouts, come_back_at, events, expect_timeouts, suspend_at,
                          wake_by_system_timer)
from steps.playback import Playback

ACTIVE = information("Active")
EVENING, MORNING = "2026-02-02 18:00", "2026-02-03 08:00"
DAY = timedelta(days=1)


def _choose(machine, predictor="rates"):
    machine.registry.write("Predictor", predictor, predictor_key(DEFAULT))
    machine.registry.write("WakeTimer", "windows", predictor_key(DEFAULT))


def _office(machine, **settings):
    """Six in the evening, after four weeks in an office. The user comes at eight, and no timer was
    armed for that moment, as the system's is taken into use only now."""
    machine.driver.hide()
    machine.provision(file=DEFAULT_SETTINGS, OptimizerInterval=LONGEST_INTERVAL, **settings)
    machine.registry.write("Predictor", "rates", predictor_key(DEFAULT))
    machine.schemes.hibernate_after = 180, 60
    machine.start_service()
    office_days(machine, A_MONDAY, days=20)
    machine.clock.pass_until(EVENING)
    _choose(machine)
    machine.restart_service()


def _set_strength(machine, strength):
    expect(machine.client.run(f"strength set {strength}").exit_code, DONE, "exit code")


def _decision(step):
    return [event.text.strip() for event in step.events if event.text.startswith("Predicted")]


def _expect_wake_before(machine, time):
    expect_true(machine.timer.due is not None, "no timer is armed")
    expect_true(machine.timer.due < local(time), f"armed for {machine.timer.due}")


def _expect_night_to_its_end(machine):
    """From the suspend on."""
    _expect_wake_before(machine, MORNING)
    step = wake_by_system_timer(machine)
    expect((events(step)[-1], step.of("suspend")),
           (information("Spike_S4ToS3"), ["SetSuspendState 0 0 0"]), "the timer's wake")
    machine.suspend()
    step = come_back_at(machine, MORNING)
    expect(events(step)[-1], ACTIVE, "the user's return")
    expect_timeouts(machine, (180, 60))
    expect(machine.timer.due, None, "the timer when its user is back")


def a_night_with_both(machine):
    _office(machine)
    step = machine.suspend()
    expect([text.split()[0] for text in step.of("timer")], ["arm"], "the system's timer")
    _expect_night_to_its_end(machine)


def a_changed_strength_counts_from_the_next_suspend(machine):
    _office(machine)
    before = _decision(machine.suspend())
    come_back_at(machine, "2026-02-02 18:30")
    _set_strength(machine, 4)
    after = _decision(suspend_at(machine, "2026-02-02 18:31"))
    expect_true(before != after, f"the strength changes nothing: {after}")
    _expect_night_to_its_end(machine)


def a_change_of_the_predictor_and_back_keeps_the_timer(machine):
    _office(machine)
    for predictor, day in (("slots", 3), ("rates", 4)):
        _choose(machine, predictor)
        step = suspend_at(machine, f"2026-02-0{day - 1} 18:00")
        expect_true(machine.timer.due is not None, f"no timer before {predictor} is taken up")
        wake_by_system_timer(machine)
        machine.suspend()
        come_back_at(machine, f"2026-02-0{day} 09:00")
        # The next save, which takes the other predictor up.
        machine.clock.pass_until(f"2026-02-0{day} 17:00")
        machine.notify_idle()
        step = suspend_at(machine, f"2026-02-0{day} 18:00")
        expect(len(_decision(step)), 3, f"lines of a decision by {predictor}")
        expect([text.split()[0] for text in step.of("timer")], ["arm"], f"the timer with {predictor}")
        come_back_at(machine, f"2026-02-0{day} 18:30")
        expect(machine.timer.due, None, "the timer when its user is back")


def a_service_that_is_killed_in_the_night_decides_the_same_after_its_start(machine):
    _office(machine)
    machine.stop_service()
    machine.start_service()
    decided = _decision(machine.suspend())
    machine.service.kill()
    # Windows cancels the timer of a process that ends.
    machine.timer.fire()
    machine.start_service()
    expect(cached_timeouts(machine), (None, None), "timeouts put aside after the start")
    expect_timeouts(machine, (180, 60))
    again = _decision(machine.suspend())
    expect(again, decided, "the decision after the kill")
    _expect_night_to_its_end(machine)


# A year.

def _changes_of_a_year():
    """Nights, most lunches, and some days away: local times of a machine in UTC."""
    chance = random.Random(20260105)

    def around(hour, minutes):
        return timedelta(hours=hour, seconds=int(chance.gauss(0, 60 * minutes)))

    changes = [(datetime(2026, 1, 5, 8, 0, 0, tzinfo=timezone.utc), False)]
    first = datetime(2026, 1, 5, tzinfo=timezone.utc)
    for day in (first + number * DAY for number in range(365)):
        works = day.weekday() < 5 and chance.random() > 0.05
        if not works and chance.random() < 0.6:
            continue
        come, leave = (around(8.4, 20), around(17.5, 30)) if works else (around(11, 60),
                                                                          around(21, 60))
        if changes[-1][1]:
            changes.append((day + come, False))
        if works and chance.random() < 0.7:
            changes += [(day + around(12.1, 8), True), (day + around(12.9, 8), False)]
        changes.append((day + leave, True))
    return changes


def _in_the_middle(machine):
    """What happens between sleeps, by the number of the sleep."""
    def kill():
        machine.service.kill()
        machine.start_service()
    return {
        120: lambda: _set_strength(machine, 4),
        200: kill,
        280: lambda: _choose(machine, "slots"),
        340: lambda: _choose(machine, "rates"),
        400: lambda: _set_strength(machine, 1),
    }


def a_year_with_both(machine):
    changes = _changes_of_a_year()
    machine.driver.hide()
    machine.clock.zone = "UTC"
    machine.clock.set(changes[0][0])
    machine.provision(file=DEFAULT_SETTINGS, OptimizerInterval=LONGEST_INTERVAL)
    _choose(machine)
    machine.schemes.hibernate_after = 180, 180
    machine.start_service()
    between = _in_the_middle(machine)
    wakes = played = 0
    for number, sleep in enumerate(Playback(machine).sleeps(changes)):
        played += 1
        for moment in sleep.moments:
            expect([event for event in moment.step.events if event.kind == "error"], [],
                   f"errors at {moment.time}")
            if moment.what == "is woken by its timer":
                wakes += 1
                expect(moment.step.of("suspend"), ["SetSuspendState 0 0 0"],
                       f"the timer's wake at {moment.time}")
        expect(ACTIVE in sleep.moments[-1].step.events, True, f"in use again at {sleep.end}")
        expect(machine.timer.due, None, f"the timer at {sleep.end}")
        expect(machine.schemes.hibernate_after, (180, 180), f"the user's timeouts at {sleep.end}")
        if number in between:
            between.pop(number)()
    expect(between, {}, "what never came")
    expect_true(played > 450 and wakes > 100, f"{wakes} wakes in {played} sleeps")
