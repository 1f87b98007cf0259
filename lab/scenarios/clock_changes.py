"""A clock whose hands are moved: set back by hand, or by the change of daylight saving. All times
are those of the wall clock."""

from clock import local
from data_files import Slot, asleep, awake, history, learnt_data, wall_clock_seconds
from expect import expect
from living import machine_that_knows_office_hours
from machine import DATA_FILE, HISTORY_FILE
from nights import (come_back_at, events, expect_timeouts, hibernate_at, suspend_at,
                    wake_by_timer_at)
from record import error, information

BACKWARD = error("state start is later than state end")
USERS_OWN = 180, 60


def _history(machine):
    return history(machine.data_file(HISTORY_FILE))


def _in_use_from(machine, time, **settings):
    machine.provision(**settings)
    machine.schemes.hibernate_after = USERS_OWN
    machine.clock.set(time)
    machine.start_service()


def a_clock_set_back_in_use_costs_that_days_knowledge(machine):
    machine_that_knows_office_hours(machine)
    machine.clock.set("2026-02-02 07:00")  # the last resume was at eight
    step = suspend_at(machine, "2026-02-02 07:30")
    expect(events(step), [
        information("2/2/2026 7:30:0 - Suspend"),
        information("Predicted Hibernate at: Mon Feb  2 18:10:00 2026\n"),
        information("Predicted Sleep restored at: Tue Feb  3 08:00:00 2026\n"),
        information("Predicted Hibernate next at: Tue Feb  3 18:10:00 2026\n"),
        BACKWARD,
        information("Suspended"),
    ], "events of the suspend")
    expect(step.traces[-5:-3], ["AH_LogEvent\n", BACKWARD.text], "traces of the suspend")
    expect_timeouts(machine, (640, 640), cached=USERS_OWN)
    step = come_back_at(machine, "2026-02-02 08:30")
    expect([event for event in events(step) if event.kind == "error"], [], "errors of the resume")
    expect_timeouts(machine, USERS_OWN)
    suspend_at(machine, "2026-02-02 18:00")
    come_back_at(machine, "2026-02-03 08:00")
    machine.stop_service()
    expect(_history(machine)[-5:],
           [asleep("2026-01-30 18:00"), awake("2026-02-02 08:00"), awake("2026-02-02 08:30"),
            asleep("2026-02-02 18:00"), awake("2026-02-03 08:00")], "history")


def a_clock_set_back_by_a_week_is_lived_through(machine):
    machine_that_knows_office_hours(machine)
    machine.clock.set("2026-01-26 08:00")
    for day in (26, 27, 28, 29, 30):
        step = suspend_at(machine, f"2026-01-{day} 18:00")
        expect(events(step)[-2:], [BACKWARD, information("Suspended")], "last events")
        expect_timeouts(machine, (10, 10), cached=USERS_OWN)
        step = come_back_at(machine, f"2026-01-{day + 1} 08:00")
        expect(events(step)[-1], information("Active"), "last event")
        expect_timeouts(machine, USERS_OWN)
    step = suspend_at(machine, "2026-02-02 18:00")
    expect([event for event in events(step) if event.kind == "error"], [], "errors a week later")


def a_clock_set_back_asleep_costs_that_nights_knowledge(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()
    machine.clock.set("2026-02-02 17:00")
    step = come_back_at(machine, "2026-02-02 17:30")
    expect(events(step)[-2:], [BACKWARD, information("Active")], "last events")
    expect([line for line in step.traces if "Duration" in line],
           2 * ["SuspendDuration = 1800 sec, HA = 600 sec\n"], "time asleep")
    expect_timeouts(machine, USERS_OWN)


def the_time_asleep_is_the_distance_in_either_direction(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()
    machine.clock.set("2026-02-02 17:00")
    step = hibernate_at(machine, "2026-02-02 17:50")
    expect(events(step)[-1], information("Spike_S3ToS4"), "state")


def a_night_in_which_an_hour_is_skipped_counts_as_full(machine):
    machine_that_knows_office_hours(machine)
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


def a_wake_across_the_skipped_hour_is_not_held_for_the_systems_own(machine):
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


def a_wake_across_the_hour_that_comes_twice_is_not_held_for_the_systems_own(machine):
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
