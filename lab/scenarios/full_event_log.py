"""A full event log is cleared for the next event."""

from machine.service_record import Entry, information
from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import come_back_at, events, expect_timeouts

LOG_FULL, ACCESS_DENIED = 1502, 5
CLEARED = Entry("event-log", "cleared")
REFUSED = Entry("failed", f"ReportEventW {LOG_FULL}")

SUSPEND = [
    information("2/2/2026 18:0:0 - Suspend"),
    information("Predicted Hibernate at: Mon Feb  2 18:10:00 2026\n"),
    information("Predicted Sleep restored at: Tue Feb  3 08:00:00 2026\n"),
    information("Predicted Hibernate next at: Tue Feb  3 18:10:00 2026\n"),
    information("Suspended"),
]


def _log(step):
    """All that was done to the event log."""
    kinds = ("information", "error", "success", "event-log", "failed")
    return [entry for entry in step.entries if entry.kind in kinds]


def _made(machine, names):
    return [machine.calls.made(name) for name in names]


def a_full_log_is_cleared_and_the_event_reported_again(machine):
    machine_that_knows_office_hours(machine)
    machine.calls.fail("ReportEventW", LOG_FULL, call=2, times=1)
    expect(_log(machine.suspend()), [SUSPEND[0], REFUSED, CLEARED, *SUSPEND[1:]], "event log")


def a_second_refusal_loses_the_event_only(machine):
    machine_that_knows_office_hours(machine)
    machine.calls.fail("ReportEventW", LOG_FULL, call=2, times=2)
    expect(_log(machine.suspend()), [SUSPEND[0], REFUSED, CLEARED, REFUSED, *SUSPEND[2:]],
           "event log")


def a_log_that_cannot_be_cleared_is_tried_again_all_the_same(machine):
    machine_that_knows_office_hours(machine)
    machine.calls.fail("ReportEventW", LOG_FULL, times=1)
    machine.calls.fail("ClearEventLogW", ACCESS_DENIED)
    expect(_log(machine.suspend()),
           [REFUSED, Entry("failed", f"ClearEventLogW {ACCESS_DENIED}"), *SUSPEND], "event log")


def a_night_without_an_event_log_is_like_any_other(machine):
    for call in ("RegisterEventSourceW", "ReportEventW"):
        machine.reset()
        machine_that_knows_office_hours(machine)
        machine.calls.fail(call, ACCESS_DENIED)
        step = machine.suspend()
        expect(events(step), [], f"events without {call}")
        expect_timeouts(machine, (10, 10), cached=(180, 60))
        expect(machine.driver.armed_minutes, 840, "minutes until the timer's wake")
        step = come_back_at(machine, "2026-02-03 08:00")
        expect(step.traces[-3:], ["State Machine new state: ", "Active", "\n"], "last traces")
        expect_timeouts(machine, (180, 60))


def each_event_has_a_source_of_its_own_which_is_released(machine):
    machine_that_knows_office_hours(machine)
    names = ["RegisterEventSourceW", "ReportEventW", "DeregisterEventSource"]
    before = _made(machine, names)
    machine.suspend()
    expect([now - then for now, then in zip(_made(machine, names), before)], [5, 5, 5], "calls")
    machine.clock.pass_time(hours=1, awake=False)

    before = _made(machine, names)
    machine.calls.fail("RegisterEventSourceW", ACCESS_DENIED)
    machine.resume()
    expect([now - then for now, then in zip(_made(machine, names), before)], [5, 0, 5],
           "calls without a source")
