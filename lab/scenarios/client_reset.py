"""dozewellctl has the service forget what it has learnt."""

from machine.machine import DATA_FILE, HISTORY_FILE
from machine.registry import DEFAULT, predictor_key
from machine.service_record import error, information
from steps.client import DONE, NOT_DONE, NO_CONTROLLER, done, failed
from steps.data_files import asleep, history
from steps.expect import expect, expect_true
from steps.living import machine_that_knows_office_hours
from steps.nights import events

ACCESS_DENIED, E_FAIL = 5, 0x80004005
QUESTION = "The service will forget all that it has learnt. Go on? [y/N] "
RESET_SAID = "The service has been told to forget.\n"
RESET = information("2/2/2026 18:0:0 - ResetHistory")
NOTHING_PREDICTED = information("Predicted Hibernate at: no prediction")
HIBERNATES_SOON = information("Predicted Hibernate at: Mon Feb  2 18:10:00 2026\n")
NO_CYCLE = "ArbitraryCycleProbabilityTracker - wrong configurations"


def _learnt_machine(machine):
    """Its files hold what it has learnt, and it has seen more since."""
    machine_that_knows_office_hours(machine)
    machine.restart_service()
    machine.take_step()


def _expect_known(machine, is_known):
    step = machine.suspend()
    expect(events(step)[1], HIBERNATES_SOON if is_known else NOTHING_PREDICTED, "prediction")
    machine.resume()


def a_reset_forgets_all_that_was_learnt(machine):
    _learnt_machine(machine)
    machine.registry.write("ServiceFeedback", 3)
    machine.clock.pass_until("2026-02-02 18:30")
    step = done(machine, "reset-history --yes", RESET_SAID)
    expect(step.events, [information("2/2/2026 18:30:0 - ResetHistory")], "events")
    expect(step.of("setting"), ["write ServiceFeedback 1"], "settings")
    expect((machine.data_file(DATA_FILE), machine.data_file(HISTORY_FILE)), (None, None), "files")
    _expect_known(machine, False)
    machine.clock.pass_until("2026-02-02 19:00")
    machine.stop_service()
    # Of the suspend and of the stop.
    expect(history(machine.data_file(HISTORY_FILE)),
           [asleep("2026-02-02 18:30"), asleep("2026-02-02 19:00")], "the new history")


def a_reset_is_asked_for_first(machine):
    _learnt_machine(machine)
    for typed, code, output, end in (
            ("", NOT_DONE, "", "\ndozewellctl: nothing was reset\n"),
            ("no\n", NOT_DONE, "", "\ndozewellctl: nothing was reset\n"),
            ("y\n", DONE, '{"reset":true}\n', "\n")):
        answer = machine.client.run("reset-history --json", typed)
        expect((answer.exit_code, answer.output, answer.error), (code, output, QUESTION + end),
               f"exit code, output and error after {typed!r}")
        expect(answer.step.events, [RESET] if code == DONE else [], f"events after {typed!r}")


def without_a_controller_there_is_nothing_to_reset(machine):
    machine.provision(total_attempts=10)
    machine.write_data_file(DATA_FILE, b"data")
    machine.start_service()
    step = failed(machine, "reset-history --yes", NO_CONTROLLER)
    expect(step.entries, [], "what was done")
    done(machine, "enable", "The feature is on.\n")
    done(machine, "disable --yes", "The feature is off.\n")
    failed(machine, "reset-history --yes --json", NO_CONTROLLER)
    expect(machine.data_file(DATA_FILE), b"data", "the data file")


def after_a_reset_that_settings_keep_from_being_done_there_are_no_predictions(machine):
    _learnt_machine(machine)
    section = predictor_key(DEFAULT)
    machine.registry.delete("DaysInCycle", section)
    step = done(machine, "reset-history --yes", RESET_SAID)
    expect(step.events, [RESET, error(NO_CYCLE)], "events")
    expect((machine.data_file(DATA_FILE), machine.data_file(HISTORY_FILE)), (None, None), "files")
    _expect_known(machine, False)
    expect(machine.client.run("ping").exit_code, DONE, "exit code of ping")
    expect_true(f"\nController          may run: only if it was started earlier, as it cannot be "
                rf"built now: SOFTWARE\Corisk\Z7: DaysInCycle is missing: {NO_CYCLE}" "\n" in machine.client.run("status").output,
                "status does not say what is wrong")

    machine.registry.write("DaysInCycle", "7", section)
    step = done(machine, "reset-history --yes", RESET_SAID)
    expect(step.events, [RESET], "events with the settings repaired")


def a_file_that_cannot_be_deleted_is_not_forgotten(machine):
    _learnt_machine(machine)
    data = machine.data_file(DATA_FILE)
    machine.calls.fail("DeleteFileW", ACCESS_DENIED, call=4, times=1)  # after those beside it
    step = done(machine, "reset-history --yes", RESET_SAID)
    expect(step.events, [RESET], "events")
    expect((machine.data_file(DATA_FILE), machine.data_file(HISTORY_FILE)), (data, None), "files")
    _expect_known(machine, True)


def without_the_data_folder_nothing_is_deleted(machine):
    _learnt_machine(machine)
    machine.calls.fail("SHGetKnownFolderPath", E_FAIL)
    step = done(machine, "reset-history --yes", RESET_SAID)
    machine.calls.succeed("SHGetKnownFolderPath")
    expect(step.events, [RESET, error("invalid string position")], "events")
    expect_true(machine.data_file(DATA_FILE) is not None, "the data file is gone")
    _expect_known(machine, False)
    done(machine, "reset-history --yes", RESET_SAID)
    expect(machine.data_file(DATA_FILE), None, "the data file after another reset")
