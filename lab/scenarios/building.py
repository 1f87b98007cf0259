"""A controller or predictor that cannot be built: what is reported, and that it is built once the
cause is gone."""

import struct

from machine.machine import DATA_FILE, HISTORY_FILE, START_OF_TIME
from machine.registry import CURRENT, DEFAULT, predictor_key
from machine.service_control import RUNNING, sent
from machine.service_record import Entry, error, information
from steps.data_files import asleep, awake, history, learnt_data
from steps.expect import expect
from steps.nights import events

ACCESS_DENIED = 0x80070005
FOLDER = "SHGetKnownFolderPath"
NO_PREDICTION = [
    information("Predicted Hibernate at: no prediction"),
    information("Predicted Sleep restored at: never"),
    information("Predicted Hibernate next at: no prediction"),
]


def _expect_not_built(machine, step, what):
    """A start that fails says nothing, and leaves a service without controller."""
    expect(step.events, [], f"events {what}")
    expect(step.of("thread", "trace"), ["start", "end"], f"threads and traces {what}")
    expect(machine.setting("ServiceFeedback"), None, f"ServiceFeedback {what}")
    expect(machine.suspend().entries, [sent(RUNNING)], f"a suspend {what}")


def _expect_built(machine, step, hour):
    expect(step.events, [information(f"5/1/2026 {hour}:0:0 - Activating"), information("Active")],
           "events once the cause is gone")
    expect(machine.setting("ServiceFeedback"), 1, "ServiceFeedback")


def _expect_in_use_since(machine, day):
    data = learnt_data(machine.data_file(DATA_FILE))
    expect((data.state, data.time), (0, (2026, 1, day, 8, 0, 0)), "in use since, by the habits")


def _data_of_version(machine, version):
    """What a service of another version has left behind: the same data except for the version."""
    machine.provision()
    machine.start_service()
    machine.clock.pass_time(hours=1)
    machine.stop_service()
    data = struct.pack("<I", version) + machine.data_file(DATA_FILE)[4:]
    machine.registry.delete_key(CURRENT)
    for name in (DATA_FILE, HISTORY_FILE):
        (machine.data_folder / name).unlink()
    machine.clock.set(START_OF_TIME)
    return data


def without_predictor_values_no_controller_starts(machine):
    machine.provision()
    machine.registry.delete_key(predictor_key(DEFAULT))
    _expect_not_built(machine, machine.start_service(), "without predictor values")
    machine.provision()
    machine.registry.delete("TimeResolution", DEFAULT)
    _expect_not_built(machine, machine.resume(), "without a time resolution")
    machine.provision()
    _expect_built(machine, machine.resume(), 8)


def with_a_data_file_of_another_version_no_controller_starts(machine):
    other = _data_of_version(machine, 1)
    machine.write_data_file(DATA_FILE, other)
    _expect_not_built(machine, machine.start_service(), "with another version")
    machine.stop_service()
    expect(machine.data_file(DATA_FILE), other, "the data file")
    machine.write_data_file(DATA_FILE, bytes(4) + other[4:])
    _expect_built(machine, machine.start_service(), 8)


def without_a_data_folder_no_controller_starts(machine):
    machine.provision()
    machine.calls.fail(FOLDER, ACCESS_DENIED)
    _expect_not_built(machine, machine.start_service(), "without a folder")
    machine.stop_service()
    _expect_not_built(machine, machine.start_service(), "without a folder, again")
    machine.calls.succeed(FOLDER)
    _expect_built(machine, machine.resume(), 8)


def _save_in_vain(machine, report):
    """The daily save of 6 January, whose predictor cannot be built, and the life that follows."""
    machine.clock.set("2026-01-06 08:00:01")
    step = machine.notify_idle()
    expect([entry for entry in step.entries if entry.kind != "failed"], [
        *[Entry("trace", text) for text in ("State Machine event: ", "6/1/2026 8:0:1 - Saving",
                                            "\n")],
        information("6/1/2026 8:0:1 - Saving"),
        Entry("trace", "AH_SavePredictionData\n"),
        error(report), Entry("trace", report),
        sent(RUNNING),
    ], "the save")
    machine.clock.set("2026-01-06 18:00")
    expect(machine.suspend().events, [
        information("6/1/2026 18:0:0 - Suspend"), *NO_PREDICTION, information("Suspended"),
    ], "events of a suspend")
    machine.clock.set("2026-01-07 08:00")
    expect(events(machine.resume())[-1], information("Active"), "the end of a resume")


def _expect_restored_by_the_next_save(machine):
    machine.clock.set("2026-01-08 08:00:00")
    expect(events(machine.notify_idle()), [information("8/1/2026 8:0:0 - Saving")],
           "events of the next save")
    machine.clock.set("2026-01-08 18:00")
    machine.suspend()
    machine.clock.set("2026-01-09 08:00")
    machine.resume()
    machine.clock.set("2026-01-09 12:00")
    machine.stop_service()
    _expect_in_use_since(machine, 9)
    # The history has what the predictor missed.
    expect(history(machine.data_file(HISTORY_FILE)), [
        awake("2026-01-05 08:00"), asleep("2026-01-06 18:00"), awake("2026-01-07 08:00"),
        asleep("2026-01-08 18:00"), awake("2026-01-09 08:00"), asleep("2026-01-09 12:00"),
    ], "history")


def a_daily_save_that_finds_no_folder_is_reported_and_the_next_one_restores_prediction(machine):
    machine.provision()
    machine.start_service()
    machine.calls.fail(FOLDER, ACCESS_DENIED)
    _save_in_vain(machine, "invalid string position")
    # The file was saved all the same, since its path was known from before.
    _expect_in_use_since(machine, 5)
    machine.calls.succeed(FOLDER)
    _expect_restored_by_the_next_save(machine)


def a_daily_save_that_finds_no_values_is_reported_and_the_next_one_restores_prediction(machine):
    machine.provision()
    machine.start_service()
    machine.registry.delete_key(predictor_key(DEFAULT))
    _save_in_vain(machine, "No weigths specified")
    machine.provision()
    _expect_restored_by_the_next_save(machine)


def a_daily_save_that_finds_another_version_is_reported_and_a_restart_restores_it(machine):
    other = _data_of_version(machine, 1)
    machine.start_service()
    # The save cannot overwrite the file that is there now.
    machine.write_data_file(DATA_FILE, other)
    machine.calls.fail("MoveFileExW", 5, times=1)
    machine.calls.fail("_wfopen", 13, times=1)
    _save_in_vain(machine, "Version 0 expected")
    machine.clock.set("2026-01-07 12:00")
    machine.stop_service()
    expect(machine.data_file(DATA_FILE), other, "the data file")

    (machine.data_folder / DATA_FILE).unlink()
    machine.clock.set("2026-01-07 13:00")
    expect(machine.start_service().events,
           [information("7/1/2026 13:0:0 - Activating"), information("Active")], "the next start")


def a_stop_that_finds_no_folder_for_the_history_is_reported_and_goes_on(machine):
    machine.provision()
    machine.start_service()
    machine.calls.fail(FOLDER, ACCESS_DENIED)
    machine.clock.set("2026-01-05 18:00")
    expect(machine.stop_service().events, [
        information("5/1/2026 18:0:0 - Uninitializing"),
        error("invalid string position"),
        information("Uninitialized"),
    ], "events")
    expect(machine.data_file(HISTORY_FILE), None, "history")
    _expect_in_use_since(machine, 5)
