"""The machine's part while a history is played: it sleeps when the history says so, hibernates when
the timeout in its power scheme has passed, wakes when a timer expires, the driver's or the system's,
and resumes when the history says that its user comes."""

from datetime import datetime, timedelta, timezone
from typing import NamedTuple

from machine.lab_device import ENDED_BY_TIMER, ENDED_BY_USER, WENT_ON_TO_HIBERNATION
from machine.machine import RESUME_BY_USER
from steps.data_files import ENTRY_SIZE, HistoryEntry, history, history_file


class Moment(NamedTuple):
    """A step of the service and when it came."""

    time: datetime
    what: str  # suspends, resumes, hibernates, is woken by its timer, goes back to sleep
    step: object


class Sleep:
    """One time away from the machine, from a suspend to the user's return."""

    def __init__(self, start):
        self.start = start
        self.end = None
        self.moments = []
        self.timeouts = []     # minutes, each time that the service set one
        self.asleep = timedelta()
        self.hibernated = timedelta()
        self.timer_wakes = 0
        self.met_hibernation = False


def read_history(data):
    """The changes in a zs7state.dat: local times without a zone, and whether the machine is asleep
    from then on. Entries that change nothing are left out."""
    changes = []
    for entry in history(data[:len(data) - len(data) % ENTRY_SIZE]):
        time = datetime.fromtimestamp(int(entry.time), timezone.utc)
        if not changes or time > changes[-1][0] and bool(entry.asleep) != changes[-1][1]:
            changes.append((time, bool(entry.asleep)))
    # The service is there from the first use on.
    return changes[1:] if changes and changes[0][1] else changes


def write_history(changes):
    """A zs7state.dat of changes."""
    return history_file(HistoryEntry(time.timestamp(), asleep, 0) for time, asleep in changes)


class Playback:
    """Plays on a machine in the zone UTC, on which the service runs and sees the first change of
    the history as its start."""

    def __init__(self, machine):
        self._machine = machine
        self._sleep = None
        self._armed_until = None
        self._is_hibernated = False
        self._fell_asleep_at = None

    def sleeps(self, changes):
        """Plays the changes after the first one, sleep by sleep. A sleep that the history leaves
        open is not played."""
        for (start, asleep), (end, _) in zip(changes[1:], changes[2:]):
            if not asleep:
                continue
            self._machine.clock.pass_until(start)
            # Before it sleeps the machine is idle, and the system does its background tasks.
            self._machine.notify_idle()
            yield self._sleep_until(start, end)

    def _sleep_until(self, start, end):
        self._sleep = sleep = Sleep(start)
        self._armed_until = None
        self._fall_asleep("suspends")
        while True:
            time, arrive = min(self._due(end), key=lambda due: due[0])
            self._pass_until(time)
            if arrive is None:
                break
            arrive()
        sleep.end = end
        sleep.met_hibernation = self._is_hibernated
        self._is_hibernated = False
        self._machine.driver.set_previous_sleep_status(ENDED_BY_USER)
        self._note("resumes", self._machine.resume())
        self._machine.power_event(RESUME_BY_USER)
        return sleep

    def _due(self, end):
        """What may come next, each with its time; at the same time the user comes first."""
        due = [(end, None)]
        timeout = self._timeout()
        if not self._is_hibernated and timeout:
            due.append((self._fell_asleep_at + timeout, self._hibernate))
        if self._armed_until is not None:
            due.append((self._armed_until, self._be_woken))
        return due

    def _hibernate(self):
        """The system wakes for a moment and goes on into hibernation."""
        self._machine.driver.set_previous_sleep_status(WENT_ON_TO_HIBERNATION)
        self._note("hibernates", self._machine.resume())
        self._is_hibernated = True
        self._note("is hibernated", self._machine.suspend())

    def _be_woken(self):
        self._armed_until = None
        self._sleep.timer_wakes += 1
        if self._machine.timer.due is not None:
            self._machine.timer.fire()
        self._machine.driver.expire_timer()
        self._machine.driver.set_previous_sleep_status(
            ENDED_BY_TIMER if self._is_hibernated else ENDED_BY_USER)
        self._is_hibernated = False
        step = self._machine.resume()
        self._note("is woken by its timer", step)
        if step.of("suspend"):
            self._fall_asleep("goes back to sleep")
        else:
            self._fall_asleep("is left alone and goes to sleep")

    def _fall_asleep(self, what):
        self._fell_asleep_at = self._machine.clock.now
        self._note(what, self._machine.suspend())

    def _pass_until(self, time):
        span = time - self._machine.clock.now
        if self._is_hibernated:
            self._sleep.hibernated += span
        else:
            self._sleep.asleep += span
        self._machine.clock.pass_until(time, awake=False)

    def _timeout(self):
        return timedelta(minutes=self._machine.schemes.hibernate_after[0])

    def _note(self, what, step):
        now = self._machine.clock.now.astimezone(timezone.utc)
        self._sleep.moments.append(Moment(now, what, step))
        if any(text.startswith("write timer") for text in step.of("driver")):
            self._armed_until = now + timedelta(minutes=self._machine.driver.armed_minutes)
        if step.of("timer"):
            self._armed_until = self._machine.timer.due
        # The last resume gives the user's own timeout back.
        if what != "resumes" and any(text.startswith("write") and "hibernate AC" in text
                                     for text in step.of("scheme")):
            self._sleep.timeouts.append(self._timeout())
