"""Files that are not what the service has left there."""

import random
import struct

from data_files import asleep, awake, history, history_file, learnt_data, wall_clock_seconds
from expect import expect, expect_true
from living import machine_that_knows_office_hours
from machine import DATA_FILE, HISTORY_FILE
from nights import come_back_at, events, expect_timeouts, suspend_at
from record import information
from service import RUNNING

HEADER_SIZE = 64
VERSION, DAYS, MINUTES_IN_DAY, MINUTES_PER_SLOT, SLOTS = 0, 4, 8, 12, 56

PREDICTED = "Predicted Hibernate at: Mon Feb  2 18:10:30 2026\n"
NOT_PREDICTED = "Predicted Hibernate at: no prediction"


def _learnt(machine):
    """The data file of a service that has learnt and is stopped."""
    machine_that_knows_office_hours(machine)
    machine.stop_service()
    return machine.data_file(DATA_FILE)


def _with_word(data, place, word):
    return data[:place] + struct.pack("<I", word) + data[place + 4:]


def _prediction(machine):
    """What a service that starts now predicts half a minute later. It is stopped asleep, so that it
    saves nothing."""
    machine.start_service()
    machine.clock.pass_time(seconds=30)
    prediction = events(machine.suspend())[1].text
    machine.stop_service()
    return prediction


def _random_bytes(count):
    return random.Random(7).randbytes(count)


def a_data_file_that_does_not_fit_is_ignored(machine):
    data = _learnt(machine)
    expect(_prediction(machine), PREDICTED, "prediction from the file as it was")
    for name, damaged in {
            "one byte short": data[:-1],
            "one byte long": data + b"\0",
            "empty": b"",
            "a header alone": data[:HEADER_SIZE],
            "another number of days": _with_word(data, DAYS, 14),
            "days of another length": _with_word(data, MINUTES_IN_DAY, 720),
            "other slots": _with_word(data, MINUTES_PER_SLOT, 20),
            "fewer slots than it says": _with_word(data, SLOTS, 1009),
            "more slots than it says": _with_word(data, SLOTS, 0),
            "random bytes": _random_bytes(len(data)),
    }.items():
        machine.write_data_file(DATA_FILE, damaged)
        expect(_prediction(machine), NOT_PREDICTED, f"prediction from a file of {name}")
        expect_true(machine.data_file(DATA_FILE) == damaged, f"a file of {name} was changed")


def a_data_file_for_another_resolution_is_ignored_and_written_over(machine):
    data = _learnt(machine)
    machine.registry.write("TimeResolution", 15)
    machine.start_service()
    machine.stop_service()
    saved = learnt_data(machine.data_file(DATA_FILE))
    expect((saved.minutes_per_slot, len(saved.slots)), (15, 672), "shape of the new file")
    expect(learnt_data(data).minutes_per_slot, 10, "minutes per slot of the old one")


def a_data_file_of_another_version_keeps_the_controller_off(machine):
    data = _learnt(machine)
    machine.write_data_file(DATA_FILE, _with_word(data, VERSION, 1))
    expect(machine.start_service().events, [], "events of the start")
    expect(machine.service.status().state, RUNNING, "state")
    expect(machine.suspend().events, [], "events of a suspend")
    machine.clock.pass_time(hours=1, awake=False)
    expect(machine.resume().events, [], "events of a resume")

    machine.write_data_file(DATA_FILE, data)
    expect(machine.resume().events, [information("2/2/2026 19:0:0 - Activating"),
                                     information("Active")], "events once it is gone")


def a_folder_in_place_of_the_data_file_is_no_data(machine):
    _learnt(machine)
    machine.data_folder.joinpath(DATA_FILE).unlink()
    machine.data_folder.joinpath(DATA_FILE).mkdir()
    expect(_prediction(machine), NOT_PREDICTED, "prediction")
    machine.start_service()
    step = machine.stop_service()
    expect(events(step), [information("2/2/2026 18:0:30 - Uninitializing"),
                          information("Uninitialized")], "events of a stop")


def slots_of_random_bytes_are_lived_with(machine):
    data = _learnt(machine)
    machine.write_data_file(DATA_FILE, data[:HEADER_SIZE] + _random_bytes(len(data) - HEADER_SIZE))
    machine.start_service()
    for day in ("02-02", "02-03", "02-04"):
        step = suspend_at(machine, f"2026-{day} 19:00")
        expect(events(step)[-1], information("Suspended"), f"state in the night of {day}")
        step = come_back_at(machine, f"2026-{day} 23:00")
        expect(events(step)[-1], information("Active"), f"state after the night of {day}")
        expect_timeouts(machine, (180, 60))
    machine.stop_service()
    expect(len(machine.data_file(DATA_FILE)), len(data), "size of the data file")


RECENT = [awake("2026-01-04 08:00"), asleep("2026-01-04 18:00")]
NEW = [awake("2026-01-05 08:00"), asleep("2026-01-05 12:00")]


def _history_after(machine, data):
    """The history file after a service's morning, which found another one there."""
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


def a_history_of_random_bytes_is_lived_with(machine):
    found = _history_after(machine, _random_bytes(4096 + 5))
    times = [entry.time for entry in found]
    expect(times, sorted(set(times)), "times, which only increase")
    machine.clock.pass_until("2026-01-05 13:00")
    expect(events(machine.start_service())[-1], information("Active"), "state after a new start")


def a_history_that_cannot_be_written_loses_what_is_new(machine):
    machine.provision()
    machine.write_data_file(HISTORY_FILE, history_file(RECENT))
    machine.start_service()
    machine.clock.pass_until("2026-01-05 12:00")
    machine.calls.fail("_wfopen", 1, call=2, times=1)  # the first one reads
    machine.stop_service()
    expect(history(machine.data_file(HISTORY_FILE)), RECENT, "history")
    expect_true(machine.data_file(DATA_FILE) is not None, "the data file was not written")


def a_folder_in_place_of_the_history_is_no_history(machine):
    machine.provision()
    machine.data_folder.joinpath(HISTORY_FILE).mkdir(parents=True)
    machine.start_service()
    step = machine.stop_service()
    expect(events(step), [information("5/1/2026 8:0:0 - Uninitializing"),
                          information("Uninitialized")], "events")
    expect_true(machine.data_file(DATA_FILE) is not None, "the data file was not written")
