"""Nights with the predictor of rates."""

from datetime import date, datetime, timedelta

from machine.clock import local
from machine.registry import DEFAULT, predictor_key
from machine.service_record import error, information
from steps.expect import expect
from steps.living import A_MONDAY, machine_that_knows_office_hours, office_days
from steps.nights import (come_back_at, events, expect_timeouts, hibernate_at, suspend_at,
                          wake_by_timer_at)

RATES_FILE = "rates.z7"
RATES_FILE_SIZE = 49744

EVENING, MORNING = "2026-02-02 18:00", "2026-02-03 08:00"


def _choose(machine, predictor):
    machine.registry.write("Predictor", predictor, predictor_key(DEFAULT))


def _office_with_rates(machine, seen=lambda step: None):
    """As machine_that_knows_office_hours, but with rates from the beginning. `seen` gets each step
    of the service."""
    machine.provision()
    _choose(machine, "rates")
    machine.schemes.hibernate_after = 180, 60
    seen(machine.start_service())
    office_days(machine, A_MONDAY, days=20, seen=seen)
    machine.clock.pass_until(EVENING)


def _times(step):
    """The three times of a decision; None for one that is none."""
    lines = [event.text.partition(": ")[2] for event in step.events
             if event.text.startswith("Predicted")]
    expect(len(lines), 3, "lines of a decision")
    return [datetime.strptime(line.strip(), "%a %b %d %H:%M:%S %Y") if line.endswith("\n") else None
            for line in lines]


def _expect_between(low, time, high, what):
    expect(local(low).replace(tzinfo=None) <= time <= local(high).replace(tzinfo=None), True,
           f"{what}, {time}, from {low} to {high}")


def a_night_with_rates(machine):
    _office_with_rates(machine)
    hibernates, woken, again = _times(machine.suspend())
    _expect_between("2026-02-02 18:03", hibernates, "2026-02-02 20:00", "hibernation")
    _expect_between("2026-02-03 06:00", woken, MORNING, "wake")
    _expect_between("2026-02-03 08:01", again, "2026-02-11 18:00", "second hibernation")
    minutes = (hibernates - datetime(2026, 2, 2, 18)) // timedelta(minutes=1)
    expect_timeouts(machine, (minutes, minutes), cached=(180, 60))

    step = hibernate_at(machine, str(hibernates))
    expect(events(step)[-1], information("Spike_S3ToS4"), "state on the way into hibernation")
    machine.suspend()
    step = wake_by_timer_at(machine, str(woken))
    expect(events(step)[-1], information("Spike_S4ToS3"), "state after the timer's wake")
    minutes = (again - woken) // timedelta(minutes=1)
    expect_timeouts(machine, (minutes, minutes), cached=(180, 60))
    machine.suspend()
    step = come_back_at(machine, MORNING)
    expect(events(step)[-1], information("Active"), "state when the user is back")
    expect_timeouts(machine, (180, 60))


def rates_outlive_a_restart(machine):
    _office_with_rates(machine)
    machine.stop_service()
    saved = machine.data_file(RATES_FILE)
    expect(len(saved), RATES_FILE_SIZE, "size of the file of rates")
    machine.start_service()
    machine.stop_service()
    # Nothing was slept: only the times of the last events differ, and with them the checksum.
    again = machine.data_file(RATES_FILE)
    expect(again[16:-8], saved[16:-8], "what rates know after a restart")


def a_change_to_rates_learns_the_past_of_the_machine(machine):
    machine_that_knows_office_hours(machine)
    _choose(machine, "rates")
    machine.restart_service()
    hibernates, woken, _ = _times(machine.suspend())
    _expect_between("2026-02-02 18:03", hibernates, "2026-02-02 20:00", "hibernation")
    _expect_between("2026-02-03 06:00", woken, MORNING, "wake")


def rates_plan_no_wake_without_a_driver(machine):
    machine.driver.hide()
    _office_with_rates(machine)
    hibernates, woken, again = _times(machine.suspend())
    # The machine is asleep all night, for the time when its user comes.
    _expect_between("2026-02-03 08:01", hibernates, "2026-02-03 18:00", "hibernation")
    expect((woken, again), (None, None), "wake and second hibernation")


def a_predictor_of_another_name_is_reported_when_the_controller_starts(machine):
    machine.provision()
    _choose(machine, "best")
    machine.start_service()
    step = suspend_at(machine, EVENING)
    expect(_times(step), [None, None, None], "what nothing is known about")
    machine.stop_service()
    step = machine.start_service()
    expect(error("Predictor is neither slots nor rates, slots is used\n") in step.events, True,
           "the event about the name")


def an_explanation_says_what_a_suspend_then_does(machine):
    _office_with_rates(machine, seen=machine.client_view.log_service_events)
    answer = machine.client.run(f'explain --at "{EVENING}"')
    expect((answer.exit_code, answer.error), (0, ""), "exit code and error")
    lines = answer.output.splitlines()
    expect(lines[0], "As of now: 41 events, of which nothing is saved yet.", "how new that is")
    expect(lines[1], "Suspended Mon 18:00, learnt from 20 sleeps.", "what is explained")
    hibernates, woken, again = (f"{time:%a %H:%M}" for time in _times(machine.suspend()))
    expect(lines[-1], f"Hibernates {hibernates}, woken {woken}, again at {again}.", "decision")


def _expect_woken_in_the_morning(machine, evening, morning):
    """When a suspend in the evening has the machine woken, between six and eight."""
    step = suspend_at(machine, f"{evening} 18:00")
    woken = _times(step)[1]
    _expect_between(f"{morning} 06:00", woken, f"{morning} 08:00", "wake")
    come_back_at(machine, f"{morning} 08:00")


def _expect_wakes_around_a_change_of_the_clock(machine, first_monday, friday, monday, tuesday):
    machine.provision()
    _choose(machine, "rates")
    machine.clock.set(f"{first_monday} 08:00")
    machine.start_service()
    office_days(machine, date.fromisoformat(first_monday), days=14)
    _expect_woken_in_the_morning(machine, friday, monday)
    _expect_woken_in_the_morning(machine, monday, tuesday)


def rates_wake_by_the_wall_clock_when_an_hour_is_skipped(machine):
    _expect_wakes_around_a_change_of_the_clock(machine, "2026-02-16", "2026-03-06", "2026-03-09",
                                               "2026-03-10")


def rates_wake_by_the_wall_clock_when_an_hour_comes_twice(machine):
    _expect_wakes_around_a_change_of_the_clock(machine, "2026-10-12", "2026-10-30", "2026-11-02",
                                               "2026-11-03")
