"""Command lines that make no sense and values out of their range are refused by dozewellctl itself;
the service hears nothing of them."""

from steps.client import MISUSED, failed
from steps.expect import expect

NO_TIME = 'not a local time "YYYY-MM-DD HH:MM" or UTC seconds since 1970'
A_TIME = "not a local time from 2000-01-01 00:00 to 2127-12-31 23:59"
A_DURATION = "DURATION: not 0 to 1048575 minutes, such as 45m or 1h30m"
A_TIMEOUT = "not never or 1 to 71582788 minutes, such as 45m or 1h30m"
A_STRENGTH = "STRENGTH: not a whole number from 0 to 2147483647"
A_SETTING = ("SETTING: not display-off, sleep-after, hibernate-after, wake-timers or "
             "hybrid-sleep")
A_SCHEME = "SCHEME: not balanced, power-saver or high-performance"


def _expect_refused(machine, refused):
    machine.provision()
    machine.start_service()
    for command, why in refused:
        step = failed(machine, command, why, MISUSED)
        expect(step.entries, [], f"what the service did for {command}")


def timers(machine):
    _expect_refused(machine, (
        ("wake get 2", "TIMER: not 0 or 1: 2"),
        ('wake set 2 "2026-11-21 06:30"', "TIMER: not 0 or 1: 2"),
        ("wake raw -- -1 90", "TIMER: not 0 or 1: -1"),
        ("wake raw 32768", "TIMER: not 0 or 1: 32768"),
        ("wake get 0 --json 1", "The following argument was not expected: 1"),
    ))


def times_and_durations(machine):
    _expect_refused(machine, (
        ('wake set 0 "1999-12-31 23:59"', f"TIME: {A_TIME}: 1999-12-31 23:59"),
        ('wake set 0 "2128-01-01 00:00"', f"TIME: {A_TIME}: 2128-01-01 00:00"),
        ('wake set 0 "2026-02-29 06:30"', f"TIME: {NO_TIME}: 2026-02-29 06:30"),
        ('wake set 0 "2026-00-10 06:30"', f"TIME: {NO_TIME}: 2026-00-10 06:30"),
        ('wake set 0 "2026-11-21 24:00"', f"TIME: {NO_TIME}: 2026-11-21 24:00"),
        ("wake raw 1 1048576", f"{A_DURATION}: 1048576"),
        ("wake raw 1 728d4h16m", f"{A_DURATION}: 728d4h16m"),
        ("wake raw 1 soon", f"{A_DURATION}: soon"),
        ("wake set 0", "TIME is required"),
    ))


def power_settings(machine):
    _expect_refused(machine, (
        ("power get 2", "SOURCE: not ac or dc: 2"),
        ("power set battery sleep-after 45m", "SOURCE: not ac or dc: battery"),
        ("power set ac lid 45m", f"{A_SETTING}: lid"),
        ("power set ac sleep-after 71582789", f"sleep-after: {A_TIMEOUT}: 71582789"),
        ("power set ac hibernate-after -- -1", f"hibernate-after: {A_TIMEOUT}: -1"),
        ("power set ac display-off on", f"display-off: {A_TIMEOUT}: on"),
        ("power set ac wake-timers 3", "wake-timers: not off, on or important: 3"),
        ("power set ac hybrid-sleep important", "hybrid-sleep: not off or on: important"),
        ("power set ac sleep-after", "VALUE is required"),
    ))


def schemes_and_strengths(machine):
    _expect_refused(machine, (
        ("scheme set 3", f"{A_SCHEME}: 3"),
        ("scheme set custom", f"{A_SCHEME}: custom"),
        ("strength set -- -1", f"{A_STRENGTH}: -1"),
        ("strength set 2147483648", f"{A_STRENGTH}: 2147483648"),
        ("strength set 1.5", f"{A_STRENGTH}: 1.5"),
        ("strength set", "STRENGTH is required"),
    ))


def commands(machine):
    _expect_refused(machine, (
        ("", "no command; dozewellctl --help lists them"),
        ("power", "no command; dozewellctl power --help lists them"),
        ("hibernate", "The following argument was not expected: hibernate"),
        ("enable now", "The following argument was not expected: now"),
        ("ping --yes", "The following argument was not expected: --yes"),
        ("explain --at noon", f"--at: {NO_TIME}: noon"),
    ))
