"""The machine's clock, which only moves when a test moves it, and its time zone."""

from datetime import datetime, timedelta, timezone
from zoneinfo import ZoneInfo

from machine.wine import ZONE

# How the C runtime writes the zones that machines can be in. Of changes to summer time it knows only
# those of the United States.
_RUNTIME_NAMES = {
    "America/New_York": "EST5EDT",
    "America/Los_Angeles": "PST8PDT",
    "Asia/Tokyo": "JST-9",
    "UTC": "UTC0",
}


def local(text, fold=0, zone=ZONE):
    """A local time from its ISO form, "2026-01-05 22:00". For an hour that comes twice, fold says
    which one is meant: 0 is the first, 1 the second."""
    return datetime.fromisoformat(text).replace(tzinfo=ZoneInfo(zone), fold=fold)


class Clock:
    """Times that are given as text are those of the machine's zone."""

    def __init__(self, state, wake_sleepers, zone):
        self._state = state
        self._wake_sleepers = wake_sleepers
        self._home = zone
        self.zone = zone

    @property
    def zone(self):
        """The machine's zone, by its name in ZoneInfo."""
        return self._zone

    @zone.setter
    def zone(self, name):
        self._state.zone = _RUNTIME_NAMES[name].encode()
        self._zone = name

    @property
    def now(self):
        return datetime.fromtimestamp(self._state.clock, timezone.utc).astimezone(
            ZoneInfo(self._zone))

    def reset(self, time):
        """Brings the machine home, where it is some time."""
        self.zone = self._home
        self.set(time)

    def set(self, time):
        """Moves the clock's hands without any time passing. Takes a local time or its text."""
        self._state.clock = self._seconds(time)

    def pass_time(self, awake=True, **span):
        """Lets time pass, given as to timedelta. Threads that sleep in the service wake when they
        are due; while the machine itself is not awake, no time passes for them."""
        seconds = int(timedelta(**span).total_seconds())
        self._state.clock += seconds
        self._state.uptime_ms += seconds * 1000
        if awake:
            self._state.awake_ms += seconds * 1000
            self._wake_sleepers()

    def pass_until(self, time, awake=True):
        self.pass_time(awake, seconds=self._seconds(time) - self._state.clock)

    def _seconds(self, time):
        time = local(time, zone=self._zone) if isinstance(time, str) else time
        return int(time.timestamp())
