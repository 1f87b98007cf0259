"""A file of dozewell-powerwatch: the controls that the system sent to a service on some machine, to
be sent to the service here."""

import struct
import uuid
from datetime import datetime, timezone
from typing import NamedTuple

from machine.clock import local
from machine.lab_device import ENDED_BY_USER, WENT_ON_TO_HIBERNATION
from machine.machine import RESUME, RESUME_BY_USER, SETTING_CHANGE, SUSPEND
from machine.service_control import (CONTINUE, PAUSE, POWER_EVENT, SESSION_CHANGE, SHUTDOWN, STOP)

COLUMNS = ("control,type,identifier,local_time,utc_time,tick_ms,awake_ms,last_sleep_ms,"
           "last_wake_ms,idle_left_s")
WATCH_BEGINS = 0

_NAMES = {(POWER_EVENT, SUSPEND): "suspend", (POWER_EVENT, RESUME): "resume",
          (POWER_EVENT, RESUME_BY_USER): "resume by the user"}


class WatchFileError(Exception):
    """Has the line of the file that is wrong, and what is wrong with it."""


class Watched(NamedTuple):
    control: int
    type: int
    identifier: str
    local_time: datetime  # without a zone, as the clock of that machine showed it
    utc: datetime

    @property
    def is_suspend(self):
        return (self.control, self.type) == (POWER_EVENT, SUSPEND)

    @property
    def is_resume(self):
        return self.control == POWER_EVENT and self.type in (RESUME, RESUME_BY_USER)

    @property
    def name(self):
        return _NAMES.get((self.control, self.type), f"control {self.control}, type {self.type}")

    @property
    def data(self):
        """What the system hands over with the control."""
        if self.identifier and self.control == POWER_EVENT and self.type == SETTING_CHANGE:
            return uuid.UUID(self.identifier).bytes_le + struct.pack("<II", 4, 0)
        if self.identifier and self.control == SESSION_CHANGE:
            return struct.pack("<II", 8, int(self.identifier))
        return b""


def read_watch_file(path):
    """The lines of a file in their order."""
    text = path.read_text("utf-8")
    lines = text.splitlines()
    if not lines or lines[0] != COLUMNS:
        raise WatchFileError(f"{path}: line 1: not the columns of the watch")
    watched = []
    for number, line in enumerate(lines[1:], 2):
        if line:
            try:
                watched.append(_watched(line))
            except ValueError as error:
                raise WatchFileError(f"{path}: line {number}: {error}") from error
    return watched


def _watched(line):
    columns = line.split(",")
    if len(columns) != COLUMNS.count(",") + 1:
        raise ValueError("not as many columns as the watch writes")
    control, kind, identifier, local_time, utc = columns[:5]
    return Watched(int(control), int(kind), identifier, datetime.fromisoformat(local_time),
                   datetime.fromisoformat(utc.removesuffix("Z")))


class WatchPlayback:
    """Sends what was watched to the service, at the same distances in time; the first line comes at
    the local time of that machine. What the service does to the machine has no effect on what comes
    next: it came without the service."""

    def __init__(self, machine, watched):
        self._machine = machine
        self._watched = watched
        self.start = local(watched[0].local_time.isoformat())
        self._awake = True

    def steps(self):
        """Each line with what the service did on it. Ends with a stop or a shut-down; the beginning
        of a watch is no control. The driver of that machine is not known: a sleep that the user did
        not end went on into hibernation."""
        for place, watched in enumerate(self._watched):
            self._pass_until(watched)
            if watched.control == WATCH_BEGINS:
                continue
            if watched.is_resume:
                self._awake = True
                status = ENDED_BY_USER if self.user_comes(place) else WENT_ON_TO_HIBERNATION
                self._machine.driver.set_previous_sleep_status(status)
            yield watched, self._send(watched)
            if watched.is_suspend:
                self._awake = False
            if watched.control in (STOP, SHUTDOWN):
                return

    def _pass_until(self, watched):
        time = self.start.astimezone(timezone.utc) + (watched.utc - self._watched[0].utc)
        # A clock that was set back does not take the machine's time back.
        self._machine.clock.pass_until(max(time, self._machine.clock.now), awake=self._awake)

    def _send(self, watched):
        if watched.control == STOP:
            return self._machine.stop_service()
        if watched.control == SHUTDOWN:
            return self._machine.shut_down()
        if watched.control in (PAUSE, CONTINUE):
            self._machine.service.control(watched.control)
            return self._machine.take_step()
        return self._machine.deliver(watched.control, watched.type, watched.data)

    def user_comes(self, place):
        """Whether, from a line on, somebody was there before the machine slept again."""
        for watched in self._watched[place:]:
            if watched.is_suspend:
                return False
            if watched.control == POWER_EVENT and watched.type == RESUME_BY_USER:
                return True
        return False
