"""What "DebugLogging" adds to the event log: the reasons for what a resume was taken for."""

from machine.service_record import information
from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import come_back_at, events, hibernate_at, wake_by_timer_at


def _asked_for_timer(expired, status, answer, read=1):
    return [information(f"SleepType 1 bExpired {expired} drvResult {read}\n"),
            information(f"GetPreviousSleepStatus {status}\n"),
            information(f"GoingToS3 {answer}")]


def _asked_for_hibernation(status, answer, asleep, timeout):
    return [information(f"GetPreviousSleepStatus {status}\n"),
            information(f"GoingToS4 {answer}\n"),
            information(f"SuspendDuration = {asleep} sec, HA = {timeout} sec\n")]


def _asleep(machine):
    machine_that_knows_office_hours(machine, DebugLogging=1)
    machine.suspend()


def a_suspend_has_nothing_to_add(machine):
    machine_that_knows_office_hours(machine, DebugLogging=1)
    expect(events(machine.suspend()), [
        information("2/2/2026 18:0:0 - Suspend"),
        information("Predicted Hibernate at: Mon Feb  2 18:10:00 2026\n"),
        information("Predicted Sleep restored at: Tue Feb  3 08:00:00 2026\n"),
        information("Predicted Hibernate next at: Tue Feb  3 18:10:00 2026\n"),
        information("Suspended"),
    ], "events")


def a_wake_into_hibernation_is_explained(machine):
    _asleep(machine)
    expect(events(hibernate_at(machine, "2026-02-02 18:10:30")), [
        information("2/2/2026 18:10:30 - Activating"),
        *_asked_for_timer(expired=0, status=4, answer=0),
        *_asked_for_hibernation(status=4, answer=1, asleep=630, timeout=600),
        information("Spike_S3ToS4"),
    ], "events")
    expect(events(machine.suspend()),
           [information("2/2/2026 18:10:30 - Suspend"), information("Suspended")],
           "events of the suspend that follows")


def a_wake_by_the_timer_is_explained(machine):
    _asleep(machine)
    expect(events(wake_by_timer_at(machine, "2026-02-03 08:00")), [
        information("3/2/2026 8:0:0 - Activating"),
        *_asked_for_timer(expired=1, status=5, answer=1),
        information("Spike_S4ToS3"),
    ], "events")


def a_real_resume_is_explained_twice(machine):
    _asleep(machine)
    reasons = [*_asked_for_timer(expired=0, status=1, answer=0),
               *_asked_for_hibernation(status=1, answer=0, asleep=600, timeout=600)]
    expect(events(come_back_at(machine, "2026-02-02 18:10")), [
        information("2/2/2026 18:10:0 - Activating"), *reasons, *reasons, information("Active"),
    ], "events")


def an_expired_timer_that_did_not_end_a_hibernation_is_explained(machine):
    _asleep(machine)
    machine.driver.expire_timer()
    reasons = [*_asked_for_timer(expired=1, status=1, answer=0),
               *_asked_for_hibernation(status=1, answer=0, asleep=50400, timeout=600)]
    expect(events(come_back_at(machine, "2026-02-03 08:00")), [
        information("3/2/2026 8:0:0 - Activating"), *reasons, *reasons, information("Active"),
    ], "events")


def without_a_driver_the_reasons_say_so(machine):
    machine.driver.hide()
    _asleep(machine)
    reasons = [*_asked_for_timer(expired=0, status=0, answer=0, read=0),
               *_asked_for_hibernation(status=0, answer=0, asleep=300, timeout=600)]
    expect(events(come_back_at(machine, "2026-02-02 18:05")), [
        information("2/2/2026 18:5:0 - Activating"), *reasons, *reasons, information("Active"),
    ], "events")


def any_other_value_than_one_leaves_it_off(machine):
    machine_that_knows_office_hours(machine, DebugLogging=2)
    machine.suspend()
    expect(len(events(hibernate_at(machine, "2026-02-02 18:10"))), 3, "number of events")
