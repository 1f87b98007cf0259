"""What happens to the user's timeouts when one of the power manager's functions fails."""

from machine.service_record import error, information
from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import come_back_at, events, expect_timeouts, suspend_at, wake_by_timer_at

USERS_OWN = 180, 60
ACCESS_DENIED = 5


def _texts(step, *kinds):
    return [entry.text for entry in events(step) if entry.kind in kinds]


def _suspend_with(machine, function, call=1, times=1):
    """A suspend during which some calls of a function fail; the errors that it reports."""
    machine_that_knows_office_hours(machine)
    machine.calls.fail(function, ACCESS_DENIED, call, times)
    step = suspend_at(machine, "2026-02-02 18:00")
    expect(events(step)[-1], information("Suspended"), "state")
    expect(machine.driver.armed_minutes, 840, "minutes until the timer's wake")
    machine.calls.succeed(function)
    return _texts(step, "error")


def a_timeout_that_cannot_be_read_is_not_put_aside(machine):
    expect(_suspend_with(machine, "PowerReadACValueIndex"), [], "errors")
    expect_timeouts(machine, (10, 10), cached=(None, 60))
    come_back_at(machine, "2026-02-03 08:00")
    expect_timeouts(machine, (10, 60))


def what_is_put_aside_already_stays_when_it_cannot_be_read(machine):
    machine_that_knows_office_hours(machine)
    machine.registry.write("HA_AC", 90)
    machine.calls.fail("PowerReadACValueIndex", ACCESS_DENIED)
    machine.suspend()
    expect_timeouts(machine, (10, 10), cached=(90, 60))


def a_timeout_that_cannot_be_written_is_reported_and_the_other_is_set(machine):
    expect(_suspend_with(machine, "PowerWriteACValueIndex"),
           ["Failed to set passed HA value for AC"], "errors")
    expect_timeouts(machine, (180, 10), cached=USERS_OWN)
    come_back_at(machine, "2026-02-03 08:00")
    expect_timeouts(machine, USERS_OWN)


def a_timeout_for_battery_that_cannot_be_written_is_reported_and_the_other_is_set(machine):
    expect(_suspend_with(machine, "PowerWriteDCValueIndex"),
           ["Failed to set passed HA value for DC"], "errors")
    expect_timeouts(machine, (10, 60), cached=USERS_OWN)


def without_an_active_scheme_nothing_is_set(machine):
    expect(_suspend_with(machine, "PowerGetActiveScheme", times=4),
           ["Failed to set passed HA value for AC", "Failed to set passed HA value for DC"],
           "errors")
    expect_timeouts(machine, USERS_OWN)


def a_scheme_that_cannot_be_applied_is_not_reported(machine):
    expect(_suspend_with(machine, "PowerSetActiveScheme", times=2), [], "errors")
    expect_timeouts(machine, (10, 10), cached=USERS_OWN)


def _resume_with(machine, function, call=1):
    """A real resume during which one call of a function fails; the errors that it reports."""
    machine_that_knows_office_hours(machine)
    machine.suspend()
    machine.calls.fail(function, ACCESS_DENIED, call, times=1)
    step = come_back_at(machine, "2026-02-03 08:00")
    expect(events(step)[-1], information("Active"), "state")
    return _texts(step, "error")


def a_timeout_that_cannot_be_given_back_is_reported_and_lost(machine):
    expect(_resume_with(machine, "PowerWriteACValueIndex"),
           ["Failed to set cached HA value for AC"], "errors")
    expect_timeouts(machine, (10, 60))


def a_timeout_for_battery_that_cannot_be_given_back_is_reported_and_lost(machine):
    expect(_resume_with(machine, "PowerWriteDCValueIndex"),
           ["Failed to set cached HA value for DC"], "errors")
    expect_timeouts(machine, (180, 10))


def a_resume_without_an_active_scheme_gives_nothing_back(machine):
    # The first two calls are the guards'.
    expect(_resume_with(machine, "PowerGetActiveScheme", call=3),
           ["Failed to set cached HA value for AC"], "errors")
    expect_timeouts(machine, (10, 60))


def the_timer_wakes_timeout_that_cannot_be_written_is_reported(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()
    machine.calls.fail("PowerGetActiveScheme", ACCESS_DENIED)
    step = wake_by_timer_at(machine, "2026-02-03 08:00")
    expect([entry for entry in events(step) if entry.kind == "error"],
           [error("Failed to set passed HA value for AC"),
            error("Failed to set passed HA value for DC")], "errors")
    expect(step.of("suspend"), ["SetSuspendState 0 0 0"], "back to sleep")
    expect_timeouts(machine, (10, 10), cached=USERS_OWN)
