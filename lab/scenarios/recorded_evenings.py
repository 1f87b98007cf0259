"""What machines were told by their systems, as dozewell-powerwatch wrote it down: each file in
lab/recordings is sent to the service."""

from datetime import timedelta
from pathlib import Path

from machine.machine import RESUME
from machine.service_control import POWER_EVENT
from machine.service_record import information
from steps.expect import expect, expect_true
from steps.living import office_days
from steps.nights import events, expect_timeouts
from steps.watch_file import WatchFileError, WatchPlayback, read_watch_file

RECORDINGS = Path(__file__).resolve().parents[1] / "recordings"
TIMEOUTS = 180, 60
FRIDAY = 4


def _recordings():
    files = sorted(RECORDINGS.glob("*.csv"))
    expect_true(files, "there is no recording")
    return [read_watch_file(file) for file in files]


def _begin(machine, watched):
    """A machine whose service knows an office's hours when the recording begins."""
    machine.reset()
    playback = WatchPlayback(machine, watched)
    day = playback.start.date()
    first = day - timedelta(weeks=4, days=day.weekday())
    machine.clock.set(f"{first} 08:00")
    machine.provision()
    machine.schemes.hibernate_after = TIMEOUTS
    machine.start_service()
    # To the morning of the recording's day, or of the working day before it.
    office_days(machine, first, days=20 + min(day.weekday(), FRIDAY))
    return playback


def the_service_answers_every_control_of_a_recorded_evening(machine):
    for watched in _recordings():
        played = 0
        for line, step in _begin(machine, watched).steps():
            expect(step.result, 0, f"answer to {line}")
            played += 1
        expect_true(played > 0, "nothing was played")


def the_users_own_timeouts_are_in_force_when_the_user_of_a_recorded_evening_is_back(machine):
    predicted = 0
    for watched in _recordings():
        playback = _begin(machine, watched)
        for line, _ in playback.steps():
            predicted += line.is_suspend and machine.schemes.hibernate_after != TIMEOUTS
            is_resume = (line.control, line.type) == (POWER_EVENT, RESUME)
            if is_resume and playback.user_comes(watched.index(line)):
                expect_timeouts(machine, TIMEOUTS)
    expect_true(predicted > 0, "no other timeouts were ever in force")


def a_recorded_suspend_comes_at_the_local_time_of_its_machine(machine):
    evening = read_watch_file(RECORDINGS / "a_laptops_evening.csv")
    for line, step in _begin(machine, evening).steps():
        if line.is_suspend:
            expect(events(step)[0], information("20/11/2026 20:2:11 - Suspend"), "its event")
            return
    expect_true(False, "no suspend was played")


def a_recording_with_a_bad_line_is_refused_with_its_place(machine):
    good = (RECORDINGS / "a_laptops_evening.csv").read_text("utf-8")
    file = machine.current_folder / "bad.csv"
    for text, place in ((good + "13,4\r\n", f"line {len(good.splitlines()) + 1}: "),
                        (good.replace("13,18,", "13,x,", 1), "line 7: "), ("hello\r\n", "line 1: ")):
        file.write_text(text, "utf-8", newline="")
        try:
            read_watch_file(file)
        except WatchFileError as error:
            expect_true(f"{file}: {place}" in str(error), f"{error} does not name {place}")
        else:
            expect_true(False, f"{place} is not refused")
