"""What a suspend sets for each kind of prediction, and what a late suspend does with the timer."""

from machine.registry import DEFAULT, predictor_key
from machine.service_record import information
from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import (come_back_at, events, expect_timeouts, hibernate_at, suspend_at,
                          wake_by_timer_at)

NOT_ARMED = 0x12345678, 0x30000000


def _predicted(step):
    """The three lines of a decision, and that the debugger has the same."""
    lines = [event.text for event in events(step) if event.text.startswith("Predicted")]
    expect([text for text in step.traces if text.startswith("Predicted")], lines, "traces")
    expect([event for event in events(step) if event.text in lines],
           [information(line) for line in lines], "events")
    return [line.partition(": ")[2] for line in lines]


def _machine_that_knows_no_use(machine):
    """It expects no slot to be in use, however often it was."""
    machine_that_knows_office_hours(machine)
    machine.registry.write("StrengthHigh", "101", predictor_key(DEFAULT))
    machine.restart_service()


def one_prediction_only_sets_the_timeout_and_no_timer(machine):
    _machine_that_knows_no_use(machine)
    machine.driver.words = NOT_ARMED
    step = machine.suspend()
    expect(_predicted(step), ["Mon Feb  2 18:10:00 2026\n", "never", "no prediction"], "decision")
    expect(step.of("driver"), [], "driver")
    expect([text for text in step.traces if "Duration" in text], [], "armed")
    expect_timeouts(machine, (10, 10), cached=(180, 60))

    step = wake_by_timer_at(machine, "2026-02-03 08:00")
    expect(step.of("scheme"), [], "settings after somebody else's timer")
    expect(events(step)[-1], information("Spike_S4ToS3"), "state after somebody else's timer")


def a_second_use_with_no_known_end_sets_no_timeout_for_the_timers_wake(machine):
    machine.provision()
    machine.schemes.hibernate_after = 180, 60
    machine.registry.write("DayGrouping", 0, predictor_key(DEFAULT))
    machine.start_service()
    suspend_at(machine, "2026-01-05 12:00")
    come_back_at(machine, "2026-01-06 09:00")
    suspend_at(machine, "2026-01-06 10:00")
    come_back_at(machine, "2026-01-06 10:01")
    # How long a Tuesday's use lasts that begins after ten is not known yet.
    step = suspend_at(machine, "2026-01-12 12:00")
    expect(_predicted(step), ["Mon Jan 12 12:10:00 2026\n", "Tue Jan 13 09:00:00 2026\n",
                              "no prediction"], "decision")
    expect(machine.driver.armed_minutes, 21 * 60, "minutes until the timer's wake")
    step = wake_by_timer_at(machine, "2026-01-13 09:00")
    expect(step.of("scheme"), [], "settings at the timer's wake")
    expect(step.of("suspend"), ["SetSuspendState 0 0 0"], "back to sleep")
    expect_timeouts(machine, (10, 10), cached=(180, 60))


def without_any_prediction_nothing_is_set(machine):
    machine.provision()
    machine.schemes.hibernate_after = 180, 60
    machine.driver.words = NOT_ARMED
    machine.start_service()
    step = suspend_at(machine, "2026-01-05 18:00")
    expect(_predicted(step), ["no prediction", "never", "no prediction"], "decision")
    expect(step.of("setting", "scheme", "driver"), [], "settings")
    expect(machine.driver.words, NOT_ARMED, "the driver's timer")
    expect_timeouts(machine, (180, 60))


def prediction_switched_off_in_the_night_keeps_what_was_set(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()
    machine.registry.write("DisablePrediction", 1)
    come_back_at(machine, "2026-02-03 08:00")
    expect_timeouts(machine, (180, 60))
    step = suspend_at(machine, "2026-02-03 18:00")
    expect(_predicted(step), ["no prediction", "never", "no prediction"], "decision")
    expect_timeouts(machine, (180, 60))


def only_the_value_one_switches_prediction_off(machine):
    machine_that_knows_office_hours(machine, DisablePrediction=2)
    expect(_predicted(machine.suspend())[0], "Mon Feb  2 18:10:00 2026\n", "decision")


def a_timeout_of_never_is_given_back_as_such(machine):
    machine_that_knows_office_hours(machine)
    machine.schemes.hibernate_after = 0, 1.5
    machine.suspend()
    expect_timeouts(machine, (10, 10), cached=(0, 1))
    come_back_at(machine, "2026-02-03 08:00")
    # Only whole minutes are put aside.
    expect_timeouts(machine, (0, 1))


def _suspended_late(machine, time):
    """The machine wakes in the evening to hibernate, but is suspended at another time."""
    machine_that_knows_office_hours(machine)
    machine.suspend()
    hibernate_at(machine, "2026-02-02 18:10")
    machine.driver.words = NOT_ARMED
    step = suspend_at(machine, time)
    expect(events(step)[-1], information("Suspended"), "state")
    return [text for text in step.traces if "Duration" in text]


def a_timer_of_a_minute_is_armed(machine):
    expect(_suspended_late(machine, "2026-02-03 07:59:00"), ["HW Timer Duration = 1 min\n"],
           "duration")
    expect(machine.driver.words, (0x12345678, 0xB8000001), "the driver's timer")


def a_timer_of_no_minutes_is_not_armed(machine):
    expect(_suspended_late(machine, "2026-02-03 07:59:01"), ["HW Timer Duration = 0 min\n"],
           "duration")
    expect(machine.driver.words, NOT_ARMED, "the driver's timer")


def a_timer_for_a_time_gone_by_is_not_armed_and_not_tried_again(machine):
    expect(_suspended_late(machine, "2026-02-03 08:05"), ["HW Timer Duration = -5 min\n"],
           "duration")
    expect(machine.driver.words, NOT_ARMED, "the driver's timer")
    hibernate_at(machine, "2026-02-03 08:15")
    expect(machine.suspend().traces[3:-3], ["AH_TimeStampEvent\n"], "traces of the next suspend")
