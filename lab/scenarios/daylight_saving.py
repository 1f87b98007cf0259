"""The hour that daylight saving skips, and the one that comes twice. All times are those of the
wall clock."""

from machine.clock import local
from machine.machine import DATA_FILE, HISTORY_FILE, LONGEST_INTERVAL
from machine.service_record import error, information
from steps.data_files import Slot, asleep, awake, history, learnt_data, wall_clock_seconds
from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import (come_back_at, events, expect_timeouts, hibernate_at, suspend_at,
                          wake_by_timer_at)

BACKWARD = error("state start is later than state end")
USERS_OWN = 180, 60


def _history(machine):
    return history(machine.data_file(HISTORY_FILE))


def _in_use_from(machine, time):
    machine.provision()
    machine.schemes.hibernate_after = USERS_OWN
    machine.clock.set(time)
    machine.start_service()


def a_night_in_which_an_hour_is_skipped_counts_as_full(machine):
    machine_that_knows_office_hours(machine, OptimizerInterval=LONGEST_INTERVAL)
    machine.suspend()
    come_back_at(machine, "2026-03-06 08:00")
    step = suspend_at(machine, "2026-03-06 18:00")
    expect(events(step)[1:4], [
        information("Predicted Hibernate at: Fri Mar  6 18:10:00 2026\n"),
        information("Predicted Sleep restored at: Mon Mar  9 08:00:00 2026\n"),
        information("Predicted Hibernate next at: Mon Mar  9 18:10:00 2026\n"),
    ], "predictions")
    expect(machine.driver.armed_minutes, 62 * 60, "minutes until the timer's wake")
    # 62 hours later, of which the wall clock shows 63.
    machine.clock.pass_time(hours=62, awake=False)
    expect(machine.clock.now, local("2026-03-09 09:00"), "time of the wake")
    step = wake_by_timer_at(machine, "2026-03-09 09:00")
    expect(events(step), [information("9/3/2026 9:0:0 - Activating"),
                          information("GetPreviousSleepStatus 5\n"),
                          information("Spike_S4ToS3")], "events of the timer's wake")


def a_wake_across_the_skipped_hour_is_not_taken_for_the_systems_own(machine):
    _in_use_from(machine, "2026-03-07 20:00")
    suspend_at(machine, "2026-03-08 01:30")
    step = hibernate_at(machine, "2026-03-08 05:30")  # three hours later
    expect([line for line in step.traces if "Duration" in line],
           2 * ["SuspendDuration = 14400 sec, HA = 10800 sec\n"], "time asleep")
    expect(events(step)[-1], information("Active"), "state")


def the_skipped_hour_counts_as_used_when_it_was_within_use(machine):
    _in_use_from(machine, "2026-03-08 01:15")
    suspend_at(machine, "2026-03-08 03:25")
    come_back_at(machine, "2026-03-08 12:00")
    machine.stop_service()
    data = learnt_data(machine.data_file(DATA_FILE))
    start = wall_clock_seconds("2026-03-08 01:15")
    first = wall_clock_seconds("2026-03-08 01:10") // 600
    expect([data.slots[(first + i) % 1008] for i in range(14)],
           [Slot(last=1, marked=start + i * 600) for i in range(14)], "slots from 1:10 to 3:20")
    expect(_history(machine), [awake("2026-03-08 01:15"), asleep("2026-03-08 03:25"),
                               awake("2026-03-08 12:00")], "history")


def a_sleep_within_the_hour_that_comes_twice_ends_before_it_began(machine):
    _in_use_from(machine, "2026-10-31 20:00")
    suspend_at(machine, "2026-11-01 01:30")
    step = come_back_at(machine, local("2026-11-01 01:10", fold=1))  # forty minutes later
    expect([line for line in step.traces if "Duration" in line],
           2 * ["SuspendDuration = 1200 sec, HA = 10800 sec\n"], "time asleep")
    expect(events(step)[-2:], [BACKWARD, information("Active")], "last events")
    expect_timeouts(machine, USERS_OWN)
    step = suspend_at(machine, local("2026-11-01 01:40", fold=1))
    expect(events(step)[-1], information("Suspended"), "last event of the next suspend")
    come_back_at(machine, "2026-11-01 12:00")
    machine.stop_service()
    expect(_history(machine), [awake("2026-10-31 20:00"), asleep("2026-11-01 01:30"),
                               asleep("2026-11-01 01:40"), awake("2026-11-01 12:00")], "history")


def a_wake_across_the_hour_that_comes_twice_is_not_taken_for_the_systems_own(machine):
    _in_use_from(machine, "2026-10-31 20:00")
    suspend_at(machine, local("2026-11-01 00:30"))
    step = hibernate_at(machine, "2026-11-01 02:30")  # three hours later
    expect([line for line in step.traces if "Duration" in line],
           2 * ["SuspendDuration = 7200 sec, HA = 10800 sec\n"], "time asleep")
    expect(events(step)[-1], information("Active"), "state")


def the_hour_that_comes_twice_counts_once_when_it_was_within_use(machine):
    _in_use_from(machine, "2026-11-01 00:15")
    step = suspend_at(machine, local("2026-11-01 01:25", fold=1))
    expect(events(step)[-1], information("Suspended"), "last event")
    come_back_at(machine, "2026-11-01 12:00")
    machine.stop_service()
    data = learnt_data(machine.data_file(DATA_FILE))
    first = wall_clock_seconds("2026-11-01 00:10") // 600
    expect([data.slots[(first + i) % 1008].last for i in range(-1, 10)],
           [-1, *8 * [1], 0, 0], "slots from 0:00 to 1:40")


def the_daily_save_goes_by_the_wall_clock(machine):
    _in_use_from(machine, "2026-03-07 08:00")
    machine.clock.pass_until("2026-03-08 08:00:00")
    expect(events(machine.notify_idle()), [], "events within the day, of 23 hours")
    machine.clock.pass_until("2026-03-08 08:00:01")
    expect(events(machine.notify_idle()), [information("8/3/2026 8:0:1 - Saving")],
           "events a second later")
