"""Counts of the service's calls of the system, calls that are held, and failures to come."""

import contextlib

from machine.counted_calls import FOR_EVER, numbers_of


class SystemCalls:
    """The calls are those in native/shared/system_calls.h, under their own names."""

    def __init__(self, state, waiting):
        self._calls = {call.name.decode(): call for call in state.calls if call.name}
        self._waiting = waiting

    def reset(self):
        for call in self._calls.values():
            call.made = call.fail_from = call.fail_to = call.error = call.hold_at = 0

    def made(self, name):
        """How often it was called since the reset."""
        return self._calls[name].made

    def all_made(self):
        return {name: call.made for name, call in self._calls.items() if call.made}

    def fail(self, name, error, call=1, times=FOR_EVER):
        """Makes the call-th call from now fail, and those that follow it."""
        entry = self._calls[name]
        first, entry.fail_to = numbers_of(entry.made, call, times)
        entry.error = error
        # Last, since from then on it holds.
        entry.fail_from = first

    def succeed(self, name):
        self._calls[name].fail_from = 0

    @contextlib.contextmanager
    def held(self, name, begin, call=1):
        """Begins something, and holds the thread that makes the call-th call from now in that call
        until the with statement ends. Gives what begin gave."""
        entry = self._calls[name]
        number = entry.hold_at = entry.made + call
        try:
            begun = begin()
            self._waiting.until(lambda: entry.made >= number, f"{name} is not called")
            yield begun
        finally:
            entry.hold_at = 0
