"""dozewellctl exports the history, for use on other computers."""

import re

from machine.machine import DEFAULT_SETTINGS
from steps.client import MISUSED, NOTHING_LEARNT, done, failed
from steps.data_files import wall_clock_seconds
from steps.expect import expect, expect_true
from steps.living import A_MONDAY, office_days

FILE = "pc.csv"
NOT_SAVED = r"C:\ProgramData\Brevan\Z7\zs7state.dat: ignored: it cannot be opened"
USE, SLEEP = 0, 1


def _three_days(machine, seen=lambda step: None, **settings):
    _provision(machine, **settings)
    seen(machine.start_service())
    office_days(machine, A_MONDAY, days=3, seen=seen)


def _provision(machine, **settings):
    """A machine without a file of an earlier export."""
    machine.provision(**settings)
    (machine.current_folder / FILE).unlink(missing_ok=True)


def _exported(machine):
    return (machine.current_folder / FILE).read_text("utf-8")


def _records(text):
    return [(int(time), int(asleep)) for time, asleep in re.findall(r"^(\d+),(\d)$", text, re.M)]


# From eight o'clock to six, on Monday, Tuesday and Wednesday, and on Thursday from eight o'clock.
RECORDS = [(wall_clock_seconds(f"2026-01-0{day} {clock}"), state)
           for day in (5, 6, 7) for clock, state in (("08:00", USE), ("18:00", SLEEP))]
RECORDS.append((wall_clock_seconds("2026-01-08 08:00"), USE))


def a_history_that_was_saved_is_exported(machine):
    _three_days(machine)
    machine.stop_service()
    # The stop comes in the same second as the last use, and one second keeps one entry.
    done(machine, f"export {FILE}", f"{FILE}: 7 records, 0 left out\n")
    expect(_records(_exported(machine)), RECORDS, "records")


def what_is_not_saved_yet_is_exported_too(machine):
    _three_days(machine, machine.client_view.log_service_events)
    done(machine, f"export {FILE}", f"{FILE}: 7 records, 0 left out\n", NOT_SAVED)
    expect(_records(_exported(machine)), RECORDS, "records")


def an_anonymous_export_has_no_names_and_weeks_that_are_shifted(machine):
    _three_days(machine, machine.client_view.log_service_events)
    done(machine, f"export --anonymous --weeks -2 {FILE}", f"{FILE}: 7 records, 0 left out\n",
         NOT_SAVED)
    text = _exported(machine)
    expect(_records(text), [(time - 2 * 7 * 86400, state) for time, state in RECORDS], "records")
    expect_true("\"name\"" not in text and "zone" not in text, "a name or a zone was exported")


def dozewell_replay_takes_the_file_for_history_and_settings(machine):
    _three_days(machine, machine.client_view.log_service_events, file=DEFAULT_SETTINGS)
    done(machine, f"export {FILE}", f"{FILE}: 7 records, 0 left out\n", NOT_SAVED)
    answer = machine.replay.run(f"compare --history {FILE} --settings {FILE} --json")
    expect((answer.exit_code, answer.error), (0, ""), "exit code and error of the replay")
    expect_true('"sleeps":3,' in answer.output, "not three sleeps were compared")


def a_file_that_is_there_is_kept(machine):
    _three_days(machine)
    machine.stop_service()
    (machine.current_folder / FILE).write_text("mine")
    failed(machine, f"export {FILE}", f"{FILE}: is there already; --yes replaces it", MISUSED)
    expect(_exported(machine), "mine", "the user's file")


def nothing_is_exported_where_nothing_was_recorded(machine):
    _provision(machine)
    failed(machine, f"export {FILE}",
           NOT_SAVED + "; there is no history to export", NOTHING_LEARNT)
