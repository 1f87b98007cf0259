"""Days lived on the machine, so that the service learns."""

from datetime import date, timedelta
from itertools import cycle

from machine.clock import local

A_MONDAY = date(2026, 1, 5)

# When the user comes and leaves, on one day after the other.
_COMES = ("07:50", "08:20", "08:00", "09:10")
_LEAVES = ("18:00", "17:10", "18:00", "16:30", "18:40")


def machine_that_knows_office_hours(machine, **settings):
    """In use since eight o'clock on Monday 2026-02-02, after four weeks in an office; it is now six
    in the evening. Its user has it hibernate after 180 minutes on mains and 60 on battery."""
    machine.provision(**settings)
    machine.schemes.hibernate_after = 180, 60
    machine.start_service()
    office_days(machine, A_MONDAY, days=20)
    machine.clock.pass_until("2026-02-02 18:00")


def office_days(machine, first, days, start="08:00", end="18:00", seen=lambda step: None):
    """From a morning on which the machine is in use: it is suspended at the end of each working day
    and resumes at the start of the next. Ends in use, on the working day after the last one. `seen`
    gets each step of the service."""
    day = first
    for _ in range(days):
        machine.clock.pass_until(local(f"{day} {end}"))
        seen(machine.suspend())
        day = _next_working_day(day)
        machine.clock.pass_until(local(f"{day} {start}"), awake=False)
        seen(machine.resume())


def sixty_days(machine):
    """From eight o'clock on A_MONDAY: a user who comes and goes on working days, not always at the
    same time. Ends in use, on the sixtieth day."""
    day = A_MONDAY
    last_day = day + timedelta(days=59)
    for come, leave in zip(cycle(_COMES), cycle(_LEAVES)):
        following = _next_working_day(day)
        if following > last_day:
            return
        machine.clock.pass_until(local(f"{day} {leave}"))
        # A search for better parameters that is due by now ends before the suspend.
        machine.take_step()
        machine.suspend()
        machine.clock.pass_until(local(f"{following} {come}"), awake=False)
        machine.resume()
        day = following


def _next_working_day(day):
    day += timedelta(days=1)
    while day.weekday() >= 5:
        day += timedelta(days=1)
    return day
