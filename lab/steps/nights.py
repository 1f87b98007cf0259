"""The steps of a night, as the machine's power manager and its user take them."""

import re

from machine.lab_device import ENDED_BY_TIMER, ENDED_BY_USER, WENT_ON_TO_HIBERNATION
from steps.expect import expect


def suspend_at(machine, time):
    machine.clock.pass_until(time)
    return machine.suspend()


def hibernate_at(machine, time):
    """The machine wakes by itself, to go on into hibernation."""
    return _resume_at(machine, time, WENT_ON_TO_HIBERNATION)


def wake_by_timer_at(machine, time):
    """The driver's timer wakes the machine out of hibernation."""
    machine.driver.expire_timer()
    return _resume_at(machine, time, ENDED_BY_TIMER)


def wake_by_system_timer(machine):
    """The system's timer, which is in the driver's place, wakes the machine when it is due."""
    machine.clock.pass_until(machine.timer.due, awake=False)
    machine.timer.fire()
    return machine.resume()


def come_back_at(machine, time):
    """The user wakes the machine."""
    return _resume_at(machine, time, ENDED_BY_USER)


def _resume_at(machine, time, status):
    machine.clock.pass_until(time, awake=False)
    machine.driver.set_previous_sleep_status(status)
    return machine.resume()


_OPTIMIZER = re.compile(r"(Launch|Terminate) optimizer thread, |Optimizer (thread still|skipped)")


def events(step):
    """What was written to the event log about the controller, without the optimizer's starts and
    stops."""
    return [event for event in step.events if not _OPTIMIZER.match(event.text)]


def stamped(machine, event):
    """How an event that comes now reads in the event log."""
    now = machine.clock.now
    return f"{now.day}/{now.month}/{now.year} {now.hour}:{now.minute}:{now.second} - {event}"


def cached_timeouts(machine):
    """The user's own timeouts that the service has put aside, in minutes."""
    return machine.setting("HA_AC"), machine.setting("HA_DC")


def expect_timeouts(machine, in_force, cached=(None, None)):
    """What the power scheme holds for mains and battery, and what is put aside for the user."""
    expect((machine.schemes.hibernate_after, cached_timeouts(machine)), (in_force, cached),
           "timeouts in force and those put aside")
