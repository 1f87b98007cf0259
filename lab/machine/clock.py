"""The machine's clock, which only moves when a test moves it."""

from datetime import datetime, timedelta, timezone
from zoneinfo import ZoneInfo

from machine.wine import ZONE

_ZONE = ZoneInfo(ZONE)


def local(text, fold=0):
    """A local time from its ISO form, "2026-01-05 22:00". For an hour that comes twice, fold says
    which one is meant: 0 is the first, 1 the second."""
    return datetime.fromisoformat(text).replace(tzinfo=_ZONE, fold=fold)


class Clock:
    def __init__(self, state, wake_sleepers):
        self._state = state
        self._wake_sleepers = wake_sleepers

    @property
    def now(self):
        return datetime.fromtimestamp(self._state.clock, timezone.utc).astimezone(_ZONE)

    def set(self, time):
        """Moves the clock's hands without any time passing. Takes a local time or its text."""
        time = local(time) if isinstance(time, str) else time
        self._state.clock = int(time.timestamp())

    def pass_time(self, awake=True, **span):
        """Lets time pass, given as to timedelta. Threads that sleep in the service wake when they
        are due; while the machine itself is not awake, no time passes for them."""
        seconds = int(timedelta(**span).total_seconds())
        self._state.clock += seconds
        if awake:
            self._state.awake_ms += seconds * 1000
            self._wake_sleepers()

    def pass_until(self, time, awake=True):
        time = local(time) if isinstance(time, str) else time
        self.pass_time(awake, seconds=int(time.timestamp()) - self._state.clock)
