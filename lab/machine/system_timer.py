"""The service's waitable timer, as the lab's stand-in for the system keeps it."""

from datetime import datetime, timezone

REASON = "Dozewell Service: sleep ahead of the predicted use"


class SystemTimer:
    def __init__(self, state):
        self._state = state

    def reset(self):
        """None is armed, and the machine can be woken by one."""
        self._state.timer_due = 0
        self._state.timer_wakes = 0
        self._state.timer_cannot_wake = 0
        self._state.timer_reason = b""

    @property
    def due(self):
        """When it fires, or None while it is not armed."""
        due = self._state.timer_due
        return datetime.fromtimestamp(due, timezone.utc) if due else None

    @property
    def wakes_the_machine(self):
        """Whether the service has asked for that when it armed it last."""
        return self._state.timer_wakes != 0

    @property
    def reason(self):
        """What the system would say of a wake by it."""
        return self._state.timer_reason.decode()

    def cannot_wake(self, cannot=True):
        """From now on the system arms it, but says that it will not wake the machine."""
        self._state.timer_cannot_wake = cannot

    def fire(self):
        """It is due."""
        self._state.timer_due = 0
