"""A history file that is not what the service has left there."""

import random
import struct

from machine.machine import DATA_FILE, HISTORY_FILE
from machine.service_control import CONTINUE, STOP
from machine.service_record import information
from steps.data_files import asleep, awake, history, history_file, wall_clock_seconds
from steps.expect import expect, expect_true
from steps.nights import events

RECENT = [awake("2026-01-04 08:00"), asleep("2026-01-04 18:00")]
NEW = [awake("2026-01-05 08:00"), asleep("2026-01-05 12:00")]


def _history_after(machine, data):
    """The history file after a morning in which the service found other data there."""
    machine.provision()
    machine.start_service()
    machine.write_data_file(HISTORY_FILE, data)
    machine.clock.pass_until("2026-01-05 12:00")
    step = machine.stop_service()
    expect(events(step)[-1], information("Uninitialized"), "last event of the stop")
    return history(machine.data_file(HISTORY_FILE))


def an_empty_history_is_begun_anew(machine):
    expect(_history_after(machine, b""), NEW, "history")


def a_tail_that_has_a_time_is_an_entry_with_the_rest_of_the_one_before(machine):
    whole = awake("2026-01-04 20:00")
    for size, found in ((8, whole._replace(asleep=1)), (9, whole)):
        expect(_history_after(machine, history_file(RECENT) + history_file([whole])[:size]),
               [*RECENT, found, *NEW], f"history after a tail of {size} bytes")
        machine.reset()


def a_shorter_tail_changes_the_time_of_the_one_before(machine):
    # The lowest bytes of a time are parts of seconds.
    found = _history_after(machine, history_file(RECENT) + b"\0\0\x40")
    later = struct.unpack("<d", b"\0\0\x40" + struct.pack("<d", RECENT[-1].time)[3:])[0]
    expect(found, [*RECENT, RECENT[-1]._replace(time=later), *NEW], "history")


def junk_in_the_history_is_dropped_where_it_is_too_old_or_no_time(machine):
    no_time = struct.pack("<dQ", float("nan"), 0)
    too_old = struct.pack("<dQ", -1e300, 5) + bytes(16)
    expect(_history_after(machine, no_time + history_file(RECENT[:1]) + no_time + too_old +
                          history_file(RECENT[1:])),
           [*RECENT, *NEW], "history")


def an_entry_of_the_future_keeps_out_all_before_it(machine):
    future = awake("2026-03-01 08:00")
    expect(_history_after(machine, history_file([*RECENT, future])), [*RECENT, future], "history")
    expect(future.time > wall_clock_seconds(machine.clock.now), True, "it is in the future")


def the_service_copes_with_a_history_of_random_bytes(machine):
    found = _history_after(machine, random.Random(7).randbytes(4096 + 5))
    times = [entry.time for entry in found]
    expect(times, sorted(set(times)), "times, which only increase")
    machine.clock.pass_until("2026-01-05 13:00")
    expect(events(machine.start_service())[-1], information("Active"), "state after a new start")


def a_history_that_cannot_be_written_loses_nothing(machine):
    machine.provision()
    machine.write_data_file(HISTORY_FILE, history_file(RECENT))
    machine.start_service()
    machine.clock.pass_until("2026-01-05 12:00")
    # Neither beside the file nor, after it was read, in its place.
    machine.calls.fail("MoveFileExW", 5, times=1)
    machine.calls.fail("_wfopen", 1, call=2, times=1)
    machine.calls.fail("RpcMgmtStopServerListening", 1, times=1)  # this stop does not end it
    machine.deliver(STOP)
    expect(history(machine.data_file(HISTORY_FILE)), RECENT, "history")
    expect_true(machine.data_file(DATA_FILE) is not None, "the data file was not written")

    machine.clock.pass_until("2026-01-05 13:00")
    machine.resume()
    machine.deliver(CONTINUE)  # it would not be asked to stop while it is stopping
    machine.clock.pass_until("2026-01-05 14:00")
    machine.stop_service()
    expect(history(machine.data_file(HISTORY_FILE)),
           [*RECENT, *NEW, awake("2026-01-05 13:00"), asleep("2026-01-05 14:00")],
           "history saved later")


def a_history_that_cannot_be_read_is_not_replaced(machine):
    machine.provision()
    machine.write_data_file(HISTORY_FILE, history_file(RECENT))
    machine.start_service()
    machine.clock.pass_until("2026-01-05 12:00")
    machine.calls.fail("_wfopen", 32, times=1)  # somebody has it open
    machine.calls.fail("RpcMgmtStopServerListening", 1, times=1)
    machine.deliver(STOP)
    expect(history(machine.data_file(HISTORY_FILE)), RECENT, "history")
    machine.resume()
    machine.deliver(CONTINUE)
    machine.clock.pass_until("2026-01-05 14:00")
    machine.stop_service()
    expect(history(machine.data_file(HISTORY_FILE))[:len(RECENT + NEW)], [*RECENT, *NEW],
           "history saved later")


def a_folder_in_place_of_the_history_is_no_history(machine):
    machine.provision()
    machine.data_folder.joinpath(HISTORY_FILE).mkdir(parents=True)
    machine.start_service()
    step = machine.stop_service()
    expect(events(step), [information("5/1/2026 8:0:0 - Uninitializing"),
                          information("Uninitialized")], "events")
    expect_true(machine.data_file(DATA_FILE) is not None, "the data file was not written")
