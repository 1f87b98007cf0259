"""What is learnt is saved once a day, when the system is idle."""

import uuid

from machine.machine import DATA_FILE, HISTORY_FILE
from machine.service_record import information
from steps.data_files import Slot, learnt_data, wall_clock_seconds
from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import come_back_at, events, stamped, suspend_at

# The controller starts at eight.
A_DAY_LATER = "2026-01-06 08:00:00"
A_SECOND_MORE = "2026-01-06 08:00:01"

USED, NOT_USED = 1, 0


def _in_use_since_monday(machine):
    machine.provision()
    machine.start_service()


def _idle_at(machine, time):
    machine.clock.pass_until(time)
    return machine.notify_idle()


def _expect_saved(machine, step):
    expect(events(step), [information(stamped(machine, "Saving"))], "events")
    expect(step.traces[3:], ["AH_SavePredictionData\n"], "traces")


def _expect_nothing(step):
    expect(step.entries[:-1], [], "what was done")
    expect(step.entries[-1].kind, "status", "the last thing done")


def nothing_is_saved_within_a_day(machine):
    _in_use_since_monday(machine)
    for time in ("2026-01-05 08:00", "2026-01-05 23:59:59", A_DAY_LATER):
        _expect_nothing(_idle_at(machine, time))
    expect(machine.data_file(DATA_FILE), None, "data file")


def a_day_and_a_second_later_it_is_saved(machine):
    _in_use_since_monday(machine)
    _expect_saved(machine, _idle_at(machine, A_SECOND_MORE))
    expect(len(machine.data_file(DATA_FILE)), 64 + 7 * 144 * 24, "size of the data file")
    expect(machine.data_file(HISTORY_FILE), None, "history file")


def the_next_save_is_counted_from_the_last(machine):
    _in_use_since_monday(machine)
    _idle_at(machine, "2026-01-06 20:00")
    _expect_nothing(_idle_at(machine, "2026-01-07 08:00:02"))
    _expect_nothing(_idle_at(machine, "2026-01-07 20:00:00"))
    _expect_saved(machine, _idle_at(machine, "2026-01-07 20:00:01"))


def other_notifications_save_nothing(machine):
    _in_use_since_monday(machine)
    machine.clock.pass_until("2026-01-09 08:00")
    _expect_nothing(machine.notify_idle(uuid.UUID("02731015-4510-4526-99e6-e5a17ebd1aea")))
    _expect_nothing(machine.power_event(0x8013))
    _expect_saved(machine, machine.notify_idle())


def a_clock_set_back_by_more_than_a_day_saves_as_well(machine):
    _in_use_since_monday(machine)
    machine.clock.set("2026-01-04 08:00:00")
    _expect_nothing(machine.notify_idle())
    machine.clock.set("2026-01-04 07:59:59")
    _expect_saved(machine, machine.notify_idle())
    _expect_nothing(machine.notify_idle())


def the_file_holds_what_was_seen_until_then(machine):
    _in_use_since_monday(machine)
    suspend_at(machine, "2026-01-05 18:05")
    come_back_at(machine, "2026-01-06 07:55")
    _idle_at(machine, A_SECOND_MORE)
    data = learnt_data(machine.data_file(DATA_FILE))
    expect(data[:5], (0, 7, 1440, 10, 0), "version, shape and last state")
    expect(data.time, (2026, 1, 6, 7, 55, 0), "time of the last event")
    morning = wall_clock_seconds("2026-01-05 08:00")
    expect(data.between("2026-01-05 08:00", "2026-01-05 18:10"),
           [Slot(last=USED, marked=morning + i * 600) for i in range(61)], "slots of the day")
    expect(data.between("2026-01-05 18:10", "2026-01-06 07:50"), [Slot(last=NOT_USED)] * 82,
           "slots of the night")
    expect(data.between("2026-01-06 07:50", "2026-01-12 08:00"), [Slot()] * (7 * 144 - 143),
           "all others")


def a_save_without_change_writes_the_same_again(machine):
    _in_use_since_monday(machine)
    suspend_at(machine, "2026-01-05 18:05")
    come_back_at(machine, "2026-01-06 07:55")
    _idle_at(machine, A_SECOND_MORE)
    saved = machine.data_file(DATA_FILE)
    _expect_saved(machine, _idle_at(machine, "2026-01-07 08:00:02"))
    expect(machine.data_file(DATA_FILE) == saved, True, "the file is as it was")


def a_save_leaves_the_predictions_as_they_were(machine):
    machine_that_knows_office_hours(machine)
    _expect_saved(machine, machine.notify_idle())
    expect(events(machine.suspend())[1:4], [
        information("Predicted Hibernate at: Mon Feb  2 18:10:00 2026\n"),
        information("Predicted Sleep restored at: Tue Feb  3 08:00:00 2026\n"),
        information("Predicted Hibernate next at: Tue Feb  3 18:10:00 2026\n"),
    ], "predictions")


def what_cannot_be_written_is_not_forgotten(machine):
    """A save makes a new predictor, which goes on with what the file does not tell."""
    machine_that_knows_office_hours(machine)
    # Neither beside the file nor in its place.
    machine.calls.fail("MoveFileExW", 5, times=1)
    machine.calls.fail("_wfopen", 1, times=1)
    _expect_saved(machine, machine.notify_idle())
    expect(machine.data_file(DATA_FILE), None, "data file")
    expect(events(machine.suspend())[1],
           information("Predicted Hibernate at: Mon Feb  2 18:10:00 2026\n"), "prediction")
