"""A data file that is not what the service has left there."""

import random
import struct

from machine.machine import DATA_FILE
from machine.service_control import RUNNING
from machine.service_record import information
from steps.data_files import learnt_data
from steps.expect import expect, expect_true
from steps.living import machine_that_knows_office_hours
from steps.nights import come_back_at, events, expect_timeouts, suspend_at

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


def the_service_copes_with_slots_of_random_bytes(machine):
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
