"""A clock that is set back by hand, while the machine is in use or asleep."""

from machine.machine import HISTORY_FILE
from machine.service_record import error, information
from steps.data_files import asleep, awake, history
from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import come_back_at, events, expect_timeouts, hibernate_at, suspend_at

BACKWARD = error("state start is later than state end")
USERS_OWN = 180, 60


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
    expect(history(machine.data_file(HISTORY_FILE))[-5:],
           [asleep("2026-01-30 18:00"), awake("2026-02-02 08:00"), awake("2026-02-02 08:30"),
            asleep("2026-02-02 18:00"), awake("2026-02-03 08:00")], "history")


def the_service_copes_with_a_clock_set_back_by_a_week(machine):
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
