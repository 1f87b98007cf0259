"""A machine whose time zone changes while the service runs. What the service goes by is always the
clock on the wall. Times are those of the machine's zone of the moment."""

from datetime import datetime
from zoneinfo import ZoneInfo

from machine.machine import HISTORY_FILE
from machine.service_record import information
from steps.data_files import asleep, awake, history
from steps.expect import expect, expect_true
from steps.living import machine_that_knows_office_hours
from steps.nights import come_back_at, events, expect_timeouts, suspend_at

USERS_OWN = 180, 60
HOME, CALIFORNIA, JAPAN = "America/New_York", "America/Los_Angeles", "Asia/Tokyo"


def _end_of_history(machine, entries):
    machine.stop_service()
    return history(machine.data_file(HISTORY_FILE))[-entries:]


def after_a_journey_asleep_the_resume_has_the_new_time(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()
    machine.clock.zone = CALIFORNIA
    step = come_back_at(machine, "2026-02-03 07:00")
    expect((events(step)[0], events(step)[-1]),
           (information("3/2/2026 7:0:0 - Activating"), information("Active")),
           "first and last event of the resume")
    expect_timeouts(machine, USERS_OWN)
    step = suspend_at(machine, "2026-02-03 18:00")
    expect(events(step)[:3], [
        information("3/2/2026 18:0:0 - Suspend"),
        information("Predicted Hibernate at: Tue Feb  3 18:10:00 2026\n"),
        information("Predicted Sleep restored at: Wed Feb  4 08:00:00 2026\n"),
    ], "events of the suspend")
    expect(machine.driver.armed_minutes, 14 * 60, "minutes until the timer's wake")
    come_back_at(machine, "2026-02-04 08:00")
    expect(_end_of_history(machine, 4), [
        asleep("2026-02-02 18:00"), awake("2026-02-03 07:00"), asleep("2026-02-03 18:00"),
        awake("2026-02-04 08:00")], "end of the history")


def after_a_journey_in_use_the_suspend_has_the_new_time(machine):
    machine_that_knows_office_hours(machine)
    machine.clock.zone = JAPAN  # 8:00 on the next day
    step = suspend_at(machine, "2026-02-03 18:00")
    expect(events(step)[:2], [
        information("3/2/2026 18:0:0 - Suspend"),
        information("Predicted Hibernate at: Tue Feb  3 18:10:00 2026\n"),
    ], "events of the suspend")
    step = come_back_at(machine, "2026-02-04 08:00")
    expect(events(step)[0], information("4/2/2026 8:0:0 - Activating"), "first event of the resume")
    expect(_end_of_history(machine, 3), [
        awake("2026-02-02 08:00"), asleep("2026-02-03 18:00"), awake("2026-02-04 08:00"),
    ], "end of the history")


def a_zone_in_the_environment_has_no_effect(machine):
    # A program in a console is given the variable TZ that Wine was started with.
    machine.provision()
    machine.clock.zone = JAPAN
    machine.clock.set("2026-02-03 18:00")
    console, started = machine.start_console()
    expect([event for event in started.events if event.kind == "information"],
           [information("3/2/2026 18:0:0 - Activating"), information("Active")], "events")
    machine.press_ctrl_c(console)


def the_client_has_the_systems_zone_too(machine):
    # Its clock is the computer's; its zone is where Wine was started.
    machine_that_knows_office_hours(machine)
    machine.restart_service()
    times = [datetime.now(ZoneInfo(HOME))]
    answer = machine.client.run("explain")
    times.append(datetime.now(ZoneInfo(HOME)))
    expect(answer.exit_code, 0, "exit code of explain")
    at = answer.output.splitlines()[1]
    expect_true(at in {f"A suspend at {time:%a %Y-%m-%d %H:%M}" for time in times},
                f"{at!r} is not at {times}")


def summer_time_begins_and_ends_while_the_machine_of_a_traveller_sleeps(machine):
    machine.provision()
    machine.schemes.hibernate_after = USERS_OWN
    machine.clock.set("2026-03-07 08:00")
    machine.start_service()
    machine.clock.zone = CALIFORNIA
    for evening, morning, stamp, hours in (
            ("2026-03-07 22:00", "2026-03-08 07:00", "8/3/2026 7:0:0", 8),
            ("2026-10-31 22:00", "2026-11-01 07:00", "1/11/2026 7:0:0", 10)):
        suspend_at(machine, evening)
        machine.clock.pass_time(hours=hours, awake=False)
        step = come_back_at(machine, morning)
        expect(events(step)[0], information(f"{stamp} - Activating"), "first event of the resume")
        expect([line for line in step.traces if "Duration" in line],
               2 * ["SuspendDuration = 32400 sec, HA = 10800 sec\n"], "time asleep on the wall")
        expect_timeouts(machine, USERS_OWN)
