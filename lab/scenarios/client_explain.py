"""dozewellctl explains what a suspend would lead to."""

import re
from pathlib import Path

from machine.machine import DATA_FILE, HISTORY_FILE, SCENARIO_SETTINGS
from machine.registry import DEFAULT, predictor_key
from steps.client import DONE, NOTHING_LEARNT, failed
from steps.expect import expect, expect_true
from steps.living import A_MONDAY, machine_that_knows_office_hours, office_days, sixty_days
from steps.nights import events

MANUAL = Path(__file__).resolve().parents[2] / "docs" / "dozewellctl.md"
EVENING = 'explain --at "2026-02-02 18:00"'
SIXTIETH_EVENING = 'explain --at "2026-03-05 17:40"'
IGNORED = "C:\\ProgramData\\Brevan\\Z7\\cpredict.z7: ignored: "


def _office_machine(machine):
    machine_that_knows_office_hours(machine)
    machine.restart_service()  # its data file holds all that it knows


def _machine_of_sixty_days(machine):
    machine.provision(total_attempts=10, current_attempt=10)
    machine.schemes.hibernate_after = 180, 60
    machine.start_service()
    sixty_days(machine)
    machine.clock.pass_until("2026-03-05 17:40")
    return machine.restart_service()


def _output(machine, command, error=""):
    answer = machine.client.run(command)
    expect((answer.exit_code, answer.error), (DONE, error), f"exit code and error of {command}")
    return answer.output


def _words(output):
    """What is explained, without how new it is."""
    return re.sub(r'\AAs of .*\n|,"asOf":\{[^{}]*\}', "", output)


def the_manual_shows_status_and_explanation_as_they_look(machine):
    start = _machine_of_sixty_days(machine)
    manual = MANUAL.read_text("utf-8")
    for command in "status", SIXTIETH_EVENING:
        if command != "status":
            machine.client_view.log_service_events(start)
        shown = ["> dozewellctl " + command, *_output(machine, command).splitlines()]
        block = "".join(f"{line}\n" for line in shown)
        expect_true(block in manual, f"{MANUAL.name} does not show this:\n{block}")


def the_words_are_those_of_dozewell_replay(machine):
    _machine_of_sixty_days(machine)
    for options in ("--at 2026-03-05T17:40:00", "--at 2026-03-06T08:10:00",
                    "--at 2026-03-07T23:59:59", "--json --at 2026-03-05T17:40:00"):
        replayed = machine.replay.run(
            f"explain --settings {SCENARIO_SETTINGS} --data {machine.data_folder / DATA_FILE} "
            f"{options}")
        expect((replayed.exit_code, replayed.error), (0, ""), "exit code and error of the replay")
        expect(_words(_output(machine, "explain " + options)), replayed.output,
               f"words for {options}")


def what_is_explained_is_what_a_suspend_then_does(machine):
    _machine_of_sixty_days(machine)
    explained = _output(machine, SIXTIETH_EVENING)
    step = machine.suspend()
    expect([event.text.strip() for event in events(step)[1:-1]], [
        "Predicted Hibernate at: Thu Mar  5 18:10:00 2026",
        "Predicted Sleep restored at: Fri Mar  6 08:20:00 2026",
        "Predicted Hibernate next at: Fri Mar  6 18:10:00 2026"], "decision")
    expect(machine.schemes.hibernate_after, (30, 30), "timeouts")
    expect(machine.driver.armed_minutes, 880, "minutes until the timer's wake")
    expect(explained.splitlines()[1:5], [
        "A suspend at Thu 2026-03-05 17:40",
        "  hibernates the machine after 30 min, at Thu 2026-03-05 18:10,",
        "  wakes it after 14 h 40 min, at Fri 2026-03-06 08:20, to sleep until it is used,",
        "  and hibernates it again when it was not used for 9 h 50 min."], "explanation")


def other_settings_lead_to_another_explanation(machine):
    _office_machine(machine)
    expect(_output(machine, EVENING).splitlines()[1], "A suspend at Mon 2026-02-02 18:00",
           "its words")
    machine.registry.write("StrengthLow", "0", predictor_key(DEFAULT))
    expect(_output(machine, EVENING).splitlines()[1],
           "A suspend at Mon 2026-02-02 18:00 leaves the user's own timeout in place and arms no "
           "wake timer.", "first line when nothing is ever idle")


def a_warning_tells_why_nothing_of_it_is_done(machine):
    _office_machine(machine)
    explained = _words(_output(machine, EVENING))
    machine.registry.write("EnableZ7Feature", 0)
    machine.registry.write("DisablePrediction", 1)
    expect(_words(_output(machine, EVENING, error=(
        "dozewellctl: warning: the feature is off, so the service does none of this\n"
        "dozewellctl: warning: DisablePrediction is 1, so the service does none of this\n"))),
        explained, "explanation")


def an_explanation_has_the_service_do_nothing_and_does_without_it(machine):
    _office_machine(machine)
    files = machine.data_file(DATA_FILE), machine.data_file(HISTORY_FILE)
    explained = _output(machine, EVENING)
    expect(machine.take_step().entries, [], "what the service did")
    expect((machine.data_file(DATA_FILE), machine.data_file(HISTORY_FILE)), files, "files")
    machine.stop_service()
    without = _output(machine, EVENING)
    expect(_words(without), _words(explained), "explanation without a service")
    expect(without.splitlines()[0], "As of the last save, 2026-02-02 08:00:00, since the service "
           "does not answer.", "how new it is")


def what_is_learnt_is_known_before_it_is_saved(machine):
    machine.provision()
    log = machine.client_view.log_service_events
    log(machine.start_service())
    office_days(machine, A_MONDAY, days=20, seen=log)
    machine.clock.pass_until("2026-02-02 18:00")
    expect(machine.data_file(DATA_FILE), None, "the data file")
    unsaved = _output(machine, EVENING)
    expect(unsaved.splitlines()[0], "As of now: 41 events, of which nothing is saved yet.",
           "how new it is")
    # What the service saves is the same.
    machine.stop_service()
    expect(_words(_output(machine, EVENING)), _words(unsaved), "explanation of what was saved")


def nothing_is_explained_where_nothing_was_learnt(machine):
    machine.provision()
    unknown = "; what the service has learnt is not known, since the service does not answer"
    failed(machine, EVENING, IGNORED + "it cannot be opened" + unknown, NOTHING_LEARNT)
    expect_true(not machine.data_folder.exists(), "a data folder was made")
    machine.write_data_file(DATA_FILE, b"no data")
    failed(machine, EVENING, IGNORED + "it is not of the size that the configured cycle needs" +
           unknown, NOTHING_LEARNT)
    expect(machine.data_file(DATA_FILE), b"no data", "the data file")
