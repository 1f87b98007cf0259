"""What the service has learnt outlives it."""

from machine.machine import DATA_FILE, HISTORY_FILE
from machine.registry import DEFAULT
from machine.service_record import information
from steps.data_files import asleep, awake, history, history_file, learnt_data
from steps.expect import expect
from steps.living import machine_that_knows_office_hours
from steps.nights import come_back_at, events, hibernate_at, suspend_at, wake_by_timer_at

PREDICTIONS = [
    information("Predicted Hibernate at: Mon Feb  2 18:10:00 2026\n"),
    information("Predicted Sleep restored at: Tue Feb  3 08:00:00 2026\n"),
    information("Predicted Hibernate next at: Tue Feb  3 18:10:00 2026\n"),
]


def _in_use_since_monday(machine, **settings):
    machine.provision(**settings)
    machine.start_service()


def _stop_at(machine, time):
    machine.clock.pass_until(time)
    machine.stop_service()
    return history(machine.data_file(HISTORY_FILE))


def a_restart_predicts_the_same(machine):
    machine_that_knows_office_hours(machine)
    machine.restart_service()
    expect(events(machine.suspend())[1:4], PREDICTIONS, "predictions")


def a_killed_service_knows_what_was_saved_last(machine):
    machine_that_knows_office_hours(machine)
    machine.notify_idle()
    machine.service.kill()
    machine.start_service()
    expect(events(machine.suspend())[1:4], PREDICTIONS, "predictions")


def what_is_learnt_is_there_again_byte_for_byte(machine):
    machine_that_knows_office_hours(machine)
    machine.stop_service()
    saved = machine.data_file(DATA_FILE)
    expect(learnt_data(saved).time, (2026, 2, 2, 8, 0, 0), "time of the last event")
    machine.clock.pass_until("2026-02-02 18:30")
    machine.start_service()
    machine.clock.pass_until("2026-02-02 18:45")
    machine.stop_service()
    expect(machine.data_file(DATA_FILE) == saved, True, "the data file is as it was")


def the_history_goes_on_where_it_ended(machine):
    _in_use_since_monday(machine)
    suspend_at(machine, "2026-01-05 18:00:01")
    come_back_at(machine, "2026-01-06 08:00")
    first = [awake("2026-01-05 08:00"), asleep("2026-01-05 18:00:01"), awake("2026-01-06 08:00"),
             asleep("2026-01-06 12:00")]
    expect(_stop_at(machine, "2026-01-06 12:00"), first, "history of the first run")
    machine.clock.pass_until("2026-01-06 13:00")
    machine.start_service()
    expect(_stop_at(machine, "2026-01-06 14:00"),
           [*first, awake("2026-01-06 13:00"), asleep("2026-01-06 14:00")], "history of both")


def what_the_machine_does_by_itself_is_no_history(machine):
    _in_use_since_monday(machine)
    suspend_at(machine, "2026-01-05 18:00")
    hibernate_at(machine, "2026-01-05 21:00")
    machine.suspend()
    wake_by_timer_at(machine, "2026-01-06 07:00")
    suspend_at(machine, "2026-01-06 07:01")
    come_back_at(machine, "2026-01-06 08:00")
    expect(_stop_at(machine, "2026-01-06 12:00"),
           [awake("2026-01-05 08:00"), asleep("2026-01-05 18:00"), awake("2026-01-06 08:00"),
            asleep("2026-01-06 12:00")], "history")


def what_was_not_saved_is_lost_with_the_process(machine):
    _in_use_since_monday(machine)
    machine.service.kill()
    machine.clock.pass_until("2026-01-06 08:00", awake=False)
    machine.start_service()
    expect(_stop_at(machine, "2026-01-06 12:00"),
           [awake("2026-01-06 08:00"), asleep("2026-01-06 12:00")], "history")


def entries_older_than_the_limit_are_dropped(machine):
    """The limit is counted by universal time, which is five hours ahead of the wall clock."""
    _in_use_since_monday(machine, HistoryLimit=1)
    machine.write_data_file(HISTORY_FILE, history_file([
        awake("2026-01-04 10:00"), asleep("2026-01-04 16:59:59"), awake("2026-01-04 17:00:00")]))
    expect(_stop_at(machine, "2026-01-05 12:00"),
           [awake("2026-01-04 17:00:00"), awake("2026-01-05 08:00"), asleep("2026-01-05 12:00")],
           "history")


def without_a_limit_it_is_sixty_days(machine):
    _in_use_since_monday(machine)
    machine.registry.delete("HistoryLimit", DEFAULT)
    machine.write_data_file(HISTORY_FILE, history_file([
        asleep("2025-11-06 16:59:59"), awake("2025-11-06 17:00:00")]))
    expect(_stop_at(machine, "2026-01-05 12:00"),
           [awake("2025-11-06 17:00:00"), awake("2026-01-05 08:00"), asleep("2026-01-05 12:00")],
           "history")


def what_is_new_is_kept_whatever_the_limit(machine):
    _in_use_since_monday(machine, HistoryLimit=0)
    machine.write_data_file(HISTORY_FILE, history_file([asleep("2026-01-04 18:00")]))
    suspend_at(machine, "2026-01-05 18:00")
    come_back_at(machine, "2026-01-20 08:00")
    expect(_stop_at(machine, "2026-01-20 12:00"),
           [awake("2026-01-05 08:00"), asleep("2026-01-05 18:00"), awake("2026-01-20 08:00"),
            asleep("2026-01-20 12:00")], "history")


def an_entry_that_is_not_later_than_the_last_is_dropped(machine):
    _in_use_since_monday(machine)
    machine.write_data_file(HISTORY_FILE, history_file([
        awake("2026-01-05 07:00"), asleep("2026-01-05 08:00"), awake("2026-01-05 07:30")]))
    expect(_stop_at(machine, "2026-01-05 12:00"),
           [awake("2026-01-05 07:00"), asleep("2026-01-05 08:00"), asleep("2026-01-05 12:00")],
           "history")
