"""Suspends and resumes that Windows tells of in another order than described, twice or not at all.
4 is a suspend, 18 the resume that the service goes by, 7 the one that tells of a user."""

from machine.machine import HISTORY_FILE, RESUME_BY_USER
from machine.service_control import RUNNING, sent
from machine.service_record import error, information, success
from steps.data_files import asleep, awake, history
from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import (come_back_at, events, expect_timeouts, stamped, suspend_at,
                          wake_by_timer_at)
from steps.states import undefined_event

USERS_OWN = 180, 60
PREDICTED = 10, 10
NEXT_PREDICTED = 610, 610

NOT_SUPPORTED = 50
REFUSED_BY_POLICY = 1260
NOT_SET = [error(f"Failed to set passed HA value for {source}") for source in ("AC", "DC")]
NOT_GIVEN_BACK = [error(f"Failed to set cached HA value for {source}") for source in ("AC", "DC")]
FAILED_TO_SLEEP = success("Failed to move the system to sleep")


def _tell_of_user(machine, time):
    machine.clock.pass_until(time, awake=False)
    return machine.power_event(RESUME_BY_USER)


def _expect_ignored(step):
    expect(step.entries, [sent(RUNNING)], "what was done")


def _expect_undefined(machine, step, state, event):
    expect(events(step), undefined_event(state, stamped(machine, event)), f"events of {event}")


def _expect_resumed(step):
    expect(events(step)[-1], information("Active"), "state after the resume")


def _expect_learnt(machine, *entries):
    """Stops the service, and expects these entries at the end of the history, after those of the
    office's last morning."""
    machine.stop_service()
    expect(history(machine.data_file(HISTORY_FILE))[-1 - len(entries):],
           [awake("2026-02-02 08:00"), *entries], "end of the history")


