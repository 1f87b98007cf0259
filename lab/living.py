"""Days lived on the machine, so that the service learns."""

from datetime import timedelta

from clock import local


def office_days(machine, first, days, start="08:00", end="18:00"):
    """From a morning on which the machine is in use: it is suspended at the end of each working day
    and resumes at the start of the next. Ends in use, on the working day after the last one."""
    day = first
    for _ in range(days):
        machine.clock.pass_until(local(f"{day} {end}"))
        machine.suspend()
        day = _next_working_day(day)
        machine.clock.pass_until(local(f"{day} {start}"), awake=False)
        machine.resume()


def _next_working_day(day):
    day += timedelta(days=1)
    while day.weekday() >= 5:
        day += timedelta(days=1)
    return day