def a_suspend_that_comes_twice_counts_once(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()
    step = suspend_at(machine, "2026-02-02 18:01")
    _expect_undefined(machine, step, "Suspended", "Suspend")
    expect_timeouts(machine, PREDICTED, cached=USERS_OWN)
    _expect_resumed(come_back_at(machine, "2026-02-03 07:00"))
    expect_timeouts(machine, USERS_OWN)
    machine.clock.pass_until("2026-02-03 17:00")
    _expect_learnt(machine, asleep("2026-02-02 18:00"), awake("2026-02-03 07:00"),
                   asleep("2026-02-03 17:00"))


def a_hibernation_that_nothing_tells_of_ends_with_the_timers_wake(machine):
    # Windows 10 and later tell of no resume that only leads into hibernation.
    machine_that_knows_office_hours(machine)
    machine.suspend()
    suspend_at(machine, "2026-02-02 18:10")
    step = wake_by_timer_at(machine, "2026-02-03 08:00")
    expect(events(step)[-1], information("Spike_S4ToS3"), "state after the timer's wake")
    expect_timeouts(machine, NEXT_PREDICTED, cached=USERS_OWN)
    machine.suspend()
    _expect_resumed(come_back_at(machine, "2026-02-03 08:25"))
    expect_timeouts(machine, USERS_OWN)
    machine.clock.pass_until("2026-02-03 17:00")
    _expect_learnt(machine, asleep("2026-02-02 18:00"), awake("2026-02-03 08:25"),
                   asleep("2026-02-03 17:00"))


def a_resume_that_is_told_only_as_a_users_is_missed_until_the_next_resume(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()
    _expect_ignored(_tell_of_user(machine, "2026-02-03 07:00"))
    expect_timeouts(machine, PREDICTED, cached=USERS_OWN)
    _expect_undefined(machine, suspend_at(machine, "2026-02-03 18:00"), "Suspended", "Suspend")
    _expect_resumed(come_back_at(machine, "2026-02-04 07:00"))
    expect_timeouts(machine, USERS_OWN)
    machine.clock.pass_until("2026-02-04 17:00")
    _expect_learnt(machine, asleep("2026-02-02 18:00"), awake("2026-02-04 07:00"),
                   asleep("2026-02-04 17:00"))


def after_a_resume_that_was_missed_a_restart_gives_the_users_timeouts_back(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()
    _tell_of_user(machine, "2026-02-03 07:00")
    machine.restart_service()
    expect_timeouts(machine, USERS_OWN)


def a_users_resume_that_is_told_first_changes_nothing(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()
    _expect_ignored(_tell_of_user(machine, "2026-02-03 07:00"))
    _expect_resumed(come_back_at(machine, "2026-02-03 07:00:01"))
    expect_timeouts(machine, USERS_OWN)
    machine.clock.pass_until("2026-02-03 17:00")
    _expect_learnt(machine, asleep("2026-02-02 18:00"), awake("2026-02-03 07:00:01"),
                   asleep("2026-02-03 17:00"))


def resumes_without_a_suspend_before_them_change_nothing(machine):
    machine_that_knows_office_hours(machine)
    _expect_ignored(_tell_of_user(machine, "2026-02-02 18:30"))
    for time in "2026-02-02 18:30:01", "2026-02-02 19:00":
        _expect_undefined(machine, come_back_at(machine, time), "Active", "Activating")
        expect_timeouts(machine, USERS_OWN)
    machine.clock.pass_until("2026-02-02 20:00")
    _expect_learnt(machine, asleep("2026-02-02 20:00"))


def _woken_in_vain(machine):
    """The timer has woken the machine, which then refused to go back to sleep."""
    machine_that_knows_office_hours(machine)
    machine.suspend()
    machine.calls.fail("SetSuspendState", NOT_SUPPORTED, times=1)
    step = wake_by_timer_at(machine, "2026-02-03 08:00")
    expect(sorted(events(step)), sorted([
        information("3/2/2026 8:0:0 - Activating"), information("GetPreviousSleepStatus 5\n"),
        information("Spike_S4ToS3"), FAILED_TO_SLEEP]), "events of the timer's wake")
    expect_timeouts(machine, NEXT_PREDICTED, cached=USERS_OWN)


def a_sleep_that_is_refused_is_over_with_the_next_resume(machine):
    _woken_in_vain(machine)
    _expect_resumed(come_back_at(machine, "2026-02-03 08:25"))
    expect_timeouts(machine, USERS_OWN)
    machine.clock.pass_until("2026-02-03 17:00")
    _expect_learnt(machine, asleep("2026-02-02 18:00"), awake("2026-02-03 08:25"),
                   asleep("2026-02-03 17:00"))


def use_after_a_sleep_that_was_refused_is_missed_until_the_next_resume(machine):
    _woken_in_vain(machine)
    _expect_ignored(_tell_of_user(machine, "2026-02-03 08:25"))
    suspend_at(machine, "2026-02-03 18:00")
    expect_timeouts(machine, NEXT_PREDICTED, cached=USERS_OWN)
    _expect_resumed(come_back_at(machine, "2026-02-04 07:00"))
    expect_timeouts(machine, USERS_OWN)
    machine.clock.pass_until("2026-02-04 17:00")
    _expect_learnt(machine, asleep("2026-02-02 18:00"), awake("2026-02-04 07:00"),
                   asleep("2026-02-04 17:00"))


def under_a_policy_the_timeouts_stay_as_they_are(machine):
    machine_that_knows_office_hours(machine)
    for source in "AC", "DC":
        machine.calls.fail(f"PowerWrite{source}ValueIndex", REFUSED_BY_POLICY)
    step = suspend_at(machine, "2026-02-02 18:00")
    expect([event for event in events(step) if event.kind == "error"], NOT_SET, "errors")
    expect(events(step)[-1], information("Suspended"), "state after the suspend")
    expect_timeouts(machine, USERS_OWN, cached=USERS_OWN)
    step = come_back_at(machine, "2026-02-03 07:00")
    expect([event for event in events(step) if event.kind == "error"], NOT_GIVEN_BACK, "errors")
    _expect_resumed(step)
    expect_timeouts(machine, USERS_OWN)
    machine.clock.pass_until("2026-02-03 17:00")
    _expect_learnt(machine, asleep("2026-02-02 18:00"), awake("2026-02-03 07:00"),
                   asleep("2026-02-03 17:00"))


def a_policy_that_is_made_while_the_machine_sleeps_keeps_the_predicted_timeouts(machine):
    machine_that_knows_office_hours(machine)
    machine.suspend()
    for source in "AC", "DC":
        machine.calls.fail(f"PowerWrite{source}ValueIndex", REFUSED_BY_POLICY)
    step = come_back_at(machine, "2026-02-03 07:00")
    expect([event for event in events(step) if event.kind == "error"], NOT_GIVEN_BACK, "errors")
    _expect_resumed(step)
    expect_timeouts(machine, PREDICTED)
